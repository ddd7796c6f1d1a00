#pragma once
// The dBASE tables of \dbf: their names and the fields the program creates
// them with. Existing data folders may have other widths; the program reads
// fields by name (or by position for the directory tables) and never
// depends on a width.

#include <QList>
#include <QString>

#include "platform/dbftable.h"

namespace mj::tables {

// Item tables: items.mmd (internal banks), csitems.mmd (simulated papers).
inline const QString kItems = QStringLiteral("items.mmd");
inline const QString kCsItems = QStringLiteral("csitems.mmd");
// Directory tables: 33ok.mmd (internal banks), csface.mmd (simulated papers).
inline const QString kDirectory = QStringLiteral("33ok.mmd");
inline const QString kCsDirectory = QStringLiteral("csface.mmd");
// Law names and their bank codes.
inline const QString kLawNames = QStringLiteral("33.mmd");
// Law-name list of the paper validator and the question editor.
inline const QString kLawList = QStringLiteral("listbox.mmd");
// The exam outline.
inline const QString kOutline = QStringLiteral("dagang.mmd");

// Columns of the item tables, 1-based as in the question index.
enum ItemColumn { kFilename = 1, kStory, kAnswer, kAboutlaw, kItemid, kHastest, kValid2, kHasselect, kItemtype };

inline QList<DbfField> ItemFields(bool withForum = false) {
  QList<DbfField> f = {
      {QStringLiteral("filename"), 'C', 6, 0},  {QStringLiteral("story"), 'C', 254, 0},
      {QStringLiteral("answer"), 'C', 4, 0},    {QStringLiteral("aboutlaw"), 'C', 254, 0},
      {QStringLiteral("itemid"), 'C', 11, 0},   {QStringLiteral("hastest"), 'C', 10, 0},
      {QStringLiteral("valid2"), 'L', 1, 0},    {QStringLiteral("hasselect"), 'L', 1, 0},
      {QStringLiteral("itemtype"), 'N', 2, 0},
  };
  if (withForum) {
    f.append({QStringLiteral("boardid"), 'N', 6, 0});
    f.append({QStringLiteral("topicid"), 'N', 8, 0});
  }
  return f;
}

// Directory tables: the grid shows field c at column c + 1. Names of the
// fields a, b, f and oknum are fixed; the others are this program's choice.
enum DirectoryField {
  kDirLabel = 0,      // a: the label
  kDirFile = 1,       // b: \yibanti\xxxxxx.mmd, empty for a heading
  kDirFlag = 2,       // c: "first-last" for a heading
  kDirId = 3,         // d: identification number
  kDirTotal = 4,      // f: questions in the bank
  kDirDone = 5,       // g: answers given
  kDirRight = 6,      // h: right answers
  kDirScore = 7,      // i: score text (recomputed on display)
  kDirUnused9 = 8,    // j
  kDirUnused10 = 9,   // k
  kDirMinutes = 10,   // l: minutes of practice
  kDirEligible = 11,  // oknum: eligible questions
};

inline QList<DbfField> DirectoryFields() {
  return {
      {QStringLiteral("a"), 'C', 80, 0}, {QStringLiteral("b"), 'C', 60, 0}, {QStringLiteral("c"), 'C', 20, 0},
      {QStringLiteral("d"), 'C', 10, 0}, {QStringLiteral("f"), 'N', 10, 0}, {QStringLiteral("g"), 'N', 10, 0},
      {QStringLiteral("h"), 'N', 10, 0}, {QStringLiteral("i"), 'C', 10, 0}, {QStringLiteral("j"), 'C', 10, 0},
      {QStringLiteral("k"), 'C', 10, 0}, {QStringLiteral("l"), 'N', 10, 0}, {QStringLiteral("oknum"), 'N', 10, 0},
  };
}

inline QList<DbfField> LawNameFields() {
  return {{QStringLiteral("lawname"), 'C', 80, 0}, {QStringLiteral("filename"), 'C', 60, 0}};
}

inline QList<DbfField> LawListFields() {
  return {{QStringLiteral("lawname"), 'C', 80, 0},
          {QStringLiteral("f"), 'N', 1, 0},
          {QStringLiteral("c"), 'C', 1, 0},
          {QStringLiteral("lei"), 'N', 2, 0}};
}

inline QList<DbfField> OutlineFields() {
  return {{QStringLiteral("a"), 'C', 200, 0}, {QStringLiteral("b"), 'C', 120, 0},  {QStringLiteral("c"), 'C', 20, 0},
          {QStringLiteral("d"), 'C', 254, 0}, {QStringLiteral("r"), 'C', 254, 0},  {QStringLiteral("therecn"), 'N', 8, 0},
          {QStringLiteral("k"), 'C', 1, 0}};
}

}  // namespace mj::tables
