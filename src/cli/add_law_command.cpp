#include "cli/add_law_command.h"

#include <QDir>
#include <QHash>

#include "cli/law_commands.h"
#include "law/law_files.h"
#include "law/law_tree.h"
#include "law/new_law.h"
#include "platform/textfile.h"

namespace mj::cli {

namespace {

const QString kTitle = QStringLiteral("title");
const QString kClass = QStringLiteral("class");
const QString kPaper = QStringLiteral("paper");
const QString kLetter = QStringLiteral("letter");

// The key a class goes by in the tree by class: 民法, 国际（经济）法.
QStringList ClassKeys() {
  QStringList keys;
  for (const QString& choice : ClassChoices()) keys << ClassGroupKey(choice);
  return keys;
}

QString ClassList() { return ClassKeys().join(QStringLiteral("、")); }

}  // namespace

QString PinyinInitial(QChar c) {
  if ((c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z')) return QString(c.toUpper());
  const QByteArray gbk = ToGbk(QString(c));
  if (gbk.size() != 2) return QString();
  const int code = (static_cast<unsigned char>(gbk[0]) << 8) | static_cast<unsigned char>(gbk[1]);
  // Where each letter's characters begin in level 1 of GB 2312 (I, U and V
  // begin no syllable); level 1 ends at 0xD7F9.
  static const struct {
    int from;
    char letter;
  } kStarts[] = {{0xB0A1, 'A'}, {0xB0C5, 'B'}, {0xB2C1, 'C'}, {0xB4EE, 'D'}, {0xB6EA, 'E'}, {0xB7A2, 'F'},
                 {0xB8C1, 'G'}, {0xB9FE, 'H'}, {0xBBF7, 'J'}, {0xBFA6, 'K'}, {0xC0AC, 'L'}, {0xC2E8, 'M'},
                 {0xC4C3, 'N'}, {0xC5B6, 'O'}, {0xC5BE, 'P'}, {0xC6DA, 'Q'}, {0xC8BB, 'R'}, {0xC8F6, 'S'},
                 {0xCBFA, 'T'}, {0xCDDA, 'W'}, {0xCEF4, 'X'}, {0xD1B9, 'Y'}, {0xD4D1, 'Z'}};
  if (code < 0xB0A1 || code > 0xD7F9) return QString();
  char letter = 'A';
  for (const auto& s : kStarts)
    if (code >= s.from) letter = s.letter;
  return QString(QLatin1Char(letter));
}

QString ClassChoiceOf(const QString& given) {
  QString g = given.trimmed();
  g.replace(QLatin1Char('('), QStringLiteral("（"));
  g.replace(QLatin1Char(')'), QStringLiteral("）"));
  if (ClassChoices().contains(g)) return g;
  if (g.startsWith(QStringLiteral("属"))) g = g.mid(1);
  if (g.endsWith(QStringLiteral("法律、法规"))) g.chop(5);
  if (g.endsWith(QStringLiteral("类"))) g.chop(1);
  const QStringList choices = ClassChoices();
  for (const QString& choice : choices) {
    const QString key = ClassGroupKey(choice);
    QString plain = key;
    plain.remove(QStringLiteral("（"));
    plain.remove(QStringLiteral("）"));
    if (!g.isEmpty() && (g == key || g == plain)) return choice;
  }
  return QString();
}

QString PaperChoiceOf(const QString& given) {
  const QString g = given.trimmed();
  const QStringList choices = PaperChoices();
  if (choices.contains(g)) return g;
  static const QStringList digits = {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")};
  static const QStringList numerals = {QStringLiteral("一"), QStringLiteral("二"), QStringLiteral("三")};
  for (int i = 0; i < 3; ++i)
    if (g == digits[i] || g == numerals[i] || g == QStringLiteral("试卷") + numerals[i] ||
        g == QStringLiteral("卷") + numerals[i])
      return choices[i];
  return QString();
}

QString LetterChoiceOf(const QString& given) {
  const QString g = given.trimmed().toUpper();
  if (g.size() != 1 || g[0] < u'A' || g[0] > u'Z') return QString();
  return QStringLiteral("属以字母") + g + QStringLiteral("开头的法律、法规");
}

QString PaperChoiceForClass(const Env& env, const QString& classChoice) {
  const QString key = ClassGroupKey(classChoice);
  const LawTree byClass = LoadLawTree(env, LawTreeOrder::Class);
  QStringList laws;
  for (const LawTreeNode& n : byClass.nodes)
    if (n.level == 1 && n.text.trimmed() == key)
      for (const int child : n.children) laws << byClass.nodes[child].text.trimmed();
  if (laws.isEmpty()) return QString();
  const LawTree byPaper = LoadLawTree(env, LawTreeOrder::Paper);
  QString best;
  int most = 0;
  for (const LawTreeNode& n : byPaper.nodes) {
    if (n.level != 1) continue;
    int count = 0;
    for (const int child : n.children)
      if (laws.contains(byPaper.nodes[child].text.trimmed())) ++count;
    if (count > most) {
      most = count;
      best = n.text.trimmed();
    }
  }
  for (const QString& choice : PaperChoices())
    if (!best.isEmpty() && PaperGroupKey(choice) == best) return choice;
  return QString();
}

QList<OptionInfo> AddLawCommand::options() const {
  return {{kTitle, true, QStringLiteral("《标题》"),
           QStringLiteral("该法律/法规的标题，如《刑法》（书名号可以不写）；也是 lawtxt 里的文件名"),
           QStringLiteral("the title of the law, e.g. 《刑法》 (the 《》 may be left out); also its file name in lawtxt")},
          {kClass, true, QStringLiteral("类别"),
           QStringLiteral("法律的类别：") + ClassList(),
           QStringLiteral("the class of the law: ") + ClassList()},
          {kPaper, true, QStringLiteral("一|二|三"),
           QStringLiteral("属试卷一、二还是三；不写时取法律树里同一类别的法律所在的试卷"),
           QStringLiteral("paper one, two or three; without it the paper that holds the laws of the same class")},
          {kLetter, true, QStringLiteral("字母"),
           QStringLiteral("标题的拼音首字母 A–Z；不写时由标题的第一个字得出"),
           QStringLiteral("the first letter of the title's pinyin; without it taken from the title's first character")}};
}

int AddLawCommand::run(CommandContext& ctx) {
  // Every option is checked before the text is read, and the text before
  // anything is written: a bad input leaves the folder as it was.
  if (!ctx.has(kTitle) || BareTitle(ctx.value(kTitle)).trimmed().isEmpty())
    return ctx.fail(QStringLiteral("缺少 --title：该法律/法规的标题，如 --title 《刑法》。"));
  if (!ctx.has(kClass) || ctx.value(kClass).trimmed().isEmpty())
    return ctx.fail(QStringLiteral("缺少 --class：该法律/法规的类别，可选：") + ClassList() + QStringLiteral("。"));
  const QString name = BareTitle(ctx.value(kTitle));
  const QString title = QStringLiteral("《") + name + QStringLiteral("》");
  if (!IsUsableLawName(name)) return ctx.fail(BadTitleText(title));
  const QString classChoice = ClassChoiceOf(ctx.value(kClass));
  if (classChoice.isEmpty())
    return ctx.fail(QStringLiteral("没有“%1”这一类法律，可选：").arg(ctx.value(kClass)) + ClassList() + QStringLiteral("。"));
  QString paperChoice;
  if (ctx.has(kPaper)) {
    paperChoice = PaperChoiceOf(ctx.value(kPaper));
    if (paperChoice.isEmpty())
      return ctx.fail(QStringLiteral("--paper 只能是 一、二 或 三（也可写 1、2、3），不是“%1”。").arg(ctx.value(kPaper)));
  } else {
    paperChoice = PaperChoiceForClass(ctx.env, classChoice);
    if (paperChoice.isEmpty())
      return ctx.fail(QStringLiteral("法律树里没有%1类的法律可以参照，请用 --paper 写明该法律属试卷一、二还是三（如 --paper 二）。")
                          .arg(ClassGroupKey(classChoice)));
  }
  QString letterChoice;
  if (ctx.has(kLetter)) {
    letterChoice = LetterChoiceOf(ctx.value(kLetter));
    if (letterChoice.isEmpty())
      return ctx.fail(QStringLiteral("--letter 要写一个字母 A 到 Z，不是“%1”。").arg(ctx.value(kLetter)));
  } else {
    const QString letter = PinyinInitial(name.at(0));
    if (letter.isEmpty())
      return ctx.fail(QStringLiteral("查不出“%1”的拼音首字母，请用 --letter 写明标题的拼音首字母（如 --letter X）。").arg(name.at(0)));
    letterChoice = LetterChoiceOf(letter);
  }
  const QString lawFile = LawFilePath(ctx.env, name);
  if (LawFileExists(ctx.env, name))
    return ctx.fail(QStringLiteral("文件") + QDir::toNativeSeparators(lawFile) +
                    QStringLiteral("已经存在，请重新命名该法律/法规的标题。"));

  // The window's steps, its boxes kept: the questions of the article check
  // (a heading glued to the text before it) and the last confirmation are
  // answered "是", as a user who wants the law added answers them.
  NewLawWizard wizard(ctx.env);
  const qsizetype first = ctx.boxes->shown().size();
  const auto lastBox = [&]() { return OneLine(ctx.boxes->shown().last().text, QString()); };
  if (!wizard.openFile(ctx.operands[0])) return ctx.fail(lastBox());
  wizard.clean();
  if (!wizard.checked) return ctx.fail(lastBox());
  wizard.classify();
  wizard.setCombo(1, paperChoice);
  wizard.setCombo(2, letterChoice);
  wizard.setCombo(3, classChoice);
  wizard.setTitle(title);
  if (!wizard.enabled[3]) return ctx.fail(QStringLiteral("归类不完整，该法律/法规没有加入系统。"));
  const qsizetype beforeAdd = ctx.boxes->shown().size();
  if (!wizard.add()) return ctx.fail(lastBox());
  // What the add could not write is said as the failure; the law file itself
  // was written then.
  for (qsizetype i = beforeAdd; i < ctx.boxes->shown().size(); ++i)
    if (box::iconOf(ctx.boxes->shown()[i].style) == box::Exclamation)
      return ctx.fail(OneLine(ctx.boxes->shown()[i].text, QString()));

  // The report: what the window said on the way, the confirmation question
  // replaced by the classification it named (line ends are made LF for the
  // terminal by the runner).
  QStringList report;
  for (qsizetype i = first; i < ctx.boxes->shown().size(); ++i) {
    const BoxRecord& b = ctx.boxes->shown()[i];
    if (i >= beforeAdd && box::buttonsOf(b.style) == box::YesNo) {
      report << QStringLiteral("%1：%2，%3，%4。").arg(title, paperChoice, letterChoice, classChoice);
      continue;
    }
    if (box::buttonsOf(b.style) == box::YesNo) {
      report << b.text + QStringLiteral("？——已更改。");
      continue;
    }
    report << b.text;
  }
  report << QStringLiteral("法律文件：") + QDir::toNativeSeparators(lawFile);
  ctx.out = report.join(QLatin1Char('\n'));
  return 0;
}

}  // namespace mj::cli
