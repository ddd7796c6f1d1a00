#pragma once
// Taking a new law into the law library. A text from outside (a plain text,
// a saved web page, or a Markdown file of a statute collection) is cleaned
// into the law text layout, its articles are checked to run 1, 2, 3 ...
// without a gap, and it is written to \lawtxt\<name>.mmd and entered into the
// three law trees. Only those four files change: no row goes into the
// law-name table, so a new law is read, searched and cited by its title, but
// its articles lead to no questions.
//
// NewLawWizard holds the state of the window that does this (Form15) and
// does its work in five steps; the window only shows that state. Message
// boxes and the file dialog go through the Env.

#include <QString>
#include <QStringList>
#include <functional>

#include "platform/env.h"

namespace mj {

// ---- Texts ------------------------------------------------------------------
inline const QString kNewLawCaption = QStringLiteral("添加新法律/法规");
inline const QStringList kNewLawButtons = {QStringLiteral("1、打开新文件"), QStringLiteral("2、整理"),
                                           QStringLiteral("3、进行系统归类"), QStringLiteral("4、添加进系统"),
                                           QStringLiteral("5、返回")};
// The open dialog's filter; Markdown files of statute collections open too.
inline const QString kNewLawFilter =
    QStringLiteral("文本文件(*.txt)|*.txt|网页文件1 (*.htm)|*.htm|网页文件2 (*.html)|*.html|"
                   "Markdown文件 (*.md)|*.md|所有文件(*.*)|*.*");
inline const QString kNewLawTitleLabel = QStringLiteral("该法律/法规的标题，如“《刑法》”：");
inline const QString kEmptyLawTitle = QStringLiteral("《》");
inline const QString kNewLawHelpFile = QStringLiteral("\\ini\\Help4AddNewLaw.ini");
inline const QString kNoTypeTitle = QStringLiteral("整理程序中断");
inline const QString kNoTypeText =
    QStringLiteral("没有文本类型标志符“第二条”，“2．”或“二、”请详细看一下刚才的说明或改一下本文本");
inline const QString kRetryTitle = QStringLiteral("请重来");
inline const QString kConfirmTitle = QStringLiteral("请你确认");
inline const QString kDoneTitle = QStringLiteral("完成");

// The choices of the three classification boxes: paper group, first letter,
// class of law.
QStringList PaperChoices();
QStringList LetterChoices();
QStringList ClassChoices();

// A file bigger than this is no single law; it is not opened.
inline constexpr qint64 kMaxNewLawBytes = 10 * 1024 * 1024;

// ---- Reading the outside text -------------------------------------------
// The Markdown of a statute collection as plain text: HTML comments go, and
// so do the heading marks (# ...), emphasis marks (** and __), quote marks
// and rule lines. Blanks of other widths (en space, no-break space, tab)
// become plain blanks. Every line ends in CR LF, the last one included, so that
// the clean-up keeps the last line of the file.
QString MarkdownToPlainText(const QString& markdown);
// A law published as several Markdown files (one per part): each converted,
// the repeated title line at the top of every further part dropped.
QString JoinMarkdownParts(const QStringList& parts);
// The text of a saved web page: scripts, styles and tags go, block ends and
// <br> become line ends, character entities are decoded.
QString HtmlToPlainText(const QString& html);
// The text of a file chosen to be added, with CR LF line ends: UTF-8 when it
// is valid UTF-8, else GBK; Markdown (.md) and web pages (.htm, .html) are
// taken out of their markup; blanks of other widths become plain blanks. Empty, with the reason for the user in *error,
// when the file is missing, unreadable, empty, too big or no text.
QString ReadNewLawSource(const QString& path, QString* error);

// Article headings at a line start (after any indent) whose numeral is in
// the textbook spelling with 零一十 (第一千零一十条) rewritten in the spelling
// of the program's numerals (第一千零十条), which the article check and every
// citation look for. What a user does by hand when the check names such an
// article; the builder of the data package does it for the real statutes.
QString RespellArticleHeads(const QString& text);

// ---- The clean-up -----------------------------------------------------------
// CR LF CR LF replaced by CR LF until none is left.
QString CollapseLineEnds(const QString& text);
// Blanks and ideographic blanks go, every 【 starts a line, 【有效性】有效
// ends one, and the headings of chapters (章), parts (编), sections (节) and
// articles (条) get a blank behind them (AddSpace).
QString FormatHeads(const QString& text);
// Every CR LF + 第 + numeral(i) + unit, i = 1..count, followed by a blank.
QString AddSpace(const QString& text, const QString& unit, int count);
// The message that tells the numbering style found (1 第二条, 2 二、, 3 2．).
QString DetectedTypeText(int type);
// The heading the check looks for: 第 + numeral + 条, numeral + 、 or n + ．.
QString CheckedHead(int type, int n);
// The messages of the check.
QString CheckGapText(int last, const QString& head);
QString CheckRepairQuestion(const QString& head);
QString CheckOkText(int last);
inline const QString kNoLastArticleText =
    QStringLiteral("没有找到最后一条的条号（或其条号无法识别），无法检查条文是否连续，请看一下本文本的最后一条。");

// ---- Classification and the tree files --------------------------------------
// Whether the four classification controls allow adding: a paper, a letter,
// a class chosen, and a title in 《》 with something between them.
bool ClassificationReady(const QString& combo1, const QString& combo2, const QString& combo3, const QString& title);
// The group line of the tree by paper (试卷一相关法律、法规), of the tree by
// class (民法), and the letter, read from the boxes' texts.
QString PaperGroupKey(const QString& combo1);
QString ClassGroupKey(const QString& combo3);
QString LetterKey(const QString& combo2);
// File="\lawtxt\<name>.mmd", the line of a tree file that names a law file.
QString NewTreeFileLine(const QString& name);
// A tree file by groups with the law entered right under every line key.
QString AddToGroupTree(const QString& text, const QString& key, const QString& name, const QString& title);
// The tree file by letter with the law entered before the line FirstOkLine
// finds, or at its end.
QString AddToLetterTree(const QString& text, const QString& letter, const QString& name, const QString& title);
// The line before which a law of that letter belongs in the tree by letter:
// the file line (or, without one, the law line) of the first law whose
// letter is the given one or a later one; empty when there is none.
QString FirstOkLine(const QString& text, const QString& letter);
// The file name a title gives (the title without 《 and 》) can name a file
// in \lawtxt\ and nothing else: no path separator, no .., no drive, none of
// the characters a file name cannot hold, no 《》 inside.
bool IsUsableLawName(const QString& name);
QString BadTitleText(const QString& title);

// The three tree files of the program folder with the law entered; a tree
// file that is missing is left alone. The tree files that could not be
// written are listed in *failed.
void AddToTreeFiles(const Env& env, const QString& combo1, const QString& combo2, const QString& combo3,
                    const QString& title, QStringList* failed = nullptr);

// ---- The wizard ---------------------------------------------------------------
class NewLawWizard {
 public:
  explicit NewLawWizard(const Env& env);

  // ---- What the window shows --------------------------------------------
  QString view;          // the text being worked on, CR LF line ends
  int viewVersion = 0;   // changes whenever the wizard replaces view
  bool enabled[5] = {true, true, false, false, true};  // the five buttons
  bool classifyVisible = false;                        // combos, label, title box
  QString combo1, combo2, combo3;                      // their current texts
  QString title = kEmptyLawTitle;                      // Text1
  bool checked = false;  // the articles were found to run without a gap
  QString openedFile;    // the file of step 1
  QString addedTitle;    // the title of the last law added, 《》 included

  // Called while the check runs, when it selects a heading in the view
  // (0-based place and length in view) before it repairs it.
  std::function<void(qsizetype start, qsizetype length)> onSelect;

  // ---- Actions -------------------------------------------------------------
  // The window opens: every step starts afresh, and the help text goes into
  // the view.
  void start();
  // The user edited the view.
  void editView(const QString& text) { view = text; }
  // 1、打开新文件: false when nothing was opened.
  bool open();
  // Opens a file without the dialog (the dialog's answer, or a test).
  bool openFile(const QString& path);
  // 2、整理
  void clean();
  // 3、进行系统归类
  void classify();
  // A change of a combo (1..3) or of the title.
  void setCombo(int index, const QString& text);
  void setTitle(const QString& text);
  // 4、添加进系统: true when the law was written.
  bool add();

 private:
  void setView(const QString& text);
  void checkItems();
  void updateAddButton();

  Env env_;
};

}  // namespace mj
