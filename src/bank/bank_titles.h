#pragma once
// The titles of the banks as the directories show them: the label of the
// leaf row of \dbf\33ok.mmd (internal banks) or \dbf\csface.mmd (simulated
// papers) whose file field b names the bank's file. A bank is the 6
// characters of its questions' filename field, such as "100011"
// (bank code and question type) or "000012" (a paper's questions of one
// type).

#include <QHash>
#include <QString>

#include "platform/env.h"
#include "platform/file_stamp.h"

namespace mj {

// Bank (6 characters) -> the trimmed label of the first leaf row naming it,
// from both directory tables. Tables that cannot be read give no titles.
QHash<QString, QString> ReadBankTitles(const Env& env);

// The titles, read again only when a directory table changed.
class BankTitles {
 public:
  const QHash<QString, QString>& of(const Env& env);
  // The title of a bank; the bank's 6 characters when no row names it.
  QString title(const QString& bank) const { return titles_.value(bank, bank); }
  // The titles last read.
  const QHash<QString, QString>& titles() const { return titles_; }

 private:
  QString root_;
  FileStamp banks_, papers_;
  bool read_ = false;
  QHash<QString, QString> titles_;
};

}  // namespace mj
