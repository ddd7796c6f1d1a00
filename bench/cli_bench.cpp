// mingjing-cli as a whole process, start to exit, timed from outside the
// program: `article 民法典 1000` over the real statutes and `check-paper` on a
// paper of the 500 real examination questions (questions/lawbench-3-6.json
// of the real data set, in the paper layout), and the conversion of that
// paper; the question search and the wrong book over a generated folder of
// 20,000 questions. The bare start of the program (--help) is given for
// comparison.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <vector>

#include "bench_support.h"
#include "generator.h"
#include "papers/paper_file.h"

extern char** environ;

namespace mj::bench {
namespace {

QTemporaryDir* folder = nullptr;
QTemporaryDir* bigFolder = nullptr;  // 20,000 questions
QString paperPath;

// The real questions as a paper: one section of single choices, each stem
// numbered, its options on lines of their own, its answer line behind it.
QString RealPaper(const QString& jsonPath) {
  QFile f(jsonPath);
  if (!f.open(QIODevice::ReadOnly)) return QString();
  const QJsonArray items = QJsonDocument::fromJson(f.readAll()).array();
  QStringList lines = {QStringLiteral("司法统考真题五百道"), QStringLiteral("一、单项选择题")};
  int n = 0;
  static const QRegularExpression options(QStringLiteral("A:(.*);B:(.*);C:(.*);D:(.*)。?$"),
                                          QRegularExpression::DotMatchesEverythingOption);
  for (const QJsonValue& v : items) {
    const QString q = v.toObject().value(QStringLiteral("question")).toString();
    const QString answer = v.toObject().value(QStringLiteral("answer")).toString().mid(5, 1);
    const qsizetype at = q.lastIndexOf(QStringLiteral("A:"));
    const QRegularExpressionMatch m = options.match(q.mid(at));
    if (at < 0 || !m.hasMatch()) continue;
    lines << QString::number(++n) + QStringLiteral("．") + q.left(at).simplified() + QStringLiteral("(    )");
    for (int k = 0; k < 4; ++k) lines << QString(QChar(u'A' + k)) + QStringLiteral("．") + m.captured(k + 1).trimmed();
    lines << QStringLiteral("[答案：]") + answer;
  }
  return lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

bool Prepare() {
  const QString real = RealDataRoot();
  if (real.isEmpty()) return false;
  folder = new QTemporaryDir;
  gen::Sizes s;
  s.questions = 200;
  QString error;
  if (!gen::Generate(folder->path(), s, &error)) return false;
  for (const QString& name : QDir(real + QStringLiteral("/lawtxt")).entryList({QStringLiteral("*.mmd")}))
    QFile::copy(real + QStringLiteral("/lawtxt/") + name, folder->path() + QStringLiteral("/lawtxt/") + name);
  paperPath = folder->path() + QStringLiteral("/外部题库/lawbench-3-6.txt");
  const QString paper = RealPaper(real + QStringLiteral("/questions/lawbench-3-6.json"));
  if (paper.isEmpty() || !WritePaper(paperPath, paper, PaperEncoding::Gbk)) return false;
  bigFolder = new QTemporaryDir;
  gen::Sizes big;
  big.questions = 20000;
  big.banks = 40;
  big.papers = 4;
  big.paperQuestions = 100;
  if (!gen::Generate(bigFolder->path(), big, &error)) return false;
  std::fprintf(stderr, "bench_cli: the paper holds %lld questions, %lld bytes\n",
               static_cast<long long>(paper.count(QStringLiteral("[答案：]"))),
               static_cast<long long>(QFileInfo(paperPath).size()));
  return true;
}

// One run of the program with its output to /dev/null; the exit status.
int Spawn(const QStringList& args) {
  std::vector<QByteArray> bytes;
  bytes.push_back(QByteArrayLiteral(MJ_CLI_PATH));
  for (const QString& a : args) bytes.push_back(a.toUtf8());
  std::vector<char*> argv;
  for (QByteArray& b : bytes) argv.push_back(b.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t pid = 0;
  int status = -1;
  if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) == 0) waitpid(pid, &status, 0);
  posix_spawn_file_actions_destroy(&actions);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void RunProcess(benchmark::State& state, const QStringList& args) {
  if (!folder) {
    state.SkipWithError("real data set not found (../shared/realdata)");
    return;
  }
  for (auto _ : state) {
    if (Spawn(args) != 0) {
      state.SkipWithError("mingjing-cli failed");
      return;
    }
  }
}

void BM_CliArticle(benchmark::State& state) {
  RunProcess(state, {QStringLiteral("article"), QStringLiteral("民法典"), QStringLiteral("1000"),
                     QStringLiteral("--folder"), folder ? folder->path() : QString()});
}
BENCHMARK(BM_CliArticle)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(40)->Repetitions(3);

void BM_CliCheckRealPaper(benchmark::State& state) {
  RunProcess(state, {QStringLiteral("check-paper"), paperPath, QStringLiteral("--folder"),
                     folder ? folder->path() : QString()});
}
BENCHMARK(BM_CliCheckRealPaper)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(40)->Repetitions(3);

void BM_CliConvertRealPaper(benchmark::State& state) {
  RunProcess(state, {QStringLiteral("convert-paper"), paperPath, QStringLiteral("--folder"),
                     folder ? folder->path() : QString()});
}
BENCHMARK(BM_CliConvertRealPaper)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20)->Repetitions(3);

// Two words, each in a few questions of the 20,000, and the search finds
// the one that has both.
void BM_CliQuestionSearch20k(benchmark::State& state) {
  RunProcess(state, {QStringLiteral("search"), QStringLiteral("--questions"), QStringLiteral("生成试题17："),
                     QStringLiteral("生成选项Ｂ17"), QStringLiteral("--folder"), bigFolder ? bigFolder->path() : QString()});
}
BENCHMARK(BM_CliQuestionSearch20k)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10)->Repetitions(3);

void BM_CliWrongBook20k(benchmark::State& state) {
  RunProcess(state, {QStringLiteral("wrong"), QStringLiteral("--folder"), bigFolder ? bigFolder->path() : QString()});
}
BENCHMARK(BM_CliWrongBook20k)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20)->Repetitions(3);

void BM_CliBareStart(benchmark::State& state) { RunProcess(state, {QStringLiteral("--help")}); }
BENCHMARK(BM_CliBareStart)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(40)->Repetitions(3);

}  // namespace
}  // namespace mj::bench

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  if (!mj::bench::Prepare()) std::fprintf(stderr, "bench_cli: the real data set is missing; nothing to measure\n");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  delete mj::bench::folder;
  delete mj::bench::bigFolder;
  return 0;
}
