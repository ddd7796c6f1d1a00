#pragma once
// The knowledge-point window's work: the outline tree, the four fields of
// the selected point (参见法条, 文件路径, 更改日期, 来源备注) with its
// explanation, the check, saving, the questions that cite the point's
// articles, the knowledge files taken in from \新知识点\, and the way from a
// law article to its points.
//
// KnowledgePoints holds the whole state of the window and does its work;
// the window shows that state after each action and hands over the user's
// actions. Message boxes, the shell and the file dialog go through the Env.

#include <QList>
#include <QString>
#include <QStringList>

#include "bank/item_index.h"
#include "knowledge/outline.h"
#include "platform/dbftable.h"
#include "platform/env.h"

namespace mj {

inline const QString kPointsFolder = QStringLiteral("\\知识点");
inline const QString kNewPointsFolder = QStringLiteral("\\新知识点");

// Texts of the window.
inline const QString kKnowledgeWindowTitle = QStringLiteral("知识点管理窗口");
inline const QString kStartText = QStringLiteral(
    "此知识点还没有相关解释文件，你可以\r\n"
    "1、直接把知识点相关解释粘贴到这里，然后点下面的“保存”按钮。\r\n"
    "2、双击这个文本框或者下面的“文件路径”框以直接引入文件。");
inline const QString kNewFileLine = QStringLiteral("请在这里写入知识点解释，保存后点“记录知识点”按钮。");
inline const QString kShownInOwnWindow =
    QStringLiteral("本条知识点解释见新弹出的窗口。\r\n或双击本框弹出知识点解释窗口。");
inline const QString kPaneHint = QStringLiteral("双击文件名内容框以加入知识点解释。");
inline const QString kTooLongTitle = QStringLiteral("内容过长");
inline const QString kText1TooLong = QStringLiteral("本框内容过长,不能超过120个汉字。");
inline const QString kText4TooLong = QStringLiteral("本框内容过长,不能超过100个汉字。");
inline const QString kOwnEntry = QStringLiteral("自己添加。");
inline const QString kFromFile = QStringLiteral("从文件引入。");
inline const QString kChooseFileTitle = QStringLiteral("引入知识点文件，类型可为*.txt,*.doc,*.htm,*.html,*.wps");
inline const QString kChooseFileFilter = QStringLiteral(
    "文本文件(*.txt,*.doc,*.wps)|*.txt;*.doc;*.wps|网页文件(*.htm,*.html)|*.htm;*.html|所有文件(*.*)|*.*");
inline const QString kCheckFailedTitle = QStringLiteral("检验未通过");
inline const QString kNoPointChecked = QStringLiteral("你还没选知识点，检验未通过。");
inline const QString kOverwriteTitle = QStringLiteral("注意，已有该文件存在");
inline const QString kSavedTitle = QStringLiteral("保存完毕");
inline const QString kChoosePointFirst = QStringLiteral("请先在左边的目录树里选择知识点。");
inline const QString kAddPointTitle = QStringLiteral("是否加入知识点");
inline const QString kAddPointQuestion = QStringLiteral("还没有加入该条的知识点，现在要加入吗？");
inline const QString kNewFilesNotice = QStringLiteral("有新的知识点文件，点击下面的按钮进行下载。");
inline const QString kCloseCaption = QStringLiteral("关   闭");
inline const QString kCloseCaptionAfterRun = QStringLiteral("关  闭");
inline const QString kBackToQuestion = QStringLiteral("返回原题");
inline const QString kRelatedPrefix = QStringLiteral("相关");

// Limits of the two boxes, in characters.
inline constexpr int kText1Limit = 120;
inline constexpr int kText4Limit = 100;

// The default explanation file of a point, below the program folder:
// \知识点\<therecn>.txt.
QString DefaultExplanationFile(const QString& therecn);
// How field b stores a path: lower case (ASCII letters), without the
// program folder, so that it begins with "\". A path outside the program
// folder stays as it is.
QString StoredExplanationPath(const Env& env, const QString& path);
// The full path of a stored path: one that begins with "\" lies below the
// program folder; any other is taken as it stands.
QString FullExplanationPath(const Env& env, const QString& stored);
// Whether a path that begins with "\" stays inside the program folder
// (one with ".." might not). Paths taken as they stand are the user's own
// choice and count as allowed.
bool ExplanationPathAllowed(const Env& env, const QString& stored);
// The box for a path that leads out of the program folder.
QString PathOutsideText(const QString& path);

// What kind of file an explanation is, by its name (any case): .txt and .mmd
// are shown in the pane; .htm, .html, .doc and .wps are documents opened
// with the desktop's program; anything else is neither.
enum class ExplanationKind { Text, Document, Other };
ExplanationKind ExplanationKindOf(const QString& path);

// The value of key in section of a knowledge file's text: behind CR LF "["
// section "]", the text behind CR LF key "=" up to the next CR LF. The key
// is looked for inside its section only; a section on the first line counts.
// Empty when either is missing.
QString MyReadFromIni(const QString& text, const QString& section, const QString& key);

// The knowledge files on offer: 知识点文件个数 of the news file (0 without one).
int KnowledgeFileCount(const Env& env);
// Where they are fetched from: 知识点文件下载网上目录 of the news file,
// ending in "/", or the folder of the news file's own address when the
// value is empty; empty when neither is an http(s) address.
QString KnowledgeFileFolder(const Env& env);
// \新知识点\newzsd<i>.<ext>
QString KnowledgeFilePath(const Env& env, int i, const QString& ext);
// The files 1..n of which neither the .txt nor the .tx_ is there.
QList<int> MissingKnowledgeFiles(const Env& env, int n);
// Takes in one knowledge file: for each point of 初始信息 whose 参见法条 is
// empty, 参见法条 and the explanation (written to the point's default file,
// or a path) go into dagang.mmd and the outline array. A point whose
// 参见法条 holds text is left as it is: the user's own entries are never
// overwritten, nor is an explanation file the user wrote.
struct TakeInResult {
  QList<qsizetype> filled;  // rows (1-based) that were filled
  QStringList problems;     // what could not be taken in, one line each, naming the file
};
TakeInResult TakeInKnowledgeFile(const Env& env, Outline& outline, const QString& path);

class KnowledgePoints {
 public:
  KnowledgePoints(const Env& env, Outline& outline);

  // The question index the related questions are found in (AllItemData).
  void setItems(const ItemIndex* items) { items_ = items; }

  // The window's load: \知识点 made when missing, the outline array loaded
  // when it is empty, the tree built. The problems of the outline table, in
  // words for the user; empty when there are none.
  QString load();
  // The tree built again from the outline array.
  void rebuildTree();
  const QList<OutlineNode>& nodes() const { return nodes_; }
  // The node of a key; -1 when none has it.
  int nodeOfKey(const QString& key) const;

  // A click on node i of the tree.
  void clickNode(int node);
  // Selects the node of key and runs the click on it; the node, or -1.
  int SelectNode(const QString& key);
  // The text of Label5 while the pointer is over node i.
  QString hoverText(int node) const;

  // The user typed in a box (the box's whole new text).
  void typeText1(const QString& text);
  void typeText4(const QString& text);
  // The user edited the explanation pane (text with CR LF line ends).
  void editPane(const QString& text) { pane = text; }
  void doubleClickText1();
  // A double click on Text2 or on the explanation pane.
  void doubleClickFile();

  // Command2 "合法性检验"; true when the check passed (and the point was saved).
  bool Command2_Click();
  // Command3 "记录知识点"; true when the point was saved.
  bool Command3_Click();
  // Command6 "生成知识点文件".
  void Command6_Click();
  // Each time the window becomes active: the hint of the pane kept, the
  // knowledge files checked, those that came taken in.
  void activate();

  // A law article's points (law query with Ctrl): the first one is
  // selected and all are offered by the pane's menu. Without any, asks
  // whether to add one; on Yes the article is added to the selected point,
  // or waits for the next point chosen (call promptForPoint once the window
  // is shown).
  enum class ArticleOutcome { Found, Declined, Added, Pending };
  ArticleOutcome showArticle(const QString& lawTitle, double article);
  // The prompt to choose a point for the waiting article.
  void promptForPoint();
  // The points of a question's flat citation list, for the pane's menu.
  void setShownQuestion(const QString& flatList);
  // The rows (1-based) that the pane's menu 本条知识点 offers.
  const QList<qsizetype>& menuPoints() const { return menuPoints_; }
  // Zsd4ThisItem: the point of that row selected.
  void Zsd4ThisItem(qsizetype row);

  // State shown by the window.
  QString caption;   // the frame's caption
  QString Text1;     // 参见法条
  QString Text2;     // 文件路径
  QString Text3;     // 更改日期
  QString Text4;     // 来源备注
  QString pane;      // RichTextBox1, CR LF line ends
  QString verdict;   // RichTextBox2
  QString paneHint;  // tool tip of the pane
  qsizetype currentRow = 0;
  bool pointSelected = false;
  int selectedNode = -1;
  QString relatedIds;  // 11 characters each
  QString Command4Caption = QStringLiteral("相关NN题");
  bool Command4Visible = false;
  QString Command5Caption = kCloseCaption;
  bool Command1Enabled = false;
  bool newFilesNoticeShown = false;  // once per program run
  // An article waiting to be added to the next point chosen (short form).
  QString pendingCitation;

  const Env& env() const { return env_; }
  Outline& outline() { return outline_; }

 private:
  void showPoint(qsizetype row);
  // The explanation file in the pane (a text, with its date in Text3), or
  // opened with the desktop's program (a document).
  void showExplanation(const QString& file);
  void clearFields();
  void updateRelated();
  // Writes b, d, r of the current row into dagang.mmd and the array; false
  // (and a box naming the table) when the table could not be written.
  bool writeRow(const QString& b, const QString& d, const QString& r);
  void openDocument(const QString& path);
  QString fileDate(const QString& path) const;

  Env env_;
  Outline& outline_;
  const ItemIndex* items_ = nullptr;
  QList<OutlineNode> nodes_;
  QList<int> nodeOfRow_;  // node of each row (1-based rows; index 0 unused)
  QList<qsizetype> menuPoints_;
  // While Command6 walks the tree: the table is kept open for all rows, and
  // documents are not opened.
  DbfTable* batch_ = nullptr;
};

}  // namespace mj
