#pragma once
// The state the main window shares with every other window: the program
// folder and services, the question index, the start-up flags, the tables
// of the directory in use. Other windows read it through the main window.

#include <QString>
#include <QStringList>
#include <functional>

#include "bank/item_index.h"
#include "platform/env.h"
#include "practice/practice_run.h"

namespace mj {

class Settings;

// RunState values.
namespace runstate {
constexpr qint16 kInItem = 1;    // inside the work on one item of an update package
constexpr qint16 kUpdating = 2;  // an update package is being applied
constexpr qint16 kNormal = 3;    // after a normal start
}  // namespace runstate

struct AppState {
  Env env;
  // The user's settings (owned by the main window).
  Settings* settings = nullptr;

  // Screen factors: screen width / 12000 and height / 9000 (in twips).
  double ScaleX = 1.0;
  double ScaleY = 1.0;

  // The question index (items.mmd) and the working copy of the current mode.
  ItemIndex ItemData;
  ItemIndex AllItemData;
  ItemIndex CsItemData;  // never filled: copying it empties ItemData
  // What kept items.mmd from being read whole at start-up; empty when it was
  // read whole. The index then holds only what could be read, and the day's
  // count must not be stamped from it.
  QString ItemIndexProblem;

  QStringList NumeralTable;  // Chinese numerals of 0..2000
  QStringList TypeTitle;     // "", "一、单项选择题", "二、多项选择题", "三、任意选择题"

  // Links of the news file, read once at start.
  QString NewsLink1, NewsLink2, NewsLink3, NewsLink4;

  qint16 RunState = 0;
  // The IDs an update package has changed so far, newest first; kept in
  // the day file of \更新的题 when the update is broken off.
  QString UpdatedIds;
  // Set while an update package is taken in: writes what the update has
  // done so far, with today's day file, when the close request goes on.
  std::function<void()> FlushUpdate;
  bool StartedOk = false;
  bool HasIndex = false;

  // The program that opens format documents (\ini\WenShu.ini).
  QString WenShuProgram;

  // Tables of the current mode, all in DataFolder.
  QString DataFolder;    // \dbf
  QString LawNameTable;  // "33.mmd"
  QString FaceTable;     // directory table
  QString ItemTable;     // item table

  // Scheduling numbers of the current mode (16-bit, one set at a time).
  qint16 OkTimes = 0;
  qint16 AddNum = 0;
  qint16 PassDays = 0;
  // Mode flags of the current directory.
  bool IsSimulated = false;  // 摸拟试卷 and 查卷 work on csface.mmd / csitems.mmd
  bool IsChaJuan = false;    // 查卷: a wrong oldest entry makes a question due at once
  bool InUpdateList = false;  // list runs of the day files: no records written
  bool InOtherList = false;
  bool AutoNext = false;      // simulated papers and 查卷 go on without the answer window

  // The practice run (the main window owns it).
  PracticeRun Run;
};

}  // namespace mj
