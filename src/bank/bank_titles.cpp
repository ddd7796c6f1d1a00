#include "bank/bank_titles.h"

#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"

namespace mj {

namespace {

void ReadTitles(const QString& path, QHash<QString, QString>& titles) {
  DbfScan scan(path);
  if (!scan.isOpen()) return;
  // Directory tables are read by position: a the label, b the bank file.
  if (scan.fieldCount() <= tables::kDirFile) return;
  while (scan.next()) {
    if (scan.isNull(tables::kDirLabel) || scan.isNull(tables::kDirFile)) continue;
    const QString bank = GetSmallTxtName(scan.trimmedText(tables::kDirFile));
    if (bank.isEmpty() || titles.contains(bank)) continue;
    titles.insert(bank, scan.trimmedText(tables::kDirLabel));
  }
}

QString TablePath(const Env& env, const QString& table) { return env.path(QStringLiteral("\\dbf\\") + table); }

}  // namespace

QHash<QString, QString> ReadBankTitles(const Env& env) {
  QHash<QString, QString> titles;
  ReadTitles(TablePath(env, tables::kDirectory), titles);
  ReadTitles(TablePath(env, tables::kCsDirectory), titles);
  return titles;
}

const QHash<QString, QString>& BankTitles::of(const Env& env) {
  const FileStamp banks = StampOf(TablePath(env, tables::kDirectory));
  const FileStamp papers = StampOf(TablePath(env, tables::kCsDirectory));
  if (!read_ || root_ != env.root || banks != banks_ || papers != papers_) {
    titles_ = ReadBankTitles(env);
    root_ = env.root;
    banks_ = banks;
    papers_ = papers;
    read_ = true;
  }
  return titles_;
}

}  // namespace mj
