#include "papers/auto_format_literal.h"

#include <QStringList>

#include "law/line_joiner.h"
#include "law/numerals.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj::literal {

namespace {

const QString CrLf = QStringLiteral("\r\n");

QString N(int n) { return QString::number(n); }

// The search and replacement texts of a loop, made once: the loop then runs
// as written, one replacement per rule.
using Pairs = QList<std::pair<QString, QString>>;

void Replace(QString& t, const QString& a, const QString& b) { t = ReplaceAll(t, a, b); }

void WhileReplace(QString& t, const QString& a, const QString& b) {
  while (InStr(t, a) > 0) t = ReplaceAll(t, a, b);
}

QList<Step> MakeSteps() {
  QList<Step> s;
  // 1
  s << [](QString& t) { t = UCase(t); };
  // 2
  s << [](QString& t) { Replace(t, QStringLiteral("本卷参考答案"), QStringLiteral("////\\\\\\\\")); };
  // 3
  s << [](QString& t) { Replace(t, QStringLiteral("."), QStringLiteral("．")); };
  // 4
  s << [](QString& t) {
    static const Pairs pairs = [] {
      Pairs p;
      for (int n = 1; n <= 400; ++n)
        for (const QString& m : {QStringLiteral(","), QStringLiteral("，"), QStringLiteral("。"), QStringLiteral("、"),
                                 QStringLiteral(".")})
          p.append({CrLf + N(n) + m, CrLf + N(n) + QStringLiteral("．")});
      return p;
    }();
    // for n = 1 to 400: the five marks in this order
    for (const auto& [a, b] : pairs) Replace(t, a, b);
  };
  // 5
  s << [](QString& t) {
    static const Pairs pairs = [] {
      Pairs p;
      for (int n = 1; n <= 400; ++n)
        for (const QString& m : {QStringLiteral(","), QStringLiteral("，"), QStringLiteral("。"), QStringLiteral("、"),
                                 QStringLiteral("、"), QStringLiteral("．")})
          p.append({QStringLiteral(" ") + N(n) + m, CrLf + N(n) + QStringLiteral("．")});
      return p;
    }();
    // for n = 1 to 400: the marks in this order, 、 twice
    for (const auto& [a, b] : pairs) Replace(t, a, b);
  };
  // 6
  s << [](QString& t) { Replace(t, QStringLiteral(" "), QString()); };
  // 7
  s << [](QString& t) {
    Replace(t, QStringLiteral("《六机关规定》"), QStringLiteral("《六部委刑诉法规定》"));
    Replace(t, QStringLiteral("《民通意见》"), QStringLiteral("《民法通则意见》"));
    Replace(t, QStringLiteral("《高检规则》"), QStringLiteral("《检察院规则》"));
    Replace(t, QStringLiteral("《人民检察院规则》"), QStringLiteral("《检察院规则》"));
    Replace(t, QStringLiteral("《刑诉》"), QStringLiteral("《刑事诉讼法》"));
    Replace(t, QStringLiteral("《刑诉法》"), QStringLiteral("《刑事诉讼法》"));
    Replace(t, QStringLiteral("《民诉》"), QStringLiteral("《民事诉讼法》"));
    Replace(t, QStringLiteral("《民诉法》"), QStringLiteral("《民事诉讼法》"));
    Replace(t, QStringLiteral("《高法解释》"), QStringLiteral("《刑事诉讼法解释》"));
  };
  // 8
  s << [](QString& t) { Replace(t, QStringLiteral("案例分析题"), QStringLiteral("案例题")); };
  // 9
  s << [](QString& t) { Replace(t, QStringLiteral("－"), QStringLiteral("-")); };
  // 10
  s << [](QString& t) { Replace(t, QStringLiteral("见《"), QStringLiteral("参见《")); };
  // 11
  s << [](QString& t) { Replace(t, QStringLiteral("参见《"), QStringLiteral("参见《")); };
  // 12
  s << [](QString& t) {
    Replace(t, QStringLiteral("（"), QStringLiteral("("));
    Replace(t, QStringLiteral("）"), QStringLiteral(")"));
  };
  // 13
  s << [](QString& t) { WhileReplace(t, CrLf + CrLf, CrLf); };
  // 14
  s << [](QString& t) {
    for (const QString& l : {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")})
      for (const QString& m : {QStringLiteral("，"), QStringLiteral(","), QStringLiteral("。")})
        Replace(t, l + m, l + QStringLiteral("．"));
  };
  // 15
  s << [](QString& t) {
    for (int d = 0; d <= 9; ++d) Replace(t, N(d) + QStringLiteral("、"), N(d) + QStringLiteral("．"));
  };
  // 16
  s << [](QString& t) { t = mj::JoinBrokenLines(t); };
  // 17
  s << [](QString& t) {
    for (const QString& l : {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")})
      Replace(t, l + QStringLiteral("、"), CrLf + l + QStringLiteral("．"));
  };
  // 18
  s << [](QString& t) {
    for (const QString& l : {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")})
      Replace(t, l + QStringLiteral("．"), CrLf + l + QStringLiteral("．"));
  };
  // 19
  s << [](QString& t) { WhileReplace(t, QStringLiteral("．．"), QStringLiteral("．")); };
  // 20
  s << [](QString& t) { WhileReplace(t, QStringLiteral("、、"), QStringLiteral("、")); };
  // 21
  s << [](QString& t) { WhileReplace(t, CrLf + CrLf, CrLf); };
  // 22
  s << [](QString& t) { t = UCase(t); };
  // 23
  s << [](QString& t) {
    for (int d = 0; d <= 9; ++d)
      for (const QString& l : {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")})
        Replace(t, N(d) + QStringLiteral("．") + l, N(d) + QStringLiteral("．") + QStringLiteral("答案") + l);
  };
  // 24
  s << [](QString& t) { Replace(t, QStringLiteral("注解"), QStringLiteral("注释")); };
  // 25
  s << [](QString& t) {
    Replace(t, QStringLiteral("答案与解析"), QStringLiteral("答案"));
    Replace(t, QStringLiteral("答案及解析"), QStringLiteral("答案"));
    Replace(t, QStringLiteral("解析：见"), QStringLiteral("参见"));
    Replace(t, QStringLiteral(",参见"), QStringLiteral("参见"));
    Replace(t, QStringLiteral("，参见"), QStringLiteral("参见"));
    Replace(t, QStringLiteral("答案及注释"), QStringLiteral("答案"));
    Replace(t, QStringLiteral("答案与注释"), QStringLiteral("答案"));
  };
  // 26
  s << [](QString& t) {
    t = literal::FormatReplace(t, QStringLiteral("答案"));
    t = literal::FormatReplace(t, QStringLiteral("参见"));
    t = literal::FormatReplace(t, QStringLiteral("注释"));
    t = literal::FormatReplace(t, QStringLiteral("注于"));
    t = literal::FormatReplace(t, QStringLiteral("做题历史"));
  };
  // 27
  s << [](QString& t) { Replace(t, QStringLiteral("]") + CrLf, QStringLiteral("]")); };
  // 28
  s << [](QString& t) {
    Replace(t, QStringLiteral("一．单项选择题"), CrLf + QStringLiteral("一、单项选择题"));
    Replace(t, QStringLiteral("二．多项选择题"), CrLf + QStringLiteral("二、多项选择题"));
    Replace(t, QStringLiteral("三．任意选择题"), CrLf + QStringLiteral("三、任意选择题"));
  };
  // 29
  s << [](QString& t) {
    Replace(t, QStringLiteral("正确") + CrLf + QStringLiteral("[答案：]。"), QStringLiteral("正确答案。"));
    Replace(t, QStringLiteral("正确") + CrLf + QStringLiteral("[答案：]，"), QStringLiteral("正确答案，"));
    Replace(t, QStringLiteral("正确的") + CrLf + QStringLiteral("[答案：]"), QStringLiteral("正确的答案"));
    Replace(t, QStringLiteral("参考") + CrLf + QStringLiteral("[答案：]"), CrLf + QStringLiteral("[参考答案]"));
  };
  // 30
  s << [](QString& t) {
    const qsizetype p = InStr(t, QStringLiteral("一、单项选择题"));
    if (p > 0) t = Mid(t, p);
  };
  // 31
  s << [](QString& t) { t = t + CrLf; };
  // 32
  s << [](QString& t) {
    for (const QString& h :
         {QStringLiteral("一、单项选择题"), QStringLiteral("二、多项选择题"), QStringLiteral("三、任意选择题")}) {
      const qsizetype p = InStr(t, h);
      if (p == 0) continue;
      const qsizetype e = InStr(p, t, CrLf);
      const QString tail = Mid(t, p + Len(h), e - p - Len(h)) + CrLf;
      if (Len(tail) > Len(CrLf)) Replace(t, tail, CrLf);
    }
  };
  // 33
  s << [](QString& t) { Replace(t, QStringLiteral(","), QStringLiteral("，")); };
  // 34
  s << [](QString& t) {
    static const Pairs pairs = [] {
      Pairs p;
      const QStringList table = MakeNumeralTable();
      for (int n = 1; n <= 500; ++n) {
        const QString big = table[n];
        p.append({QStringLiteral("第") + big + QStringLiteral("，"), QStringLiteral("第") + N(n) + QStringLiteral("，")});
        p.append({QStringLiteral("第") + big + QStringLiteral("、"), QStringLiteral("第") + N(n) + QStringLiteral("、")});
        p.append({QStringLiteral("第") + big + QStringLiteral("条"), QStringLiteral("第") + N(n) + QStringLiteral("条")});
        p.append({QStringLiteral("、") + big + QStringLiteral("条"), QStringLiteral("、") + N(n) + QStringLiteral("条")});
      }
      return p;
    }();
    // for n = 1 to 500: the four forms in this order
    for (const auto& [a, b] : pairs) Replace(t, a, b);
  };
  // 35
  s << [](QString& t) { Replace(t, QStringLiteral("////\\\\\\\\"), CrLf + QStringLiteral("[本卷参考答案]")); };
  // 36
  s << [](QString& t) {
    WhileReplace(t, QStringLiteral("《《"), QStringLiteral("《"));
    WhileReplace(t, QStringLiteral("》》"), QStringLiteral("》"));
  };
  // 37
  s << [](QString& t) { WhileReplace(t, CrLf + CrLf, CrLf); };
  return s;
}

}  // namespace

QString FormatReplace(const QString& text, const QString& word) {
  QString t = text;
  Replace(t, QStringLiteral(" "), QString());
  Replace(t, word, word + QStringLiteral("："));
  Replace(t, word + QStringLiteral("：："), word + QStringLiteral("："));
  Replace(t, word + QStringLiteral("："), QStringLiteral("[") + word + QStringLiteral("：]"));
  Replace(t, QStringLiteral("[["), QStringLiteral("["));
  Replace(t, QStringLiteral("]]"), QStringLiteral("]"));
  Replace(t, QStringLiteral("[") + word + QStringLiteral("：]"), CrLf + QStringLiteral("[") + word + QStringLiteral("：]"));
  WhileReplace(t, QStringLiteral("[") + word + QStringLiteral("：]") + CrLf, QStringLiteral("[") + word + QStringLiteral("：]"));
  WhileReplace(t, CrLf + CrLf, CrLf);
  return t;
}

const QList<Step>& AutoFormatSteps() {
  static const QList<Step> steps = MakeSteps();
  return steps;
}

QString AutoFormat(const QString& text, int skip) {
  QString t = text;
  const QList<Step>& steps = AutoFormatSteps();
  for (int i = 0; i < steps.size(); ++i)
    if (i + 1 != skip) steps[i](t);
  return t;
}

}  // namespace mj::literal
