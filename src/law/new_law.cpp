#include "law/new_law.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QStringDecoder>
#include <optional>

#include "law/law_files.h"
#include "law/law_text.h"
#include "law/line_joiner.h"
#include "law/numerals.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kCrLf2 = QStringLiteral("\r\n\r\n");
const QString kBlank = QStringLiteral(" ");

// The bytes as UTF-8 when they are valid UTF-8 throughout, else as GBK when
// they are valid GBK; nothing when they are neither.
std::optional<QString> DecodeOutsideText(QByteArray bytes) {
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
  {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString s = utf8.decode(bytes);
    if (!utf8.hasError()) return s;
  }
  QStringDecoder gbk("GBK", QStringDecoder::Flag::Stateless);
  QString s = gbk.decode(bytes);
  if (!gbk.hasError() && !s.contains(QChar::ReplacementCharacter)) return s;
  return std::nullopt;
}

// Blanks of other widths (no-break, en and em spaces, tabs ...) become plain
// blanks, which the clean-up removes; the ideographic blank stays itself.
QString PlainBlanks(QString text) {
  for (QChar& c : text)
    if (c == u'\t' || (c.category() == QChar::Separator_Space && c != u' ' && c != u'　') || c == QChar(0x200B))
      c = u' ';
  return text;
}

QString SizeText(qint64 bytes) { return QString::number(static_cast<double>(bytes) / (1024.0 * 1024.0), 'f', 1); }

}  // namespace

QStringList PaperChoices() {
  return {QStringLiteral("属试卷一相关法律、法规"), QStringLiteral("属试卷二相关法律、法规"),
          QStringLiteral("属试卷三相关法律、法规")};
}

QStringList LetterChoices() {
  QStringList out;
  for (char16_t c = u'A'; c <= u'Z'; ++c)
    out << QStringLiteral("属以字母") + QChar(c) + QStringLiteral("开头的法律、法规");
  return out;
}

QStringList ClassChoices() {
  return {QStringLiteral("属宪法类法律、法规"),           QStringLiteral("属民法类法律、法规"),
          QStringLiteral("属行政法类法律、法规"),         QStringLiteral("属刑法类法律、法规"),
          QStringLiteral("属商法类法律、法规"),           QStringLiteral("属经济法类法律、法规"),
          QStringLiteral("属国际（经济）法类法律、法规"), QStringLiteral("属律师法类法律、法规")};
}

// ---- Reading the outside text ----------------------------------------------

QString MarkdownToPlainText(const QString& markdown) {
  QString s = PlainBlanks(markdown);
  s.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  s.replace(u'\r', u'\n');
  // Notes of the collection: <!-- ... -->, also over several lines.
  static const QRegularExpression comment(QStringLiteral("<!--.*?-->"),
                                          QRegularExpression::DotMatchesEverythingOption);
  s.remove(comment);
  static const QRegularExpression heading(QStringLiteral("^ {0,3}#{1,6}(?:[ \\t]+|$)(.*?)(?:[ \\t]+#+)?[ \\t]*$"));
  static const QRegularExpression rule(QStringLiteral("^ {0,3}([-*_=])(?:[ \\t]*\\1){2,}[ \\t]*$"));
  const QStringList lines = s.split(u'\n');
  QString out;
  out.reserve(s.size() + lines.size());
  for (qsizetype i = 0; i < lines.size(); ++i) {
    QString l = lines[i];
    // A file that ends in a line break has nothing behind it.
    if (i == lines.size() - 1 && l.isEmpty()) break;
    if (rule.match(l).hasMatch()) l.clear();
    if (const auto m = heading.match(l); m.hasMatch()) l = m.captured(1);
    while (l.startsWith(u'>')) l = l.mid(l.size() > 1 && l.at(1) == u' ' ? 2 : 1);
    l.remove(QStringLiteral("**"));
    l.remove(QStringLiteral("__"));
    // A backslash at the end is a forced line break.
    if (l.endsWith(u'\\')) l.chop(1);
    out += l + kCrLf;
  }
  return out;
}

QString JoinMarkdownParts(const QStringList& parts) {
  QString out;
  QString title;
  for (qsizetype i = 0; i < parts.size(); ++i) {
    QString text = MarkdownToPlainText(parts[i]);
    // The title line: the first line with anything on it.
    qsizetype from = 0;
    while (text.mid(from, 2) == kCrLf) from += 2;
    const qsizetype end = text.indexOf(kCrLf, from);
    const QString first = text.mid(from, end < 0 ? -1 : end - from).trimmed();
    if (i == 0)
      title = first;
    else if (!title.isEmpty() && first == title)
      text.remove(0, end < 0 ? text.size() : end + 2);
    out += text;
  }
  return out;
}

QString HtmlToPlainText(const QString& html) {
  QString s = html;
  static const QRegularExpression dropped(QStringLiteral("<(script|style|head)\\b.*?</\\1\\s*>|<!--.*?-->"),
                                          QRegularExpression::DotMatchesEverythingOption |
                                              QRegularExpression::CaseInsensitiveOption);
  s.remove(dropped);
  // Line breaks of the source mean nothing in a page; its block ends do.
  s.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
  s.replace(u'\r', u' ');
  s.replace(u'\n', u' ');
  static const QRegularExpression breaks(
      QStringLiteral("<br\\s*/?>|</?(p|div|h[1-6]|li|tr|table|ul|ol|pre|blockquote|section|article)\\b[^>]*>"),
      QRegularExpression::CaseInsensitiveOption);
  s.replace(breaks, QStringLiteral("\r\n"));
  static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
  s.remove(tag);
  static const QHash<QString, QString> named = {
      {QStringLiteral("nbsp"), QStringLiteral(" ")},  {QStringLiteral("ensp"), QStringLiteral(" ")},
      {QStringLiteral("emsp"), QStringLiteral("　")}, {QStringLiteral("lt"), QStringLiteral("<")},
      {QStringLiteral("gt"), QStringLiteral(">")},    {QStringLiteral("amp"), QStringLiteral("&")},
      {QStringLiteral("quot"), QStringLiteral("\"")}, {QStringLiteral("apos"), QStringLiteral("'")},
      {QStringLiteral("ldquo"), QStringLiteral("“")}, {QStringLiteral("rdquo"), QStringLiteral("”")},
      {QStringLiteral("lsquo"), QStringLiteral("‘")}, {QStringLiteral("rsquo"), QStringLiteral("’")},
      {QStringLiteral("middot"), QStringLiteral("·")}, {QStringLiteral("hellip"), QStringLiteral("…")},
      {QStringLiteral("mdash"), QStringLiteral("—")}, {QStringLiteral("ndash"), QStringLiteral("–")},
  };
  static const QRegularExpression entity(QStringLiteral("&(#[0-9]{1,7}|#[xX][0-9a-fA-F]{1,6}|[a-zA-Z]{2,8});"));
  QString out;
  qsizetype last = 0;
  for (auto it = entity.globalMatch(s); it.hasNext();) {
    const auto m = it.next();
    const QString name = m.captured(1);
    QString repl = m.captured(0);
    if (name.startsWith(u'#')) {
      bool ok = false;
      const uint code = (name.size() > 1 && (name.at(1) == u'x' || name.at(1) == u'X')) ? name.mid(2).toUInt(&ok, 16)
                                                                                        : name.mid(1).toUInt(&ok, 10);
      if (ok && code > 0 && code <= 0x10FFFF && QChar::isPrint(static_cast<char32_t>(code)))
        repl = QString::fromUcs4(reinterpret_cast<const char32_t*>(&code), 1);
    } else if (named.contains(name.toLower())) {
      repl = named.value(name.toLower());
    }
    out += QStringView(s).mid(last, m.capturedStart() - last);
    out += repl;
    last = m.capturedEnd();
  }
  out += QStringView(s).mid(last);
  return out;
}

QString ReadNewLawSource(const QString& path, QString* error) {
  auto fail = [error](const QString& why) {
    if (error) *error = why;
    return QString();
  };
  if (error) error->clear();
  const QFileInfo info(path);
  const QString shown = QDir::toNativeSeparators(path);
  if (!info.exists() || !info.isFile()) return fail(QStringLiteral("文件") + shown + QStringLiteral("不存在。"));
  if (info.size() > kMaxNewLawBytes)
    return fail(QStringLiteral("文件") + shown + QStringLiteral("有") + SizeText(info.size()) +
                QStringLiteral("MB，超过了") + SizeText(kMaxNewLawBytes) +
                QStringLiteral("MB，不像是一部法律/法规的全文，没有打开。"));
  bool ok = false;
  const QByteArray bytes = ReadBytes(path, &ok);
  if (!ok) return fail(QStringLiteral("文件") + shown + QStringLiteral("无法读取，没有打开。"));
  if (bytes.isEmpty()) return fail(QStringLiteral("文件") + shown + QStringLiteral("是空的，没有可以整理的内容。"));
  const std::optional<QString> text = bytes.contains('\0') ? std::nullopt : DecodeOutsideText(bytes);
  if (!text)
    return fail(QStringLiteral("文件") + shown +
                QStringLiteral("不是文本文件（既不是GBK编码，也不是UTF-8编码的文字），没有打开。"));
  const QString suffix = info.suffix().toLower();
  if (suffix == u"md" || suffix == u"markdown") return MarkdownToPlainText(*text);
  if (suffix == u"htm" || suffix == u"html") return WithCrLf(PlainBlanks(HtmlToPlainText(*text)));
  return WithCrLf(PlainBlanks(*text));
}

QString RespellArticleHeads(const QString& text) {
  static const QRegularExpression head(QStringLiteral("(^|\\n)([ 　]*第)([零一二三四五六七八九十百千万]*零一十[零一二三四五六七八九十百千万]*)条"));
  QString out;
  qsizetype last = 0;
  for (auto it = head.globalMatch(text); it.hasNext();) {
    const auto m = it.next();
    QString numeral = m.captured(3);
    numeral.replace(QStringLiteral("零一十"), QStringLiteral("零十"));
    if (DaXieToNum(m.captured(3)) > 0 || DaXieToNum(numeral) <= 0) continue;
    out += QStringView(text).mid(last, m.capturedStart(3) - last);
    out += numeral;
    last = m.capturedEnd(3);
  }
  out += QStringView(text).mid(last);
  return out;
}

// ---- The clean-up -------------------------------------------------------------

QString CollapseLineEnds(const QString& text) {
  QString t = text;
  while (t.contains(kCrLf2)) t = ReplaceAll(t, kCrLf2, kCrLf);
  return t;
}

QString FormatHeads(const QString& text) {
  QString t = ReplaceAll(text, kBlank, QString());
  t = ReplaceAll(t, kIdeoBlank, QString());
  t = ReplaceAll(t, QStringLiteral("【"), kCrLf + QStringLiteral("【"));
  if (t.startsWith(kCrLf)) t.remove(0, 2);
  t = ReplaceAll(t, QStringLiteral("【有效性】有效"), QStringLiteral("【有效性】有效") + kCrLf);
  t = AddSpace(t, QStringLiteral("章"), 30);
  t = AddSpace(t, QStringLiteral("编"), 30);
  t = AddSpace(t, QStringLiteral("节"), 30);
  t = AddSpace(t, QStringLiteral("条"), 1500);
  return t;
}

// One walk instead of one replacement per number: CR LF + 第 + numeral +
// unit can only match where the characters between 第 and the unit are
// exactly the numeral, and the numeral characters never include a unit, so
// the numeral is the whole run of numeral characters behind 第. Inserting a
// blank behind a unit neither makes nor breaks any other match, so one walk
// gives what the replacements for 1, 2, ... count in turn give.
QString AddSpace(const QString& text, const QString& unit, int count) {
  if (text.isEmpty() || count < 1 || unit.size() != 1) {
    // The general case, as the replacements read.
    QString t = text;
    for (int i = 1; i <= count; ++i) {
      const QString head = kCrLf + QStringLiteral("第") + DaXie(i) + unit;
      t = ReplaceAll(t, head, head + kBlank);
    }
    return t;
  }
  QSet<QString> numerals;
  numerals.reserve(count);
  for (int i = 1; i <= count; ++i) numerals.insert(DaXie(i));
  static const QString numeralChars = QStringLiteral("零一二三四五六七八九十百千万");
  const QString lead = kCrLf + QStringLiteral("第");
  const QChar u = unit.at(0);
  QString out;
  out.reserve(text.size() + text.size() / 64);
  qsizetype from = 0;
  for (qsizetype p = text.indexOf(lead); p >= 0; p = text.indexOf(lead, p + 1)) {
    qsizetype e = p + lead.size();
    while (e < text.size() && numeralChars.contains(text.at(e))) ++e;
    if (e >= text.size() || text.at(e) != u) continue;
    if (!numerals.contains(QStringView(text).mid(p + lead.size(), e - p - lead.size()).toString())) continue;
    out += QStringView(text).mid(from, e + 1 - from);
    out += kBlank;
    from = e + 1;
  }
  out += QStringView(text).mid(from);
  return out;
}

QString DetectedTypeText(int type) {
  QString head, first, second;
  switch (type) {
    case 1:
      head = QStringLiteral("检测到文本类型为1，即其法条表示形如：");
      first = QStringLiteral("第一条 …………");
      second = QStringLiteral("第二条 …………");
      break;
    case 2:
      head = QStringLiteral("检测到文本类型为3，即其法条表示形如：");
      first = QStringLiteral("一、 …………");
      second = QStringLiteral("二、 …………");
      break;
    case 3:
      head = QStringLiteral("检测到文本类型为2，即其法条表示形如：");
      first = QStringLiteral("1． …………");
      second = QStringLiteral("2． …………");
      break;
    default:
      return QString();
  }
  return head + kCrLf + first + kCrLf + second + kCrLf + QStringLiteral("如实际情况不是这样，请手工更改。");
}

QString CheckedHead(int type, int n) {
  switch (type) {
    case 1:
      return QStringLiteral("第") + DaXie(n) + QStringLiteral("条");
    case 2:
      return DaXie(n) + QStringLiteral("、");
    case 3:
      return CStr(n) + kFullPoint;
    default:
      return QString();
  }
}

QString CheckGapText(int last, const QString& head) {
  return QStringLiteral("共") + DaXie(last) + QStringLiteral("条，") + head + QStringLiteral("条有误");
}

QString CheckRepairQuestion(const QString& head) { return head + QStringLiteral("有误，但该条头存在，要更改吗"); }

QString CheckOkText(int last) {
  return QStringLiteral("Ok，含有第一条至第") + DaXie(last) + QStringLiteral("条。") + kCrLf + kCrLf +
         QStringLiteral("返回后请注意一下看是否本法条确实是") + DaXie(last) + QStringLiteral("条。") + kCrLf +
         QStringLiteral("如果没什么问题，在进行归类后，就可以添加进入系统了。");
}

// ---- Classification and the tree files -----------------------------------------

bool ClassificationReady(const QString& combo1, const QString& combo2, const QString& combo3, const QString& title) {
  return combo1.contains(QStringLiteral("属试卷")) && combo2.contains(QStringLiteral("属以字母")) &&
         combo3.contains(QStringLiteral("类法律")) && title != kEmptyLawTitle &&
         title.startsWith(QStringLiteral("《")) && title.endsWith(QStringLiteral("》"));
}

QString PaperGroupKey(const QString& combo1) { return Mid(combo1, 2, 10); }

QString ClassGroupKey(const QString& combo3) {
  const qsizetype end = InStr(combo3, QStringLiteral("类法律"));
  return end > 2 ? Mid(combo3, 2, end - 2) : QString();
}

QString LetterKey(const QString& combo2) { return Mid(combo2, 5, 1); }

QString NewTreeFileLine(const QString& name) { return QStringLiteral("File=\"") + LawFileTag(name) + u'"'; }

QString AddToGroupTree(const QString& text, const QString& key, const QString& name, const QString& title) {
  if (key.isEmpty()) return text;
  return ReplaceAll(text, key + kCrLf,
                    key + kCrLf + NewTreeFileLine(name) + kCrLf + QStringLiteral("    ") + title + kCrLf);
}

QString FirstOkLine(const QString& text, const QString& letter) {
  const QString t = kCrLf + text;
  if (letter.size() != 1 || letter.at(0) < u'A' || letter.at(0) > u'Z') return QString();
  for (char16_t c = letter.at(0).unicode(); c <= u'Z'; ++c) {
    const qsizetype p = InStr(t, kCrLf + QChar(c) + kBlank);
    if (p == 0) continue;
    const qsizetype e = InStr(p + 2, t, kCrLf);
    const QString head = e > 0 ? Mid(t, p, e + 2 - p) : Mid(t, p);
    QString before = Left(t, p - 1);
    if (before.isEmpty()) return QString();
    const qsizetype lb = LastPos(before, kCrLf);
    if (lb > 0) before = Mid(before, lb + 2) + kCrLf;
    if (Len(before) >= 3 && Len(head) >= 3) {
      const QChar b1 = before.at(0);
      // A law line that has no file line of its own: the law line itself.
      if (b1 >= u'A' && b1 <= u'Z' && before.at(1) == u' ' && before.at(2) == u'《') return Mid(head, 3);
    }
    // The file line of the law found.
    if (LCase(Left(before, 14)) == QStringLiteral("file=\"\\lawtxt\\")) return before;
  }
  return QString();
}

QString AddToLetterTree(const QString& text, const QString& letter, const QString& name, const QString& title) {
  const QString entry = NewTreeFileLine(name) + kCrLf + letter + kBlank + title + kCrLf;
  const QString mark = FirstOkLine(text, letter);
  const QString t = mark.isEmpty() ? text + entry : ReplaceAll(text, mark, entry + mark);
  return CollapseLineEnds(t);
}

bool IsUsableLawName(const QString& name) {
  if (name.isEmpty() || name.trimmed() != name || !IsPlainLawName(name) || name.endsWith(u'.')) return false;
  static const QString bad = QStringLiteral(":*?\"<>|《》");
  for (const QChar c : name)
    if (c.unicode() < 0x20 || bad.contains(c)) return false;
  return true;
}

QString BadTitleText(const QString& title) {
  return QStringLiteral("标题") + title +
         QStringLiteral("不能用作文件名：书名号之间不能为空，也不能含有“\\”“/”“:”“*”“?”“\"”“<”“>”“|”、"
                        "“..”或书名号，首尾不能是空格。请重新命名该法律/法规的标题。");
}

void AddToTreeFiles(const Env& env, const QString& combo1, const QString& combo2, const QString& combo3,
                    const QString& title, QStringList* failed) {
  const QString name = Mid(title, 2, Len(title) - 2);
  struct Tree {
    QString file;
    std::function<QString(const QString&)> add;
  };
  const QList<Tree> trees = {
      {QStringLiteral("\\ini\\shijuan.mmd"),
       [&](const QString& t) { return AddToGroupTree(t, PaperGroupKey(combo1), name, title); }},
      {QStringLiteral("\\ini\\leibie.mmd"),
       [&](const QString& t) { return AddToGroupTree(t, ClassGroupKey(combo3), name, title); }},
      {QStringLiteral("\\ini\\zimu.mmd"),
       [&](const QString& t) { return AddToLetterTree(t, LetterKey(combo2), name, title); }},
  };
  for (const Tree& tree : trees) {
    const QString path = env.path(tree.file);
    if (!FileExists(path)) continue;
    const QString text = ReadLawFile(path);
    const QString changed = tree.add(text);
    if (changed == text) continue;
    if (!WriteTextAtomic(path, changed) && failed) failed->append(QDir::toNativeSeparators(path));
  }
}

// ---- The wizard -------------------------------------------------------------------

NewLawWizard::NewLawWizard(const Env& env) : env_(env) {}

void NewLawWizard::setView(const QString& text) {
  view = text;
  ++viewVersion;
}

void NewLawWizard::start() {
  // Every opening of the window starts afresh.
  const auto onSelectKept = std::move(onSelect);
  const int version = viewVersion;
  *this = NewLawWizard(env_);
  onSelect = onSelectKept;
  viewVersion = version;
  const QString help = env_.path(kNewLawHelpFile);
  setView(FileExists(help) ? ReadLawFile(help) : QString());
}

bool NewLawWizard::open() {
  FileDialogRequest request;
  request.title = QStringLiteral("打开新法律/法规的文本");
  request.filter = kNewLawFilter;
  const std::optional<QString> chosen = env_.dialogs ? env_.dialogs->openFile(request) : std::nullopt;
  if (!chosen || chosen->isEmpty()) return false;
  return openFile(*chosen);
}

bool NewLawWizard::openFile(const QString& path) {
  QString error;
  const QString text = ReadNewLawSource(path, &error);
  if (!error.isEmpty()) {
    env_.msgBox(error, box::Exclamation);
    return false;
  }
  openedFile = path;
  setView(text);
  classifyVisible = false;
  enabled[3] = false;
  return true;
}

void NewLawWizard::clean() {
  const QString copy = view;
  QString t = ReplaceAll(view, kIdeoBlank, QString());
  t = ReplaceAll(t, kIdeoBlank, QString());
  t = ReplaceAll(t, kBlank, QString());
  t = CollapseLineEnds(t);
  t = JoinBrokenLines(t);
  t = ReplaceAll(t, QStringLiteral("【"), kCrLf + QStringLiteral("【"));
  if (t.startsWith(kCrLf)) t.remove(0, 2);
  const int type = GetLawTextType(t);
  if (type == 0) {
    env_.msgBox(kNoTypeText, 0, kNoTypeTitle);
    setView(copy);
    return;
  }
  env_.msgBox(DetectedTypeText(type));
  setView(t);
  checkItems();
  t = CollapseLineEnds(FormatHeads(view));
  t = ReplaceAll(t, QStringLiteral("目录") + kCrLf, kCrLf + QStringLiteral("目录") + kCrLf);
  // Every line but the first gets the indent that the article splitter
  // expects of a law text.
  t = ReplaceAll(Trim(t) + kCrLf, kCrLf, kCrLf + kLawIndent);
  if (t.startsWith(kCrLf)) t.remove(0, 2);
  setView(t);
  enabled[2] = checked;
}

// The lines of the text run on into one another unless a line ends a
// sentence or a clause, or it or the text behind it starts with a heading.
static QString ReflowForCheck(const QString& t, int type) {
  static const QString marks = QStringLiteral("：；。");
  const qsizetype lastPair = t.lastIndexOf(kLawIndent);
  QString out;
  out.reserve(t.size());
  Breather breathe;
  qsizetype from = 0;
  for (;;) {
    const qsizetype br = t.indexOf(kCrLf, from);
    if (br < 0) {
      out += QStringView(t).mid(from);
      break;
    }
    const QStringView line = QStringView(t).mid(from, br - from);
    from = br + 2;
    breathe.tick();
    out += line;
    bool keep = !line.isEmpty() && marks.contains(line.back());
    if (!keep)
      keep = LineKind(QStringView(t).mid(from), type, lastPair >= from) >= 1 ||
             LineKind(line, type, line.contains(kLawIndent)) >= 1;
    if (keep) out += kCrLf;
  }
  return out;
}

void NewLawWizard::checkItems() {
  QString t = ReplaceAll(kCrLf + view, kBlank, QString());
  t = ReplaceAll(t, QStringLiteral("."), kFullPoint);
  const int type = GetLawTextType(t);
  t = ReflowForCheck(t, type);
  setView(t);
  // The last article, read upwards from the end or from the last appendix.
  const qsizetype appendix = LastPos(t, QStringLiteral("附件") + kCrLf);
  const int last = LastItemNumFrom(t, type, QString(), appendix > 0 ? appendix : Len(t));
  if (last < 1) {
    env_.msgBox(kNoLastArticleText, box::Exclamation);
    checked = false;
    return;
  }
  qsizetype previous = 0;
  for (int i = 1; i <= last; ++i) {
    const QString head = CheckedHead(type, i);
    const qsizetype at = InStr(previous + 1, t, kCrLf + head);
    if (at > 0) {
      previous = at;
      continue;
    }
    // Not at the start of a line behind the previous article: perhaps glued
    // to a sentence, perhaps missing.
    const qsizetype anywhere = InStr(t, head);
    if (anywhere == 0) {
      env_.msgBox(CheckGapText(last, head));
      return;
    }
    if (env_.msgBox(CheckRepairQuestion(head), box::YesNo | box::Question) != box::Yes) {
      checked = false;
      return;
    }
    if (onSelect) onSelect(anywhere - 1, Len(head));
    t.insert(anywhere - 1, kCrLf);
    setView(t);
    previous = anywhere;
  }
  env_.msgBox(CheckOkText(last));
  checked = true;
}

void NewLawWizard::classify() {
  title = kEmptyLawTitle;
  classifyVisible = true;
  enabled[2] = false;
  enabled[3] = false;
}

void NewLawWizard::updateAddButton() { enabled[3] = ClassificationReady(combo1, combo2, combo3, title); }

void NewLawWizard::setCombo(int index, const QString& text) {
  if (index == 1) combo1 = text;
  if (index == 2) combo2 = text;
  if (index == 3) combo3 = text;
  updateAddButton();
}

void NewLawWizard::setTitle(const QString& text) {
  title = text;
  updateAddButton();
}

bool NewLawWizard::add() {
  const QString name = Mid(title, 2, Len(title) - 2);
  if (!IsUsableLawName(name)) {
    env_.msgBox(BadTitleText(title), box::Exclamation, kRetryTitle);
    return false;
  }
  const QString path = LawFilePath(env_, name);
  const QString shown = QDir::toNativeSeparators(path);
  const QString exists = QStringLiteral("文件") + shown + QStringLiteral("已经存在，请重新命名该法律/法规的标题。");
  if (PathExists(path)) {
    env_.msgBox(exists, 0, kRetryTitle);
    return false;
  }
  // The law file is GBK: a character that GBK cannot hold would be lost.
  if (FromGbk(ToGbk(view)) != view) {
    const QString gbk = FromGbk(ToGbk(view));
    qsizetype i = 0;
    while (i < view.size() && i < gbk.size() && view.at(i) == gbk.at(i)) ++i;
    const qsizetype n = i < view.size() && view.at(i).isHighSurrogate() ? 2 : 1;
    env_.msgBox(QStringLiteral("文本中的字符“") + view.mid(i, n) +
                    QStringLiteral("”不能按GBK编码保存，请先在下面的框中把它改掉，再添加进系统。"),
                box::Exclamation);
    return false;
  }
  const QString question = QStringLiteral("根据你所选的归类，本法律：") + kCrLf + QStringLiteral("1、") + combo1 +
                           kCrLf + QStringLiteral("2、") + combo2 + kCrLf + QStringLiteral("3、") + combo3 + kCrLf +
                           QStringLiteral("名称为:") + title + kCrLf +
                           QStringLiteral("你现在确定按此设置将该文本加入系统吗？");
  if (env_.msgBox(question, box::YesNo | box::Question, kConfirmTitle) != box::Yes) return false;
  // Made meanwhile by someone else: still never overwritten.
  if (PathExists(path)) {
    env_.msgBox(exists, 0, kRetryTitle);
    return false;
  }
  const QString folder = env_.path(QStringLiteral("\\lawtxt"));
  if ((!DirExists(folder) && !MakeDir(folder)) || !WriteTextAtomic(path, view)) {
    env_.msgBox(QStringLiteral("文件") + shown + QStringLiteral("无法写入，该法律/法规没有加入系统。"),
                box::Exclamation);
    return false;
  }
  QStringList failed;
  AddToTreeFiles(env_, combo1, combo2, combo3, title, &failed);
  if (!failed.isEmpty())
    env_.msgBox(QStringLiteral("法律树文件") + failed.join(QStringLiteral("、")) +
                    QStringLiteral("无法写入，该法律/法规在这些法律树中看不到。"),
                box::Exclamation);
  addedTitle = title;
  env_.msgBox(QStringLiteral("　　添加顺利完成，你可以从法律查询界面来看一下效果了。") + kCrLf +
                  QStringLiteral("但请注意，新添加的法律/法规不能从法条到试题，只可以从试题到法条。"),
              0, kDoneTitle);
  return true;
}

}  // namespace mj
