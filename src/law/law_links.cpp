#include "law/law_links.h"

#include "law/law_files.h"
#include "law/law_text.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

QString ArticleKey(const QString& lawName, double number) { return lawName + Trim(NumText(number)) + kFullPoint; }

}  // namespace

QString NewGetForm6LongId(const ItemIndex& items, const QString& code, const QString& lawName, double number) {
  const QString key = ArticleKey(lawName, number);
  const QString stars = StringOf(300, u'*');
  QString ids;
  // The dedupes seen so far, one behind the other; a question is the same
  // when its answer and its whole citation list are.
  QString seen;
  for (const ItemRow& row : items) {
    if (!row.valid2 || Left(row.filename, 5) != code || !row.aboutlaw.contains(key)) continue;
    const QString id = row.filename + Mid(row.itemid, 7, 5);
    const QString dedupe = Right(stars + row.answer, 30) + Right(stars + row.aboutlaw, 300);
    if (seen.contains(dedupe)) continue;
    ids += id;
    seen += dedupe;
  }
  return ids;
}

QString GetForm6LongId(const Env& env, const QString& code, const QString& lawName, double number) {
  const QString key = ArticleKey(lawName, number);
  const DbfTable table = DbfTable::open(env.path(QStringLiteral("\\dbf\\items.mmd")));
  const int filename = table.fieldIndex(QStringLiteral("filename"));
  const int aboutlaw = table.fieldIndex(QStringLiteral("aboutlaw"));
  const int itemid = table.fieldIndex(QStringLiteral("itemid"));
  QString ids;
  for (const int row : table.rows()) {
    const QString name = table.text(row, filename);
    if (Left(name, 5) != code || !table.text(row, aboutlaw).contains(key)) continue;
    ids += name + Mid(table.text(row, itemid), 7, 5);
  }
  return ids;
}

qint16 GetMyOkItemNum(const QString& text, qsizetype pos) {
  const double n = ItemNumAtCaret(text, pos, 1);
  return n >= 1 && n <= 32767 ? static_cast<qint16>(n) : 0;
}

std::optional<AnswerCitation> CitationAtAnswer(const Env& env, const QString& text, qsizetype pos) {
  const QString& head = kPrintedArticleHead;
  if (!text.contains(u'《') || !text.contains(head) || !text.contains(u'条')) return std::nullopt;
  if (pos < 1) return std::nullopt;
  const qsizetype p = InStrRev(text, QStringLiteral("《"), pos);
  if (p == 0) return std::nullopt;
  qsizetype m = InStrRev(text, head, pos);
  // Before the title: the click is on the title line, whose article follows.
  if (m < p) m = InStr(pos, text, head);
  if (m == 0 || m == pos) return std::nullopt;
  const qsizetype di = m + Len(head) - 1;
  const qsizetype e = InStr(di, text, QStringLiteral("条"));
  if (e == 0) return std::nullopt;

  QString title = Mid(text, p, m - p + 1);
  if (Len(title) < 3) return std::nullopt;
  if (title.startsWith(u'《')) title.remove(0, 1);
  if (title.endsWith(u'》')) title.chop(1);
  title = NoCrLf(title);

  const QString item = Mid(text, di, e - di + 1);
  if (Len(item) < 3) return std::nullopt;
  for (const QChar c : item)
    if (!QStringLiteral("第一二三四五六七八九十百千万零条").contains(c)) return std::nullopt;
  if (!LawFileExists(env, title)) return std::nullopt;
  return AnswerCitation{title, item};
}

}  // namespace mj
