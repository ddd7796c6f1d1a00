#include "app/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QScreen>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

#include "app/format_documents.h"
#include "app/log_entries_window.h"
#include "app/search_entries_window.h"
#include "app/splash_window.h"
#include "app/startup.h"
#include "bank/item_index.h"
#include "bank/table_check.h"
#include "bank/tables.h"
#include "knowledge/knowledge_window.h"
#include "law/law_query_window.h"
#include "law/new_law_window.h"
#include "law/numerals.h"
#include "log/log_grid_widget.h"
#include "papers/find_replace_window.h"
#include "papers/paper_folder.h"
#include "papers/paper_practice_window.h"
#include "papers/paper_window.h"
#include "papers/question_editor_window.h"
#include "platform/desktop_services_widget.h"
#include "platform/named_controls_widget.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/window_placement_widget.h"
#include "platform/vbtext.h"
#include "practice/answer_window.h"
#include "practice/directory_entries.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "bank/forecast_window.h"
#include "log/practice_stats_window.h"
#include "settings/help.h"
#include "settings/help_window.h"
#include "settings/settings.h"
#include "settings/settings_window.h"
#include "settings/text_style_widget.h"

namespace mj {

namespace {
const QString kAppTitle = QStringLiteral("明镜学习伴侣") + QStringLiteral("3.10");
}

Form1::Form1(const Env& env, QWidget* parent) : QMainWindow(parent) {
  setObjectName(QStringLiteral("Form1"));
  app_.env = env;
  settings_ = std::make_unique<Settings>();
  app_.settings = settings_.get();
  setWindowTitle(kAppTitle);
  buildMenu();
  buildFaces();
  Timer1 = new QTimer(this);
  Timer1->setInterval(1000);
  wirePractice();
  wireLawQuery();
  logEntries_ = new LogEntries(*this);
  wirePapers();
  searchEntries_ = new SearchEntries(*this);
  wireKnowledge();
  // The question box follows the text style of the settings.
  connect(settings_.get(), &Settings::styleChanged, this, [this] { ApplyTextStyle(Text3, settings_->style()); });
  // Key preview: F1 anywhere in the program reaches the help handler.
  qApp->installEventFilter(this);
}

Form1::~Form1() {
  qApp->removeEventFilter(this);
  delete splash_;
}

Form4* Form1::settingsWindow() {
  if (!form4_) {
    form4_ = new Form4(env(), *settings_, this, this);
    form4_->setForecastHook([this] { forecastWindow()->openWindow(); });
  }
  return form4_;
}

Form5* Form1::forecastWindow() {
  if (!form5_) form5_ = new Form5(env(), *settings_, settingsWindow(), this);
  return form5_;
}

Form21* Form1::statsWindow() {
  if (!form21_) form21_ = new Form21(env(), *settings_, this);
  return form21_;
}

void Form1::buildMenu() {
  QMenuBar* bar = menuBar();
  auto entry = [bar](const QString& name, const QString& caption) { return NamedAction(bar, name, caption); };
  auto submenu = [bar](const QString& name, const QString& caption) {
    QMenu* m = bar->addMenu(caption);
    m->setObjectName(name);
    m->menuAction()->setObjectName(name);
    return m;
  };
  auto item = [](QMenu* m, const QString& name, const QString& caption) { return NamedAction(m, name, caption); };

  ShiTi = entry(QStringLiteral("ShiTi"), QStringLiteral("内部题库"));
  CeShi = entry(QStringLiteral("CeShi"), QStringLiteral("摸拟试卷"));
  ChaJuan = entry(QStringLiteral("ChaJuan"), QStringLiteral("查卷"));
  SouTi = entry(QStringLiteral("SouTi"), QStringLiteral("题目搜索"));
  OutShiTi = entry(QStringLiteral("OutShiTi"), QStringLiteral("外部题库"));
  zsd = entry(QStringLiteral("zsd"), QStringLiteral("知识点管理"));
  AddNewLaw = entry(QStringLiteral("AddNewLaw"), QStringLiteral("添加新法律"));
  MyGuess = submenu(QStringLiteral("MyGuess"), QStringLiteral("模糊题"));
  DoneGuess = item(MyGuess, QStringLiteral("DoneGuess"), QStringLiteral("做不太确定的试题"));
  HelpGuess = item(MyGuess, QStringLiteral("HelpGuess"), QStringLiteral("本功能说明"));
  AutoUpdate = submenu(QStringLiteral("AutoUpdate"), QStringLiteral("自动更新"));
  DoneNewItem = item(AutoUpdate, QStringLiteral("DoneNewItem"), QStringLiteral("按日期做刚更新的试题"));
  DoneNewByLawName = item(AutoUpdate, QStringLiteral("DoneNewByLawName"), QStringLiteral("按法律名做刚更新的试题"));
  NewerProgram = item(AutoUpdate, QStringLiteral("NewerProgram"), QStringLiteral("选新题库文件并更新进系统题库"));
  Help4New = item(AutoUpdate, QStringLiteral("Help4New"), QStringLiteral("本功能说明"));
  RiZhi = entry(QStringLiteral("RiZhi"), QStringLiteral("做题日志"));
  CuoTiBen = entry(QStringLiteral("CuoTiBen"), QStringLiteral("错题本"));
  FGCX = entry(QStringLiteral("FGCX"), QStringLiteral("法律法规查询"));
  TxtFormat = submenu(QStringLiteral("TxtFormat"), QStringLiteral("文书格式"));
  OpenFormatFile = item(TxtFormat, QStringLiteral("OpenFormatFile"), QStringLiteral("打开格式文书文件"));
  CfgOpenPro = item(TxtFormat, QStringLiteral("CfgOpenPro"), QStringLiteral("设置打开格式文书文件的程序"));
  MyConfigMenu = entry(QStringLiteral("MyConfigMenu"), QStringLiteral("设置"));
  Help = submenu(QStringLiteral("Help"), QStringLiteral("帮助"));
  HelpWeb = item(Help, QStringLiteral("HelpWeb"), QStringLiteral("支持站点"));
  HelpYou = item(Help, QStringLiteral("HelpYou"), QStringLiteral("联机帮助"));
  TongJi = item(Help, QStringLiteral("TongJi"), QStringLiteral("做题统计"));
  MmExit = entry(QStringLiteral("MmExit"), QStringLiteral("退出"));

  // Entries that need the data set are wired with onDataEntry.
  onDataEntry(MyConfigMenu, [this] { settingsWindow()->openWindow(); });
  onDataEntry(ShiTi, [this] { openDirectory(DirectoryMode::ShiTi); });
  onDataEntry(CeShi, [this] { openDirectory(DirectoryMode::CeShi); });
  onDataEntry(ChaJuan, [this] { openDirectory(DirectoryMode::ChaJuan); });
  onDataEntry(TongJi, [this] { statsWindow()->openWindow(); });
  onDataSubmenu(MyGuess);

  connect(HelpGuess, &QAction::triggered, this, [this] {
    env().msgBox(
        QStringLiteral(
            "如果您在做题时先点一下“也许是……”则程序会作出记录，并按时期、对、错进行分类，将来您可以有条件的进行复习。"),
        0, QStringLiteral("模糊题功能说明"));
  });
  connect(Help4New, &QAction::triggered, this,
          [this] { ShellOpen(env(), env().path(QStringLiteral("\\readme\\autonewer.htm"))); });
  // Opening the menu "文书格式" is its click: the unpack entry.
  connect(TxtFormat, &QMenu::aboutToShow, this, [this] { mj::TxtFormat(app_); });
  connect(OpenFormatFile, &QAction::triggered, this, [this] { mj::OpenFormatFile(app_); });
  connect(CfgOpenPro, &QAction::triggered, this, [this] { mj::CfgOpenPro(app_); });
  connect(Help, &QMenu::aboutToShow, this, [this] {
    if (!DirExists(env().path(QStringLiteral("\\readme")))) mj::TxtFormat(app_);
  });
  connect(HelpWeb, &QAction::triggered, this, [this] {
    const QString site = SupportSite(env());
    if (site.isEmpty())
      env().msgBox(QStringLiteral("没有设置支持站点的地址（见") + env().path(kSiteFile) + QStringLiteral("）。"));
    else
      ShellOpen(env(), site);  // which says when nothing opens the address
  });
  connect(HelpYou, &QAction::triggered, this, [this] {
    env().msgBox(QStringLiteral("    你可以在每个界面上按F1功能键调出当") + kCrLf +
                 QStringLiteral("前界面的详细说明，注意，带有“●”号的") + kCrLf +
                 QStringLiteral("功能在界面里不能直接看出来，为必看项。"));
  });
  connect(MmExit, &QAction::triggered, this, &QWidget::close);
}

void Form1::buildFaces() {
  faces_ = new QStackedWidget(this);
  setCentralWidget(faces_);

  // Start page: picture, slogan, notices.
  startPage = new QWidget;
  startPage->setObjectName(QStringLiteral("startPage"));
  auto* sv = new QVBoxLayout(startPage);
  Picture1 = new QLabel;
  Picture1->setAlignment(Qt::AlignCenter);
  Picture1->setMinimumHeight(120);
  sv->addWidget(Picture1, 3);
  Label12 = new QLabel;
  Label12->setObjectName(QStringLiteral("Label12"));
  Label12->setAlignment(Qt::AlignCenter);
  Label12->setWordWrap(true);
  QFont big = Label12->font();
  big.setPointSize(18);
  big.setBold(true);
  Label12->setFont(big);
  sv->addWidget(Label12);
  auto* noticeGrid = new QGridLayout;
  for (int i = 0; i < kNoticeCount; ++i) {
    auto* l = new QLabel;
    l->setObjectName(QStringLiteral("Label14_%1").arg(i));
    l->setWordWrap(true);
    l->setVisible(false);
    l->setMouseTracking(true);
    Label14.append(l);
    noticeGrid->addWidget(l, i / 2, i % 2);
  }
  sv->addLayout(noticeGrid, 2);
  startPage->setMouseTracking(true);
  faces_->addWidget(startPage);

  // Grid face: the directory and the lists.
  gridPage = new QWidget;
  gridPage->setObjectName(QStringLiteral("gridPage"));
  auto* gv = new QVBoxLayout(gridPage);
  Label7 = new QLabel;
  Label7->setObjectName(QStringLiteral("Label7"));
  Label7->setVisible(false);
  gv->addWidget(Label7);
  ProgressBar1 = new QProgressBar;
  ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
  ProgressBar1->setVisible(false);
  gv->addWidget(ProgressBar1);
  MSFlexGrid1 = new DirectoryGrid;
  MSFlexGrid1->setEnv(&app_.env);
  MSFlexGrid2 = new LogGridWidget;
  for (QTableWidget* g : {static_cast<QTableWidget*>(MSFlexGrid1), static_cast<QTableWidget*>(MSFlexGrid2)}) {
    g->setEditTriggers(QAbstractItemView::NoEditTriggers);
    g->verticalHeader()->setVisible(false);
    g->setVisible(false);
    gv->addWidget(g, 1);
  }
  faces_->addWidget(gridPage);

  // Practice face: the frames of the client area; index 3 is the practice frame.
  practicePage = new QWidget;
  practicePage->setObjectName(QStringLiteral("practicePage"));
  auto* pv = new QVBoxLayout(practicePage);
  for (int i = 0; i < 3; ++i) {
    auto* f = new QWidget;
    f->setObjectName(QStringLiteral("Frame1_%1").arg(i));
    f->setVisible(false);
    pv->addWidget(f);
    Frame1.append(f);
  }
  practice = new PracticeFrame(app_);
  practice->setVisible(false);
  pv->addWidget(practice);
  Frame1.append(practice);
  Text3 = practice->Text3;
  faces_->addWidget(practicePage);
  faces_->setCurrentWidget(startPage);
}

void Form1::wirePractice() {
  PracticeFrame::MainWindowParts parts;
  parts.showPracticeFace = [this] { showPracticeFrame(); };
  parts.directory = [this] { return &MSFlexGrid1->directory(); };
  parts.refreshDirectory = [this] { MSFlexGrid1->refresh(); };
  parts.showDirectoryGrid = [this](bool visible) {
    if (visible) showGrids();
    MSFlexGrid1->setVisible(visible);
  };
  parts.setDirectoryFontSize = [this](int size) {
    QFont f = MSFlexGrid1->font();
    if (size > 0) f.setPointSize(size);
    MSFlexGrid1->setFont(f);
  };
  parts.showListGrid = [this](bool hideFrameParts) {
    showGrids();
    MSFlexGrid2->setVisible(true);
    if (hideFrameParts) DoHide(Frame1);
  };
  parts.hideFrames = [this] { DoHide(Frame1); };
  parts.refreshMain = [this] { update(); };
  practice->setMainWindowParts(std::move(parts));
  // A bank of the directory starts a run; the clock ticks once a second.
  connect(MSFlexGrid1, &DirectoryGrid::leafClicked, this,
          [this](int row) { practice->session().startFromDirectory(row); });
  connect(Timer1, &QTimer::timeout, this, [this] { practice->session().Timer1_Timer(); });
}

Form6* Form1::lawQueryWindow() {
  if (!form6_) {
    form6_ = new Form6(env(), &app_.AllItemData, this);
    // 相关NN题: a run over the article's questions, which leads back here.
    form6_->onRelatedRun = [this](const QString& ids, int) {
      // What the main window shows now comes back when the run ends: the
      // start page, the directory, or the run that was open.
      if (!beforeRelatedRun_)
        beforeRelatedRun_ = BeforeRelatedRun{currentFace(), !MSFlexGrid1->isHidden(), practice->session().openRun()};
      if (!practice->startListRun(ids, true)) restoreBeforeRelatedRun();
    };
    // Ctrl on an article leads to its knowledge points.
    form6_->query().knowledgeHook = [this](const QString& title, double article) {
      knowledgeWindow()->showArticle(title, article);
    };
    form6_->setSeekAndReplaceHook([this] {
      findWindow()->openFor(kFindFromLawQuery, form6_->RichTextBox1, form6_, form6_->selectedViewText());
    });
  }
  return form6_;
}

void Form1::restoreBeforeRelatedRun() {
  if (!beforeRelatedRun_) return;
  BeforeRelatedRun before = std::move(*beforeRelatedRun_);
  beforeRelatedRun_.reset();
  if (before.run) {
    practice->session().resumeRun(std::move(*before.run));
    return;
  }
  faces_->setCurrentWidget(before.face);
  MSFlexGrid1->setVisible(before.directoryShown);
}

Form15* Form1::newLawWindow() {
  if (!form15_) {
    form15_ = new Form15(env(), this);
    // The law query shows a new law at once: its tree is read again. The law
    // files themselves are read afresh whenever they change.
    connect(form15_, &Form15::lawAdded, this, [this] {
      if (form6_) form6_->reloadTree();
    });
  }
  return form15_;
}

void Form1::wireLawQuery() {
  onDataEntry(AddNewLaw, [this] { newLawWindow()->openWindow(); });
  onDataEntry(FGCX, [this] {
    Form6* f = lawQueryWindow();
    f->entryMode = 1;
    f->showAgain();
  });
  // The end of a run from the law query shows the law query again; one
  // from the knowledge points goes back to them.
  practice->lawQueryHook = [this] {
    if (form17_ && form17_->inRelatedRun()) {
      restoreBeforeRelatedRun();
      form17_->relatedRunEnded();
      return;
    }
    restoreBeforeRelatedRun();
    Form6* f = lawQueryWindow();
    f->FromLawQuery = false;
    f->showAgain();
  };
  // 法律查询 of the answer window: the law query at the current question's article.
  practice->setLawQueryHook([this] { lawQueryWindow()->openAtAnswer(practice->answerWindow()->boxText(1)); });
  // A double click on an article printed under the answer opens it in the law query.
  practice->answerWindow()->answerTextDoubleClicked = [this](const QString& text, int position, bool ctrl) {
    lawQueryWindow()->OpenLawFromShownAnswer(text, position, ctrl);
  };
}

Form10* Form1::paperWindow() {
  if (!form10_) {
    form10_ = new Form10(env(), paper_, this);
    form10_->setFindWindow(findWindow());
    // 返回 of the paper window brings the main window back.
    form10_->onReturn = [this] { show(); };
    // The practice of a paper: the boxes in the style of the practice boxes,
    // 法律查询 and the printed articles lead to the law query.
    Form14* run = form10_->practiceWindow();
    run->setSettings(settings_.get());
    run->lawQueryHook = [this](const QString& text) { lawQueryWindow()->openAtAnswer(text); };
    run->openLawHook = [this](const QString& shown, int position, bool ctrl) {
      lawQueryWindow()->OpenLawFromShownAnswer(shown, position, ctrl);
    };
  }
  return form10_;
}

Form13* Form1::findWindow() {
  if (!form13_) form13_ = new Form13(env(), this);
  return form13_;
}

Form9* Form1::editorWindow() {
  if (!form9_) {
    form9_ = new Form9(env(), this);
    // A saved question: the index rows follow the table, and the run shows
    // the new text, so that the next answer uses the new key.
    form9_->onSaved = [this](const QString&, const std::optional<ItemRow>& row, const QString& answerText) {
      if (row) {
        UpdateIndexRow(app_.ItemData, *row);
        UpdateIndexRow(app_.AllItemData, *row);
      }
      practice->session().reloadCurrentQuestion(answerText);
    };
  }
  return form9_;
}

void Form1::wirePapers() {
  // 修改/注释 of the answer window: the editor on the question of the run.
  practice->setEditorHook([this] { editorWindow()->editQuestion(practice->session().currentId()); });
  // 外部题库: a paper chosen in the folder of papers, loaded into the paper
  // window over the hidden main window. Cancelling leaves all as it was.
  onDataEntry(OutShiTi, [this] {
    const std::optional<QString> chosen = ChoosePaperToOpen(env());
    if (!chosen) return;
    Form10* f = paperWindow();
    if (!f->loadPaper(*chosen)) return;
    hide();
    f->show();
    f->raise();
    f->activateWindow();
  });
}

Form17* Form1::knowledgeWindow() {
  if (!form17_) {
    form17_ = new Form17(app_, this);
    // 相关NN题: a run over the point's questions, which leads back there.
    form17_->onRelatedRun = [this](const QString& ids) {
      if (!beforeRelatedRun_)
        beforeRelatedRun_ = BeforeRelatedRun{currentFace(), !MSFlexGrid1->isHidden(), practice->session().openRun()};
      if (practice->startListRun(ids, true)) return true;
      restoreBeforeRelatedRun();
      return false;
    };
    // 返回原题: the run ends as with its own 返回.
    form17_->onEndRelatedRun = [this] {
      practice->hideAnswerWindow();
      if (practice->session().run().Open && practice->session().run().FromLawQuery)
        practice->session().Frame3Cmd_Click(3);
      else if (form17_->inRelatedRun())
        form17_->relatedRunEnded();
    };
    // The pane's menu offers the points of the question the practice shows.
    form17_->shownQuestionCitation = [this]() -> QString {
      if (!practice->session().run().Open) return QString();
      const ItemRow* row = FindItem(app_.AllItemData, practice->session().currentId());
      return row ? row->aboutlaw : QString();
    };
  }
  return form17_;
}

void Form1::wireKnowledge() {
  onDataEntry(zsd, [this] { knowledgeWindow()->openWindow(); });
}

void Form1::openDirectory(DirectoryMode mode) {
  if (inDirectoryEntry_) return;
  inDirectoryEntry_ = true;
  GridFaceUi ui({[this] { return needsData(); },
                 [this] {
                   ShowNewsLabels(false);
                   MSFlexGrid2->setVisible(false);
                   showGrids();
                 },
                 this, Label7, ProgressBar1, MSFlexGrid1, Frame1, app_.ScaleY});
  SettingsWindowScheduling scheduling(*settingsWindow(), *settings_, env());
  EnterDirectory(app_, mode, ui, scheduling);
  inDirectoryEntry_ = false;
}

void Form1::showStartPage() { faces_->setCurrentWidget(startPage); }
void Form1::showGrids() { faces_->setCurrentWidget(gridPage); }
void Form1::showPracticeFrame() { faces_->setCurrentWidget(practicePage); }
QWidget* Form1::currentFace() const { return faces_->currentWidget(); }

bool Form1::needsData() {
  if (DataSetPresent(env())) return true;
  mj::TxtFormat(app_);
  return false;
}

void Form1::onDataEntry(QAction* entry, std::function<void()> work) {
  connect(entry, &QAction::triggered, this, [this, work = std::move(work)] {
    if (needsData()) work();
  });
}

void Form1::onDataSubmenu(QMenu* menu) {
  connect(menu, &QMenu::aboutToShow, this, [this, menu] {
    // The menu is about to open; closing it has to wait until it is open.
    if (!needsData()) QMetaObject::invokeMethod(menu, &QMenu::close, Qt::QueuedConnection);
  });
}

void Form1::step(int n) {
  if (onStartupStep) onStartupStep(n);
}

void Form1::applyTitle() {
  const QString countdown = GetExamCountdown(env());
  setWindowTitle(countdown.isEmpty() ? kAppTitle : kAppTitle + QStringLiteral("   ") + countdown);
}

void Form1::unloadSplash() {
  if (!splash_) return;
  splash_->Timer1->stop();
  splash_->close();
  splash_->deleteLater();
  splash_ = nullptr;
}

Form1::LoadOutcome Form1::load() {
  const Env& e = env();
  // 1. The data set; without it the data package fills the folder.
  step(1);
  if (!DataSetPresent(e)) {
    const QString package = DataPackageProgram(e);
    // It shows its own window and starts the program again when the data
    // is there. A package that cannot be started is said, and the start
    // goes on without data.
    if (!package.isEmpty() && StartProgram(e, package, {}, WindowMode::Normal)) return LoadOutcome::EndNow;
  }
  // 2. The links of the news file, before anything that needs them.
  step(2);
  const NewsLinks links = ReadNewsLinks(e);
  app_.NewsLink1 = links.link1;
  app_.NewsLink2 = links.link2;
  app_.NewsLink3 = links.link3;
  app_.NewsLink4 = links.link4;
  // 3. The splash window.
  step(3);
  splash_ = new Form8(e);
  splash_->load();
  splash_->show();
  QCoreApplication::processEvents();
  // 4. Type titles; room for the numeral table.
  step(4);
  app_.TypeTitle = MakeTypeTitle();
  app_.NumeralTable = QStringList(2001);
  // 5. The settings folder \ini is made when it is missing.
  step(5);
  if (!DirExists(e.path(QStringLiteral("\\ini")))) MakeDir(e.path(QStringLiteral("\\ini")));
  // 6. A normal start.
  step(6);
  app_.RunState = runstate::kNormal;
  // 7. The program for format documents.
  step(7);
  app_.WenShuProgram = ReadWenShuProgram(e);
  // 8. The icon; without one the start stops here.
  step(8);
  const QString icon = IconFile(e);
  if (icon.isEmpty()) {
    unloadSplash();
    return LoadOutcome::Stopped;
  }
  setWindowIcon(QIcon(icon));
  // 9. Screen factors and the window's size: the whole available area of
  // the screen, less the window frame, so that no part of the window lies
  // under a panel or below the screen.
  step(9);
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    const QRect avail = screen->availableGeometry();
    app_.ScaleX = avail.width() * 15.0 / 12000.0;
    app_.ScaleY = avail.height() * 15.0 / 9000.0;
    if (!(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized))) {
      resize(static_cast<int>(12000 * app_.ScaleX / 15), static_cast<int>(9000 * app_.ScaleY / 15));
      move(avail.topLeft());
      FitOnScreen(this);
    }
  }
  // 10. A one-row index; empty boxes; the tables of the start.
  step(10);
  app_.ItemData = ItemIndex(1);
  Text3->clear();
  app_.DataFolder = e.path(QStringLiteral("\\dbf"));
  app_.LawNameTable = tables::kLawNames;
  app_.ItemTable = tables::kItems;
  // 11. Grids hidden, settings loaded, frames hidden, text style applied.
  step(11);
  MSFlexGrid1->setVisible(false);
  MSFlexGrid2->setVisible(false);
  // A save of the settings that was cut off may have left its temporary file.
  RemoveLeftoverSaves(e.path(kSettingsFile));
  settingsWindow()->loadWindow();
  for (QWidget* f : Frame1) f->setVisible(false);
  ApplyTextStyle(Text3, settings_->style());
  // 12. The law-name table must be readable.
  step(12);
  lawNames_ = DbfTable::open(AppPath(app_.DataFolder, app_.LawNameTable));
  // 13. Column widths of the directory follow the screen factor.
  step(13);
  for (int c = 0; c < MSFlexGrid1->columnCount(); ++c)
    MSFlexGrid1->setColumnWidth(c, static_cast<int>(MSFlexGrid1->columnWidth(c) * app_.ScaleX));
  // 14. Release a former index.
  step(14);
  if (!app_.ItemData.isEmpty()) MyEraseItemData(app_.ItemData, app_.ItemData.size());
  app_.HasIndex = true;
  // 15. The question index.
  step(15);
  LoadQuestionIndex(app_);
  // 16. The start page with the countdown in the title.
  step(16);
  Label12->setText(QStringLiteral("科学、高效、智能化的题海战术使在较短时间内通过司法统考成为可能。"));
  // The start page has a picture of its own, without the start-up's words
  // and bar; a folder without it shows the splash picture, which the
  // splash window, still open, has decoded already.
  QPixmap front(e.path(kStartPagePicture));
  if (front.isNull() && splash_) front = splash_->picture();
  if (!front.isNull()) Picture1->setPixmap(front.scaled(640, 360, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  FillNumeralTable(app_.NumeralTable);
  applyTitle();
  showStartPage();
  // 17. The news file of the support site. The window is usable while it
  // comes; its end shows the notices and completes the start.
  step(17);
  news_ = new NewsDownload(e, this);
  news_->start([this](bool showNews) { finishStart(showNews); });
  return LoadOutcome::Running;
}

void Form1::finishStart(bool showNews) {
  if (showNews) showNotices();
  // 18. The splash goes; the start is complete.
  step(18);
  unloadSplash();
  app_.StartedOk = true;
  Timer1->start();
  // Damaged or missing tables are said once, with the window in view: the
  // banks and records they hold are missing until they are restored.
  if (const QList<TableProblemOf> problems = CheckDataTables(env()); !problems.isEmpty())
    env().msgBox(TableProblemsMessage(problems), box::Exclamation);
}

void Form1::showNotices() {
  const QString f = env().path(kNewsFile);
  notices_ = FileExists(f) ? ReadNotices(f) : QList<Notice>();
  // The hand cursor of the links: the program's own when it has one.
  QCursor linkCursor(Qt::PointingHandCursor);
  QPixmap pm;
  if (pm.load(env().path(QStringLiteral("\\ini\\mmpoint.cur")))) linkCursor = QCursor(pm);
  for (int i = 0; i < Label14.size(); ++i) {
    QLabel* l = Label14[i];
    const Notice n = i < notices_.size() ? notices_[i] : Notice();
    l->setText(n.caption);
    l->setToolTip(n.toolTip);
    l->setVisible(n.visible());
    l->setStyleSheet(QStringLiteral("color: %1").arg(ColorOf(n.color).name()));
    if (!n.link.isEmpty())
      l->setCursor(linkCursor);
    else
      l->unsetCursor();
  }
}

void Form1::openNoticeLink(const QString& link) {
  const QString target = NoticeLinkTarget(env(), link);
  // An address the desktop cannot open is said by ShellOpen.
  if (target.isEmpty())
    env().msgBox(RefusedLinkText(link), box::Exclamation);
  else
    ShellOpen(env(), target);
}

void Form1::ShowNewsLabels(bool visible) {
  for (QLabel* l : Label14) l->setVisible(visible && !l->text().isEmpty());
}

void Form1::showHelpOfForm(const QString& formName) {
  const int number = HelpNumberOf(formName);
  if (helpHandler) {
    helpHandler(number);
    return;
  }
  if (!help_) help_ = new Form18(env(), this);
  help_->showHelp(number);
}

bool Form1::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1) {
    if (auto* w = qobject_cast<QWidget*>(watched)) {
      showHelpOfForm(w->window()->objectName());
      return true;
    }
  }
  // Every event of the program passes here: the notice labels care only
  // for these three.
  const QEvent::Type type = event->type();
  if (type != QEvent::Enter && type != QEvent::Leave && type != QEvent::MouseButtonRelease)
    return QMainWindow::eventFilter(watched, event);
  const int idx = Label14.indexOf(qobject_cast<QLabel*>(watched));
  if (idx >= 0 && idx < notices_.size()) {
    const Notice& n = notices_[idx];
    if (event->type() == QEvent::Enter)
      Label14[idx]->setStyleSheet(QStringLiteral("color: %1").arg(ColorOf(n.hoverColor).name()));
    else if (event->type() == QEvent::Leave)
      Label14[idx]->setStyleSheet(QStringLiteral("color: %1").arg(ColorOf(n.color).name()));
    else if (event->type() == QEvent::MouseButtonRelease && !n.link.isEmpty())
      openNoticeLink(n.link);
  }
  return QMainWindow::eventFilter(watched, event);
}

void Form1::resizeEvent(QResizeEvent* e) {
  QMainWindow::resizeEvent(e);
  fitMenuBar();
}

void Form1::changeEvent(QEvent* e) {
  QMainWindow::changeEvent(e);
  if (e->type() != QEvent::FontChange) return;
  // A menu bar with a style sheet no longer follows the window's font: it is
  // given the font, and its width at the normal spacing is measured anew.
  QMenuBar* bar = menuBar();
  bar->setStyleSheet(QString());
  bar->setFont(font());
  fitMenuBar();
}

void Form1::fitMenuBar() {
  QMenuBar* bar = menuBar();
  if (bar->styleSheet().isEmpty()) naturalMenuWidth_ = bar->sizeHint().width();
  // Too wide at the normal spacing: the entries close up, and closer still
  // when that is not yet enough.
  QString sheet;
  if (naturalMenuWidth_ > width()) {
    sheet = QStringLiteral("QMenuBar { spacing: 0px; } QMenuBar::item { padding: 3px 4px; }");
    if (bar->styleSheet() != sheet) bar->setStyleSheet(sheet);
    if (bar->sizeHint().width() > width())
      sheet = QStringLiteral("QMenuBar { spacing: 0px; } QMenuBar::item { padding: 3px 2px; }");
  }
  if (bar->styleSheet() != sheet) bar->setStyleSheet(sheet);
}

void Form1::closeEvent(QCloseEvent* e) {
  // The last steps of a close let window events through: a second close
  // request meanwhile changes nothing.
  if (closing_) {
    e->ignore();
    return;
  }
  switch (CloseRequest(app_)) {
    case CloseDecision::Ignore:
    case CloseDecision::Cancel:
      e->ignore();
      return;
    case CloseDecision::Close:
      closing_ = true;
      Timer1->stop();
      // An update package under way goes no further.
      logEntries_->programEnds();
      // A news download under way is finished, so that the next start has
      // its file.
      if (news_ && news_->pending()) news_->finishNow();
      e->accept();
      QCoreApplication::quit();
      return;
  }
}

}  // namespace mj
