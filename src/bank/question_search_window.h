#pragma once
// The window 题目搜索: a search box over the questions of the internal banks
// and the simulated papers, the list of hits (bank, ID, the line around the
// hit with the search words marked) and the practice of the hits. A double
// click on a hit practises that question; Enter on the list or 全部练习
// practises all hits as one run; the end of such a run brings this window
// back with its results. The search itself is QuestionSearch; the run is the
// main window's (onPractise).
//
// Keys: Enter in the box searches and puts the focus on the list; Enter on
// the list practises all hits; Esc closes the window.

#include <QAbstractTableModel>
#include <QCache>
#include <QWidget>
#include <functional>

#include "bank/item_index.h"
#include "bank/question_search.h"
#include "platform/env.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTableView;

namespace mj {

// The hits as the list shows them: 题库, 题号, 所在行 (with the marks as
// rich text under Qt::UserRole). The line of a row is made when the view
// first asks for it and kept for the rows seen last.
class SearchHitModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  using QAbstractTableModel::QAbstractTableModel;
  void setResults(SearchResults results);
  const SearchResults& results() const { return results_; }
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  const SearchHit& hitAt(int row) const;

  static constexpr int kKeptLines = 2000;
  SearchResults results_;
  mutable QCache<int, SearchHit> lines_{kKeptLines};
};

// The line of a hit as rich text: the marks in a colour of their own.
QString MarkedLineHtml(const SearchHit& hit);

// The status texts of the window.
inline const QString kSearchNoWords = QStringLiteral("请输入要查找的文字。多个词语之间用空格分开。");
inline const QString kSearchNothingFound = QStringLiteral("没有找到含有这些文字的试题。");
QString SearchFoundText(qsizetype count);
QString SearchUnreadableText(const QStringList& files);

class Form19 : public QWidget {
  Q_OBJECT
 public:
  // items: the question index of the internal banks (AllItemData).
  Form19(const Env& env, const ItemIndex* items, QWidget* parent = nullptr);

  // Practises ids (11 characters each) as one run titled title. Set by the
  // main window.
  std::function<void(const QString& ids, const QString& title)> onPractise;

  // Shown from the menu: the box has the focus, the last results stay.
  void openWindow();
  // Shown again at the end of a run of its hits: the results as they were.
  void showAgain();

  // 搜索: the words of the box searched.
  void runSearch();
  // 全部练习 and Enter on the list.
  void practiseAll();
  // A double click on row `row` (from 0).
  void practiseRow(int row);

  const SearchResults& results() const { return model_->results(); }
  QuestionSearch& search() { return search_; }
  QString statusText() const;

  QLabel* Label1 = nullptr;  // "查找："
  QLineEdit* Text1 = nullptr;
  QPushButton* Command1 = nullptr;  // 搜索
  QLabel* Label3 = nullptr;         // how words are written
  QTableView* List1 = nullptr;
  QLabel* Label2 = nullptr;  // how many were found
  QProgressBar* ProgressBar1 = nullptr;
  QPushButton* Command2 = nullptr;  // 全部练习
  QPushButton* Command3 = nullptr;  // 关闭

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString runTitle() const;

  Env env_;
  const ItemIndex* items_;
  QuestionSearch search_;
  SearchHitModel* model_ = nullptr;
  QString query_;  // the query of the hits shown
  bool busy_ = false;
};

}  // namespace mj
