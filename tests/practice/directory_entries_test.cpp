#include "practice/directory_entries.h"

#include <gtest/gtest.h>

#include <QFile>

#include "settings/settings.h"
#include "support/directory_tables.h"
#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;
using test::ItemSpec;
using test::StoryEntry;

namespace {

// Records every call of the entries, in order.
class RecordingUi : public DirectoryEntryUi {
 public:
  bool dataPresent = true;
  QStringList calls;
  QStringList countTexts;
  int maximum = -1;
  int lastValue = -1;
  Directory shown;
  bool directoryShown = false;
  bool waitCursor = false;

  bool needsData() override {
    calls << u"needsData"_qs;
    return dataPresent;
  }
  void prepareGridFace() override { calls << u"prepareGridFace"_qs; }
  void setWaitCursor(bool on) override {
    calls << (on ? u"wait"_qs : u"normal"_qs);
    waitCursor = on;
  }
  void hideFrames() override { calls << u"hideFrames"_qs; }
  void showCounting(const QString& text) override {
    calls << u"showCounting"_qs;
    countTexts << text;
  }
  void setProgressMaximum(int m) override { maximum = m; }
  void setProgressValue(int v) override { lastValue = v; }
  void hideCounting() override { calls << u"hideCounting"_qs; }
  void showDirectory(const Directory& d) override {
    calls << u"showDirectory"_qs;
    shown = d;
    directoryShown = true;
  }
};

class FakeSettings : public SchedulingSettings {
 public:
  // What the file holds; reload() copies it into the live values.
  std::array<int, 6> fileNumbers{2, 1, 30, 3, 2, 10};
  qint16 fileSt = 0;
  qint16 fileTs = 0;
  std::array<int, 6> numbers{};
  qint16 st = 0;
  qint16 ts = 0;
  int reloads = 0;
  int saves = 0;
  QStringList* calls = nullptr;

  void reload() override {
    ++reloads;
    numbers = fileNumbers;
    st = fileSt;
    ts = fileTs;
    if (calls) *calls << u"reload"_qs;
  }
  int number(int i) const override { return numbers[static_cast<size_t>(i)]; }
  qint16 stLastUpdate() const override { return st; }
  void setStLastUpdate(qint16 s) override { st = s; }
  void setTsLastUpdate(qint16 s) override { ts = s; }
  void save() override {
    ++saves;
    fileSt = st;
    fileTs = ts;
    if (calls) *calls << u"save"_qs;
  }
};

const QDate kToday(2026, 11, 21);  // the test clock's day: stamp 1121

struct Folder {
  test::TestEnv t;
  AppState app;
  RecordingUi ui;
  FakeSettings settings;

  Folder() {
    t.mkdir(u"\\yibanti"_qs);
    app.env = t.env;
    settings.calls = &ui.calls;
    const QList<ItemSpec> items = {
        {u"01001100001"_qs},
        {u"01001100002"_qs, StoryEntry(kToday.addDays(-1), u"A"_qs)},
        {u"01001100003"_qs, StoryEntry(QDate(2026, 10, 1), u"B"_qs)},
        {u"02001100001"_qs},
    };
    test::WriteItemTable(t, u"items.mmd"_qs, items);
    app.AllItemData = test::IndexOf(items);
    test::WriteDirectoryTable(t, u"33ok.mmd"_qs,
                              {{u"民法"_qs, QString(), u"2-2"_qs, u"1"_qs},
                               {u"民法单项选择题"_qs, u"\\yibanti\\010011.mmd"_qs, QString(), u"2"_qs},
                               {u"刑法单项选择题"_qs, u"\\yibanti\\020011.mmd"_qs, QString(), u"3"_qs}});
    test::WriteItemTable(t, u"csitems.mmd"_qs,
                         {
                             {u"01001100001"_qs, StoryEntry(kToday, u"A"_qs)},             // right today
                             {u"01001100002"_qs, StoryEntry(kToday.addDays(5), u"C"_qs)},  // wrong, future
                             {u"01001100003"_qs, u"no"_qs, u"A"_qs, false},                // hidden, not done
                         });
    test::WriteDirectoryTable(t, u"csface.mmd"_qs, {{u"试卷一"_qs, u"\\moniti\\010011.mmd"_qs, QString(), u"1"_qs}});
  }
  QStringList column(const QString& table, const QString& field) { return test::ColumnOf(t, table, field); }
};

}  // namespace

TEST(DirectoryEntries, ShiTiCountsOnTheFirstUseOfTheDay) {
  Folder f;
  f.app.ItemData = ItemIndex(1);
  f.app.IsSimulated = f.app.IsChaJuan = f.app.InUpdateList = f.app.InOtherList = f.app.AutoNext = true;
  ASSERT_TRUE(ShiTi(f.app, f.ui, f.settings));
  EXPECT_EQ(f.ui.calls, (QStringList{u"needsData"_qs, u"prepareGridFace"_qs, u"wait"_qs, u"reload"_qs, u"hideFrames"_qs,
                                     u"showCounting"_qs, u"wait"_qs, u"save"_qs, u"hideCounting"_qs,
                                     u"showDirectory"_qs, u"normal"_qs}));
  EXPECT_EQ(f.ui.countTexts, QStringList{u"隔天，或有做题记录，则要统计一次满足你的设置条件的一般试题数，请稍候……"_qs});
  // State of the mode.
  EXPECT_TRUE(f.app.ItemData == f.app.AllItemData);
  EXPECT_FALSE(f.app.IsSimulated);
  EXPECT_FALSE(f.app.IsChaJuan);
  EXPECT_FALSE(f.app.InUpdateList);
  EXPECT_FALSE(f.app.InOtherList);
  EXPECT_FALSE(f.app.AutoNext);
  EXPECT_EQ(f.app.DataFolder, f.t.path(u"\\dbf"_qs));
  EXPECT_EQ(f.app.FaceTable, u"33ok.mmd"_qs);
  EXPECT_EQ(f.app.ItemTable, u"items.mmd"_qs);
  EXPECT_EQ(f.app.OkTimes, 2);
  EXPECT_EQ(f.app.AddNum, 1);
  EXPECT_EQ(f.app.PassDays, 30);
  // The count: 010011 has 3 questions, 2 due (not done; wrong 51 days ago).
  EXPECT_EQ(f.column(u"33ok.mmd"_qs, u"f"_qs), (QStringList{u"0"_qs, u"3"_qs, u"1"_qs}));
  EXPECT_EQ(f.column(u"33ok.mmd"_qs, u"oknum"_qs), (QStringList{u"0"_qs, u"2"_qs, u"1"_qs}));
  EXPECT_EQ(f.ui.maximum, 4);
  EXPECT_EQ(f.settings.fileSt, 1121);
  EXPECT_EQ(f.settings.fileTs, 0);
  // The directory: the header of the mode, the tree with its sums.
  ASSERT_TRUE(f.ui.directoryShown);
  EXPECT_EQ(f.ui.shown.formatText(), GridFormatText(DirectoryMode::ShiTi));
  ASSERT_EQ(f.ui.shown.rowCount(), 3);
  EXPECT_EQ(f.ui.shown.text(1, kColLabel), u"+民法"_qs);
  EXPECT_EQ(f.ui.shown.text(1, kColEligible), u"2"_qs);
  EXPECT_EQ(f.ui.shown.text(1, kColTotal), u"3"_qs);
  EXPECT_TRUE(f.ui.shown.isRowHidden(2));
  EXPECT_FALSE(f.ui.waitCursor);
}

TEST(DirectoryEntries, ShiTiDoesNotCountTwiceADay) {
  Folder f;
  f.settings.fileSt = 1121;
  f.settings.fileNumbers = {1, 1, 0, 1, 1, 0};
  ASSERT_TRUE(ShiTi(f.app, f.ui, f.settings));
  EXPECT_TRUE(f.ui.countTexts.isEmpty());
  EXPECT_EQ(f.settings.saves, 0);
  EXPECT_FALSE(f.ui.calls.contains(u"showCounting"_qs));
  // The table's numbers stay as they were (blank).
  EXPECT_EQ(f.column(u"33ok.mmd"_qs, u"oknum"_qs), (QStringList{QString(), QString(), QString()}));
  EXPECT_EQ(f.app.PassDays, 0);
  EXPECT_TRUE(f.ui.directoryShown);
}

TEST(DirectoryEntries, ShiTiCountsAgainOnAnotherDay) {
  Folder f;
  f.settings.fileSt = 1121;
  f.t.clock.setDate(QDate(2026, 11, 22));
  ShiTi(f.app, f.ui, f.settings);
  EXPECT_EQ(f.ui.countTexts.size(), 1);
  EXPECT_EQ(f.settings.fileSt, 1122);
}

TEST(DirectoryEntries, CeShiAlwaysCountsOverTheTable) {
  Folder f;
  f.settings.fileTs = 1121;  // written, never read
  f.app.ItemData = f.app.AllItemData;
  ASSERT_TRUE(CeShi(f.app, f.ui, f.settings));
  EXPECT_EQ(f.ui.countTexts, QStringList{u"正在统计一次满足你的设置条件的模拟试题数，请稍候……"_qs});
  EXPECT_TRUE(f.app.ItemData.isEmpty());  // the papers have no index
  EXPECT_TRUE(f.app.IsSimulated);
  EXPECT_FALSE(f.app.IsChaJuan);
  EXPECT_TRUE(f.app.AutoNext);
  EXPECT_EQ(f.app.FaceTable, u"csface.mmd"_qs);
  EXPECT_EQ(f.app.ItemTable, u"csitems.mmd"_qs);
  EXPECT_EQ(f.app.OkTimes, 3);
  EXPECT_EQ(f.app.AddNum, 2);
  EXPECT_EQ(f.app.PassDays, 10);
  // Right today: not due (0 days < 10); wrong in the future: not due; the
  // hidden one not done: due, as this count has no valid2 test.
  EXPECT_EQ(f.column(u"csface.mmd"_qs, u"oknum"_qs), QStringList{u"1"_qs});
  EXPECT_EQ(f.ui.maximum, 3);
  EXPECT_EQ(f.settings.fileTs, 1121);
  EXPECT_EQ(f.settings.saves, 1);
  EXPECT_EQ(f.settings.fileSt, 0);
  EXPECT_EQ(f.ui.shown.formatText(), GridFormatText(DirectoryMode::CeShi));
  // A second entry the same day counts again.
  CeShi(f.app, f.ui, f.settings);
  EXPECT_EQ(f.ui.countTexts.size(), 2);
}

TEST(DirectoryEntries, ChaJuanOverwritesTheNumbers) {
  Folder f;
  ASSERT_TRUE(ChaJuan(f.app, f.ui, f.settings));
  EXPECT_EQ(
      f.ui.countTexts,
      QStringList{u"查卷只做上次做错的试题和未做过的试题，正在统计一下满足你的设置条件的模拟试题数，请稍候……"_qs});
  EXPECT_EQ(f.settings.reloads, 1);
  EXPECT_EQ(f.app.OkTimes, -10);
  EXPECT_EQ(f.app.AddNum, 1);
  EXPECT_EQ(f.app.PassDays, -10);
  EXPECT_TRUE(f.app.IsSimulated);
  EXPECT_TRUE(f.app.IsChaJuan);
  EXPECT_TRUE(f.app.AutoNext);
  // Wrong five days ahead is due in the review, and so is the one not done.
  EXPECT_EQ(f.column(u"csface.mmd"_qs, u"oknum"_qs), QStringList{u"2"_qs});
  EXPECT_EQ(f.ui.shown.formatText(), GridFormatText(DirectoryMode::ChaJuan));
  EXPECT_EQ(f.ui.shown.text(0, kColEligible), u"未做或错"_qs + QChar(0x3000) + u"      "_qs);
  EXPECT_EQ(f.settings.fileTs, 1121);
}

TEST(DirectoryEntries, WithoutTheDataSetOnlyTheUnpackEntryRuns) {
  Folder f;
  f.ui.dataPresent = false;
  f.app.FaceTable = u"before"_qs;
  for (auto entry : {&ShiTi, &CeShi, &ChaJuan}) {
    f.ui.calls.clear();
    EXPECT_FALSE(entry(f.app, f.ui, f.settings));
    EXPECT_EQ(f.ui.calls, QStringList{u"needsData"_qs});
  }
  EXPECT_EQ(f.app.FaceTable, u"before"_qs);
  EXPECT_EQ(f.settings.reloads, 0);
}

TEST(DirectoryEntries, MissingDirectoryTableShowsAnEmptyGrid) {
  Folder f;
  QFile::remove(f.t.path(u"\\dbf\\33ok.mmd"_qs));
  ASSERT_TRUE(ShiTi(f.app, f.ui, f.settings));
  EXPECT_TRUE(f.ui.directoryShown);
  EXPECT_EQ(f.ui.shown.rowCount(), 0);
  EXPECT_EQ(f.ui.shown.text(0, kColTotal), u"总题数      "_qs);
}

TEST(DirectoryEntries, StampAmbiguityIsAccepted) {
  // 1 November and 11 January give the same stamp: no count on 11 January
  // after a count on 1 November.
  Folder f;
  f.settings.fileSt = 111;
  f.t.clock.setDate(QDate(2027, 1, 11));
  ShiTi(f.app, f.ui, f.settings);
  EXPECT_TRUE(f.ui.countTexts.isEmpty());
}

TEST(DirectoryEntries, SettingsFileIsReloadedAndTheStampSaved) {
  Folder f;
  const QString ini =
      u"STOKTIMES=3\r\nSTADDNUM=2\r\nSTPASSDAYS=5\r\nTSOKTIMES=0\r\nTSADDNUM=4\r\nTSPASSDAYS=7\r\n"
      u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=1120\r\n"
      u"TSLASTUPDATE=1120\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs;
  f.t.writeGbk(u"\\ini\\userself.ini"_qs, ini);
  Settings settings;
  SettingsScheduling scheduling(settings, f.t.env);
  ASSERT_TRUE(ShiTi(f.app, f.ui, scheduling));
  EXPECT_EQ(f.app.OkTimes, 3);
  EXPECT_EQ(f.app.AddNum, 2);
  EXPECT_EQ(f.app.PassDays, 5);
  EXPECT_EQ(f.ui.countTexts.size(), 1);
  QString expected = ini;
  expected.replace(u"STLASTUPDATE=1120"_qs, u"STLASTUPDATE=1121"_qs);
  EXPECT_EQ(f.t.readGbk(u"\\ini\\userself.ini"_qs), expected);
  // The same day again: no count, the file stays.
  ShiTi(f.app, f.ui, scheduling);
  EXPECT_EQ(f.ui.countTexts.size(), 1);
  // The papers: the numbers of the second group, the other stamp.
  ASSERT_TRUE(CeShi(f.app, f.ui, scheduling));
  EXPECT_EQ(f.app.OkTimes, 0);
  EXPECT_EQ(f.app.AddNum, 4);
  EXPECT_EQ(f.app.PassDays, 7);
  expected.replace(u"TSLASTUPDATE=1120"_qs, u"TSLASTUPDATE=1121"_qs);
  EXPECT_EQ(f.t.readGbk(u"\\ini\\userself.ini"_qs), expected);
}

TEST(DirectoryEntries, MissingSettingsFileIsCreated) {
  Folder f;
  f.t.mkdir(u"\\ini"_qs);
  Settings settings;
  SettingsScheduling scheduling(settings, f.t.env);
  ASSERT_TRUE(ShiTi(f.app, f.ui, scheduling));
  // The first defaults: 1, 1, 30 and today's stamp, so no count today.
  EXPECT_EQ(f.app.OkTimes, 1);
  EXPECT_EQ(f.app.AddNum, 1);
  EXPECT_EQ(f.app.PassDays, 30);
  EXPECT_TRUE(f.ui.countTexts.isEmpty());
  EXPECT_TRUE(f.t.readGbk(u"\\ini\\userself.ini"_qs).contains(u"STLASTUPDATE=1121\r\n"_qs));
}

TEST(DirectoryEntries, UnwritableSettingsFileFallsBackLikeTheSettingsWindow) {
  Folder f;  // no \ini folder: the file can be neither read nor created
  Settings settings;
  SettingsScheduling scheduling(settings, f.t.env);
  ASSERT_TRUE(ShiTi(f.app, f.ui, scheduling));
  // The second defaults: 2, 1, 30 and stamps 0, so the count runs.
  EXPECT_EQ(f.app.OkTimes, 2);
  EXPECT_EQ(f.app.AddNum, 1);
  EXPECT_EQ(f.app.PassDays, 30);
  EXPECT_EQ(f.ui.countTexts.size(), 1);
  EXPECT_EQ(settings.stLastUpdate(), 1121);
}
