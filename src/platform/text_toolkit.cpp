#include "platform/text_toolkit.h"

#include "platform/events.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

QString ReplaceAll(const QString& text, const QString& find, const QString& repl) {
  if (text.isEmpty() || find.isEmpty()) return QString();
  // Most calls find nothing: the text is then shared, not copied.
  qsizetype first = text.indexOf(find);
  if (first < 0) return text;
  QString out;
  out.reserve(text.size());
  Breather breathe;
  qsizetype from = 0;
  for (;;) {
    const qsizetype p = first >= 0 ? first : text.indexOf(find, from);
    first = -1;
    if (p < 0) break;
    out.append(QStringView(text).mid(from, p - from));
    out.append(repl);
    from = p + find.size();
    breathe.tick();
  }
  out.append(QStringView(text).mid(from));
  return out;
}

QString WithCrLf(const QString& text) {
  bool clean = true;
  for (qsizetype i = 0; i < text.size() && clean; ++i) {
    const QChar c = text.at(i);
    if (c == u'\r')
      clean = i + 1 < text.size() && text.at(i + 1) == u'\n';
    else if (c == u'\n')
      clean = i > 0 && text.at(i - 1) == u'\r';
  }
  if (clean) return text;
  QString out;
  out.reserve(text.size() + text.size() / 16);
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text.at(i);
    if (c == u'\r') {
      out += QStringLiteral("\r\n");
      if (i + 1 < text.size() && text.at(i + 1) == u'\n') ++i;
    } else if (c == u'\n') {
      out += QStringLiteral("\r\n");
    } else {
      out += c;
    }
  }
  return out;
}

QString ReplaceString(const QString& s, const QString& find, const QString& repl) {
  if (find.isEmpty()) return s;
  const qsizetype p = s.indexOf(find);
  if (p < 0) return s;
  QString r = s;
  r.replace(p, find.size(), repl);
  return r;
}

qsizetype LastPos(const QString& text, const QString& find) {
  if (text.isEmpty() || find.isEmpty()) return 0;
  const qsizetype p = text.lastIndexOf(find);
  return p < 0 ? 0 : p + 1;
}

qsizetype CountOf(const QString& text, const QString& find) {
  if (text.isEmpty() || find.isEmpty()) return 0;
  qsizetype n = 0;
  qsizetype p = text.indexOf(find);
  while (p >= 0) {
    ++n;
    p = text.indexOf(find, p + 1);
  }
  return n;
}

QString TextBetween(const QString& text, const QString& a, const QString& b) {
  const qsizetype p = InStr(text, a);
  if (p == 0) return QString();
  const qsizetype s = p + a.size();
  const qsizetype q = InStr(s, text, b);
  if (q == 0) return Mid(text, s);
  return Mid(text, s, q - s);
}

QString GetMid(const QString& a, const QString& b, const QString& c) {
  const qsizetype p = InStr(a, b);
  const qsizetype q = InStr(a, c);
  if (p == 0 && q == 0) return QStringLiteral("B>A and C>A");
  if (p == 0) return QStringLiteral("B>A");
  if (q == 0) return QStringLiteral("C>A");
  if (q < p) return QStringLiteral("C-B");
  return Mid(a, p, q - p);
}

QString CutMarkedBlock(QString& text, const QString& marker) {
  if (text.isEmpty() || marker.isEmpty()) return QString();
  const qsizetype p = InStr(text, marker);
  if (p == 0) return QString();
  const qsizetype q = InStr(p + marker.size(), text, marker);
  if (q == 0) {
    const QString block = Mid(text, p);
    text.clear();
    return block;
  }
  const QString block = Mid(text, p, q - p);
  text = Mid(text, q);
  return block;
}

namespace {
qsizetype lastSeparator(const QString& path) { return std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')); }
}  // namespace

QString FileNameOf(const QString& path) {
  const qsizetype p = lastSeparator(path);
  return p < 0 ? path : path.mid(p + 1);
}

QString GetSmallTxtName(const QString& path) {
  const qsizetype p = lastSeparator(path);
  const qsizetype dot = path.lastIndexOf(u'.');
  if (dot <= p) return path.mid(p + 1);
  return path.mid(p + 1, dot - p - 1);
}

QString AnswerLetters(QString& text) {
  const QString see = QStringLiteral("参见");
  if (!text.contains(see)) text = see + text;
  QString head = Left(text, InStr(text, see) - 1);
  const qsizetype dot = InStr(head, QStringLiteral("．"));
  if (dot > 0) head = Mid(head, dot + 1);
  QString key;
  for (QChar c : {u'A', u'B', u'C', u'D'})
    if (head.contains(c)) key.append(c);
  return key;
}

QString GetStrFromNum(long long n, int width) { return Right(Space(width) + Trim(CStr(n)), width); }

long long Str2Num(const QString& text, int i, int j) {
  return SaturatedInt<long long>(Val(Mid(text, static_cast<qsizetype>(i - 1) * 15 + (j - 1) * 5 + 1, 5)));
}

qint32 PowerOf(qint32 base, qint32 exp) {
  quint32 r = 1;
  for (qint32 k = 0; k < exp; ++k) r *= static_cast<quint32>(base);
  return static_cast<qint32>(r);
}

QString ChangeRadix(const Env& env, const QString& text, int from, int to) {
  static const QString digits = QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  const QString t = Trim(text);
  if (t.isEmpty() || to < 1) return QStringLiteral("0");
  if (to == 1) return t;
  if (to > 36) {
    env.msgBox(QStringLiteral("进制数范围为2-36，现不符合约定，返回为0"));
    return QStringLiteral("0");
  }
  long long value = 0;
  for (qsizetype i = 0; i < t.size(); ++i) {
    const long long place = InStr(digits, QString(t[i]));
    value += (place - 1) * static_cast<long long>(PowerOf(from, static_cast<qint32>(t.size() - 1 - i)));
  }
  if (value < 0) return QStringLiteral("0");
  // Digits from the least significant; the top one is left out when it is 0.
  QString out;
  while (value >= to) {
    out.prepend(digits[static_cast<qsizetype>(value % to)]);
    value /= to;
  }
  if (value != 0) out.prepend(digits[static_cast<qsizetype>(value)]);
  return out;
}

QString ReadFileAsText(const QString& path) { return ReadText(path); }

bool WriteTextFile(const QString& path, const QString& text) { return WriteTextAtomic(path, text + kCrLf); }

QString FirstValueOf(const QString& fileText) {
  qsizetype i = 0;
  while (i < fileText.size() && (fileText[i] == u' ' || fileText[i] == u'\t')) ++i;
  if (i < fileText.size() && fileText[i] == u'"') {
    const qsizetype close = fileText.indexOf(u'"', i + 1);
    return close < 0 ? fileText.mid(i + 1) : fileText.mid(i + 1, close - i - 1);
  }
  qsizetype e = i;
  while (e < fileText.size() && fileText[e] != u',' && fileText[e] != u'\r' && fileText[e] != u'\n') ++e;
  return Trim(fileText.mid(i, e - i));
}

bool WriteQuotedValue(const QString& path, const QString& text) {
  return WriteTextAtomic(path, u'"' + text + u'"' + kCrLf);
}

QString ShownText(const QString& text) {
  QString t = text;
  t.replace(kCrLf, QStringLiteral("\n"));
  return t;
}

QString HeldText(const QString& text) {
  QString t = text;
  t.replace(u'\n', kCrLf);
  return t;
}

bool IsWebAddress(const QString& target) {
  for (const char* scheme : {"http://", "https://", "mailto:", "ftp://"})
    if (target.startsWith(QLatin1String(scheme), Qt::CaseInsensitive)) return true;
  return false;
}

QString CannotOpenText(const QString& target, bool copied) {
  if (IsWebAddress(target))
    return QStringLiteral("无法打开网址：") + kCrLf + target + kCrLf + kCrLf +
           QStringLiteral("本机没有能打开网址的程序。") +
           (copied ? QStringLiteral("网址已复制到剪贴板，可以粘贴到浏览器的地址栏里打开。") : QString());
  return QStringLiteral("无法打开文件：") + kCrLf + target + kCrLf + kCrLf +
         QStringLiteral("文件不存在，或本机没有能打开这类文件的程序。") +
         (copied ? QStringLiteral("文件路径已复制到剪贴板。") : QString());
}

bool StartProgram(const Env& env, const QString& program, const QStringList& args, WindowMode mode) {
  if (env.shell->start(program, args, mode)) return true;
  env.msgBox(QStringLiteral("无法启动程序：") + kCrLf + MapSeparators(program), box::Exclamation);
  return false;
}

bool ShellOpen(const Env& env, const QString& target) {
  if (env.shell->open(target, env.root)) return true;
  // Nothing could be started: say so, and hand the user the address to
  // open it some other way.
  const QString shown = IsWebAddress(target) ? target : MapSeparators(target);
  if (env.clipboard) env.clipboard->setText(shown);
  env.msgBox(CannotOpenText(shown, env.clipboard != nullptr), box::Exclamation);
  return false;
}

}  // namespace mj
