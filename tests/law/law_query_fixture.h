#pragma once
// A program folder for the law query: laws of the three heading styles, the
// three tree files, the law-name table and a question index.

#include <QString>
#include <QStringList>

#include "bank/item_index.h"
#include "bank/tables.h"
#include "law/law_files.h"
#include "law/numerals.h"
#include "law_samples.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "support/test_env.h"

namespace mj::test {

// The body of article i of the sample law 示例法.
inline QString SampleBody(int i, int last) {
  if (i == 10) return u"盗窃公私财物，数额较大的，处三年以下有期徒刑。"_qs;
  if (i == 3) return u"下列情形适用本法："_qs;
  if (i == last) return u"本法自公布之日起施行。"_qs;
  return u"示例法第"_qs + CStr(i) + u"号规定的内容。"_qs;
}

// A type 1 law of `last` articles, with two chapters and a list in article 3.
// The last article has nothing behind it.
inline QString ArticleLaw(int last) {
  QStringList lines{u"中华人民共和国示例法"_qs, u"　　第一章 总则"_qs};
  for (int i = 1; i <= last; ++i) {
    if (i == 11) lines.append(u"　　第二章 分则"_qs);
    lines.append(u"　　第"_qs + DaXie(i) + u"条 "_qs + SampleBody(i, last));
    if (i == 3) lines << u"　　（一）甲；"_qs << u"　　（二）乙。"_qs;
  }
  return JoinCrLf(lines);
}

// Article i of ArticleLaw as the query prints it.
inline QString PrintedArticle(int i, int last) {
  QString s = u"\r\n　　第"_qs + DaXie(i) + u"条　"_qs + SampleBody(i, last) + u"\r\n"_qs;
  if (i == 3) s += u"　　（一）甲；\r\n　　（二）乙。\r\n"_qs;
  return s;
}

inline constexpr int kSampleLast = 25;

inline QString TreeText(const QStringList& lines) { return JoinCrLf(lines) + u"\r\n"_qs; }

// 《示例法》 (type 1, 25 articles), 《示例规定》 (type 2), 《示例办法》 (type 3) and
// 《深层法》 (type 1, only below a subgroup) in \lawtxt; the trees:
//   试卷一: 《示例法》, 《示例规定》, 分组 (with 《深层法》 below)
//   试卷二: 《示例办法》
// the law-name table with 示例法 (bank 10001) and 示例规定 (bank 10002), and an
// emphases file.
inline void MakeLawFolder(const TestEnv& t) {
  ClearLawCache();
  t.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, ArticleLaw(kSampleLast));
  t.writeGbk(u"\\lawtxt\\示例规定.mmd"_qs, SampleLaw2());
  t.writeGbk(u"\\lawtxt\\示例办法.mmd"_qs, SampleLaw3());
  t.writeGbk(u"\\lawtxt\\深层法.mmd"_qs,
             JoinCrLf({u"深层法"_qs, u"　　第一条 只在深处的独特条文。"_qs, u"　　第二条 第二条内容。"_qs}));
  t.writeGbk(
      u"\\ini\\shijuan.mmd"_qs,
      TreeText({u"FILE=\"\\lawtxt\\示例法.mmd\""_qs, u"试卷一相关法律、法规"_qs, u"    《示例法》"_qs,
                u"file=\"\\lawtxt\\示例规定.mmd\""_qs, u"    《示例规定》"_qs, u"File=\"\\lawtxt\\示例办法.mmd\""_qs,
                u"    分组"_qs, u"FILE=\"\\lawtxt\\深层法.mmd\""_qs, u"        《深层法》"_qs,
                u"FILE=\"\\lawtxt\\示例办法.mmd\""_qs, u"试卷二相关法律、法规"_qs, u"    《示例办法》"_qs}));
  t.writeGbk(u"\\ini\\zimu.mmd"_qs, TreeText({u"FILE=\"\\lawtxt\\示例办法.mmd\""_qs, u"S 《示例办法》"_qs,
                                              u"FILE=\"\\lawtxt\\示例法.mmd\""_qs, u"S 《示例法》"_qs}));
  t.writeGbk(u"\\ini\\leibie.mmd"_qs,
             TreeText({u"FILE=\"\\lawtxt\\示例法.mmd\""_qs, u"刑法"_qs, u"    《示例法》"_qs}));
  t.writeGbk(u"\\ini\\emphases.ini"_qs,
             u"[示例法]\r\n重点法条=3,9-12\r\n次重点法条=20-21\r\n[示例办法]\r\n重点法条=2\r\n"_qs);
  t.mkdir(u"\\dbf"_qs);
  DbfTable names = DbfTable::create(t.path(u"\\dbf\\33.mmd"_qs), tables::LawNameFields());
  for (const auto& [name, code] :
       {std::pair{u"《示例法》"_qs, u"\\yibanti\\10001"_qs}, std::pair{u"《示例规定》"_qs, u"\\yibanti\\10002"_qs}}) {
    const int r = names.appendRow();
    names.setText(r, u"lawname"_qs, name);
    names.setText(r, u"filename"_qs, code);
  }
  names.close();
}

inline ItemRow Item(const QString& id, const QString& answer, const QString& aboutlaw, bool valid2 = true) {
  ItemRow r;
  r.filename = id.left(6);
  r.story = u"no"_qs;
  r.answer = answer;
  r.aboutlaw = aboutlaw;
  r.itemid = id;
  r.valid2 = valid2;
  r.itemtype = id.mid(5, 1).toInt();
  return r;
}

}  // namespace mj::test
