#include "cli/stats_command.h"

#include "cli/scratch_folder.h"
#include "log/practice_stats.h"
#include "settings/settings.h"

namespace mj::cli {

namespace {

const QString kAnswers = QStringLiteral("answers");
const QString kDue = QStringLiteral("due");
const QString kLaws = QStringLiteral("laws");

QString Day(const QDate& d) { return d.toString(QStringLiteral("yyyy-MM-dd")); }

QString AnswersCsv(const QList<DayAnswers>& days) {
  QString out = QStringLiteral("日期,答题数,答对数\n");
  for (const DayAnswers& d : days) out += QStringLiteral("%1,%2,%3\n").arg(Day(d.day)).arg(d.answers).arg(d.right);
  return out;
}

QString DueCsv(const QList<DueDay>& days) {
  QString out = QStringLiteral("日期,内部题库,模拟试卷\n");
  for (const DueDay& d : days) out += QStringLiteral("%1,%2,%3\n").arg(Day(d.day)).arg(d.internal).arg(d.simulated);
  return out;
}

QString LawsCsv(const QList<GroupShare>& groups) {
  QString out = QStringLiteral("代码,名称,类别,已做题数,答对题数,正确率(%)\n");
  for (const GroupShare& g : groups)
    out += QStringLiteral("%1,%2,%3,%4,%5,%6\n")
               .arg(CsvField(g.code), CsvField(g.label), g.simulated ? QStringLiteral("模拟试卷") : QStringLiteral("题库"))
               .arg(g.done)
               .arg(g.right)
               .arg(QString::number(g.percent(), 'f', 1));
  return out;
}

}  // namespace

QString CsvField(const QString& text) {
  if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) && !text.contains(QLatin1Char('\n')) &&
      !text.contains(QLatin1Char('\r')))
    return text;
  QString t = text;
  t.replace(QLatin1Char('"'), QStringLiteral("\"\""));
  return QLatin1Char('"') + t + QLatin1Char('"');
}

QList<OptionInfo> StatsCommand::options() const {
  return {{QStringLiteral("chart"), true, QStringLiteral("图表"),
           QStringLiteral("只输出一个图表的数字：answers（最近 90 天每天的答题数和答对数）、due（今后 30 天每天新到期的题数）、"
                          "laws（每部法律和每份模拟试卷的正确率）；不写时三个都输出，中间空一行"),
           QStringLiteral("only one chart: answers (answers and right answers on each of the last 90 days), due "
                          "(questions becoming due on each of the next 30 days), laws (share right per law and per "
                          "simulated paper); all three without it, a blank line between them")}};
}

int StatsCommand::run(CommandContext& ctx) {
  const QString chart = ctx.value(QStringLiteral("chart"));
  if (ctx.has(QStringLiteral("chart")) && chart != kAnswers && chart != kDue && chart != kLaws)
    return ctx.fail(QStringLiteral("--chart 只能是 answers、due 或 laws，不是“%1”。").arg(chart));
  const bool all = !ctx.has(QStringLiteral("chart"));

  const PracticeRecords records = ReadPracticeRecords(ctx.env.path(QStringLiteral("\\dbf")));
  if (!records.problems.isEmpty()) return ctx.fail(records.problems.join(QStringLiteral("；")));
  const QDate today = ctx.env.today();
  QStringList parts;
  if (all || chart == kAnswers) parts << AnswersCsv(AnswersPerDay(records, today));
  if (all || chart == kDue) {
    // The settings as the program reads them; a missing file would be
    // created by the read, which happens on a copy.
    const ScratchFolder copy(ctx.env, {kSettingsFile});
    if (!copy.problem().isEmpty()) return ctx.fail(copy.problem());
    Settings settings;
    settings.ReadDataFromIni(copy.env());
    parts << DueCsv(DueForecast(records, InternalSchedule(settings, today), SimulatedSchedule(settings, today)));
  }
  if (all || chart == kLaws) parts << LawsCsv(RightShareByLaw(records));
  ctx.out = parts.join(QLatin1Char('\n'));
  return 0;
}

}  // namespace mj::cli
