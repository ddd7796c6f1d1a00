#include "papers/paper_file.h"


#include "platform/text_toolkit.h"
#include "platform/textfile.h"

namespace mj {

namespace {

const QByteArray kBom("\xEF\xBB\xBF");

// Well-formed UTF-8 (no overlong forms, no surrogates, nothing above
// U+10FFFF); stops at the first bad byte, so that a GBK file is told at once.
bool IsValidUtf8(QByteArrayView bytes) {
  const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
  const qsizetype n = bytes.size();
  qsizetype i = 0;
  while (i < n) {
    const unsigned char c = p[i];
    if (c < 0x80) {
      ++i;
      continue;
    }
    int more = 0;
    unsigned char lo = 0x80, hi = 0xBF;  // the allowed range of the second byte
    if (c >= 0xC2 && c <= 0xDF) {
      more = 1;
    } else if (c >= 0xE0 && c <= 0xEF) {
      more = 2;
      if (c == 0xE0) lo = 0xA0;
      if (c == 0xED) hi = 0x9F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      more = 3;
      if (c == 0xF0) lo = 0x90;
      if (c == 0xF4) hi = 0x8F;
    } else {
      return false;
    }
    if (i + more >= n) return false;  // cut off at the end
    if (p[i + 1] < lo || p[i + 1] > hi) return false;
    for (int k = 2; k <= more; ++k)
      if (p[i + k] < 0x80 || p[i + k] > 0xBF) return false;
    i += more + 1;
  }
  return true;
}

bool HasNonAscii(QByteArrayView bytes) {
  for (const char c : bytes)
    if (static_cast<unsigned char>(c) >= 0x80) return true;
  return false;
}

}  // namespace

PaperEncoding DetectPaperEncoding(const QByteArray& bytes) {
  if (bytes.startsWith(kBom) && IsValidUtf8(QByteArrayView(bytes).sliced(3))) return PaperEncoding::Utf8Bom;
  // Pure ASCII is the same in both; GBK, the program's own code page, is
  // kept for it. Chinese text in GBK is almost never valid UTF-8 as a whole.
  if (HasNonAscii(bytes) && IsValidUtf8(bytes)) return PaperEncoding::Utf8;
  return PaperEncoding::Gbk;
}

QString DecodePaper(const QByteArray& bytes, PaperEncoding encoding) {
  switch (encoding) {
    case PaperEncoding::Utf8Bom:
      return QString::fromUtf8(bytes.startsWith(kBom) ? bytes.mid(3) : bytes);
    case PaperEncoding::Utf8:
      return QString::fromUtf8(bytes);
    case PaperEncoding::Gbk:
      break;
  }
  return FromGbk(bytes);
}

QByteArray EncodePaper(const QString& text, PaperEncoding encoding) {
  switch (encoding) {
    case PaperEncoding::Utf8Bom:
      return kBom + text.toUtf8();
    case PaperEncoding::Utf8:
      return text.toUtf8();
    case PaperEncoding::Gbk:
      break;
  }
  return ToGbk(text);
}

PaperFile ReadPaper(const QString& path) {
  PaperFile f;
  const QByteArray bytes = ReadBytes(path, &f.ok);
  if (!f.ok) return f;
  f.encoding = DetectPaperEncoding(bytes);
  f.text = WithCrLf(DecodePaper(bytes, f.encoding));
  return f;
}

bool WritePaper(const QString& path, const QString& text, PaperEncoding encoding) {
  return WriteBytesAtomic(path, EncodePaper(text, encoding));
}

QString PaperEncodingName(PaperEncoding encoding) {
  switch (encoding) {
    case PaperEncoding::Utf8Bom:
      return QStringLiteral("UTF-8（带BOM）");
    case PaperEncoding::Utf8:
      return QStringLiteral("UTF-8");
    case PaperEncoding::Gbk:
      break;
  }
  return QStringLiteral("GBK");
}

}  // namespace mj
