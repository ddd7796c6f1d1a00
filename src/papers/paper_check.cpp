#include "papers/paper_check.h"

#include <QHash>
#include <algorithm>

#include "bank/tables.h"
#include "law/law_text.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kPoint = QStringLiteral("．");
const QString kAnswerTag = QStringLiteral("[答案：]");
const QString kCitationTag = QStringLiteral("[参见：]");
// The words of the report lines, per section.
const QString kTypeWord[4] = {QString(), QStringLiteral("单选题"), QStringLiteral("多选题"), QStringLiteral("任选题")};
const QString kCountWord[4] = {QString(), QStringLiteral("道单选题，"), QStringLiteral("道多选题，"),
                               QStringLiteral("道任选题，")};

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// The number written by the ASCII digits from index i on; numbers beyond the
// range of a 32-bit integer stay at its top.
qint64 DigitsAt(const QString& text, qsizetype i) {
  qint64 v = 0;
  while (i < text.size() && IsDigit(text.at(i))) {
    v = std::min<qint64>(v * 10 + (text.at(i).unicode() - u'0'), 2147483647);
    ++i;
  }
  return v;
}

QString Num(qint64 n) { return QString::number(n); }

// Num(n) appended without a string of its own: a stray number can make a
// walk of a hundred thousand numbers, each written into the report.
void AppendNum(QString& out, qint64 n) {
  char16_t digits[24];
  int k = 0;
  const bool negative = n < 0;
  // Digits from the last, each as a non-negative remainder.
  do {
    const qint64 r = n % 10;
    digits[k++] = static_cast<char16_t>(u'0' + (r < 0 ? -r : r));
    n /= 10;
  } while (n != 0);
  if (negative) digits[k++] = u'-';
  std::reverse(digits, digits + k);
  out += QStringView(digits, k);
}

// Every line start CR LF + digits + "．" of a text, by its number. A search for
// CR LF + n + "．" finds exactly the entries whose digits are n's decimal text
// (the character behind the digits must be "．"), so the places below are the
// places InStr would find, without scanning the text once per number. Digits
// with a leading zero are never n's decimal text and are left out; keeping
// the number instead of its text spares a string per lookup, which matters
// when a stray number makes a walk of a hundred thousand numbers.
class LineNumbers {
 public:
  explicit LineNumbers(const QString& text) {
    const qsizetype n = text.size();
    qsizetype from = 0;
    for (;;) {
      const qsizetype p = text.indexOf(kCrLf, from);
      if (p < 0) break;
      qsizetype q = p + 2;
      while (q < n && IsDigit(text.at(q))) ++q;
      const qsizetype digits = q - p - 2;
      const bool decimalText = digits == 1 || (digits > 1 && digits <= 18 && text.at(p + 2) != u'0');
      if (decimalText && q < n && text.at(q) == u'．') {
        qint64 v = 0;  // at most 18 digits: no overflow
        for (qsizetype d = p + 2; d < q; ++d) v = v * 10 + (text.at(d).unicode() - u'0');
        places_[v].append(p + 1);
      }
      from = p + 2;
    }
  }
  // The 1-based place of the first CR LF + number + "．" at or behind from;
  // 0 when there is none.
  qsizetype find(qint64 number, qsizetype from = 1) const {
    const auto it = places_.constFind(number);
    if (it == places_.cend()) return 0;
    const auto at = std::lower_bound(it->cbegin(), it->cend(), from);
    return at == it->cend() ? 0 : *at;
  }

 private:
  QHash<qint64, QList<qsizetype>> places_;
};

// The number of characters of n's decimal text.
qsizetype NumLength(qint64 n) {
  qsizetype len = n < 0 ? 2 : 1;
  for (qint64 v = n < 0 ? -(n / 10) : n / 10; v > 0; v /= 10) ++len;
  return len;
}

// The text of question i of a section: between its number and the next
// number (to the end when the next is missing); the last question runs from
// its number to the end of the section. Empty when its number is missing.
QString ItemOf(const QString& section, const LineNumbers& numbers, qint64 i, qint64 last) {
  const qsizetype p = numbers.find(i);
  if (p == 0) return QString();
  if (i >= last) return Mid(section, p);
  const qsizetype s = p + 2 + NumLength(i) + 1;  // behind CR LF + i + "．"
  const qsizetype q = numbers.find(i + 1, s);
  return q == 0 ? Mid(section, s) : Mid(section, s, q - s);
}

// The last number a walk from first to last looks at.
qint64 WalkEnd(qint64 first, qint64 last) { return std::min(last, first + kMaxNumberSpan - 1); }

const QString kSpanCut = QStringLiteral("……（题号跨度过大，其余各题从略。）");

// The law names of a citation that the list does not hold go into the
// question's report line and the bad names; false when there are any.
bool NoteUnknownNames(const QString& allNames, const QString& citation, QString& out, QString& bad) {
  const QString unknown = GetLawNamesIn(allNames, citation);
  if (unknown.isEmpty()) return true;
  bad += unknown;
  out += QStringLiteral("未注册的法律名") + unknown;
  return false;
}

}  // namespace

qint64 GetStartOrEndNum(const Env& env, const QString& text, const QString& which) {
  const QString w = which.toLower();
  if (w == u"start") {
    for (qsizetype i = 1; i < text.size(); ++i)
      if (IsDigit(text.at(i)) && text.at(i - 1) == u'\n') return DigitsAt(text, i);
    return 0;
  }
  if (w == u"end") {
    int state = 0;
    for (qsizetype i = text.size() - 1; i >= 0; --i) {
      const QChar c = text.at(i);
      if (c == u'．') {
        state = 1;
      } else if (IsDigit(c) && state >= 1) {
        state = 2;
      } else if (c == u'\n' && state == 2) {
        return DigitsAt(text, i + 1);
      } else {
        state = 0;
      }
    }
    return 0;
  }
  env.msgBox(QStringLiteral("在调用函数时使用的第二个参数必须为start 或者　end"), box::Exclamation,
             QStringLiteral("调用GetStartOrEndNum错误"));
  return 0;
}

QString GetLostNum(const QString& section, qint64 first, qint64 last) {
  if (section.isEmpty() || last < first) return QString();
  const LineNumbers numbers(section);
  QString lost;
  qsizetype pos = 1;
  const qint64 end = WalkEnd(first, last);
  for (qint64 i = first; i <= end; ++i) {
    const qsizetype hit = numbers.find(i, pos);
    if (hit > 0)
      pos = hit + 1;
    else {
      AppendNum(lost, i);
      lost += kPoint;
    }
  }
  if (end < last) lost += QStringLiteral("……");
  return lost;
}

QString OnlyABCD(const QString& text) {
  QString r;
  for (const QChar c : {u'A', u'B', u'C', u'D'})
    if (text.contains(c)) r += c;
  return r;
}

QString GetAllLawName(const Env& env, bool* ok) {
  const DbfTable t = DbfTable::open(env.path(QStringLiteral("\\dbf\\") + tables::kLawList));
  if (ok) *ok = t.isOpen();
  QString names;
  const int f = t.fieldIndex(QStringLiteral("lawname"));
  for (const int r : t.rows()) names += Trim(t.text(r, f));
  return names;
}

QString CheckEachItem(const QString& allNames, const QString& section, qint64 first, qint64 last,
                      QString* badNames) {
  if (section.isEmpty() || first == 0 || last == 0 || last < first) return QString();
  const LineNumbers numbers(section);
  QString out;
  QString bad;
  const qint64 end = WalkEnd(first, last);
  for (qint64 i = first; i <= end; ++i) {
    bool ok = true;
    const QString item = ItemOf(section, numbers, i, last);
    if (item.isEmpty()) {
      out += QStringLiteral("×没有第");
      AppendNum(out, i);
      out += QStringLiteral("题的试题编号。");
      out += kCrLf;
      continue;
    }
    out += u'第';
      AppendNum(out, i);
      out += QStringLiteral("题：");
    const qsizetype k = InStr(item, kAnswerTag);
    QString answerLine;
    if (k > 0) {
      const qsizetype e = InStr(k, item, kCrLf);
      answerLine = e > 0 ? Mid(item, k, e - k) : Mid(item, k);
    }
    if (k == 0 || OnlyABCD(answerLine).isEmpty()) {
      out += QStringLiteral("无答案");
      ok = false;
    }
    if (k == 0) {
      out += QStringLiteral("无参见法条");
      ok = false;
    } else {
      ok = NoteUnknownNames(allNames, Mid(item, k), out, bad) && ok;
    }
    out += ok ? QStringLiteral("通过检验。") : QStringLiteral("，未通过检验。");
    out += kCrLf;
  }
  if (end < last) out += kSpanCut + kCrLf;
  if (badNames) *badNames += bad;
  return out;
}

QString CheckEachItem2(const QString& allNames, const QString& section, const QString& answerSection,
                       qint64 first, qint64 last, QString* badNames) {
  if (section.isEmpty() || first == 0 || last == 0 || last < first) return QString();
  const LineNumbers numbers(section);
  const LineNumbers answerNumbers(answerSection);
  QString out;
  QString bad;
  const qint64 end = WalkEnd(first, last);
  for (qint64 i = first; i <= end; ++i) {
    bool ok = true;
    const QString item = ItemOf(section, numbers, i, last);
    const QString answer = ItemOf(answerSection, answerNumbers, i, last);
    // A number without its question gets no checks: its line reads only
    // "通过检验。".
    if (!item.isEmpty()) {
      out += u'第';
      AppendNum(out, i);
      out += QStringLiteral("题：");
      if (OnlyABCD(answer).isEmpty()) {
        out += QStringLiteral("无答案");
        ok = false;
      }
      const qsizetype k = InStr(answer, kCitationTag);
      if (k == 0) {
        out += QStringLiteral("无参见法条");
        ok = false;
      } else {
        const qsizetype e = InStr(k, answer, kCrLf + u'[');
        ok = NoteUnknownNames(allNames, e > 0 ? Mid(answer, k, e - k) : Mid(answer, k), out, bad) && ok;
      }
    }
    out += ok ? QStringLiteral("通过检验。") : QStringLiteral("，未通过检验。");
    out += kCrLf;
  }
  if (end < last) out += kSpanCut + kCrLf;
  if (badNames) *badNames += bad;
  return out;
}

namespace {

// The first part of both checks: the headings, their order, the three
// sections cut out of the question text.
struct Sections {
  std::array<QString, 4> text;
  std::array<qsizetype, 4> at{};
};

Sections CutSections(const QString& text, const QString& caseWord, QString& out, bool& passed) {
  Sections s;
  std::array<bool, 4> f{};
  for (int t = 1; t <= 3; ++t) {
    s.at[t] = InStr(text, kPaperHeadings[t]);
    if (s.at[t] == 0)
      out += QStringLiteral("    没有“") + kPaperHeadings[t] + QStringLiteral("”字样") + kCrLf;
    else
      f[t] = true;
  }
  if (!out.isEmpty()) {
    out += QStringLiteral("注意：由于本程序要适应现存的各种格式，所以你返回后要检查一下原文本是否") +
           QStringLiteral("与该统计结果相符。如果不符，即如果只有单选题和多选题而没有任意选择题，只要下") +
           QStringLiteral("面提示已经通过检验，则也是可以开始做题的。但是你的这个文件内不能只有后面的") +
           QStringLiteral("试题类型而没有前面的试题类型，即不能只有多选题或任意选择题而没有单选题。") + kCrLf;
  }
  if (!f[1] && !f[2] && !f[3]) {
    passed = false;
    out += kCrLf + QStringLiteral("注意：本次检验未通过。") + kCrLf +
           QStringLiteral("原因：本文件中三种试题类型字样均没出现。");
  }
  const qsizetype p1 = s.at[1], p2 = s.at[2], p3 = s.at[3];
  // With heading one missing (p1 = 0) the first part cannot fail, so a paper
  // of multiple choices alone passes this test.
  if ((p2 > 0 && p2 < p1) || (p3 > 0 && (p3 < p2 || p3 < p1))) {
    passed = false;
    out += kCrLf + QStringLiteral("注意：本次检验未通过。") + kCrLf + QStringLiteral("原因：");
    if (p1 > p2 && p2 >= 1) out += QStringLiteral("“二、多项选择题”在“一、单项选择题”前。") + kCrLf;
    if (p1 > p3 && p3 >= 1) out += QStringLiteral("“三、任意选择题”在“一、单项选择题”前。") + kCrLf;
    if (p2 > p3 && p3 >= 1) out += QStringLiteral("“三、任意选择题”在“二、多项选择题”前。") + kCrLf;
  }

  if (f[1]) {
    if (f[2] && p2 >= 1)
      s.text[1] = Left(text, p2 - 1);
    else if (f[3] && p3 >= 1)
      s.text[1] = Left(text, p3 - 1);
    else
      s.text[1] = text;
  }
  if (f[2]) s.text[2] = (f[3] && p3 > p2) ? Mid(text, p2, p3 - p2) : Mid(text, p2);
  if (f[3]) {
    // A case-study block behind the free choices is no part of them: the
    // section ends at the line that holds the case word.
    const qsizetype a = InStr(text, caseWord);
    if (a <= p3) {
      s.text[3] = Mid(text, p3);
    } else {
      const QString prefix = Left(text, LastPos(Left(text, a - 1), kCrLf) + 1);
      s.text[3] = Len(prefix) <= p3 ? prefix : Mid(prefix, p3);
    }
  }
  // Whatever stands before the line of a section's own heading goes.
  for (int t = 1; t <= 3; ++t) {
    const qsizetype k = InStr(s.text[t], kCrLf + kPaperHeadings[t]);
    if (k > 0) s.text[t] = Mid(s.text[t], k);
  }
  return s;
}

// Questions of a section by its option markers: a quarter of them, a half
// rounded up.
qint64 QuestionCount(const QString& section) {
  qint64 markers = 0;
  for (const char* m : {"A．", "B．", "C．", "D．"}) markers += CountOf(section, QString::fromUtf8(m));
  return (markers + 2) / 4;
}

QString NumberLine(const QString& word, qint64 s, qint64 e, qint64 count) {
  const qint64 span = e - s + 1;
  return kCrLf + word + QStringLiteral("编号从") + Num(s) + u'到' + Num(e) + u'共' + Num(span) + u'道' +
         (span == count ? QStringLiteral("=") : QStringLiteral("不等于")) + Num(count) + QStringLiteral("道。") +
         (span == count ? QStringLiteral("检验通过") : QStringLiteral("检验未通过。")) + kCrLf;
}

QString CountLine(const std::array<qint64, 4>& c, qint64 answers) {
  QString out = kCrLf + QStringLiteral("共有");
  for (int t = 1; t <= 3; ++t)
    if (c[t] != 0) out += Num(c[t]) + kCountWord[t];
  return out + Num(answers) + QStringLiteral("个答案。") + kCrLf;
}

// "但1+2并不等于…" when the questions and the answers do not match, with the
// sections whose answer count differs.
QString MismatchLines(const std::array<qint64, 4>& c, qint64 answers, const std::array<QString, 4>& answerTexts) {
  QString out = QStringLiteral("但");
  if (c[1] != 0) out += Num(c[1]);
  if (c[1] >= 1 && c[2] >= 1) out += u'+';
  if (c[2] != 0) out += Num(c[2]);
  if (c[3] >= 1 && (c[1] >= 1 || c[2] >= 1)) out += u'+';
  if (c[3] != 0) out += Num(c[3]);
  out += QStringLiteral("并不等于") + Num(answers) + QStringLiteral("（答案数），请你检查一下") +
         QStringLiteral("“答案：”字样和“A．”“B．”“C．”“D．”等字样。") + kCrLf;
  out += QStringLiteral("提示：");
  for (int t = 1; t <= 3; ++t) {
    const qint64 k = CountOf(answerTexts[t], kAnswerTag);
    if (k != c[t]) out += kTypeWord[t] + u'有' + Num(c[t]) + QStringLiteral("道，而答案却有") + Num(k) + QStringLiteral("道。");
  }
  return out + kCrLf;
}

PaperCheckResult Check(const Env& env, const QString& text, PaperState& state, bool separate) {
  PaperCheckResult r;
  QString& out = r.report;
  state.BadLawNames.clear();

  // The question part and, with separate answers, the answer part.
  QString questions = text;
  QString answersPart;
  if (separate) {
    const qsizetype k = InStr(text, kCrLf + kSeparateAnswersTag);
    questions = k > 0 ? Left(text, k - 1) : text;
    answersPart = k > 0 ? Mid(text, k) : QString();
  }
  const Sections s = CutSections(questions, separate ? QStringLiteral("案例题") : QStringLiteral("案例"), out,
                                 r.passed);

  std::array<QString, 4> answerTexts;
  if (separate) {
    std::array<qsizetype, 4> b{};
    for (int t = 1; t <= 3; ++t) b[t] = InStr(answersPart, kCrLf + kPaperHeadings[t]);
    // A section that ends at the next heading keeps one character of that
    // heading's line end; it does no harm.
    if (b[2] > b[1])
      answerTexts[1] = Mid(answersPart, b[1], b[2] - b[1] + 1);
    else if (b[3] <= b[1])
      answerTexts[1] = Mid(answersPart, b[1]);
    else
      answerTexts[1] = Mid(answersPart, b[1], b[3] - b[1] + 1);
    answerTexts[2] = b[3] <= b[2] ? Mid(answersPart, b[2]) : Mid(answersPart, b[2], b[3] - b[2] + 1);
    answerTexts[3] = Mid(answersPart, b[3]);
  } else {
    answerTexts = s.text;
  }

  const qint64 n = CountOf(questions + answersPart, kCrLf + kAnswerTag);
  std::array<qint64, 4> c{};
  for (int t = 1; t <= 3; ++t) c[t] = QuestionCount(s.text[t]);
  if (!separate || c[1] != 0 || c[2] != 0 || c[3] != 0) out += CountLine(c, n);

  std::array<qint64, 4> first{}, last{}, answerFirst{}, answerLast{};
  state.OutTiNum = {};
  for (int t = 1; t <= 3; ++t) {
    first[t] = GetStartOrEndNum(env, s.text[t], QStringLiteral("Start"));
    last[t] = GetStartOrEndNum(env, s.text[t], QStringLiteral("end"));
    state.OutTiNum[t][1] = static_cast<qint32>(first[t]);
    state.OutTiNum[t][2] = static_cast<qint32>(last[t]);
    if (separate) {
      answerFirst[t] = GetStartOrEndNum(env, answerTexts[t], QStringLiteral("Start"));
      answerLast[t] = GetStartOrEndNum(env, answerTexts[t], QStringLiteral("end"));
    }
  }
  for (int t = 1; t <= 3; ++t)
    if (first[t] != 0) out += NumberLine(kTypeWord[t], first[t], last[t], c[t]);
  if (separate)
    for (int t = 1; t <= 3; ++t)
      if (answerFirst[t] != 0) out += NumberLine(kTypeWord[t] + QStringLiteral("答案"), answerFirst[t], answerLast[t], c[t]);

  std::array<QString, 4> lost;
  for (int t = 1; t <= 3; ++t) lost[t] = GetLostNum(s.text[t], first[t], last[t]);
  if (!lost[1].isEmpty() || !lost[2].isEmpty() || !lost[3].isEmpty()) {
    out += QStringLiteral("提示：");
    for (int t = 1; t <= 3; ++t)
      if (!lost[t].isEmpty()) out += kTypeWord[t] + QStringLiteral("没有第") + lost[t] + QStringLiteral("题。");
    out += kCrLf;
    r.passed = false;
  }
  if (separate) {
    std::array<QString, 4> noAnswer;
    for (int t = 1; t <= 3; ++t) noAnswer[t] = GetLostNum(answerTexts[t], answerFirst[t], answerLast[t]);
    if (!noAnswer[1].isEmpty() || !noAnswer[2].isEmpty() || !noAnswer[3].isEmpty()) {
      out += QStringLiteral("提示：");
      for (int t = 1; t <= 3; ++t)
        if (!noAnswer[t].isEmpty()) out += kTypeWord[t] + u'第' + noAnswer[t] + QStringLiteral("题没有答案。");
      out += kCrLf;
      r.passed = false;
    }
  }

  if (c[1] + c[2] + c[3] != n) {
    out += MismatchLines(c, n, answerTexts);
    r.passed = false;
  }

  const bool anySection = !s.text[1].isEmpty() || !s.text[2].isEmpty() || !s.text[3].isEmpty();
  if (anySection) {
    out += kCrLf + QStringLiteral("各个试题详细检验结果汇报：") + kCrLf + kCrLf;
    state.BadLawNames.clear();
  }
  QString allNames;
  if (anySection) allNames = GetAllLawName(env, &r.lawListOk);
  for (int t = 1; t <= 3; ++t) {
    if (s.text[t].isEmpty()) continue;
    out += kPaperHeadings[t] + kCrLf;
    out += separate ? CheckEachItem2(allNames, s.text[t], answerTexts[t], first[t], last[t], &state.BadLawNames)
                    : CheckEachItem(allNames, s.text[t], first[t], last[t], &state.BadLawNames);
    out += kCrLf;
  }
  if (anySection) out += kCrLf;
  if (!state.BadLawNames.isEmpty()) r.lawNames = PutBadLawToCombo(state.BadLawNames);

  for (int t = 1; t <= 3; ++t) {
    state.OutTiText[t] = s.text[t];
    state.OutDaAnText[t] = separate ? answerTexts[t] : QString();
  }
  return r;
}

}  // namespace

PaperCheckResult CheckValidity(const Env& env, const QString& text, PaperState& state) {
  return Check(env, text, state, false);
}

PaperCheckResult CheckValidity2(const Env& env, const QString& text, PaperState& state) {
  return Check(env, text, state, true);
}

PaperCheckResult RunPaperCheck(const Env& env, const QString& text, PaperState& state) {
  if (InStr(text, kCrLf + kSeparateAnswersTag) > 0) {
    state.OutTiMode = 2;
    return CheckValidity2(env, text, state);
  }
  state.OutTiMode = 1;
  return CheckValidity(env, text, state);
}

QStringList PutBadLawToCombo(const QString& names) {
  QStringList list;
  qsizetype from = 1;
  for (;;) {
    const qsizetype open = InStr(from, names, QStringLiteral("《"));
    if (open == 0) break;
    const qsizetype close = InStr(open, names, QStringLiteral("》"));
    if (close == 0) break;
    const QString name = Mid(names, open, close - open + 1);
    if (!list.contains(name)) list.append(name);
    from = close + 1;
  }
  return list;
}

}  // namespace mj
