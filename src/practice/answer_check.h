#pragma once
// The answer step as text: the captions of the fifteen answer buttons, the
// comparison of letter sets, the entry a given answer leaves in a question's
// practice record, the record rule (a wrong answer wipes the record, a long
// record loses its oldest entries), the sentence that tells the user the
// outcome against the previous attempt, and the history the answer window
// shows.
//
// A practice record ("story") is a row of 20-character entries, newest
// first: the time as "yyyy-mm-dd hh:mm" and the given answer right-aligned in
// 4 characters. "no" stands for a question never done.

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace mj {

// The answer buttons Command2(0..14) by index: "A" "B" "C" "D" "AB" "AC" "AD"
// "BC" "BD" "CD" "ABC" "ABD" "ACD" "BCD" "ABCD". Every possible answer is
// one button.
inline constexpr int kAnswerButtonCount = 15;
const QStringList& AnswerCaptions();
// The index of the button whose caption is `answer`; -1 for none.
int AnswerButtonIndex(const QString& answer);

// The letters of text that are among "ABCD", in alphabetic order, each once.
QString Order(const QString& text);

// Letter set difference. Mode 1: the letters of a that are not in b, in the
// order of a. Mode 2: the letters of b that are not in a, in the order of b.
// Any other mode: empty.
QString CheckDaAn(const QString& a, const QString& b, int mode);
// Two answers are the same when both modes of CheckDaAn give nothing.
bool SameAnswer(const QString& a, const QString& b);

// One record entry: the time as "yyyy-mm-dd hh:mm" and the last 4
// characters of four blanks + answer.
QString RecordEntry(const QDateTime& when, const QString& answer);
inline constexpr int kEntryLength = 20;
// A record longer than this is cut to its first kRecordKeep characters (the
// eight newest entries).
inline constexpr int kRecordLimit = 200;
inline constexpr int kRecordKeep = 160;

// The record after one attempt, from the trimmed old record: a wrong answer
// replaces it with its own entry, as does any answer to a record of length 2
// ("no"); otherwise the entry goes in front. Then the cut above.
QString NextRecord(const QString& oldStory, const QString& entry, bool isWrong);

// What the answer step knows of the attempt before this one: the answer of
// the newest entry of the question's record (empty when there is none) and
// whether it was right against the key.
struct LastAttempt {
  QString answer;
  bool wasRight = true;
};

// The first part of the lower box of the answer window: the outcome of this
// attempt, worded against the last one.
//   first, wrong:           你错选了答案B。
//   first, right:           恭喜你，你做对了。
//   right after right:      上次做对了，本次又恭喜你，你做对了。
//   wrong after right:      上次做对了，但本次你错选了答案C。
//   right after wrong:      上次错选了答案A，但本次恭喜你，你做对了。
//   wrong after wrong:      上次错选了答案A，本次你又错选了答案B。
QString OutcomeSentence(const LastAttempt& last, bool isWrong, const QString& caption);

// The history text of the answer window from the record with this attempt
// added: "本题第一次做" for "no" or a text shorter than one entry; otherwise
// every entry on its own line under "本题只做过一次，情况如下：" or
// "本题共做过" n "次，分别如下：".
QString GetHistoryText(const QString& newStory);

}  // namespace mj
