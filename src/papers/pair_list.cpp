#include "papers/pair_list.h"

#include <QRegularExpression>

#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

bool IsOkPair(const QString& pair) {
  const qsizetype k = InStr(pair, QStringLiteral("-->"));
  if (k < 2) return false;
  const QString a = Left(pair, k - 1);
  const QString b = Mid(pair, k + 3);
  if (Len(a) < 3 || !a.startsWith(u'[') || !a.endsWith(u']')) return false;
  return Len(b) >= 2 && b.startsWith(u'[') && b.endsWith(u']');
}

QString NumberedEntry(int n, const QString& pair) { return Left(CStr(n) + QStringLiteral("    "), 4) + pair; }

QString PairOfEntry(const QString& entry) { return Mid(entry, 5); }

PairLine ReadPairLine(const QString& line) {
  static const QRegularExpression quoted(QStringLiteral("^\\s*\"(.*)\"\\s*,(.*)$"));
  PairLine r;
  QString tick;
  const QRegularExpressionMatch m = quoted.match(line);
  if (m.hasMatch()) {
    r.pair = m.captured(1);
    tick = m.captured(2);
  } else {
    const QString t = line.trimmed();
    if (t.startsWith(u'"')) {
      // A quote that is never closed: the rest of the line is the pair.
      const qsizetype close = t.indexOf(u'"', 1);
      r.pair = close > 0 ? t.mid(1, close - 1) : t.mid(1);
      const qsizetype comma = close > 0 ? t.indexOf(u',', close) : -1;
      if (comma >= 0) tick = t.mid(comma + 1);
    } else {
      const qsizetype comma = t.indexOf(u',');
      r.pair = Trim(comma >= 0 ? t.left(comma) : t);
      if (comma >= 0) tick = t.mid(comma + 1);
    }
  }
  r.ticked = Val(tick) == 1;
  return r;
}

QString PairFileLine(const QString& pair, bool ticked) {
  return u'"' + pair + QStringLiteral("\",") + (ticked ? u'1' : u'0');
}

PairList Read2List(const QString& path) {
  PairList list;
  if (!FileExists(path)) return list;
  const QString text = ReadText(path);
  int n = 0;
  for (const QString& line : text.split(QRegularExpression(QStringLiteral("\r\n|\r|\n")))) {
    if (line.trimmed().isEmpty()) continue;
    const PairLine p = ReadPairLine(line);
    list.append({NumberedEntry(++n, p.pair), p.ticked});
  }
  return list;
}

bool SaveList(const PairList& list, const QString& path) {
  QString out;
  for (const PairEntry& e : list) {
    const QString pair = PairOfEntry(e.text);
    if (IsOkPair(pair)) out += PairFileLine(pair, e.ticked) + kCrLf;
  }
  if (out.isEmpty()) out = kCrLf;
  return WriteTextAtomic(path, out);
}

PairList RebuildList(const PairList& list, const QString& newPair) {
  QList<PairEntry> kept;
  for (const PairEntry& e : list) {
    if (Len(e.text) < 5 || PairOfEntry(e.text) == QStringLiteral("[]-->[]")) continue;
    kept.append({PairOfEntry(e.text), e.ticked});
  }
  if (!newPair.isEmpty()) kept.append({newPair, false});
  PairList out;
  int n = 0;
  for (const PairEntry& e : kept) out.append({NumberedEntry(++n, e.text), e.ticked});
  return out;
}

QString ExpandLineEnds(const QString& text) {
  QString t = text;
  t.replace(QStringLiteral("^p"), kCrLf);
  return t;
}

QString ApplyPairs(const PairList& list, const QString& text) {
  QString t = text;
  for (const PairEntry& e : list) {
    const QString pair = PairOfEntry(e.text);
    if (!e.ticked || !IsOkPair(pair)) continue;
    const qsizetype k = InStr(pair, QStringLiteral("-->"));
    const QString left = Left(pair, k - 1);
    const QString right = Mid(pair, k + 3);
    const QString a = ExpandLineEnds(Mid(left, 2, Len(left) - 2));
    const QString b = ExpandLineEnds(Mid(right, 2, Len(right) - 2));
    if (!a.isEmpty()) t = ReplaceAll(t, a, b);
  }
  return t;
}

bool PutList1toDbf(const Env& env, const PairList& list) {
  DbfTable t = DbfTable::create(env.path(QStringLiteral("\\dbf\\") + kPairTable),
                                {{QStringLiteral("replstr"), 'C', 254, 0}, {QStringLiteral("selected"), 'N', 1, 0}});
  if (!t.isOpen()) return false;
  for (const PairEntry& e : list) {
    const QString pair = PairOfEntry(e.text);
    if (!IsOkPair(pair)) continue;
    const int r = t.appendRow();
    if (r < 0 || !t.setText(r, QStringLiteral("replstr"), pair) ||
        !t.setNumber(r, QStringLiteral("selected"), e.ticked ? 1 : 0))
      return false;
  }
  t.close();
  return true;
}

PairList ReadListFromDbf(const Env& env) {
  const DbfTable t = DbfTable::open(env.path(QStringLiteral("\\dbf\\") + kPairTable));
  PairList list;
  int n = 0;
  for (const int r : t.rows())
    list.append({NumberedEntry(++n, t.trimmedText(r, QStringLiteral("replstr"))),
                 t.number(r, QStringLiteral("selected")) == 1});
  return list;
}

bool LearnPair(const Env& env, const QString& find, const QString& repl) {
  if (repl.isEmpty()) return true;
  const QString line = PairFileLine(u'[' + find + QStringLiteral("]-->[") + repl + u']', true) + kCrLf;
  const QString path = env.path(kPairFile);
  const QString text = ReadText(path);
  if ((text + kCrLf).contains(line)) return true;
  // A file whose last line has no line end gets one first, so that the new
  // pair stands on a line of its own.
  const QString head = (!text.isEmpty() && !text.endsWith(u'\n')) ? kCrLf : QString();
  // A file saved elsewhere as UTF-8 with a byte order mark is written anew in
  // the program's own code page rather than mixed with it.
  if (ReadBytes(path).startsWith("\xEF\xBB\xBF")) return WriteTextAtomic(path, text + head + line);
  return AppendText(path, head + line);
}

}  // namespace mj
