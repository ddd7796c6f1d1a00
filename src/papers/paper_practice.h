#pragma once
// The practice of a checked paper, straight from its text: there is no
// import into the question tables. A question is found by its running
// number k, which runs from 1 across the three sections of the paper (single,
// multiple, any choice); its section t and its own number n in the section
// come from the numbers the check found (PaperState::OutTiNum). The stem and
// the answer are cut out of the section texts by the number, the answer's
// letters are compared with the button pressed, and the outcome goes into
// the paper's progress record (papers/progress_record.h).
//
// Everything here works on the paper state and on texts; the window Form14
// (papers/paper_practice_window.h) only shows what these functions give.

#include <QString>
#include <array>
#include <optional>

#include "papers/paper_state.h"
#include "platform/env.h"

namespace mj {

class ProgressRecord;

// --- running numbers ---

// Works out the running totals anew: T(0) = 0; T(t) = T(t-1) + last - first
// + 1 when both numbers of section t are not 0, else T(t-1) + last - first
// (so a section without numbers adds 0). Stores T(t) in OutTiNum[t][3] and
// returns T(3), the number of questions.
qint64 GetOutTotal(PaperState& state);
// The section of question k: 0 when k < 1 or k > T(3), else the first t with
// k <= T(t). Reads the totals GetOutTotal stored.
int GetTiClass(const PaperState& state, qint64 k);
// The number of question k in its own section: 0 in the same cases as
// GetTiClass, else k + first(t) - T(t-1) - 1.
qint64 GetTiNum(const PaperState& state, qint64 k);

// --- question lists ---
// A list is a text of cells of six characters: "*", the running number
// right-justified in four characters, "*". Four places hold at most 9999.
inline constexpr qint64 kMaxListedQuestions = 9999;
// All cells from 1 to total; "" for a total below 1.
QString MakeAllTiList(qint64 total);
// The number of cells of a list (its length divided by 6).
qint64 TiListCount(const QString& list);
// The running number in cell i (1-based): the five characters from place
// (i - 1) * 6 + 2, read as a number.
qint64 TiListNumber(const QString& list, qint64 cell);
// The cell of running number k.
QString TiListCell(qint64 k);

// --- the progress record seen over the paper ---

// The running number of the question answered last by the record's two
// "答" values: 0 when no k from 1 to total has that section and number (or
// total is 0: the record does not belong to the paper as it is now); 1 when
// it was the last question (the paper was finished and starts again); else
// that k.
qint64 GetLastDone(const PaperState& state, const ProgressRecord& record, qint64 total);
// Ten characters: the questions done, then those last answered right, each
// right-justified in five. Empty when the record file does not exist or
// total is below 1.
QString GetOutInfo(const PaperState& state, const ProgressRecord& record, qint64 total);
// The list of every question whose value is not "OKOK" (never done or last
// answered wrong); empty in the same cases as GetOutInfo.
QString GetNotOkList(const PaperState& state, const ProgressRecord& record, qint64 total);
// Done and right read back from a GetOutInfo text.
qint64 InfoDone(const QString& info);
qint64 InfoRight(const QString& info);

// --- texts of a question ---

// The stem of question k: the item of its number cut out of its section
// text (see below), in mode 1 up to its "[答案：]" line, blank-trimmed and
// without one leading CR LF. "没有该题题干。" when the number is not there.
//
// The item of number n runs from CR LF + n + "．" up to the last
// CR LF + (n + 1) + "．" behind it (to the end of the section without one):
// a stray line further down that begins with the next number widens the
// item, as papers in this layout have always been read.
QString GetStemText(const PaperState& state, qint64 k);
// The answer of question k: in mode 1 its item from CR LF + "[答案：]" on, in
// mode 2 its item in the answer section; then one line per tag ("[答案：]",
// "[参见：]", ...), ending in CR LF. "没有该题答案。" when there is none.
QString GetDaAnText(const PaperState& state, qint64 k);

// The answer letters of a text: from its first letter A to D, the run of
// characters out of "ABCD,.~-_，、~～"; those of A, B, C, D that occur there,
// once each, in alphabetical order. "A、C" gives "AC".
QString OutABCD(const QString& text);

// The text of the answer box as it is first filled: without any "《" but
// with a "第", an empty "《》" goes in front of the first "第", so that the
// candidate can drag the law's name in.
QString WithLawNameGap(const QString& answerText);

// The lower box: the answer in the standard form, CR LF, and the law text of
// the articles it cites (the citation functions of the banks); an end in
// CR LF + "参见" becomes CR LF.
QString AboutLawText(const Env& env, const QString& answerText);

// --- the case passage shared by a group of questions ---

// A case text that serves several questions stands behind the options of the
// question before them (or in front of the first) and says "请回答" and two
// numbers. While the questions of the group are shown it stands above their
// stems.
struct GroupPassage {
  QString OutGroupText;
  qint64 OutGroupFirst = 0;
  qint64 OutGroupLast = 0;
  void clear() { *this = {}; }
  bool holds(qint64 n) const { return OutGroupFirst >= 1 && OutGroupFirst <= n && n <= OutGroupLast; }
};
// Takes a passage: with "请回答" in it, the first two runs of digits behind
// that word (in what follows it plus "另加0-0") are the group's numbers; a
// 0 among them, or no "请回答", clears the group.
void SetGroup(GroupPassage& group, const QString& text);
// The text of the stem box for question k, with the group passage above the
// stem when the question belongs to the group; a passage behind the options
// of k starts the next group and is not shown with k.
QString ShowOutTi(const PaperState& state, GroupPassage& group, qint64 k);

// --- the status line ---
// "共", cells, "题符合条件,", the section's words and the number n (n only
// when it is at least 1).
QString PracticeStatusLine(qint64 cells, int section, qint64 n);

// --- outcome of an answer ---
struct AnswerOutcome {
  bool right = false;
  QString value;  // stored in the record: "OKOK" or the letters pressed
  QString line;   // the line on top of the lower box, with its CR LF
};
// The caption of the button pressed against the answer text; oldValue is
// what the record held for the question before.
AnswerOutcome JudgeAnswer(const QString& caption, const QString& answerText, const QString& oldValue);

// --- the record beside the paper ---

// The record file of a paper: the paper's name without its extension, plus
// ".rec", in the paper's folder.
QString RecordFileOf(const QString& paperFile);
// True when the path lies in a folder of papers ("\外部题库" in it).
bool InPaperFolder(const QString& path);
// The score mark: the last two digits of the whole percentage, then "%":
// 7 gives "07%", 85 "85%", and 100 "00%".
QString ScoreMark(qint64 right, qint64 total);
// The record's name with the score mark in front of its file name; a mark
// already there (everything up to the last "%" of the file name) is replaced.
QString MarkedName(const QString& recFile, const QString& mark);

// The whole start of a practice run ("开始做题"): the warning for a paper
// outside the folder of papers, the summary of the record and the questions
// of the resumption, or the question whether to delete a record that does
// not belong to the paper. Gives the list of the run, or nothing when there
// is no run (the boxes have said why).
struct PracticeStart {
  QString list;     // the question list of the run
  QString recFile;  // OutRecFile: the record file, "" when none is kept
  qint64 total = 0;
};
std::optional<PracticeStart> StartPaperPractice(const Env& env, PaperState& state, const QString& paperFile);

// The end of a run ("返回"): the score goes into the names of paper and
// record. Gives the paper's new path, or the old one when nothing was
// renamed: a paper outside the folder of papers keeps its name, and when the
// paper cannot take its new name the record keeps its own, so that the two
// stay together.
QString LeavePaperPractice(PaperState& state, const QString& paperFile, const QString& recFile);

}  // namespace mj
