#include "platform/dbftable.h"

#include <QDate>
#include <QFile>
#include <cstdio>
#include <cstring>
#include <mutex>

#include <shapefil.h>

#include "platform/paths.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

// shapelib derives "<base>.dbf" from the name it is given; the hooks below
// open the table's real file instead and keep it from touching a .cpg.
std::mutex g_hookMutex;
QByteArray g_realPath;
QString g_lastError;

bool endsWith(const char* s, const char* tail) {
  const size_t n = std::strlen(s), m = std::strlen(tail);
  return n >= m && std::memcmp(s + n - m, tail, m) == 0;
}

SAFile hookOpen(const char* filename, const char* access) {
  if (endsWith(filename, ".dbf")) return reinterpret_cast<SAFile>(std::fopen(g_realPath.constData(), access));
  return nullptr;  // .DBF second try, .cpg and .CPG: no such files
}

int hookRemove(const char*) { return 0; }

void hookError(const char* message) { g_lastError = QString::fromLocal8Bit(message); }

SAHooks makeHooks() {
  SAHooks h;
  SASetupDefaultHooks(&h);
  h.FOpen = hookOpen;
  h.Remove = hookRemove;
  h.Error = hookError;
  return h;
}

bool isBlank(const char* p, int n) {
  for (int i = 0; i < n; ++i)
    if (p[i] != ' ' && p[i] != '\0') return false;
  return true;
}

}  // namespace

struct DbfTable::Impl {
  DBFHandle h = nullptr;
  QString path;
  QString error;
  bool writable = false;

  ~Impl() {
    if (h) DBFClose(h);
  }

  // Raw bytes of a field, or nullptr for a bad record or field.
  const char* raw(int record, int field, int* width) const {
    if (!h || record < 0 || record >= h->nRecords || field < 0 || field >= h->nFields) return nullptr;
    const char* rec = DBFReadTuple(h, record);
    if (!rec) return nullptr;
    *width = h->panFieldSize[field];
    return rec + h->panFieldOffset[field];
  }

  bool canWrite(int record, int field) {
    if (!h) return false;
    if (!writable) {
      error = QStringLiteral("表 %1 以只读方式打开").arg(path);
      return false;
    }
    if (record < 0 || record >= h->nRecords || field < 0 || field >= h->nFields) {
      error = QStringLiteral("表 %1 没有第 %2 行第 %3 列").arg(path).arg(record).arg(field);
      return false;
    }
    return true;
  }
};

DbfTable::DbfTable() : d(std::make_unique<Impl>()) {}
DbfTable::~DbfTable() = default;
DbfTable::DbfTable(DbfTable&&) noexcept = default;
DbfTable& DbfTable::operator=(DbfTable&&) noexcept = default;

DbfTable DbfTable::open(const QString& path, Mode mode) {
  DbfTable t;
  t.d->path = ResolveCase(path);
  t.d->writable = mode == Mode::ReadWrite;
  if (!QFile::exists(t.d->path)) {
    t.d->error = QStringLiteral("表文件 %1 不存在").arg(t.d->path);
    return t;
  }
  std::lock_guard lock(g_hookMutex);
  g_realPath = QFile::encodeName(t.d->path);
  g_lastError.clear();
  SAHooks hooks = makeHooks();
  t.d->h = DBFOpenLL(g_realPath.constData(), t.d->writable ? "rb+" : "rb", &hooks);
  if (!t.d->h) {
    t.d->error = QStringLiteral("表文件 %1 无法打开%2").arg(t.d->path, g_lastError.isEmpty() ? QString() : QStringLiteral("：") + g_lastError);
    return t;
  }
  if (t.d->writable) {
    const QDate today = QDate::currentDate();
    DBFSetLastModifiedDate(t.d->h, today.year() - 1900, today.month(), today.day());
  }
  return t;
}

DbfTable DbfTable::create(const QString& path, const QList<DbfField>& fields) {
  DbfTable t;
  t.d->path = MapSeparators(path);
  t.d->writable = true;
  std::lock_guard lock(g_hookMutex);
  g_realPath = QFile::encodeName(t.d->path);
  g_lastError.clear();
  SAHooks hooks = makeHooks();
  t.d->h = DBFCreateLL(g_realPath.constData(), "LDID/77", &hooks);
  if (!t.d->h) {
    t.d->error = QStringLiteral("表文件 %1 无法建立").arg(t.d->path);
    return t;
  }
  for (const DbfField& f : fields) {
    const QByteArray name = f.name.toLatin1();
    if (DBFAddNativeFieldType(t.d->h, name.constData(), f.type, f.width, f.decimals) < 0) {
      t.d->error = QStringLiteral("字段 %1 无法建立").arg(f.name);
      DBFClose(t.d->h);
      t.d->h = nullptr;
      return t;
    }
  }
  const QDate today = QDate::currentDate();
  DBFSetLastModifiedDate(t.d->h, today.year() - 1900, today.month(), today.day());
  DBFUpdateHeader(t.d->h);
  return t;
}

bool DbfTable::isOpen() const { return d && d->h; }
QString DbfTable::error() const { return d ? d->error : QString(); }
QString DbfTable::path() const { return d ? d->path : QString(); }

void DbfTable::close() {
  if (d && d->h) {
    DBFClose(d->h);
    d->h = nullptr;
  }
}

QList<DbfField> DbfTable::fields() const {
  QList<DbfField> out;
  if (!isOpen()) return out;
  for (int i = 0; i < d->h->nFields; ++i) {
    char name[XBASE_FLDNAME_LEN_READ + 1] = {};
    int width = 0, decimals = 0;
    DBFGetFieldInfo(d->h, i, name, &width, &decimals);
    out.append({QString::fromLatin1(name), DBFGetNativeFieldType(d->h, i), width, decimals});
  }
  return out;
}

int DbfTable::fieldCount() const { return isOpen() ? d->h->nFields : 0; }

int DbfTable::fieldIndex(const QString& name) const {
  if (!isOpen()) return -1;
  for (int i = 0; i < d->h->nFields; ++i) {
    char fname[XBASE_FLDNAME_LEN_READ + 1] = {};
    DBFGetFieldInfo(d->h, i, fname, nullptr, nullptr);
    if (QString::fromLatin1(fname).compare(name, Qt::CaseInsensitive) == 0) return i;
  }
  return -1;
}

int DbfTable::recordCount() const { return isOpen() ? d->h->nRecords : 0; }

bool DbfTable::isDeleted(int record) const {
  if (!isOpen() || record < 0 || record >= d->h->nRecords) return true;
  return DBFIsRecordDeleted(d->h, record);
}

QList<int> DbfTable::rows() const {
  QList<int> out;
  const int n = recordCount();
  out.reserve(n);
  for (int r = 0; r < n; ++r)
    if (!DBFIsRecordDeleted(d->h, r)) out.append(r);
  return out;
}

bool DbfTable::isNull(int record, int field) const {
  int w = 0;
  const char* p = d->raw(record, field, &w);
  if (!p) return true;
  switch (d->h->pachFieldType[field]) {
    case 'N':
    case 'F':
      return isBlank(p, w) || p[0] == '*';
    case 'L':
      return isBlank(p, w) || p[0] == '?';
    case 'D':
      return isBlank(p, w) || std::strncmp(p, "00000000", 8) == 0;
    default:
      return isBlank(p, w);
  }
}

QString DbfTable::text(int record, int field) const {
  int w = 0;
  const char* p = d->raw(record, field, &w);
  if (!p) return QString();
  int n = w;
  while (n > 0 && (p[n - 1] == ' ' || p[n - 1] == '\0')) --n;
  return FromGbk(QByteArray(p, n));
}

QString DbfTable::trimmedText(int record, int field) const { return Trim(text(record, field)); }

bool DbfTable::logical(int record, int field) const {
  int w = 0;
  const char* p = d->raw(record, field, &w);
  if (!p || w < 1) return false;
  return p[0] == 'T' || p[0] == 't' || p[0] == 'Y' || p[0] == 'y';
}

double DbfTable::number(int record, int field) const {
  int w = 0;
  const char* p = d->raw(record, field, &w);
  if (!p) return 0;
  const QByteArray b = QByteArray(p, w).trimmed();
  bool ok = false;
  const double v = b.toDouble(&ok);
  return ok ? v : 0;
}

QVariant DbfTable::value(int record, int field) const {
  if (isNull(record, field)) return QVariant();
  switch (d->h->pachFieldType[field]) {
    case 'N':
    case 'F':
      return number(record, field);
    case 'L':
      return logical(record, field);
    default:
      return text(record, field);
  }
}

bool DbfTable::setText(int record, int field, const QString& value) {
  if (!d->canWrite(record, field)) return false;
  const QByteArray bytes = ToGbk(GbkHead(value, d->h->panFieldSize[field]));
  QByteArray padded = bytes;
  padded.append(QByteArray(d->h->panFieldSize[field] - bytes.size(), ' '));
  return DBFWriteAttributeDirectly(d->h, record, field, padded.data()) != 0;
}

bool DbfTable::setLogical(int record, int field, bool value) {
  if (!d->canWrite(record, field)) return false;
  return DBFWriteLogicalAttribute(d->h, record, field, value ? 'T' : 'F') != 0;
}

bool DbfTable::setNumber(int record, int field, double value) {
  if (!d->canWrite(record, field)) return false;
  return DBFWriteDoubleAttribute(d->h, record, field, value) != 0;
}

bool DbfTable::setNull(int record, int field) {
  if (!d->canWrite(record, field)) return false;
  return DBFWriteNULLAttribute(d->h, record, field) != 0;
}

bool DbfTable::setValue(int record, int field, const QVariant& value) {
  if (!d->canWrite(record, field)) return false;
  if (!value.isValid() || value.isNull()) return setNull(record, field);
  switch (d->h->pachFieldType[field]) {
    case 'N':
    case 'F':
      return setNumber(record, field, value.toDouble());
    case 'L':
      return setLogical(record, field, value.toBool());
    default:
      return setText(record, field, value.toString());
  }
}

int DbfTable::appendRow() {
  if (!isOpen() || !d->writable) return -1;
  const int rec = d->h->nRecords;
  QByteArray blank(d->h->nRecordLength, ' ');
  if (!DBFWriteTuple(d->h, rec, blank.data())) {
    d->error = QStringLiteral("表 %1 无法追加记录").arg(d->path);
    return -1;
  }
  return rec;
}

bool DbfTable::flush() {
  if (!isOpen()) return false;
  if (d->writable) DBFUpdateHeader(d->h);
  return true;
}

QList<int> Select(const DbfTable& table, const QList<DbfCondition>& where) {
  QList<int> out;
  if (!table.isOpen()) return out;
  QList<std::pair<int, QVariant>> conds;
  for (const auto& [name, value] : where) {
    const int f = table.fieldIndex(name);
    if (f < 0) return out;
    conds.append({f, value});
  }
  for (int r : table.rows()) {
    bool ok = true;
    for (const auto& [f, value] : conds) {
      if (value.typeId() == QMetaType::Bool) ok = !table.isNull(r, f) && table.logical(r, f) == value.toBool();
      else ok = table.text(r, f) == value.toString();
      if (!ok) break;
    }
    if (ok) out.append(r);
  }
  return out;
}

}  // namespace mj
