// The citation grammar on any text, and the law text printed under an
// answer for it over a small law folder (laws of the three heading styles,
// one of them closed by the end mark).

#include <QDir>
#include <QFile>

#include "fuzz_target.h"
#include "law/citations.h"
#include "law/law_files.h"
#include "platform/textfile.h"

using namespace mj;

namespace {

const QString& LawFolder() {
  static const QString root = [] {
    const QString r = fuzz::WorkFolder() + QStringLiteral("/laws");
    QDir().mkpath(r + QStringLiteral("/lawtxt"));
    const auto write = [&](const QString& name, const QString& text) {
      WriteTextAtomic(r + QStringLiteral("/lawtxt/") + name + QStringLiteral(".mmd"), text);
    };
    write(QStringLiteral("示例法"),
          QStringLiteral("示例法\r\n　　第一章 总则\r\n　　第一条 为了示例，制定本法。\r\n　　第二条 依照本法第一条规定。\r\n"
                         "　　（一）甲；\r\n　　第三条 本法自公布之日起施行。\r\n　　----<全文完>----\r\n"));
    write(QStringLiteral("示例规定"),
          QStringLiteral("示例规定\r\n　　一、第一项。\r\n　　二、第二项。\r\n　　三、第三项。\r\n　　附件\r\n　　四、附件项。"));
    write(QStringLiteral("示例办法"), QStringLiteral("示例办法\r\n　　1．第一点。\r\n　　2．第二点。\r\n　　3．第三点。"));
    return r;
  }();
  return root;
}

}  // namespace

MJ_FUZZ_TARGET(citations) {
  const QString text = fuzz::GbkText(data, size);
  (void)LongDaAn(text);
  (void)LongDaAn(text, CitationSep::LawQuery);
  (void)LongDaAnForEdit(text);
  (void)StripKuanXiang(text);
  (void)CleanItemList(text);
  (void)NormalizeDaAnLine(text);
  (void)ReverseText(text);
  for (int mode : {-2, -1, 1, 2, 0}) (void)OkMid(text, QStringLiteral("《"), mode);
  // The printed law text, for citations of up to a thousand articles: the
  // cap of a whole citation (99,999 articles) is a test of its own, and the
  // fuzzer would spend its time printing them.
  if (LongDaAn(text).count(QStringLiteral("．")) <= 1000) {
    Env env;
    env.root = LawFolder();
    (void)GetLawTxtForDaAn(env, text);
  }
  return 0;
}
