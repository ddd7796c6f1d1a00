// Update packages taken in: the run's steps, its files, its report, and the
// same result as the file and table functions taken one item at a time.
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>

#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "log/day_files.h"
#include "log/update_package.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/item_rows.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::test;

namespace {

// The main window's part in a run, recorded.
struct RecordingView : UpdateView {
  QList<int> progress;
  int maximum = -1;
  bool visible = false;
  bool wait = false;
  int waitChanges = 0;
  int events = 0;
  std::function<void(int)> onEvents;  // with the count of events points so far
  void showProgress(int m) override {
    maximum = m;
    visible = true;
  }
  void setProgress(int v) override { progress.append(v); }
  void hideProgress() override { visible = false; }
  void setWaitCursor(bool w) override {
    wait = w;
    ++waitChanges;
  }
  void letEventsThrough() override {
    ++events;
    if (onEvents) onEvents(events);
  }
};

struct UpdateRig {
  qint16 runState = 3;
  QString updated;
  RecordingView view;
  std::unique_ptr<UpdateRun> run;
  explicit UpdateRig(const Env& env) : run(std::make_unique<UpdateRun>(env, view, UpdateState{runState, updated})) {}
};

const QString kBank1 =
    u"示例：《刑法》单项选择题\r\n"
    u"●1●第一题(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：A参见《刑法》第1条\r\n"
    u"●2●第二题(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：B参见《刑法》第2条\r\n"
    u"●3●第三题(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：C参见《刑法》第3条\r\n"_qs;

// A small program folder: one bank of 《刑法》 with three questions, the
// directory rows of 《刑法》 and 《民法典》, a simulated paper.
void MakeFolder(const TestEnv& t) {
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kBank1);
  t.writeGbk(u"\\moniti\\00001.mmd"_qs, u"试卷\r\n●1●试卷题(      )\r\nA．甲■答案：A参见《刑法》第1条\r\n"_qs);
  TableRow a = plainRow(u"10001100001"_qs);
  a.story = u"2026-11-01 09:30   A"_qs;
  writeItems(t, tables::kItems, {a, plainRow(u"10001100002"_qs), plainRow(u"10001100003"_qs)});
  writeItems(t, tables::kCsItems, {plainRow(u"00001100001"_qs)});
  DbfTable d = DbfTable::create(t.path(u"\\dbf\\33ok.mmd"_qs), tables::DirectoryFields());
  const auto row = [&d](const QString& a, const QString& b, int f) {
    const int r = d.appendRow();
    d.setText(r, u"a"_qs, a);
    if (!b.isEmpty()) d.setText(r, u"b"_qs, b);
    if (f >= 0) d.setNumber(r, u"f"_qs, f);
  };
  row(u"第二部分 刑法题库"_qs, QString(), 3);
  row(u"《刑法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs, 3);
  row(u"《刑法》多项选择题"_qs, u"\\yibanti\\100012.mmd"_qs, 0);
  row(u"《民法典》单项选择题"_qs, u"\\yibanti\\200011.mmd"_qs, 7);
  d.close();
  t.mkdir(u"\\更新的题"_qs);
}

QString item(const QString& id, const QString& stem, const QString& key, const QString& citation,
             const QString& tag = u"[单选题]"_qs) {
  return u"\r\n●"_qs + tag + stem + u"(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四\r\n■答案："_qs + key + u"参见"_qs +
         citation + u"\r\n[注释：]更新的说明\r\n[本题标识ID：]["_qs + id + u"]\r\n"_qs;
}

ItemRow rowOf(const TestEnv& t, const QString& id, const QString& table = tables::kItems) {
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), table, index);
  const ItemRow* r = FindItem(index, id);
  return r ? *r : ItemRow();
}

double countOf(const TestEnv& t, int record) {
  const DbfTable d = DbfTable::open(t.path(u"\\dbf\\33ok.mmd"_qs));
  return d.number(record, u"f"_qs);
}

QByteArray bytes(const TestEnv& t, const QString& suffix) { return ReadBytes(t.path(suffix)); }

// Every file of a folder, relative path to bytes.
QMap<QString, QByteArray> filesOf(const QString& root) {
  QMap<QString, QByteArray> out;
  QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString p = it.next();
    out.insert(QDir(root).relativeFilePath(p), ReadBytes(p));
  }
  return out;
}

}  // namespace

TEST(UpdatePackage, ItemsAreTakenOneByOne) {
  QString text = u"头\r\n●一\r\n●二\r\n●三"_qs;
  const QList<QStringView> items = SplitItems(text, u"\r\n●"_qs);
  ASSERT_EQ(items.size(), 3);
  EXPECT_EQ(TakeNextItem(text, u"\r\n●"_qs), u"\r\n●一"_qs);
  EXPECT_EQ(text, u"\r\n●二\r\n●三"_qs);
  EXPECT_EQ(items[0], u"\r\n●一"_qs);
  EXPECT_EQ(TakeNextItem(text, u"\r\n●"_qs), u"\r\n●二"_qs);
  EXPECT_EQ(TakeNextItem(text, u"\r\n●"_qs), u"\r\n●三"_qs);
  EXPECT_EQ(text, u""_qs);
  EXPECT_EQ(TakeNextItem(text, u"\r\n●"_qs), u""_qs);
  EXPECT_EQ(items[2], u"\r\n●三"_qs);
  // Text before the first item is no item; no delimiter, no item.
  QString none = u"●没有行首的题"_qs;
  EXPECT_EQ(TakeNextItem(none, u"\r\n●"_qs), u""_qs);
  EXPECT_TRUE(SplitItems(none, u"\r\n●"_qs).isEmpty());
  QString titles = u"《刑法》《民法典》"_qs;
  EXPECT_EQ(TakeNextItem(titles, u"《"_qs), u"《刑法》"_qs);
  EXPECT_EQ(TakeNextItem(titles, u"《"_qs), u"《民法典》"_qs);
  EXPECT_EQ(TakeNextItem(titles, u"《"_qs), u""_qs);
}

TEST(UpdatePackage, AnItemIsPreparedBetweenLineEnds) {
  EXPECT_EQ(PreparedItem(u"\r\n●［单选题］题\r\n\r\n\r\nA．甲\r\n"_qs), u"\r\n[单选题]题\r\n\r\nA．甲\r\n"_qs);
  EXPECT_EQ(PreparedItem(u"●题●"_qs), u"\r\n题\r\n"_qs);
}

TEST(UpdatePackage, TheIdIsReadWhateverBlanksAndLineBreaksStandInIt) {
  EXPECT_EQ(GetItemIdOfNewText(u"题\r\n[本题标识ID：][10001100002]\r\n"_qs), u"10001100002"_qs);
  EXPECT_EQ(GetItemIdOfNewText(u"[本题 标识ID：]\r\n[ 10001 100002 ]"_qs), u"10001100002"_qs);
  EXPECT_EQ(GetItemIdOfNewText(u"[本题标识ID：][1000\u30001100002]"_qs), u"10001100002"_qs);
  EXPECT_EQ(GetItemIdOfNewText(u"题，没有标识"_qs), u""_qs);
  // Not an ID: never a file name.
  EXPECT_EQ(GetItemIdOfNewText(u"[本题标识ID：][..\\..\\abc]"_qs), u""_qs);
  EXPECT_EQ(GetItemIdOfNewText(u"[本题标识ID：][1000110000]"_qs), u""_qs);
  EXPECT_EQ(GetItemIdOfNewText(u"[本题标识ID：][100011000021]"_qs), u""_qs);
}

TEST(UpdatePackage, TheCitedLawsOnceEach) {
  EXPECT_EQ(GetLawCitedNames(u"■答案：A参见《刑法》第1条、《民法典》第2条《刑法》第3条\r\n[注释：]《宪法》"_qs),
            u"《刑法》《民法典》"_qs);
  EXPECT_EQ(GetLawCitedNames(u"■答案：A参见《刑法》第1条■《宪法》"_qs), u"《刑法》"_qs);
  EXPECT_EQ(GetLawCitedNames(u"■答案：A参见《刑法》第1条"_qs), u"《刑法》"_qs);
  EXPECT_EQ(GetLawCitedNames(u"参见《刑法》第1条"_qs), u""_qs);
  EXPECT_EQ(GetLawCitedNames(u"■答案：A参见《刑法第1条"_qs), u""_qs);
}

TEST(UpdatePackage, TheTextsOfTheAskAndTheReport) {
  EXPECT_EQ(UpdateQuestionText(),
            u"如果发现一个试题已经被更新一次了要不要再更新一次？\r\n（选“是”则全部更新，选“否”则只更新没更新过的题，建议你选否，这样"
            u"可以避免你重复做更新试题。）\r\n\r\n另外注意，更新试题花费时间相当长，每题大约要2秒种，请耐心等待。"
            u"如果要在更新过程中中止更新试题，可以按退出菜单。"_qs);
  EXPECT_EQ(UpdateReportText(0, 0), u"共更新了0题。"_qs);
  EXPECT_EQ(UpdateReportText(5, 3), u"共5题，更新了3题，还有2题因为已经有了更新历史而没有更新。"_qs);
}

TEST(UpdateRun, TheDialogAndItsAnswers) {
  TestEnv t;
  MakeFolder(t);
  t.writeGbk(u"\\更新的题\\a.txt"_qs, u"x"_qs);
  t.writeGbk(u"\\更新的题\\b.NEW"_qs, item(u"10001100002"_qs, u"新题"_qs, u"B"_qs, u"《刑法》第2条"_qs));
  const auto before = filesOf(t.root());
  {
    UpdateRig r(t.env);
    EXPECT_FALSE(r.run->run());  // cancelled
    ASSERT_EQ(t.dialogs.fileRequests.size(), 1);
    EXPECT_EQ(t.dialogs.fileRequests[0].title, u"打开明镜学习伴侣3.10更题库所需源文件"_qs);
    EXPECT_EQ(t.dialogs.fileRequests[0].initialDir, t.path(u"\\更新的题"_qs));
    EXPECT_EQ(t.dialogs.fileRequests[0].filter, u"明镜学习伴侣更新源文件(*.new)|*.new"_qs);
    EXPECT_EQ(t.dialogs.fileRequests[0].fileName, u""_qs);
  }
  {
    UpdateRig r(t.env);
    t.dialogs.answer(t.path(u"\\更新的题\\a.txt"_qs));
    EXPECT_FALSE(r.run->run());
    ASSERT_EQ(t.boxes.shown().size(), 1);
    EXPECT_EQ(t.boxes.shown()[0].text, u"必须为*.new文件。"_qs);
    EXPECT_EQ(t.boxes.shown()[0].title, DefaultBoxTitle());
  }
  t.boxes.clear();
  {
    UpdateRig r(t.env);
    t.dialogs.answer(t.path(u"\\更新的题\\b.NEW"_qs));
    t.boxes.answer(box::Cancel);
    EXPECT_FALSE(r.run->run());
    ASSERT_EQ(t.boxes.shown().size(), 1);
    EXPECT_EQ(t.boxes.shown()[0].title, u"询问"_qs);
    EXPECT_EQ(t.boxes.shown()[0].text, UpdateQuestionText());
    EXPECT_EQ(t.boxes.shown()[0].style, box::YesNoCancel | box::Question);
    EXPECT_EQ(r.view.maximum, -1);
  }
  EXPECT_EQ(filesOf(t.root()), before);
  t.boxes.clear();
  {
    UpdateRig r(t.env);
    t.dialogs.answer(t.path(u"\\更新的题\\b.NEW"_qs));
    t.boxes.answer(box::No);
    EXPECT_TRUE(r.run->run());
    ASSERT_EQ(t.boxes.shown().size(), 2);
    EXPECT_EQ(t.boxes.shown()[1].title, u"结果汇报"_qs);
    EXPECT_EQ(t.boxes.shown()[1].text, u"共更新了2题。"_qs);  // the question and its copy under 《刑法》
    EXPECT_EQ(t.boxes.shown()[1].style, box::Information);
  }
}

TEST(UpdateRun, AQuestionIsReplacedItsRecordResetAndCopiedUnderItsLaws) {
  TestEnv t;
  t.clock.setDate(QDate(2026, 11, 21));
  MakeFolder(t);
  t.writeGbk(u"\\更新的题\\20261121.ini"_qs, u"\"00001100001\"\r\n"_qs);
  // A question that cites two laws: itself and one new question in each
  // law's bank, three in all.
  const QString pkg = u"更新包\r\n"_qs + item(u"10001100001"_qs, u"改正的第一题"_qs, u"DB"_qs,
                                                  u"《刑法》第3条、《民法典》第5条"_qs);
  UpdateRig r(t.env);
  ASSERT_TRUE(r.run->takePackage(pkg, false));
  EXPECT_EQ(r.updated, u"200011000081000110000410001100001"_qs);
  EXPECT_EQ(r.run->seenIds(), r.updated);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"共更新了3题。"_qs);
  // The bank file: the question's block replaced, the copy appended.
  const QString prepared = PreparedItem(pkg.mid(pkg.indexOf(u"\r\n●"_qs)));
  const QString block = u"[单选题]改正的第一题(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四\r\n■答案：DB参见《刑法》第3条、《民法典》第5条\r\n"
                        u"[注释：]更新的说明\r\n[本题标识ID：][10001100001]\r\n"_qs;
  EXPECT_EQ(prepared, u"\r\n"_qs + block);
  const QString inBank = BankFormOf(block);
  EXPECT_EQ(t.readGbk(u"\\yibanti\\100011.mmd"_qs),
            u"示例：《刑法》单项选择题\r\n●1●"_qs + inBank + kBank1.mid(kBank1.indexOf(u"●2●"_qs)) + u"\r\n●4●"_qs +
                inBank + u"\r\n"_qs);
  EXPECT_EQ(t.readGbk(u"\\yibanti\\200011.mmd"_qs), u"●8●"_qs + inBank + u"\r\n"_qs);
  // The rows: the record reset, key and type from the text, the citation
  // as the flat list; the copies new rows.
  for (const QString& id : {u"10001100001"_qs, u"10001100004"_qs, u"20001100008"_qs}) {
    const ItemRow row = rowOf(t, id);
    EXPECT_EQ(row.itemid, id);
    EXPECT_EQ(row.story, u"no"_qs) << id.toStdString();
    EXPECT_EQ(row.answer, u"BD"_qs);
    EXPECT_EQ(row.aboutlaw, u"《刑法》3．《民法典》5．"_qs);
    EXPECT_EQ(row.itemtype, 1);
    EXPECT_TRUE(row.valid2);
    EXPECT_EQ(row.filename, id.left(6));
  }
  EXPECT_FALSE(rowOf(t, u"10001100001"_qs).hasselect);  // an old row keeps its other fields
  EXPECT_TRUE(rowOf(t, u"10001100004"_qs).hasselect);
  EXPECT_EQ(countOf(t, 1), 4);
  EXPECT_EQ(countOf(t, 3), 8);
  // The day file: the new IDs in front of what it held.
  EXPECT_EQ(bytes(t, u"\\更新的题\\20261121.ini"_qs), QByteArray("\"20001100008100011000041000110000100001100001\"\r\n"));
  EXPECT_EQ(r.runState, 3);
  EXPECT_FALSE(r.view.wait);
  EXPECT_FALSE(r.view.visible);
}

TEST(UpdateRun, ThePackagesOwnProgressAndRunState) {
  TestEnv t;
  MakeFolder(t);
  const QString pkg = u"头"_qs + item(u"10001100002"_qs, u"二"_qs, u"B"_qs, u"《刑法》第2条"_qs) +
                      item(u"10001100003"_qs, u"三"_qs, u"C"_qs, u"《刑法》第3条"_qs);
  UpdateRig r(t.env);
  QList<qint16> states;
  r.view.onEvents = [&](int) { states.append(r.runState); };
  r.run->onStep = [&](const QString& where) {
    if (where == u"item") states.append(r.runState);
  };
  ASSERT_TRUE(r.run->takePackage(pkg, false));
  EXPECT_EQ(states, (QList<qint16>{2, 1, 2, 1}));
  EXPECT_EQ(r.view.maximum, pkg.size() + 2);
  const QList<QStringView> items = SplitItems(pkg, u"\r\n●"_qs);
  const int first = static_cast<int>(PreparedItem(items[0].toString()).size());
  const int second = static_cast<int>(PreparedItem(items[1].toString()).size());
  EXPECT_EQ(r.view.progress, (QList<int>{first, first + second, 1}));
  EXPECT_EQ(r.view.waitChanges, 2);
  EXPECT_EQ(r.runState, 3);
}

TEST(UpdateRun, ItemsWithoutIdChangeNothing) {
  TestEnv t;
  t.clock.setDate(QDate(2026, 11, 21));
  MakeFolder(t);
  t.writeGbk(u"\\更新的题\\20261121.ini"_qs, u"\"00001100001\"\r\n"_qs);
  const auto before = filesOf(t.root());
  UpdateRig r(t.env);
  QString pkg = u"头\r\n●[单选题]没有标识的题(      )\r\nA．一■答案：A参见《刑法》第1条\r\n"_qs;
  ASSERT_TRUE(r.run->takePackage(pkg, true));
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"共更新了0题。"_qs);
  // The day file is written again with what it held.
  EXPECT_EQ(filesOf(t.root()), before);
}

TEST(UpdateRun, AnEmptyFileGivesTheSameReportAndRewritesTheDayFile) {
  TestEnv t;
  t.clock.setDate(QDate(2026, 11, 21));
  MakeFolder(t);
  t.writeGbk(u"\\更新的题\\20261121.ini"_qs, u"\"00001100001\"\r\n"_qs);
  QFile::remove(t.path(u"\\更新的题\\20261121.ini"_qs));
  UpdateRig r(t.env);
  ASSERT_TRUE(r.run->takePackage(QString(), false));
  EXPECT_EQ(t.boxes.shown().value(0).text, u"共更新了0题。"_qs);
  EXPECT_EQ(bytes(t, u"\\更新的题\\20261121.ini"_qs), QByteArray("\"\"\r\n"));
  // A damaged day file counts as empty and is overwritten.
  t.writeGbk(u"\\更新的题\\20261121.ini"_qs, u"\"123\"\r\n"_qs);
  UpdateRig again(t.env);
  ASSERT_TRUE(again.run->takePackage(QString(), false));
  EXPECT_EQ(bytes(t, u"\\更新的题\\20261121.ini"_qs), QByteArray("\"\"\r\n"));
}

TEST(UpdateRun, YesUpdatesAnUpdatedQuestionAgainNoPassesItOver) {
  TestEnv t;
  MakeFolder(t);
  const QString pkg = item(u"10001100002"_qs, u"二"_qs, u"B"_qs, u"《刑法》第2条"_qs);
  {
    UpdateRig r(t.env);
    ASSERT_TRUE(r.run->takePackage(pkg, false));
    EXPECT_EQ(r.updated, u"1000110000410001100002"_qs);
  }
  // A record since then.
  {
    DbfTable items = DbfTable::open(t.path(u"\\dbf\\items.mmd"_qs), DbfTable::Mode::ReadWrite);
    items.setText(Select(items, {{u"itemid"_qs, u"10001100002"_qs}})[0], u"story"_qs, u"2026-11-22 10:00   B"_qs);
  }
  t.boxes.clear();
  {
    UpdateRig r(t.env);
    ASSERT_TRUE(r.run->takePackage(pkg, false));
    EXPECT_EQ(r.updated, u""_qs);
    EXPECT_EQ(r.run->seenIds(), u"10001100002"_qs);
    EXPECT_EQ(t.boxes.shown().value(0).text, u"共1题，更新了0题，还有1题因为已经有了更新历史而没有更新。"_qs);
    EXPECT_EQ(rowOf(t, u"10001100002"_qs).story, u"2026-11-22 10:00   B"_qs);
  }
  t.boxes.clear();
  {
    UpdateRig r(t.env);
    ASSERT_TRUE(r.run->takePackage(pkg, true));
    EXPECT_EQ(r.updated, u"1000110000510001100002"_qs);
    EXPECT_EQ(t.boxes.shown().value(0).text, u"共更新了2题。"_qs);
    EXPECT_EQ(rowOf(t, u"10001100002"_qs).story, u"no"_qs);
  }
}

TEST(UpdateRun, TheSameIdTwiceIsPassedOverTheSecondTimeOnNo) {
  TestEnv t;
  MakeFolder(t);
  const QString pkg = item(u"10001100003"_qs, u"三甲"_qs, u"A"_qs, u"《宪法》第1条"_qs) +
                      item(u"10001100003"_qs, u"三乙"_qs, u"D"_qs, u"《宪法》第1条"_qs);
  UpdateRig r(t.env);
  ASSERT_TRUE(r.run->takePackage(pkg, false));
  // A law no directory row names: every copy lands on the one ID 90001300001.
  EXPECT_EQ(r.updated, u"9000130000110001100003"_qs);
  EXPECT_EQ(r.run->seenIds(), u"100011000039000130000110001100003"_qs);
  EXPECT_EQ(t.boxes.shown().value(0).text, u"共3题，更新了2题，还有1题因为已经有了更新历史而没有更新。"_qs);
  EXPECT_TRUE(GetOneOldTi(t.env, u"10001100003"_qs).contains(u"三甲"_qs));
  EXPECT_EQ(rowOf(t, u"90001300001"_qs).answer, u"A"_qs);
  EXPECT_TRUE(t.readGbk(u"\\yibanti\\900013.mmd"_qs).startsWith(u"●1●三甲"_qs));
}

TEST(UpdateRun, APaperQuestionGoesIntoItsPaper) {
  TestEnv t;
  MakeFolder(t);
  const QString pkg = item(u"00001100001"_qs, u"试卷改题"_qs, u"B"_qs, u"《宪法》第1条"_qs);
  UpdateRig r(t.env);
  ASSERT_TRUE(r.run->takePackage(pkg, false));
  EXPECT_TRUE(t.readGbk(u"\\moniti\\00001.mmd"_qs).contains(u"试卷改题"_qs));
  EXPECT_EQ(rowOf(t, u"00001100001"_qs, tables::kCsItems).answer, u"B"_qs);
  EXPECT_EQ(rowOf(t, u"00001100001"_qs).itemid, u""_qs);
}

namespace {

// The run as the file and table functions would make it, one item at a time.
void LiteralRun(const Env& env, const QString& text, bool yes, QString& updated, QString& seen) {
  QString rest = text;
  for (QString it = TakeNextItem(rest, u"\r\n●"_qs); !it.isEmpty(); it = TakeNextItem(rest, u"\r\n●"_qs)) {
    const QString prepared = PreparedItem(it);
    const QString id = GetItemIdOfNewText(prepared);
    if (id.isEmpty()) continue;
    if (GetOneOldTi(env, id).contains(id) && !yes) {
      seen.prepend(id);
      continue;
    }
    ReplaceOneItem(env, id, prepared);
    updated.prepend(id);
    seen.prepend(id);
    QString titles = GetLawCitedNames(prepared);
    for (QString title = TakeNextItem(titles, u"《"_qs); !title.isEmpty(); title = TakeNextItem(titles, u"《"_qs)) {
      const QString newId = NewItemID(env, title, ItemTypeOfTag(prepared));
      AltItemRow(env, newId, prepared);
      AppendItemText(env, newId, prepared);
      updated.prepend(newId);
      seen.prepend(newId);
    }
  }
  PrependToTodayFile(env, kUpdatedFolder, updated);
}

}  // namespace

TEST(UpdateRun, TheRunGivesWhatTheFunctionsGiveOneItemAtATime) {
  QRandomGenerator rnd(20261121);
  const QStringList laws = {u"《刑法》"_qs, u"《民法典》"_qs, u"《宪法》"_qs};
  const QStringList tags = {u"[单选题]"_qs, u"［多选题］"_qs, u"[任选题]"_qs, QString()};
  for (int round = 0; round < 12; ++round) {
    TestEnv literal;
    TestEnv batch;
    MakeFolder(literal);
    MakeFolder(batch);
    QString pkg = u"第"_qs + QString::number(round) + u"个更新包\r\n"_qs;
    const int n = 3 + rnd.bounded(8);
    for (int k = 0; k < n; ++k) {
      const QString id = rnd.bounded(6) == 0 ? u"00001100001"_qs
                                             : QStringLiteral("1000110000%1").arg(1 + rnd.bounded(6));
      QString citation = laws[rnd.bounded(3)] + u"第"_qs + QString::number(1 + rnd.bounded(9)) + u"条"_qs;
      if (rnd.bounded(2)) citation += u"、"_qs + laws[rnd.bounded(3)] + u"第2条"_qs;
      QString it = item(id, u"题"_qs + QString::number(k), u"AC"_qs, citation, tags[rnd.bounded(4)]);
      if (rnd.bounded(4) == 0) it.replace(u"\r\nA．"_qs, u"\r\n\r\n\r\nA．"_qs);
      if (rnd.bounded(8) == 0) it.replace(u"[本题标识ID：]"_qs, u"[本题ID：]"_qs);
      pkg += it;
    }
    const bool yes = rnd.bounded(2);
    QString updated, seen;
    LiteralRun(literal.env, pkg, yes, updated, seen);
    UpdateRig r(batch.env);
    r.run->writeEvery(1 + rnd.bounded(4));
    ASSERT_TRUE(r.run->takePackage(pkg, yes));
    EXPECT_EQ(r.updated, updated) << round;
    EXPECT_EQ(r.run->seenIds(), seen) << round;
    const auto a = filesOf(literal.root());
    const auto b = filesOf(batch.root());
    ASSERT_EQ(a.keys(), b.keys()) << round;
    for (auto it = a.constBegin(); it != a.constEnd(); ++it)
      EXPECT_EQ(it.value(), b.value(it.key())) << round << " " << it.key().toStdString() << "\n" << pkg.toStdString();
  }
}
