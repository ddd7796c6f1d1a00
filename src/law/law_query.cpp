#include "law/law_query.h"

#include <QDir>

#include "bank/tables.h"
#include "law/citations.h"
#include "law/law_extract.h"
#include "law/law_links.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/dbftable.h"
#include "platform/inifile.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kLawMark = QStringLiteral("●");
const QString kFileMark = QStringLiteral("■");
const QString kArticleChars = QStringLiteral("0123456789,-");
const QString kJoinChars = QStringLiteral(",-");
// The colon-less label that the query and 全文 test for.
const QString kReadyNoColon = QStringLiteral("准备查询");
const QString kStartHint =
    QStringLiteral(
        "　　请在左边的目录树中选择要查询的法律、法规，然后在上面的框中输入法条数（形如：12-23,34）"
        "或要查找的文字，再按回车键或“查询”按钮。") +
    kCrLf +
    QStringLiteral(
        "　　任何时候按下小数点键均可调出法条输入框；单击查到的法条，"
        "可以做出自该法条的试题。");

constexpr int kLengthWidth = 15;

}  // namespace

QString MissingLawFileText(const QString& path) {
  return QStringLiteral("法律/法规文件") + path + QStringLiteral("不存在。");
}

QString NothingFoundText(const QString& findText) {
  return QStringLiteral("没有含  ") + findText + QStringLiteral("  的法条。");
}

// ---- Result index ----------------------------------------------------------

void LawResultIndex::clear() {
  lengths.clear();
  names.clear();
}

void LawResultIndex::add(qsizetype length, const QString& name) {
  lengths += QStringLiteral("%1").arg(length, kLengthWidth, 10, QLatin1Char('0'));
  names += name + kLawMark;
}

void LawResultIndex::setSingle(qsizetype length, const QString& name) {
  clear();
  add(length, name);
}

QString LawResultIndex::GetLawName(qsizetype pos) const {
  const qsizetype n = Len(lengths) / kLengthWidth;
  if (n == 0) return QString();
  qsizetype chosen = n;
  double sum = 0;
  for (qsizetype i = 1; i <= n; ++i) {
    sum += Val(Mid(lengths, (i - 1) * kLengthWidth + 1, kLengthWidth));
    if (sum >= static_cast<double>(pos)) {
      chosen = i;
      break;
    }
  }
  QString name = names.split(kLawMark).value(chosen - 1);
  const qsizetype cr = InStr(name, QStringLiteral("\r"));
  if (cr > 1) name = Left(name, cr - 1);
  const qsizetype open = InStr(name, QStringLiteral("《"));
  if (open > 0) name = Mid(name, open);
  return name;
}

// ---- Searching -------------------------------------------------------------

QString LawTagPath(const Env& env, const QString& tag) {
  if (tag.contains(QStringLiteral(".."))) return QString();
  return env.path(tag);
}

QString GetOneLawItem(const Env& env, const QString& title, const QString& file, const QString& findText) {
  const QString path = LawTagPath(env, file);
  const LawTextPtr law = path.isEmpty() ? nullptr : LoadLawFile(path);
  if (!law) return QString();
  const QString numbers = GetMyLongDaAn(*law, findText);
  QString text = GetPutTxt2Text(law->text(), law->numeralTable(), numbers, &law->index());
  if (HasPlainChar(findText)) {
    const QString find = Trim(findText);
    if (!find.isEmpty()) text = ReplaceAll(text, find, QStringLiteral("【") + find + QStringLiteral("】"));
  }
  text = WithoutEndMark(text);
  if (text.isEmpty()) return QString();
  return title + kCrLf + text;
}

QString GetRichTxt(const Env& env, const QString& fileList, const QString& findText, LawResultIndex& index) {
  index.clear();
  QString out;
  qsizetype from = 0;
  for (qsizetype end = fileList.indexOf(kFileMark, from); end >= 0; end = fileList.indexOf(kFileMark, from)) {
    const QString entry = fileList.mid(from, end - from);
    from = end + kFileMark.size();
    const qsizetype mark = entry.indexOf(kLawMark);
    const QString name = mark < 0 ? entry : entry.left(mark);
    const QString file = mark < 0 ? QString() : entry.mid(mark + kLawMark.size());
    QString part = GetOneLawItem(env, name, file, findText);
    if (part.isEmpty()) continue;
    part += kCrLf + kCrLf;
    index.add(Len(part), name);
    out += part;
  }
  return out;
}

QString GetMyLawFileName(const Env& env, const QString& lawName, int mode) {
  return GetMyLawFileName(DbfTable::open(env.path(QStringLiteral("\\dbf\\") + tables::kLawNames)), lawName, mode);
}

QString GetMyLawFileName(const DbfTable& lawNames, const QString& lawName, int mode) {
  if (lawNames.fieldIndex(QStringLiteral("lawname")) < 0) return QString();
  const int row = FindLawNameRow(lawNames, lawName);
  if (row < 0) return QString();
  if (mode == 1) return Right(Trim(lawNames.text(row, QStringLiteral("filename"))), 5);
  if (mode == 2) return Trim(lawNames.text(row, QStringLiteral("lawname")));
  return QString();
}

// ---- Boxes, names, jumps ---------------------------------------------------

ArticleBoxCheck CheckArticleBox(const QString& text) {
  ArticleBoxCheck r;
  r.text = text;
  if (r.text.isEmpty()) return r;
  if (!kArticleChars.contains(r.text.back())) {
    r.messages.append(kBadLastChar);
    r.text.chop(1);
    r.caretToEnd = true;
  } else if (Len(r.text) > 1 && kJoinChars.contains(r.text.back()) &&
             kJoinChars.contains(r.text.at(r.text.size() - 2))) {
    r.text.chop(1);
  }
  for (const QChar c : std::as_const(r.text)) {
    if (!kArticleChars.contains(c)) {
      r.messages.append(kBadChars);
      r.text.clear();
      break;
    }
  }
  return r;
}

QString MayBeFileName(const QString& text) {
  static const QString bad = QStringLiteral("*?/\\|.\r\n　");
  QString name;
  for (const QChar c : text) {
    if (bad.contains(c)) continue;
    name += c;
    if (name.size() == 20) break;
  }
  return name.isEmpty() ? QStringLiteral("noname") : name;
}

std::optional<qsizetype> TocJumpTarget(const QString& text, qsizetype caret) {
  if (!text.contains(QStringLiteral("目录"))) return std::nullopt;
  caret = std::clamp<qsizetype>(caret, 0, text.size());
  const qsizetype start = caret == 0 ? 0 : text.lastIndexOf(u'\n', caret - 1) + 1;
  qsizetype end = text.indexOf(kCrLf, start);
  if (end < 0) end = text.size();
  const QString line = Trim(text.mid(start, end - start));
  if (line.isEmpty() || QStringLiteral("。；：》").contains(line.at(0))) return std::nullopt;
  const qsizetype first = text.indexOf(line);
  const qsizetype second = first < 0 ? -1 : text.indexOf(line, first + 1);
  if (second < 0 || second + 1 <= 15) return std::nullopt;
  return second;
}

Emphases ReadEmphases(const Env& env, const QString& title) {
  Emphases e;
  const QString file = env.path(kEmphasesFile);
  e.fileExists = FileExists(file);
  const qsizetype open = InStr(title, QStringLiteral("《"));
  const qsizetype close = open > 0 ? InStr(open + 1, title, QStringLiteral("》")) : 0;
  e.titleOk = close > 0;
  if (!e.fileExists || !e.titleOk) return e;
  const QString section = Mid(title, open + 1, close - open - 1);
  // One read of the file for both values.
  bool ok = false;
  const QString text = ReadText(file, &ok);
  if (!ok) return e;
  e.key = IniValueIn(text, section, QStringLiteral("重点法条"));
  e.minor = IniValueIn(text, section, QStringLiteral("次重点法条"));
  return e;
}

// ---- Keypad ----------------------------------------------------------------

namespace keypad {

QString Press(const QString& box, int index) {
  QString b = box;
  if (b.startsWith(u'.')) b.remove(0, 1);
  if (index >= 0 && index <= 9) {
    if (index == 0 && b.isEmpty()) return b;
    return b + QChar(u'0' + index);
  }
  switch (index) {
    case kMinus:
    case kComma:
      if (b.endsWith(u'-') || b.endsWith(u',')) return b;
      return b + (index == kMinus ? u'-' : u',');
    case kDelete:
      b.chop(1);
      return b;
    case kClear:
      return QString();
    default:
      return b;
  }
}

bool Enabled(const QString& box, int index) {
  switch (index) {
    case kMinus:
    case kComma:
      return !(box.endsWith(u'-') || box.endsWith(u','));
    case kDelete:
    case kRun:
      return !box.isEmpty();
    default:
      return index >= 0 && index < kCount;
  }
}

int ButtonForChar(QChar c) {
  if (c >= u'0' && c <= u'9') return c.unicode() - u'0';
  switch (c.unicode()) {
    case u'-':
      return kMinus;
    case u',':
    case u'*':
      return kComma;
    case u'C':
    case u'c':
    case u'/':
      return kClear;
    case u'\b':
      return kDelete;
    case u'\r':
    case u'\n':
      return kRun;
    default:
      return -1;
  }
}

int ButtonForKey(int key, QChar text) {
  switch (key) {
    case Qt::Key_Backspace:
      return kDelete;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kRun;
    default:
      return ButtonForChar(text);
  }
}

QString HelpTitle() { return QStringLiteral("本框说明"); }

QString HelpText() {
  return QStringLiteral("1、无论何时按下小数点均可调出本输入框。所以如果要想查询第1条，") + kCrLf +
         QStringLiteral("   则只需在任何时候在键盘上键入“．1”然后回车即可，而不必先") + kCrLf +
         QStringLiteral("   用鼠标点击上面的输入框。") + kCrLf +
         QStringLiteral("2、在使用键盘输入时，“*”和“,”均同于“,”。") + kCrLf +
         QStringLiteral("  “C”和“/”均同于“清空”。") + kCrLf + QStringLiteral("3、减号“-”同于“-”，回车键同于按钮“条”。");
}

}  // namespace keypad

// ---- Export of the law texts ----------------------------------------------

QList<LawTextRecord> CollectLawTexts(const Env& env, const std::function<QString(const QString&)>& lawIdOf) {
  QList<LawTextRecord> records;
  const QDir dir(env.path(QStringLiteral("\\lawtxt")));
  const QStringList files = dir.entryList({QStringLiteral("*.mmd")}, QDir::Files, QDir::Name);
  const QString table = GetLongDaXie(600);
  for (const QString& f : files) {
    const QString title = f.left(f.indexOf(u'.'));
    const QString id = lawIdOf ? lawIdOf(QStringLiteral("《") + title + QStringLiteral("》")) : QString();
    const LawTextPtr law = LoadLawFile(dir.filePath(f));
    if (!law) continue;
    for (int n = 1; n <= 600; ++n) {
      const QString text = GetPutTxt2Text(law->text(), table, CStr(n) + kFullPoint, &law->index());
      if (text.isEmpty()) break;
      records.append({id, title, n, text});
    }
  }
  return records;
}

// ---- The window's state ----------------------------------------------------

LawQuery::LawQuery(const Env& env) : env_(env) {
  tree = LoadLawTree(env_, order);
  show(kStartHint);
}

const QString& LawQuery::lawText() const {
  static const QString none;
  return law_ ? law_->text() : none;
}

void LawQuery::show(const QString& text) {
  view = text;
  articlesTitle.clear();
  ++viewVersion;
}

void LawQuery::keepResult() {
  lastResult = view;
  lastResultTitle = articlesTitle;
}

void LawQuery::setQueryState() {
  inTempText = false;
  if (Command5Caption == kLookingAtTemp) Command5Caption = kRelatedIdle;
  menu.LookText = menu.MergeToText = menu.SaveTheText = true;
  menu.SaveTempText = menu.GoBack = false;
  viewReadOnly = true;
}

void LawQuery::setTempState() {
  inTempText = true;
  Command5Enabled = false;
  Command5Caption = kLookingAtTemp;
  menu.LookText = menu.MergeToText = menu.SaveTheText = false;
  menu.SaveTempText = menu.GoBack = true;
  viewReadOnly = false;
}

void LawQuery::loadTree(LawTreeOrder which) {
  order = which;
  tree = LoadLawTree(env_, which);
}

void LawQuery::emphasesItem() {
  const Emphases e = ReadEmphases(env_, title);
  if (!e.fileExists) return;
  if (!e.titleOk) {
    Command8Visible[0] = Command8Visible[1] = false;
    return;
  }
  Command8Visible[0] = !e.key.isEmpty();
  Command8Tag[0] = e.key;
  Command8Visible[1] = !e.minor.isEmpty();
  Command8Tag[1] = e.minor;
}

void LawQuery::clickNode(int i) {
  if (i < 0 || i >= tree.nodes.size()) return;
  if (i == 0) {
    Label3 = kReadyLabel;
    return;
  }
  const LawTreeNode node = tree.nodes[i];
  Text1Enabled = Text2Enabled = true;
  keypadOpen = false;
  const bool group = !node.children.isEmpty();
  if (group) {
    law_.reset();
    Text1Enabled = false;
  }
  // Only a law has a file to show. A group shows no law text, so it is chosen
  // whatever file line stands above it, or none: trees of older data folders
  // have groups without one.
  if (!group) {
    const QString path = LawTagPath(env_, node.tag);
    if (path.isEmpty() || !FileExists(path)) {
      env_.msgBox(MissingLawFileText(path.isEmpty() ? env_.path(node.tag) : path), box::Exclamation);
      return;
    }
    law_ = LoadLawFile(path);
  }
  Command5Enabled = false;
  longIds.clear();
  if (group) {
    fileList.clear();
    for (const int c : node.children) fileList += tree.nodes[c].text + kLawMark + tree.nodes[c].tag + kFileMark;
    Command4Enabled = false;
    result.clear();
    show(kGroupChosen);
    resultShown = false;
  } else {
    fileList = node.text + kLawMark + node.tag + kFileMark;
    Command4Enabled = true;
    show(lawText());
    resultShown = true;
  }
  Label3 = QStringLiteral("将要查询 ") + node.text;
  title = node.text;
  file = node.tag;
  emphasesItem();
  if (!group) result.setSingle(Len(lawText()), title);
  keepResult();
  setQueryState();
}

void LawQuery::query() {
  if (Label3 == kReadyNoColon) {
    env_.msgBox(kChooseLawFirst, box::Exclamation);
    return;
  }
  Command5Enabled = false;
  longIds.clear();
  if (!Text1.isEmpty() && !Text2.isEmpty()) applyText1(QString());
  if (Text1.isEmpty() && Text2.isEmpty()) {
    focusResult = true;
    return;
  }
  if (!Text1.isEmpty()) {
    result.clear();
    const QString numbers = LongDaAn(Text1, CitationSep::LawQuery);
    const QString text = law_ ? GetPutTxt2Text(law_->text(), law_->numeralTable(), numbers, &law_->index()) : QString();
    if (text.isEmpty()) {
      show(kNoSuchArticle);
    } else {
      show(text);
      articlesTitle = title;
      result.setSingle(Len(text), title);
    }
    keypadOpen = false;
    Text1.clear();
  } else {
    const QString text = GetRichTxt(env_, fileList, Text2, result);
    show(text.isEmpty() ? NothingFoundText(Text2) : text);
  }
  resultShown = true;
  keepResult();
  setQueryState();
  focusResult = true;
}

void LawQuery::fullText() {
  if (Label3 == kReadyNoColon) {
    env_.msgBox(kChooseLawFirst, box::Exclamation);
    return;
  }
  Command5Enabled = false;
  longIds.clear();
  show(lawText());
  result.clear();
  if (!lawText().isEmpty()) result.setSingle(Len(lawText()), title);
  resultShown = true;
  keepResult();
  setQueryState();
  focusResult = true;
}

void LawQuery::applyText1(const QString& text) {
  const ArticleBoxCheck check = CheckArticleBox(text);
  for (const QString& m : check.messages) env_.msgBox(m, box::Exclamation);
  Text1 = check.text;
}

void LawQuery::editText1(const QString& text) { applyText1(text); }

void LawQuery::editText2(const QString& text) { Text2 = text; }

bool LawQuery::enterText1() {
  if (Label3 == kReadyLabel) {
    env_.msgBox(kChooseLawFirst, box::Exclamation);
    return false;
  }
  Text1.clear();
  Text2.clear();
  keypadOpen = true;
  return true;
}

bool LawQuery::enterText2() {
  if (Label3 == kReadyLabel) {
    env_.msgBox(kChooseLawFirst, box::Exclamation);
    return false;
  }
  keypadOpen = false;
  Text1.clear();
  return true;
}

bool LawQuery::decimalKey() { return enterText1(); }

void LawQuery::keypadPress(int index) {
  if (index < 0 || index >= keypad::kCount || !keypad::Enabled(Text1, index)) return;
  applyText1(keypad::Press(Text1, index));
  if (index == keypad::kRun) {
    keypadOpen = false;
    query();
  }
}

void LawQuery::pressEmphasis(int i) {
  if (i < 0 || i > 1) return;
  applyText1(Command8Tag[i]);
  query();
}

// ---- Menu ------------------------------------------------------------------

void LawQuery::saveText(const QString& text, const QString& dialogTitle) {
  if (!env_.dialogs) return;
  const QString typed = Trim(Text2);
  FileDialogRequest request;
  request.title = dialogTitle;
  request.filter = QStringLiteral("Text (*.txt)|*.txt");
  request.defaultExt = QStringLiteral(".txt");
  request.fileName = typed.isEmpty() ? MayBeFileName(view) : typed;
  for (;;) {
    const std::optional<QString> chosen = env_.dialogs->saveFile(request);
    if (!chosen || chosen->isEmpty()) return;
    if (FileExists(*chosen)) {
      const int answer =
          env_.msgBox(QStringLiteral("文件 ") + *chosen + QStringLiteral(" 已存在，要覆盖掉原来的文件吗？"),
                      box::YesNoCancel | box::Question, QStringLiteral("请注意"));
      if (answer == box::No) continue;
      if (answer != box::Yes) return;
    }
    WriteTextAtomic(*chosen, text);
    return;
  }
}

void LawQuery::saveTheText() {
  if (menu.SaveTheText) saveText(view, QStringLiteral("保存查询"));
}

void LawQuery::mergeToText() {
  if (!menu.MergeToText) return;
  keepResult();
  // Articles found by their numbers do not name their law: the temporary
  // text, which gathers several laws, puts the law's title above them.
  QString piece = view;
  if (!articlesTitle.isEmpty())
    piece = (articlesTitle.startsWith(u'《') ? articlesTitle : u'《' + articlesTitle + u'》') + kCrLf + view;
  if (!tempText.contains(piece)) tempText += piece;
}

void LawQuery::lookText() {
  if (!menu.LookText) return;
  show(tempText);
  setTempState();
}

void LawQuery::saveTempText() {
  if (menu.SaveTempText) saveText(tempText, QStringLiteral("保存临时文本"));
}

void LawQuery::goBack() {
  if (!menu.GoBack) return;
  show(lastResult);
  articlesTitle = lastResultTitle;
  setQueryState();
}

void LawQuery::noText() {
  tempText.clear();
  if (inTempText) show(QString());
}

void LawQuery::editView(const QString& text) {
  if (!inTempText) return;
  view = text;
  tempText = text;
}

// ---- Articles and their questions ------------------------------------------

void LawQuery::clickInView(qsizetype caret, bool ctrl, bool rightButton) {
  if (inTempText) return;
  keypadOpen = false;
  // The right button opens the menu; the article found before stays ready,
  // so that 相关NN题 still leads to its questions.
  if (rightButton) return;
  viewReadOnly = true;
  longIds.clear();
  if (!resultShown) return;
  Command5Enabled = false;
  if (result.isEmpty()) return;
  const qsizetype pos = LineEndAt(view, caret + 1);
  const QString name = result.GetLawName(pos);
  if (name.isEmpty()) return;
  const int type = LawTypeOfName(env_, name);
  if (type == 0) return;
  // The first article of a number query stands at the very start of the
  // view, with no line break before its heading; one is put in front so
  // that its heading is read like every other.
  const double n = ItemNumAtCaret(kCrLf + view, pos + 2, type);
  if (n < 1) return;
  const DbfTable lawNames = DbfTable::open(env_.path(QStringLiteral("\\dbf\\") + tables::kLawNames));
  const QString code = GetMyLawFileName(lawNames, name, 1);
  const QString lawName = GetMyLawFileName(lawNames, name, 2);
  // With Ctrl the article leads to its knowledge points.
  if (ctrl && knowledgeHook) {
    QString title = lawName.isEmpty() ? name : lawName;
    title.remove(u'《');
    title.remove(u'》');
    knowledgeHook(title, n);
    return;
  }
  const QString ids = items_ ? NewGetForm6LongId(*items_, code, lawName, n) : QString();
  if (ids.isEmpty()) return;
  longIds = ids;
  Command5Enabled = true;
  Command5Caption = QStringLiteral("相关") + CStr(Len(ids) / 11) + QStringLiteral("题");
}

std::optional<qsizetype> LawQuery::tocJump(qsizetype caret) const { return TocJumpTarget(view, caret); }

void LawQuery::clickInViewAndJump(qsizetype caret, bool ctrl) {
  clickInView(caret, ctrl);
  if (inTempText) return;
  if (const std::optional<qsizetype> jump = tocJump(caret)) caretRequest = CaretRequest{*jump, true};
}

QString LawQuery::relatedRunIds() const { return Command5Enabled ? longIds : QString(); }

int LawQuery::relatedRunCount() const { return SaturatedInt<int>(Val(Mid(Command5Caption, 3))); }

bool LawQuery::openFromAnswer(const QString& text, qsizetype pos, int flag) {
  if (flag != 1 && flag != 2) return false;
  const std::optional<AnswerCitation> at = CitationAtAnswer(env_, text, pos);
  if (!at) return false;
  // Flag 2 (Ctrl) leads to the knowledge points of the article.
  if (flag == 2 && knowledgeHook) {
    const QString numeral = at->item.mid(1, at->item.size() - 2);  // 第...条
    knowledgeHook(at->title, MyGetTheNum(numeral));
    return true;
  }
  openLawAt(at->title, at->item);
  return true;
}

bool LawQuery::openAtAnswer(const QString& answerText) {
  const qsizetype first = answerText.indexOf(kPrintedArticleHead);
  // The 1-based place behind the marker is its 第.
  return first >= 0 && openFromAnswer(answerText, first + kPrintedArticleHead.size(), 1);
}

void LawQuery::openLawAt(const QString& lawTitle, const QString& item) {
  const QString marked = QStringLiteral("《") + lawTitle + QStringLiteral("》");
  const QString rel = LawFileTag(lawTitle);
  fileList = marked + kLawMark + rel + kFileMark;
  Label3 = kReadyLabel + marked;
  title = marked;
  file = rel;
  Text1Enabled = Text2Enabled = true;
  Command4Enabled = true;
  keypadOpen = false;
  emphasesItem();
  law_ = LoadLawByName(env_, lawTitle);
  show(lawText());
  resultShown = true;
  keepResult();
  setQueryState();
  // Any place in the text belongs to this law.
  result.setSingle(66, marked);
  const qsizetype p = InStr(lawText(), kCrLf + kLawIndent + item);
  const qsizetype caret = p > 0 ? p + 1 : 0;
  caretRequest = CaretRequest{caret, true};
  clickInView(caret);
}

}  // namespace mj
