#include "law/law_text.h"

#include <algorithm>

#include "law/char_places.h"
#include "law/law_files.h"
#include "law/law_search.h"
#include "law/numerals.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kCr = QStringLiteral("\r");
const QString kLf = QStringLiteral("\n");

using char_places::At;
using char_places::In;

// The first place from i on whose character is not in set.
qsizetype SkipClass(const QString& s, qsizetype i, const QString& set) {
  while (i <= s.size() && In(set, At(s, i))) ++i;
  return i;
}

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// A 16-bit article count: a value that does not fit leaves the result at 0.
int ToInt16(double v) {
  const long long k = RoundHalfEven(v);
  return (k < -32768 || k > 32767) ? 0 : static_cast<int>(k);
}

}  // namespace

QString LawIndentOf(const QString& text) { return text.contains(kLawIndent) ? kLawIndent : QString(); }

int GetLawTextType(const QString& text) {
  const QString sp = LawIndentOf(text);
  QString t = text;
  if (FindLeadTail(t, sp, QStringLiteral("目录") + kCrLf) > 0) {
    // Step over the table of contents: go on behind its first heading line.
    const QString head = FirstHeadLine(t);
    if (!head.isEmpty()) t = Mid(t, InStr(t, head) + Len(head)) + kCrLf;
  }
  // The first place of CR LF + indent + 第二条 / 二、 / 2．, all three found in
  // one walk over the CRs of the text.
  const QString lead = kCrLf + sp;
  qsizetype a = 0, b = 0, c = 0;
  for (qsizetype at = t.indexOf(u'\r'); at >= 0 && (a == 0 || b == 0 || c == 0); at = t.indexOf(u'\r', at + 1)) {
    if (!QStringView(t).mid(at).startsWith(lead)) continue;
    const QStringView rest = QStringView(t).mid(at + lead.size());
    if (a == 0 && rest.startsWith(u"第二条")) a = at + 1;
    if (b == 0 && rest.startsWith(u"二、")) b = at + 1;
    if (c == 0 && rest.startsWith(u"2．")) c = at + 1;
  }
  constexpr qsizetype kMissing = 100000;
  if (a == 0 && b == 0 && c == 0) return 0;
  if (a == 0) a = kMissing;
  if (b == 0) b = kMissing;
  if (c == 0) c = kMissing;
  if (a <= b && a <= c) return 1;
  if (b <= c) return 2;
  return 3;
}

QString FirstHeadLine(const QString& text) {
  const QString sp = LawIndentOf(text);
  const QString firsts = kLf + sp + QStringLiteral("第一二三四五六七八九十");
  const QString skips = kLf + sp + QStringLiteral("第零一二三四五六七八九十百千万");
  const QString stops = QStringLiteral("章节条部．、") + sp + QStringLiteral(" ");
  const QString t = text + kCrLf;
  // Each line runs from behind the previous CR up to and including its own CR,
  // so it starts with the LF of the break before it.
  qsizetype from = 1;
  for (qsizetype cr = InStr(from, t, kCr); cr > 0; cr = InStr(from, t, kCr)) {
    const QString line = Mid(t, from, cr - from + 1);
    from = cr + 1;
    if (!In(firsts, At(line, 1))) continue;
    const qsizetype i = SkipClass(line, 1, skips);
    if (In(stops, At(line, i))) return line;
  }
  return QString();
}

int LastItemNum(const QString& text) { return LastItemNum(text, GetLawTextType(text)); }

int LastItemNum(const QString& text, int type) {
  if (type == 0) return 0;
  const QString sp = LawIndentOf(text);
  // An appendix is never part of an article: start above its first line.
  const qsizetype appendix = LastPosSkipping(text, kCrLf + sp + QStringLiteral("附件"));
  return LastItemNumFrom(text, type, sp, appendix > 0 ? appendix : Len(text));
}

int LastItemNumFrom(const QString& text, int type, const QString& sp, qsizetype from) {
  if (type == 0) return 0;
  const qsizetype lsp = Len(sp);
  const QString alphabet = type == 3 ? QStringLiteral("0123456789") : QStringLiteral("零一二三四五六七八九十百千万");
  const QString terminators = type == 1 ? QStringLiteral("条") : alphabet;
  const QString head1 = kLf + sp + QStringLiteral("第");
  const QString head23 = kLf + sp;

  qsizetype i = std::min(from, Len(text));
  qsizetype end = 0;
  qsizetype start = 0;
  for (; i >= 1; --i) {
    if (end == 0 && In(terminators, At(text, i))) {
      end = i;
      --i;
    }
    if (end == 0) continue;
    // A read before the first character fails; the program then went on with
    // the statement after the test, which is the branch where it holds.
    if (i >= 1 && In(alphabet, At(text, i))) continue;
    bool holds = true;
    if (type == 1) {
      const auto before = MidChecked(text, i - 1 - lsp, lsp + 2);
      if (before) holds = *before == head1;
    } else {
      const auto before = MidChecked(text, i - lsp, lsp + 1);
      if (before) holds = *before == head23;
    }
    if (holds) {
      start = i + 1;
      break;
    }
    end = 0;  // a number inside a sentence: go on upwards
  }
  if (start == 0 || start > end) return 0;
  QString number = Mid(text, start, end - start + 1);
  if (Right(number, 1) == u"条") number.chop(1);
  if (type == 3) return ToInt16(Val(number));
  return DaXieToNum(number);
}

double ItemNumAtCaret(const QString& text, qsizetype pos, int type) {
  if (pos + 2 <= 1) return 0;
  QString numerals;
  if (type == 1 || type == 2)
    numerals = QStringLiteral("一二三四五六七八九十零百千万");
  else if (type == 3)
    numerals = QStringLiteral("0123456789");
  else
    return 0;
  const QString separators = QStringLiteral("　 、．");
  const QString head1 = kCrLf + QStringLiteral("　　");
  const QString head23 = kCrLf + QStringLiteral("　");

  qsizetype end = 0;
  qsizetype start = 0;
  // Places behind the text hold no character, so nothing can happen there.
  for (qsizetype i = std::min(pos + 2, Len(text) + 1); i >= 1; --i) {
    if (end == 0 && i >= 3 && In(separators, At(text, i))) {
      if (type == 1) {
        if (At(text, i - 1) == u'条') {
          end = i - 2;
          i -= 2;
        }
      } else if (In(numerals, At(text, i - 1))) {
        end = i - 1;
        i -= 1;
      }
    }
    if (end > 0 && !In(numerals, At(text, i)) && i >= (type == 1 ? 5 : 4)) {
      if (type == 1) {
        if (At(text, i) == u'第') {
          if (Mid(text, i - 4, 4) == head1) {
            start = i + 1;
            break;
          }
          end = 0;
        }
      } else if (At(text, i) == u'　') {
        if (Mid(text, i - 3, 3) == head23) {
          start = i + 1;
          break;
        }
        end = 0;
      }
    }
  }
  if (start >= 1 && end >= start) {
    const QString number = Mid(text, start, end - start + 1);
    if (type == 3) return Val(number);
    return DaXieToNum(number);
  }
  return 0;
}

int LineKind(const QString& line, int type) { return LineKind(QStringView(line), type, line.contains(kLawIndent)); }

int LineKind(QStringView line, int type, bool doubleBlank) {
  // The 1-based character of the line; a null character outside it.
  auto at = [line](qsizetype i) { return (i >= 1 && i <= line.size()) ? line.at(i - 1) : QChar(); };
  auto skip = [&](qsizetype i, const QString& set) {
    while (i <= line.size() && In(set, at(i))) ++i;
    return i;
  };
  const QString sp = doubleBlank ? kIdeoBlank : QString();
  if (line.size() < 3) return 0;
  // The dated note under a title: (...) or （...） closing the first line.
  const qsizetype br = line.indexOf(kCrLf);
  if (br >= 0) {
    const QString first = Trim(line.left(br + 2).toString());
    if ((first.contains(u'(') && first.endsWith(QStringLiteral(")") + kCrLf)) ||
        (first.contains(u'（') && first.endsWith(QStringLiteral("）") + kCrLf)))
      return 1;
  }
  if (type <= 0 || type > 3) return 0;
  const QChar c1 = at(1);
  const QChar headFirst = At(sp + QStringLiteral("第"), 1);

  if (type == 1) {
    if (c1 != headFirst) return 0;
    const QChar stop = at(skip(1, sp + QStringLiteral("第一二三四五六七八九十百千万亿零")));
    if (stop == u'条') return 1;
    if (In(QStringLiteral("编章节部分　"), stop)) return 2;
    return 0;
  }
  if (type == 2) {
    const QString numerals = sp + QStringLiteral("一二三四五六七八九十百千万零");
    if (In(numerals, c1)) {
      const QChar stop = at(skip(1, numerals));
      return In(QStringLiteral("、　． "), stop) ? 1 : 0;
    }
    if (c1 != headFirst) return 0;
    const QChar stop = at(skip(2, numerals));
    return In(QStringLiteral("编章节部分、．　 "), stop) ? 2 : 0;
  }
  // Type 3: a short line of a Chinese numeral and a separator is a chapter
  // title, unless it ends a sentence.
  if (!IsDigit(c1)) {
    if (!In(sp + QStringLiteral("一二三四五六七八九十"), c1)) return 0;
    const QChar stop = at(skip(1, sp + QStringLiteral("一二三四五六七八九十零百千万")));
    const qsizetype cr = line.indexOf(u'\r');
    // The first line is taken with its CR, so that its last character is a
    // full stop only when it is the last line.
    const QStringView firstLine = cr >= 0 ? line.left(cr + 1) : line;
    if (In(QStringLiteral("、　． "), stop) && firstLine.size() < 35 && !firstLine.endsWith(u'。')) return 2;
  }
  const QChar stop = at(skip(1, QStringLiteral("0123456789")));
  return In(QStringLiteral("、　． "), stop) ? 1 : 0;
}

QString CutItemTail(const QString& text, int type) {
  QString t = Trim(text) + kCrLf;
  const qsizetype rules = LastPos(t, kCrLf + QStringLiteral("附则"));
  if (rules >= 2) t = Left(t, rules + 1);
  if (Len(t) < 3) return text;
  if (Left(t, 2) == kCrLf) t = Mid(t, 3);

  const QString heads12 = kLf + kIdeoBlank + QStringLiteral("第一二三四五六七八九十百千万零");
  const QString heads3 = kLf + kIdeoBlank + QStringLiteral("第一二三四五六七八九十百零0123456789");
  const QString stops12 = QStringLiteral("条编章部节、 　");
  const QString stops3 = QStringLiteral("编章部条节．、 　");

  QString kept;
  qsizetype from = 1;
  qsizetype br = InStr(from, t, kCrLf);
  // The first line always belongs to the article.
  if (br > 0) {
    kept = Mid(t, from, br - from) + kCrLf;
    from = br + 2;
  }
  for (br = InStr(from, t, kCrLf); br > 0; br = InStr(from, t, kCrLf)) {
    const QString line = Mid(t, from, br - from);
    from = br + 2;
    if (Right(line, 1) == u"。") {
      kept += line + kCrLf;
      continue;
    }
    if (type == 0) return text;
    bool stopper = false;
    if (type == 1 || type == 2) {
      if (In(heads12, At(line, 1))) {
        const qsizetype i = SkipClass(line, 1, heads12);
        stopper = In(stops12, At(line, i));
        if (stopper && type == 1 && !Left(line, i - 1).contains(u'第')) stopper = false;
      }
    } else if (type == 3) {
      if (In(heads3, At(line, 1))) stopper = In(stops3, At(line, SkipClass(line, 1, heads12)));
    }
    if (stopper) return kept;
    kept += line + kCrLf;
  }
  // A trailing （...） note that is not a list goes.
  if (InStr(kept, QStringLiteral("　　（")) > 1 && InStr(kept, QStringLiteral("　　（一")) == 0)
    kept = Left(kept, LastPos(kept, QStringLiteral("　　（")) - 1);
  return kept;
}

QString NoCrLf(const QString& text) {
  QString t = text;
  t.remove(u'\r');
  t.remove(u'\n');
  return t;
}

QString WithoutEndMark(const QString& text) {
  if (!text.contains(kLawEndMark)) return text;
  const auto blank = [](QChar c) { return c == u' ' || c == u'\t' || c == kIdeoBlank.at(0); };
  QString t = text;
  for (qsizetype at = t.indexOf(kLawEndMark); at >= 0; at = t.indexOf(kLawEndMark, at)) {
    const qsizetype lineStart = at == 0 ? 0 : t.lastIndexOf(u'\n', at - 1) + 1;
    const qsizetype lf = t.indexOf(u'\n', at);
    qsizetype contentEnd = lf < 0 ? t.size() : lf;
    if (contentEnd > at + kLawEndMark.size() && t.at(contentEnd - 1) == u'\r') --contentEnd;
    bool alone = true;
    for (qsizetype i = lineStart; i < at && alone; ++i) alone = blank(t.at(i));
    for (qsizetype i = at + kLawEndMark.size(); i < contentEnd && alone; ++i) alone = blank(t.at(i));
    if (!alone) {
      t.remove(at, kLawEndMark.size());
    } else if (lf >= 0) {
      t.remove(lineStart, lf + 1 - lineStart);
      at = lineStart;
    } else {
      // The last line goes together with the line break in front of it.
      qsizetype from = lineStart;
      if (from > 0 && t.at(from - 1) == u'\n') --from;
      if (from > 0 && t.at(from - 1) == u'\r') --from;
      t.truncate(from);
      at = from;
    }
  }
  return t;
}

int LawTypeOfName(const Env& env, const QString& fragment) {
  const QString f = NoCrLf(fragment);
  if (Len(f) <= 3) return 0;
  const qsizetype open = InStr(f, QStringLiteral("《"));
  const qsizetype close = InStr(f, QStringLiteral("》"));
  // The name between the first 《 and the first 》; a 》 before the 《 leaves
  // no name.
  const qsizetype n = close - open - 1;
  const QString name = n >= 0 ? Mid(f, open + 1, n) : QString();
  const LawTextPtr law = LoadLawByName(env, name);
  return law ? law->type() : 0;
}

bool HasPlainChar(const QString& text) {
  static const QString plain = QStringLiteral("\r\n　 第条一二三四五六七八九十百千万零1234567890");
  for (QChar c : text)
    if (!plain.contains(c)) return true;
  return false;
}

QString MissingNumbers(const QString& text, long long from, long long to) {
  QString missing;
  qsizetype at = 1;
  for (long long i = from; i <= to; ++i) {
    const QString mark = CStr(i) + kFullPoint;
    const qsizetype p = InStr(at, text, kCrLf + mark);
    if (p > 0)
      at = p + 1;
    else
      missing += mark;
  }
  return missing;
}

QString GetLawNamesIn(const QString& known, const QString& text) {
  QString names;
  qsizetype from = 1;
  for (;;) {
    const qsizetype open = InStr(from, text, QStringLiteral("《"));
    if (open == 0) break;
    const qsizetype close = InStr(open + 1, text, QStringLiteral("》"));
    if (close == 0) break;
    QString name = Mid(text, open, close - open + 1);
    name.remove(kCrLf);
    if (InStr(known, name) == 0) names += name;
    from = close + 1;
  }
  return names;
}

qsizetype LineEndAt(const QString& text, qsizetype pos) {
  if (text.isEmpty()) return 1;
  if (pos < 1) pos = 1;
  // A last line without a line end runs to the end of the text.
  auto lineEnd = [&](qsizetype from) {
    const qsizetype e = InStr(from, text, kCrLf);
    return e > 0 ? e : Len(text) + 1;
  };
  qsizetype e = lineEnd(pos);
  const qsizetype lineStart = InStrRev(text, kCrLf, e - 1);
  const QString line = lineStart > 0 ? Mid(text, lineStart, e - lineStart) : Left(text, e - 1);
  const qsizetype open = InStr(line, kLf + QStringLiteral("《"));
  if (open > 0 && InStr(open, line, QStringLiteral("》")) > 0 && e <= Len(text)) e = lineEnd(e + 1);
  return e - 1;
}

}  // namespace mj
