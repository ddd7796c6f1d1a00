#pragma once
// The law query: pick a law (or a group of laws) in a law tree, read it, show
// articles by number (12-15,20) or every article that contains a text, keep a
// temporary text of what was found, save texts, and go from an article to
// the questions that cite it.
//
// LawQuery holds the whole state of the law query window and does all of
// its work; the window only shows that state and hands over the user's
// actions. Message boxes and file dialogs go through the Env.

#include <QList>
#include <QString>
#include <functional>
#include <optional>

#include "bank/item_index.h"
#include "law/law_files.h"
#include "law/law_tree.h"
#include "platform/dbftable.h"
#include "platform/env.h"

namespace mj {

// Texts of the law query.
inline const QString kReadyLabel = QStringLiteral("准备查询:");
inline const QString kChooseLawFirst = QStringLiteral("请先选择要查询的法律！");
inline const QString kNoSuchArticle = QStringLiteral("没有该条。");
inline const QString kGroupChosen =
    QStringLiteral("你现在选择的不是单个法律，所以不能使用“全文”按钮，也不能按条查询，只能按包含字符串方式查询。");
inline const QString kBadLastChar = QStringLiteral("注意：文本框中的数据不合法，只能含小写数字和“,”号和（或）“-”号！");
inline const QString kBadChars = QStringLiteral("注意：文本框中有不合法字符，请重新输入！");
inline const QString kArticleBoxPrompt = QStringLiteral("在这里输入法条数，形如：12-23,34");
inline const QString kRelatedIdle = QStringLiteral("相关试题");
inline const QString kLookingAtTemp = QStringLiteral("在看临时文本");
inline const QString kEmphasesFile = QStringLiteral("\\ini\\emphases.ini");

// The message for a law file that is missing.
QString MissingLawFileText(const QString& path);
// The message when no article contains the text.
QString NothingFoundText(const QString& findText);

// Which laws a multi-law result holds and how long each law's part is, so
// that a position in the shown text tells its law: 15-digit lengths one
// behind the other, and the names, each followed by "●".
struct LawResultIndex {
  QString lengths;
  QString names;

  void clear();
  bool isEmpty() const { return lengths.isEmpty(); }
  void add(qsizetype length, const QString& name);
  void setSingle(qsizetype length, const QString& name);
  // The law of position pos: the one whose part the running sum of lengths
  // reaches first, or the last one when pos lies beyond them all. "" when
  // the index is empty. The name is cut at its first CR (when that is not
  // its first character) and starts at its first 《.
  QString GetLawName(qsizetype pos) const;
};

// The articles of one law that contain findText (trimmed), each article as
// it is printed, with the text marked 【】 unless it consists only of the
// characters of an article heading; title + CR LF in front. "" when the file
// is missing or no article holds the text. file is the path below the
// program folder (\lawtxt\刑法.mmd).
QString GetOneLawItem(const Env& env, const QString& title, const QString& file, const QString& findText);
// GetOneLawItem over every law of a file list (name + "●" + file + "■" per
// law), each non-empty part followed by two CR LF and entered in index.
QString GetRichTxt(const Env& env, const QString& fileList, const QString& findText, LawResultIndex& index);

// From the law-name table \dbf\33.mmd, the row whose trimmed lawname is the
// trimmed lawName: mode 1 the last five characters of its trimmed filename
// (the law's bank code), mode 2 its trimmed lawname. "" when there is none.
QString GetMyLawFileName(const Env& env, const QString& lawName, int mode);
// The same on a law-name table opened already.
QString GetMyLawFileName(const DbfTable& lawNames, const QString& lawName, int mode);

// The path of a tree node's file; "" when the tag leaves the program folder.
QString LawTagPath(const Env& env, const QString& tag);

// The article-number box: what the box holds after a change, and the
// messages the change gives, in order.
struct ArticleBoxCheck {
  QString text;
  QStringList messages;
  bool caretToEnd = false;
};
ArticleBoxCheck CheckArticleBox(const QString& text);

// A proposed file name for a text: its first 20 characters that are none of
// * ? / \ | . CR LF and the ideographic blank; "noname" when none is left.
QString MayBeFileName(const QString& text);

// In a text that has a table of contents (目录), the 0-based place of the
// heading that the line at caret names (the second occurrence of the trimmed
// line); nothing when the line is empty, starts with one of 。；：》, or the
// place is not above 15 (1-based).
std::optional<qsizetype> TocJumpTarget(const QString& text, qsizetype caret);

// The values of \ini\emphases.ini for a law title with its 《》.
struct Emphases {
  bool fileExists = false;
  bool titleOk = false;  // the title has a 》 behind its 《
  QString key;           // 重点法条
  QString minor;         // 次重点法条
};
Emphases ReadEmphases(const Env& env, const QString& title);

// The keypad of the article-number box: buttons 0-9 the digits, 10 "-",
// 11 ",", 12 delete the last character, 13 clear, 14 条 (run the query).
namespace keypad {
constexpr int kMinus = 10, kComma = 11, kDelete = 12, kClear = 13, kRun = 14, kCount = 15;
// The box after button index; a leading "." is dropped first.
QString Press(const QString& box, int index);
// Whether button index is enabled for the box.
bool Enabled(const QString& box, int index);
// The button a typed character stands for, or -1: digits, "-", "," and "*"
// (comma), "C", "c" and "/" (clear), backspace (delete), Enter (条).
int ButtonForChar(QChar c);
// The button a key press stands for, or -1: Backspace (delete), Return and
// Enter (条) whatever text they bring, else the button of the first
// character the key typed (text; a null character when it typed none).
int ButtonForKey(int key, QChar text);
// "本框说明" and its text.
QString HelpTitle();
QString HelpText();
}  // namespace keypad

// One article of the law-text export: law id, law name, number, text.
struct LawTextRecord {
  QString lawId;
  QString lawName;
  int itemNum = 0;
  QString itemText;
};
// Every article of every \lawtxt\*.mmd, in file name order, up to the first
// number that gives no text (at most 600 per law). lawIdOf gives the law id
// of a title with its 《》 ("" when the law has none).
QList<LawTextRecord> CollectLawTexts(const Env& env, const std::function<QString(const QString&)>& lawIdOf);

// The state and the work of the law query window.
class LawQuery {
 public:
  explicit LawQuery(const Env& env);

  const Env& env() const { return env_; }
  // The question index whose questions an article leads to (AllItemData).
  void setItems(const ItemIndex* items) { items_ = items; }

  // ---- What the window shows --------------------------------------------
  LawTree tree;
  LawTreeOrder order = LawTreeOrder::Paper;
  QString Label3 = kReadyLabel;
  QString Text1;  // article numbers
  QString Text2;  // search text
  bool Text1Enabled = true;
  bool Text2Enabled = true;
  bool Command4Enabled = false;  // 全文
  bool Command5Enabled = false;  // 相关NN题
  QString Command5Caption = kRelatedIdle;
  bool Command8Visible[2] = {false, false};
  QString Command8Tag[2];
  bool keypadOpen = false;
  // The result view.
  QString view;
  int viewVersion = 0;  // changes whenever view is replaced
  bool viewReadOnly = true;
  bool resultShown = false;
  // The right-button menu.
  struct MenuState {
    bool SaveTheText = true, MergeToText = true, LookText = true, SaveTempText = false, GoBack = false, NoText = true,
         SeekAndReplace = false;
  } menu;
  bool inTempText = false;

  // Requests to the window, taken by it.
  struct CaretRequest {
    qsizetype position = 0;  // 0-based
    bool toTop = false;      // bring that line to the top of the view
  };
  std::optional<CaretRequest> caretRequest;
  bool focusResult = false;

  // ---- The law in the query ---------------------------------------------
  QString title;     // node text (or 《title》 when opened from an answer)
  QString file;      // \lawtxt\....mmd
  QString fileList;  // name + "●" + file + "■" per law
  // The text of the law in the query, "" for a group or no law.
  const QString& lawText() const;
  // Its last article number (LastItemNum), 0 for a group or no law.
  int itemCount() const { return law_ ? law_->lastItemNum() : 0; }
  LawResultIndex result;
  QString tempText;
  QString lastResult;
  // The law whose articles the view shows as a query by article numbers
  // printed them (without the law's name); empty for any other view. The
  // same for lastResult.
  QString articlesTitle;
  QString lastResultTitle;
  QString longIds;  // the questions of the clicked article

  // ---- Actions ----------------------------------------------------------
  void loadTree(LawTreeOrder which);
  // A click on node i of the tree (0 the root).
  void clickNode(int i);
  // 查询 (also Enter in either box, and 条 of the keypad).
  void query();
  // 全文
  void fullText();
  // The user changed the article-number box.
  void editText1(const QString& text);
  void editText2(const QString& text);
  // The focus entered a box (false when a warning came instead).
  bool enterText1();
  bool enterText2();
  // The decimal-point key anywhere in the window.
  bool decimalKey();
  // A keypad button.
  void keypadPress(int index);
  void closeKeypad() { keypadOpen = false; }
  // An emphases button (0 本法重点法条, 1 本法次重点法条).
  void pressEmphasis(int i);
  // Whether the query button is enabled while a box holds text.
  static bool QueryEnabledFor(const QString& focusedBoxText) { return !focusedBoxText.isEmpty(); }

  // The right-button menu.
  void saveTheText();
  void mergeToText();
  void lookText();
  void saveTempText();
  void goBack();
  void noText();
  // The user edited the view (only while the temporary text is shown).
  void editView(const QString& text);

  // A click in the view at caret (0-based): finds the article's questions
  // and makes 相关NN题 ready. ctrl: the Ctrl key was held; rightButton: the
  // click opened the menu.
  void clickInView(qsizetype caret, bool ctrl = false, bool rightButton = false);
  // After a click: the 0-based place the table of contents leads to.
  std::optional<qsizetype> tocJump(qsizetype caret) const;
  // A left click of the user in the view: clickInView, then, unless the
  // temporary text is shown, a line of the table of contents puts the caret
  // on its heading (at the top of the view).
  void clickInViewAndJump(qsizetype caret, bool ctrl);
  // Whether the view shows a law or a result being read (not the temporary
  // text, not empty): the tree may then make room for it.
  bool readingResult() const { return !inTempText && resultShown && !view.isEmpty(); }

  // The questions of 相关NN题, to be practised; empty when the button is
  // disabled. The count is read from the button's caption.
  QString relatedRunIds() const;
  int relatedRunCount() const;

  // Ctrl on an article (a click in the view, a double click on an article
  // printed under an answer) leads to the article's knowledge points: the
  // law's title without 《》 and the article's number. Without it Ctrl works
  // as a plain click.
  std::function<void(const QString& title, double article)> knowledgeHook;

  // Opens the law of an article printed under an answer, at that article.
  // flag 1: a plain double click; 2: with Ctrl, which hands the article to
  // knowledgeHook instead when it is set. False when the text at pos is no
  // article.
  bool openFromAnswer(const QString& text, qsizetype pos, int flag);
  // 法律查询 of the answer window: opens the law of the first article printed
  // under the answer (text with CR LF line ends) at that article, as a plain
  // double click on its heading does. False when the answer prints none.
  bool openAtAnswer(const QString& answerText);
  // Opens the law titled title (without 《》) at the article heading item
  // (第十二条), as a double click on a printed citation does.
  void openLawAt(const QString& title, const QString& item);

 private:
  void show(const QString& text);
  // The shown view becomes the last result, with the law its articles belong to.
  void keepResult();
  void setQueryState();
  void setTempState();
  void emphasesItem();
  void applyText1(const QString& text);
  void saveText(const QString& text, const QString& dialogTitle);

  Env env_;
  const ItemIndex* items_ = nullptr;
  LawTextPtr law_;
};

}  // namespace mj
