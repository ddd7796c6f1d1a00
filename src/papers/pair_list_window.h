#pragma once
// The batch replacement window Form12 "常用替换设置": the list of replacement
// pairs with their ticks (List1), an edit box for the current pair (Text1),
// buttons for the ticks, adding, deleting and common characters, the law
// pick lists for the b of a pair, and "批量替换", which applies every ticked
// pair to the paper at one stroke. The list is read from \ini\listbox.ini
// when the window loads and written back only by "保存此设置并返回".

#include <QList>
#include <QWidget>

#include "papers/pair_list.h"
#include "platform/env.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace mj {

class LawListPicker;

class Form12 : public QWidget {
  Q_OBJECT
 public:
  explicit Form12(const Env& env, QWidget* parent = nullptr);

  // The paper's text box that "批量替换" works on.
  void setTarget(QPlainTextEdit* paper) { target_ = paper; }

  // Loads the window when it is not loaded, centres it and shows it.
  void openWindow();
  bool isLoaded() const { return loaded_; }
  // Unloads the window: what was not saved is gone.
  void unloadWindow();

  // Add2list1FromF11Combo: "[" + name + "]-->[]" as a new entry (the window
  // is loaded for it, not shown).
  void Add2list1FromF11Combo(const QString& name);
  // AddNewPair: "[]-->[" + name + "]" as a new entry; with an empty name this
  // is "添加". The new entry is selected.
  void AddNewPair(const QString& name);

  // The entries as the list shows them.
  PairList entries() const;
  bool changed() const { return changed_; }

  // The buttons' work.
  void batchReplace();                // Command1
  void cutLawName();                  // Command2
  void setTicks(int how);             // Command3 反选 (-1), Command4 全选 (1), Command5 全不选 (0)
  void deleteCurrent();               // Command7
  void insertCharacter(int index);    // Command8(index)
  bool saveAndReturn();               // Command9
  void lawPicked(const QString& name);  // Combo3

  QListWidget* List1 = nullptr;
  QLineEdit* Text1 = nullptr;
  QPushButton* Command1 = nullptr;
  QPushButton* Command2 = nullptr;
  QPushButton* Command3 = nullptr;
  QPushButton* Command4 = nullptr;
  QPushButton* Command5 = nullptr;
  QPushButton* Command6 = nullptr;
  QPushButton* Command7 = nullptr;
  QList<QPushButton*> Command8;
  QPushButton* Command9 = nullptr;
  QPushButton* Command10 = nullptr;
  QLabel* Label1 = nullptr;  // the window's note on saving
  LawListPicker* laws = nullptr;  // Combo1, Combo2, Combo3

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void loadWindow();
  void showEntries(const PairList& list, int select);
  void addEntry(const QString& pair);
  void currentChanged();
  void text1Changed(const QString& text);

  Env env_;
  QPlainTextEdit* target_ = nullptr;
  bool loaded_ = false;
  bool changed_ = false;
  bool showing_ = false;  // the list is being filled: no reaction to its signals
};

}  // namespace mj
