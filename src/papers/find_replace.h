#pragma once
// The find/replace window's work on a target text (the paper, or the law
// query's text): one hit at a time from a remembered place, replacing the
// current hit and going on, or replacing all at once. The target is held
// with CR LF line ends; places count from 1. The window shows the outcome:
// what to select, what to put in, which box to show.

#include <QString>

#include "platform/env.h"

namespace mj {

// Who opened the window: the paper window, the practice of a paper, the law
// query window. Other values make the buttons do nothing.
enum FindCallers { kFindFromPaper = 10, kFindFromPaperPractice = 14, kFindFromLawQuery = 6 };

inline const QString kFindEmpty = QStringLiteral("进行查找替换时第一个文本框内容不能为空。");
inline const QString kFindAtEnd = QStringLiteral("已经搜索到文本未尾。");

struct FindOutcome {
  enum Kind {
    Nothing,   // nothing to do (an empty find text on replace after the box)
    Empty,     // the find text is empty: the box kFindEmpty, focus to the find box
    Selected,  // a hit is selected
    AtEnd,     // no further hit: the box kFindAtEnd, focus back on the caller
    NotFound,  // replace all found nothing: the box (text in message)
    Replaced,  // replace all is done: the box (title "完成", text in message)
  } kind = Nothing;
  // The change of the target, if any: from 0-based start, remove length
  // characters and insert text (CR LF line ends).
  bool edited = false;
  qsizetype editStart = 0;
  qsizetype editLength = 0;
  QString editText;
  // The whole target after the change (replace all), when wholeText is set.
  bool wholeText = false;
  QString text;
  // The selection afterwards (0-based start and length) for Selected.
  qsizetype selStart = 0;
  qsizetype selLength = 0;
  QString message;
};

class FindReplace {
 public:
  // The place of the current hit (1-based), 0 before the first.
  qsizetype p = 0;

  // A change of the find box starts the search at the top again.
  void findTextChanged() { p = 0; }

  // 下一个: the next hit of find, exactly as typed ("^p" is not expanded),
  // from one character behind the current one. At the end p goes back to 0.
  FindOutcome findNext(const QString& target, const QString& find);
  // 替换: the current hit (at p; with p 0 the very front of the target)
  // replaced by repl with "^p" expanded, then the next hit from behind the
  // replacement. The learning step (LearnPair) is the caller's.
  FindOutcome replace(const QString& target, const QString& find, const QString& repl);
  // 全部替换: every occurrence of find ("^p" expanded) replaced by repl
  // ("^p" expanded); the number of occurrences is reported.
  FindOutcome replaceAll(const QString& target, const QString& find, const QString& repl) const;

 private:
  FindOutcome searchFrom(const QString& target, const QString& find, qsizetype from);
};

// The entry of the special characters list as it goes into a box: "回车符"
// is "^p", "全角空格" the ideographic blank, any other entry itself trimmed.
QString SpecialCharText(const QString& entry);

}  // namespace mj
