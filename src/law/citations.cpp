#include "law/citations.h"

#include <algorithm>
#include <cmath>

#include "bank/tables.h"
#include "law/char_places.h"
#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kTitleOpen = QStringLiteral("《");
const QString kTitleClose = QStringLiteral("》");

// The ranges of one citation text insert at most this many numbers in all:
// no article number lies beyond, and typing slips such as 1-99999999, or
// ten ranges 1-99999, must neither fill the memory nor hold up the answer.
constexpr long long kMaxRangeFill = 99999;
// Each entry of the flat list repeats its title: a title of thousands of
// characters times 99,999 numbers would make hundreds of megabytes. The list
// ends with the entry that takes it past this length.
constexpr qsizetype kMaxFlatLength = 4 * 1024 * 1024;

using char_places::At;
using char_places::In;

// A long range puts up to 99,999 numbers into the list, each read back and
// written again; these two spare the allocation per number that would make
// a whole range take seconds under the memory checkers of the test builds.

// NumText(x) appended to `out`, without a temporary string for whole numbers.
void AppendNumText(QString& out, double x) {
  if (!(std::isfinite(x) && x == std::floor(x) && x >= 0 && x < 1e15)) {
    out += NumText(x);
    return;
  }
  char16_t digits[16];
  int n = 0;
  auto v = static_cast<long long>(x);
  do {
    digits[n++] = static_cast<char16_t>(u'0' + v % 10);
    v /= 10;
  } while (v > 0);
  std::reverse(digits, digits + n);
  out += QStringView(digits, n);
}

// Whether NumText(Val(token)) is the token itself and not 0: ASCII digits
// only, no leading zero, few enough to be exact in a double.
bool IsPlainNumber(QStringView token) {
  if (token.isEmpty() || token.size() > 15 || token.front() == u'0') return false;
  for (const QChar c : token)
    if (c < u'0' || c > u'9') return false;
  return true;
}

QString Flatten(const QString& input, const QString& sep, bool joinTitles, bool editRepair) {
  QString text = input;
  if (editRepair) {
    text = ReplaceAll(text, QStringLiteral("条《"), QStringLiteral("条、《"));
    text = ReplaceAll(text, QStringLiteral("条第"), QStringLiteral("条、第"));
  }
  if (Right(text, 1) != sep) text += sep;

  // Titles are copied as they stand; outside them 第, 条 and line breaks go,
  // and a closing 》 gets a separator behind it.
  QString t;
  t.reserve(text.size() + 16);
  bool inTitle = false;
  for (const QChar c : std::as_const(text)) {
    if (c == u'《') inTitle = true;
    if (c == u'》') {
      inTitle = false;
      t += c;
      t += sep;
      continue;
    }
    if (!inTitle && (c == u'第' || c == u'条' || c == u'\r' || c == u'\n')) continue;
    t += c;
  }
  if (joinTitles) {
    t = ReplaceAll(t, kTitleOpen, sep + kTitleOpen);
    t = ReplaceAll(t, sep + sep, sep);
  }

  // Ranges a-b, the first "-" each time: the text becomes sep + (text before
  // the "-") + sep + a+1 .. b-1 each with sep + (text behind the "-"). Only
  // the part behind the "-" is searched again, so the text is built once
  // instead of per range; the separators put in front are counted.
  if (t.contains(u'-')) {
    qsizetype leading = 0;
    QString done;
    qsizetype at = 0;  // 0-based start of the part not yet expanded
    long long filled = 0;
    for (qsizetype dash = t.indexOf(u'-', at); dash >= 0; dash = t.indexOf(u'-', at)) {
      const QStringView before = QStringView(t).mid(at, dash - at);
      const qsizetype lastSep = before.lastIndexOf(sep);
      const double a = Val(before.mid(lastSep + 1).toString());
      const qsizetype nextSep = t.indexOf(sep, dash + 1);
      const double b = nextSep < 0 ? 0 : Val(t.mid(dash + 1, nextSep - dash - 1));
      done += before;
      done += sep;
      for (double k = a + 1; k <= b - 1 && filled < kMaxRangeFill; k += 1, ++filled) {
        AppendNumText(done, k);
        done += sep;
      }
      ++leading;
      at = dash + 1;
    }
    done += QStringView(t).mid(at);
    t = QString(leading, sep.at(0)) + done;
  }

  if (InStr(t, QStringLiteral("参见《")) > 0) t = OkMid(t, kTitleOpen, 2);

  QString flat;
  QString law;
  qsizetype from = 0;
  for (qsizetype p = t.indexOf(sep, from); p >= 0; p = t.indexOf(sep, from)) {
    const QStringView token = QStringView(t).mid(from, p - from);
    from = p + sep.size();
    if (token.contains(kTitleOpen)) {
      law = token.toString();
      continue;
    }
    flat += law;
    if (IsPlainNumber(token)) {
      // The number as it stands is what Val and NumText would give back.
      flat += token;
    } else {
      const double v = Val(token.toString());
      if (v == 0) {
        flat.chop(law.size());
        continue;
      }
      flat += NumText(v);
    }
    flat += kFullPoint;
    if (flat.size() > kMaxFlatLength) break;
  }
  return flat;
}

}  // namespace

QString LongDaAn(const QString& text, CitationSep sep) {
  if (sep == CitationSep::LawQuery) return Flatten(text, QStringLiteral(","), false, false);
  return Flatten(text, QStringLiteral("、"), true, false);
}

QString LongDaAnForEdit(const QString& text) { return Flatten(text, QStringLiteral("、"), false, true); }

QString OkMid(const QString& text, const QString& mark, int mode) {
  const qsizetype p = InStr(text, mark);
  if (p == 0) return QString();
  switch (mode) {
    case -2:
      return Left(text, p + Len(mark) - 1);
    case -1:
      return Left(text, p - 1);
    case 1:
      return Mid(text, p + Len(mark));
    case 2:
      return Mid(text, p);
    default:
      return QStringLiteral("第三个参数只能为-2，-1，1，2");
  }
}

QString CutAtMark(const QString& text, const QString& mark, int mode) { return OkMid(text, mark, mode); }

QString ReverseText(const QString& text) {
  QString r = text;
  std::reverse(r.begin(), r.end());
  return r;
}

QString NormalizeDaAnLine(const QString& line) {
  const QString s = ReplaceAll(line, QStringLiteral("－"), QStringLiteral("-"));
  // The answer letters: the run of letters and separators from the first of A-D.
  qsizetype i = 1;
  while (i <= Len(s) && !In(QStringLiteral("ABCD"), At(s, i))) ++i;
  qsizetype j = i;
  while (j <= Len(s) && In(QStringLiteral("ABCD,.~-_，、～"), At(s, j))) ++j;
  QString result = QStringLiteral("答案：") + Mid(s, i, j - i) + QStringLiteral("参见");
  QString rest = Mid(s, j);

  // A bare number after a number gets its 第.
  for (QChar d = u'0'; d <= u'9'; d = QChar(d.unicode() + 1))
    rest = ReplaceAll(rest, QString(d) + QStringLiteral("、"), QString(d) + QStringLiteral("、第"));
  rest = ReplaceAll(rest, QStringLiteral("条、"), QStringLiteral("条、第"));
  rest = ReplaceAll(rest, QStringLiteral("第第"), QStringLiteral("第"));
  rest = ReplaceAll(rest, QStringLiteral("第第"), QStringLiteral("第"));

  for (qsizetype open = InStr(rest, kTitleOpen); open > 0; open = InStr(rest, kTitleOpen)) {
    const qsizetype close = InStr(open + 1, rest, kTitleClose);
    if (close == 0 || close >= Len(rest)) break;  // no title, or nothing behind it
    result += Mid(rest, open, close - open + 1);
    const QString behind = Mid(rest, close + 1);
    const qsizetype next = InStr(behind, kTitleOpen);
    result += CleanItemList(next > 0 ? Left(behind, next - 1) : behind);
    rest = next > 0 ? Mid(behind, next) : QString();
  }

  result = ReplaceAll(result, QStringLiteral("条、条、"), QStringLiteral("条、"));
  result = ReplaceAll(result, QStringLiteral("、条、"), QStringLiteral("条、"));
  if (Len(result) > 2 && Right(result, 1) == u"、") result.chop(1);
  return result;
}

QString CleanItemList(const QString& text) {
  QString kept;
  bool on = false;
  for (const QChar c : text) {
    if (c == u'第') on = true;
    if (on) kept += c;
    if (c == u'条') on = false;
  }
  kept = ReplaceAll(kept, QStringLiteral("条"), QStringLiteral("条、"));
  kept = ReplaceAll(kept, QStringLiteral("~"), QStringLiteral("-"));
  for (const QString& mark :
       {QStringLiteral(","), QStringLiteral("，"), QStringLiteral("."), QStringLiteral("。"), QStringLiteral("．")})
    kept = ReplaceAll(kept, mark, QStringLiteral("、"));
  kept.remove(u' ');
  return kept;
}

QString StripKuanXiang(const QString& text) {
  QString out;
  QString pending;
  bool inTitle = false;
  bool inNumber = false;
  for (const QChar c : text) {
    if (c == u'《') {
      out += pending + c;
      pending.clear();
      inTitle = true;
      inNumber = false;
    } else if (c == u'》') {
      out += pending + c;
      pending.clear();
      inTitle = false;
    } else if (inTitle) {
      pending += c;
    } else if (c == u'第') {
      pending += c;
      inNumber = true;
    } else if (c == u'条') {
      out += pending + c + QStringLiteral("、");
      pending.clear();
      inNumber = false;
    } else if (c == u'款' || c == u'项') {
      pending.clear();
      inNumber = false;
    } else if (inNumber) {
      pending += c;
    }
  }
  return out;
}

QString GetLawTxtForDaAn(const Env& env, const QString& citationText) {
  QString flat = LongDaAn(citationText);
  QString printed;
  // The law of the previous piece, which most pieces share.
  QString loadedName;
  QString loadedPath;
  LawTextPtr loaded;
  bool loadedOnce = false;
  // A law file that is missing is said once, however many of its articles
  // are cited.
  QStringList missingTold;
  qsizetype from = 0;
  for (qsizetype dot = flat.indexOf(kFullPoint, from); dot >= 0; dot = flat.indexOf(kFullPoint, from)) {
    QString piece = flat.mid(from, dot - from + 1);
    from = dot + 1;
    piece.remove(kCrLf);
    const qsizetype close = LastPos(piece, kTitleClose);
    const QString title = Left(piece, close);
    QString name = title;
    for (const QString& drop : {QStringLiteral("<"), QStringLiteral(">"), kCrLf, kTitleOpen, kTitleClose})
      name.remove(drop);

    QString item;
    if (!loadedOnce || name != loadedName) {
      loaded = LoadLawByName(env, name);
      loadedPath = LawFilePath(env, name);
      loadedName = name;
      loadedOnce = true;
    }
    const LawTextPtr& law = loaded;
    if (!law) {
      if (missingTold.contains(name)) continue;
      missingTold.append(name);
      item = QStringLiteral("法律文件") + loadedPath + QStringLiteral("不存在。");
    } else {
      const int last = law->lastItemNum();
      item = GetPutTxt2Text(law->text(), law->numeralTable(), Mid(piece, close + 1), &law->index());
      if (Len(item) < 2) {
        QString cited = ReplaceAll(piece, kTitleClose, QStringLiteral("》第"));
        cited = ReplaceAll(cited, kFullPoint, QStringLiteral("条"));
        item = QStringLiteral("法律文件") + loadedPath + QStringLiteral("中共") + CStr(last) +
               QStringLiteral("条，没有") + cited;
      } else if (Left(item, 2) == kCrLf) {
        item = Mid(item, 3);
      }
    }
    printed += title + kCrLf + item + kCrLf;
  }
  return printed;
}

int FindLawNameRow(const DbfTable& lawNames, const QString& name) {
  const int lawname = lawNames.fieldIndex(QStringLiteral("lawname"));
  const QString wanted = Trim(name);
  for (const int row : lawNames.rows())
    if (Trim(lawNames.text(row, lawname)) == wanted) return row;
  return -1;
}

QString GetOneLawFileName(const Env& env, const DbfTable& lawNames, const QString& lawName, bool* endProgram) {
  if (endProgram) *endProgram = false;
  const int row = FindLawNameRow(lawNames, lawName);
  if (row >= 0) return lawNames.text(row, QStringLiteral("filename"));
  env.msgBox(QStringLiteral(" 没有从法律名数据库中得到与该法律名向对应的文件名"));
  if (endProgram) *endProgram = true;
  return QString();
}

QString GetOneLawFileName(const Env& env, const QString& lawName, bool* endProgram) {
  const DbfTable table = DbfTable::open(env.path(QStringLiteral("\\dbf\\") + tables::kLawNames));
  return GetOneLawFileName(env, table, lawName, endProgram);
}

}  // namespace mj
