#pragma once
// Questions from a JSON file turned into a paper that the paper window
// checks and practises: free text naming the source, the heading
// "一、单项选择题", then per question its number and stem, the options
// "A．" to "D．" on lines of their own, and the answer line "[答案：]C".
//
// The JSON file is an array of objects with "question" (the stem followed
// by "A:...;B:...;C:...;D:...。") and "answer" ("正确答案:C。"), the form of
// the LawBench benchmark's single-choice tasks.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace mj::tools {

struct JsonPaper {
  QString text;         // the paper, CR LF line ends; empty on error
  int questions = 0;
  QStringList warnings;  // texts that were changed to fit the layout or GBK
  QString error;         // why there is no paper
};

// The paper of a JSON file; header: the lines of free text before the
// heading (they name the source), without line ends.
JsonPaper PaperFromJson(const QByteArray& json, const QStringList& header);

// The header for the LawBench file of task 3-6: title with the number of
// questions, source, licence and what the conversion changed.
QStringList LawBenchHeader(int questions);

}  // namespace mj::tools
