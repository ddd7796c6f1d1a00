#pragma once
// The three menu entries that open a directory: 内部题库 (ShiTi), 摸拟试卷
// (CeShi) and 查卷 (ChaJuan). Each sets the mode of the main window, reloads
// the scheduling numbers, counts the due questions of every bank when that is
// needed, and shows the directory grid. The steps run over the shared state;
// what they need of the main window and of the settings goes through the two
// small interfaces below.

#include <QString>

#include "bank/eligibility.h"
#include "practice/app_state.h"
#include "practice/directory.h"

namespace mj {

// The main window as the entries see it.
class DirectoryEntryUi {
 public:
  virtual ~DirectoryEntryUi() = default;
  // True when the data set is there; otherwise the unpack entry has run.
  virtual bool needsData() = 0;
  // The news labels hidden, the grid face with its label area shown, the
  // grid's text colour black.
  virtual void prepareGridFace() = 0;
  virtual void setWaitCursor(bool on) = 0;
  // The frames of the client area hidden.
  virtual void hideFrames() = 0;
  // Label7 with the text and ProgressBar1 shown, the window refreshed.
  virtual void showCounting(const QString& text) = 0;
  virtual void setProgressMaximum(int maximum) = 0;
  virtual void setProgressValue(int value) = 0;
  // Label7 and ProgressBar1 hidden.
  virtual void hideCounting() = 0;
  // The grid shows the directory (its header, rows, heights and looks), the
  // column widths scaled by ScaleX, the window refreshed.
  virtual void showDirectory(const Directory& directory) = 0;
};

// The settings as the entries see them.
class SchedulingSettings {
 public:
  virtual ~SchedulingSettings() = default;
  // Reads \ini\userself.ini again.
  virtual void reload() = 0;
  // The scheduling number of field i (0 to 5) as the settings window shows it.
  virtual int number(int index) const = 0;
  virtual qint16 stLastUpdate() const = 0;
  virtual void setStLastUpdate(qint16 stamp) = 0;
  virtual void setTsLastUpdate(qint16 stamp) = 0;
  // Writes the settings file.
  virtual void save() = 0;
};

class Settings;

// The program's settings object behind the entries: a reload reads the file
// the way the settings window does when it loads (with its fallback when the
// file can be neither read nor created), the numbers are those its fields
// show, a save writes the whole file.
class SettingsScheduling : public SchedulingSettings {
 public:
  SettingsScheduling(Settings& settings, const Env& env) : settings_(settings), env_(env) {}
  void reload() override;
  int number(int index) const override;
  qint16 stLastUpdate() const override;
  void setStLastUpdate(qint16 stamp) override;
  void setTsLastUpdate(qint16 stamp) override;
  void save() override;

 private:
  Settings& settings_;
  Env env_;
};

// Texts of Label7 while a count runs.
inline const QString kCountingShiTi =
    QStringLiteral("隔天，或有做题记录，则要统计一次满足你的设置条件的一般试题数，请稍候……");
inline const QString kCountingCeShi = QStringLiteral("正在统计一次满足你的设置条件的模拟试题数，请稍候……");
inline const QString kCountingChaJuan =
    QStringLiteral("查卷只做上次做错的试题和未做过的试题，正在统计一下满足你的设置条件的模拟试题数，请稍候……");

// The whole entry of a mode. Returns false when the data set is missing (the
// unpack entry ran instead and nothing else changed).
bool EnterDirectory(AppState& app, DirectoryMode mode, DirectoryEntryUi& ui, SchedulingSettings& settings);

inline bool ShiTi(AppState& app, DirectoryEntryUi& ui, SchedulingSettings& settings) {
  return EnterDirectory(app, DirectoryMode::ShiTi, ui, settings);
}
inline bool CeShi(AppState& app, DirectoryEntryUi& ui, SchedulingSettings& settings) {
  return EnterDirectory(app, DirectoryMode::CeShi, ui, settings);
}
inline bool ChaJuan(AppState& app, DirectoryEntryUi& ui, SchedulingSettings& settings) {
  return EnterDirectory(app, DirectoryMode::ChaJuan, ui, settings);
}

// The scheduling numbers of the current mode as a schedule for today.
Schedule CurrentSchedule(const AppState& app);

}  // namespace mj
