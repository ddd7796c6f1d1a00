#include "papers/law_list_widget.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QSignalBlocker>

#include "papers/law_list.h"

namespace mj {

LawListPicker::LawListPicker(const Env& env, bool vertical, QWidget* parent) : QWidget(parent), env_(env) {
  auto* l = new QBoxLayout(vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, this);
  l->setContentsMargins(0, 0, 0, 0);
  auto combo = [this, l](const QString& name) {
    auto* c = new QComboBox(this);
    c->setObjectName(name);
    c->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    c->setMinimumContentsLength(10);
    l->addWidget(c);
    return c;
  };
  Combo1 = combo(QStringLiteral("Combo1"));
  Combo2 = combo(QStringLiteral("Combo2"));
  Combo3 = combo(QStringLiteral("Combo3"));
  Combo3->setToolTip(QStringLiteral("请在这里选择参见法条"));
  Combo3->setPlaceholderText(QStringLiteral("请在这里选择参见法条"));
  Combo1->addItems(LawOrderEntries());
  connect(Combo1, &QComboBox::currentIndexChanged, this, &LawListPicker::orderChanged);
  connect(Combo2, &QComboBox::currentIndexChanged, this, &LawListPicker::groupChanged);
  connect(Combo3, &QComboBox::activated, this, [this](int i) { emit lawPicked(Combo3->itemText(i)); });
}

void LawListPicker::load() {
  const QSignalBlocker b(Combo1);
  Combo1->setCurrentIndex(0);
  orderChanged(0);
}

void LawListPicker::orderChanged(int order) {
  {
    const QSignalBlocker b(Combo2);
    Combo2->clear();
    Combo2->addItems(LawGroupEntries(order));
    Combo2->setCurrentIndex(Combo2->count() > 0 ? 0 : -1);
  }
  groupChanged(Combo2->currentIndex());
}

void LawListPicker::groupChanged(int group) {
  Combo3->clear();
  const LawGroupFilter f = LawFilterOf(Combo1->currentIndex(), group);
  if (!f.field.isEmpty()) Combo3->addItems(PutDataTocombo3(env_, f.field, f.value));
  Combo3->setCurrentIndex(-1);
}

QString LawListPicker::currentLawName() const { return Combo3->currentText(); }

}  // namespace mj
