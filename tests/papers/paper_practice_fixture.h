#pragma once
// Papers and a law of the tests of the practice of a paper.

#include <QString>
#include <QStringList>

#include "papers_fixture.h"

namespace mj::test {

// Three sections: single choice 1-3, multiple choice 4-5 (numbering goes
// on), free choice 1 (numbering starts again); each answer cites 示例刑法.
inline QString ThreeSections() {
  QStringList l = {u"外部试卷（示例）"_qs, u"一、单项选择题"_qs};
  l += InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs);
  l += InlineQuestion(2, u"B"_qs, u"《示例刑法》第2条"_qs);
  l += InlineQuestion(3, u"C"_qs, u"《示例刑法》第3条"_qs);
  l += u"二、多项选择题"_qs;
  l += InlineQuestion(4, u"A、C"_qs, u"《示例刑法》第1条、第2条"_qs);
  l += InlineQuestion(5, u"BD"_qs, u"《示例刑法》第4条"_qs);
  l += u"三、任意选择题"_qs;
  l += InlineQuestion(1, u"ABCD"_qs, u"《示例刑法》第3条"_qs);
  return Lines(l);
}

// The same kind with the answers together behind [本卷参考答案].
inline QString SeparateAnswers() {
  QStringList l = {u"一、单项选择题"_qs};
  l += BareQuestion(1);
  l += BareQuestion(2);
  l += u"二、多项选择题"_qs;
  l += BareQuestion(3);
  l += u"[本卷参考答案]"_qs;
  l += u"一、单项选择题"_qs;
  l += AnswerItem(1, u"B"_qs, u"《示例刑法》第2条"_qs);
  l += AnswerItem(2, u"C"_qs, {});
  l += u"二、多项选择题"_qs;
  l += AnswerItem(3, u"AD"_qs, u"《示例刑法》第1条"_qs);
  return Lines(l);
}

// \lawtxt\示例刑法.mmd: four articles.
inline QString SampleCriminalLaw() {
  return Lines({u"中华人民共和国示例刑法"_qs, u"　　第一条 为了示例，制定本法。"_qs, u"　　第二条 本法适用于示例。"_qs,
                u"　　第三条 示例的第三条。"_qs, u"　　第四条 示例的第四条。"_qs});
}

}  // namespace mj::test
