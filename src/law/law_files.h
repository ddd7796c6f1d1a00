#pragma once
// Law text files: \lawtxt\<title>.mmd under the program folder, where title
// is the law's title without 《 and 》.
//
// A file is read as GBK, or as UTF-8 when it starts with a UTF-8 byte order
// mark and is valid UTF-8; lone CR or LF line ends become CR LF, as the text
// control that used to load the files made them. Loaded files are kept in a
// cache keyed on the file name, its modification time and its size, together
// with what is derived from their text (type, last article, numeral table,
// heading index), so repeated loads of an unchanged file cost a stat call.
//
// A title is a file name, never a path: a name holding "\" or "/" or ".."
// names no law file, so that no citation reads outside \lawtxt\.

#include <QString>
#include <memory>
#include <mutex>
#include <optional>

#include "law/law_extract.h"
#include "platform/env.h"

namespace mj {

class LawText {
 public:
  explicit LawText(QString text);

  const QString& text() const { return text_; }
  int type() const;                     // GetLawTextType
  int lastItemNum() const;              // LastItemNum
  const QString& numeralTable() const;  // GetLongDaXie(lastItemNum())
  const LawIndex& index() const;        // headings of text()

 private:
  QString text_;
  mutable std::mutex mutex_;
  mutable std::optional<int> type_;
  mutable std::optional<int> last_;
  mutable std::optional<QString> table_;
  mutable std::unique_ptr<LawIndex> index_;
};

using LawTextPtr = std::shared_ptr<const LawText>;

// Whether name may name a law file: no path separator, no "..".
bool IsPlainLawName(const QString& name);
// The law file of name below the program folder: \lawtxt\ + name + .mmd.
QString LawFileTag(const QString& name);
// root + \lawtxt\ + name + .mmd, as a path of this platform. A name that is
// not plain makes no path (one that might exist outside \lawtxt\): it comes
// back as given, in 《》, for the message that names it.
QString LawFilePath(const Env& env, const QString& name);
// The law file of name exists (and the name is plain).
bool LawFileExists(const Env& env, const QString& name);

// The text of a file decoded as law files are; empty when it cannot be read.
QString ReadLawFile(const QString& path);
// The law file at path through the cache, without its end mark (which is
// never shown); null when it does not exist.
LawTextPtr LoadLawFile(const QString& path);
// The law file of name; null when the name is not plain or the file is missing.
LawTextPtr LoadLawByName(const Env& env, const QString& name);
// Forgets every cached file.
void ClearLawCache();

}  // namespace mj
