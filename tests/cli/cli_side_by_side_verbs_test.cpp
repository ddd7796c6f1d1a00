// The window and the command give the same result for the same input: the
// automatic conversion of a paper, an update package, a new law, the
// question search and the wrong book, each done once through the program's
// window on one copy of the demonstration folder and once by mingjing-cli
// on another (or the same) copy.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "app/main_window.h"
#include "app/search_entries_window.h"
#include "bank/item_index.h"
#include "bank/question_search.h"
#include "bank/question_search_window.h"
#include "cli_program.h"
#include "law/law_files.h"
#include "law/new_law_window.h"
#include "log/log_grid_widget.h"
#include "log/update_package.h"
#include "log/wrong_book_window.h"
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

// Relative path -> content hash of every file below root: two folders that
// went through the same change compare equal, whatever the files' times.
QMap<QString, QByteArray> Contents(const QString& root) {
  QMap<QString, QByteArray> m;
  QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString path = it.next();
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << path.toStdString();
    m.insert(QDir(root).relativeFilePath(path), QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha1).toHex());
  }
  return m;
}

// The files that differ between two folders, for the failure message.
QStringList Differences(const QMap<QString, QByteArray>& a, const QMap<QString, QByteArray>& b) {
  QStringList d;
  for (auto it = a.begin(); it != a.end(); ++it)
    if (b.value(it.key()) != it.value()) d << it.key();
  for (auto it = b.begin(); it != b.end(); ++it)
    if (!a.contains(it.key())) d << it.key();
  return d;
}

bool Skip() { return test::DemoDataDir().isEmpty(); }

TEST(CliSideBySideVerbs, TheAutomaticConversionOfEveryDemonstrationPaper) {
  if (Skip()) GTEST_SKIP() << "demonstration data not built";
  Program p;
  Form10* paper = p.form->paperWindow();
  const QStringList papers = QDir(p.t.path(u"\\外部题库"_qs)).entryList({u"*.txt"_qs}, QDir::Files, QDir::Name);
  ASSERT_EQ(papers.size(), 4);
  ASSERT_EQ(paper->Command1[1]->text(), u"试一下自动转换"_qs);
  for (const QString& name : papers) {
    const QString path = p.t.path(u"\\外部题库\\"_qs + name);
    ASSERT_TRUE(paper->loadPaper(path));
    paper->Command1[1]->click();
    const cli::CliResult r = p.cli({u"convert-paper"_qs, path});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, Lf(paper->paperText())) << name.toStdString();
    EXPECT_FALSE(r.out.isEmpty());
  }
}

// 选新题库文件并更新进系统题库 with the dialog answered by the package and
// the question by `answer`; the report the window showed.
QString UpdateByWindow(Program& p, const QString& package, int answer) {
  emit p.form->AutoUpdate->aboutToShow();
  EXPECT_TRUE(p.form->NewerProgram->isEnabled());
  p.t.dialogs.answer(package);
  p.t.boxes.answer(answer);
  p.form->NewerProgram->trigger();
  QString report;
  for (const BoxRecord& b : p.t.boxes.take())
    if (b.title == u"结果汇报"_qs) report = b.text;
  return report;
}

TEST(CliSideBySideVerbs, AnUpdatePackageByTheWindowAndByTheCommand) {
  if (Skip()) GTEST_SKIP() << "demonstration data not built";
  // Both folders get the program's start; the window's folder then takes the
  // package through the menu, the other through the command.
  Program byWindow;
  Program byCommand;
  const QString sample = u"\\更新的题\\示例更新包.new"_qs;
  ASSERT_EQ(Differences(Contents(byWindow.t.root()), Contents(byCommand.t.root())), QStringList());

  const QString report = UpdateByWindow(byWindow, byWindow.t.path(sample), box::No);
  cli::CliResult r = byCommand.cli({u"apply-update"_qs, byCommand.t.path(sample)});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_EQ(r.out, report + u"\n"_qs);
  EXPECT_EQ(Differences(Contents(byWindow.t.root()), Contents(byCommand.t.root())), QStringList());

  // Again with "否": nothing new; then with "是" (--again).
  EXPECT_EQ(byCommand.cli({u"apply-update"_qs, byCommand.t.path(sample)}).out,
            UpdateByWindow(byWindow, byWindow.t.path(sample), box::No) + u"\n"_qs);
  EXPECT_EQ(Differences(Contents(byWindow.t.root()), Contents(byCommand.t.root())), QStringList());
  r = byCommand.cli({u"apply-update"_qs, byCommand.t.path(sample), u"--again"_qs});
  EXPECT_EQ(r.out, UpdateByWindow(byWindow, byWindow.t.path(sample), box::Yes) + u"\n"_qs);
  EXPECT_EQ(Differences(Contents(byWindow.t.root()), Contents(byCommand.t.root())), QStringList());
  // A file that is not a package: the window says the same and neither changes.
  const QMap<QString, QByteArray> before = Contents(byCommand.t.root());
  const QString notOne = byCommand.t.path(u"\\外部题库\\外部题库试样1.txt"_qs);
  r = byCommand.cli({u"apply-update"_qs, notOne});
  EXPECT_EQ(r.status, 1);
  EXPECT_TRUE(r.err.endsWith(kNotAPackage)) << r.err.toStdString();
  EXPECT_EQ(Contents(byCommand.t.root()), before);
}

TEST(CliSideBySideVerbs, ANewLawByTheWindowAndByTheCommand) {
  if (Skip()) GTEST_SKIP() << "demonstration data not built";
  Program byWindow;
  Program byCommand;
  QTemporaryDir outside;
  const QString source = outside.path() + u"/粘连法.txt"_qs;
  {
    QFile f(source);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    // A heading glued to the text before it: the window asks, the answer is "是".
    f.write(u"粘连法\r\n第一章 总则\r\n第一条 甲。\r\n第二条 乙。第三条 丙。\r\n第四条 丁。\r\n"_qs.toUtf8());
  }
  byWindow.form->AddNewLaw->trigger();
  Form15* w = byWindow.form->newLawWindow();
  ASSERT_TRUE(w->isVisible());
  byWindow.t.dialogs.answer(source);
  w->Command1[0]->click();
  // The question 第三条有误，但该条头存在，要更改吗 gets its default, "是".
  w->Command1[1]->click();
  ASSERT_TRUE(w->Command1[2]->isEnabled());
  w->Command1[2]->click();
  w->Combo1->setCurrentIndex(1);   // 试卷二
  w->Combo2->setCurrentIndex(25);  // Z
  w->Combo3->setCurrentIndex(3);   // 刑法
  // Typed as an input method types Chinese.
  w->Text1->setFocus();
  w->Text1->selectAll();
  QInputMethodEvent typed;
  typed.setCommitString(u"《粘连法》"_qs);
  QCoreApplication::sendEvent(w->Text1, &typed);
  ASSERT_TRUE(w->Command1[3]->isEnabled());
  w->Command1[3]->click();  // 请你确认: "是", the default
  QStringList shown;
  for (const BoxRecord& b : byWindow.t.boxes.take()) shown << b.title;
  ASSERT_TRUE(shown.contains(u"完成"_qs)) << shown.join(u' ').toStdString();
  ASSERT_TRUE(LawFileExists(byWindow.t.env, u"粘连法"_qs));

  const cli::CliResult r = byCommand.cli({u"add-law"_qs, source, u"--title"_qs, u"《粘连法》"_qs, u"--class"_qs,
                                          w->Combo3->currentText(), u"--paper"_qs, w->Combo1->currentText(),
                                          u"--letter"_qs, u"Z"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_TRUE(r.out.contains(u"《粘连法》：属试卷二相关法律、法规，属以字母Z开头的法律、法规，属刑法类法律、法规。"_qs))
      << r.out.toStdString();
  EXPECT_EQ(Differences(Contents(byWindow.t.root()), Contents(byCommand.t.root())), QStringList());
  // The same title a second time: refused by both, nothing changes.
  const QMap<QString, QByteArray> before = Contents(byCommand.t.root());
  const cli::CliResult again =
      byCommand.cli({u"add-law"_qs, source, u"--title"_qs, u"粘连法"_qs, u"--class"_qs, u"刑法"_qs});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, u"文件"_qs + byCommand.t.path(u"\\lawtxt\\粘连法.mmd"_qs) + u"已经存在，请重新命名该法律/法规的标题。"_qs);
  EXPECT_EQ(Contents(byCommand.t.root()), before);
}

// The hits of the window as the command prints them.
QString HitsAsText(const QList<SearchHit>& hits) {
  QString out = u"题库\t题号\t找到的文字\n"_qs;
  for (const SearchHit& h : hits) out += h.bank + u'\t' + h.id + u'\t' + MarkedLine(h, u"【"_qs, u"】"_qs) + u'\n';
  return out;
}

TEST(CliSideBySideVerbs, TheQuestionSearchInTheWindowAndByTheCommand) {
  if (Skip()) GTEST_SKIP() << "demonstration data not built";
  Program p;
  Form19* search = p.form->searchEntries()->searchWindow();
  search->openWindow();
  for (const QString& query : {u"正当防卫"_qs, u"第１４条"_qs, u"示例刑法 罚金"_qs, u"\"示例刑法》第3条\""_qs, u"abc"_qs,
                               u"合同 违约金"_qs}) {
    search->Text1->setText(query);
    search->Command1->click();
    const cli::CliResult r = p.cli({u"search"_qs, u"--questions"_qs, query});
    if (search->results().isEmpty()) {
      EXPECT_EQ(r.status, 1) << query.toStdString();
      EXPECT_EQ(r.err, u"没有含“"_qs + query + u"”的试题。"_qs);
    } else {
      EXPECT_EQ(r.status, 0) << query.toStdString();
      EXPECT_EQ(r.out, HitsAsText(search->results().hits())) << query.toStdString();
    }
  }
  // At least some of them found something.
  search->Text1->setText(u"正当防卫"_qs);
  search->Command1->click();
  EXPECT_FALSE(search->results().isEmpty());
}

// A bank of the directory practised and its first question answered with a
// wrong letter; the answer window closed again.
void AnswerFirstWrongly(Program& p, const QString& bankFile) {
  p.form->ShiTi->trigger();
  DirectoryGrid* grid = p.form->MSFlexGrid1;
  for (int r = 1; r <= grid->directory().rowCount(); ++r) {
    const Directory& d = grid->directory();
    if (d.isHeading(r) && d.text(r, kColLabel).trimmed().startsWith(u'+')) grid->clickRow(r);
  }
  const Directory& d = grid->directory();
  int row = 0;
  for (int r = 1; r <= d.rowCount() && !row; ++r)
    if (d.text(r, kColFile).endsWith(bankFile)) row = r;
  ASSERT_GT(row, 0) << bankFile.toStdString();
  ASSERT_EQ(grid->clickRow(row), DirectoryClick::Leaf);
  const QString id = p.form->state().Run.CurItemId;
  const ItemRow* item = FindItem(p.form->state().AllItemData, id);
  ASSERT_NE(item, nullptr) << id.toStdString();
  const QString key = item->answer.trimmed();
  const QString wrong = key.startsWith(u'A') ? u"B"_qs : u"A"_qs;
  p.form->practice->Command2[AnswerCaptions().indexOf(wrong)]->click();
  Form3* answer = p.form->practice->answerWindow();
  ASSERT_TRUE(answer->isVisible());
  answer->Command1[3]->click();
}

QString GridAsText(const LogGrid& grid) {
  QString out = u"题库\t题数\t最近做错的日期\n"_qs;
  for (const QStringList& row : grid.rows) out += row.join(u'\t') + u'\n';
  return out;
}

TEST(CliSideBySideVerbs, TheWrongBookInTheWindowAndByTheCommand) {
  if (Skip()) GTEST_SKIP() << "demonstration data not built";
  Program p;
  Form20* book = p.form->searchEntries()->wrongBookWindow();
  book->openWindow();
  EXPECT_EQ(book->Label1->text(), kWrongBookEmpty);
  EXPECT_EQ(p.cli({u"wrong"_qs}).out, kWrongBookEmpty + u"\n"_qs);
  book->hide();

  // Answers given in the program, the book read by both.
  AnswerFirstWrongly(p, u"100011.mmd"_qs);
  AnswerFirstWrongly(p, u"100031.mmd"_qs);
  p.form->CuoTiBen->trigger();
  ASSERT_TRUE(book->isVisible());
  ASSERT_EQ(book->Grid1->grid().rows.size(), 2);
  const cli::CliResult r = p.cli({u"wrong"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, GridAsText(book->Grid1->grid()));
  EXPECT_EQ(r.out.count(u"\t1\t2026年11月21日\n"_qs), 2) << r.out.toStdString();
}

}  // namespace
}  // namespace mj
