#include "platform/dbftable.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <atomic>
#include <limits>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <vector>

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

// The system's error number of the last failed fopen of a table.
int g_openErrno = 0;
// shapelib does not pass on a failed write, flush or close: the hooks keep
// the first error number here until DbfTable takes it.
std::atomic<int> g_ioErrno{0};

void noteIoError() {
  int none = 0;
  g_ioErrno.compare_exchange_strong(none, errno != 0 ? errno : EIO);
}

SAFile hookOpen(const char* filename, const char* access) {
  if (endsWith(filename, ".dbf")) {
    FILE* f = std::fopen(g_realPath.constData(), access);
    if (!f) g_openErrno = errno;
    return reinterpret_cast<SAFile>(f);
  }
  return nullptr;  // .DBF second try, .cpg and .CPG: no such files
}

SAOffset hookWrite(void* p, SAOffset size, SAOffset count, SAFile file) {
  const size_t written = std::fwrite(p, size, count, reinterpret_cast<FILE*>(file));
  if (written != count) noteIoError();
  return written;
}

int hookFlush(SAFile file) {
  const int r = std::fflush(reinterpret_cast<FILE*>(file));
  if (r != 0) noteIoError();
  return r;
}

int hookClose(SAFile file) {
  const int r = std::fclose(reinterpret_cast<FILE*>(file));
  if (r != 0) noteIoError();
  return r;
}

int hookRemove(const char*) { return 0; }

void hookError(const char* message) { g_lastError = QString::fromLocal8Bit(message); }

SAHooks makeHooks() {
  SAHooks h;
  SASetupDefaultHooks(&h);
  h.FOpen = hookOpen;
  h.FWrite = hookWrite;
  h.FFlush = hookFlush;
  h.FClose = hookClose;
  h.Remove = hookRemove;
  h.Error = hookError;
  return h;
}

// The error number noted since the last call, 0 when none.
int takeIoError() { return g_ioErrno.exchange(0); }

bool isBlank(const char* p, int n) {
  for (int i = 0; i < n; ++i)
    if (p[i] != ' ' && p[i] != '\0') return false;
  return true;
}

// A field without a value, by its type: blank, or the null mark of numbers,
// logicals and dates.
bool isNullField(char type, const char* p, int w) {
  switch (type) {
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

// GBK two-byte characters by lead and trail byte, taken once from the GBK
// decoder itself, so that the fast path below gives exactly what FromGbk
// gives. 0 marks a pair that the decoder does not turn into one character.
class GbkPairs {
 public:
  GbkPairs() : map_(65536, 0) {
    QStringDecoder dec("GBK", QStringDecoder::Flag::Stateless);
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
      QByteArray row;
      QList<int> trails;
      for (int trail = 0x40; trail <= 0xFE; ++trail) {
        if (trail == 0x7F) continue;
        row.append(static_cast<char>(lead));
        row.append(static_cast<char>(trail));
        trails.append(trail);
      }
      const QString all = dec.decode(row);
      if (all.size() == trails.size()) {
        for (qsizetype k = 0; k < trails.size(); ++k) set(lead, trails[k], all[k]);
        continue;
      }
      for (qsizetype k = 0; k < trails.size(); ++k) {
        const QString one = dec.decode(row.mid(k * 2, 2));
        if (one.size() == 1) set(lead, trails[k], one[0]);
      }
    }
  }
  char16_t at(uchar lead, uchar trail) const { return map_[(lead << 8) | trail]; }

 private:
  void set(int lead, int trail, QChar c) {
    if (c != QChar::ReplacementCharacter && !c.isSurrogate()) map_[(lead << 8) | trail] = c.unicode();
  }
  std::vector<char16_t> map_;
};

// True when one of the n bytes at p is not ASCII.
bool hasHighByte(const char* p, int n) {
  int i = 0;
  for (; i + 8 <= n; i += 8) {
    quint64 w;
    std::memcpy(&w, p + i, 8);
    if (w & 0x8080808080808080ULL) return true;
  }
  for (; i < n; ++i)
    if (static_cast<uchar>(p[i]) >= 0x80) return true;
  return false;
}

// FromGbk of n bytes, without a decoder for the common case of ASCII and
// plain two-byte characters; anything else goes to the decoder.
QString decodeGbkField(const char* p, int n) {
  if (n <= 0) return QString();
  if (!hasHighByte(p, n)) return QString::fromLatin1(p, n);
  static const GbkPairs pairs;
  QString out(n, Qt::Uninitialized);
  char16_t* d = reinterpret_cast<char16_t*>(out.data());
  qsizetype k = 0;
  for (int i = 0; i < n;) {
    const uchar c = static_cast<uchar>(p[i]);
    if (c < 0x80) {
      d[k++] = c;
      ++i;
      continue;
    }
    const char16_t u = i + 1 < n ? pairs.at(c, static_cast<uchar>(p[i + 1])) : 0;
    if (u == 0) return FromGbk(QByteArray(p, n));
    d[k++] = u;
    i += 2;
  }
  out.truncate(k);
  return out;
}

// Length of a field without its right blanks and NULs.
int withoutRightBlanks(const char* p, int n) {
  static constexpr quint64 kBlanks = 0x2020202020202020ULL;
  while (n >= 8) {
    quint64 w;
    std::memcpy(&w, p + n - 8, 8);
    if (w != kBlanks) break;
    n -= 8;
  }
  while (n > 0 && (p[n - 1] == ' ' || p[n - 1] == '\0')) --n;
  return n;
}

// The text of a field without blanks on either side. Blanks are single
// bytes in GBK: cutting them before decoding gives what Trim gives after it.
QString trimmedField(const char* p, int w) {
  const int n = withoutRightBlanks(p, w);
  int lead = 0;
  while (lead < n && p[lead] == ' ') ++lead;
  return decodeGbkField(p + lead, n - lead);
}

bool logicalField(const char* p, int w) {
  return w >= 1 && (p[0] == 'T' || p[0] == 't' || p[0] == 'Y' || p[0] == 'y');
}

}  // namespace

struct DbfTable::Impl {
  DBFHandle h = nullptr;
  QString path;
  QString error;
  bool writable = false;
  qint64 headerRecords = 0;  // the record count the header gives

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
  const QFileInfo info(t.d->path);
  if (!info.exists()) {
    t.d->error = QStringLiteral("表文件 %1 不存在").arg(t.d->path);
    return t;
  }
  std::lock_guard lock(g_hookMutex);
  g_realPath = QFile::encodeName(t.d->path);
  g_lastError.clear();
  g_openErrno = 0;
  SAHooks hooks = makeHooks();
  t.d->h = DBFOpenLL(g_realPath.constData(), t.d->writable ? "rb+" : "rb", &hooks);
  if (!t.d->h) {
    if (g_openErrno != 0)
      t.d->error = QStringLiteral("表文件 %1 无法打开：%2").arg(t.d->path, SystemErrorText(g_openErrno));
    else
      t.d->error = QStringLiteral("表文件 %1 已损坏：文件头不是有效的表头").arg(t.d->path);
    return t;
  }
  // Nothing of the header is taken on trust: the fields must lie inside a
  // record, and the record count is at most what the file holds in full
  // (a header may claim billions of records, or a file may end inside one).
  DBFHandle h = t.d->h;
  bool sound = h->nRecordLength > 0 && h->nHeaderLength >= 32 && h->nFields > 0;
  for (int i = 0; sound && i < h->nFields; ++i)
    sound = h->panFieldSize[i] >= 0 && h->panFieldOffset[i] >= 1 &&
            h->panFieldOffset[i] + h->panFieldSize[i] <= h->nRecordLength;
  if (!sound) {
    DBFClose(h);
    t.d->h = nullptr;
    t.d->error = QStringLiteral("表文件 %1 已损坏：文件头不是有效的表头").arg(t.d->path);
    return t;
  }
  {
    QFile f(t.d->path);
    QByteArray head;
    if (f.open(QIODevice::ReadOnly)) head = f.read(8);
    t.d->headerRecords = head.size() == 8 ? quint32(uchar(head[4])) | quint32(uchar(head[5])) << 8 |
                                                quint32(uchar(head[6])) << 16 | quint32(uchar(head[7])) << 24
                                          : 0;
  }
  const qint64 held = std::max<qint64>(0, (info.size() - h->nHeaderLength) / h->nRecordLength);
  h->nRecords = static_cast<int>(std::min<qint64>({t.d->headerRecords, held, std::numeric_limits<int>::max()}));
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

bool DbfTable::close() {
  if (!d || !d->h) return true;
  takeIoError();
  DBFClose(d->h);
  d->h = nullptr;
  if (const int e = takeIoError()) {
    d->error = QStringLiteral("表文件 %1 写入失败：%2").arg(d->path, SystemErrorText(e));
    return false;
  }
  return true;
}

bool DbfTable::closeDurably() {
  if (!d || !d->h) return false;
  const bool writable = d->writable;
  if (!close()) return false;
  if (writable && !SyncFileData(d->path)) {
    d->error = QStringLiteral("表文件 %1 写入失败：%2").arg(d->path, SystemErrorText(errno));
    return false;
  }
  return true;
}

qint64 DbfTable::headerRecordCount() const { return isOpen() ? d->headerRecords : 0; }

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
  return isNullField(d->h->pachFieldType[field], p, w);
}

QString DbfTable::text(int record, int field) const {
  int w = 0;
  const char* p = d->raw(record, field, &w);
  if (!p) return QString();
  return decodeGbkField(p, withoutRightBlanks(p, w));
}

QString DbfTable::trimmedText(int record, int field) const {
  int w = 0;
  const char* p = d->raw(record, field, &w);
  return p ? trimmedField(p, w) : QString();
}

bool DbfTable::logical(int record, int field) const {
  int w = 0;
  const char* p = d->raw(record, field, &w);
  return p && logicalField(p, w);
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

namespace {

quint32 le32(const char* p) {
  const auto* u = reinterpret_cast<const uchar*>(p);
  return quint32(u[0]) | quint32(u[1]) << 8 | quint32(u[2]) << 16 | quint32(u[3]) << 24;
}
quint16 le16(const char* p) {
  const auto* u = reinterpret_cast<const uchar*>(p);
  return quint16(u[0] | u[1] << 8);
}

// Bytes read from the file at a time: small enough to stay in the cache
// while the rows in it are taken apart.
constexpr qint64 kScanBlock = 64 * 1024;

}  // namespace

struct DbfScan::File {
  QFile f;
};

DbfScan::DbfScan(const QString& path) : file_(std::make_unique<File>()) {
  const QString real = ResolveCase(path);
  file_->f.setFileName(real);
  if (!file_->f.open(QIODevice::ReadOnly)) {
    error_ = QStringLiteral("表文件 %1 无法打开").arg(real);
    return;
  }
  const QString bad = QStringLiteral("表文件 %1 不是有效的表").arg(real);
  const QByteArray head = file_->f.read(32);
  if (head.size() < 32) {
    error_ = bad;
    return;
  }
  const quint32 records = le32(head.constData() + 4);
  const int headerLength = le16(head.constData() + 8);
  recordLength_ = le16(head.constData() + 10);
  if (headerLength < 33 || recordLength_ < 1) {
    error_ = bad;
    return;
  }
  const QByteArray descriptors = file_->f.read(headerLength - 32);
  if (descriptors.size() < headerLength - 32) {
    error_ = bad;
    return;
  }
  // Field descriptors of 32 bytes each, up to the terminator or the header's end.
  int offset = 1;
  for (qsizetype at = 0; at + 32 <= descriptors.size(); at += 32) {
    const char* fi = descriptors.constData() + at;
    if (fi[0] == '\x0D') break;
    DbfField field;
    field.name = QString::fromLatin1(fi, static_cast<qsizetype>(qstrnlen(fi, 11)));
    field.type = fi[11];
    field.width = static_cast<uchar>(fi[16]);
    field.decimals = (field.type == 'N' || field.type == 'F') ? static_cast<uchar>(fi[17]) : 0;
    fields_.append(field);
    offset_.append(offset);
    offset += field.width;
  }
  if (fields_.isEmpty() || offset > recordLength_) {
    fields_.clear();
    offset_.clear();
    error_ = bad;
    return;
  }
  // The rows the file holds in full, at most the number the header gives.
  records_ = std::max<qint64>(0, std::min<qint64>(records, (file_->f.size() - headerLength) / recordLength_));
  if (!file_->f.seek(headerLength)) records_ = 0;
  open_ = true;
}

DbfScan::~DbfScan() = default;

int DbfScan::fieldIndex(const QString& name) const {
  for (int i = 0; i < fields_.size(); ++i)
    if (fields_[i].name.compare(name, Qt::CaseInsensitive) == 0) return i;
  return -1;
}

bool DbfScan::fill() {
  blockFirst_ += blockRows_;
  const qint64 left = records_ - blockFirst_;
  if (left <= 0) return false;
  const qint64 want = std::min<qint64>(left, std::max<qint64>(1, kScanBlock / recordLength_));
  block_.resize(want * recordLength_);
  const qint64 got = file_->f.read(block_.data(), block_.size());
  blockRows_ = got > 0 ? got / recordLength_ : 0;
  inBlock_ = -1;
  // A file that ends inside a row ends the table there.
  if (blockRows_ < want) records_ = blockFirst_ + blockRows_;
  return blockRows_ > 0;
}

bool DbfScan::next() {
  row_ = nullptr;
  if (!open_) return false;
  for (;;) {
    if (inBlock_ + 1 >= blockRows_) {
      if (!fill()) return false;
    }
    ++inBlock_;
    const char* rec = block_.constData() + inBlock_ * recordLength_;
    if (rec[0] == '*') continue;  // deleted
    row_ = rec;
    record_ = static_cast<int>(blockFirst_ + inBlock_);
    return true;
  }
}

const char* DbfScan::raw(int field, int* width) const {
  if (!row_ || field < 0 || field >= fields_.size()) return nullptr;
  *width = fields_[field].width;
  return row_ + offset_[field];
}

QByteArrayView DbfScan::bytes(int field) const {
  int w = 0;
  const char* p = raw(field, &w);
  return p ? QByteArrayView(p, w) : QByteArrayView();
}

bool DbfScan::isNull(int field) const {
  int w = 0;
  const char* p = raw(field, &w);
  if (!p) return true;
  return isNullField(fields_[field].type, p, w);
}

QString DbfScan::text(int field) const {
  int w = 0;
  const char* p = raw(field, &w);
  if (!p) return QString();
  return decodeGbkField(p, withoutRightBlanks(p, w));
}

QString DbfScan::trimmedText(int field) const {
  int w = 0;
  const char* p = raw(field, &w);
  return p ? trimmedField(p, w) : QString();
}

bool DbfScan::logical(int field) const {
  int w = 0;
  const char* p = raw(field, &w);
  return p && logicalField(p, w);
}

double DbfScan::number(int field) const {
  int w = 0;
  const char* p = raw(field, &w);
  if (!p) return 0;
  // Plain whole numbers without the general parser.
  const QByteArrayView v = QByteArrayView(p, w).trimmed();
  if (!v.isEmpty() && v.size() <= 9) {
    qsizetype i = v[0] == '-' ? 1 : 0;
    long n = 0;
    bool digits = i < v.size();
    for (; i < v.size() && digits; ++i) {
      digits = v[i] >= '0' && v[i] <= '9';
      n = n * 10 + (v[i] - '0');
    }
    if (digits) return static_cast<double>(v[0] == '-' ? -n : n);
  }
  bool ok = false;
  const double d = v.toDouble(&ok);
  return ok ? d : 0;
}

QList<int> Select(const DbfTable& table, const QList<DbfCondition>& where) {
  QList<int> out;
  if (!table.isOpen()) return out;
  // Each condition taken apart once: a logical compares with a flag, any
  // other value as text.
  struct Condition {
    int field;
    bool isFlag;
    bool flag;
    QString text;
  };
  QList<Condition> conds;
  for (const auto& [name, value] : where) {
    const int f = table.fieldIndex(name);
    if (f < 0) return out;
    const bool isFlag = value.typeId() == QMetaType::Bool;
    conds.append({f, isFlag, isFlag && value.toBool(), isFlag ? QString() : value.toString()});
  }
  for (int r : table.rows()) {
    bool ok = true;
    for (const Condition& c : conds) {
      if (c.isFlag) ok = !table.isNull(r, c.field) && table.logical(r, c.field) == c.flag;
      else ok = table.text(r, c.field) == c.text;
      if (!ok) break;
    }
    if (ok) out.append(r);
  }
  return out;
}

}  // namespace mj
