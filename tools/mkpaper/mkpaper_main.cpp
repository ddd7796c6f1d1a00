// mkpaper <questions.json> <paper.txt> [--source]
//
// Writes the paper of a JSON file of single-choice questions (the LawBench
// form) in the layout of the paper window: GBK with CR LF, as the program
// keeps papers, or with --source UTF-8 with LF, as the sources under data/
// are kept (tools/mkdata converts them). Changes that were needed to fit the
// layout are listed; an input that does not fit stops with its reason.
#include <QCoreApplication>
#include <QFile>
#include <cstdio>

#include "paper_json.h"
#include "platform/textfile.h"

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QStringList args = app.arguments().mid(1);
  const bool source = args.removeAll(QStringLiteral("--source")) > 0;
  if (args.size() != 2) {
    std::fprintf(stderr, "用法：mkpaper <题目.json> <试卷.txt> [--source]\n");
    return 2;
  }
  QFile in(args[0]);
  if (!in.open(QIODevice::ReadOnly)) {
    std::fprintf(stderr, "无法读取文件 %s\n", qUtf8Printable(args[0]));
    return 1;
  }
  const QByteArray json = in.readAll();
  mj::tools::JsonPaper paper = mj::tools::PaperFromJson(json, {});
  if (paper.error.isEmpty())
    paper = mj::tools::PaperFromJson(json, mj::tools::LawBenchHeader(paper.questions));
  if (!paper.error.isEmpty()) {
    std::fprintf(stderr, "%s：%s\n", qUtf8Printable(args[0]), qUtf8Printable(paper.error));
    return 1;
  }
  for (const QString& w : paper.warnings) std::fprintf(stderr, "注意：%s\n", qUtf8Printable(w));
  bool ok = false;
  if (source) {
    QString text = paper.text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    ok = mj::WriteBytesAtomic(args[1], text.toUtf8());
  } else {
    ok = mj::WriteTextAtomic(args[1], paper.text);
  }
  if (!ok) {
    std::fprintf(stderr, "无法写入文件 %s\n", qUtf8Printable(args[1]));
    return 1;
  }
  std::printf("%s：%d道题\n", qUtf8Printable(args[1]), paper.questions);
  return 0;
}
