// The command and the window give the same result for the same input: the
// program's main window on the demonstration data beside mingjing-cli on
// the same folder.
#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

#include "app/main_window.h"
#include "cli_program.h"
#include "law/citations.h"
#include "law/law_query_window.h"
#include "papers/check_result_window.h"
#include "papers/paper_window.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::Lf;
using test::Program;
using test::RunCliOn;

// The grid as due prints it: every heading opened by a click, the shown
// columns of each row.
QString GridAsText(DirectoryGrid* grid) {
  for (int r = 1; r <= grid->directory().rowCount(); ++r) {
    const Directory& d = grid->directory();
    if (d.isHeading(r) && d.text(r, kColLabel).trimmed().startsWith(u'+')) grid->clickRow(r);
  }
  const Directory& d = grid->directory();
  QString out;
  for (int r = 1; r <= d.rowCount(); ++r) {
    EXPECT_FALSE(d.isRowHidden(r)) << r;
    QStringList cells;
    for (const int c : {kColLabel, kColTotal, kColDone, kColRight, kColScore, kColMinutes, kColEligible}) {
      QString t = d.text(r, c);
      if (c == kColLabel) {
        while (t.endsWith(u' ')) t.chop(1);
      } else {
        t = t.trimmed();
      }
      cells << t;
    }
    out += cells.join(u'\t') + u'\n';
  }
  return out;
}

QString WithoutHeader(const QString& due) { return due.mid(due.indexOf(u'\n') + 1); }

TEST(CliSideBySide, TheDirectoryAndTheLawUnderAnAnswer) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "demonstration data not built";
  Program p;
  // Before the window's count and after it: the same numbers.
  const cli::CliResult before = p.cli({u"due"_qs});
  ASSERT_EQ(before.status, 0) << before.err.toStdString();
  p.form->ShiTi->trigger();
  DirectoryGrid* grid = p.form->MSFlexGrid1;
  EXPECT_EQ(GridAsText(grid), WithoutHeader(before.out));
  EXPECT_EQ(p.cli({u"due"_qs}).out, before.out);

  // A question of the first bank answered: the law text under the answer is
  // what cite prints for the question's citation, and each article in it is
  // what article prints.
  const Directory& d = grid->directory();
  int row = 0;
  for (int r = 1; r <= d.rowCount() && !row; ++r)
    if (d.text(r, kColFile).endsWith(u"100011.mmd"_qs)) row = r;
  ASSERT_GT(row, 0);
  ASSERT_EQ(grid->clickRow(row), DirectoryClick::Leaf);
  p.form->practice->Command2[AnswerCaptions().indexOf(u"A"_qs)]->click();
  Form3* answer = p.form->practice->answerWindow();
  ASSERT_TRUE(answer->isVisible());
  const QString lower = answer->Form3Text[1]->toPlainText();
  const qsizetype at = lower.indexOf(u"参见《"_qs);
  ASSERT_GE(at, 0) << lower.toStdString();
  const QString citation = lower.mid(at, lower.indexOf(u'\n', at) - at);
  const cli::CliResult cite = p.cli({u"cite"_qs, citation});
  ASSERT_EQ(cite.status, 0) << cite.err.toStdString();
  EXPECT_TRUE(lower.endsWith(cite.out) || lower.endsWith(cite.out.chopped(1)))
      << lower.toStdString() << "\n---\n" << cite.out.toStdString();
  const QStringList pieces = LongDaAn(citation).split(u"．"_qs, Qt::SkipEmptyParts);
  ASSERT_FALSE(pieces.isEmpty());
  for (const QString& piece : pieces) {
    const QString title = piece.section(u"》"_qs, 0, 0).mid(1);
    const QString number = piece.section(u"》"_qs, 1);
    const cli::CliResult article = p.cli({u"article"_qs, title, number});
    ASSERT_EQ(article.status, 0) << article.err.toStdString();
    EXPECT_TRUE(lower.contains(article.out.chopped(1))) << article.out.toStdString();
  }
  // After the run the directory's counters went into the grid and the
  // table: the command reads the same.
  answer->Command1[3]->click();
  ASSERT_FALSE(p.form->practice->isVisible() && answer->isVisible());
  EXPECT_EQ(WithoutHeader(p.cli({u"due"_qs}).out), GridAsText(grid));
}

TEST(CliSideBySide, TheTextSearchOfTheLawQuery) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "demonstration data not built";
  Program p;
  Form6* form = p.form->lawQueryWindow();
  form->show();
  for (const QString& group : {u"试卷二相关法律、法规"_qs, u"试卷三相关法律、法规"_qs}) {
    for (const QString& text : {u"犯罪"_qs, u"合同"_qs, u"第十条"_qs}) {
      form->TreeView1->expandAll();
      const auto found = form->TreeView1->findItems(group, Qt::MatchExactly | Qt::MatchRecursive);
      ASSERT_EQ(found.size(), 1);
      form->TreeView1->scrollToItem(found[0]);
      QTest::mouseClick(form->TreeView1->viewport(), Qt::LeftButton, {},
                        form->TreeView1->visualItemRect(found[0]).center());
      // Typed into the text box through the input method, as Chinese is
      // typed, and sent with Enter.
      form->Text2->setFocus();
      form->Text2->selectAll();
      QInputMethodEvent typed;
      typed.setCommitString(text);
      QCoreApplication::sendEvent(form->Text2, &typed);
      ASSERT_EQ(form->Text2->text(), text);
      QTest::keyClick(form->Text2, Qt::Key_Return);
      const QString shown = form->RichTextBox1->toPlainText();
      const cli::CliResult r = p.cli({u"search"_qs, text, u"--group"_qs, group});
      if (r.status == 0) {
        EXPECT_EQ(r.out, shown) << group.toStdString() << " " << text.toStdString();
      } else {
        EXPECT_EQ(r.err, shown) << group.toStdString() << " " << text.toStdString();
      }
    }
  }
}

TEST(CliSideBySide, TheReportOfThePaperCheck) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "demonstration data not built";
  Program p;
  Form10* paper = p.form->paperWindow();
  const QStringList papers = QDir(p.t.path(u"\\外部题库"_qs)).entryList({u"*.txt"_qs}, QDir::Files, QDir::Name);
  // The three papers written for the program and the real sample paper.
  ASSERT_EQ(papers.size(), 4);
  for (const QString& name : papers) {
    const QString path = p.t.path(u"\\外部题库\\"_qs + name);
    ASSERT_TRUE(paper->loadPaper(path));
    paper->Command1[0]->click();
    const cli::CliResult r = p.cli({u"check-paper"_qs, path});
    ASSERT_EQ(r.status, 0);
    EXPECT_EQ(r.out, Lf(paper->resultWindow()->report())) << name.toStdString();
    paper->resultWindow()->hide();
  }
}

}  // namespace
}  // namespace mj
