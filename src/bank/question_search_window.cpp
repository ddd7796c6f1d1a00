#include "bank/question_search_window.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>

#include "platform/events.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

enum Column { kBank, kId, kLine, kColumns };

// Paints the line of a hit with its marks, from the rich text of the model.
class MarkedLineDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    const QString html = index.data(Qt::UserRole).toString();
    opt.text.clear();
    QStyle* style = opt.widget ? opt.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &opt, painter, opt.widget);
    QTextDocument doc;
    doc.setDefaultFont(opt.font);
    doc.setDocumentMargin(2);
    doc.setHtml(html);
    QAbstractTextDocumentLayout::PaintContext ctx;
    ctx.palette = opt.palette;
    if (opt.state & QStyle::State_Selected)
      ctx.palette.setColor(QPalette::Text, opt.palette.color(QPalette::HighlightedText));
    const QRect r = style->subElementRect(QStyle::SE_ItemViewItemText, &opt, opt.widget);
    painter->save();
    // The line stands in the middle of its row, as the plain cells do.
    const int dy = std::max(0, (r.height() - static_cast<int>(doc.size().height())) / 2);
    painter->translate(r.topLeft() + QPoint(0, dy));
    painter->setClipRect(QRect(0, -dy, r.width(), r.height()));
    doc.documentLayout()->draw(painter, ctx);
    painter->restore();
  }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QTextDocument doc;
    doc.setDefaultFont(option.font);
    doc.setDocumentMargin(2);
    doc.setHtml(index.data(Qt::UserRole).toString());
    return QSize(static_cast<int>(doc.idealWidth()) + 8, static_cast<int>(doc.size().height()));
  }
};

QPushButton* Button(const QString& name, const QString& caption) {
  auto* b = new QPushButton(caption);
  b->setObjectName(name);
  return b;
}

}  // namespace

void SearchHitModel::setResults(SearchResults results) {
  beginResetModel();
  results_ = std::move(results);
  lines_.clear();
  endResetModel();
}

int SearchHitModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(results_.size());
}

const SearchHit& SearchHitModel::hitAt(int row) const {
  if (SearchHit* kept = lines_.object(row)) return *kept;
  auto* hit = new SearchHit(results_.hit(row));
  lines_.insert(row, hit);
  return *hit;
}

int SearchHitModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QVariant SearchHitModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= results_.size()) return {};
  const int row = index.row();
  // The bank and the ID cost nothing; only the line column makes the hit's
  // line, so that sizing the first two columns over many rows stays cheap.
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
    switch (index.column()) {
      case kBank:
        return results_.bank(row);
      case kId:
        return results_.id(row);
      case kLine:
        return hitAt(row).line;
    }
  }
  if (role == Qt::UserRole && index.column() == kLine) return MarkedLineHtml(hitAt(row));
  return {};
}

QVariant SearchHitModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kBank:
      return QStringLiteral("题库");
    case kId:
      return QStringLiteral("题号");
    case kLine:
      return QStringLiteral("找到的文字");
  }
  return {};
}

QString MarkedLineHtml(const SearchHit& hit) {
  QString out;
  qsizetype at = 0;
  for (const TextMark& m : hit.marks) {
    out += hit.line.mid(at, m.start - at).toHtmlEscaped() +
           QStringLiteral("<span style=\"background-color:#ffe36e; color:#b00000;\">") +
           hit.line.mid(m.start, m.length).toHtmlEscaped() + QStringLiteral("</span>");
    at = m.start + m.length;
  }
  out += hit.line.mid(at).toHtmlEscaped();
  return QStringLiteral("<span style=\"white-space:pre;\">") + out + QStringLiteral("</span>");
}

QString SearchFoundText(qsizetype count) {
  return QStringLiteral("共找到%1题。双击一题做这道题；在列表中按回车键或点“全部练习”，做全部找到的题。").arg(count);
}

QString SearchUnreadableText(const QStringList& files) {
  return QStringLiteral("以下题库文件无法读取，其中的试题没有查找：") + files.join(QStringLiteral("、"));
}

Form19::Form19(const Env& env, const ItemIndex* items, QWidget* parent)
    : QWidget(parent, Qt::Window), env_(env), items_(items) {
  setObjectName(QStringLiteral("Form19"));
  setWindowTitle(QStringLiteral("题目搜索"));
  auto* v = new QVBoxLayout(this);

  auto* top = new QHBoxLayout;
  Label1 = new QLabel(QStringLiteral("查找："));
  Label1->setObjectName(QStringLiteral("Label1"));
  Text1 = new QLineEdit;
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setPlaceholderText(QStringLiteral("输入题干、选项、答案或注释中的文字"));
  Label1->setBuddy(Text1);
  Command1 = Button(QStringLiteral("Command1"), QStringLiteral("搜索"));
  top->addWidget(Label1);
  top->addWidget(Text1, 1);
  top->addWidget(Command1);
  v->addLayout(top);

  Label3 = new QLabel(QStringLiteral(
      "多个词语用空格分开，试题中须全部出现；加引号的词语（如“合同 纠纷”）按原样查找。全角、半角的字母和数字视为相同。"));
  Label3->setObjectName(QStringLiteral("Label3"));
  Label3->setWordWrap(true);
  v->addWidget(Label3);

  model_ = new SearchHitModel(this);
  List1 = new QTableView;
  List1->setObjectName(QStringLiteral("List1"));
  List1->setModel(model_);
  List1->setItemDelegateForColumn(kLine, new MarkedLineDelegate(List1));
  List1->setSelectionBehavior(QAbstractItemView::SelectRows);
  List1->setSelectionMode(QAbstractItemView::SingleSelection);
  List1->setEditTriggers(QAbstractItemView::NoEditTriggers);
  List1->setTabKeyNavigation(false);
  List1->verticalHeader()->setVisible(false);
  List1->horizontalHeader()->setStretchLastSection(true);
  List1->installEventFilter(this);
  v->addWidget(List1, 1);

  ProgressBar1 = new QProgressBar;
  ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
  ProgressBar1->setVisible(false);
  v->addWidget(ProgressBar1);

  auto* bottom = new QHBoxLayout;
  Label2 = new QLabel;
  Label2->setObjectName(QStringLiteral("Label2"));
  Label2->setWordWrap(true);
  Label2->setTextInteractionFlags(Qt::TextSelectableByMouse);
  Command2 = Button(QStringLiteral("Command2"), QStringLiteral("全部练习"));
  Command3 = Button(QStringLiteral("Command3"), QStringLiteral("关闭"));
  Command2->setEnabled(false);
  bottom->addWidget(Label2, 1);
  bottom->addWidget(Command2);
  bottom->addWidget(Command3);
  v->addLayout(bottom);

  connect(Command1, &QPushButton::clicked, this, &Form19::runSearch);
  connect(Text1, &QLineEdit::returnPressed, this, &Form19::runSearch);
  connect(Command2, &QPushButton::clicked, this, &Form19::practiseAll);
  connect(Command3, &QPushButton::clicked, this, &QWidget::close);
  connect(List1, &QTableView::doubleClicked, this, [this](const QModelIndex& i) { practiseRow(i.row()); });

  search_.progress = [this](qsizetype done, qsizetype total) {
    ProgressBar1->setRange(0, static_cast<int>(total));
    ProgressBar1->setValue(static_cast<int>(done));
  };
  resize(900, 600);
}

void Form19::openWindow() {
  show();
  raise();
  activateWindow();
  Text1->setFocus(Qt::OtherFocusReason);
  Text1->selectAll();
}

void Form19::showAgain() {
  show();
  raise();
  activateWindow();
  if (model_->rowCount() > 0)
    List1->setFocus(Qt::OtherFocusReason);
  else
    Text1->setFocus(Qt::OtherFocusReason);
}

QString Form19::statusText() const { return Label2->text(); }

void Form19::runSearch() {
  if (busy_) return;
  const QString query = Text1->text();
  if (SearchWords(query).isEmpty()) {
    model_->setResults({});
    query_.clear();
    Command2->setEnabled(false);
    Label2->setText(kSearchNoWords);
    Text1->setFocus(Qt::OtherFocusReason);
    return;
  }
  busy_ = true;
  Label2->setText(QStringLiteral("正在查找……"));
  ProgressBar1->setValue(0);
  ProgressBar1->setVisible(true);
  LetEventsThrough();
  SearchResults results = search_.searchResults(env_, items_ ? *items_ : ItemIndex(), query);
  ProgressBar1->setVisible(false);
  busy_ = false;
  query_ = Trim(query);
  const qsizetype count = results.size();
  model_->setResults(std::move(results));
  List1->resizeColumnToContents(kBank);
  List1->resizeColumnToContents(kId);
  QString status = count > 0 ? SearchFoundText(count) : kSearchNothingFound;
  const QStringList unreadable = search_.unreadableFiles();
  if (!unreadable.isEmpty()) status += u'\n' + SearchUnreadableText(unreadable);
  Label2->setText(status);
  Command2->setEnabled(count > 0);
  if (count > 0) {
    List1->setCurrentIndex(model_->index(0, kBank));
    List1->setFocus(Qt::OtherFocusReason);
  }
}

QString Form19::runTitle() const { return QStringLiteral("题目搜索：") + query_; }

void Form19::practiseAll() {
  const QString ids = results().ids();
  if (ids.isEmpty() || !onPractise) return;
  hide();
  onPractise(ids, runTitle());
}

void Form19::practiseRow(int row) {
  if (row < 0 || row >= results().size() || !onPractise) return;
  hide();
  onPractise(results().id(row), runTitle());
}

bool Form19::eventFilter(QObject* watched, QEvent* event) {
  if (watched == List1 && event->type() == QEvent::KeyPress) {
    const auto* k = static_cast<QKeyEvent*>(event);
    if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
      practiseAll();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void Form19::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace mj
