#pragma once
// The three pick lists of law names: Combo1 the ordering, Combo2 its groups,
// Combo3 the law names of the group (from \dbf\listbox.mmd). A change of
// Combo1 fills Combo2 anew and selects its first group, which fills Combo3.
// The question editor and the batch replacement window both use it.

#include <QWidget>

#include "platform/env.h"

class QComboBox;

namespace mj {

class LawListPicker : public QWidget {
  Q_OBJECT
 public:
  // vertical: the three lists under one another, else side by side.
  LawListPicker(const Env& env, bool vertical, QWidget* parent = nullptr);

  // Combo1 gets its first entry, which runs the rest.
  void load();
  // The name picked in Combo3 (with 《》), empty when there is none.
  QString currentLawName() const;

  QComboBox* Combo1 = nullptr;
  QComboBox* Combo2 = nullptr;
  QComboBox* Combo3 = nullptr;

 signals:
  // The user picked a law in Combo3.
  void lawPicked(const QString& name);

 private:
  void orderChanged(int order);
  void groupChanged(int group);

  Env env_;
};

}  // namespace mj
