#include "knowledge/knowledge_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "knowledge/knowledge_download.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "platform/window_placement_widget.h"

namespace mj {

namespace {

QPushButton* Button(const QString& name, const QString& caption) {
  auto* b = new QPushButton(caption);
  b->setObjectName(name);
  return b;
}

QLineEdit* Box(const QString& name) {
  auto* e = new QLineEdit;
  e->setObjectName(name);
  return e;
}

void SetTextKeepingCaret(QLineEdit* e, const QString& text) {
  if (e->text() == text) return;
  const QSignalBlocker block(e);
  e->setText(text);
}

}  // namespace

Form17::Form17(AppState& app, QWidget* parent)
    : QWidget(parent, Qt::Window), app_(app), points_(app.env, outline_) {
  setObjectName(QStringLiteral("Form17"));
  setWindowTitle(kKnowledgeWindowTitle);
  points_.setItems(&app_.AllItemData);
  download_ = new KnowledgeDownload(app_.env, this);
  inputBox = [this](const QString& prompt, const QString& title) -> std::optional<QString> {
    bool ok = false;
    const QString text = QInputDialog::getText(this, title, prompt, QLineEdit::Normal, QString(), &ok);
    if (!ok) return std::nullopt;
    return text;
  };

  auto* h = new QHBoxLayout(this);
  auto* splitter = new QSplitter(Qt::Horizontal);
  h->addWidget(splitter);

  TreeView1 = new QTreeWidget;
  TreeView1->setObjectName(QStringLiteral("TreeView1"));
  TreeView1->setHeaderHidden(true);
  TreeView1->setMouseTracking(true);
  TreeView1->setContextMenuPolicy(Qt::CustomContextMenu);
  TreeView1->setMinimumWidth(220);
  splitter->addWidget(TreeView1);

  auto* right = new QWidget;
  auto* rv = new QVBoxLayout(right);
  rv->setContentsMargins(0, 0, 0, 0);
  Frame1 = new QGroupBox(QStringLiteral("知识点："));
  Frame1->setObjectName(QStringLiteral("Frame1"));
  auto* grid = new QGridLayout(Frame1);
  auto label = [](const QString& name, const QString& text) {
    auto* l = new QLabel(text);
    l->setObjectName(name);
    return l;
  };
  Text1 = Box(QStringLiteral("Text1"));
  Text1->setToolTip(QStringLiteral("写成《法律名》条号.，例如《刑法》12.；双击填入今天的日期"));
  Text2 = Box(QStringLiteral("Text2"));
  Text2->setToolTip(QStringLiteral("双击引入或打开知识点解释文件"));
  Text3 = Box(QStringLiteral("Text3"));
  Text3->setReadOnly(true);
  Text4 = Box(QStringLiteral("Text4"));
  grid->addWidget(label(QStringLiteral("Label1"), QStringLiteral("参见法条")), 0, 0);
  grid->addWidget(Text1, 0, 1, 1, 3);
  grid->addWidget(label(QStringLiteral("Label2"), QStringLiteral("文件路径")), 1, 0);
  grid->addWidget(Text2, 1, 1, 1, 3);
  grid->addWidget(label(QStringLiteral("Label3"), QStringLiteral("更改日期")), 2, 0);
  grid->addWidget(Text3, 2, 1);
  grid->addWidget(label(QStringLiteral("Label4"), QStringLiteral("来源备注")), 2, 2);
  grid->addWidget(Text4, 2, 3);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 2);
  grid->addWidget(label(QStringLiteral("Label7"), QStringLiteral("知识点解释")), 3, 0, 1, 4);
  RichTextBox1 = new QPlainTextEdit;
  RichTextBox1->setObjectName(QStringLiteral("RichTextBox1"));
  RichTextBox1->setContextMenuPolicy(Qt::CustomContextMenu);
  RichTextBox1->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  grid->addWidget(RichTextBox1, 4, 0, 1, 4);
  grid->setRowStretch(4, 1);
  RichTextBox2 = new QPlainTextEdit;
  RichTextBox2->setObjectName(QStringLiteral("RichTextBox2"));
  RichTextBox2->setReadOnly(true);
  RichTextBox2->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  RichTextBox2->setFixedHeight(RichTextBox2->fontMetrics().lineSpacing() * 3 + 12);
  grid->addWidget(RichTextBox2, 5, 0, 1, 4);
  rv->addWidget(Frame1, 1);

  auto* row1 = new QHBoxLayout;
  Command1 = Button(QStringLiteral("Command1"), QStringLiteral("新知识点"));
  Command2 = Button(QStringLiteral("Command2"), QStringLiteral("合法性检验"));
  Command3 = Button(QStringLiteral("Command3"), QStringLiteral("记录知识点"));
  Command4 = Button(QStringLiteral("Command4"), QStringLiteral("相关NN题"));
  Command5 = Button(QStringLiteral("Command5"), kCloseCaption);
  Command6 = Button(QStringLiteral("Command6"), QStringLiteral("生成知识点文件"));
  for (QPushButton* b : {Command1, Command2, Command3, Command4, Command5, Command6}) row1->addWidget(b);
  row1->addStretch(1);
  rv->addLayout(row1);
  auto* row2 = new QHBoxLayout;
  Command7 = Button(QStringLiteral("Command7"), QStringLiteral("处理论坛数据"));
  Command8 = Button(QStringLiteral("Command8"), QStringLiteral("转换链接"));
  Command9 = Button(QStringLiteral("Command9"), QStringLiteral("整理lawinfo表"));
  for (QPushButton* b : {Command7, Command8, Command9}) row2->addWidget(b);
  ProgressBar1 = new QProgressBar;
  ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
  ProgressBar1->setVisible(false);
  row2->addWidget(ProgressBar1, 1);
  Label6 = new QLabel;
  Label6->setObjectName(QStringLiteral("Label6"));
  row2->addWidget(Label6);
  row2->addStretch(0);
  rv->addLayout(row2);
  Label5 = new QLabel;
  Label5->setObjectName(QStringLiteral("Label5"));
  rv->addWidget(Label5);
  splitter->addWidget(right);
  splitter->setStretchFactor(0, 0);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({300, 700});

  // The tree's menu: the outline cannot be restructured from the program,
  // its entries only say their word.
  TvwMenu = new QMenu(QStringLiteral("目录树菜单"), this);
  TvwMenu->setObjectName(QStringLiteral("TvwMenu"));
  auto placeholder = [this](const QString& name, const QString& caption, const QString& word) {
    QAction* a = TvwMenu->addAction(caption);
    a->setObjectName(name);
    connect(a, &QAction::triggered, this, [this, word] { app_.env.msgBox(word); });
  };
  placeholder(QStringLiteral("InsertML"), QStringLiteral("插入知识点项目"), QStringLiteral("ml"));
  placeholder(QStringLiteral("InsertXM"), QStringLiteral("插入知识点"), QStringLiteral("xm"));
  placeholder(QStringLiteral("DeleteZsd"), QStringLiteral("删除知识点"), QStringLiteral("delete"));
  connect(TreeView1, &QTreeWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { TvwMenu->popup(TreeView1->viewport()->mapToGlobal(at)); });
  MyPopMenu = new QMenu(QStringLiteral("弹出菜单"), this);
  MyPopMenu->setObjectName(QStringLiteral("MyPopMenu"));
  connect(RichTextBox1, &QPlainTextEdit::customContextMenuRequested, this, &Form17::showPaneMenu);

  // A press makes the node current, which is its click; the keyboard moves
  // the selection the same way. A click on the node that is current
  // already runs the click again.
  connect(TreeView1, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    if (!item || rendering_) return;
    justChanged_ = item;
    nodeClicked(item);
  });
  connect(TreeView1, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
    if (item == justChanged_) {
      justChanged_ = nullptr;
      return;
    }
    nodeClicked(item);
  });
  connect(TreeView1, &QTreeWidget::itemEntered, this, [this](QTreeWidgetItem* item) {
    Label5->setText(points_.hoverText(item->data(0, Qt::UserRole).toInt()));
  });
  connect(Text1, &QLineEdit::textEdited, this, [this](const QString& text) {
    points_.typeText1(text);
    render();
  });
  connect(Text2, &QLineEdit::textEdited, this, [this](const QString& text) { points_.Text2 = text; });
  connect(Text4, &QLineEdit::textEdited, this, [this](const QString& text) {
    points_.typeText4(text);
    render();
  });
  connect(RichTextBox1, &QPlainTextEdit::textChanged, this, [this] {
    if (!rendering_) points_.editPane(HeldText(RichTextBox1->toPlainText()));
  });
  for (QWidget* w : {static_cast<QWidget*>(Text1), static_cast<QWidget*>(Text2), RichTextBox1->viewport()})
    w->installEventFilter(this);

  connect(Command1, &QPushButton::clicked, this, &Form17::Command1_Click);
  connect(Command2, &QPushButton::clicked, this, [this] {
    points_.Command2_Click();
    render();
  });
  connect(Command3, &QPushButton::clicked, this, [this] {
    points_.Command3_Click();
    render();
  });
  connect(Command4, &QPushButton::clicked, this, &Form17::Command4_Click);
  connect(Command5, &QPushButton::clicked, this, &Form17::Command5_Click);
  connect(Command6, &QPushButton::clicked, this, [this] {
    setBusy(true);
    points_.Command6_Click();
    setBusy(false);
    if (const QTreeWidgetItem* item = itemOfNode(points_.selectedNode)) TreeView1->setCurrentItem(const_cast<QTreeWidgetItem*>(item));
    render();
  });
  connect(Command7, &QPushButton::clicked, this, &Form17::Command7_Click);
  connect(Command8, &QPushButton::clicked, this, &Form17::Command8_Click);
  connect(Command9, &QPushButton::clicked, this, &Form17::Command9_Click);
  render();
}

Form17::~Form17() = default;

QTreeWidgetItem* Form17::itemOfNode(int node) const {
  return node >= 0 && node < items_.size() ? items_[node] : nullptr;
}

void Form17::loadWindow() {
  if (loaded_) return;
  loaded_ = true;
  const QString problems = points_.load();
  buildTree();
  if (!problems.isEmpty()) app_.env.msgBox(problems, box::Exclamation);
}

void Form17::reloadOutline() {
  EraseZsd(outline_);
  const QString problems = points_.load();
  buildTree();
  render();
  if (!problems.isEmpty()) app_.env.msgBox(problems, box::Exclamation);
}

void Form17::buildTree() {
  rendering_ = true;
  TreeView1->clear();
  items_.clear();
  const QList<OutlineNode>& nodes = points_.nodes();
  items_.reserve(nodes.size());
  for (int i = 0; i < nodes.size(); ++i) {
    const OutlineNode& n = nodes[i];
    QTreeWidgetItem* item =
        n.parent < 0 ? new QTreeWidgetItem(TreeView1) : new QTreeWidgetItem(items_[n.parent]);
    item->setText(0, n.text);
    item->setData(0, Qt::UserRole, i);
    items_.append(item);
  }
  if (!items_.isEmpty()) items_[0]->setExpanded(true);
  rendering_ = false;
}

void Form17::openWindow() {
  loadWindow();
  if (!isVisible()) {
    resize(1000, 700);
    FitOnScreen(this);
  }
  show();
  raise();
  activateWindow();
  render();
}

void Form17::nodeClicked(QTreeWidgetItem* item) {
  if (!item) return;
  points_.clickNode(item->data(0, Qt::UserRole).toInt());
  render();
}

void Form17::SelectNode(const QString& key) {
  const int node = points_.SelectNode(key);
  QTreeWidgetItem* item = itemOfNode(node);
  if (!item) return;
  for (QTreeWidgetItem* p = item->parent(); p; p = p->parent()) p->setExpanded(true);
  rendering_ = true;
  TreeView1->setCurrentItem(item);
  rendering_ = false;
  TreeView1->scrollToItem(item);
  render();
}

void Form17::showArticle(const QString& lawTitle, double article) {
  loadWindow();
  using Outcome = KnowledgePoints::ArticleOutcome;
  const Outcome outcome = points_.showArticle(lawTitle, article);
  if (outcome == Outcome::Declined) return;
  openWindow();
  if (outcome == Outcome::Found) {
    // The tree follows the point the article led to.
    const QTreeWidgetItem* item = itemOfNode(points_.selectedNode);
    if (item) {
      for (QTreeWidgetItem* p = item->parent(); p; p = p->parent()) p->setExpanded(true);
      rendering_ = true;
      TreeView1->setCurrentItem(const_cast<QTreeWidgetItem*>(item));
      rendering_ = false;
      TreeView1->scrollToItem(item);
    }
  } else if (outcome == Outcome::Pending) {
    points_.promptForPoint();
  }
  render();
}

void Form17::render() {
  rendering_ = true;
  Frame1->setTitle(points_.pointSelected ? points_.caption : QStringLiteral("知识点："));
  SetTextKeepingCaret(Text1, points_.Text1);
  SetTextKeepingCaret(Text2, points_.Text2);
  SetTextKeepingCaret(Text3, points_.Text3);
  SetTextKeepingCaret(Text4, points_.Text4);
  if (HeldText(RichTextBox1->toPlainText()) != points_.pane) RichTextBox1->setPlainText(ShownText(points_.pane));
  RichTextBox1->setToolTip(points_.paneHint);
  if (HeldText(RichTextBox2->toPlainText()) != points_.verdict) RichTextBox2->setPlainText(ShownText(points_.verdict));
  Command4->setText(points_.Command4Caption);
  Command4->setVisible(points_.Command4Visible);
  Command5->setText(points_.Command5Caption);
  Command1->setEnabled(points_.Command1Enabled && !download_->busy() && !busy_);
  rendering_ = false;
}

void Form17::setBusy(bool busy) {
  busy_ = busy;
  for (QPushButton* b : {Command2, Command3, Command4, Command6, Command7, Command8, Command9}) b->setEnabled(!busy);
  Command1->setEnabled(points_.Command1Enabled && !download_->busy() && !busy);
}

bool Form17::downloadBusy() const { return download_->busy(); }

void Form17::activateWindowWork() {
  if (activating_ || !loaded_) return;
  activating_ = true;
  points_.activate();
  render();
  activating_ = false;
}

bool Form17::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate) activateWindowWork();
  return QWidget::event(e);
}

bool Form17::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick) {
    if (watched == Text1) {
      points_.doubleClickText1();
      render();
      return true;
    }
    if (watched == Text2 || watched == RichTextBox1->viewport()) {
      points_.doubleClickFile();
      render();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void Form17::showPaneMenu(const QPoint& at) {
  // The points of the question the practice shows, when one is shown;
  // else those the last article led to.
  if (shownQuestionCitation) {
    const QString flat = shownQuestionCitation();
    if (!flat.isEmpty()) points_.setShownQuestion(flat);
  }
  MyPopMenu->clear();
  const QList<qsizetype>& rows = points_.menuPoints();
  if (rows.isEmpty()) {
    QAction* a = MyPopMenu->addAction(QStringLiteral("本条知识点"));
    a->setObjectName(QStringLiteral("Zsd4ThisItem"));
    a->setEnabled(false);
  }
  for (const qsizetype row : rows) {
    const OutlineRow* r = outline_.row(row);
    if (!r) continue;
    const QString caption =
        rows.size() == 1 ? QStringLiteral("本条知识点") : QStringLiteral("本条知识点：") + NodeTextOf(*r);
    QAction* a = MyPopMenu->addAction(caption);
    a->setObjectName(QStringLiteral("Zsd4ThisItem"));
    a->setData(row);
    connect(a, &QAction::triggered, this, [this, row] {
      const OutlineRow* r2 = outline_.row(row);
      if (!r2) return;
      SelectNode(NodeKeyOf(r2->therecn));
      openWindow();
    });
  }
  MyPopMenu->popup(RichTextBox1->viewport()->mapToGlobal(at));
}

void Form17::Command1_Click() {
  if (download_->busy()) return;
  const QList<int> missing = MissingKnowledgeFiles(app_.env, KnowledgeFileCount(app_.env));
  if (missing.isEmpty()) return;
  ProgressBar1->setRange(0, 1000);
  ProgressBar1->setValue(0);
  ProgressBar1->setVisible(true);
  Command1->setEnabled(false);
  download_->start(
      KnowledgeFileFolder(app_.env), missing, [this](int permille) { ProgressBar1->setValue(permille); },
      [this](const KnowledgeDownloadResult& result) {
        ProgressBar1->setVisible(false);
        app_.env.msgBox(KnowledgeDownloadText(result), result.failures.isEmpty() ? 0 : box::Exclamation,
                        QStringLiteral("新知识点"));
        // What came is taken in at once.
        points_.activate();
        render();
      });
}

void Form17::Command4_Click() {
  if (points_.relatedIds.isEmpty() || !onRelatedRun) return;
  inRelatedRun_ = true;
  points_.Command5Caption = kBackToQuestion;
  render();
  if (!onRelatedRun(points_.relatedIds)) {
    inRelatedRun_ = false;
    points_.Command5Caption = kCloseCaption;
    render();
  }
}

void Form17::relatedRunEnded() {
  inRelatedRun_ = false;
  points_.Command5Caption = kCloseCaptionAfterRun;
  render();
  if (isVisible()) {
    raise();
    activateWindow();
  }
}

void Form17::Command5_Click() {
  if (inRelatedRun_) {
    if (onEndRelatedRun) onEndRelatedRun();
    // A main window that did not end it: the window still leaves the run.
    if (inRelatedRun_) relatedRunEnded();
    return;
  }
  close();
}

void Form17::closeEvent(QCloseEvent* e) {
  // A generation or download under way finishes first.
  if (busy_ || download_->busy()) {
    e->ignore();
    return;
  }
  if (inRelatedRun_ && onEndRelatedRun) onEndRelatedRun();
  e->accept();
}

void Form17::Command7_Click() {
  if (busy_) return;
  setBusy(true);
  SqlConnection connection;
  QString error;
  if (!OpenForumDatabase(app_.env, connection, &error)) {
    app_.env.msgBox(error, box::Exclamation);
    setBusy(false);
    return;
  }
  ProgressBar1->setRange(0, 0);
  ProgressBar1->setValue(0);
  ProgressBar1->setVisible(true);
  const NewsLinks links{app_.NewsLink1, app_.NewsLink2, app_.NewsLink3, app_.NewsLink4};
  ProcessForumData(app_.env, connection, counters_, links, [this](qint64 done, qint64 total) {
    if (ProgressBar1->maximum() != total) ProgressBar1->setRange(0, static_cast<int>(std::min<qint64>(total, INT_MAX)));
    ProgressBar1->setValue(static_cast<int>(std::min<qint64>(done, INT_MAX)));
  });
  ProgressBar1->setVisible(false);
  setBusy(false);
}

void Form17::Command8_Click() {
  if (busy_ || !inputBox) return;
  const QString title = QStringLiteral("输入地址串");
  QString site = SupportSite(app_.env);
  if (site.isEmpty()) site = kDefaultSite;
  const std::optional<QString> oldText = inputBox(QStringLiteral("老地址字符，形如") + site + QStringLiteral("/bbs/"), title);
  const std::optional<QString> newText =
      inputBox(QStringLiteral("新地址字符，形如") + site + QStringLiteral("/forum/"), title);
  if (!oldText || !newText || oldText->isEmpty() || newText->isEmpty()) {
    app_.env.msgBox(QStringLiteral("地址不可以为空"), 0, QStringLiteral("输入有误"));
    return;
  }
  setBusy(true);
  SqlConnection connection;
  QString error;
  bool ok = OpenForumDatabase(app_.env, connection, &error);
  ok = ok && ConvertLinks(connection, *oldText, *newText,
                          [this](qint64 row, qint64 rows) { Label6->setText(CStr(row) + u'/' + CStr(rows)); }, &error);
  setBusy(false);
  app_.env.msgBox(ok ? QStringLiteral("ok") : error, ok ? 0 : box::Exclamation);
}

void Form17::Command9_Click() {
  if (busy_) return;
  setBusy(true);
  SqlConnection connection;
  QString error;
  const bool ok = OpenForumDatabase(app_.env, connection, &error) && TidyLawinfo(connection, &error);
  setBusy(false);
  app_.env.msgBox(ok ? QStringLiteral("lawinfo表整理完毕。") : error, ok ? 0 : box::Exclamation);
}

}  // namespace mj
