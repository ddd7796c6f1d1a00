#pragma once
// The main window: the menu, the three faces of its client area (the start
// page, the grids, the practice frame), the start-up in its fixed order and
// the close request.

#include <QList>
#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>

#include "log/news.h"
#include "papers/paper_state.h"
#include "platform/dbftable.h"
#include "practice/app_state.h"

class QAction;
class QLabel;
class QMenu;
class QProgressBar;
class QStackedWidget;
class QTableWidget;
class QTextEdit;
class QTimer;

namespace mj {

class DirectoryGrid;
class LogEntries;
class SearchEntries;
class LogGridWidget;
enum class DirectoryMode;
class Form4;
class Form5;
class Form21;
class Form8;
class Form9;
class Form10;
class Form13;
class PracticeFrame;
class Form17;
class Form18;
class Form15;
class Form6;
class Settings;

class Form1 : public QMainWindow {
  Q_OBJECT
 public:
  explicit Form1(const Env& env, QWidget* parent = nullptr);
  ~Form1() override;

  enum class LoadOutcome {
    Running,  // start-up ran to its end
    Stopped,  // no icon: the window stays empty, without index
    EndNow,   // the data package was started: end the application at once
  };
  // The start-up, steps 1 to 18.
  LoadOutcome load();

  AppState& state() { return app_; }
  const Env& env() const { return app_.env; }

  // Runs the unpack entry instead of the caller's work when the data set is
  // missing; true when the data set is there.
  bool needsData();
  // The menu entries that need the data set (内部题库, 摸拟试卷, 查卷, 外部题库,
  // 添加新法律, 模糊题, 法律法规查询, 设置) are wired through these two, so that
  // each runs the unpack entry instead of its work when \yibanti is missing.
  // An entry's work runs only after needsData(); a submenu checks when it
  // opens, and without the data set it closes again at once.
  void onDataEntry(QAction* entry, std::function<void()> work);
  void onDataSubmenu(QMenu* menu);

  // The menu entries 内部题库, 摸拟试卷 and 查卷: the directory of the mode,
  // counted when due, on the grid face.
  void openDirectory(DirectoryMode mode);

  // The law query window, created on first use.
  Form6* lawQueryWindow();
  // The paper window (外部题库) and the find/replace window it shares with
  // the law query, created on first use; the state the check of a paper
  // leaves for its practice.
  Form10* paperWindow();
  Form13* findWindow();
  // The question editor of 修改/注释, created on first use.
  Form9* editorWindow();
  // The knowledge-point window of 知识点管理, created on first use.
  Form17* knowledgeWindow();
  PaperState& paperState() { return paper_; }
  // The window that adds a new law, created on first use.
  Form15* newLawWindow();

  // Faces of the client area.
  void showStartPage();
  void showGrids();
  void showPracticeFrame();
  QWidget* currentFace() const;

  // The F1 key of any window ends here with the window's help number; the
  // help window shows that window's section unless a handler takes it.
  void showHelpOfForm(const QString& formName);
  std::function<void(int number)> helpHandler;
  Form18* helpWindow() const { return help_; }

  // The settings window, created on first use.
  Form4* settingsWindow();
  // The forecast window of its "分析预测", created on first use.
  Form5* forecastWindow();
  // The statistics window of 帮助/做题统计, created on first use.
  Form21* statsWindow();

  // The entries 题目搜索 and 错题本 with their windows.
  SearchEntries* searchEntries() const { return searchEntries_; }

  // Observes the start-up: called with each step number as it begins.
  std::function<void(int step)> onStartupStep;

  // Applies the notices of the local news file to the labels of the start page.
  void showNotices();
  // The labels of the start page visible (those with a caption) or hidden.
  void ShowNewsLabels(bool visible);
  // A click on a notice with a link: opened only when it is a web address or
  // a help document of the program (the box says why not otherwise).
  void openNoticeLink(const QString& link);

  // Menu, in menu order.
  QAction* ShiTi = nullptr;
  QAction* CeShi = nullptr;
  QAction* ChaJuan = nullptr;
  QAction* SouTi = nullptr;  // 题目搜索
  QAction* OutShiTi = nullptr;
  QAction* zsd = nullptr;
  QAction* AddNewLaw = nullptr;
  QMenu* MyGuess = nullptr;
  QAction* DoneGuess = nullptr;
  QAction* HelpGuess = nullptr;
  QMenu* AutoUpdate = nullptr;
  QAction* DoneNewItem = nullptr;
  QAction* DoneNewByLawName = nullptr;
  QAction* NewerProgram = nullptr;
  QAction* Help4New = nullptr;
  QAction* RiZhi = nullptr;
  QAction* CuoTiBen = nullptr;  // 错题本
  QAction* FGCX = nullptr;
  QMenu* TxtFormat = nullptr;
  QAction* OpenFormatFile = nullptr;
  QAction* CfgOpenPro = nullptr;
  QAction* MyConfigMenu = nullptr;
  QMenu* Help = nullptr;
  QAction* HelpWeb = nullptr;
  QAction* HelpYou = nullptr;
  QAction* TongJi = nullptr;  // 做题统计
  QAction* MmExit = nullptr;

  // Start page.
  QWidget* startPage = nullptr;
  QLabel* Picture1 = nullptr;
  QLabel* Label12 = nullptr;  // the slogan
  QList<QLabel*> Label14;     // notices 0..24
  // Grid face.
  QWidget* gridPage = nullptr;
  DirectoryGrid* MSFlexGrid1 = nullptr;  // directory of banks
  LogGridWidget* MSFlexGrid2 = nullptr;  // lists of days and questions
  QLabel* Label7 = nullptr;              // text while a count runs
  QProgressBar* ProgressBar1 = nullptr;
  // Practice face.
  QWidget* practicePage = nullptr;
  QList<QWidget*> Frame1;             // frames of the client area; index 3 is the practice frame
  PracticeFrame* practice = nullptr;  // Frame1(3), the practice frame with its run
  QTextEdit* Text3 = nullptr;         // the question box

  QTimer* Timer1 = nullptr;  // one second, while the program runs
  Form8* splash() const { return splash_; }

  // The fetch of the news file; pending while it runs.
  NewsDownload* newsDownload() const { return news_; }
  // The entries of the practice log and the update packages.
  LogEntries* logEntries() const { return logEntries_; }

 protected:
  void closeEvent(QCloseEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void changeEvent(QEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildMenu();
  void buildFaces();
  void wirePractice();
  void wireLawQuery();
  void wirePapers();
  void wireKnowledge();
  void step(int n);
  void applyTitle();
  void unloadSplash();
  // All entries of the menu bar in view: closer together when the window
  // is too narrow for them (a large system font on a 1024 pixel screen).
  void fitMenuBar();
  // After a run of the law query's 相关NN题: the face and the run of before.
  void restoreBeforeRelatedRun();
  // The end of the start once the news file came (or did not): the
  // notices, the splash gone, StartedOk.
  void finishStart(bool showNews);

  AppState app_;
  std::unique_ptr<Settings> settings_;
  Form4* form4_ = nullptr;
  Form5* form5_ = nullptr;
  Form21* form21_ = nullptr;
  bool inDirectoryEntry_ = false;  // a count lets events through: no second entry meanwhile
  QStackedWidget* faces_ = nullptr;
  Form8* splash_ = nullptr;
  Form18* help_ = nullptr;
  Form6* form6_ = nullptr;
  struct BeforeRelatedRun {
    QWidget* face = nullptr;
    bool directoryShown = false;
    std::optional<PracticeRun> run;  // the run that was open, with its counters
  };
  std::optional<BeforeRelatedRun> beforeRelatedRun_;
  int naturalMenuWidth_ = 0;  // the menu bar's width at its normal spacing
  Form10* form10_ = nullptr;
  Form13* form13_ = nullptr;
  Form9* form9_ = nullptr;
  Form17* form17_ = nullptr;
  PaperState paper_;
  Form15* form15_ = nullptr;
  DbfTable lawNames_;  // kept open from the start: the law-name table is readable
  QList<Notice> notices_;
  NewsDownload* news_ = nullptr;
  LogEntries* logEntries_ = nullptr;
  SearchEntries* searchEntries_ = nullptr;
  bool closing_ = false;
};

}  // namespace mj
