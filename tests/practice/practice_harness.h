#pragma once
// A small program folder with three banks of one law (single, multiple and
// any choice), their directory and a law file, and a practice frame over it
// with the main window's parts recorded.

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QWidget>
#include <memory>

#include "bank/item_index.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/app_state.h"
#include "practice/directory.h"
#include "practice/practice_frame_widget.h"
#include "settings/settings.h"
#include "support/test_env.h"

namespace mj::pt {

using test::TestEnv;

inline const QString kLawText = QStringList({
                                                u"示例法"_qs,
                                                u"　　第一条 第一条的内容。"_qs,
                                                u"　　第二条 第二条的内容。"_qs,
                                                u"　　第三条 第三条的内容。"_qs,
                                            })
                                    .join(u"\r\n"_qs);

// A question block as a bank file holds it, behind its marker.
inline QString Block(int n, const QString& stem, const QString& answerField, const QString& provider = QString()) {
  return u"\r\n●"_qs + QString::number(n) + u"●"_qs + stem + u"(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs +
         provider + u"■"_qs + answerField;
}

// Field 1 of such a block as the program cuts it.
inline QString Stem(const QString& stem) { return stem + u"(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs; }

inline const QString kProvider = u"\r\n[本题ID及提供者有关信息：]\r\n[提供者姓名或昵称：]某甲"_qs;

struct ItemSpec {
  QString itemid;
  QString answer;
  QString story = u"no"_qs;
  bool valid2 = true;
};

inline void WriteItems(const TestEnv& t, const QString& table, const QList<ItemSpec>& rows, bool withForum = false,
                       const QList<int>& boards = {}) {
  t.mkdir(u"\\dbf"_qs);
  DbfTable tab = DbfTable::create(t.path(u"\\dbf\\"_qs + table), tables::ItemFields(withForum));
  for (qsizetype i = 0; i < rows.size(); ++i) {
    const ItemSpec& s = rows[i];
    const int r = tab.appendRow();
    tab.setText(r, u"filename"_qs, Left(s.itemid, 6));
    tab.setText(r, u"story"_qs, s.story);
    tab.setText(r, u"answer"_qs, s.answer);
    tab.setText(r, u"itemid"_qs, s.itemid);
    tab.setLogical(r, u"valid2"_qs, s.valid2);
    tab.setLogical(r, u"hasselect"_qs, true);
    tab.setNumber(r, u"itemtype"_qs, Val(Mid(s.itemid, 6, 1)));
    if (withForum && i < boards.size() && boards[i] > 0) {
      tab.setNumber(r, u"boardid"_qs, boards[i]);
      tab.setNumber(r, u"topicid"_qs, 1000 + boards[i]);
    }
  }
}

// Directory rows: label, file, flag, total, eligible.
struct DirSpec {
  QString label;
  QString file;
  QString flag;
  int total = 0;
  int eligible = 0;
  int done = 0;
  int right = 0;
  int minutes = 0;
};

inline void WriteDirectory(const TestEnv& t, const QString& table, const QList<DirSpec>& rows) {
  t.mkdir(u"\\dbf"_qs);
  DbfTable tab = DbfTable::create(t.path(u"\\dbf\\"_qs + table), tables::DirectoryFields());
  for (const DirSpec& d : rows) {
    const int r = tab.appendRow();
    tab.setText(r, tables::kDirLabel, d.label);
    if (!d.file.isEmpty()) tab.setText(r, tables::kDirFile, d.file);
    if (!d.flag.isEmpty()) tab.setText(r, tables::kDirFlag, d.flag);
    tab.setNumber(r, tables::kDirTotal, d.total);
    tab.setNumber(r, tables::kDirDone, d.done);
    tab.setNumber(r, tables::kDirRight, d.right);
    tab.setNumber(r, tables::kDirMinutes, d.minutes);
    tab.setNumber(r, tables::kDirEligible, d.eligible);
  }
}

// Field `field` of every row of a table, as text (numbers without decimals).
inline QStringList ColumnOf(const TestEnv& t, const QString& table, const QString& field) {
  const DbfTable tab = DbfTable::open(t.path(u"\\dbf\\"_qs + table));
  QStringList out;
  const int f = tab.fieldIndex(field);
  for (int r : tab.rows()) {
    if (tab.fields()[f].type == 'N')
      out.append(NumText(tab.number(r, f)));
    else if (tab.fields()[f].type == 'L')
      out.append(tab.logical(r, f) ? u"T"_qs : u"F"_qs);
    else
      out.append(tab.text(r, f));
  }
  return out;
}

// The program folder of the practice tests.
//   100011 single choice: 1 B, 2 A (two articles), 3 C (with a provider), 4 D (no 参见)
//   100012 multiple choice: 1 AC, 2 ABD
//   100013 any choice: 1 A
inline void MakePracticeFolder(const TestEnv& t, const QList<ItemSpec>& items = {}, bool withForum = false,
                               const QList<int>& boards = {}) {
  t.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, kLawText);
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"示例题库"_qs + Block(1, u"第一题"_qs, u"答案：B参见《示例法》第1条"_qs) +
                                              Block(2, u"第二题"_qs, u"答案：A参见《示例法》第2条、第3条"_qs) +
                                              Block(3, u"第三题"_qs, u"答案：C参见《示例法》第3条"_qs, kProvider) +
                                              Block(4, u"第四题"_qs, u"答案：D"_qs) + u"\r\n"_qs);
  t.writeGbk(u"\\yibanti\\100012.mmd"_qs, u"示例题库"_qs + Block(1, u"多选一"_qs, u"答案：AC参见《示例法》第1条"_qs) +
                                              Block(2, u"多选二"_qs, u"答案：ABD参见《示例法》第2条"_qs) + u"\r\n"_qs);
  t.writeGbk(u"\\yibanti\\100013.mmd"_qs,
             u"示例题库"_qs + Block(1, u"任选一"_qs, u"答案：A参见《示例法》第1条"_qs) + u"\r\n"_qs);
  QList<ItemSpec> rows = items;
  if (rows.isEmpty())
    rows = {{u"10001100001"_qs, u"B"_qs}, {u"10001100002"_qs, u"A"_qs},  {u"10001100003"_qs, u"C"_qs},
            {u"10001100004"_qs, u"D"_qs}, {u"10001200001"_qs, u"AC"_qs}, {u"10001200002"_qs, u"ABD"_qs},
            {u"10001300001"_qs, u"A"_qs}};
  WriteItems(t, tables::kItems, rows, withForum, boards);
  WriteDirectory(t, tables::kDirectory,
                 {{u"第一部分 示例题库"_qs, {}, u"2-4"_qs, 7, 7},
                  {u"《示例法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs, {}, 4, 4},
                  {u"《示例法》多项选择题"_qs, u"\\yibanti\\100012.mmd"_qs, {}, 2, 2},
                  {u"《示例法》任意选择题"_qs, u"\\yibanti\\100013.mmd"_qs, {}, 1, 1},
                  {u"《示例法》待追加"_qs, {}, {}, 0, 0}});
}

// A practice frame over the folder, in a shown window of its own, with the
// main window's parts recorded.
struct PracticeHarness {
  TestEnv t;
  Settings settings;
  AppState app;
  Directory dir;
  std::unique_ptr<QWidget> host;
  PracticeFrame* frame = nullptr;

  bool gridShown = false;
  QList<bool> gridCalls;  // every show (true) and hide (false) of the grid
  int gridFontSize = 0;
  int listGridShown = 0;
  int lawQueryShown = 0;
  int refreshes = 0;

  explicit PracticeHarness(bool make = true) {
    if (make) MakePracticeFolder(t);
  }

  // The state the entry 内部题库 leaves, with the given scheduling numbers.
  void enterShiTi(int okTimes = 1, int addNum = 1, int passDays = 30) {
    setUp(tables::kDirectory, tables::kItems, okTimes, addNum, passDays);
    ReadData2ItemData(app.DataFolder, app.ItemTable, app.AllItemData);
    SetWorkItemData(app.ItemData, app.AllItemData);
    app.AutoNext = false;
    app.IsSimulated = false;
  }

  // The state of 摸拟试卷: no working index, the answers go straight on.
  void enterCeShi(int okTimes = 1, int addNum = 1, int passDays = 30) {
    setUp(tables::kCsDirectory, tables::kCsItems, okTimes, addNum, passDays);
    ReadData2ItemData(app.DataFolder, tables::kItems, app.AllItemData);
    SetWorkItemData(app.ItemData, app.CsItemData);
    app.AutoNext = true;
    app.IsSimulated = true;
  }

  void setUp(const QString& face, const QString& items, int okTimes, int addNum, int passDays) {
    app.env = t.env;
    app.settings = &settings;
    app.DataFolder = t.path(u"\\dbf"_qs);
    app.LawNameTable = u"33.mmd"_qs;
    app.FaceTable = face;
    app.ItemTable = items;
    app.OkTimes = static_cast<qint16>(okTimes);
    app.AddNum = static_cast<qint16>(addNum);
    app.PassDays = static_cast<qint16>(passDays);
    dir.load(app.DataFolder, face);
    dir.show(GridFormatText(DirectoryMode::ShiTi));
    if (!frame) makeFrame();
  }

  void makeFrame() {
    host = std::make_unique<QWidget>();
    auto* v = new QVBoxLayout(host.get());
    frame = new PracticeFrame(app);
    frame->setVisible(false);
    v->addWidget(frame);
    PracticeFrame::MainWindowParts parts;
    parts.showPracticeFace = [] {};
    parts.directory = [this] { return &dir; };
    parts.refreshDirectory = [this] { ++refreshes; };
    parts.showDirectoryGrid = [this](bool v) {
      gridShown = v;
      gridCalls.append(v);
    };
    parts.setDirectoryFontSize = [this](int s) { gridFontSize = s; };
    parts.showListGrid = [this](bool) { ++listGridShown; };
    parts.hideFrames = [this] { frame->setVisible(false); };
    parts.refreshMain = [] {};
    frame->setMainWindowParts(std::move(parts));
    frame->lawQueryHook = [this] { ++lawQueryShown; };
    host->resize(1000, 700);
    host->show();
  }

  PracticeSession& session() { return frame->session(); }
  PracticeRun& run() { return app.Run; }
  Form3* form3() { return frame->answerWindow(); }
  QString upper() { return form3()->boxText(0); }
  QString lower() { return form3()->boxText(1); }

  // The record of a question in a table.
  QString storyOf(const QString& id, const QString& table = tables::kItems) {
    const DbfTable tab = DbfTable::open(t.path(u"\\dbf\\"_qs + table));
    for (int r : Select(tab, {{u"itemid"_qs, id}})) return tab.trimmedText(r, u"story"_qs);
    return u"<none>"_qs;
  }

  // Clicks the answer button with that caption.
  void answer(const QString& caption) { frame->Command2[AnswerCaptions().indexOf(caption)]->click(); }
};

}  // namespace mj::pt
