// The point records of the knowledge-point window: showing a point, typing,
// the check, saving, and the knowledge files taken in from 新知识点.
#include "knowledge/knowledge_points.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "knowledge_fixture.h"
#include "law/law_files.h"
#include "log/news.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "support/printers.h"

namespace mj {
namespace {

using test::DagangRow;
using test::WriteDagang;

const QString kPointsDir = u"\\知识点"_qs;

// A small program folder: an outline of one chapter with three points over
// a law of five articles, no questions.
class Points : public ::testing::Test {
 protected:
  void SetUp() override {
    WriteDagang(t, {{u"大纲"_qs, {}, {}, 1, {}},
                    {u"  刑法"_qs, {}, {}, 2, {}},
                    {u"    故意"_qs, u"《示例法》1."_qs, u"教材"_qs, 3, {}},
                    {u"    过失"_qs, {}, {}, 4, u"1"_qs},
                    {u"    自首"_qs, u"《示例法》5."_qs, u"自己添加。"_qs, 5, {}}});
    t.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, u"示例法\r\n"_qs + LawBody());
    t.writeGbk(kNewsFile, u"[信息]\r\n信息号=1\r\n知识点文件个数=0\r\n"_qs);
    ClearLawCache();
  }
  static QString LawBody() {
    QString s;
    for (const char16_t* n : {u"一", u"二", u"三", u"四", u"五"})
      s += u"　　第"_qs + QString::fromUtf16(n) + u"条　条文"_qs + QString::fromUtf16(n) + u"。\r\n"_qs;
    return s;
  }
  void load() {
    points = std::make_unique<KnowledgePoints>(t.env, outline);
    EXPECT_EQ(points->load(), u""_qs);
  }
  int nodeOf(int therecn) const { return points->nodeOfKey(NodeKeyOf(QString::number(therecn))); }
  QString pointFile(int therecn) const { return t.path(kPointsDir + u"\\"_qs + QString::number(therecn) + u".txt"_qs); }
  // The one box shown since the last look: its title and its text.
  void expectOneBox(const QString& title, const QString& text) {
    const QList<BoxRecord> boxes = t.boxes.take();
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].title, title);
    EXPECT_EQ(boxes[0].text, text);
  }

  test::TestEnv t;
  Outline outline;
  std::unique_ptr<KnowledgePoints> points;
};

TEST_F(Points, LoadMakesTheFolderAndTheTree) {
  EXPECT_FALSE(DirExists(t.path(kPointsDir)));
  load();
  EXPECT_TRUE(DirExists(t.path(kPointsDir)));
  ASSERT_EQ(points->nodes().size(), 6);
  EXPECT_EQ(points->nodes()[4].text, u"Old-过失"_qs);
  // Loaded once: a second load keeps the array as it is.
  outline.rows[0].a = u"改过"_qs;
  points->load();
  EXPECT_EQ(points->nodes()[1].text, u"改过"_qs);
}

TEST_F(Points, AClickOnAGroupSelectsNoPoint) {
  load();
  points->clickNode(nodeOf(2));
  EXPECT_FALSE(points->pointSelected);
  EXPECT_EQ(points->currentRow, 2);
  EXPECT_EQ(points->Text1, u""_qs);
  points->clickNode(0);
  EXPECT_FALSE(points->pointSelected);
  EXPECT_EQ(points->currentRow, 6);  // the root's key is in no row
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST_F(Points, APointWithoutFileGetsItsDefaultFileWithTheStartText) {
  load();
  t.clock.setDate(QDate(2026, 11, 24));
  points->clickNode(nodeOf(3));
  EXPECT_TRUE(points->pointSelected);
  EXPECT_EQ(points->caption, u"知识点：故意..."_qs);
  EXPECT_EQ(points->Text1, u"《示例法》1."_qs);
  EXPECT_EQ(points->Text4, u"教材"_qs);
  EXPECT_EQ(points->Text2, pointFile(3));
  const QString start = u"\r\n此知识点还没有相关解释文件，你可以\r\n"
                        u"1、直接把知识点相关解释粘贴到这里，然后点下面的“保存”按钮。\r\n"
                        u"2、双击这个文本框或者下面的“文件路径”框以直接引入文件。"_qs;
  EXPECT_EQ(t.readGbk(u"\\知识点\\3.txt"_qs), start);
  EXPECT_EQ(points->pane, start);
  EXPECT_EQ(points->Text3, QFileInfo(pointFile(3)).lastModified().date().toString(u"yyyy-MM-dd"_qs));
  // The row now names its file, without the program folder.
  EXPECT_EQ(test::TableRow(t, 3).b, u"\\知识点\\3.txt"_qs);
  EXPECT_EQ(outline.rows[2].b, u"\\知识点\\3.txt"_qs);
  EXPECT_EQ(test::TableRow(t, 3).d, u"《示例法》1."_qs);
  EXPECT_EQ(test::TableRow(t, 3).r, u"教材"_qs);
}

TEST_F(Points, AnExistingTextFileIsShown) {
  t.writeGbk(u"\\知识点\\3.txt"_qs, u"故意的解释\r\n第二行"_qs);
  load();
  points->clickNode(nodeOf(3));
  EXPECT_EQ(points->pane, u"故意的解释\r\n第二行"_qs);
  EXPECT_EQ(t.readGbk(u"\\知识点\\3.txt"_qs), u"故意的解释\r\n第二行"_qs);
  EXPECT_EQ(points->Command4Visible, false);
}

TEST_F(Points, AnHtmFileOpensThroughTheDesktop) {
  t.writeGbk(u"\\知识点\\页.htm"_qs, u"<html>页</html>"_qs);
  outline.rows.clear();
  WriteDagang(t, {{u"大纲"_qs, {}, {}, 1, {}}, {u"  页"_qs, {}, {}, 2, {}, u"\\知识点\\页.htm"_qs}});
  load();
  points->clickNode(nodeOf(2));
  ASSERT_EQ(t.shell.calls.size(), 1);
  EXPECT_EQ(t.shell.calls[0].kind, ShellCall::Open);
  EXPECT_EQ(QDir::cleanPath(t.shell.calls[0].target), QDir::cleanPath(t.path(u"\\知识点\\页.htm"_qs)));
  EXPECT_EQ(points->pane, u"本条知识点解释见新弹出的窗口。\r\n或双击本框弹出知识点解释窗口。"_qs);
}

TEST_F(Points, AnExplanationPathOutsideTheProgramFolderIsRefused) {
  WriteDagang(t, {{u"大纲"_qs, {}, {}, 1, {}}, {u"  外"_qs, u"《示例法》2."_qs, {}, 2, {}, u"\\..\\..\\etc\\passwd"_qs}});
  load();
  points->clickNode(nodeOf(2));
  const QList<BoxRecord> boxes = t.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"知识点解释文件的路径\\..\\..\\etc\\passwd指向程序文件夹以外，不能打开，也不能在那里建立文件。"_qs);
  EXPECT_EQ(points->pane, u""_qs);
  EXPECT_TRUE(t.shell.calls.isEmpty());
  // Nothing of the row is lost.
  EXPECT_EQ(test::TableRow(t, 2).b, u"\\..\\..\\etc\\passwd"_qs);
  EXPECT_EQ(test::TableRow(t, 2).d, u"《示例法》2."_qs);
  // A double click on the path does not make the file out there either.
  points->doubleClickFile();
  EXPECT_EQ(t.boxes.take().size(), 0);
  points->Text2 = u"\\..\\x.txt"_qs;
  points->doubleClickFile();
  EXPECT_EQ(t.boxes.take().size(), 1);
  EXPECT_FALSE(FileExists(t.path(u"\\..\\x.txt"_qs)));
}

TEST_F(Points, Text1IsCutAt120WithABox) {
  load();
  points->clickNode(nodeOf(3));
  points->typeText1(QString(121, u'甲'));
  EXPECT_EQ(points->Text1, QString(120, u'甲'));
  expectOneBox(u"内容过长"_qs, u"本框内容过长,不能超过120个汉字。"_qs);
  points->typeText1(QString(120, u'乙'));
  EXPECT_TRUE(t.boxes.take().isEmpty());
}

TEST_F(Points, Text4IsCutAt100WithABox) {
  load();
  points->clickNode(nodeOf(3));
  points->typeText4(QString(101, u'丙'));
  EXPECT_EQ(points->Text4, QString(100, u'丙'));
  expectOneBox(u"内容过长"_qs, u"本框内容过长,不能超过100个汉字。"_qs);
}

TEST_F(Points, APointAfterATitleStartsTheNextCitationButStaysShort) {
  load();
  points->clickNode(nodeOf(3));
  points->typeText1(u"《示例法》."_qs);
  EXPECT_EQ(points->Text1, u"《示例法》.《"_qs);
  points->typeText1(u"《示例法》．"_qs);
  EXPECT_EQ(points->Text1, u"《示例法》．《"_qs);
  // The short form of an article is not made full while typing.
  points->typeText1(u"《示例法》2."_qs);
  EXPECT_EQ(points->Text1, u"《示例法》2."_qs);
}

TEST_F(Points, DoubleClickOnText1TakesTodayAndOwnEntry) {
  load();
  points->clickNode(nodeOf(3));
  t.clock.setDate(QDate(2026, 3, 7));
  points->doubleClickText1();
  EXPECT_EQ(points->Text3, u"2026-03-07"_qs);
  EXPECT_EQ(points->Text4, u"自己添加。"_qs);
}

TEST_F(Points, TheCheckWithoutAPoint) {
  load();
  EXPECT_FALSE(points->Command2_Click());
  expectOneBox(u"检验未通过"_qs, u"你还没选知识点，检验未通过。"_qs);
}

TEST_F(Points, TheCheckExpandsShortFormsAndSaves) {
  load();
  t.clock.setDate(QDate(2026, 3, 7));
  points->clickNode(nodeOf(3));
  points->typeText1(u"《示例法》2.《示例法》3．"_qs);
  points->editPane(u"自己的解释"_qs);
  EXPECT_TRUE(points->Command2_Click());
  EXPECT_EQ(points->Text1, u"《示例法》第2条《示例法》第3条"_qs);
  EXPECT_EQ(points->verdict, u"知识点“"_qs + pointFile(3) + u"”检验通过。"_qs);
  EXPECT_EQ(points->Text3, u"26-03-07"_qs);
  // The save ran: the table and the file hold the point.
  EXPECT_EQ(test::TableRow(t, 3).d, u"《示例法》第2条《示例法》第3条"_qs);
  EXPECT_EQ(t.readGbk(u"\\知识点\\3.txt"_qs), u"自己的解释"_qs);
  expectOneBox(u"保存完毕"_qs, u"保存完毕，存为\r\n"_qs + MapSeparators(pointFile(3)));
}

TEST_F(Points, TheCheckFailsOnAMissingFile) {
  load();
  points->clickNode(nodeOf(3));
  points->Text2 = t.path(u"\\知识点\\没有.txt"_qs);
  EXPECT_FALSE(points->Command2_Click());
  EXPECT_EQ(points->verdict, u"知识点“"_qs + t.path(u"\\知识点\\没有.txt"_qs) +
                                 u"”检验未通过。\r\n原因：文件名不合法或者该文件不存在。"_qs);
  // An empty name counts as an invalid file.
  points->Text2.clear();
  EXPECT_FALSE(points->Command2_Click());
  EXPECT_EQ(points->verdict, u"知识点“”检验未通过。\r\n原因：文件名不合法或者该文件不存在。"_qs);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST_F(Points, TheCheckFailsOnWrongCitations) {
  load();
  points->clickNode(nodeOf(3));
  const QString reason = u"”检验未通过。\r\n原因:无参见法条或参见法条引用错误。"_qs;
  for (const QString& cite : {u""_qs, u"示例法第2条"_qs, u"《没有的法》2."_qs, u"《示例法》9."_qs}) {
    points->typeText1(cite);
    EXPECT_FALSE(points->Command2_Click()) << (cite).toStdString();
    EXPECT_EQ(points->verdict, u"知识点“"_qs + pointFile(3) + reason) << (cite).toStdString();
  }
  // A failed check saves nothing.
  EXPECT_EQ(test::TableRow(t, 3).d, u"《示例法》1."_qs);
}

TEST_F(Points, SavingCopiesAFileFromElsewhereAsksBeforeOverwriting) {
  load();
  points->clickNode(nodeOf(3));
  QTemporaryDir outside;
  const QString source = outside.path() + u"/Note.TXT"_qs;
  WriteTextAtomic(source, u"外来的解释"_qs);
  points->Text2 = source;
  points->editPane(u"外来的解释"_qs);
  EXPECT_TRUE(points->Command3_Click());
  EXPECT_EQ(t.readGbk(u"\\知识点\\note.txt"_qs), u"外来的解释"_qs);
  EXPECT_EQ(test::TableRow(t, 3).b, u"\\知识点\\note.txt"_qs);
  EXPECT_EQ(t.boxes.take().size(), 1);
  // Again, with the target there: No keeps the file there.
  WriteTextAtomic(source, u"改过的解释"_qs);
  points->Text2 = source;
  t.boxes.answer(box::No);
  EXPECT_TRUE(points->Command3_Click());
  QList<BoxRecord> boxes = t.boxes.take();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].title, u"注意，已有该文件存在"_qs);
  EXPECT_EQ(boxes[0].text, u"文件"_qs + MapSeparators(t.path(u"\\知识点\\note.txt"_qs)) + u"已经存在，要覆盖掉吗？"_qs);
  EXPECT_EQ(boxes[0].style & 0x0F, box::YesNo);
  EXPECT_EQ(t.readGbk(u"\\知识点\\note.txt"_qs), u"外来的解释"_qs);
  // Yes copies it.
  points->Text2 = source;
  points->editPane(u"改过的解释"_qs);
  t.boxes.answer(box::Yes);
  EXPECT_TRUE(points->Command3_Click());
  EXPECT_EQ(t.readGbk(u"\\知识点\\note.txt"_qs), u"改过的解释"_qs);
}

TEST_F(Points, SavingAWebPageCopiesItsCompanionFolder) {
  load();
  points->clickNode(nodeOf(3));
  QTemporaryDir outside;
  QDir(outside.path()).mkpath(u"page.files/img"_qs);
  WriteBytesAtomic(outside.path() + u"/page.htm"_qs, "<html>p</html>");
  WriteBytesAtomic(outside.path() + u"/page.files/a.css"_qs, "css");
  WriteBytesAtomic(outside.path() + u"/page.files/img/b.png"_qs, "png");
  points->Text2 = outside.path() + u"/page.htm"_qs;
  EXPECT_TRUE(points->Command3_Click());
  EXPECT_EQ(ReadBytes(t.path(u"\\知识点\\page.htm"_qs)), QByteArray("<html>p</html>"));
  EXPECT_EQ(ReadBytes(t.path(u"\\知识点\\page.files\\a.css"_qs)), QByteArray("css"));
  EXPECT_EQ(ReadBytes(t.path(u"\\知识点\\page.files\\img\\b.png"_qs)), QByteArray("png"));
  EXPECT_EQ(test::TableRow(t, 3).b, u"\\知识点\\page.htm"_qs);
  // The page is opened, not written over with the pane's text.
  ASSERT_FALSE(t.shell.calls.isEmpty());
  EXPECT_EQ(QDir::cleanPath(t.shell.calls.last().target), QDir::cleanPath(t.path(u"\\知识点\\page.htm"_qs)));
}

TEST_F(Points, DoubleClickOnAnEmptyPathChoosesAFile) {
  load();
  points->clickNode(nodeOf(3));
  QTemporaryDir outside;
  WriteTextAtomic(outside.path() + u"/x.txt"_qs, u"选来的"_qs);
  points->Text2.clear();
  t.dialogs.answer(outside.path() + u"/x.txt"_qs);
  points->doubleClickFile();
  ASSERT_EQ(t.dialogs.fileRequests.size(), 1);
  EXPECT_EQ(t.dialogs.fileRequests[0].title, u"引入知识点文件，类型可为*.txt,*.doc,*.htm,*.html,*.wps"_qs);
  EXPECT_EQ(points->Text2, outside.path() + u"/x.txt"_qs);
  EXPECT_EQ(points->Text4, u"从文件引入。"_qs);
  EXPECT_EQ(points->pane, u"选来的"_qs);
  EXPECT_EQ(points->Text3, QFileInfo(outside.path() + u"/x.txt"_qs).lastModified().date().toString(u"yyyy-MM-dd"_qs));
}

TEST_F(Points, DoubleClickOnAMissingFileMakesIt) {
  load();
  points->clickNode(nodeOf(3));
  points->Text2 = t.path(u"\\知识点\\新.txt"_qs);
  points->doubleClickFile();
  EXPECT_EQ(t.readGbk(u"\\知识点\\新.txt"_qs), u"请在这里写入知识点解释，保存后点“记录知识点”按钮。\r\n"_qs);
  EXPECT_EQ(points->pane, u"请在这里写入知识点解释，保存后点“记录知识点”按钮。\r\n"_qs);
}

TEST_F(Points, GenerateMakesTheDefaultFileOfEveryLeaf) {
  load();
  points->Command6_Click();
  for (const int n : {3, 4, 5}) EXPECT_TRUE(FileExists(pointFile(n))) << n;
  for (const int n : {1, 2}) EXPECT_FALSE(FileExists(pointFile(n))) << n;
  EXPECT_EQ(test::TableRow(t, 4).b, u"\\知识点\\4.txt"_qs);
  const QList<BoxRecord> boxes = t.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"ok"_qs);
}

// ---- MyReadFromIni ---------------------------------------------------------------

TEST(MyReadFromIni, FindsTheKeyOfItsSectionOnly) {
  const QString text = u"[知识点]\r\n初始信息=3|4\r\n[3]\r\n参见法条=《刑法》1.\r\n[4]\r\n解析内容=四\r\n参见法条=《刑法》4."_qs;
  EXPECT_EQ(MyReadFromIni(text, u"知识点"_qs, u"初始信息"_qs), u"3|4"_qs);
  EXPECT_EQ(MyReadFromIni(text, u"3"_qs, u"参见法条"_qs), u"《刑法》1."_qs);
  EXPECT_EQ(MyReadFromIni(text, u"4"_qs, u"参见法条"_qs), u"《刑法》4."_qs);
  EXPECT_EQ(MyReadFromIni(text, u"3"_qs, u"解析内容"_qs), u""_qs);
  EXPECT_EQ(MyReadFromIni(text, u"5"_qs, u"参见法条"_qs), u""_qs);
  // A section written without its closing bracket is no section.
  EXPECT_EQ(MyReadFromIni(u"[3\r\n参见法条=x\r\n"_qs, u"3"_qs, u"参见法条"_qs), u""_qs);
}

// ---- Knowledge files ---------------------------------------------------------------

class KnowledgeFiles : public Points {
 protected:
  void offer(int n) { t.writeGbk(kNewsFile, u"[信息]\r\n信息号=1\r\n知识点文件个数="_qs + QString::number(n) + u"\r\n"_qs); }
  void file(int i, const QString& text) { t.writeGbk(u"\\新知识点\\newzsd"_qs + QString::number(i) + u".txt"_qs, text); }
  QString path(int i, const char* ext) const {
    return t.path(u"\\新知识点\\newzsd"_qs + QString::number(i) + u"."_qs + QString::fromLatin1(ext));
  }
};

TEST_F(KnowledgeFiles, AFileFillsOnlyPointsWithoutCitation) {
  offer(1);
  file(1, u"[知识点]\r\n初始信息=4|3\r\n[4]\r\n参见法条=《示例法》4.\r\n解析内容=过失@@@的^^^^解释\r\n"
          u"[3]\r\n参见法条=《示例法》9.\r\n解析内容=不该写入\r\n"_qs);
  load();
  points->activate();
  EXPECT_TRUE(t.boxes.shown().isEmpty()) << (t.boxes.shown().value(0).text).toStdString();
  EXPECT_EQ(test::TableRow(t, 4).d, u"《示例法》4."_qs);
  EXPECT_EQ(test::TableRow(t, 4).b, u"\\知识点\\4.txt"_qs);
  EXPECT_EQ(t.readGbk(u"\\知识点\\4.txt"_qs), u"过失 的\r\n解释"_qs);
  EXPECT_EQ(outline.rows[3].d, u"《示例法》4."_qs);
  // A point with text in d does not change.
  EXPECT_EQ(test::TableRow(t, 3).d, u"《示例法》1."_qs);
  EXPECT_EQ(test::TableRow(t, 3).b, u""_qs);
  EXPECT_FALSE(FileExists(pointFile(3)));
  // The file is marked as taken in.
  EXPECT_FALSE(FileExists(path(1, "txt")));
  EXPECT_TRUE(FileExists(path(1, "tx_")));
  EXPECT_FALSE(points->Command1Enabled);
}

TEST_F(KnowledgeFiles, AnExplanationWithABackslashIsAPath) {
  offer(1);
  file(1, u"[知识点]\r\n初始信息=4\r\n[4]\r\n参见法条=《示例法》4.\r\n解析内容=\\知识点\\Gs.HTM\r\n"_qs);
  load();
  points->activate();
  EXPECT_EQ(test::TableRow(t, 4).b, u"\\知识点\\gs.htm"_qs);
  EXPECT_FALSE(FileExists(pointFile(4)));
}

TEST_F(KnowledgeFiles, APathOutsideTheProgramFolderIsNotTaken) {
  offer(1);
  file(1, u"[知识点]\r\n初始信息=4\r\n[4]\r\n参见法条=《示例法》4.\r\n解析内容=\\..\\..\\x.txt\r\n"_qs);
  load();
  points->activate();
  EXPECT_EQ(test::TableRow(t, 4).b, u""_qs);
  EXPECT_EQ(test::TableRow(t, 4).d, u"《示例法》4."_qs);
  expectOneBox(u"新知识点"_qs, u"引入知识点文件时有以下问题：\r\n"_qs + MapSeparators(path(1, "txt")) +
                                 u"中的知识点4：解释文件的路径\\..\\..\\x.txt不在程序文件夹内，没有采用。"_qs);
}

TEST_F(KnowledgeFiles, MalformedSectionsAndHugeValuesLoseNothing) {
  offer(2);
  // File 1: no [知识点] section at all; file 2: a number without section,
  // an unknown number, and a value of a million characters.
  file(1, u"[知识]\r\n初始信息=4\r\n"_qs);
  const QString huge(1000000, u'解');
  file(2, u"[知识点]\r\n初始信息=4|99|\r\n[99]\r\n参见法条=x\r\n"_qs);
  load();
  points->activate();
  QList<BoxRecord> boxes = t.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"引入知识点文件时有以下问题：\r\n"_qs + MapSeparators(path(1, "txt")) +
                               u"不是知识点文件（没有[知识点]一节），没有引入。\r\n"_qs + MapSeparators(path(2, "txt")) +
                               u"中的知识点4：文件中没有[4]一节。\r\n"_qs + MapSeparators(path(2, "txt")) +
                               u"中的知识点99：大纲中没有这个记录号。"_qs);
  EXPECT_EQ(test::TableRow(t, 4).d, u""_qs);
  EXPECT_TRUE(FileExists(path(1, "tx_")));
  // A million-character explanation: written whole to the file; the
  // citation is cut to the field's width.
  RemoveFile(path(2, "tx_"));
  file(2, u"[知识点]\r\n初始信息=4\r\n[4]\r\n参见法条="_qs + QString(300, u'条') + u"\r\n解析内容="_qs + huge + u"\r\n"_qs);
  points->activate();
  EXPECT_TRUE(t.boxes.take().isEmpty());
  EXPECT_EQ(t.readGbk(u"\\知识点\\4.txt"_qs), huge);
  EXPECT_EQ(test::TableRow(t, 4).d, QString(127, u'条'));
  EXPECT_EQ(outline.rows[3].d, QString(127, u'条'));
  // The user's other points are as they were.
  EXPECT_EQ(test::TableRow(t, 3).d, u"《示例法》1."_qs);
  EXPECT_EQ(test::TableRow(t, 5).r, u"自己添加。"_qs);
}

TEST_F(KnowledgeFiles, AnExplanationTheUserWroteIsKept) {
  offer(1);
  t.writeGbk(u"\\知识点\\4.txt"_qs, u"我自己的"_qs);
  file(1, u"[知识点]\r\n初始信息=4\r\n[4]\r\n参见法条=《示例法》4.\r\n解析内容=下载的\r\n"_qs);
  load();
  points->activate();
  EXPECT_EQ(t.readGbk(u"\\知识点\\4.txt"_qs), u"我自己的"_qs);
  EXPECT_EQ(test::TableRow(t, 4).d, u"《示例法》4."_qs);
  const QList<BoxRecord> boxes = t.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"引入知识点文件时有以下问题：\r\n"_qs + MapSeparators(path(1, "txt")) +
                               u"中的知识点4：已有你自己写的解释文件"_qs + MapSeparators(pointFile(4)) +
                               u"，保留原文件，没有替换。"_qs);
}

TEST_F(KnowledgeFiles, NoOfferOrNoNewsFileLeavesTheButtonDisabled) {
  offer(0);
  load();
  points->activate();
  EXPECT_FALSE(points->Command1Enabled);
  EXPECT_TRUE(DirExists(t.path(u"\\新知识点"_qs)));
  RemoveFile(t.path(kNewsFile));
  points->activate();
  EXPECT_FALSE(points->Command1Enabled);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  // Even a file lying there is not taken in without an offer.
  file(1, u"[知识点]\r\n初始信息=4\r\n[4]\r\n参见法条=《示例法》4.\r\n"_qs);
  points->activate();
  EXPECT_TRUE(FileExists(path(1, "txt")));
  EXPECT_EQ(test::TableRow(t, 4).d, u""_qs);
}

TEST_F(KnowledgeFiles, MissingFilesAreNoticedOncePerRun) {
  offer(2);
  file(1, u"[知识点]\r\n初始信息=4\r\n[4]\r\n参见法条=《示例法》4.\r\n"_qs);
  load();
  points->activate();
  EXPECT_TRUE(points->Command1Enabled);
  expectOneBox(DefaultBoxTitle(), u"有新的知识点文件，点击下面的按钮进行下载。"_qs);
  points->activate();
  EXPECT_TRUE(points->Command1Enabled);
  EXPECT_TRUE(t.boxes.take().isEmpty());
  EXPECT_EQ(MissingKnowledgeFiles(t.env, 2), QList<int>{2});
}

TEST_F(KnowledgeFiles, DeletingTheMarkOffersTheFileAgain) {
  offer(1);
  file(1, u"[知识点]\r\n初始信息=4\r\n[4]\r\n参见法条=《示例法》4.\r\n"_qs);
  load();
  points->activate();
  EXPECT_FALSE(points->Command1Enabled);
  ASSERT_TRUE(RemoveFile(path(1, "tx_")));
  points->activate();
  EXPECT_TRUE(points->Command1Enabled);
  EXPECT_EQ(t.boxes.take().size(), 1);
  EXPECT_EQ(MissingKnowledgeFiles(t.env, 1), QList<int>{1});
}

TEST_F(KnowledgeFiles, AProgramInTheFolderIsNeverStarted) {
  offer(1);
  t.mkdir(u"\\新知识点"_qs);
  WriteBytesAtomic(path(1, "exe"), "#!/bin/sh\necho started > started\n");
  QFile::setPermissions(path(1, "exe"), QFile::permissions(path(1, "exe")) | QFileDevice::ExeOwner);
  load();
  points->activate();
  EXPECT_TRUE(t.shell.calls.isEmpty());
  EXPECT_TRUE(FileExists(path(1, "exe")));
  EXPECT_FALSE(FileExists(t.path(u"\\started"_qs)));
  EXPECT_FALSE(FileExists(t.path(u"\\新知识点\\started"_qs)));
  EXPECT_TRUE(points->Command1Enabled);
  const QList<BoxRecord> boxes = t.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"有新的知识点文件，点击下面的按钮进行下载。\r\n\r\n"
                           u"下面的文件是程序，本程序不会运行它们，请点按钮下载文本形式的知识点文件：\r\n"_qs +
                               MapSeparators(path(1, "exe")));
}

TEST_F(KnowledgeFiles, TheCountAndFolderOfTheNewsFile) {
  t.writeGbk(kNewsFile, u"[信息]\r\n知识点文件个数=3\r\n知识点文件下载网上目录=http://127.0.0.1:9/zsd\r\n"_qs);
  EXPECT_EQ(KnowledgeFileCount(t.env), 3);
  EXPECT_EQ(KnowledgeFileFolder(t.env), u"http://127.0.0.1:9/zsd/"_qs);
  t.writeGbk(kNewsFile, u"[信息]\r\n知识点文件个数=abc\r\n知识点文件下载网上目录=ftp://x/\r\n"_qs);
  EXPECT_EQ(KnowledgeFileCount(t.env), 0);
  EXPECT_EQ(KnowledgeFileFolder(t.env), u""_qs);
}

}  // namespace
}  // namespace mj
