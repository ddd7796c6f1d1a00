#include "practice/directory_entries.h"

#include "bank/eligibility.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "settings/settings.h"

namespace mj {

void SettingsScheduling::reload() { settings_.loadForSettingsWindow(env_); }
int SettingsScheduling::number(int index) const { return settings_.number(index); }
qint16 SettingsScheduling::stLastUpdate() const { return settings_.stLastUpdate(); }
void SettingsScheduling::setStLastUpdate(qint16 stamp) { settings_.setStLastUpdate(stamp); }
void SettingsScheduling::setTsLastUpdate(qint16 stamp) { settings_.setTsLastUpdate(stamp); }
void SettingsScheduling::save() { settings_.CreateIni(env_); }

Schedule CurrentSchedule(const AppState& app) {
  return Schedule{app.OkTimes, app.AddNum, app.PassDays, app.IsChaJuan, app.env.today()};
}

bool EnterDirectory(AppState& app, DirectoryMode mode, DirectoryEntryUi& ui, SchedulingSettings& settings) {
  const bool simulated = mode != DirectoryMode::ShiTi;
  // 1. The data set.
  if (!ui.needsData()) return false;
  // 2. The grid face instead of the start page.
  ui.prepareGridFace();
  // 3. The working index: the whole bank, or nothing for the papers.
  SetWorkItemData(app.ItemData, simulated ? app.CsItemData : app.AllItemData);
  // 4. Mode flags.
  app.IsSimulated = simulated;
  app.IsChaJuan = mode == DirectoryMode::ChaJuan;
  app.InUpdateList = false;
  app.InOtherList = false;
  // 5. The header of the mode.
  const QString format = GridFormatText(mode);
  // 6. Moving on without the answer window; the tables of the mode.
  app.AutoNext = simulated;
  app.DataFolder = app.env.path(QStringLiteral("\\dbf"));
  app.FaceTable = simulated ? tables::kCsDirectory : tables::kDirectory;
  app.ItemTable = simulated ? tables::kCsItems : tables::kItems;
  // 7. The scheduling numbers, from the settings as saved.
  ui.setWaitCursor(true);
  settings.reload();
  const int first = simulated ? 3 : 0;
  app.OkTimes = static_cast<qint16>(settings.number(first));
  app.AddNum = static_cast<qint16>(settings.number(first + 1));
  app.PassDays = static_cast<qint16>(settings.number(first + 2));
  if (mode == DirectoryMode::ChaJuan) {
    app.OkTimes = -10;
    app.AddNum = 1;
    app.PassDays = -10;
  }
  // 8. The practice frames are hidden under the grid.
  ui.hideFrames();
  // 9. The count of due questions: the internal bank once a day, the papers
  // every time.
  const qint16 today = DayStamp(app.env.today());
  const CountProgress progress{[&ui](int m) { ui.setProgressMaximum(m); }, [&ui](int v) { ui.setProgressValue(v); }};
  if (!simulated) {
    if (today != settings.stLastUpdate()) {
      // An index that items.mmd could not give at all would count every
      // bank empty: the numbers of the last count stay instead. An index
      // read in part is counted, but the day is not stamped, so that the
      // count runs again once the table is whole.
      const bool whole = app.ItemIndexProblem.isEmpty();
      bool counted = false;
      if (whole || !app.ItemData.isEmpty()) {
        ui.showCounting(kCountingShiTi);
        ui.setWaitCursor(true);
        counted =
            NewIniDbfData(app.DataFolder, app.FaceTable, app.ItemTable, app.ItemData, CurrentSchedule(app), progress);
      }
      if (counted && whole) {
        settings.setStLastUpdate(today);
        settings.save();
      }
    }
  } else {
    ui.showCounting(mode == DirectoryMode::CeShi ? kCountingCeShi : kCountingChaJuan);
    ui.setWaitCursor(true);
    if (IniDbfData(app.DataFolder, app.FaceTable, app.ItemTable, CurrentSchedule(app), progress)) {
      settings.setTsLastUpdate(today);
      settings.save();
    }
  }
  // 10. The directory from its table, shown as a tree.
  Directory directory;
  directory.load(app.DataFolder, app.FaceTable);
  ui.hideCounting();
  directory.show(format);
  // 11. The grid shows the directory.
  ui.showDirectory(directory);
  ui.setWaitCursor(false);
  return true;
}

}  // namespace mj
