#pragma once
// Outside papers as they come from web pages and books, for the tests and the
// benchmark of the automatic conversion: generated ones in every numbering
// style, and the real questions of ../shared/realdata written as a loose paper.

#include <QList>
#include <QString>
#include <random>

namespace mj::test {

// A generated loose paper of the given number of questions: numbering
// 1、 1. 1， 1。 1, at line starts or behind a blank, options in several
// styles on one or several lines, answers with and without explanation,
// citations with short law names and Chinese article numbers up to 600,
// line breaks in mid-sentence, stray blanks and blank lines, headings with
// remarks, sometimes a list of answers at the end, sometimes no final line
// break.
QString LoosePaper(std::mt19937& rng, int questions);

// One real question: stem, the four options, the answer letter.
struct RealQuestion {
  QString stem;
  QString options[4];
  QString answer;
};
// The questions of lawbench-3-6.json; empty when the file is absent.
QList<RealQuestion> RealQuestions(const QString& jsonPath);
// Written as a loose paper of single-choice questions: the heading
// 一、单项选择题, then n、stem, A、..., D、..., 答案：X, each line ended by CR LF.
QString RealLoosePaper(const QList<RealQuestion>& questions, int firstNumber = 1);

}  // namespace mj::test
