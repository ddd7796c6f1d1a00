#pragma once
// Replacement pairs: "[a]-->[b]" replaces every a of a paper by b ("^p" in
// either stands for a line end). The list of pairs lives in the plain text
// file \ini\listbox.ini, one pair a line in quoted-list form with its tick:
//   "[《刑诉》]-->[《刑事诉讼法》]",1
// so that what one paper taught helps with the next. The batch replacement
// window shows the list with running numbers and ticks; the find/replace
// window adds each pair the user has used.

#include <QList>
#include <QString>

#include "platform/env.h"

namespace mj {

inline const QString kPairFile = QStringLiteral("\\ini\\listbox.ini");

// An entry of the list: a running number left-justified in four characters,
// then the pair; and its tick.
struct PairEntry {
  QString text;
  bool ticked = false;
  bool operator==(const PairEntry&) const = default;
};
using PairList = QList<PairEntry>;

// A valid pair: "-->" at place 2 or later; the part before the first "-->"
// begins with "[", ends with "]" and is at least three characters long (a is
// not empty); the part behind begins with "[" and ends with "]" ("[]" is
// allowed: an empty b deletes a).
bool IsOkPair(const QString& pair);

// The entry of running number n: the left four characters of n followed by
// four blanks, then the pair.
QString NumberedEntry(int n, const QString& pair);
// The pair of an entry: everything behind its first four characters.
QString PairOfEntry(const QString& entry);

// One line of the pair file read as two comma-separated values: the pair and
// its tick (the number 1). A pair in double quotes runs to its closing quote
// (the last quote before the comma, so that a quote inside survives).
struct PairLine {
  QString pair;
  bool ticked = false;
};
PairLine ReadPairLine(const QString& line);
// The line a pair is written as, without its line end: "pair",1 or "pair",0.
QString PairFileLine(const QString& pair, bool ticked);

// The entries of the pair file, numbered from 1. A missing file gives an
// empty list; blank lines are passed over.
PairList Read2List(const QString& path);
// Writes the valid entries with their ticks in list order; a list with
// nothing valid writes one empty line. The file is replaced atomically.
// False when it cannot be written.
bool SaveList(const PairList& list, const QString& path);

// The list with abandoned entries dropped (shorter than five characters, or
// the bare pair "[]-->[]"), newPair added at its end (not ticked) when it is
// not empty, and every entry numbered again from 1.
PairList RebuildList(const PairList& list, const QString& newPair = QString());

// Applies every ticked valid pair, from the first entry to the last, to the
// text; a later pair works on what an earlier one wrote.
QString ApplyPairs(const PairList& list, const QString& text);

// "^p" as CR LF.
QString ExpandLineEnds(const QString& text);

// The list as the table \dbf\willrepl.mmd keeps it (replstr: the pair,
// selected: 1 ticked, 0 not), an older store of the same list that no
// window uses any more: PutList1toDbf replaces the table's rows with the
// valid entries, ReadListFromDbf gives them back numbered from 1. False when
// the table cannot be written.
inline const QString kPairTable = QStringLiteral("willrepl.mmd");
bool PutList1toDbf(const Env& env, const PairList& list);
PairList ReadListFromDbf(const Env& env);

// The learning step of the find/replace window: the pair "[find]-->[repl]"
// (as typed, "^p" kept) is appended ticked to the pair file unless that very
// line is there already. Nothing is learned without a replacement. False
// when the file could not be written.
bool LearnPair(const Env& env, const QString& find, const QString& repl);

}  // namespace mj
