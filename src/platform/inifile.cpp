#include "platform/inifile.h"

#include <QStringList>

#include "platform/textfile.h"

namespace mj {

namespace {

constexpr qsizetype kMaxValueBytes = 127;

QString trimWs(const QString& s) {
  qsizetype b = 0, e = s.size();
  auto ws = [](QChar c) { return c == u' ' || c == u'\t'; };
  while (b < e && ws(s[b])) ++b;
  while (e > b && ws(s[e - 1])) --e;
  return s.mid(b, e - b);
}

// Lines of the text, each without its line end.
QStringList splitLines(const QString& text) {
  QStringList lines;
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'\n') {
      qsizetype end = i;
      if (end > start && text[end - 1] == u'\r') --end;
      lines.append(text.mid(start, end - start));
      start = i + 1;
    }
  }
  if (start < text.size()) lines.append(text.mid(start));
  return lines;
}

// The section name of a line "[name]", or nothing.
std::optional<QString> sectionOf(const QString& line) {
  const QString t = trimWs(line);
  if (!t.startsWith(u'[')) return std::nullopt;
  const qsizetype close = t.indexOf(u']');
  if (close < 0) return std::nullopt;
  return trimWs(t.mid(1, close - 1));
}

// Key of a line "key=value", or nothing.
std::optional<QString> keyOf(const QString& line, QString* value = nullptr) {
  const qsizetype eq = line.indexOf(u'=');
  if (eq < 0) return std::nullopt;
  const QString k = trimWs(line.left(eq));
  if (k.startsWith(u';')) return std::nullopt;
  if (value) *value = line.mid(eq + 1);
  return k;
}

bool same(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

// What a reader gets of the text behind "=": trimmed, out of matching
// quotes, cut to the buffer of the profile function and at a NUL.
QString cleanValue(const QString& raw) {
  QString v = trimWs(raw);
  if (v.size() >= 2 && ((v.startsWith(u'"') && v.endsWith(u'"')) || (v.startsWith(u'\'') && v.endsWith(u'\''))))
    v = v.mid(1, v.size() - 2);
  v = GbkHead(v, kMaxValueBytes);
  const qsizetype nul = v.indexOf(QChar(0));
  if (nul >= 0) v = v.left(nul);
  return trimWs(v);
}

}  // namespace

QString IniValueIn(const QString& fileText, const QString& section, const QString& key) {
  const QStringList lines = splitLines(fileText);
  bool inSection = false;
  for (const QString& line : lines) {
    if (auto s = sectionOf(line)) {
      if (inSection) break;  // the first section of that name answers
      inSection = same(*s, section);
      continue;
    }
    if (!inSection) continue;
    QString raw;
    auto k = keyOf(line, &raw);
    if (!k || !same(*k, key)) continue;
    return cleanValue(raw);
  }
  return QString();
}

IniDocument::IniDocument(const QString& fileText) {
  const QStringList lines = splitLines(fileText);
  // Only the first section of a name answers, as in IniValueIn; a later one
  // of the same name is passed over whole.
  QString current;
  bool active = false;
  for (const QString& line : lines) {
    if (auto s = sectionOf(line)) {
      current = s->toCaseFolded();
      active = !sections_.contains(current);
      if (active) sections_.insert(current, {});
      continue;
    }
    if (!active) continue;
    QString raw;
    auto k = keyOf(line, &raw);
    if (!k) continue;
    QHash<QString, QString>& keys = sections_[current];
    const QString key = k->toCaseFolded();
    if (!keys.contains(key)) keys.insert(key, raw);
  }
}

QString IniDocument::value(const QString& section, const QString& key) const {
  const auto s = sections_.constFind(section.toCaseFolded());
  if (s == sections_.constEnd()) return QString();
  const auto v = s->constFind(key.toCaseFolded());
  return v == s->constEnd() ? QString() : cleanValue(*v);
}

QString IniWithValue(const QString& fileText, const QString& section, const QString& key,
                     const std::optional<QString>& value) {
  QStringList lines = splitLines(fileText);
  const std::optional<QString> v = value ? std::optional<QString>(GbkHead(*value, kMaxValueBytes)) : std::nullopt;
  qsizetype sectionLine = -1;
  qsizetype lastContent = -1;  // last non-blank line of the section
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (auto s = sectionOf(lines[i])) {
      if (sectionLine >= 0) break;
      if (same(*s, section)) { sectionLine = i; lastContent = i; }
      continue;
    }
    if (sectionLine < 0) continue;
    if (!trimWs(lines[i]).isEmpty()) lastContent = i;
    auto k = keyOf(lines[i]);
    if (k && same(*k, key)) {
      if (v) lines[i] = key + u'=' + *v;
      else lines.removeAt(i);
      return lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
    }
  }
  if (!v) return fileText;
  if (sectionLine >= 0) {
    lines.insert(lastContent + 1, key + u'=' + *v);
  } else {
    lines.append(u'[' + section + u']');
    lines.append(key + u'=' + *v);
  }
  return lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

QString IniRead(const QString& file, const QString& section, const QString& key) {
  bool ok = false;
  const QString text = ReadText(file, &ok);
  if (!ok) return QString();
  return IniValueIn(text, section, key);
}

bool IniWrite(const QString& file, const QString& section, const QString& key, const QString& value) {
  const QString text = ReadText(file);
  return WriteTextAtomic(file, IniWithValue(text, section, key, value));
}

bool IniDeleteKey(const QString& file, const QString& section, const QString& key) {
  const QString text = ReadText(file);
  return WriteTextAtomic(file, IniWithValue(text, section, key, std::nullopt));
}

}  // namespace mj
