#pragma once
// INI files read and written the way the Windows profile functions do
// (GetPrivateProfileStringA / WritePrivateProfileStringA): sections and keys
// without regard to case, values trimmed and cut, every other line of the
// file left as it stands. GBK on disk.

#include <QHash>
#include <QString>
#include <optional>

namespace mj {

// The value of key in section, with an empty default and a 128-byte buffer:
// at most 127 bytes of GBK (never half a character), cut at the first NUL,
// trimmed of blanks and tabs; a value in matching quotes loses them.
// A missing file, section or key gives "".
QString IniRead(const QString& file, const QString& section, const QString& key);

// Writes key=value into section, creating the section and the file when
// missing. The value is cut to 127 bytes of GBK. The file is replaced
// atomically. Returns false when the file cannot be written.
bool IniWrite(const QString& file, const QString& section, const QString& key, const QString& value);

// Removes a key (value nullopt) as the profile function does with a null value.
bool IniDeleteKey(const QString& file, const QString& section, const QString& key);

// Parsing on a text already in memory (the file's content).
QString IniValueIn(const QString& fileText, const QString& section, const QString& key);
QString IniWithValue(const QString& fileText, const QString& section, const QString& key,
                     const std::optional<QString>& value);

// A whole INI text read once, for callers that look up many keys of one
// file (a progress record holds one key per question). value() answers
// exactly what IniValueIn answers on the same text, without walking the
// text again for each key.
class IniDocument {
 public:
  IniDocument() = default;
  explicit IniDocument(const QString& fileText);
  QString value(const QString& section, const QString& key) const;

 private:
  // Case-folded section name -> case-folded key -> the raw text behind "=",
  // for the first section of each name and the first line of each key there.
  QHash<QString, QHash<QString, QString>> sections_;
};

}  // namespace mj
