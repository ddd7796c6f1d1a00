#include "papers/paper_practice.h"

#include <QDateTime>
#include <algorithm>
#include <limits>

#include "law/citations.h"
#include "papers/paper_check.h"
#include "papers/progress_record.h"
#include "platform/file_moves.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kAnswerTag = QStringLiteral("[答案：]");
const QString kAskAgain = QStringLiteral("本次是否只做曾做错的题和未做过的题？");
const QString kChooseTitle = QStringLiteral("请选择");

qint32 Saturated32(qint64 v) {
  return static_cast<qint32>(std::clamp<qint64>(v, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()));
}

qint64 Total(const PaperState& state, int t) { return t <= 0 ? 0 : state.OutTiNum[t][3]; }

// The item of number n in a section text: from CR LF + n + "．" up to the
// last CR LF + (n + 1) + "．" behind it, or to the end. Empty when the number
// is not there.
QString ItemOf(const QString& source, qint64 n) {
  const QString a = kCrLf + QString::number(n) + QStringLiteral("．");
  const QString b = kCrLf + QString::number(n + 1) + QStringLiteral("．");
  const qsizetype pa = InStr(source, a);
  if (pa == 0) return QString();
  const qsizetype pb = InStrRev(source, b);
  return pb > pa ? Mid(source, pa, pb - pa) : Mid(source, pa);
}

// The numbers of the first two runs of ASCII digits in a text, 0 for a run
// that is not there; a run too long for a question number counts as 0.
std::array<qint64, 2> FirstTwoNumbers(const QString& text) {
  std::array<qint64, 2> found{};
  int run = 0;
  qsizetype i = 0;
  while (run < 2 && i < text.size()) {
    if (!(text[i] >= u'0' && text[i] <= u'9')) {
      ++i;
      continue;
    }
    qint64 v = 0;
    bool tooLong = false;
    while (i < text.size() && text[i] >= u'0' && text[i] <= u'9') {
      if (v > 100000000000LL) tooLong = true;
      else v = v * 10 + (text[i].unicode() - u'0');
      ++i;
    }
    found[run++] = tooLong ? 0 : v;
  }
  return found;
}

// The answer in the standard form 答案：AC参见《law》第n条、第m条. The
// answer box holds one line per tag; the standard form is made of them as
// of one line.
QString NormalAnswer(const QString& answerText) {
  QString line = answerText;
  line.remove(u'\r').remove(u'\n');
  return NormalizeDaAnLine(line);
}

QString DateText(const QDate& d) {
  return QString::number(d.year()) + QStringLiteral("年") + QString::number(d.month()) + QStringLiteral("月") +
         QString::number(d.day()) + QStringLiteral("日");
}

}  // namespace

qint64 GetOutTotal(PaperState& state) {
  qint64 total = 0;
  for (int t = 1; t <= 3; ++t) {
    const qint64 first = state.OutTiNum[t][1];
    const qint64 last = state.OutTiNum[t][2];
    total += (first != 0 && last != 0) ? last - first + 1 : last - first;
    state.OutTiNum[t][3] = Saturated32(total);
  }
  return total;
}

int GetTiClass(const PaperState& state, qint64 k) {
  if (k < 1 || k > Total(state, 3)) return 0;
  for (int t = 1; t <= 3; ++t)
    if (k <= Total(state, t)) return t;
  return 0;
}

qint64 GetTiNum(const PaperState& state, qint64 k) {
  const int t = GetTiClass(state, k);
  if (t == 0) return 0;
  return k + state.OutTiNum[t][1] - Total(state, t - 1) - 1;
}

QString TiListCell(qint64 k) { return QStringLiteral("*") + GetStrFromNum(k, 4) + QStringLiteral("*"); }

QString MakeAllTiList(qint64 total) {
  QString list;
  const qint64 n = std::min(total, kMaxListedQuestions);
  if (n < 1) return list;
  list.reserve(n * 6);
  for (qint64 k = 1; k <= n; ++k) list += TiListCell(k);
  return list;
}

qint64 TiListCount(const QString& list) { return list.size() / 6; }

qint64 TiListNumber(const QString& list, qint64 cell) {
  if (cell < 1) return 0;
  return static_cast<qint64>(Val(Mid(list, (cell - 1) * 6 + 2, 5)));
}

qint64 GetLastDone(const PaperState& state, const ProgressRecord& record, qint64 total) {
  if (total == 0) return 0;
  const double t = record.lastSection();
  const double n = record.lastNumber();
  for (qint64 k = 1; k <= total; ++k) {
    if (static_cast<double>(GetTiClass(state, k)) == t && static_cast<double>(GetTiNum(state, k)) == n)
      return k == total ? 1 : k;
  }
  return 0;
}

QString GetOutInfo(const PaperState& state, const ProgressRecord& record, qint64 total) {
  if (!record.exists() || total < 1) return QString();
  qint64 done = 0, right = 0;
  for (qint64 k = 1; k <= total; ++k) {
    const QString v = record.value(GetTiClass(state, k), GetTiNum(state, k));
    if (!v.isEmpty()) ++done;
    if (IsOkValue(v)) ++right;
  }
  return GetStrFromNum(done, 5) + GetStrFromNum(right, 5);
}

QString GetNotOkList(const PaperState& state, const ProgressRecord& record, qint64 total) {
  QString list;
  if (!record.exists() || total < 1) return list;
  for (qint64 k = 1; k <= std::min(total, kMaxListedQuestions); ++k)
    if (!IsOkValue(record.value(GetTiClass(state, k), GetTiNum(state, k)))) list += TiListCell(k);
  return list;
}

qint64 InfoDone(const QString& info) { return static_cast<qint64>(Val(Mid(info, 1, 5))); }
qint64 InfoRight(const QString& info) { return static_cast<qint64>(Val(Mid(info, 6, 5))); }

QString GetStemText(const PaperState& state, qint64 k) {
  const int t = GetTiClass(state, k);
  const QString item = t == 0 ? QString() : ItemOf(state.OutTiText[t], GetTiNum(state, k));
  if (item.isEmpty()) return QStringLiteral("没有该题题干。");
  QString stem = item;
  if (state.OutTiMode != 2) {
    const qsizetype p = InStr(item, kCrLf + kAnswerTag);
    if (p > 0) stem = Left(item, p - 1);
  }
  stem = Trim(stem);
  if (stem.startsWith(kCrLf)) stem = stem.mid(2);
  return stem;
}

QString GetDaAnText(const PaperState& state, qint64 k) {
  const QString none = QStringLiteral("没有该题答案。");
  const int t = GetTiClass(state, k);
  if (t == 0) return none;
  const bool separate = state.OutTiMode == 2;
  const QString item = ItemOf(separate ? state.OutDaAnText[t] : state.OutTiText[t], GetTiNum(state, k));
  if (item.isEmpty()) return none;
  QString answer = item;
  if (!separate) {
    const qsizetype p = InStr(item, kCrLf + kAnswerTag);
    if (p == 0) return none;
    answer = Mid(item, p);
  }
  // One line per tag.
  answer.remove(kCrLf);
  const qsizetype open = InStr(answer, QStringLiteral("["));
  if (open > 0) answer = Mid(answer, open);
  answer.replace(QStringLiteral("["), kCrLf + QStringLiteral("["));
  answer += kCrLf;
  if (answer.startsWith(kCrLf)) answer = answer.mid(2);
  return answer;
}

QString OutABCD(const QString& text) {
  static const QString kRun = QStringLiteral("ABCD,.~-_，、～");
  qsizetype i = 0;
  while (i < text.size() && !(text[i] >= u'A' && text[i] <= u'D')) ++i;
  QString run;
  while (i < text.size() && kRun.contains(text[i])) run += text[i++];
  return OnlyABCD(UCase(run));
}

QString WithLawNameGap(const QString& answerText) {
  if (answerText.contains(QStringLiteral("《"))) return answerText;
  const qsizetype p = answerText.indexOf(QStringLiteral("第"));
  if (p < 0) return answerText;
  QString r = answerText;
  r.insert(p, QStringLiteral("《》"));
  return r;
}

QString AboutLawText(const Env& env, const QString& answerText) {
  const QString normal = NormalAnswer(answerText);
  // Only whole articles are printed: 款 and 项 references would read as
  // article numbers of their own.
  QString text = normal + kCrLf + GetLawTxtForDaAn(env, StripKuanXiang(normal));
  const QString end = kCrLf + QStringLiteral("参见");
  if (text.endsWith(end)) text = text.left(text.size() - end.size()) + kCrLf;
  return text;
}

void SetGroup(GroupPassage& group, const QString& text) {
  const qsizetype p = InStr(text, QStringLiteral("请回答"));
  if (p == 0) {
    group.clear();
    return;
  }
  const auto numbers = FirstTwoNumbers(Mid(text, p + 3) + QStringLiteral("另加0-0") + kCrLf);
  if (numbers[0] == 0 || numbers[1] == 0) {
    group.clear();
    return;
  }
  group.OutGroupText = text;
  group.OutGroupFirst = numbers[0];
  group.OutGroupLast = numbers[1];
}

QString ShowOutTi(const PaperState& state, GroupPassage& group, qint64 k) {
  const QString s = GetStemText(state, k);
  const qint64 n = GetTiNum(state, k);
  const bool inGroup = group.holds(n);
  const qsizetype d = InStrRev(s, kCrLf + QStringLiteral("D．"));
  const bool tail = d > 0 && InStrRev(s, QStringLiteral("请回答")) > d;
  // Where the passage of the next group begins behind the options: at the
  // first "(" behind the D line's start, else on the line after it.
  auto cutPoint = [&] {
    qsizetype c = InStr(d, s, QStringLiteral("("));
    if (c == 0) {
      const qsizetype e = InStr(d + 2, s, kCrLf);
      c = e > 0 ? e + 2 : s.size() + 1;
    }
    return c;
  };
  if (!inGroup) {
    group.clear();
    if (!tail) return s;
    const qsizetype c = cutPoint();
    SetGroup(group, Mid(s, c));
    return Left(s, c - 1);
  }
  if (!tail) return group.OutGroupText + kCrLf + s;
  const qsizetype c = cutPoint();
  const QString shown = group.OutGroupText + kCrLf + Left(s, c - 1);
  SetGroup(group, Mid(s, c));
  return shown;
}

QString PracticeStatusLine(qint64 cells, int section, qint64 n) {
  static const QString kWords[4] = {QString(), QStringLiteral("本题为单选题，编号为"),
                                    QStringLiteral("本题为多选题，编号为"), QStringLiteral("本题为任选题，编号为")};
  QString line = QStringLiteral("共") + QString::number(cells) + QStringLiteral("题符合条件,");
  if (section >= 1 && section <= 3) line += kWords[section];
  if (n >= 1) line += QString::number(n);
  return line;
}

AnswerOutcome JudgeAnswer(const QString& caption, const QString& answerText, const QString& oldValue) {
  const QString remark = (!oldValue.isEmpty() && !IsOkValue(oldValue))
                             ? QStringLiteral("上次错选为") + oldValue + QStringLiteral(",本次")
                             : QString();
  const QString right = OutABCD(NormalAnswer(answerText));
  if (right != caption)
    return {false, caption, remark + QStringLiteral("错选为") + caption + QStringLiteral("。") + kCrLf};
  return {true, QStringLiteral("OKOK"), remark + QStringLiteral("恭喜你，你做对了。") + kCrLf};
}

QString RecordFileOf(const QString& paperFile) {
  const QString path = MapSeparators(paperFile);
  const qsizetype slash = path.lastIndexOf(u'/');
  const qsizetype dot = path.lastIndexOf(u'.');
  const QString base = dot > slash ? path.left(dot) : path;
  return base + QStringLiteral(".rec");
}

bool InPaperFolder(const QString& path) { return MapSeparators(path).contains(QStringLiteral("/外部题库")); }

QString ScoreMark(qint64 right, qint64 total) {
  const qint64 p = total >= 1 ? right * 100 / total : 0;
  return Right(QStringLiteral("000") + CStr(p), 2) + QStringLiteral("%");
}

QString MarkedName(const QString& recFile, const QString& mark) {
  const QString path = MapSeparators(recFile);
  const qsizetype slash = path.lastIndexOf(u'/');
  const QString folder = path.left(slash + 1);
  const QString name = path.mid(slash + 1);
  const qsizetype pct = name.lastIndexOf(u'%');
  return folder + mark + (pct >= 0 ? name.mid(pct + 1) : name);
}

std::optional<PracticeStart> StartPaperPractice(const Env& env, PaperState& state, const QString& paperFile) {
  const qint64 total = GetOutTotal(state);
  if (!paperFile.isEmpty() && !FileExists(paperFile)) {
    env.msgBox(QStringLiteral("试卷文件") + paperFile +
                   QStringLiteral("已经不存在了，可能被移走或删除了。请先按“保存一下”把窗口里的试题保存下来，再开始做题。"),
               box::Exclamation);
    return std::nullopt;
  }
  if (total > kMaxListedQuestions) {
    env.msgBox(QStringLiteral("本试卷共有") + QString::number(total) +
                   QStringLiteral("道题，超过了9999道，不能做题。请把它分成几个文件再做。"),
               box::Exclamation);
    return std::nullopt;
  }
  PracticeStart start;
  start.total = total;
  start.recFile = paperFile.isEmpty() ? QString() : RecordFileOf(paperFile);
  // A write of the record cut off by a crash may have left its temporary
  // file beside the paper; the record itself is whole either way.
  if (!start.recFile.isEmpty()) RemoveLeftoverSaves(start.recFile);
  const QString all = MakeAllTiList(total);

  if (!InPaperFolder(paperFile)) {
    env.msgBox(QStringLiteral("注意，只有先把该文件保存在“外部题库”目录下，做题记录才能有效保存。"), box::Information,
               QStringLiteral("最好保存进“外部题库”文件夹下。"));
    start.list = all;
  } else if (!FileExists(start.recFile)) {
    start.list = all;
  } else {
    const ProgressRecord record = ProgressRecord::Read(start.recFile);
    qint64 last = GetLastDone(state, record, total);
    if (last >= total) last = 1;
    const QString info = GetOutInfo(state, record, total);
    QString summary;
    if (!info.isEmpty()) {
      const QDateTime changed = FileModified(start.recFile);
      const qint64 right = InfoRight(info);
      summary = QStringLiteral("今天是") + DateText(env.today()) + QStringLiteral("，本套试题") + kCrLf +
                QStringLiteral("已经在") + DateText(changed.date()) + QString::number(changed.time().hour()) +
                QStringLiteral("点") + QString::number(changed.time().minute()) + QStringLiteral("分做过，") + kCrLf +
                QStringLiteral("共") + QString::number(total) + QStringLiteral("道") + kCrLf + QStringLiteral("已经做了") +
                QString::number(InfoDone(info)) + QStringLiteral("道") + kCrLf + QStringLiteral("做对") +
                QString::number(right) + QStringLiteral("道") + kCrLf + QStringLiteral("正确率为 ") +
                QString::number(right * 100 / total) + QStringLiteral("%") + kCrLf;
    }
    if (last == 0) {
      const int a = env.msgBox(QStringLiteral("没有符合条件的试题，或者是本试卷的记录文件，也就是") + start.recFile +
                                   QStringLiteral("有误，要删除本文件吗？"),
                               box::YesNo | box::Question);
      if (a == box::Yes && !RemoveFile(start.recFile))
        env.msgBox(QStringLiteral("无法删除文件") + start.recFile + QStringLiteral("。"), box::Exclamation);
      return std::nullopt;
    }
    if (last == 1) {
      const int a = env.msgBox(summary + kAskAgain, box::YesNo | box::Question, kChooseTitle);
      start.list = a == box::Yes ? GetNotOkList(state, record, total) : all;
    } else {
      const int t = GetTiClass(state, last);
      const int again =
          env.msgBox(summary + QStringLiteral("最后一次做的是第") + QString::number(last) + QStringLiteral("题（也就是") +
                         QStringLiteral("单多任").mid(t - 1, 1) + QStringLiteral("选题的第") +
                         QString::number(GetTiNum(state, last)) + QStringLiteral("题），") + kCrLf +
                         QStringLiteral("这次是否从第1题开始重做？"),
                     box::YesNo | box::Question);
      if (again == box::Yes) {
        const int a = env.msgBox(kAskAgain, box::YesNo | box::Question, kChooseTitle);
        start.list = a == box::Yes ? GetNotOkList(state, record, total) : all;
      } else {
        // The run goes on behind the question answered last.
        start.list = all.mid(last * 6);
      }
    }
  }
  if (start.list.isEmpty()) {
    env.msgBox(QStringLiteral("没有符合条件的试题。"), box::Exclamation);
    return std::nullopt;
  }
  return start;
}

QString LeavePaperPractice(PaperState& state, const QString& paperFile, const QString& recFile) {
  if (paperFile.isEmpty() || recFile.isEmpty() || !InPaperFolder(paperFile)) return paperFile;
  const qint64 total = GetOutTotal(state);
  const QString info = GetOutInfo(state, ProgressRecord::Read(recFile), total);
  const QString newRec = MarkedName(recFile, ScoreMark(InfoRight(info), total));
  // The paper keeps its own extension behind the new name.
  const QString paper = MapSeparators(paperFile);
  const qsizetype slash = paper.lastIndexOf(u'/');
  const qsizetype dot = paper.lastIndexOf(u'.');
  const QString extension = dot > slash ? paper.mid(dot) : QString();
  const QString newPaper = newRec.left(newRec.size() - 4) + extension;
  if (newPaper != paper && !RenameFileKeeping(paper, newPaper)) return paperFile;
  // A record of the new name that belongs to no paper goes; then the record
  // follows its paper.
  const QString rec = MapSeparators(recFile);
  if (newRec != rec) {
    if (FileExists(newRec)) RemoveFile(newRec);
    RenameFileKeeping(rec, newRec);
  }
  return newPaper;
}

}  // namespace mj
