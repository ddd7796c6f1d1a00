#include "law/law_extract.h"

#include <algorithm>

#include "law/law_files.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kHeadPrefix = QStringLiteral("\r\n　　");

int KindIndex(LawIndex::Kind kind) { return static_cast<int>(kind); }

QChar Terminator(LawIndex::Kind kind) {
  switch (kind) {
    case LawIndex::Kind::Di:
      return u'条';
    case LawIndex::Kind::Dun:
      return u'、';
    case LawIndex::Kind::Point:
      return u'．';
  }
  return QChar();
}

// 1-based place of the first entry of sorted that is at least from; 0 when none.
qsizetype FirstAtOrAfter(const QList<qsizetype>& sorted, qsizetype from) {
  const auto it = std::lower_bound(sorted.cbegin(), sorted.cend(), from);
  return it == sorted.cend() ? 0 : *it;
}

}  // namespace

LawIndex::LawIndex(const QString& text) : LawIndex(text, GetLawTextType(text)) {}

LawIndex::LawIndex(const QString& text, int type) : text_(text), type_(type) {
  const qsizetype n = text_.size();
  // Every heading prefix starts at a CR.
  for (qsizetype at = text_.indexOf(u'\r'); at >= 0; at = text_.indexOf(u'\r', at + 1)) {
    if (!QStringView(text_).mid(at).startsWith(kHeadPrefix)) continue;
    const qsizetype place = at + 1;
    const qsizetype a = at + kHeadPrefix.size();  // 0-based, behind the prefix
    // The key runs up to the first terminator; a numeral has none inside.
    auto keyUpTo = [&](qsizetype from, QChar term, int kind) {
      const qsizetype limit = std::min(n, from + kMaxKey + 1);
      for (qsizetype j = from; j < limit; ++j) {
        if (text_.at(j) == term) {
          byKind_[kind][text_.mid(from, j - from)].append(place);
          return;
        }
      }
    };
    if (a < n && text_.at(a) == u'第') {
      diLines_.append(place);
      keyUpTo(a + 1, u'条', KindIndex(Kind::Di));
    }
    keyUpTo(a, u'、', KindIndex(Kind::Dun));
    keyUpTo(a, u'．', KindIndex(Kind::Point));
  }
}

QString LawIndex::marker(Kind kind, const QString& key) {
  if (kind == Kind::Di) return kHeadPrefix + QStringLiteral("第") + key + QStringLiteral("条");
  return kHeadPrefix + key + Terminator(kind);
}

qsizetype LawIndex::find(Kind kind, const QString& key, qsizetype from) const {
  if (key.size() > kMaxKey || key.contains(Terminator(kind))) return InStr(from, text_, marker(kind, key));
  if (from > text_.size()) return 0;
  const auto it = byKind_[KindIndex(kind)].constFind(key);
  if (it == byKind_[KindIndex(kind)].constEnd()) return 0;
  return FirstAtOrAfter(it.value(), std::max<qsizetype>(from, 1));
}

qsizetype LawIndex::findDiLine(qsizetype from) const {
  if (from > text_.size()) return 0;
  return FirstAtOrAfter(diLines_, std::max<qsizetype>(from, 1));
}

QString LawIndex::between(Kind kindA, const QString& keyA, Kind kindB, const QString& keyB) const {
  const qsizetype p = find(kindA, keyA, 1);
  if (p == 0) return QString();
  const qsizetype s = p + marker(kindA, keyA).size();
  const qsizetype q = find(kindB, keyB, s);
  return q == 0 ? Mid(text_, s) : Mid(text_, s, q - s);
}

QString GetPutTxt2Text(const QString& lawText, const QString& numeralTable, const QString& numbers,
                       const LawIndex* index) {
  const int type = index ? index->type() : GetLawTextType(lawText);
  if (type == 0) return QString();
  const qsizetype last = Len(numeralTable) / 9;
  const LawIndex::Kind kind =
      type == 1 ? LawIndex::Kind::Di : (type == 2 ? LawIndex::Kind::Dun : LawIndex::Kind::Point);
  auto keyOf = [&](double n) { return type == 3 ? NumText(n) : NumeralOfSlot(numeralTable, RoundHalfEven(n)); };
  // A long list reads many articles: one pass to find all headings is then
  // cheaper than a search of the text per article.
  LawIndex local;
  if (!index && CountOf(numbers, kFullPoint) > 8) {
    local = LawIndex(lawText, type);
    index = &local;
  }
  auto between = [&](const QString& keyA, const QString& keyB) {
    if (index) return index->between(kind, keyA, kind, keyB);
    return TextBetween(lawText, LawIndex::marker(kind, keyA), LawIndex::marker(kind, keyB));
  };

  QString gathered;
  qsizetype from = 1;
  for (qsizetype dot = InStr(from, numbers, kFullPoint); dot > 0; dot = InStr(from, numbers, kFullPoint)) {
    const double n = Val(Mid(numbers, from, dot - from));
    from = dot + 1;
    if (n < 1 || n > last) continue;
    const QString start = LawIndex::marker(kind, keyOf(n));
    QString body = between(keyOf(n), keyOf(n + 1));
    if (type == 1 || type == 2) body += kCrLf;
    // An appendix is never part of an article.
    qsizetype cut = LastPos(body, kCrLf + QStringLiteral("附件"));
    if (cut > 0) body = Left(body, cut - 1);
    cut = LastPos(body, kIdeoBlank + QStringLiteral("附件"));
    if (cut > 0) body = Left(body, cut - 1);
    if (body == kCrLf) return QString();
    if (Left(body, 2) == kCrLf) body = Mid(body, 3);
    if (Left(body, 4) == Space(4)) body = Mid(body, 5);
    body = Space(4) + body;
    if (Right(body, 4) == kCrLf + kCrLf) body.chop(2);
    body = start + kIdeoBlank + Trim(body);
    for (int k = 0; k < 2; ++k)
      if (Left(body, 4) == kCrLf + kCrLf) body = Mid(body, 3);
    body = CutItemTail(body, type);
    if (body.isEmpty())
      gathered.clear();
    else
      gathered += body;
  }
  gathered = ReplaceAll(gathered, QStringLiteral("\n\n"), QStringLiteral("\n"));
  gathered = ReplaceAll(gathered, kCrLf + kCrLf, kCrLf);
  return gathered;
}

namespace {

// The numbers of the articles 1..count of a text of the given type that
// contain the trimmed find text; type 1 counts with the numeral table instead.
QString ArticlesContaining(const QString& lawText, const QString& numeralTable, const QString& findText, int type,
                           qsizetype count, const LawIndex* index) {
  if (type == 0) return QString();
  if (type == 1) count = Len(numeralTable) / 9;
  const QString find = Trim(findText);
  // One pass over the text finds every heading; each article is then read
  // from its own place, so the whole search stays linear in the text.
  LawIndex local;
  if (!index) {
    local = LawIndex(lawText, type);
    index = &local;
  }
  QString found;
  for (qsizetype i = 1; i <= count; ++i) {
    QString article;
    if (type == 1) {
      const QString key = NumeralOfSlot(numeralTable, i);
      const QString start = LawIndex::marker(LawIndex::Kind::Di, key);
      article = start;
      const qsizetype p = index->find(LawIndex::Kind::Di, key, 1);
      if (p > 0) {
        const qsizetype s = p + start.size();
        const qsizetype q = index->findDiLine(s);
        article += q == 0 ? Mid(lawText, s) : Mid(lawText, s, q - s);
      }
    } else {
      const LawIndex::Kind kind = type == 2 ? LawIndex::Kind::Dun : LawIndex::Kind::Point;
      const QString key = type == 2 ? NumeralOfSlot(numeralTable, i) : CStr(i);
      const QString next = type == 2 ? NumeralOfSlot(numeralTable, i + 1) : CStr(i + 1);
      article = LawIndex::marker(kind, key) + index->between(kind, key, kind, next);
      const qsizetype appendix = LastPos(article, QStringLiteral("附件"));
      if (appendix >= 2) article = Left(article, appendix - 1);
    }
    if (InStr(article, find) > 0) found += CStr(i) + kFullPoint;
  }
  return found;
}

}  // namespace

QString GetMyLongDaAn(const QString& lawText, const QString& numeralTable, const QString& findText,
                      const LawIndex* index) {
  const int type = index ? index->type() : GetLawTextType(lawText);
  if (type == 0) return QString();
  return ArticlesContaining(lawText, numeralTable, findText, type, type == 1 ? 0 : LastItemNum(lawText, type), index);
}

QString GetMyLongDaAn(const LawText& law, const QString& findText) {
  // The law keeps its last article number; a numeral DaXie does not print
  // (-1) counts no article.
  return ArticlesContaining(law.text(), law.numeralTable(), findText, law.type(), std::max(law.lastItemNum(), 0),
                            &law.index());
}

}  // namespace mj
