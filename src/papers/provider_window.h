#pragma once
// The provider window Form16 "提供者信息": name or nickname, QQ number, e-mail
// and home page of the user who posts a corrected question, kept in
// \ini\YourInfo.ini, and the date of providing.

#include <QList>
#include <QWidget>

#include "papers/question_editor.h"
#include "platform/env.h"

class QLabel;
class QLineEdit;
class QToolButton;

namespace mj {

class Form16 : public QWidget {
  Q_OBJECT
 public:
  explicit Form16(const Env& env, QWidget* parent = nullptr);

  // The load step: the four values from the provider file, today's date.
  void loadWindow();
  bool isLoaded() const { return loaded_; }
  // The four values as the boxes hold them.
  ProviderInfo info() const;
  // GetItemInfo: the four values one behind the other.
  QString GetItemInfo() const { return mj::GetItemInfo(info()); }
  // 保存并返回: the file rewritten, the window closed. False (after a box
  // naming the file) when it cannot be written.
  bool saveAndReturn();

  QLabel* Header = nullptr;
  QList<QLineEdit*> Text1;  // 姓名或昵称, QQ号码, E_mail, 主页, 提供日期
  QToolButton* SaveButton = nullptr;  // "保存并返回", raised under the mouse

 private:
  Env env_;
  bool loaded_ = false;
};

}  // namespace mj
