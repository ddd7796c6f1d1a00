#include "papers/auto_format.h"

#include <QHash>

#include "law/line_joiner.h"
#include "law/numerals.h"
#include "platform/events.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kCrLf2 = QStringLiteral("\r\n\r\n");
const QString kPoint = QStringLiteral("．");
// Stands for 本卷参考答案 while the keyword rules run, so that they do not tear
// 答案 out of it. None of the rules searches for any of its characters.
const QString kShield = QStringLiteral("////\\\\\\\\");

QString Collapse(QString t, const QString& twice, const QString& once) {
  while (t.contains(twice)) t = ReplaceAll(t, twice, once);
  return t;
}

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// The value of the decimal digits of t from i (0-based) on, when they are a
// number from 1 to limit written without a leading zero; *end is then the
// place behind them. 0 when they are not.
int NumberAt(const QString& t, qsizetype i, int limit, qsizetype* end) {
  qsizetype e = i;
  int value = 0;
  while (e < t.size() && IsDigit(t.at(e))) {
    value = value * 10 + (t.at(e).unicode() - u'0');
    if (value > limit) return 0;
    ++e;
  }
  if (e == i || t.at(i) == u'0') return 0;
  *end = e;
  return value;
}

// Question numbers at the start of a line: CR LF + n + one of ,，。、. becomes
// CR LF + n + ．, for n = 1 .. 400.
//
// One walk gives what the 400 x 5 replacements give: a match is a line break,
// exactly the digits of n and a mark; the digits behind the line break are
// therefore the whole run of digits there, so at most one n matches at a
// place. A replacement only changes the mark into ．, which no rule searches
// for, so it neither makes nor breaks another match, and the order of the
// replacements does not matter.
QString NumbersAfterLineBreaks(const QString& t) {
  static const QString marks = QStringLiteral(",，。、.");
  QString out;
  out.reserve(t.size());
  Breather breathe;
  qsizetype from = 0;
  for (qsizetype p = t.indexOf(kCrLf); p >= 0; p = t.indexOf(kCrLf, p + 1)) {
    breathe.tick();
    qsizetype end = 0;
    if (!NumberAt(t, p + 2, 400, &end) || end >= t.size() || !marks.contains(t.at(end))) continue;
    out += QStringView(t).mid(from, end - from);
    out += kPoint;
    from = end + 1;
  }
  out += QStringView(t).mid(from);
  return out;
}

// Question numbers inside a line: a blank + n + one of ,，。、． becomes a line
// break + n + ．, for n = 1 .. 400. One walk for the same reasons as above:
// the digits behind the blank are the whole run there, and a replacement
// takes away the blank, which only a match of its own could have used.
QString NumbersAfterBlanks(const QString& t) {
  static const QString marks = QStringLiteral(",，。、．");
  QString out;
  out.reserve(t.size() + t.size() / 32);
  Breather breathe;
  qsizetype from = 0;
  for (qsizetype p = t.indexOf(u' '); p >= 0; p = t.indexOf(u' ', p + 1)) {
    breathe.tick();
    qsizetype end = 0;
    if (!NumberAt(t, p + 1, 400, &end) || end >= t.size() || !marks.contains(t.at(end))) continue;
    out += QStringView(t).mid(from, p - from);
    out += kCrLf;
    out += QStringView(t).mid(p + 1, end - p - 1);
    out += kPoint;
    from = end + 1;
  }
  out += QStringView(t).mid(from);
  return out;
}

// A mark behind one of the given characters replaced, for every pair of
// character and mark: A， A, A。 ... D。 become A． ... D．, or 0、 ... 9、
// become 0． ... 9．. One walk gives what one replacement per pair gives: a
// match is two characters, the first never a mark, and the new mark ．is
// none of the marks searched, so no replacement makes or breaks another.
QString MarkBehind(const QString& t, const QString& firsts, const QString& marks) {
  QString out = t;
  for (qsizetype i = 1; i < out.size(); ++i)
    if (marks.contains(out.at(i)) && firsts.contains(out.at(i - 1))) out[i] = kPoint.at(0);
  return out;
}

// A list entry such as 12．A is an answer: digit ．letter becomes digit ．答案
// letter. One walk for the same reason: the inserted 答案 holds no digit, no ．
// and no letter A to D.
QString ListEntriesAsAnswers(const QString& t) {
  static const QString letters = QStringLiteral("ABCD");
  QString out;
  out.reserve(t.size() + t.size() / 32);
  qsizetype from = 0;
  for (qsizetype p = t.indexOf(kPoint); p >= 0; p = t.indexOf(kPoint, p + 1)) {
    if (p == 0 || p + 1 >= t.size() || !IsDigit(t.at(p - 1)) || !letters.contains(t.at(p + 1))) continue;
    out += QStringView(t).mid(from, p + 1 - from);
    out += QStringLiteral("答案");
    from = p + 1;
  }
  out += QStringView(t).mid(from);
  return out;
}

struct ArticleNumerals {
  QHash<QString, int> value;  // numeral of n -> n, n = 1 .. 500
  QString chars;              // every character those numerals use
};

const ArticleNumerals& Numerals500() {
  static const ArticleNumerals table = [] {
    ArticleNumerals a;
    const QStringList numerals = MakeNumeralTable();
    for (int n = 1; n <= 500; ++n) {
      a.value.insert(numerals[n], n);
      for (const QChar c : numerals[n])
        if (!a.chars.contains(c)) a.chars += c;
    }
    return a;
  }();
  return table;
}

// Article numbers in digits: 第 + numeral + one of ，、条, and 、 + numeral +
// 条, for the numerals of 1 .. 500.
//
// One walk gives what the 500 x 4 replacements give: a match is 第 or 、,
// exactly the numeral and its closing mark, none of which is a numeral
// character, so the numeral is the whole run of numeral characters behind 第
// or 、. A replacement keeps both marks and only puts digits in place of the
// numeral, which no rule searches for: matches never make or break one
// another, also where the closing 、 of one opens the next (第十、二条).
QString ArticleNumbersInDigits(const QString& t) {
  const ArticleNumerals& a = Numerals500();
  QString out;
  out.reserve(t.size());
  Breather breathe;
  qsizetype from = 0;
  for (qsizetype i = 0; i < t.size(); ++i) {
    const QChar opener = t.at(i);
    if (opener != u'第' && opener != u'、') continue;
    breathe.tick();
    qsizetype e = i + 1;
    while (e < t.size() && a.chars.contains(t.at(e))) ++e;
    if (e == i + 1 || e >= t.size()) continue;
    const QChar close = t.at(e);
    const bool closes = close == u'条' || (opener == u'第' && (close == u'，' || close == u'、'));
    if (!closes) continue;
    const auto it = a.value.constFind(QStringView(t).mid(i + 1, e - i - 1).toString());
    if (it == a.value.constEnd()) continue;
    out += QStringView(t).mid(from, i + 1 - from);
    out += QString::number(*it);
    from = e;
    i = e - 1;  // the closing mark may open the next match
  }
  out += QStringView(t).mid(from);
  return out;
}

}  // namespace

QString FormatReplace(const QString& text, const QString& word) {
  const QString colon = word + QStringLiteral("：");
  const QString tag = u'[' + colon + u']';
  QString t = ReplaceAll(text, QStringLiteral(" "), QString());
  t = ReplaceAll(t, word, colon);
  t = ReplaceAll(t, colon + QStringLiteral("："), colon);
  t = ReplaceAll(t, colon, tag);
  t = ReplaceAll(t, QStringLiteral("[["), QStringLiteral("["));
  t = ReplaceAll(t, QStringLiteral("]]"), QStringLiteral("]"));
  t = ReplaceAll(t, tag, kCrLf + tag);
  t = Collapse(t, tag + kCrLf, tag);
  return Collapse(t, kCrLf2, kCrLf);
}

QString AutoFormat(const QString& text) {
  static const QString letters = QStringLiteral("ABCD");
  QString t = UCase(text);
  t = ReplaceAll(t, QStringLiteral("本卷参考答案"), kShield);
  t = ReplaceAll(t, QStringLiteral("."), kPoint);
  // The number rules read the blanks and line breaks around numbers, so they
  // run before the blanks go.
  t = NumbersAfterLineBreaks(t);
  t = NumbersAfterBlanks(t);
  t = ReplaceAll(t, QStringLiteral(" "), QString());

  // Short law names; blanks are gone, so names written with blanks match too.
  static const QList<std::pair<QString, QString>> names = {
      {QStringLiteral("《六机关规定》"), QStringLiteral("《六部委刑诉法规定》")},
      {QStringLiteral("《民通意见》"), QStringLiteral("《民法通则意见》")},
      {QStringLiteral("《高检规则》"), QStringLiteral("《检察院规则》")},
      {QStringLiteral("《人民检察院规则》"), QStringLiteral("《检察院规则》")},
      {QStringLiteral("《刑诉》"), QStringLiteral("《刑事诉讼法》")},
      {QStringLiteral("《刑诉法》"), QStringLiteral("《刑事诉讼法》")},
      {QStringLiteral("《民诉》"), QStringLiteral("《民事诉讼法》")},
      {QStringLiteral("《民诉法》"), QStringLiteral("《民事诉讼法》")},
      {QStringLiteral("《高法解释》"), QStringLiteral("《刑事诉讼法解释》")},
  };
  for (const auto& [from, to] : names) t = ReplaceAll(t, from, to);
  t = ReplaceAll(t, QStringLiteral("案例分析题"), QStringLiteral("案例题"));
  t = ReplaceAll(t, QStringLiteral("－"), QStringLiteral("-"));
  t = ReplaceAll(t, QStringLiteral("见《"), QStringLiteral("参见《"));
  // Changes nothing, as it always has: an input that said 参见《 keeps the
  // doubled 参 that the rule before gave it.
  t = ReplaceAll(t, QStringLiteral("参见《"), QStringLiteral("参见《"));
  t = ReplaceAll(t, QStringLiteral("（"), QStringLiteral("("));
  t = ReplaceAll(t, QStringLiteral("）"), QStringLiteral(")"));
  // The line joiner stops at an empty line: close the gaps first.
  t = Collapse(t, kCrLf2, kCrLf);

  // Marks unified before the joiner, options split only behind it, or each
  // option would be joined into its neighbour again.
  t = MarkBehind(t, letters, QStringLiteral("，,。"));
  t = MarkBehind(t, QStringLiteral("0123456789"), QStringLiteral("、"));
  t = JoinBrokenLines(t);
  for (const QChar l : letters) t = ReplaceAll(t, l + QStringLiteral("、"), kCrLf + l + kPoint);
  for (const QChar l : letters) t = ReplaceAll(t, l + kPoint, kCrLf + l + kPoint);
  t = Collapse(t, QStringLiteral("．．"), kPoint);
  t = Collapse(t, QStringLiteral("、、"), QStringLiteral("、"));
  t = Collapse(t, kCrLf2, kCrLf);
  t = UCase(t);

  // Option markers are safe here, as they stand at the start of a line by now.
  t = ListEntriesAsAnswers(t);
  t = ReplaceAll(t, QStringLiteral("注解"), QStringLiteral("注释"));
  // The long forms become the bare words before the words become tags.
  static const QList<std::pair<QString, QString>> forms = {
      {QStringLiteral("答案与解析"), QStringLiteral("答案")}, {QStringLiteral("答案及解析"), QStringLiteral("答案")},
      {QStringLiteral("解析：见"), QStringLiteral("参见")},   {QStringLiteral(",参见"), QStringLiteral("参见")},
      {QStringLiteral("，参见"), QStringLiteral("参见")},     {QStringLiteral("答案及注释"), QStringLiteral("答案")},
      {QStringLiteral("答案与注释"), QStringLiteral("答案")},
  };
  for (const auto& [from, to] : forms) t = ReplaceAll(t, from, to);
  for (const QString& word : {QStringLiteral("答案"), QStringLiteral("参见"), QStringLiteral("注释"),
                              QStringLiteral("注于"), QStringLiteral("做题历史")})
    t = FormatReplace(t, word);
  // The text of a tag goes on the tag's line.
  t = ReplaceAll(t, QStringLiteral("]") + kCrLf, QStringLiteral("]"));
  t = ReplaceAll(t, QStringLiteral("一．单项选择题"), kCrLf + QStringLiteral("一、单项选择题"));
  t = ReplaceAll(t, QStringLiteral("二．多项选择题"), kCrLf + QStringLiteral("二、多项选择题"));
  t = ReplaceAll(t, QStringLiteral("三．任意选择题"), kCrLf + QStringLiteral("三、任意选择题"));
  // What the tags did to ordinary words, in the four forms that are mended.
  t = ReplaceAll(t, QStringLiteral("正确") + kCrLf + QStringLiteral("[答案：]。"), QStringLiteral("正确答案。"));
  t = ReplaceAll(t, QStringLiteral("正确") + kCrLf + QStringLiteral("[答案：]，"), QStringLiteral("正确答案，"));
  t = ReplaceAll(t, QStringLiteral("正确的") + kCrLf + QStringLiteral("[答案：]"), QStringLiteral("正确的答案"));
  t = ReplaceAll(t, QStringLiteral("参考") + kCrLf + QStringLiteral("[答案：]"), kCrLf + QStringLiteral("[参考答案]"));

  static const QStringList headings = {QStringLiteral("一、单项选择题"), QStringLiteral("二、多项选择题"),
                                       QStringLiteral("三、任意选择题")};
  if (const qsizetype p = InStr(t, headings[0]); p > 0) t = Mid(t, p);
  t += kCrLf;
  // A remark behind a heading, such as (每题1分), goes, and so does the same
  // remark anywhere else.
  for (const QString& h : headings) {
    const qsizetype p = InStr(t, h);
    if (p == 0) continue;
    const qsizetype e = InStr(p, t, kCrLf);
    const qsizetype from = p + Len(h);
    const QString tail = (e >= from ? Mid(t, from, e - from) : QString()) + kCrLf;
    if (Len(tail) > 2) t = ReplaceAll(t, tail, kCrLf);
  }
  t = ReplaceAll(t, QStringLiteral(","), QStringLiteral("，"));
  t = ArticleNumbersInDigits(t);
  t = ReplaceAll(t, kShield, kCrLf + QStringLiteral("[本卷参考答案]"));
  t = Collapse(t, QStringLiteral("《《"), QStringLiteral("《"));
  t = Collapse(t, QStringLiteral("》》"), QStringLiteral("》"));
  return Collapse(t, kCrLf2, kCrLf);
}

}  // namespace mj
