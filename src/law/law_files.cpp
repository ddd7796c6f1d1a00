#include "law/law_files.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>

#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"

namespace mj {

LawText::LawText(QString text) : text_(std::move(text)) {}

int LawText::type() const {
  std::lock_guard lock(mutex_);
  if (!type_) type_ = GetLawTextType(text_);
  return *type_;
}

int LawText::lastItemNum() const {
  const int t = type();
  std::lock_guard lock(mutex_);
  if (!last_) last_ = LastItemNum(text_, t);
  return *last_;
}

const QString& LawText::numeralTable() const {
  const int last = lastItemNum();
  std::lock_guard lock(mutex_);
  if (!table_) table_ = GetLongDaXie(static_cast<qint16>(last));
  return *table_;
}

const LawIndex& LawText::index() const {
  const int t = type();
  std::lock_guard lock(mutex_);
  if (!index_) index_ = std::make_unique<LawIndex>(text_, t);
  return *index_;
}

bool IsPlainLawName(const QString& name) {
  return !name.contains(u'\\') && !name.contains(u'/') && !name.contains(QStringLiteral(".."));
}

QString LawFileTag(const QString& name) { return QStringLiteral("\\lawtxt\\") + name + QStringLiteral(".mmd"); }

QString LawFilePath(const Env& env, const QString& name) {
  if (IsPlainLawName(name)) return env.path(LawFileTag(name));
  return QStringLiteral("《") + name + QStringLiteral("》");
}

bool LawFileExists(const Env& env, const QString& name) {
  return IsPlainLawName(name) && FileExists(LawFilePath(env, name));
}

QString ReadLawFile(const QString& path) { return WithCrLf(ReadText(path)); }

namespace {

struct CacheEntry {
  qint64 modified = 0;
  qint64 size = -1;
  quint64 lastUse = 0;
  LawTextPtr law;
};

// At most this many characters of law text stay cached; the least recently
// used files go first.
constexpr qsizetype kCacheChars = 64 * 1024 * 1024;

struct LawCache {
  std::mutex mutex;
  QHash<QString, CacheEntry> entries;
  quint64 clock = 0;

  void trim() {
    qsizetype total = 0;
    for (const CacheEntry& e : std::as_const(entries)) total += e.law->text().size();
    while (total > kCacheChars && entries.size() > 1) {
      auto oldest = entries.begin();
      for (auto it = entries.begin(); it != entries.end(); ++it)
        if (it->lastUse < oldest->lastUse) oldest = it;
      total -= oldest->law->text().size();
      entries.erase(oldest);
    }
  }
};

LawCache& Cache() {
  static LawCache cache;
  return cache;
}

}  // namespace

LawTextPtr LoadLawFile(const QString& path) {
  QFileInfo info(path);
  if (!info.exists()) info = QFileInfo(ResolveCase(path));
  if (!info.exists() || !info.isFile()) return nullptr;
  const QString real = info.filePath();
  const qint64 modified = info.lastModified().toMSecsSinceEpoch();
  const qint64 size = info.size();
  const QString key = info.absoluteFilePath();

  LawCache& cache = Cache();
  {
    std::lock_guard lock(cache.mutex);
    auto it = cache.entries.find(key);
    if (it != cache.entries.end() && it->modified == modified && it->size == size) {
      it->lastUse = ++cache.clock;
      return it->law;
    }
  }
  // The end mark of a law is never shown, so it leaves the text as it is read:
  // whole law, articles cut from it and text searches alike never see it.
  auto law = std::make_shared<const LawText>(WithoutEndMark(ReadLawFile(real)));
  std::lock_guard lock(cache.mutex);
  CacheEntry& e = cache.entries[key];
  e.modified = modified;
  e.size = size;
  e.lastUse = ++cache.clock;
  e.law = law;
  cache.trim();
  return law;
}

LawTextPtr LoadLawByName(const Env& env, const QString& name) {
  if (!IsPlainLawName(name)) return nullptr;
  return LoadLawFile(LawFilePath(env, name));
}

void ClearLawCache() {
  LawCache& cache = Cache();
  std::lock_guard lock(cache.mutex);
  cache.entries.clear();
}

}  // namespace mj
