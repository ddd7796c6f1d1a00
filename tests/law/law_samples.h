#pragma once
// Small law texts of the three heading styles, laid out as the program keeps
// them: title line, then every line indented by two ideographic blanks, CR LF.

#include <QString>
#include <QStringList>

namespace mj::test {

// Lines joined with CR LF; no line end after the last one.
inline QString JoinCrLf(const QStringList& lines) { return lines.join(QStringLiteral("\r\n")); }

// Type 1: 第N条, with chapters, a sentence citing an article and a list.
inline QString SampleLaw1() {
  return JoinCrLf({
      u"中华人民共和国示例法"_qs,
      u"　　第一章 总则"_qs,
      u"　　第一条 为了示例，制定本法。"_qs,
      u"　　第二条 本法适用于示例。"_qs,
      u"　　依照第一条规定处理。"_qs,
      u"　　第二章 分则"_qs,
      u"　　第三条 下列行为是示例："_qs,
      u"　　（一）甲；"_qs,
      u"　　（二）乙。"_qs,
      u"　　第四条 本法自公布之日起施行。"_qs,
  });
}

// Type 2: 一、 headings.
inline QString SampleLaw2() {
  return JoinCrLf({
      u"示例规定"_qs,
      u"　　一、总则内容。"_qs,
      u"　　二、第二项内容。"_qs,
      u"　　三、第三项内容，"_qs,
      u"　　接续的一行。"_qs,
  });
}

// Type 3: 1． headings.
inline QString SampleLaw3() {
  return JoinCrLf({
      u"示例办法"_qs,
      u"　　1．第一项。"_qs,
      u"　　2．第二项。"_qs,
      u"　　3．第三项。"_qs,
  });
}

}  // namespace mj::test
