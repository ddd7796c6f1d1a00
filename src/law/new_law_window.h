#pragma once
// The window that adds a new law (添加新法律/法规): five buttons for the five
// steps, the text being worked on, which the user may also edit by hand
// between the steps, and the classification boxes of the third step. The
// work is done by NewLawWizard; the window shows its state after each step.

#include <QList>
#include <QWidget>

#include "law/new_law.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace mj {

class Form15 : public QWidget {
  Q_OBJECT
 public:
  explicit Form15(const Env& env, QWidget* parent = nullptr);

  NewLawWizard& wizard() { return wizard_; }

  // Shows the window with the help text in the view.
  void openWindow();
  // Shows the state of the wizard.
  void render();

  // Controls, named as the program names them.
  QList<QPushButton*> Command1;  // the five steps
  QPlainTextEdit* RichTextBox1 = nullptr;
  QComboBox* Combo1 = nullptr;  // paper
  QComboBox* Combo2 = nullptr;  // first letter
  QComboBox* Combo3 = nullptr;  // class
  QLabel* Label1 = nullptr;
  QLineEdit* Text1 = nullptr;  // the title
  QWidget* ClassifyPanel = nullptr;

 signals:
  // A law was written and entered into the trees (title with 《》): the law
  // query shows it from now on.
  void lawAdded(const QString& title);

 private:
  void step(int index);
  // Takes the user's edits of the view into the wizard.
  void takeEdits();

  NewLawWizard wizard_;
  int shownVersion_ = -1;
};

}  // namespace mj
