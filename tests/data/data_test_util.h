#pragma once
// Helpers of the data tests: the built demonstration folder, its law texts
// and the citation entries of its questions.

#include <gtest/gtest.h>

#include <QList>
#include <QString>
#include <QStringList>

#include "platform/dbftable.h"

namespace mj::datatest {

// The built demonstration program folder; the test fails when it is absent.
QString Demo();

// A GBK file of the demonstration folder (suffix with "\" separators).
QString ReadDemo(const QString& suffix);

// Files of the demonstration folder that hold text (everything but the
// tables and the pictures), as suffixes with "/" separators.
QStringList DemoTextFiles();

struct LawFile {
  QString title;  // with 《》
  QString text;   // the law file's text
  int type = 0;   // 1 第二条, 2 二、, 3 2．
};
// The laws of dbf\33.mmd with their texts.
QList<LawFile> DemoLaws();

// The real statutes of the law list data/laws.txt (lines with a Markdown
// source), as the demonstration folder holds them: none when the real data
// folder is absent, since the build then leaves them out.
struct RealLaw {
  QString title;       // with 《》
  int paper = 0;       // 1..3
  QChar letter;        // A..Z
  QString klass;       // 宪法, 民法, ...
  QStringList sources;  // Markdown files below the real data folder
};
QList<RealLaw> RealLawsOfTheList();

// The heading of article n as it stands at the start of a line of a law of
// that type, indent included: "　　第十二条", "　　十二、", "　　12．", spelled
// with the program's numerals.
QString ArticleHeading(int type, int n);

// The numbering type by the article-2 markers at line starts (first wins).
int TextType(const QString& lawText);

struct Citation {
  QString title;
  int number = 0;
};
// The entries of a flat citation list; false when the text is not one.
bool ParseFlatList(const QString& flat, QList<Citation>* out);

// Rows of a table as maps of field name to trimmed text (numbers as their
// decimal text, logicals "T"/"F").
QList<QMap<QString, QString>> TableRows(const QString& path);

}  // namespace mj::datatest
