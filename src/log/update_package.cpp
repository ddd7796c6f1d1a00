#include "log/update_package.h"

#include <QFile>
#include <algorithm>
#include <limits>
#include <optional>

#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "law/citations.h"
#include "log/day_files.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kIdTag = QStringLiteral("[本题标识ID：][");
const QString kItemStart = QStringLiteral("\r\n●");

// The citation of a question text: behind the "参见" of its answer section,
// up to the next "■" or "[" behind that "参见", whichever comes first, or to
// the end. Nothing when the section is missing or shorter than 3 characters.
std::optional<QString> citationOf(const QString& text) {
  const qsizetype answerAt = InStr(text, QStringLiteral("■答案："));
  if (answerAt == 0) return std::nullopt;
  const qsizetype seeAt = InStr(answerAt, text, QStringLiteral("参见"));
  if (seeAt == 0) return std::nullopt;
  const qsizetype fieldAt = InStr(seeAt, text, QStringLiteral("■"));
  const qsizetype bracketAt = InStr(seeAt, text, QStringLiteral("["));
  qsizetype end = Len(text) + 1;
  if (fieldAt > 0) end = fieldAt;
  if (bracketAt > 0 && bracketAt < end) end = bracketAt;
  const QString section = Mid(text, seeAt, end - seeAt);
  if (Len(section) < 3) return std::nullopt;
  return Mid(section, 3);
}

// The answer key of a question text: the letters of its answer section,
// read from the part before the first "[注释：]".
QString answerKeyOf(const QString& text) {
  const qsizetype answerAt = InStr(text, QStringLiteral("■答案："));
  QString part;
  if (answerAt > 0) {
    part = Mid(text, answerAt);
  } else {
    QString unused;
    part = GetField(text, 2, unused);
  }
  const qsizetype noteAt = InStr(part, QStringLiteral("[注释：]"));
  if (noteAt > 0) part = Left(part, noteAt - 1);
  return AnswerLetters(part);
}

QString itemTableOf(const QString& id) {
  return QStringLiteral("\\dbf\\") + (Left(id, 1) == u"0" ? tables::kCsItems : tables::kItems);
}

// What AltItemRow writes into row r of an item table: a new row gets the
// fixed values of a new question, every row its reset record, citation,
// key and type from the text.
bool writeRow(DbfTable& t, int r, bool isNew, const QString& id, const QString& text, int type) {
  if (type == 0) type = ItemTypeOfTag(text);
  bool ok = true;
  if (isNew) {
    ok &= t.setText(r, QStringLiteral("itemid"), id);
    ok &= t.setLogical(r, QStringLiteral("valid2"), true);
    ok &= t.setNumber(r, QStringLiteral("itemtype"), type);
    ok &= t.setText(r, QStringLiteral("hastest"), QString());
    ok &= t.setText(r, QStringLiteral("aboutlaw"), QString());
    ok &= t.setText(r, QStringLiteral("story"), QStringLiteral("no"));
    ok &= t.setLogical(r, QStringLiteral("hasselect"), true);
    ok &= t.setText(r, QStringLiteral("filename"), Left(id, 6));
  }
  // "no" wipes the question's whole history.
  ok &= t.setText(r, QStringLiteral("story"), QStringLiteral("no"));
  if (const std::optional<QString> citation = citationOf(text)) {
    // Stored as the flat citation list, which the search from a law article
    // to its questions reads.
    ok &= t.setText(r, QStringLiteral("aboutlaw"), LongDaAn(QStringLiteral("参见") + *citation));
  }
  ok &= t.setText(r, QStringLiteral("answer"), answerKeyOf(text));
  ok &= t.setNumber(r, QStringLiteral("itemtype"), type);
  return ok;
}

// A table changed on a copy (temp) that takes the table's place later.
bool editCopy(const QString& path, const QString& temp, const std::function<bool(DbfTable&)>& edit) {
  bool read = false;
  const QByteArray bytes = ReadBytes(path, &read);
  if (!read || !WriteBytesPlain(temp, bytes)) return false;
  DbfTable t = DbfTable::open(temp, DbfTable::Mode::ReadWrite);
  const bool ok = t.isOpen() && edit(t) && t.flush();
  t.close();
  return ok;
}

}  // namespace

bool AltItemRow(const Env& env, const QString& id, const QString& text, int type) {
  DbfTable t = DbfTable::open(env.path(itemTableOf(id)), DbfTable::Mode::ReadWrite);
  if (!t.isOpen()) return false;
  const QList<int> found = Select(t, {{QStringLiteral("itemid"), id}});
  const bool isNew = found.isEmpty();
  const int r = isNew ? t.appendRow() : found.first();
  if (r < 0) return false;
  bool ok = writeRow(t, r, isNew, id, text, type);
  ok &= t.flush();
  t.close();
  return ok;
}

QString TakeNextItem(QString& text, const QString& delimiter) { return CutMarkedBlock(text, delimiter); }

QList<QStringView> SplitItems(const QString& text, const QString& delimiter) {
  QList<QStringView> out;
  if (delimiter.isEmpty()) return out;
  qsizetype at = text.indexOf(delimiter);
  while (at >= 0) {
    const qsizetype next = text.indexOf(delimiter, at + delimiter.size());
    out.append(next < 0 ? QStringView(text).mid(at) : QStringView(text).mid(at, next - at));
    at = next;
  }
  return out;
}

QString PreparedItem(const QString& item) {
  QString t = ReplaceAll(kCrLf + item + kCrLf, kCrLf + kCrLf, kCrLf);
  t = ReplaceAll(t, QStringLiteral("●"), QString());
  t = ReplaceAll(t, QStringLiteral("［"), QStringLiteral("["));
  return ReplaceAll(t, QStringLiteral("］"), QStringLiteral("]"));
}

QString GetItemIdOfNewText(const QString& item) {
  QString t = item;
  t.remove(u' ');
  t.remove(u'\u3000');
  t.remove(u'\r');
  t.remove(u'\n');
  if (InStr(t, kIdTag) == 0) return QString();
  const QString id = TextBetween(t, kIdTag, QStringLiteral("]"));
  // The ID names the files the question goes into: nothing but its digits.
  if (id.size() != 11) return QString();
  for (const QChar c : id)
    if (c < u'0' || c > u'9') return QString();
  return id;
}

QString GetLawCitedNames(const QString& text) {
  const qsizetype answerAt = InStr(text, QStringLiteral("答案："));
  if (answerAt == 0) return QString();
  const qsizetype seeAt = InStr(answerAt, text, QStringLiteral("参见"));
  if (seeAt == 0) return QString();
  qsizetype end = Len(text) + 1;
  for (const QString& stop : {QStringLiteral("■"), QStringLiteral("[")}) {
    const qsizetype at = InStr(seeAt, text, stop);
    if (at > 0 && at < end) end = at;
  }
  const QString citation = Mid(text, seeAt, end - seeAt);
  QStringList titles;
  qsizetype from = 1;
  while (true) {
    const qsizetype open = InStr(from, citation, QStringLiteral("《"));
    if (open == 0) break;
    const qsizetype close = InStr(open, citation, QStringLiteral("》"));
    if (close == 0) break;
    const QString title = Mid(citation, open, close - open + 1);
    if (!titles.contains(title)) titles.append(title);
    from = close + 1;
  }
  return titles.join(QString());
}

bool ReplaceOneItem(const Env& env, const QString& id, const QString& text) {
  const bool written = PutItemText(env, id, text);
  return AltItemRow(env, id, text) && written;
}

QString UpdateQuestionText() {
  return QStringLiteral("如果发现一个试题已经被更新一次了要不要再更新一次？") + kCrLf +
         QStringLiteral("（选“是”则全部更新，选“否”则只更新没更新过的题，建议你选否，这样") +
         QStringLiteral("可以避免你重复做更新试题。）") + kCrLf + kCrLf +
         QStringLiteral("另外注意，更新试题花费时间相当长，每题大约要2秒种，请耐心等待。") +
         QStringLiteral("如果要在更新过程中中止更新试题，可以按退出菜单。");
}

QString UpdateReportText(qsizetype seen, qsizetype updated) {
  if (seen == updated) return QStringLiteral("共更新了") + CStr(seen) + QStringLiteral("题。");
  return QStringLiteral("共") + CStr(seen) + QStringLiteral("题，更新了") + CStr(updated) + QStringLiteral("题，还有") +
         CStr(seen - updated) + QStringLiteral("题因为已经有了更新历史而没有更新。");
}

// --- the store ---

// An item table: the row of each ID found once, the changes kept in order.
class UpdateStore::Table {
 public:
  explicit Table(const QString& path) : path_(path) {
    const DbfTable t = DbfTable::open(path);
    open_ = t.isOpen() && t.fieldIndex(QStringLiteral("itemid")) >= 0;
    if (!open_) return;
    records_ = t.recordCount();
    DbfScan scan(path);
    const int field = scan.fieldIndex(QStringLiteral("itemid"));
    while (scan.next()) {
      const QString id = scan.text(field);
      if (!rows_.contains(id)) rows_.insert(id, scan.record());
    }
  }

  void alter(const QString& id, const QString& text, int type) {
    // A table that cannot be opened takes nothing, as AltItemRow.
    if (!open_) return;
    auto it = rows_.constFind(id);
    const bool isNew = it == rows_.constEnd();
    const int record = isNew ? records_ + added_++ : *it;
    if (isNew) rows_.insert(id, record);
    pending_.append({record, isNew, id, text, type});
  }

  bool changed() const { return !pending_.isEmpty(); }
  // The table with the changes, as a copy in temp.
  bool prepare(const QString& temp) {
    return editCopy(path_, temp, [this](DbfTable& t) {
      for (const Change& c : pending_) {
        const int r = c.isNew ? t.appendRow() : c.record;
        if (r != c.record || !writeRow(t, r, c.isNew, c.id, c.text, c.type)) return false;
      }
      return true;
    });
  }
  // The copy took the table's place.
  void written() {
    pending_.clear();
    records_ += added_;
    added_ = 0;
  }

  const QString& path() const { return path_; }

 private:
  struct Change {
    int record;
    bool isNew;
    QString id, text;
    int type;
  };
  QString path_;
  bool open_ = false;
  int records_ = 0;
  int added_ = 0;
  QHash<QString, int> rows_;
  QList<Change> pending_;
};

// The directory table's counts of questions per bank, for new IDs.
class UpdateStore::Directory {
 public:
  explicit Directory(const QString& path) : path_(path) {
    const DbfTable t = DbfTable::open(path);
    const int fa = t.fieldIndex(QStringLiteral("a"));
    const int fb = t.fieldIndex(QStringLiteral("b"));
    const int ff = t.fieldIndex(QStringLiteral("f"));
    for (const int r : t.rows()) {
      if (t.isNull(r, fa) || t.isNull(r, fb) || t.isNull(r, ff)) continue;
      rows_.append({r, t.text(r, fa), t.text(r, fb), static_cast<long long>(t.number(r, ff))});
    }
  }

  QString newItemId(const QString& lawName, int type) {
    const QString typeWord =
        Mid(QStringLiteral("单项多项任意"), static_cast<qsizetype>(type - 1) * 2 + 1, 2) + QStringLiteral("选择题");
    const QString key = lawName + u'|' + QString::number(type);
    auto found = rowOf_.constFind(key);
    if (found == rowOf_.constEnd()) {
      int at = -1;
      for (int i = 0; i < rows_.size() && at < 0; ++i)
        if (InStr(rows_[i].a, lawName) > 0 && InStr(rows_[i].a, typeWord) > 0) at = i;
      found = rowOf_.insert(key, at);
    }
    if (*found < 0) return kFallbackItemId;
    Row& row = rows_[*found];
    ++row.f;
    pending_.insert(row.record, row.f);
    return Mid(row.b, 10, 5) + CStr(type) + Right(QStringLiteral("00000") + CStr(row.f), 5);
  }

  bool changed() const { return !pending_.isEmpty(); }
  bool prepare(const QString& temp) {
    return editCopy(path_, temp, [this](DbfTable& t) {
      const int ff = t.fieldIndex(QStringLiteral("f"));
      for (auto it = pending_.constBegin(); it != pending_.constEnd(); ++it)
        if (!t.setNumber(it.key(), ff, static_cast<double>(it.value()))) return false;
      return true;
    });
  }
  void written() { pending_.clear(); }

  const QString& path() const { return path_; }

 private:
  struct Row {
    int record;
    QString a, b;
    long long f;
  };
  QString path_;
  QList<Row> rows_;
  QHash<QString, int> rowOf_;      // law name and type: the row, -1 for none
  QHash<int, long long> pending_;  // record: its new count
};

UpdateStore::UpdateStore(const Env& env) : env_(env), bankFiles_(env) {
  dayFile_ = env.path(kUpdatedFolder + QStringLiteral("\\") + TodayIniName(env.today()));
  dayListBefore_ = ReadIdFile(dayFile_);
}

UpdateStore::~UpdateStore() = default;

UpdateStore::Table& UpdateStore::table(const QString& id) {
  std::unique_ptr<Table>& t = Left(id, 1) == u"0" ? csItems_ : items_;
  if (!t) t = std::make_unique<Table>(env_.path(itemTableOf(id)));
  return *t;
}

void UpdateStore::AltItemRow(const QString& id, const QString& text, int type) { table(id).alter(id, text, type); }

QString UpdateStore::NewItemID(const QString& lawName, int type) {
  if (!directory_) directory_ = std::make_unique<Directory>(env_.path(QStringLiteral("\\dbf\\") + tables::kDirectory));
  return directory_->newItemId(lawName, type);
}

QStringList UpdateStore::write(const QString& updatedIds) {
  // Every new content is made ready beside its file and put onto the disk
  // in one pass; then the files take them one by one: the new questions'
  // numbers first, so that a number once handed out is never handed out
  // again, then the texts, and only then the rows that make the questions
  // show; the day file last. A file is never half written.
  struct Step {
    QString path, temp;
    std::function<void()> written;
  };
  QList<Step> steps;
  QStringList failed;
  const auto ready = [&](const QString& path, bool ok, std::function<void()> written) {
    const QString temp = ResolveCase(path) + u'~';
    if (ok)
      steps.append({path, temp, std::move(written)});
    else {
      failed.append(path);
      QFile::remove(temp);
    }
  };
  const auto tempOf = [](const QString& path) { return ResolveCase(path) + u'~'; };
  if (directory_ && directory_->changed())
    ready(directory_->path(), directory_->prepare(tempOf(directory_->path())), [this] { directory_->written(); });
  for (const auto& [path, text] : bankFiles_.changedFiles())
    ready(path, WriteBytesPlain(tempOf(path), ToGbk(text)), [this, file = path] { bankFiles_.markWritten(file); });
  for (std::unique_ptr<Table>* t : {&items_, &csItems_})
    if (*t && (*t)->changed())
      ready((*t)->path(), (*t)->prepare(tempOf((*t)->path())), [t] { (*t)->written(); });
  const QString folder = env_.path(kUpdatedFolder);
  if (!DirExists(folder)) MakeDir(folder);
  ready(dayFile_, WriteBytesPlain(tempOf(dayFile_), ToGbk(u'"' + updatedIds + dayListBefore_ + u'"' + kCrLf)), [] {});

  QStringList temps;
  for (const Step& s : steps) temps.append(s.temp);
  const bool synced = SyncToDisk(temps);
  for (const Step& s : steps) {
    if (onReplace) onReplace(s.path);
    if (synced && RenameOver(s.temp, s.path)) {
      s.written();
      if (onReplace) onReplace(s.path);
    } else {
      failed.append(s.path);
      QFile::remove(s.temp);
    }
  }
  return failed;
}

// --- the run ---

UpdateRun::UpdateRun(const Env& env, UpdateView& view, UpdateState state) : env_(env), view_(view), state_(state) {}

UpdateRun::~UpdateRun() = default;

bool UpdateRun::run() {
  FileDialogRequest request;
  request.title = kUpdateDialogTitle;
  request.initialDir = env_.path(kUpdatedFolder);
  request.filter = kUpdateFilter;
  const std::optional<QString> chosen = env_.dialogs->openFile(request);
  if (!chosen) return false;
  if (!chosen->contains(QStringLiteral(".new"), Qt::CaseInsensitive)) {
    env_.msgBox(kNotAPackage);
    return false;
  }
  bool read = false;
  const QByteArray bytes = ReadBytes(*chosen, &read);
  if (!read) {
    env_.msgBox(QStringLiteral("无法读取文件：") + *chosen, box::Exclamation);
    return false;
  }
  const int answer = env_.msgBox(UpdateQuestionText(), box::YesNoCancel | box::Question, QStringLiteral("询问"));
  if (answer == box::Cancel) return false;
  return takePackage(DecodeText(bytes), answer == box::Yes);
}

bool UpdateRun::takePackage(const QString& text, bool updateAgain) {
  const int maximum = static_cast<int>(std::min<qsizetype>(Len(text) + 2, std::numeric_limits<int>::max()));
  view_.showProgress(maximum);
  view_.setWaitCursor(true);
  state_.runState = 3;
  state_.updatedIds.clear();
  seen_.clear();
  failed_.clear();
  stopped_ = false;
  store_ = std::make_unique<UpdateStore>(env_);
  store_->onReplace = [this](const QString& path) {
    if (onStep) onStep(path);
  };
  lastWrite_.start();
  sinceWrite_ = 0;
  qsizetype processed = 0;
  for (const QStringView item : SplitItems(text, kItemStart)) {
    // The one point where the window's events come through, the close
    // request among them; inside the work on an item it is ignored.
    state_.runState = 2;
    view_.letEventsThrough();
    if (stopped_) {
      state_.runState = 3;
      view_.setWaitCursor(false);
      return false;
    }
    state_.runState = 1;
    if (onStep) onStep(QStringLiteral("item"));
    const QString prepared = PreparedItem(item.toString());
    processed += prepared.size();
    view_.setProgress(static_cast<int>(std::min<qsizetype>(processed, maximum)));
    takeItem(prepared, updateAgain);
    const bool due = writeEvery_ > 0 ? ++sinceWrite_ >= writeEvery_ : lastWrite_.elapsed() >= 5000;
    if (due) writeFiles();
  }
  view_.setProgress(1);
  view_.hideProgress();
  writeFiles();
  env_.msgBox(UpdateReportText(seen_.size() / 11, state_.updatedIds.size() / 11), box::Information,
              QStringLiteral("结果汇报"));
  if (!failed_.isEmpty())
    env_.msgBox(QStringLiteral("下列文件未能写入，这些更新没有保存：") + kCrLf + failed_.join(kCrLf), box::Exclamation);
  state_.runState = 3;
  view_.setWaitCursor(false);
  return true;
}

void UpdateRun::takeItem(const QString& item, bool updateAgain) {
  const QString id = GetItemIdOfNewText(item);
  if (id.isEmpty()) return;
  // Only an updated question carries its ID in its text.
  if (store_->bankFiles().GetOneOldTi(id).contains(id) && !updateAgain) {
    seen_.prepend(id);
    return;
  }
  store_->bankFiles().PutItemText(id, item);
  store_->AltItemRow(id, item);
  state_.updatedIds.prepend(id);
  seen_.prepend(id);
  spreadToLaws(item);
}

void UpdateRun::spreadToLaws(const QString& text) {
  QString titles = GetLawCitedNames(text);
  const int type = ItemTypeOfTag(text);
  for (QString title = TakeNextItem(titles, QStringLiteral("《")); !title.isEmpty();
       title = TakeNextItem(titles, QStringLiteral("《"))) {
    const QString id = store_->NewItemID(title, type);
    store_->bankFiles().AppendItemText(id, text);
    store_->AltItemRow(id, text);
    state_.updatedIds.prepend(id);
    seen_.prepend(id);
  }
}

void UpdateRun::writeFiles() {
  for (const QString& path : store_->write(state_.updatedIds))
    if (!failed_.contains(path)) failed_.append(path);
  lastWrite_.restart();
  sinceWrite_ = 0;
}

void UpdateRun::writeNow() {
  if (store_) writeFiles();
}

}  // namespace mj
