#pragma once
// The bank files: one plain GBK text per bank, holding its questions as
// blocks. A block starts at a marker at the beginning of a line, CR LF +
// "●" + n + "●" with n the serial number of the ID without leading zeros,
// and runs to the next "●". Inside a block the fields are separated by "■":
// field 1 is the stem with the options (and, at its end, an optional
// provider block), field 2 the answer with the citation and the notes.

#include <QString>

#include "platform/env.h"

namespace mj {

// The bank file of an ID, relative to the program folder:
// \yibanti\ + the first 6 characters + ".mmd", or \moniti\ + the first 5
// characters + ".mmd" when the ID begins with "0" (a simulated paper keeps
// all its types in one file).
QString BankFileOf(const QString& id);
// The same as a path of this platform under the program folder.
QString BankFilePath(const Env& env, const QString& id);

// The serial number of an ID: Val of its characters 7 to 11.
long long ItemSerial(const QString& id);

// The question type of a question text by its type tag: "[单选题]" 1,
// "[多选题]" 2, anything else 3. Full-width brackets count as well.
int ItemTypeOfTag(const QString& text);

// The cleaned block of question n of a bank file's text (n 0 is taken as
// 1): the text between "●" + n + "●" and the next "●", given an answer gap
// "(      )" when it has no "(", and a full stop "。" before its first
// option unless the stem ends in a question gap "?(".
QString GetOneShiTi(const QString& fileText, long long n);

// Field fieldNo of a question block, 1 being the stem with the options.
// For field 1 the provider block (from CR LF + "[本题ID及提供者有关信息：]" on)
// is cut off and goes to providerInfo, which becomes empty when there is
// none; the other fields leave providerInfo alone and bring the note
// markers "[注释：]" and "[注于：]" to the beginning of a line.
QString GetField(const QString& text, int fieldNo, QString& providerInfo);

// The stored block of question `id` in its bank file: the text between its
// marker and the marker of the next number (to the end of the file for the
// last one). Empty when the file or the marker is missing.
QString GetOneOldTi(const Env& env, const QString& id);

// Writes the changed text of question `id` into its bank file. The text's
// full-width brackets become half-width ones and its type tag goes. The
// old block is replaced; a question without a marker in the file is added
// at the end. Blank lines of the file are squeezed, and a question's text
// follows directly behind its marker. False when the file cannot be written.
bool PutItemText(const Env& env, const QString& id, const QString& text);

// Appends question `id` with its text to the end of \yibanti\ + the first 6
// ID characters + ".mmd", behind the marker "●" + n + "●". False when the
// file cannot be written.
bool AppendItemText(const Env& env, const QString& id, const QString& text);
// The file AppendItemText writes to (relative to the program folder), and
// what it appends there: the text behind its marker, with a CR LF.
QString AppendedFileOf(const QString& id);
QString AppendedItemText(const QString& id, const QString& text);

// A question's text in the form it has inside a bank file: half-width
// brackets, no type tag.
QString BankFormOf(QString text);

// The letters "ABCD" in a random order, each once.
QString RndABCD();

// True when flag has the form "a-b" and a <= n <= b.
bool IsInTheFlag(const QString& flag, long long n);

// The text of the bank file last loaded. Loading the same path again gives
// the kept text as it is, without reading the file; another path replaces
// it. Writers of a bank file call forget() so that the next load reads it.
class BankText {
 public:
  // The text of the bank file of the question at place i of the ID list.
  const QString& MyGetAllShiTi(const Env& env, const QString& runIds, qsizetype i);
  // The text of the bank file of question id.
  const QString& loadFor(const Env& env, const QString& id);
  // The text of the file at path.
  const QString& load(const QString& path);

  const QString& text() const { return text_; }
  const QString& path() const { return path_; }
  void forget();

 private:
  QString path_;
  QString text_;
  bool loaded_ = false;
};

}  // namespace mj
