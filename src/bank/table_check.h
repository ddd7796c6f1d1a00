#pragma once
// Whether the tables of \dbf can be read, and if not, what is wrong with
// them, in words for the user that name the file. The program reads what
// can be read of a damaged table; these sentences tell the user what is
// missing, at start-up and where a damaged table leaves a bank empty.

#include <QList>
#include <QString>
#include <QStringList>

#include "platform/env.h"

namespace mj {

// The fields the program needs by name, per kind of table.
QStringList ItemTableFields();       // items.mmd, csitems.mmd
QStringList DirectoryTableFields();  // 33ok.mmd, csface.mmd
QStringList LawNameTableFields();    // 33.mmd

// What is wrong with the table file at path: missing, empty, a header that
// is no table header, fields of `fields` it lacks, or fewer records in the
// file than its header gives. Empty when nothing is.
QString TableProblem(const QString& path, const QStringList& fields);

// The tables the practice needs (items.mmd, 33ok.mmd, csitems.mmd,
// csface.mmd, 33.mmd), each with its problem; only those that have one.
// A missing \dbf is one problem for all of them.
struct TableProblemOf {
  QString table;  // the file name, such as items.mmd; empty for \dbf itself
  QString text;
};
QList<TableProblemOf> CheckDataTables(const Env& env);

// The message that lists the problems at start-up.
QString TableProblemsMessage(const QList<TableProblemOf>& problems);

}  // namespace mj
