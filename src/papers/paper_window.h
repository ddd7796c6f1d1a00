#pragma once
// The paper window Form10 "外部题库": the whole text of an outside paper in
// one editable box, the check of its layout (the report comes in Form11),
// the find/replace window, the batch replacement window, saving and the
// start of its practice (the practice window Form14). Any change of the text
// disables "开始做题" until the next check; a failed check enables it as
// well, as the report is advice only. A paper is opened from the main
// window's menu 外部题库, which loads it here.

#include <QList>
#include <QString>
#include <QWidget>
#include <functional>

#include "papers/paper_file.h"
#include "papers/paper_folder.h"
#include "papers/paper_state.h"
#include "platform/env.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace mj {

class Form11;
class Form12;
class Form13;
class Form14;

class Form10 : public QWidget {
  Q_OBJECT
 public:
  // state: the paper state that the check writes and the practice reads.
  Form10(const Env& env, PaperState& state, QWidget* parent = nullptr);
  ~Form10() override;

  // The load step with a file: the paper read (GBK or UTF-8, detected) into
  // the box, "开始做题" disabled. False, after a box naming the file, when it
  // cannot be read.
  bool loadPaper(const QString& path);
  // The paper's file, its encoding (kept for saving), the text (CR LF).
  const QString& fileName() const { return fileName_; }
  PaperEncoding encoding() const { return encoding_; }
  QString paperText() const;
  // Puts a new text into the box; counts as a change.
  void setPaperText(const QString& text);

  // 检验格式: the check, its report in Form11.
  void runCheck();
  // 试一下自动转换: the text rewritten into the layout of a paper as far as
  // the fixed rules can, under the hourglass; the user is told to check it.
  void autoFormat();
  // 保存一下: the text written in the paper's own encoding, where
  // ChoosePaperSaveName says (papers/paper_folder.h): over the paper in the
  // folder of papers after the question whether to overwrite (asked once),
  // or under a name from the save dialog; the paper's file follows. False
  // when nothing was written.
  bool savePaper();
  // 开始做题: the start of the practice (the summary of the progress record
  // and the questions of a resumption), then the practice window instead of
  // this one. False when no run started.
  bool startPractice();
  // 本窗说明.
  void showWindowHelp();

  // The text the find/replace window starts with: the selection made last by
  // a mouse release over the paper (or the practice window's answer box).
  QString SelectionForFind;

  Form11* resultWindow();
  Form12* batchWindow();
  // The find/replace window; the program shares one with the law query.
  void setFindWindow(Form13* window) { form13_ = window; }
  Form13* findWindow();

  // The practice window of this paper, created on first use.
  Form14* practiceWindow();

  // 返回: the window goes and the main window comes back (set by the main
  // window).
  std::function<void()> onReturn;

  // Controls, by their names.
  QPlainTextEdit* RichTextBox1 = nullptr;
  QList<QPushButton*> Command1;     // 检验格式 … 本窗说明, index as in the program
  QPushButton* Command2 = nullptr;  // 常用替换设置: the batch replacement window
  QLabel* Label1 = nullptr;         // hints and the window's help
  QLabel* FileLabel = nullptr;      // the paper's file and encoding

  // Texts of the window.
  static QString startHint() { return QStringLiteral("检验格式后才能做题。"); }
  static QString helpText();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void showFileLabel();

  Env env_;
  PaperState& state_;
  QString fileName_;
  PaperEncoding encoding_ = PaperEncoding::Gbk;
  Form11* form11_ = nullptr;
  Form12* form12_ = nullptr;
  Form13* form13_ = nullptr;
  Form14* form14_ = nullptr;
  bool ownsFindWindow_ = false;
  // Set by the first save into the folder of papers: later saves of the
  // same paper do not ask whether to overwrite it.
  bool Saved = false;
};

}  // namespace mj
