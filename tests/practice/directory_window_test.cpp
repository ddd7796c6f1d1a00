// The three directory entries of the main window's menu, on a small program
// folder and, when it has been built, on the demonstration data.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QHash>
#include <QLabel>
#include <QProgressBar>
#include <QTest>

#include "app/main_window.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "practice/directory_widget.h"
#include "settings/settings.h"
#include "support/directory_tables.h"
#include "support/printers.h"
#include "support/program_folder.h"

using namespace mj;
using test::ItemSpec;
using test::StoryEntry;

namespace {

const QDate kToday(2026, 11, 21);  // the test clock's day

const QList<ItemSpec> kItems = {
    {u"01001100001"_qs},
    {u"01001100002"_qs, StoryEntry(kToday.addDays(-1), u"A"_qs)},
    {u"01001100003"_qs, StoryEntry(QDate(2026, 9, 1), u"B"_qs)},
    {u"01001200001"_qs, u"no"_qs, u"AB"_qs},
    {u"01001200002"_qs, u"no"_qs, u"AB"_qs, false},
};

struct Window {
  test::TestEnv t;
  std::unique_ptr<Form1> form;

  explicit Window(const test::FolderParts& parts = {}) {
    test::MakeProgramFolder(t, parts);
    if (parts.tables) {
      test::WriteItemTable(t, u"items.mmd"_qs, kItems);
      test::WriteDirectoryTable(
          t, u"33ok.mmd"_qs,
          {{u"民法"_qs, QString(), u"2-3"_qs, u"1"_qs},
           {u"民法单项选择题"_qs, u"\\yibanti\\010011.mmd"_qs, QString(), u"2"_qs, QString(), u"9"_qs, u"7"_qs},
           {u"民法多项选择题"_qs, u"\\yibanti\\010012.mmd"_qs, QString(), u"3"_qs},
           {u"刑法"_qs, u"\\yibanti\\020011.mmd"_qs, QString(), u"4"_qs}});
      test::WriteItemTable(t, u"csitems.mmd"_qs,
                           {{u"01001100001"_qs}, {u"01001100002"_qs, StoryEntry(kToday, u"B"_qs)}});
      test::WriteDirectoryTable(t, u"csface.mmd"_qs, {{u"试卷一"_qs, u"\\moniti\\010011.mmd"_qs, QString(), u"1"_qs}});
    }
    // The settings of yesterday: today's first entry counts.
    if (parts.iniFolder)
      t.writeGbk(u"\\ini\\userself.ini"_qs,
                 u"STOKTIMES=1\r\nSTADDNUM=1\r\nSTPASSDAYS=30\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\n"
                 u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=1120\r\n"
                 u"TSLASTUPDATE=1120\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
    form = std::make_unique<Form1>(t.env);
    form->load();
  }
  DirectoryGrid* grid() const { return form->MSFlexGrid1; }
};

}  // namespace

TEST(DirectoryWindow, ShiTiShowsTheInternalBanks) {
  Window w;
  w.form->resize(1000, 700);
  w.form->show();
  ASSERT_TRUE(w.form->ShiTi->isEnabled());
  w.form->ShiTi->trigger();
  EXPECT_EQ(w.form->currentFace(), w.form->gridPage);
  EXPECT_FALSE(w.grid()->isHidden());
  EXPECT_TRUE(w.form->Label7->isHidden());
  EXPECT_TRUE(w.form->ProgressBar1->isHidden());
  EXPECT_EQ(w.form->Label7->text(), u"隔天，或有做题记录，则要统计一次满足你的设置条件的一般试题数，请稍候……"_qs);
  EXPECT_EQ(w.form->ProgressBar1->maximum(), 4);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  for (QLabel* l : w.form->Label14) EXPECT_TRUE(l->isHidden());
  // The count went into the table: 010011 has 3 questions, 2 due (1, 1, 30).
  EXPECT_EQ(test::ColumnOf(w.t, u"33ok.mmd"_qs, u"f"_qs), (QStringList{u"0"_qs, u"3"_qs, u"1"_qs, u"0"_qs}));
  EXPECT_EQ(test::ColumnOf(w.t, u"33ok.mmd"_qs, u"oknum"_qs), (QStringList{u"0"_qs, u"2"_qs, u"1"_qs, u"0"_qs}));
  // The settings file keeps today's stamp.
  EXPECT_EQ(w.form->state().settings->stLastUpdate(), 1121);
  EXPECT_TRUE(w.t.readGbk(u"\\ini\\userself.ini"_qs).contains(u"STLASTUPDATE=1121\r\n"_qs));
  // The grid: header of the mode, the heading closed with its sums.
  const Directory& d = w.grid()->directory();
  EXPECT_EQ(d.formatText(), GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(w.grid()->directory().header()[12].text, QChar(0x3000) + u"适格题数"_qs + QChar(0x3000) + u"    "_qs);
  EXPECT_EQ(w.grid()->horizontalHeaderItem(12)->text(), u"适格题数"_qs);
  EXPECT_EQ(w.grid()->item(0, 1)->text(), u"+民法"_qs);
  EXPECT_EQ(w.grid()->item(0, kColTotal)->text(), u"4"_qs);
  EXPECT_EQ(w.grid()->item(0, kColEligible)->text(), u"3"_qs);
  EXPECT_EQ(w.grid()->item(0, kColScore)->text(), u"77%"_qs);
  EXPECT_EQ(w.grid()->shownRowHeight(2), 0);
  EXPECT_GT(w.grid()->shownRowHeight(4), 0);
  // The state of the mode.
  const AppState& a = w.form->state();
  EXPECT_FALSE(a.IsSimulated);
  EXPECT_FALSE(a.AutoNext);
  EXPECT_EQ(a.FaceTable, u"33ok.mmd"_qs);
  EXPECT_EQ(a.ItemTable, u"items.mmd"_qs);
  // The working index is the whole index read at start.
  ASSERT_EQ(a.AllItemData.size(), kItems.size());
  EXPECT_TRUE(a.ItemData == a.AllItemData);
  EXPECT_EQ(a.OkTimes, 1);
  EXPECT_EQ(a.PassDays, 30);

  // A click on the heading opens it.
  QTest::mouseClick(w.grid()->viewport(), Qt::LeftButton, {}, w.grid()->visualItemRect(w.grid()->item(0, 1)).center());
  EXPECT_EQ(w.grid()->item(0, 1)->text(), u"-民法"_qs);
  EXPECT_GT(w.grid()->shownRowHeight(2), 0);
  EXPECT_EQ(w.grid()->item(1, 1)->text(), u"     民法单项选择题"_qs);
  w.form->grab().save(test::OutputDir() + u"/directory_shiti.png"_qs);

  // Entered again the same day: no count, so a changed table row stays.
  DbfTable face = DbfTable::open(w.t.path(u"\\dbf\\33ok.mmd"_qs), DbfTable::Mode::ReadWrite);
  face.setNumber(1, u"oknum"_qs, 42);
  face.close();
  w.form->ShiTi->trigger();
  EXPECT_EQ(test::ColumnOf(w.t, u"33ok.mmd"_qs, u"oknum"_qs).at(1), u"42"_qs);
  EXPECT_EQ(w.grid()->item(0, 1)->text(), u"+民法"_qs);
}

TEST(DirectoryWindow, CeShiAndChaJuanShowThePapers) {
  Window w;
  w.form->CeShi->trigger();
  EXPECT_EQ(w.form->Label7->text(), u"正在统计一次满足你的设置条件的模拟试题数，请稍候……"_qs);
  EXPECT_TRUE(w.form->state().IsSimulated);
  EXPECT_TRUE(w.form->state().AutoNext);
  EXPECT_TRUE(w.form->state().ItemData.isEmpty());
  EXPECT_EQ(w.form->state().FaceTable, u"csface.mmd"_qs);
  EXPECT_EQ(w.grid()->directory().header()[12].text, u"适格题数"_qs + QChar(0x3000) + u"      "_qs);
  EXPECT_EQ(w.grid()->item(0, 1)->text(), u"试卷一"_qs);
  EXPECT_EQ(w.grid()->item(0, kColEligible)->text(), u"1"_qs);  // wrong today: not due after 0 days
  EXPECT_EQ(w.form->state().settings->tsLastUpdate(), 1121);

  w.form->ChaJuan->trigger();
  EXPECT_EQ(w.form->Label7->text(),
            u"查卷只做上次做错的试题和未做过的试题，正在统计一下满足你的设置条件的模拟试题数，请稍候……"_qs);
  EXPECT_TRUE(w.form->state().IsChaJuan);
  EXPECT_EQ(w.form->state().OkTimes, -10);
  EXPECT_EQ(w.form->state().AddNum, 1);
  EXPECT_EQ(w.form->state().PassDays, -10);
  EXPECT_EQ(w.grid()->directory().header()[12].text, u"未做或错"_qs + QChar(0x3000) + u"      "_qs);
  EXPECT_EQ(w.grid()->horizontalHeaderItem(12)->text(), u"未做或错"_qs);
  EXPECT_EQ(w.grid()->item(0, kColEligible)->text(), u"2"_qs);
  EXPECT_FALSE(w.grid()->isHidden());
}

TEST(DirectoryWindow, WithoutTheDataSetTheUnpackEntryRuns) {
  test::FolderParts parts;
  parts.yibanti = false;
  parts.readme = false;
  Window w(parts);
  w.t.boxes.clear();
  w.form->ShiTi->trigger();
  ASSERT_EQ(w.t.boxes.shown().size(), 1);
  EXPECT_EQ(w.t.boxes.shown()[0].title, u"解压数据包"_qs);
  EXPECT_EQ(w.form->currentFace(), w.form->startPage);
  EXPECT_TRUE(w.grid()->isHidden());
  EXPECT_TRUE(w.form->state().FaceTable.isEmpty());
}

// --- the demonstration data ---

namespace {

// The live questions of each bank of an item table.
QHash<QString, int> LiveCounts(const QString& itemTable) {
  QHash<QString, int> out;
  const DbfTable t = DbfTable::open(itemTable);
  const int fn = t.fieldIndex(u"filename"_qs), valid = t.fieldIndex(u"valid2"_qs);
  for (int r : t.rows())
    if (t.logical(r, valid)) ++out[t.trimmedText(r, fn)];
  return out;
}

}  // namespace

TEST(DirectoryWindow, DemonstrationData) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
  test::TestEnv t(test::DemoDataDir());
  Form1 form(t.env);
  form.load();
  form.resize(1200, 800);
  form.show();
  // A stamp of another day: the entry counts.
  form.state().settings->setStLastUpdate(0);
  form.state().settings->CreateIni(t.env);
  form.ShiTi->trigger();
  DirectoryGrid* g = form.MSFlexGrid1;
  const Directory& d = g->directory();
  ASSERT_GT(d.rowCount(), 0);

  // Every bank row holds the live questions of its bank.
  const QHash<QString, int> live = LiveCounts(t.path(u"\\dbf\\items.mmd"_qs));
  const QStringList f = test::ColumnOf(t, u"33ok.mmd"_qs, u"f"_qs);
  const QStringList b = test::ColumnOf(t, u"33ok.mmd"_qs, u"b"_qs);
  int banks = 0;
  for (int r = 0; r < b.size(); ++r) {
    if (!b[r].toUpper().endsWith(u".MMD"_qs)) continue;
    ++banks;
    const QString bank = b[r].mid(b[r].lastIndexOf(u'\\') + 1).chopped(4);
    EXPECT_EQ(f[r].toInt(), live.value(bank)) << b[r].toStdString();
  }
  EXPECT_GT(banks, 0);

  // Each top-level heading shows the sums of the leaf rows of its range.
  int headings = 0;
  for (int r = 1; r <= d.rowCount(); ++r) {
    long long a = 0, z = 0;
    if (d.isRowHidden(r) || !HeadingRange(d.text(r, kColFlag), a, z)) continue;
    ++headings;
    double total = 0;
    for (long long i = a; i <= z; ++i)
      if (!d.isHeading(static_cast<int>(i))) total += f.value(static_cast<int>(i - 1)).toDouble();
    EXPECT_EQ(d.text(r, kColTotal).toDouble(), total) << r;
    EXPECT_TRUE(d.text(r, kColLabel).startsWith(u'+'));
  }
  ASSERT_GT(headings, 0);

  // Open the first heading and close it again.
  int first = 1;
  while (first <= d.rowCount() && !d.isHeading(first)) ++first;
  ASSERT_LE(first, d.rowCount());
  long long a = 0, z = 0;
  HeadingRange(d.text(first, kColFlag), a, z);
  EXPECT_EQ(g->clickRow(first), DirectoryClick::Toggled);
  EXPECT_TRUE(g->item(first - 1, 1)->text().startsWith(u'-'));
  EXPECT_GT(g->shownRowHeight(static_cast<int>(a)), 0);
  // A child heading opens one level deeper, its banks indented under it.
  int child = static_cast<int>(a);
  while (child <= z && !d.isHeading(child)) ++child;
  if (child <= z) {
    long long ca = 0, cz = 0;
    HeadingRange(d.text(child, kColFlag), ca, cz);
    EXPECT_TRUE(g->item(child - 1, 1)->text().startsWith(u"    +"_qs));
    EXPECT_EQ(g->clickRow(child), DirectoryClick::Toggled);
    for (long long i = ca; i <= cz; ++i) {
      if (d.isHeading(static_cast<int>(i))) continue;
      EXPECT_GT(g->shownRowHeight(static_cast<int>(i)), 0);
      EXPECT_TRUE(g->item(static_cast<int>(i) - 1, 1)->text().startsWith(Space(9)));
      EXPECT_FALSE(g->item(static_cast<int>(i) - 1, 1)->text().startsWith(Space(10)));
    }
  }
  g->grab().save(test::OutputDir() + u"/directory_demo_open.png"_qs);
  form.grab().save(test::OutputDir() + u"/directory_demo_window.png"_qs);
  EXPECT_EQ(g->clickRow(first), DirectoryClick::Toggled);
  for (long long i = a; i <= z; ++i) EXPECT_EQ(g->shownRowHeight(static_cast<int>(i)), 0);

  // The papers: every paper row counted over the table, the label of a
  // leaf naming a 试卷.
  form.CeShi->trigger();
  const Directory& p = g->directory();
  ASSERT_GT(p.rowCount(), 0);
  EXPECT_EQ(p.formatText(), GridFormatText(DirectoryMode::CeShi));
  const QStringList ok = test::ColumnOf(t, u"csface.mmd"_qs, u"oknum"_qs);
  const QStringList pb = test::ColumnOf(t, u"csface.mmd"_qs, u"b"_qs);
  for (int r = 0; r < pb.size(); ++r) {
    if (!pb[r].toUpper().endsWith(u".MMD"_qs)) continue;
    EXPECT_TRUE(p.text(r + 1, kColLabel).contains(u"试卷"_qs));
    EXPECT_GT(ok[r].toInt(), 0);
  }
  form.grab().save(test::OutputDir() + u"/directory_demo_papers.png"_qs);
}
