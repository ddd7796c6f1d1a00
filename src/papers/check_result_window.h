#pragma once
// The result window Form11 "合法性检查" of a paper's check: the report in
// Text1 and, when the check found law names that the law-name list does not
// hold, the list of those names with an explanation and the offer to put
// them into the batch replacement list.

#include <QStringList>
#include <QWidget>
#include <functional>

#include "platform/env.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace mj {

class Form11 : public QWidget {
  Q_OBJECT
 public:
  explicit Form11(const Env& env, QWidget* parent = nullptr);

  // A new report: Text1 and the law names of Combo1 replaced.
  void setReport(const QString& report, const QStringList& lawNames);
  // The load step: with names in Combo1 the list, its labels and Command2
  // show and Text1 gets shorter; without, Text1 fills the window.
  void loadWindow();
  // The report with CR LF line ends.
  QString report() const;

  // Command2: each name of Combo1 that is not yet in the pair file
  // ("[" + name + "]-->") goes into the batch replacement list through this
  // (Add2list1FromF11Combo); the box "完成" gives the count. Set by the paper
  // window.
  std::function<void(const QString& name)> addToPairList;
  void addNamesToPairList();

  QLabel* Heading = nullptr;        // "合法性检验结果"
  QPlainTextEdit* Text1 = nullptr;  // the report
  QComboBox* Combo1 = nullptr;      // the unregistered law names
  QLabel* Label1 = nullptr;         // the explanation
  QLabel* Label2 = nullptr;         // the question
  QPushButton* Command1 = nullptr;  // 返回
  QPushButton* Command2 = nullptr;  // 加入批量替换列表

  static QString explanation();
  static QString question() { return QStringLiteral("现在要不要把左边列出的须更改或注册的法律名加入批量替换列表里？"); }

 private:
  Env env_;
  QWidget* namesPanel_ = nullptr;
};

}  // namespace mj
