#pragma once
// The question editor Form9 "修改/注释", opened from the answer window: the
// question taken apart into stem, options, answer, citations and note; the
// law-name pick lists with the text of the law picked, to look up the
// article to cite; the check; saving into the bank file and the question
// table, optionally with a copy to post on a forum.

#include <QList>
#include <QSpinBox>
#include <QWidget>
#include <functional>

#include "papers/question_editor.h"
#include "platform/env.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace mj {

class Form16;
class LawListPicker;

// The article number: its box (Text9) and its arrows (UpDown1) in one.
class ArticleNumberBox : public QSpinBox {
  Q_OBJECT
 public:
  using QSpinBox::QSpinBox;
  using QSpinBox::lineEdit;
};

class Form9 : public QWidget {
  Q_OBJECT
 public:
  explicit Form9(const Env& env, QWidget* parent = nullptr);

  // The load step for question id: the lists start on their first ordering,
  // the fields take the parts of the question's text, saving is off.
  void editQuestion(const QString& id);
  const QString& questionId() const { return id_; }
  QuestionParts parts() const;

  // The buttons' work.
  bool check();            // Command1 合法性检验
  bool save();             // Command2 保存并返回
  void leave();            // Command3 取消并返回
  void addCitation();      // Command4
  void removeCitation();   // Command5
  void lawPicked(const QString& name);  // Combo3

  // After a save: the question's row as it now stands, and the answer text
  // ("答案：" + letters + "参见" + citations) for the main window's boxes.
  std::function<void(const QString& id, const std::optional<ItemRow>& row, const QString& answerText)> onSaved;

  Form16* providerWindow();

  QLabel* Header = nullptr;
  QPlainTextEdit* Text1 = nullptr;          // stem
  QList<QPlainTextEdit*> Options;           // Text2 to Text5
  QLineEdit* Text6 = nullptr;               // answer
  QLineEdit* Text7 = nullptr;               // citations
  QPlainTextEdit* Text8 = nullptr;          // note
  ArticleNumberBox* UpDown1 = nullptr;      // with Text9, its box
  QLineEdit* Text9 = nullptr;
  LawListPicker* laws = nullptr;            // Combo1, Combo2, Combo3
  QPlainTextEdit* RichTextBox1 = nullptr;   // the law picked
  QPushButton* Command1 = nullptr;
  QPushButton* Command2 = nullptr;
  QPushButton* Command3 = nullptr;
  QPushButton* Command4 = nullptr;
  QPushButton* Command5 = nullptr;
  QPushButton* Command6 = nullptr;

 private:
  void fieldChanged();
  void setParts(const QuestionParts& p);

  Env env_;
  QString id_;
  Form16* form16_ = nullptr;
  bool filling_ = false;
};

}  // namespace mj
