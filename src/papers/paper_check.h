#pragma once
// The check of a paper: a plain text with the three sections
// "一、单项选择题", "二、多项选择题", "三、任意选择题", numbered questions
// ("12．" at a line start), options "A．" to "D．" and tagged answer lines
// ("[答案：]", "[参见：]", ...), either behind each question or together
// behind a line "[本卷参考答案]". The check counts and compares what it finds
// and writes a report in words; it never stops early, so one run reports
// every fault, and it never refuses: the paper can be practised anyway.
//
// All searches are by exact character and positions count from 1.

#include <QString>
#include <QStringList>

#include "papers/paper_state.h"
#include "platform/env.h"

namespace mj {

inline const QString kPaperHeadings[4] = {QString(), QStringLiteral("一、单项选择题"),
                                          QStringLiteral("二、多项选择题"), QStringLiteral("三、任意选择题")};
inline const QString kSeparateAnswersTag = QStringLiteral("[本卷参考答案]");

// The number of the first question (which "Start") or the last one ("end"),
// compared without regard to case. Start: the digits of the first line
// start (behind a line feed) that begins with a digit; the first line of the
// text is never seen. End: the number of the last line that begins with
// digits and "．". 0 for an empty text or no such line. Any other `which`
// shows a box and gives 0.
qint64 GetStartOrEndNum(const Env& env, const QString& text, const QString& which);

// The numbers first..last that have no line CR LF + n + "．" in the section,
// each written n + "．" ("5．7．"). Each number is searched from one
// character behind the hit of the number before, so a number that stands
// out of order counts as missing. Empty for an empty section or last below
// first.
QString GetLostNum(const QString& section, qint64 first, qint64 last);

// The letters A to D that occur in text, once each, in alphabetical order.
QString OnlyABCD(const QString& text);

// Every trimmed lawname of \dbf\listbox.mmd, one behind the other. *ok is
// false when the table cannot be opened (the result is then empty, so that
// every cited name counts as unknown).
QString GetAllLawName(const Env& env, bool* ok = nullptr);

// The report on each question of a section, for answers behind the
// questions (CheckEachItem) or in answer sections (CheckEachItem2). Empty for
// an empty section, a first or last of 0, or last below first. The law names
// that the list does not hold are appended to *badNames.
QString CheckEachItem(const QString& allNames, const QString& section, qint64 first, qint64 last,
                      QString* badNames);
QString CheckEachItem2(const QString& allNames, const QString& section, const QString& answerSection,
                       qint64 first, qint64 last, QString* badNames);

// One run of the check.
struct PaperCheckResult {
  QString report;         // the whole text for the result window
  QStringList lawNames;   // the entries of its law-name list
  bool passed = true;     // no failure found; nothing reads it but the tests
  bool lawListOk = true;  // the law-name list could be read
};

// The check of a paper with answers behind each question, and of one with
// the answers behind "[本卷参考答案]". Both rewrite the state: mode, numbers,
// section texts and BadLawNames.
PaperCheckResult CheckValidity(const Env& env, const QString& text, PaperState& state);
PaperCheckResult CheckValidity2(const Env& env, const QString& text, PaperState& state);

// The check as the button starts it: a text that holds CR LF +
// "[本卷参考答案]" is checked in mode 2, every other one in mode 1.
PaperCheckResult RunPaperCheck(const Env& env, const QString& text, PaperState& state);

// The names of a text of law names (《a》《b》《a》) once each, in order: the
// entries of the result window's list.
QStringList PutBadLawToCombo(const QString& names);

// The longest span of question numbers the check walks through; a paper
// whose numbers span more (a stray number in the millions) is reported up to
// there, so that a bad paper cannot make the check run for ever.
inline constexpr qint64 kMaxNumberSpan = 100000;

}  // namespace mj
