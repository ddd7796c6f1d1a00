#include "knowledge/knowledge_points.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include "bank/tables.h"
#include "law/citations.h"
#include "law/law_links.h"
#include "law/law_query.h"
#include "log/news.h"
#include "platform/file_moves.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kInfoSection = QStringLiteral("信息");
const QString kFileCountKey = QStringLiteral("知识点文件个数");
const QString kFileFolderKey = QStringLiteral("知识点文件下载网上目录");
const QString kTakeInTitle = QStringLiteral("新知识点");

QString Upper(const QString& s) { return s.toUpper(); }

// The record of dagang.mmd with that record number; -1 when none has it.
int RecordOfNumber(const DbfTable& t, double number) {
  const int f = t.fieldIndex(QStringLiteral("therecn"));
  if (f < 0 || number == 0) return -1;
  for (const int rec : t.rows())
    if (t.number(rec, f) == number) return rec;
  return -1;
}

// The outline row with that record number; 0 when none has it.
qsizetype RowOfNumber(const Outline& outline, double number) {
  const qsizetype row = FindRowOfKey(outline, NumText(number));
  return row <= outline.count() ? row : 0;
}

// The values a row holds after a write, as the table keeps them (a text
// longer than its field is cut there).
void ReadBack(const DbfTable& t, int rec, OutlineRow& row) {
  auto value = [&](const char* name) {
    const int f = t.fieldIndex(QString::fromLatin1(name));
    return f < 0 ? QString() : t.trimmedText(rec, f);
  };
  row.b = value("b");
  row.d = value("d");
  row.r = value("r");
}

bool IsPlainFileName(const QString& name) {
  return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/') && !name.contains(u'\\');
}

// An explanation file is the user's own once it holds more than what the
// program itself writes into a new one.
bool HoldsOwnText(const QString& path) {
  if (!FileExists(path)) return false;
  const QString text = ReadText(path);
  const QString bare = text.trimmed();
  return !bare.isEmpty() && bare != kStartText && bare != kNewFileLine;
}

}  // namespace

QString DefaultExplanationFile(const QString& therecn) {
  return kPointsFolder + u'\\' + therecn + QStringLiteral(".txt");
}

QString StoredExplanationPath(const Env& env, const QString& path) {
  const QString full = CleanAbsolutePath(path);
  const QString root = CleanAbsolutePath(env.root);
  if (!full.startsWith(root + u'/')) return path;
  QString rel = full.mid(root.size());
  rel.replace(u'/', u'\\');
  return LCase(rel);
}

QString FullExplanationPath(const Env& env, const QString& stored) {
  if (stored.startsWith(u'\\')) return env.path(stored);
  return stored;
}

bool ExplanationPathAllowed(const Env& env, const QString& stored) {
  if (!stored.startsWith(u'\\')) return true;
  return IsInsideFolder(env.path(stored), env.root);
}

QString PathOutsideText(const QString& path) {
  return QStringLiteral("知识点解释文件的路径") + path + QStringLiteral("指向程序文件夹以外，不能打开，也不能在那里建立文件。");
}

ExplanationKind ExplanationKindOf(const QString& path) {
  const QString name = Upper(FileNameOf(path));
  if (name.endsWith(QStringLiteral(".TXT")) || name.endsWith(QStringLiteral(".MMD"))) return ExplanationKind::Text;
  for (const char* ext : {".HTM", ".HTML", ".DOC", ".WPS"})
    if (name.endsWith(QLatin1String(ext))) return ExplanationKind::Document;
  return ExplanationKind::Other;
}

QString MyReadFromIni(const QString& text, const QString& section, const QString& key) {
  const QString t = kCrLf + text;
  const qsizetype s = InStr(t, kCrLf + u'[' + section + u']');
  if (s == 0) return QString();
  const qsizetype next = InStr(s + 2, t, kCrLf + u'[');
  const QString marker = kCrLf + key + u'=';
  const qsizetype k = InStr(s + 2, t, marker);
  if (k == 0 || (next > 0 && k > next)) return QString();
  const qsizetype from = k + Len(marker);
  const qsizetype end = InStr(from, t, kCrLf);
  return end == 0 ? Mid(t, from) : Mid(t, from, end - from);
}

int KnowledgeFileCount(const Env& env) {
  const double n = Val(IniRead(env.path(kNewsFile), kInfoSection, kFileCountKey));
  return n < 1 ? 0 : SaturatedInt<int>(std::min(n, 9999.0));
}

QString KnowledgeFileFolder(const Env& env) {
  QString folder = IniRead(env.path(kNewsFile), kInfoSection, kFileFolderKey);
  if (folder.isEmpty()) {
    // Without a folder of their own the files lie beside the news file.
    const QString news = NewsAddress(env);
    if (!news.isEmpty()) folder = news.left(news.lastIndexOf(u'/') + 1);
  }
  if (!folder.startsWith(QStringLiteral("http://"), Qt::CaseInsensitive) &&
      !folder.startsWith(QStringLiteral("https://"), Qt::CaseInsensitive))
    return QString();
  if (!folder.endsWith(u'/')) folder += u'/';
  return folder;
}

QString KnowledgeFilePath(const Env& env, int i, const QString& ext) {
  return env.path(kNewPointsFolder + QStringLiteral("\\newzsd") + QString::number(i) + u'.' + ext);
}

QList<int> MissingKnowledgeFiles(const Env& env, int n) {
  QList<int> missing;
  for (int i = 1; i <= n; ++i)
    if (!FileExists(KnowledgeFilePath(env, i, QStringLiteral("txt"))) &&
        !FileExists(KnowledgeFilePath(env, i, QStringLiteral("tx_"))))
      missing << i;
  return missing;
}

TakeInResult TakeInKnowledgeFile(const Env& env, Outline& outline, const QString& path) {
  TakeInResult result;
  const QString shownFile = MapSeparators(path);
  bool ok = false;
  const QString text = ReadText(path, &ok);
  if (!ok) {
    result.problems << QStringLiteral("读不出知识点文件") + shownFile + QStringLiteral("。");
    return result;
  }
  if (InStr(kCrLf + text, kCrLf + QStringLiteral("[知识点]")) == 0) {
    result.problems << shownFile + QStringLiteral("不是知识点文件（没有[知识点]一节），没有引入。");
    return result;
  }
  const QStringList numbers = MyReadFromIni(text, QStringLiteral("知识点"), QStringLiteral("初始信息")).split(u'|');
  const QString tablePath = env.path(kOutlineTableFile);
  DbfTable t = DbfTable::open(tablePath, DbfTable::Mode::ReadWrite);
  if (!t.isOpen()) {
    result.problems << QStringLiteral("不能写入大纲表") + MapSeparators(tablePath) + QStringLiteral("：") + t.error() +
                           QStringLiteral("；") + shownFile + QStringLiteral("没有引入。");
    return result;
  }
  // A blank 参见法条 is null in a dBASE table already: no row needs to be
  // set to an empty text first.
  const int fd = t.fieldIndex(QStringLiteral("d"));
  const int fb = t.fieldIndex(QStringLiteral("b"));
  for (const QString& token : numbers) {
    const QString number = Trim(token);
    if (number.isEmpty()) continue;
    const double n = Val(number);
    const QString where = shownFile + QStringLiteral("中的知识点") + number;
    const int rec = RecordOfNumber(t, n);
    if (rec < 0) {
      result.problems << where + QStringLiteral("：大纲中没有这个记录号。");
      continue;
    }
    // Only a point without 参见法条 is filled: what the user entered stays.
    if (fd < 0 || !Trim(t.text(rec, fd)).isEmpty()) continue;
    if (InStr(kCrLf + text, kCrLf + u'[' + number + u']') == 0) {
      result.problems << where + QStringLiteral("：文件中没有[") + number + QStringLiteral("]一节。");
      continue;
    }
    const QString citation = MyReadFromIni(text, number, QStringLiteral("参见法条"));
    QString explanation = MyReadFromIni(text, number, QStringLiteral("解析内容"));
    QString b = fb < 0 ? QString() : Trim(t.text(rec, fb));
    if (explanation.contains(u'\\')) {
      // A path: it must stay inside the program folder, since it comes from
      // the network and is opened when the point is shown.
      const QString p = Trim(explanation);
      if (!p.startsWith(u'\\') || !ExplanationPathAllowed(env, p)) {
        result.problems << where + QStringLiteral("：解释文件的路径") + p + QStringLiteral("不在程序文件夹内，没有采用。");
      } else {
        b = LCase(p);
      }
    } else {
      explanation = ReplaceAll(explanation, QStringLiteral("^^^^"), kCrLf);
      explanation = ReplaceAll(explanation, QStringLiteral("@@@"), QStringLiteral(" "));
      const QString rel = DefaultExplanationFile(NumText(n));
      const QString file = env.path(rel);
      MakeDir(env.path(kPointsFolder));
      if (HoldsOwnText(file)) {
        result.problems << where + QStringLiteral("：已有你自己写的解释文件") + MapSeparators(file) +
                               QStringLiteral("，保留原文件，没有替换。");
      } else if (!WriteTextAtomic(file, explanation)) {
        result.problems << where + QStringLiteral("：不能写入解释文件") + MapSeparators(file) + QStringLiteral("。");
        continue;
      }
      b = rel;
    }
    if (!t.setText(rec, QStringLiteral("b"), b) || !t.setText(rec, QStringLiteral("d"), Trim(citation))) {
      result.problems << where + QStringLiteral("：不能写入大纲表：") + t.error();
      continue;
    }
    if (const qsizetype row = RowOfNumber(outline, n)) {
      ReadBack(t, rec, *outline.row(row));
      result.filled << row;
    }
  }
  if (!t.closeDurably())
    result.problems << QStringLiteral("大纲表") + MapSeparators(tablePath) + QStringLiteral("没能保存：") + t.error();
  return result;
}

// ---- The window's state ------------------------------------------------------

KnowledgePoints::KnowledgePoints(const Env& env, Outline& outline) : env_(env), outline_(outline) {}

QString KnowledgePoints::load() {
  const QString folder = env_.path(kPointsFolder);
  if (!DirExists(folder)) MakeDir(folder);
  QString problems;
  if (outline_.isEmpty()) problems = IniZsd(env_, outline_);
  rebuildTree();
  return problems;
}

void KnowledgePoints::rebuildTree() {
  nodes_ = BuildTree(outline_);
  selectedNode = -1;
}

int KnowledgePoints::nodeOfKey(const QString& key) const {
  for (int i = 0; i < nodes_.size(); ++i)
    if (nodes_[i].key == key) return i;
  return -1;
}

void KnowledgePoints::clearFields() {
  Text1.clear();
  Text2.clear();
  Text3.clear();
  Text4.clear();
  pane.clear();
  relatedIds.clear();
  Command4Visible = false;
}

QString KnowledgePoints::fileDate(const QString& path) const {
  const QDateTime t = FileModified(path);
  return t.isValid() ? t.date().toString(QStringLiteral("yyyy-MM-dd")) : QString();
}

void KnowledgePoints::clickNode(int node) {
  if (node < 0 || node >= nodes_.size()) return;
  selectedNode = node;
  currentRow = FindRowOfKey(outline_, nodes_[node].key);
  pointSelected = false;
  // Only leaves are points; the root is the outline itself.
  if (node == 0 || !nodes_[node].children.isEmpty()) return;
  pointSelected = true;
  caption = PointCaption(nodes_[node].text);
  showPoint(currentRow);
  if (!pendingCitation.isEmpty()) {
    const QString cite = pendingCitation;
    pendingCitation.clear();
    if (!Text1.contains(cite)) typeText1(Text1 + cite);
  }
}

int KnowledgePoints::SelectNode(const QString& key) {
  const int node = nodeOfKey(key);
  if (node >= 0) clickNode(node);
  return node;
}

QString KnowledgePoints::hoverText(int node) const {
  if (node < 0 || node >= nodes_.size()) return QString();
  return PointCaption(nodes_[node].text);
}

void KnowledgePoints::openDocument(const QString& path) {
  if (batch_) return;
  ShellOpen(env_, path);
}

void KnowledgePoints::showPoint(qsizetype rowNumber) {
  clearFields();
  const OutlineRow* row = outline_.row(rowNumber);
  if (!row) return;
  Text1 = row->d;
  Text4 = row->r;
  Text2 = row->b.startsWith(u'\\') ? env_.path(row->b) : row->b;
  if (!ExplanationPathAllowed(env_, row->b)) {
    env_.msgBox(PathOutsideText(row->b), box::Exclamation);
    updateRelated();
    return;
  }
  QString file = Text2;
  if ((row->b.isEmpty() || !FileExists(file)) && Val(row->therecn) != 0) {
    // The point's default file; one that is there already is the point's
    // explanation and is kept.
    const QString rel = DefaultExplanationFile(row->therecn);
    file = env_.path(rel);
    Text2 = file;
    if (!FileExists(file)) {
      MakeDir(env_.path(kPointsFolder));
      if (!WriteTextAtomic(file, kCrLf + kStartText))
        env_.msgBox(QStringLiteral("不能建立知识点解释文件") + MapSeparators(file) + QStringLiteral("。"),
                    box::Exclamation);
    }
    writeRow(rel, row->d, row->r);
  }
  showExplanation(file);
  updateRelated();
}

void KnowledgePoints::showExplanation(const QString& file) {
  switch (ExplanationKindOf(file)) {
    case ExplanationKind::Text: {
      // A file that cannot be read leaves the pane as it was.
      bool ok = false;
      const QString text = ReadText(file, &ok);
      if (ok) pane = text;
      Text3 = fileDate(file);
      break;
    }
    case ExplanationKind::Document:
      openDocument(file);
      pane = kShownInOwnWindow;
      break;
    case ExplanationKind::Other:
      break;
  }
}

bool KnowledgePoints::writeRow(const QString& b, const QString& d, const QString& r) {
  OutlineRow* row = outline_.row(currentRow);
  if (!row) return false;
  const QString tablePath = env_.path(kOutlineTableFile);
  DbfTable own;
  DbfTable* t = batch_;
  if (!t) {
    own = DbfTable::open(tablePath, DbfTable::Mode::ReadWrite);
    t = &own;
  }
  const int rec = RecordOfNumber(*t, Val(row->therecn));
  bool ok = t->isOpen() && rec >= 0 && t->setText(rec, QStringLiteral("b"), b) &&
            t->setText(rec, QStringLiteral("d"), d) && t->setText(rec, QStringLiteral("r"), r);
  if (ok) ReadBack(*t, rec, *row);
  if (!batch_) ok = own.closeDurably() && ok;
  if (!ok) {
    const QString why = !t->isOpen() ? t->error()
                        : rec < 0    ? QStringLiteral("表中没有记录号为") + row->therecn + QStringLiteral("的条目")
                                     : t->error();
    env_.msgBox(QStringLiteral("知识点没能记录到大纲表") + MapSeparators(tablePath) + QStringLiteral("：") + why,
                box::Exclamation);
  }
  return ok;
}

void KnowledgePoints::updateRelated() {
  relatedIds.clear();
  const QString flat = PointFlatList(Text1);
  if (items_ && !flat.isEmpty()) {
    const DbfTable lawNames = DbfTable::open(env_.path(QStringLiteral("\\dbf\\") + tables::kLawNames));
    QSet<QString> seen;
    QString rest = flat;
    for (QString piece = CutMarkedBlock(rest, QStringLiteral("《")); !piece.isEmpty();
         piece = CutMarkedBlock(rest, QStringLiteral("《"))) {
      const qsizetype close = InStr(piece, QStringLiteral("》"));
      if (close == 0) continue;
      const QString title = Left(piece, close);
      const QString code = GetMyLawFileName(lawNames, title, 1);
      if (code.isEmpty()) continue;
      const QString ids = NewGetForm6LongId(*items_, code, title, Val(Mid(piece, close + 1)));
      for (qsizetype i = 0; i + 11 <= ids.size(); i += 11) {
        const QString id = ids.mid(i, 11);
        if (seen.contains(id)) continue;
        seen.insert(id);
        relatedIds += id;
      }
    }
  }
  const qsizetype count = relatedIds.size() / 11;
  Command4Visible = count > 0;
  if (count > 0) Command4Caption = kRelatedPrefix + CStr(count) + QStringLiteral("题");
}

void KnowledgePoints::typeText1(const QString& text) {
  QString t = text;
  if (Len(t) > kText1Limit) {
    t = Left(t, kText1Limit);
    env_.msgBox(kText1TooLong, 0, kTooLongTitle);
  }
  // A point typed right behind a title starts the next citation.
  if (Right(t, 2) == u"》." || Right(t, 2) == u"》．") t += u'《';
  Text1 = t;
  updateRelated();
}

void KnowledgePoints::typeText4(const QString& text) {
  QString t = text;
  if (Len(t) > kText4Limit) {
    t = Left(t, kText4Limit);
    env_.msgBox(kText4TooLong, 0, kTooLongTitle);
  }
  Text4 = t;
}

void KnowledgePoints::doubleClickText1() {
  Text3 = env_.today().toString(QStringLiteral("yyyy-MM-dd"));
  Text4 = kOwnEntry;
}

void KnowledgePoints::doubleClickFile() {
  if (Trim(Text2).isEmpty()) {
    FileDialogRequest request;
    request.title = kChooseFileTitle;
    request.filter = kChooseFileFilter;
    request.initialDir = env_.path(kPointsFolder);
    const std::optional<QString> chosen = env_.dialogs ? env_.dialogs->openFile(request) : std::nullopt;
    if (!chosen || chosen->isEmpty()) return;
    Text2 = *chosen;
    Text3 = fileDate(*chosen);
    Text4 = kFromFile;
    showExplanation(*chosen);
    return;
  }
  const QString stored = Trim(Text2);
  if (!ExplanationPathAllowed(env_, stored)) {
    env_.msgBox(PathOutsideText(stored), box::Exclamation);
    return;
  }
  const QString file = FullExplanationPath(env_, stored);
  if (FileExists(file)) {
    if (ExplanationKindOf(file) == ExplanationKind::Document) openDocument(file);
    return;
  }
  if (!WriteTextAtomic(file, kNewFileLine + kCrLf)) {
    env_.msgBox(QStringLiteral("不能建立知识点解释文件") + MapSeparators(file) + QStringLiteral("。"), box::Exclamation);
    return;
  }
  showExplanation(file);
}

bool KnowledgePoints::Command3_Click() {
  const OutlineRow* row = outline_.row(currentRow);
  if (!pointSelected || !row) {
    env_.msgBox(kChoosePointFirst, 0, QStringLiteral("记录知识点"));
    return false;
  }
  if (Trim(Text2).isEmpty() && Val(row->therecn) != 0) Text2 = env_.path(DefaultExplanationFile(row->therecn));
  const QString stored = Trim(Text2);
  if (!ExplanationPathAllowed(env_, stored)) {
    env_.msgBox(PathOutsideText(stored), box::Exclamation);
    return false;
  }
  const QString source = FullExplanationPath(env_, stored);
  const QString name = LCase(FileNameOf(source));
  if (!IsPlainFileName(name)) {
    env_.msgBox(QStringLiteral("文件路径“") + stored + QStringLiteral("”不是一个文件名，知识点没有记录。"),
                box::Exclamation);
    return false;
  }
  const QString targetRel = kPointsFolder + u'\\' + name;
  const QString target = env_.path(targetRel);
  const QString shownTarget = MapSeparators(target);
  MakeDir(env_.path(kPointsFolder));
  bool writePane = true;
  if (FileExists(source) && CleanAbsolutePath(source) != CleanAbsolutePath(target)) {
    bool copy = true;
    if (FileExists(target)) {
      const int answer = env_.msgBox(QStringLiteral("文件") + shownTarget + QStringLiteral("已经存在，要覆盖掉吗？"),
                                     box::YesNo, kOverwriteTitle);
      // No keeps the file that is there, the pane's text included.
      copy = writePane = answer == box::Yes;
    }
    if (copy) {
      if (!CopyFileOver(source, target)) {
        env_.msgBox(QStringLiteral("不能把文件") + MapSeparators(source) + QStringLiteral("复制为") + shownTarget +
                        QStringLiteral("，知识点没有记录。"),
                    box::Exclamation);
        return false;
      }
      const QString upper = Upper(name);
      if (upper.endsWith(QStringLiteral(".HTM")) || upper.endsWith(QStringLiteral(".HTML"))) {
        // The pictures of a saved web page lie in a folder named after it.
        const QString base = QFileInfo(MapSeparators(source)).completeBaseName();
        const QString dir = QFileInfo(MapSeparators(source)).absolutePath();
        for (const QString& suffix : {QStringLiteral(".files"), QStringLiteral("_files"), QStringLiteral("files")}) {
          const QString companion = dir + u'/' + base + suffix;
          if (!DirExists(companion)) continue;
          if (!CopyFolderOver(companion, env_.path(kPointsFolder) + u'/' + base + suffix))
            env_.msgBox(QStringLiteral("网页的附属文件夹") + companion + QStringLiteral("没能全部复制。"),
                        box::Exclamation);
        }
      }
    }
  }
  if (!writeRow(targetRel, Trim(Text1), Trim(Text4))) return false;
  Text2 = target;
  switch (ExplanationKindOf(target)) {
    case ExplanationKind::Text:
      if (writePane && !WriteTextAtomic(target, pane)) {
        env_.msgBox(QStringLiteral("知识点解释没能保存到") + shownTarget + QStringLiteral("。"), box::Exclamation);
        return false;
      }
      if (!writePane) pane = ReadText(target);
      break;
    case ExplanationKind::Document: {
      const QString upper = Upper(name);
      if (upper.endsWith(QStringLiteral(".HTM")) || upper.endsWith(QStringLiteral(".HTML"))) openDocument(target);
      break;
    }
    case ExplanationKind::Other:
      break;
  }
  env_.msgBox(QStringLiteral("保存完毕，存为") + kCrLf + shownTarget, 0, kSavedTitle);
  return true;
}

bool KnowledgePoints::Command2_Click() {
  if (!pointSelected) {
    env_.msgBox(kNoPointChecked, 0, kCheckFailedTitle);
    return false;
  }
  Text1 = ExpandShortForms(Text1);
  updateRelated();
  const QString name = Text2;
  const QString stored = Trim(Text2);
  const QString file = stored.isEmpty() ? QString() : FullExplanationPath(env_, stored);
  const bool fileOk = !stored.isEmpty() && ExplanationPathAllowed(env_, stored) &&
                      IsPlainFileName(FileNameOf(file)) && FileExists(file);
  if (!fileOk) {
    verdict = QStringLiteral("知识点“") + name + QStringLiteral("”检验未通过。") + kCrLf +
              QStringLiteral("原因：文件名不合法或者该文件不存在。");
    return false;
  }
  const QString flat = LongDaAn(Text1);
  const QString lawText = GetLawTxtForDaAn(env_, QStringLiteral("答案：ABCD参见") + Text1);
  // A law whose file is missing, or an article beyond the law's last one.
  static const QRegularExpression missing(QStringLiteral("法律文件[^\\r\\n]*(不存在。|中共\\d+条，没有)"));
  if (flat.isEmpty() || missing.match(lawText).hasMatch()) {
    verdict = QStringLiteral("知识点“") + name + QStringLiteral("”检验未通过。") + kCrLf +
              QStringLiteral("原因:无参见法条或参见法条引用错误。");
    return false;
  }
  verdict = QStringLiteral("知识点“") + name + QStringLiteral("”检验通过。");
  Text3 = env_.today().toString(QStringLiteral("yy-MM-dd"));
  return Command3_Click();
}

void KnowledgePoints::Command6_Click() {
  const QString tablePath = env_.path(kOutlineTableFile);
  DbfTable t = DbfTable::open(tablePath, DbfTable::Mode::ReadWrite);
  batch_ = &t;
  const QString pending = pendingCitation;
  pendingCitation.clear();
  for (int i = 0; i < nodes_.size(); ++i) clickNode(i);
  pendingCitation = pending;
  batch_ = nullptr;
  if (!t.closeDurably() && t.isOpen())
    env_.msgBox(QStringLiteral("大纲表") + MapSeparators(tablePath) + QStringLiteral("没能保存：") + t.error(),
                box::Exclamation);
  env_.msgBox(QStringLiteral("ok"));
}

void KnowledgePoints::activate() {
  paneHint = kPaneHint;
  const QString folder = env_.path(kNewPointsFolder);
  if (!DirExists(folder)) MakeDir(folder);
  const int n = KnowledgeFileCount(env_);
  if (n == 0) {
    Command1Enabled = false;
    return;
  }
  const QList<int> missing = MissingKnowledgeFiles(env_, n);
  Command1Enabled = !missing.isEmpty();
  if (!missing.isEmpty() && !newFilesNoticeShown) {
    // A self-extracting package of old is never started: it counts as not
    // taken in, and the box says so.
    QStringList programs;
    for (const int i : missing) {
      const QString exe = KnowledgeFilePath(env_, i, QStringLiteral("exe"));
      if (FileExists(exe)) programs << MapSeparators(exe);
    }
    QString text = kNewFilesNotice;
    if (!programs.isEmpty())
      text += kCrLf + kCrLf + QStringLiteral("下面的文件是程序，本程序不会运行它们，请点按钮下载文本形式的知识点文件：") +
              kCrLf + programs.join(kCrLf);
    env_.msgBox(text);
    newFilesNoticeShown = true;
  }
  QStringList problems;
  bool currentFilled = false;
  for (int i = 1; i <= n; ++i) {
    const QString txt = KnowledgeFilePath(env_, i, QStringLiteral("txt"));
    if (!FileExists(txt)) continue;
    const TakeInResult r = TakeInKnowledgeFile(env_, outline_, txt);
    problems << r.problems;
    if (pointSelected && r.filled.contains(currentRow)) currentFilled = true;
    const QString done = KnowledgeFilePath(env_, i, QStringLiteral("tx_"));
    if (FileExists(done)) RemoveFile(done);
    if (!MoveFileOver(txt, done))
      problems << QStringLiteral("不能把") + MapSeparators(txt) + QStringLiteral("改名为") + MapSeparators(done) +
                      QStringLiteral("，下次还会再引入一次。");
  }
  // The point in view was filled: it shows what came.
  if (currentFilled && Trim(Text1).isEmpty()) showPoint(currentRow);
  if (!problems.isEmpty())
    env_.msgBox(QStringLiteral("引入知识点文件时有以下问题：") + kCrLf + problems.join(kCrLf), box::Exclamation,
                kTakeInTitle);
}

KnowledgePoints::ArticleOutcome KnowledgePoints::showArticle(const QString& lawTitle, double article) {
  const QList<qsizetype> rows = ZsdForItem(outline_, lawTitle, article);
  if (!rows.isEmpty()) {
    menuPoints_ = rows;
    SelectNode(NodeKeyOf(outline_.row(rows.first())->therecn));
    return ArticleOutcome::Found;
  }
  if (env_.msgBox(kAddPointQuestion, box::YesNo | box::Question, kAddPointTitle) != box::Yes)
    return ArticleOutcome::Declined;
  const QString cite = ShortCitation(lawTitle, article);
  if (pointSelected) {
    if (!Text1.contains(cite)) typeText1(Text1 + cite);
    return ArticleOutcome::Added;
  }
  pendingCitation = cite;
  return ArticleOutcome::Pending;
}

void KnowledgePoints::promptForPoint() { env_.msgBox(kChoosePointFirst); }

void KnowledgePoints::setShownQuestion(const QString& flatList) { menuPoints_ = PointsOfCitation(outline_, flatList); }

void KnowledgePoints::Zsd4ThisItem(qsizetype row) {
  const OutlineRow* r = outline_.row(row);
  if (r) SelectNode(NodeKeyOf(r->therecn));
}

}  // namespace mj
