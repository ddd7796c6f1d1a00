#pragma once
// The personal-settings window Form2: three groups of two options about how
// answers are revealed, with "确定" and "取消". Every opening selects the
// first option of each group; both buttons only close the window, and
// nothing in the program reads the options.

#include <QWidget>
#include <array>

class QGroupBox;
class QPushButton;
class QRadioButton;

namespace mj {

class Form2 : public QWidget {
  Q_OBJECT

 public:
  explicit Form2(QWidget* parent = nullptr);

  // Option1 ... Option6 by their numbers.
  QRadioButton* option(int number) const { return options_[static_cast<size_t>(number - 1)]; }
  // Frame1 ... Frame3 by their numbers.
  QGroupBox* frame(int number) const { return frames_[static_cast<size_t>(number - 1)]; }
  QPushButton* command1() const { return command1_; }  // "确定"
  QPushButton* command2() const { return command2_; }  // "取消"

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  std::array<QRadioButton*, 6> options_{};
  std::array<QGroupBox*, 3> frames_{};
  QPushButton* command1_ = nullptr;
  QPushButton* command2_ = nullptr;
};

}  // namespace mj
