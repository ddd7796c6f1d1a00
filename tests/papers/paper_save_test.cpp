// 保存一下 of the paper window: overwriting a paper of the folder of papers
// only after the question (asked once), the save dialog asking again for
// every existing choice, a paper from outside that may move into the folder,
// and the encoding kept.

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QPushButton>

#include "papers/paper_file.h"
#include "papers/paper_folder.h"
#include "papers/paper_window.h"
#include "papers_fixture.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

class PaperSave : public ::testing::Test {
 protected:
  PaperSave() {
    test::WriteStandardLawList(te);
    te.mkdir(u"\\外部题库"_qs);
    form = std::make_unique<Form10>(te.env, state);
  }
  QString inFolder(const QString& name) const { return te.path(u"\\外部题库\\"_qs + name); }
  QString open(const QString& path, const QString& text = u"原文"_qs, PaperEncoding e = PaperEncoding::Gbk) {
    EXPECT_TRUE(WritePaper(path, text, e));
    EXPECT_TRUE(form->loadPaper(path));
    return path;
  }
  QString overwriteQuestion(const QString& path) const { return u"文件"_qs + path + u"已经存在，要覆盖吗？"_qs; }

  test::TestEnv te;
  PaperState state;
  std::unique_ptr<Form10> form;
};

TEST_F(PaperSave, InTheFolderOfPapersTheFirstSaveAsksAndLaterOnesDoNot) {
  const QString path = open(inFolder(u"卷.txt"_qs));
  form->setPaperText(u"改过一次"_qs);
  te.boxes.answer(box::Yes);
  form->Command1[3]->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, overwriteQuestion(path));
  EXPECT_EQ(te.boxes.shown()[0].title, u"请确认"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, box::YesNo | box::Question);
  EXPECT_EQ(ReadPaper(path).text, u"改过一次"_qs);
  // The class folders are made as well.
  for (const QString& f : kPaperClassFolders) EXPECT_TRUE(QDir(te.path(u"\\外部题库\\"_qs + f)).exists());
  EXPECT_FALSE(QDir(te.path(u"\\外部题库\\试卷一"_qs)).exists());
  // The second save does not ask.
  te.boxes.clear();
  form->setPaperText(u"改过两次"_qs);
  form->Command1[3]->click();
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  EXPECT_EQ(ReadPaper(path).text, u"改过两次"_qs);
  // Opening a paper asks again.
  open(path, u"改过两次"_qs);
  te.boxes.answer(box::No);
  form->Command1[3]->click();
  EXPECT_EQ(te.boxes.shown().size(), 1);
}

TEST_F(PaperSave, NoLeadsToTheDialogWhichAsksForEveryExistingChoice) {
  const QString path = open(inFolder(u"卷.txt"_qs), u"原文"_qs, PaperEncoding::Utf8);
  const QString other = inFolder(u"另一份.txt"_qs);
  ASSERT_TRUE(WritePaper(other, u"另一份的原文"_qs, PaperEncoding::Gbk));
  const QString fresh = inFolder(u"新名字.txt"_qs);
  form->setPaperText(u"新的文字"_qs);
  te.boxes.answer(box::No);  // not over 卷.txt
  te.dialogs.answer(other);
  te.boxes.answer(box::No);  // not over 另一份.txt either
  te.dialogs.answer(fresh);
  form->Command1[3]->click();
  ASSERT_EQ(te.boxes.shown().size(), 2);
  EXPECT_EQ(te.boxes.shown()[0].text, overwriteQuestion(path));
  EXPECT_EQ(te.boxes.shown()[1].text, overwriteQuestion(other));
  ASSERT_EQ(te.dialogs.fileRequests.size(), 2);
  EXPECT_EQ(te.dialogs.fileRequests[0].initialDir, te.path(u"\\外部题库"_qs));
  EXPECT_EQ(te.dialogs.fileRequests[0].fileName, u"卷.txt"_qs);
  EXPECT_EQ(te.dialogs.fileRequests[0].filter, kPaperFilter);
  EXPECT_EQ(te.dialogs.fileRequests[1].fileName, u"另一份.txt"_qs);
  // Saved under the free name, in the paper's own encoding; the others as
  // they were; the window follows the new name.
  EXPECT_EQ(ReadBytes(fresh), EncodePaper(u"新的文字"_qs, PaperEncoding::Utf8));
  EXPECT_EQ(ReadPaper(path).text, u"原文"_qs);
  EXPECT_EQ(ReadPaper(other).text, u"另一份的原文"_qs);
  EXPECT_EQ(form->fileName(), fresh);
  // Saved once in the folder: the next save goes there without asking.
  te.boxes.clear();
  form->setPaperText(u"再改"_qs);
  EXPECT_TRUE(form->savePaper());
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  EXPECT_EQ(ReadPaper(fresh).text, u"再改"_qs);
}

TEST_F(PaperSave, YesInTheDialogOverwritesAndCancelEndsTheWholeSave) {
  const QString path = open(inFolder(u"卷.txt"_qs));
  const QString other = inFolder(u"另一份.txt"_qs);
  ASSERT_TRUE(WritePaper(other, u"另一份的原文"_qs, PaperEncoding::Gbk));
  form->setPaperText(u"新的文字"_qs);
  // Cancel: nothing written, the name unchanged.
  te.boxes.answer(box::No);
  EXPECT_FALSE(form->savePaper());
  EXPECT_EQ(ReadPaper(path).text, u"原文"_qs);
  EXPECT_EQ(form->fileName(), path);
  // Another choice that exists, overwritten after Yes.
  te.boxes.clear();
  te.boxes.answer(box::No);
  te.dialogs.answer(other);
  te.boxes.answer(box::Yes);
  EXPECT_TRUE(form->savePaper());
  EXPECT_EQ(ReadPaper(other).text, u"新的文字"_qs);
  EXPECT_EQ(form->fileName(), other);
}

TEST_F(PaperSave, APaperFromOutsideMayMoveIntoTheFolderOfPapers) {
  te.mkdir(u"\\别处"_qs);
  const QString outside = open(te.path(u"\\别处\\卷.txt"_qs));
  const QString question = outside + u"为外部文件，它现在不在“外部题库”目录下，要不要把它存入“外部题库”目录下？(注：选“否”则直接保存为"_qs +
                           outside + u")"_qs;
  // No: saved where it is.
  form->setPaperText(u"改过"_qs);
  te.boxes.answer(box::No);
  EXPECT_TRUE(form->savePaper());
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, question);
  EXPECT_EQ(te.boxes.shown()[0].title, DefaultBoxTitle());
  EXPECT_EQ(ReadPaper(outside).text, u"改过"_qs);
  EXPECT_TRUE(te.dialogs.fileRequests.isEmpty());
  // Yes: the dialog over the folder of papers.
  te.boxes.clear();
  te.boxes.answer(box::Yes);
  te.dialogs.answer(inFolder(u"卷.txt"_qs));
  EXPECT_TRUE(form->savePaper());
  ASSERT_EQ(te.dialogs.fileRequests.size(), 1);
  EXPECT_EQ(te.dialogs.fileRequests[0].initialDir, te.path(u"\\外部题库"_qs));
  EXPECT_EQ(te.dialogs.fileRequests[0].fileName, u"卷.txt"_qs);
  EXPECT_EQ(ReadPaper(inFolder(u"卷.txt"_qs)).text, u"改过"_qs);
  EXPECT_EQ(form->fileName(), inFolder(u"卷.txt"_qs));
  // Moved into the folder, the next save asks once whether to overwrite it
  // (the flag is set only by a save that stayed in the folder).
  te.boxes.clear();
  te.boxes.answer(box::Yes);
  EXPECT_TRUE(form->savePaper());
  EXPECT_EQ(te.boxes.shown().size(), 1);
}

}  // namespace
}  // namespace mj
