#pragma once
// The knowledge-point window Form17 (知识点管理窗口): the outline tree on the
// left; on the right the selected point with its four fields, the
// explanation pane and the check's verdict; below the buttons of the points
// (新知识点, 合法性检验, 记录知识点, 相关NN题, 关闭, 生成知识点文件) and of the
// forum data (处理论坛数据, 转换链接, 整理lawinfo表). The work is done by
// KnowledgePoints and the forum functions; the window shows their state.

#include <QWidget>
#include <functional>
#include <optional>

#include "knowledge/forum_data.h"
#include "knowledge/knowledge_points.h"
#include "practice/app_state.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace mj {

class KnowledgeDownload;

class Form17 : public QWidget {
  Q_OBJECT
 public:
  explicit Form17(AppState& app, QWidget* parent = nullptr);
  ~Form17() override;

  KnowledgePoints& points() { return points_; }
  Outline& outline() { return outline_; }

  // The window's load on first use (folder, outline, tree), then shown over
  // the main window and activated.
  void openWindow();
  // The load alone: true once it has run.
  void loadWindow();
  bool loaded() const { return loaded_; }
  // The outline table was rewritten: the array is cleared and loaded again
  // with the tree.
  void reloadOutline();

  // Ctrl on a law article: its points, or the question whether to add one.
  void showArticle(const QString& lawTitle, double article);

  // Selects the node of key (its parents expanded) and runs its click.
  void SelectNode(const QString& key);

  // --- hooks of the main window ---
  // 相关NN题: a practice run over the ids; false when it could not start.
  std::function<bool(const QString& ids)> onRelatedRun;
  // 返回原题, or closing, during that run: the main window ends it, and
  // calls relatedRunEnded.
  std::function<void()> onEndRelatedRun;
  // The flat citation list of the question the practice shows; empty when none.
  std::function<QString()> shownQuestionCitation;
  // The two address boxes of 转换链接 (prompt, title); nothing on cancel.
  std::function<std::optional<QString>(const QString& prompt, const QString& title)> inputBox;

  bool inRelatedRun() const { return inRelatedRun_; }
  void relatedRunEnded();

  // Shows the state of the points.
  void render();

  // The buttons, as the program names them.
  void Command1_Click();
  void Command4_Click();
  void Command5_Click();
  void Command7_Click();
  void Command8_Click();
  void Command9_Click();
  bool downloadBusy() const;
  const ForumCounters& forumCounters() const { return counters_; }

  // Controls, named as the program names them.
  QTreeWidget* TreeView1 = nullptr;
  QGroupBox* Frame1 = nullptr;  // its title is the point's caption
  QLineEdit* Text1 = nullptr;   // 参见法条
  QLineEdit* Text2 = nullptr;   // 文件路径
  QLineEdit* Text3 = nullptr;   // 更改日期
  QLineEdit* Text4 = nullptr;   // 来源备注
  QPlainTextEdit* RichTextBox1 = nullptr;  // 知识点解释
  QPlainTextEdit* RichTextBox2 = nullptr;  // the check's verdict
  QPushButton* Command1 = nullptr;  // 新知识点
  QPushButton* Command2 = nullptr;  // 合法性检验
  QPushButton* Command3 = nullptr;  // 记录知识点
  QPushButton* Command4 = nullptr;  // 相关NN题
  QPushButton* Command5 = nullptr;  // 关   闭 / 返回原题
  QPushButton* Command6 = nullptr;  // 生成知识点文件
  QPushButton* Command7 = nullptr;  // 处理论坛数据
  QPushButton* Command8 = nullptr;  // 转换链接
  QPushButton* Command9 = nullptr;  // 整理lawinfo表
  QProgressBar* ProgressBar1 = nullptr;
  QLabel* Label5 = nullptr;  // the point under the pointer
  QLabel* Label6 = nullptr;  // rows of 转换链接
  QMenu* TvwMenu = nullptr;    // 目录树菜单
  QMenu* MyPopMenu = nullptr;  // 弹出菜单

  // The tree item of node i.
  QTreeWidgetItem* itemOfNode(int node) const;

 protected:
  bool event(QEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* e) override;

 private:
  void buildTree();
  void nodeClicked(QTreeWidgetItem* item);
  void showPaneMenu(const QPoint& at);
  void setBusy(bool busy);
  void activateWindowWork();

  AppState& app_;
  Outline outline_;
  KnowledgePoints points_;
  KnowledgeDownload* download_ = nullptr;
  QList<QTreeWidgetItem*> items_;
  QTreeWidgetItem* justChanged_ = nullptr;  // made current by the press of the click under way
  ForumCounters counters_;
  bool loaded_ = false;
  bool inRelatedRun_ = false;
  bool busy_ = false;
  bool activating_ = false;
  bool rendering_ = false;
};

}  // namespace mj
