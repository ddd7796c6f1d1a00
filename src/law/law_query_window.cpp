#include "law/law_query_window.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "law/keypad_window.h"
#include "law/text_places.h"
#include "platform/escape_key_widget.h"
#include "platform/text_toolkit.h"

namespace mj {

namespace {

// The view widget counts one place per line break, the text two (CR LF).
qsizetype TextIndexOf(const QString& text, const QTextDocument* doc, int docPosition) {
  const QTextBlock block = doc->findBlock(docPosition);
  return TextIndexOfLine(text, block.blockNumber(), docPosition - block.position());
}

int DocPositionOf(const QString& text, const QTextDocument* doc, qsizetype index) {
  const LinePlace place = LineOfTextIndex(text, index);
  const QTextBlock block = doc->findBlockByNumber(place.line);
  if (!block.isValid()) return doc->characterCount() - 1;
  return block.position() + std::min<int>(static_cast<int>(place.column), block.length() - 1);
}

QPushButton* Button(const QString& name, const QString& caption) {
  auto* b = new QPushButton(caption);
  b->setObjectName(name);
  return b;
}

}  // namespace

Form6::Form6(const Env& env, const ItemIndex* items, QWidget* parent) : QWidget(parent, Qt::Window), query_(env) {
  setObjectName(QStringLiteral("Form6"));
  setWindowTitle(QStringLiteral("法律查询"));
  CloseOnEscape(this);
  query_.setItems(items);

  auto* h = new QHBoxLayout(this);
  // The tree with the three order buttons.
  TreePanel = new QWidget;
  TreePanel->setObjectName(QStringLiteral("TreePanel"));
  auto* tv = new QVBoxLayout(TreePanel);
  tv->setContentsMargins(0, 0, 0, 0);
  auto* orders = new QHBoxLayout;
  Command1 = Button(QStringLiteral("Command1"), QStringLiteral("按试卷"));
  Command2 = Button(QStringLiteral("Command2"), QStringLiteral("按字母"));
  Command7 = Button(QStringLiteral("Command7"), QStringLiteral("按类别"));
  for (QPushButton* b : {Command1, Command2, Command7}) orders->addWidget(b);
  tv->addLayout(orders);
  TreeView1 = new QTreeWidget;
  TreeView1->setObjectName(QStringLiteral("TreeView1"));
  TreeView1->setHeaderHidden(true);
  TreeView1->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  tv->addWidget(TreeView1, 1);
  TreePanel->setFixedWidth(280);
  h->addWidget(TreePanel);
  // While a law is read the tree makes room; this handle at the left edge
  // brings it back (so does the mouse at the left edge of the text).
  TreeHandle = new QToolButton;
  TreeHandle->setObjectName(QStringLiteral("TreeHandle"));
  TreeHandle->setText(QStringLiteral("目\n录\n»"));
  TreeHandle->setToolTip(QStringLiteral("显示法律目录"));
  TreeHandle->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  TreeHandle->setVisible(false);
  h->addWidget(TreeHandle);
  connect(TreeHandle, &QToolButton::clicked, this, [this] {
    setTreeVisible(true);
    TreeView1->setFocus(Qt::OtherFocusReason);
  });

  // The boxes, the buttons and the view.
  // The label names the law on a line of its own: a long title leaves the
  // boxes their room on a 1024 pixel wide screen.
  auto* right = new QVBoxLayout;
  Label3 = new QLabel;
  Label3->setObjectName(QStringLiteral("Label3"));
  right->addWidget(Label3);
  auto* top = new QHBoxLayout;
  Text1 = new QLineEdit;
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setPlaceholderText(kArticleBoxPrompt);
  // Wide enough for its whole prompt.
  Text1->setMinimumWidth(Text1->fontMetrics().horizontalAdvance(kArticleBoxPrompt) + 16);
  top->addWidget(Text1);
  Text2 = new QLineEdit;
  Text2->setObjectName(QStringLiteral("Text2"));
  Text2->setToolTip(QStringLiteral("在这里输入要查找的文字"));
  Text2->setMinimumWidth(140);
  top->addWidget(Text2, 1);
  Command3 = Button(QStringLiteral("Command3"), QStringLiteral("查询"));
  Command4 = Button(QStringLiteral("Command4"), QStringLiteral("全文"));
  Command5 = Button(QStringLiteral("Command5"), kRelatedIdle);
  for (QPushButton* b : {Command3, Command4, Command5}) top->addWidget(b);
  right->addLayout(top);
  auto* second = new QHBoxLayout;
  Command8.append(Button(QStringLiteral("Command8_0"), QStringLiteral("本法重点法条")));
  Command8.append(Button(QStringLiteral("Command8_1"), QStringLiteral("本法次重点法条")));
  for (QPushButton* b : Command8) {
    b->setVisible(false);
    second->addWidget(b);
  }
  Command9 = Button(QStringLiteral("Command9"), QStringLiteral("导出法条"));
  Command9->setVisible(false);
  Command9->setEnabled(false);
  second->addWidget(Command9);
  second->addStretch(1);
  right->addLayout(second);
  RichTextBox1 = new QPlainTextEdit;
  RichTextBox1->setObjectName(QStringLiteral("RichTextBox1"));
  RichTextBox1->setReadOnly(true);
  RichTextBox1->setContextMenuPolicy(Qt::CustomContextMenu);
  RichTextBox1->viewport()->setMouseTracking(true);
  QFont f = RichTextBox1->font();
  f.setPointSize(12);
  RichTextBox1->setFont(f);
  right->addWidget(RichTextBox1, 1);
  h->addLayout(right, 1);

  // The right-button menu; its keys work anywhere in the window.
  MenuForRightButton = new QMenu(this);
  MenuForRightButton->setObjectName(QStringLiteral("MenuForRightButton"));
  auto item = [this](const QString& name, const QString& caption, const QKeySequence& key) {
    QAction* a = MenuForRightButton->addAction(caption);
    a->setObjectName(name);
    if (!key.isEmpty()) {
      a->setShortcut(key);
      a->setShortcutContext(Qt::WindowShortcut);
      addAction(a);
    }
    return a;
  };
  SaveTheText = item(QStringLiteral("SaveTheText"), QStringLiteral("保存查询"), QKeySequence(Qt::Key_F5));
  MergeToText = item(QStringLiteral("MergeToText"), QStringLiteral("并入至一个临时文本"), QKeySequence(Qt::Key_F6));
  LookText = item(QStringLiteral("LookText"), QStringLiteral("查看临时文本"), QKeySequence(Qt::Key_F7));
  SaveTempText = item(QStringLiteral("SaveTempText"), QStringLiteral("保存临时文本"), QKeySequence(Qt::Key_F8));
  GoBack = item(QStringLiteral("GoBack"), QStringLiteral("后退至查询框"), QKeySequence(Qt::Key_F9));
  NoText = item(QStringLiteral("NoText"), QStringLiteral("清空临时文本"), QKeySequence());
  SeekAndReplace = item(QStringLiteral("SeekAndReplace"), QStringLiteral("查找/替换"), QKeySequence());

  // The query button follows the box in focus.
  Timer1 = new QTimer(this);
  Timer1->setInterval(250);
  connect(Timer1, &QTimer::timeout, this, &Form6::timerTick);
  Timer1->start();

  auto act = [this](auto fn) {
    return [this, fn] {
      fn();
      render();
    };
  };
  connect(Command1, &QPushButton::clicked, this, [this] { loadTree(LawTreeOrder::Paper); });
  connect(Command2, &QPushButton::clicked, this, [this] { loadTree(LawTreeOrder::Letter); });
  connect(Command7, &QPushButton::clicked, this, [this] { loadTree(LawTreeOrder::Class); });
  connect(TreeView1, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* it) {
    query_.clickNode(it->data(0, Qt::UserRole).toInt());
    render();
  });
  connect(Command3, &QPushButton::clicked, this, act([this] { query_.query(); }));
  connect(Command4, &QPushButton::clicked, this, act([this] { query_.fullText(); }));
  connect(Command5, &QPushButton::clicked, this, &Form6::startRelatedRun);
  for (int i = 0; i < Command8.size(); ++i)
    connect(Command8[i], &QPushButton::clicked, this, act([this, i] { query_.pressEmphasis(i); }));
  connect(Text1, &QLineEdit::textEdited, this, act([this] { query_.editText1(Text1->text()); }));
  connect(Text2, &QLineEdit::textEdited, this, act([this] { query_.editText2(Text2->text()); }));
  connect(Text1, &QLineEdit::returnPressed, this, act([this] { query_.query(); }));
  connect(Text2, &QLineEdit::returnPressed, this, act([this] { query_.query(); }));
  connect(SaveTheText, &QAction::triggered, this, act([this] { query_.saveTheText(); }));
  connect(MergeToText, &QAction::triggered, this, act([this] { query_.mergeToText(); }));
  connect(LookText, &QAction::triggered, this, act([this] { query_.lookText(); }));
  connect(SaveTempText, &QAction::triggered, this, act([this] { query_.saveTempText(); }));
  connect(GoBack, &QAction::triggered, this, act([this] { query_.goBack(); }));
  connect(NoText, &QAction::triggered, this, act([this] { query_.noText(); }));
  connect(RichTextBox1, &QPlainTextEdit::textChanged, this, [this] {
    if (query_.inTempText)
      query_.editView(HeldText(RichTextBox1->toPlainText()));
    else
      // Only the find/replace window changes a result: the query keeps the
      // text as shown, so that clicks still find their articles.
      query_.view = HeldText(RichTextBox1->toPlainText());
  });
  connect(SeekAndReplace, &QAction::triggered, this, [this] {
    if (seekAndReplace_) seekAndReplace_();
  });
  connect(RichTextBox1, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    query_.clickInView(0, false, true);
    render();
    MenuForRightButton->popup(RichTextBox1->viewport()->mapToGlobal(at));
  });

  // One filter on the application sees the keys of the whole window (the
  // decimal point), the boxes' focus and the view's mouse.
  qApp->installEventFilter(this);

  buildTree();
  resize(1000, 700);
  render();
}

void Form6::setSeekAndReplaceHook(std::function<void()> hook) {
  seekAndReplace_ = std::move(hook);
  query_.menu.SeekAndReplace = static_cast<bool>(seekAndReplace_);
  render();
}

QString Form6::selectedViewText() const {
  return HeldText(RichTextBox1->textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n'));
}

Form6::~Form6() {
  qApp->removeEventFilter(this);
  delete keypad_;
}

void Form6::buildTree() {
  TreeView1->clear();
  const LawTree& tree = query_.tree;
  QList<QTreeWidgetItem*> items(tree.nodes.size(), nullptr);
  for (int i = 0; i < tree.nodes.size(); ++i) {
    const LawTreeNode& n = tree.nodes[i];
    // A parent always stands before its children.
    QTreeWidgetItem* parent = n.parent >= 0 && n.parent < i ? items[n.parent] : nullptr;
    auto* it = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(TreeView1);
    it->setText(0, n.text);
    it->setData(0, Qt::UserRole, i);
    it->setData(0, Qt::UserRole + 1, n.key);
    items[i] = it;
  }
  if (!items.isEmpty()) items[0]->setExpanded(true);
}

void Form6::loadTree(LawTreeOrder order) {
  query_.loadTree(order);
  buildTree();
}

void Form6::reloadTree() { loadTree(query_.order); }

void Form6::showKeypad(bool visible) {
  if (visible) {
    if (!keypad_)
      keypad_ = new Form7(
          query_, [this] { render(); }, this);
    keypad_->refresh();
    if (!keypad_->isVisible()) {
      keypad_->LocateForm(Text1);
      keypad_->show();
      keypad_->raise();
      keypad_->activateWindow();
    }
  } else if (keypad_ && keypad_->isVisible()) {
    keypad_->hide();
  }
}

void Form6::render() {
  const LawQuery& q = query_;
  Label3->setText(q.Label3);
  {
    const QSignalBlocker b1(Text1);
    const QSignalBlocker b2(Text2);
    if (Text1->text() != q.Text1) Text1->setText(q.Text1);
    if (Text2->text() != q.Text2) Text2->setText(q.Text2);
  }
  if (Text1->isEnabled() != q.Text1Enabled || Text1->styleSheet().isEmpty()) {
    // A group leaves the article-number box grey, a law white.
    Text1->setEnabled(q.Text1Enabled);
    Text1->setStyleSheet(q.Text1Enabled ? QStringLiteral("QLineEdit { background: white; }")
                                        : QStringLiteral("QLineEdit { background: #d8d8d8; }"));
  }
  Text2->setEnabled(q.Text2Enabled);
  Command4->setEnabled(q.Command4Enabled);
  Command5->setEnabled(q.Command5Enabled);
  Command5->setText(q.Command5Caption);
  for (int i = 0; i < Command8.size(); ++i) {
    Command8[i]->setVisible(q.Command8Visible[i]);
    Command8[i]->setToolTip(q.Command8Tag[i]);
  }
  if (shownVersion_ != q.viewVersion) {
    const QSignalBlocker b(RichTextBox1);
    RichTextBox1->setPlainText(q.view);
    shownVersion_ = q.viewVersion;
  }
  RichTextBox1->setReadOnly(q.viewReadOnly);
  SaveTheText->setEnabled(q.menu.SaveTheText);
  MergeToText->setEnabled(q.menu.MergeToText);
  LookText->setEnabled(q.menu.LookText);
  SaveTempText->setEnabled(q.menu.SaveTempText);
  GoBack->setEnabled(q.menu.GoBack);
  NoText->setEnabled(q.menu.NoText);
  SeekAndReplace->setEnabled(q.menu.SeekAndReplace);
  showKeypad(q.keypadOpen);

  if (query_.caretRequest) {
    const LawQuery::CaretRequest r = *query_.caretRequest;
    query_.caretRequest.reset();
    QTextCursor c = RichTextBox1->textCursor();
    if (r.toTop) {
      // To the end first, then back: the line of the place comes to the top.
      c.movePosition(QTextCursor::End);
      RichTextBox1->setTextCursor(c);
      RichTextBox1->ensureCursorVisible();
    }
    c.setPosition(DocPositionOf(q.view, RichTextBox1->document(), r.position));
    RichTextBox1->setTextCursor(c);
    RichTextBox1->ensureCursorVisible();
  }
  if (query_.focusResult) {
    query_.focusResult = false;
    if (isVisible()) RichTextBox1->setFocus(Qt::OtherFocusReason);
  }
}

void Form6::timerTick() {
  QWidget* focused = QApplication::focusWidget();
  if (focused == Text1 || focused == Text2) lastBox_ = static_cast<QLineEdit*>(focused);
  // The state of Num Lock cannot be set on this platform; only the query
  // button follows the box.
  Command3->setEnabled(lastBox_ && LawQuery::QueryEnabledFor(lastBox_->text()));
}

void Form6::viewClicked(bool ctrl) {
  const QTextCursor c = RichTextBox1->textCursor();
  if (c.hasSelection()) {
    QString selected = c.selectedText();
    selected.replace(QChar::ParagraphSeparator, QStringLiteral("\r\n"));
    QGuiApplication::clipboard()->setText(selected);
  }
  const qsizetype caret = TextIndexOf(query_.view, RichTextBox1->document(), c.selectionStart());
  query_.clickInViewAndJump(caret, ctrl);
  // Reading a law: the tree makes room for the text.
  if (query_.readingResult() && TreePanel->isVisible()) setTreeVisible(false);
  render();
}

void Form6::startRelatedRun() {
  const QString ids = query_.relatedRunIds();
  if (ids.isEmpty()) return;
  const int count = query_.relatedRunCount();
  FromLawQuery = true;
  query_.closeKeypad();
  render();
  hide();
  if (onRelatedRun) onRelatedRun(ids, count);
}

bool Form6::OpenLawFromAnswer(const QString& text, qsizetype pos, int flag) {
  const bool toKnowledge = flag == 2 && query_.knowledgeHook;
  if (!query_.openFromAnswer(text, pos, flag)) return false;
  if (!toKnowledge) showOpenedLaw();
  return true;
}

bool Form6::OpenLawFromShownAnswer(const QString& shownText, int position, bool ctrl) {
  const CrLfPlace at = ToCrLfPlace(shownText, position);
  return OpenLawFromAnswer(at.text, at.index + 1, ctrl ? 2 : 1);
}

void Form6::openAtAnswer(const QString& answerText) {
  entryMode = 2;
  if (query_.openAtAnswer(answerText))
    showOpenedLaw();
  else
    showAgain();
}

void Form6::setTreeVisible(bool visible) {
  TreePanel->setVisible(visible);
  TreeHandle->setVisible(!visible);
  layout()->activate();
}

void Form6::showOpenedLaw() {
  setTreeVisible(true);
  showAgain();
  render();
}

void Form6::showAgain() {
  showMaximized();
  raise();
  activateWindow();
  render();
}

bool Form6::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::KeyRelease) return false;
  if (type == QEvent::KeyPress) {
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w || w->window() != this) return false;
    auto* k = static_cast<QKeyEvent*>(event);
    // The decimal point anywhere in the window calls the keypad.
    if (k->key() == Qt::Key_Period) {
      query_.decimalKey();
      render();
      return true;
    }
    return false;
  }
  if (type == QEvent::FocusIn && (watched == Text1 || watched == Text2)) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    // Coming back from a box or another window is no new entry.
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return false;
    lastBox_ = static_cast<QLineEdit*>(watched);
    if (watched == Text1)
      query_.enterText1();
    else
      query_.enterText2();
    render();
    return false;
  }
  if (watched == RichTextBox1->viewport()) {
    if (type == QEvent::MouseButtonRelease) {
      auto* m = static_cast<QMouseEvent*>(event);
      if (m->button() == Qt::LeftButton) {
        // The press has put the caret; the click is read from there.
        QTimer::singleShot(0, this, [this, ctrl = bool(m->modifiers() & Qt::ControlModifier)] { viewClicked(ctrl); });
      }
    } else if (type == QEvent::MouseButtonDblClick) {
      auto* m = static_cast<QMouseEvent*>(event);
      if (m->button() == Qt::LeftButton && Command5->isEnabled()) {
        QTimer::singleShot(0, this, &Form6::startRelatedRun);
      }
    } else if (type == QEvent::MouseMove) {
      auto* m = static_cast<QMouseEvent*>(event);
      if (m->position().x() < 8 && !TreePanel->isVisible()) setTreeVisible(true);
    }
  }
  return QWidget::eventFilter(watched, event);
}

void Form6::closeEvent(QCloseEvent* e) {
  query_.closeKeypad();
  showKeypad(false);
  e->accept();
  if (onClosed) onClosed();
}

}  // namespace mj
