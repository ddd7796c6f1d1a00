// The menu entry 外部题库: the folder of papers made with its subfolders and
// the two samples on first use, the file dialog over it, the paper loaded
// into the paper window; and F1 over the practice window.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>

#include "app/main_window.h"
#include "papers/paper_folder.h"
#include "papers/paper_practice_window.h"
#include "papers/paper_window.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/program_folder.h"
#include "support/test_env.h"

namespace mj {
namespace {

struct Started {
  test::TestEnv t;
  std::unique_ptr<Form1> form;
  Started() {
    test::MakeProgramFolder(t);
    t.writeGbk(u"\\ini\\sample1.ini"_qs, u"试样一（示例数据）\r\n一、单项选择题\r\n"_qs);
    t.writeGbk(u"\\ini\\sample2.ini"_qs, u"试样二（示例数据）\r\n"_qs);
    form = std::make_unique<Form1>(t.env);
    form->load();
    form->show();
  }
};

TEST(PaperOpen, TheFirstUseMakesTheFolderOfPapersAndCancellingLeavesAllAsItWas) {
  Started s;
  ASSERT_FALSE(QDir(s.t.path(u"\\外部题库"_qs)).exists());
  QWidget* face = s.form->currentFace();
  s.form->OutShiTi->trigger();
  ASSERT_EQ(s.t.dialogs.fileRequests.size(), 1);
  const FileDialogRequest& r = s.t.dialogs.fileRequests[0];
  EXPECT_EQ(r.title, u"打开外部题库文件"_qs);
  EXPECT_EQ(r.initialDir, s.t.path(u"\\外部题库"_qs));
  EXPECT_EQ(r.filter, u"文本文件(*.txt)|*.txt|网页文件1 (*.htm)|*.htm|网页文件2 (*.html)|*.html|所有文件(*.*)|*.*"_qs);
  EXPECT_EQ(r.fileName, u""_qs);
  QStringList folders = QDir(s.t.path(u"\\外部题库"_qs)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  QStringList expected = kPaperClassFolders + kPaperSheetFolders;
  folders.sort();
  expected.sort();
  EXPECT_EQ(folders, expected);
  EXPECT_EQ(s.t.readGbk(u"\\外部题库\\外部题库试样1.txt"_qs), u"试样一（示例数据）\r\n一、单项选择题\r\n"_qs);
  EXPECT_EQ(s.t.readGbk(u"\\外部题库\\外部题库试样2.txt"_qs), u"试样二（示例数据）\r\n"_qs);
  // Cancelled: the main window as it was.
  EXPECT_TRUE(s.form->isVisible());
  EXPECT_EQ(s.form->currentFace(), face);
  EXPECT_FALSE(s.form->paperWindow()->isVisible());
  EXPECT_TRUE(s.t.boxes.shown().isEmpty());
}

TEST(PaperOpen, SamplesAreCopiedOnlyWhenTheFolderIsMade) {
  Started s;
  s.t.mkdir(u"\\外部题库"_qs);
  s.form->OutShiTi->trigger();
  EXPECT_FALSE(QFileInfo::exists(s.t.path(u"\\外部题库\\外部题库试样1.txt"_qs)));
  // The subfolders that are missing are made all the same.
  EXPECT_TRUE(QDir(s.t.path(u"\\外部题库\\试卷三"_qs)).exists());
}

TEST(PaperOpen, TheChosenPaperComesIntoThePaperWindow) {
  Started s;
  s.t.mkdir(u"\\外部题库\\刑法类"_qs);
  const QString path = s.t.path(u"\\外部题库\\刑法类\\卷.txt"_qs);
  ASSERT_TRUE(WriteBytesAtomic(path, u"一、单项选择题\r\n1．题\r\n"_qs.toUtf8()));
  s.t.dialogs.answer(path);
  s.form->OutShiTi->trigger();
  Form10* paper = s.form->paperWindow();
  EXPECT_TRUE(paper->isVisible());
  EXPECT_FALSE(s.form->isVisible());
  EXPECT_EQ(paper->fileName(), path);
  EXPECT_EQ(paper->encoding(), PaperEncoding::Utf8);
  EXPECT_EQ(paper->paperText(), u"一、单项选择题\r\n1．题\r\n"_qs);
  EXPECT_FALSE(paper->Command1[4]->isEnabled());
}

TEST(PaperOpen, APaperThatCannotBeReadIsNamedAndTheMainWindowStays) {
  Started s;
  const QString path = s.t.path(u"\\外部题库\\没有.txt"_qs);
  s.t.dialogs.answer(path);
  s.form->OutShiTi->trigger();
  ASSERT_EQ(s.t.boxes.shown().size(), 1);
  EXPECT_EQ(s.t.boxes.shown()[0].text, u"无法打开文件"_qs + path + u"。"_qs);
  EXPECT_TRUE(s.form->isVisible());
  EXPECT_FALSE(s.form->paperWindow()->isVisible());
}

TEST(PaperOpen, F1OverThePracticeWindowShowsItsHelp) {
  Started s;
  int shown = -1;
  s.form->helpHandler = [&](int n) { shown = n; };
  Form14* practice = s.form->paperWindow()->practiceWindow();
  practice->show();
  QKeyEvent f1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
  QApplication::sendEvent(practice->RichTextBox2, &f1);
  EXPECT_EQ(shown, 14);
  practice->hide();
}

}  // namespace
}  // namespace mj
