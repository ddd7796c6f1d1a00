// mkgen: writes a generated program folder of a given size.
//
//   mkgen <folder> [--questions N] [--banks M] [--laws K] [--articles A]
//                  [--papers P] [--paper-questions Q] [--today yyyy-mm-dd]

#include <QCoreApplication>
#include <QDate>
#include <cstdio>

#include "generator.h"

namespace {

void Usage() {
  std::fprintf(stderr,
               "用法：mkgen <文件夹> [--questions N] [--banks M] [--laws K] [--articles A]\n"
               "                     [--papers P] [--paper-questions Q] [--today yyyy-mm-dd]\n");
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() < 2 || args.size() % 2 != 0) {
    Usage();
    return 2;
  }
  mj::gen::Sizes s;
  for (int i = 2; i + 1 < args.size(); i += 2) {
    const QString& opt = args[i];
    const QString& value = args[i + 1];
    bool ok = true;
    if (opt == u"--today") {
      s.today = QDate::fromString(value, QStringLiteral("yyyy-MM-dd"));
      ok = s.today.isValid();
    } else {
      const int n = value.toInt(&ok);
      if (opt == u"--questions")
        s.questions = n;
      else if (opt == u"--banks")
        s.banks = n;
      else if (opt == u"--laws")
        s.laws = n;
      else if (opt == u"--articles")
        s.articles = n;
      else if (opt == u"--papers")
        s.papers = n;
      else if (opt == u"--paper-questions")
        s.paperQuestions = n;
      else
        ok = false;
    }
    if (!ok) {
      std::fprintf(stderr, "mkgen: 无效的选项 %s %s\n", qUtf8Printable(opt), qUtf8Printable(value));
      Usage();
      return 2;
    }
  }
  QString error;
  mj::gen::Result r;
  if (!mj::gen::Generate(args[1], s, &error, &r)) {
    std::fprintf(stderr, "mkgen: %s\n", qUtf8Printable(error));
    return 1;
  }
  std::printf("已生成 %s：%d 道内部试题，%d 道模拟试题，%d 部法律，目录 %d 行。\n", qUtf8Printable(args[1]),
              r.questions, r.paperQuestions, int(r.lawFiles.size()), r.directoryRows);
  return 0;
}
