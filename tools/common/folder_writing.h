#pragma once
// What the demonstration data builder (mkdata) and the data generator (mkgen)
// write alike into a program folder: its folders, the words for question
// types, law classes and paper groups, the article headings of law texts, the
// question blocks of bank files, the rows of the item and directory tables and
// the file lines of the law tree files.

#include <QString>
#include <QStringList>

#include "platform/dbftable.h"

namespace mjtools {

// The question types 1..3 in words (index 0 is empty).
inline const QStringList kTypeWords = {QString(), QStringLiteral("单项选择题"), QStringLiteral("多项选择题"),
                                       QStringLiteral("任意选择题")};
// The law classes: listbox.mmd's lei is the index + 1; the class tree's groups.
inline const QStringList kClasses = {
    QStringLiteral("宪法"), QStringLiteral("民法"),   QStringLiteral("行政法"),         QStringLiteral("刑法"),
    QStringLiteral("商法"), QStringLiteral("经济法"), QStringLiteral("国际（经济）法"), QStringLiteral("律师法")};
// The groups of the tree by paper, for papers 1..3.
inline const QStringList kPaperGroups = {QStringLiteral("试卷一相关法律、法规"), QStringLiteral("试卷二相关法律、法规"),
                                         QStringLiteral("试卷三相关法律、法规")};

// Makes the folders of a program folder under root, 外部题库 with its class
// and paper folders included. False when one could not be made; *failed then
// names it, relative to root.
bool MakeProgramFolders(const QString& root, QString* failed = nullptr);

// The article heading of number n in a text of the given type (1 第N条,
// 2 N、 in the program's numerals, 3 n．), without indent; empty for any other
// type.
QString ArticleHead(int type, int n);

// The answer field of a question: 答案：<key>参见<cite>, then a line with the
// note and its date when there is a note.
QString AnswerField(const QString& key, const QString& cite, const QString& note, const QString& noteDate);

// One question block of a bank file: the ●serial● marker and the stem (its
// lines joined by CR LF), the options from A on, the lines of the question's
// ID and provider when all five provider fields are given (name, QQ number,
// e-mail, home page, date), then ■ and the answer field.
QString QuestionBlock(int serial, const QString& id, const QString& stem, const QStringList& options,
                      const QStringList& provider, const QString& answerField);

// One row of an item table (items.mmd, csitems.mmd): valid, selected, its
// filename the first six characters of its ID. The forum fields are written
// when board is not 0 (internal banks only have them).
struct ItemRecord {
  QString itemid, story, answer, aboutlaw;
  int type = 0;
  int board = 0, topic = 0;
};
bool AppendItemRecord(mj::DbfTable& t, const ItemRecord& item);

// One row of a directory table (33ok.mmd, csface.mmd): a heading has no file
// and the range of its rows as flag. The row's identification number is its
// row number (from 1); the score is the right answers' share of those done,
// in whole percent; no minutes of practice yet.
struct DirectoryRecord {
  QString label, file, flag;
  int total = 0, done = 0, right = 0, eligible = 0;
};
bool AppendDirectoryRecord(mj::DbfTable& t, const DirectoryRecord& row);

// The line of a law tree file that names the law text of the next line:
// FILE="\lawtxt\<name>.mmd" and CR LF.
QString TreeFileLine(const QString& lawName);

}  // namespace mjtools
