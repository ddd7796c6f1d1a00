#include "cli/law_commands.h"

#include "cli/question_commands.h"

#include "law/citations.h"
#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_query.h"
#include "law/law_tree.h"
#include "platform/vbtext.h"

namespace mj::cli {

namespace {

const QString kOpen = QStringLiteral("《");
const QString kClose = QStringLiteral("》");
const QString kPoint = QStringLiteral("．");

// The law titles of a flat citation list, in order, as the answer window
// takes them (the text before the last 》 of each entry, without 《》).
QStringList TitlesOf(const QString& flat) {
  QStringList titles;
  for (const QString& piece : flat.split(kPoint, Qt::SkipEmptyParts)) {
    const qsizetype close = piece.lastIndexOf(kClose);
    QString name = close < 0 ? QString() : piece.left(close);
    for (const QString& drop : {QStringLiteral("<"), QStringLiteral(">"), QStringLiteral("\r"), QStringLiteral("\n"), kOpen, kClose})
      name.remove(drop);
    titles.append(name);
  }
  return titles;
}

// The node of the law trees that a group name names: a group heading or a
// law, by its text; a law also by its title with or without 《》 (the letter
// tree writes "X 《title》"). The trees are tried by paper, by class, by letter.
bool FindTreeNode(const Env& env, const QString& group, LawTreeOrder* order, int* node) {
  const QString bare = BareTitle(group);
  for (const LawTreeOrder o : {LawTreeOrder::Paper, LawTreeOrder::Class, LawTreeOrder::Letter}) {
    const LawTree tree = LoadLawTree(env, o);
    for (int i = 1; i < tree.nodes.size(); ++i) {
      const LawTreeNode& n = tree.nodes[i];
      const QString lastWord = n.text.section(QLatin1Char(' '), -1);
      if (n.text == group || (n.children.isEmpty() && BareTitle(lastWord) == bare)) {
        *order = o;
        *node = i;
        return true;
      }
    }
  }
  return false;
}

}  // namespace

QString BareTitle(const QString& title) {
  QString t = title.trimmed();
  if (t.startsWith(kOpen)) t.remove(0, 1);
  if (t.endsWith(kClose)) t.chop(1);
  return t;
}

QString UnknownLawText(const Env& env, const QString& title) {
  return QStringLiteral("没有这部法律：《%1》（找不到法律文件 %2）。").arg(title, LawFilePath(env, title));
}

int ArticleCommand::run(CommandContext& ctx) {
  const QString title = BareTitle(ctx.operands[0]);
  bool ok = false;
  const QString numberText = ctx.operands[1].trimmed();
  const int number = numberText.toInt(&ok);
  if (!ok || number <= 0 || numberText.startsWith(QLatin1Char('+')))
    return ctx.fail(QStringLiteral("条号要写成正整数（如 133），不是“%1”。").arg(ctx.operands[1]));
  const LawTextPtr law = title.isEmpty() ? nullptr : LoadLawByName(ctx.env, title);
  if (!law) return ctx.fail(UnknownLawText(ctx.env, title));
  const QString citation = kOpen + title + kClose + QStringLiteral("第%1条").arg(number);
  // An article the law does not have is printed by the answer window as a
  // sentence in place of the text; here it is the failure message.
  const QString item = GetPutTxt2Text(law->text(), law->numeralTable(), QString::number(number) + kPoint, &law->index());
  if (Len(item) < 2)
    return ctx.fail(QStringLiteral("法律文件") + LawFilePath(ctx.env, title) + QStringLiteral("中共") +
                    QString::number(law->lastItemNum()) + QStringLiteral("条，没有") + citation);
  ctx.out = GetLawTxtForDaAn(ctx.env, citation);
  return 0;
}

int CiteCommand::run(CommandContext& ctx) {
  const QString citation = ctx.operands[0];
  const QString flat = LongDaAn(citation);
  if (flat.isEmpty())
    return ctx.fail(QStringLiteral("引文里没有可查的法条（法条号要用阿拉伯数字，如 《刑法》第12条）：%1").arg(citation.simplified()));
  for (const QString& title : TitlesOf(flat)) {
    if (title.isEmpty())
      return ctx.fail(QStringLiteral("引文里的法条前面没有《法律名》：%1").arg(citation.simplified()));
    if (!LawFileExists(ctx.env, title)) return ctx.fail(UnknownLawText(ctx.env, title));
  }
  ctx.out = GetLawTxtForDaAn(ctx.env, citation);
  return 0;
}

QList<OptionInfo> SearchCommand::options() const {
  return {{QStringLiteral("group"), true, QStringLiteral("组名"),
           QStringLiteral("只查法律树里这一组的法律（如 刑法类、试卷二相关法律、法规），或一部法律；不写时查全部法律"),
           QStringLiteral("search only the laws of this group of the law trees, or one law; all laws without it")},
          {QStringLiteral("questions"), false, QString(),
           QStringLiteral("不查法条，查试题（同“题目搜索”）：题干、选项、答案和注释里含有每个词的题，词之间用空格隔开，"
                          "加引号的词照原样查；列出题库、题号和找到的文字"),
           QStringLiteral("search the questions instead of the laws (as 题目搜索): every word, separated by blanks, must "
                          "occur in the stem, options, answer or notes, a word in quotes as it stands; prints bank, ID "
                          "and the line found")}};
}

int SearchCommand::run(CommandContext& ctx) {
  if (ctx.has(QStringLiteral("questions"))) return RunQuestionSearch(ctx);
  // The law search takes one text; only the question search takes words.
  if (ctx.operands.size() > 1)
    return ctx.fail(QStringLiteral("命令 search 的参数太多，用法：mingjing-cli search 文字（查试题时：search --questions 词…）。"));
  const QString text = ctx.operands[0];
  if (text.trimmed().isEmpty()) return ctx.fail(QStringLiteral("要查的文字是空的。"));
  QString shown;
  if (ctx.has(QStringLiteral("group"))) {
    const QString group = ctx.value(QStringLiteral("group"));
    LawTreeOrder order = LawTreeOrder::Paper;
    int node = 0;
    if (!FindTreeNode(ctx.env, group, &order, &node))
      return ctx.fail(QStringLiteral("法律树里没有“%1”这一组或这部法律。").arg(group));
    // The law query itself: the click on the node, the text into the text
    // box, the query.
    LawQuery query(ctx.env);
    query.loadTree(order);
    // A law file that is missing is said in a box by the click.
    const qsizetype before = ctx.boxes->shown().size();
    query.clickNode(node);
    if (ctx.boxes->shown().size() > before) return ctx.fail(ctx.boxes->shown().last().text);
    query.Text1.clear();
    query.Text2 = text;
    query.query();
    shown = query.view;
  } else {
    // Every law of the tree by paper, each once.
    const LawTree tree = LoadLawTree(ctx.env, LawTreeOrder::Paper);
    QString fileList;
    QStringList files;
    for (const LawTreeNode& n : tree.nodes) {
      if (n.level == 0 || !n.children.isEmpty() || files.contains(n.tag)) continue;
      files.append(n.tag);
      fileList += n.text + QStringLiteral("●") + n.tag + QStringLiteral("■");
    }
    if (files.isEmpty()) return ctx.fail(QStringLiteral("法律树 %1 里没有法律。").arg(ctx.env.path(LawTreeFile(LawTreeOrder::Paper))));
    LawResultIndex index;
    shown = GetRichTxt(ctx.env, fileList, text, index);
    if (shown.isEmpty()) shown = NothingFoundText(text);
  }
  if (shown == NothingFoundText(text)) return ctx.fail(shown);
  ctx.out = shown;
  return 0;
}

}  // namespace mj::cli
