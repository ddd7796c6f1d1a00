#include "bank/bank_text.h"

#include <QRandomGenerator>

#include "bank/item_index.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kMarker = QStringLiteral("●");
const QString kFieldSep = QStringLiteral("■");
const QString kOptionA = QStringLiteral("\r\nA．");

QString markerOf(long long n) { return kMarker + CStr(n) + kMarker; }

// The stored block of question n lies between these two: its own marker
// and the next number's, each at the beginning of a line.
struct BlockMarkers {
  QString start;
  QString next;
};

BlockMarkers blockMarkersOf(long long n) { return {kCrLf + markerOf(n), kCrLf + markerOf(n + 1)}; }

// The internal bank file of an ID: \yibanti\ + its first 6 characters.
QString internalBankFileOf(const QString& id) {
  return QStringLiteral("\\yibanti\\") + Left(id, 6) + QStringLiteral(".mmd");
}

}  // namespace

QString BankFormOf(QString t) {
  t = ReplaceAll(t, QStringLiteral("［"), QStringLiteral("["));
  t = ReplaceAll(t, QStringLiteral("］"), QStringLiteral("]"));
  t = ReplaceAll(t, QStringLiteral("[单选题]"), QString());
  t = ReplaceAll(t, QStringLiteral("[多选题]"), QString());
  t = ReplaceAll(t, QStringLiteral("[任选题]"), QString());
  return t;
}

namespace {

// What stands behind the first find; the text as it is when find is absent.
QString cutThrough(const QString& text, const QString& find) {
  const qsizetype p = InStr(text, find);
  return p == 0 ? text : Mid(text, p + find.size());
}

// What stands before the first find; the whole text when find is absent.
QString keepBefore(const QString& text, const QString& find) {
  const qsizetype p = InStr(text, find);
  return p == 0 ? text : Left(text, p - 1);
}

// Each note marker at the beginning of a line, without a blank line before it.
QString noteMarkersOnTheirLines(QString t, const QString& marker) {
  t = ReplaceAll(t, marker, kCrLf + marker);
  t = ReplaceAll(t, kCrLf + kCrLf + marker, kCrLf + marker);
  return t;
}

}  // namespace

QString BankFileOf(const QString& id) {
  if (Left(id, 1) == u"0") return QStringLiteral("\\moniti\\") + Left(id, 5) + QStringLiteral(".mmd");
  return internalBankFileOf(id);
}

QString BankFilePath(const Env& env, const QString& id) { return env.path(BankFileOf(id)); }

long long ItemSerial(const QString& id) { return SaturatedInt<long long>(Val(Mid(id, 7, 5))); }

int ItemTypeOfTag(const QString& text) {
  const QString t = ReplaceAll(ReplaceAll(text, QStringLiteral("［"), QStringLiteral("[")), QStringLiteral("］"),
                               QStringLiteral("]"));
  if (t.contains(QStringLiteral("[单选题]"))) return 1;
  if (t.contains(QStringLiteral("[多选题]"))) return 2;
  return 3;
}

QString GetOneShiTi(const QString& fileText, long long n) {
  if (n == 0) n = 1;
  QString t = TextBetween(fileText, markerOf(n), kMarker);
  if (!t.contains(u'(')) t += QStringLiteral("(      )");
  if (!t.contains(QStringLiteral("?("))) {
    const QString gapThenA = QStringLiteral(")") + kOptionA;
    if (t.contains(gapThenA))
      t = ReplaceAll(t, gapThenA, QStringLiteral(")。") + kOptionA);
    else
      t = ReplaceAll(t, kOptionA, QStringLiteral("。") + kOptionA);
  }
  if (t.contains(QStringLiteral("?("))) t = ReplaceAll(t, kOptionA, QStringLiteral("。") + kOptionA);
  return ReplaceAll(t, QStringLiteral("。。"), QStringLiteral("。"));
}

QString GetField(const QString& text, int fieldNo, QString& providerInfo) {
  if (fieldNo == 1) {
    QString t = keepBefore(text, kFieldSep);
    t = cutThrough(t, kMarker);
    t = cutThrough(t, kMarker);
    const qsizetype p = InStr(t, kCrLf + QStringLiteral("[本题ID及提供者有关信息：]"));
    if (p > 0) {
      providerInfo = Mid(t, p);
      t = Left(t, p - 1);
    } else {
      providerInfo.clear();
    }
    return t;
  }
  QString t = text;
  for (int k = 1; k < fieldNo; ++k) t = cutThrough(t, kFieldSep);
  t = keepBefore(t, kFieldSep);
  t = noteMarkersOnTheirLines(t, QStringLiteral("[注释：]"));
  t = noteMarkersOnTheirLines(t, QStringLiteral("[注于：]"));
  return t;
}

QString GetOneOldTi(const Env& env, const QString& id) {
  const QString fileText = ReadFileAsText(BankFilePath(env, id));
  const BlockMarkers m = blockMarkersOf(ItemSerial(id));
  QString t = TextBetween(fileText, m.start, m.next);
  t = ReplaceAll(t, m.start, QString());
  t = ReplaceAll(t, m.next, QString());
  return t;
}

bool PutItemText(const Env& env, const QString& id, const QString& text) {
  const QString t = BankFormOf(text);
  const QString path = BankFilePath(env, id);
  const QString f = ReadFileAsText(path) + kCrLf;
  const BlockMarkers m = blockMarkersOf(ItemSerial(id));
  const qsizetype p = InStr(f, m.start);
  const qsizetype q = LastPos(f, m.next);
  QString out;
  if (p > 0 && q >= p) {
    // In the middle: the old block between the two markers gives way.
    out = Left(f, p + 1) + m.start + t + Mid(f, q + 2);
  } else if (p > 0) {
    // The last question of the file: the rest of the file gives way.
    out = Left(f, p + 1) + m.start + t;
  } else {
    // No marker yet: the question goes to the end.
    out = f + m.start + t;
  }
  out = ReplaceAll(out, kCrLf + kCrLf, kCrLf);
  out = ReplaceAll(out, kMarker + kCrLf, kMarker);
  return WriteTextFile(path, out);
}

QString AppendedFileOf(const QString& id) { return internalBankFileOf(id); }

QString AppendedItemText(const QString& id, const QString& text) {
  const QString marker = markerOf(ItemSerial(id));
  QString t = text.contains(kMarker) ? ReplaceAll(text, kMarker, marker) : marker + text;
  t = ReplaceAll(t, kMarker + kCrLf, kMarker);
  t = BankFormOf(t);
  // Printed as a line of its own: the text and a CR LF.
  return t + kCrLf;
}

bool AppendItemText(const Env& env, const QString& id, const QString& text) {
  return AppendText(env.path(AppendedFileOf(id)), AppendedItemText(id, text));
}

QString RndABCD() {
  QString pool = QStringLiteral("ABCD");
  QString out;
  for (int i = 4; i >= 2; --i) {
    const double rnd = QRandomGenerator::global()->generateDouble();
    const qsizetype k = static_cast<qsizetype>(Int(i * rnd + 1));
    out += Mid(pool, k, 1);
    pool.remove(k - 1, 1);
  }
  return out + pool;
}

bool IsInTheFlag(const QString& flag, long long n) {
  const qsizetype dash = InStr(flag, QStringLiteral("-"));
  if (dash == 0) return false;
  const double a = Val(Left(flag, dash - 1));
  const double b = Val(Mid(flag, dash + 1));
  return a <= static_cast<double>(n) && static_cast<double>(n) <= b;
}

const QString& BankText::MyGetAllShiTi(const Env& env, const QString& runIds, qsizetype i) {
  return loadFor(env, GetItemID(runIds, i));
}

const QString& BankText::loadFor(const Env& env, const QString& id) { return load(BankFilePath(env, id)); }

const QString& BankText::load(const QString& path) {
  if (loaded_ && path == path_) return text_;
  path_ = path;
  text_ = ReadFileAsText(path);
  loaded_ = true;
  return text_;
}

void BankText::forget() {
  path_.clear();
  text_.clear();
  loaded_ = false;
}

}  // namespace mj
