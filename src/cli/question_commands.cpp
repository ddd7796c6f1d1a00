#include "cli/question_commands.h"

#include "bank/question_search.h"
#include "log/wrong_book.h"

namespace mj::cli {

int RunQuestionSearch(CommandContext& ctx) {
  if (ctx.has(QStringLiteral("group")))
    return ctx.fail(QStringLiteral("--group 只用于查法条，不能和 --questions 一起用。"));
  const QString query = ctx.operands.join(QLatin1Char(' '));
  if (SearchWords(query).isEmpty()) return ctx.fail(QStringLiteral("要查的文字是空的。"));
  const QList<SearchHit> hits = SearchQuestions(ctx.env, query);
  if (hits.isEmpty()) return ctx.fail(QStringLiteral("没有含“%1”的试题。").arg(query.trimmed()));
  QString out = QStringLiteral("题库\t题号\t找到的文字\n");
  for (const SearchHit& hit : hits)
    out += hit.bank + QLatin1Char('\t') + hit.id + QLatin1Char('\t') +
           MarkedLine(hit, QStringLiteral("【"), QStringLiteral("】")) + QLatin1Char('\n');
  ctx.out = out;
  return 0;
}

QList<OptionInfo> WrongCommand::options() const {
  return {{QStringLiteral("ids"), false, QString(), QStringLiteral("每个题库后面再列出它的错题题号，一行一个"),
           QStringLiteral("list each bank's wrong questions by ID below it, one a line")}};
}

int WrongCommand::run(CommandContext& ctx) {
  const WrongBook book = ReadWrongBook(ctx.env);
  // An empty book is no failure: the sentence of the window says so.
  if (book.groups.isEmpty()) {
    ctx.out = kWrongBookEmpty;
    return 0;
  }
  const LogGrid grid = WrongBookGrid(book);
  const bool ids = ctx.has(QStringLiteral("ids"));
  QString out = QStringLiteral("题库\t题数\t最近做错的日期\n");
  for (qsizetype i = 0; i < grid.rows.size(); ++i) {
    out += grid.rows[i].join(QLatin1Char('\t')) + QLatin1Char('\n');
    if (!ids) continue;
    const QString& list = book.groups[i].ids;
    for (qsizetype at = 0; at + 11 <= list.size(); at += 11) out += QStringLiteral("    ") + list.mid(at, 11) + QLatin1Char('\n');
  }
  ctx.out = out;
  return 0;
}

}  // namespace mj::cli
