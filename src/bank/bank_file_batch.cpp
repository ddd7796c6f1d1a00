#include "bank/bank_file_batch.h"

#include "bank/bank_text.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kCut = QStringLiteral("\r\n●");
const QString kDoubleCrLf = QStringLiteral("\r\n\r\n");
const QString kBulletCrLf = QStringLiteral("●\r\n");

QString markerOf(long long n) { return QStringLiteral("●") + CStr(n) + QStringLiteral("●"); }

}  // namespace

BankFileModel::BankFileModel(const QString& fileText) : pieces_(cut(fileText)) {}

bool BankFileModel::settledText(const QString& t) { return !t.contains(kDoubleCrLf) && !t.contains(kBulletCrLf); }

std::vector<BankFileModel::Piece> BankFileModel::cut(const QString& text) {
  std::vector<Piece> out;
  qsizetype from = 0;
  for (qsizetype at = text.indexOf(kCut); at >= 0; at = text.indexOf(kCut, at + 2)) {
    const QString piece = text.mid(from, at + 2 - from);
    out.push_back({piece, settledText(piece)});
    from = at + 2;
  }
  const QString rest = text.mid(from);
  out.push_back({rest, settledText(rest)});
  return out;
}

bool BankFileModel::opens(std::size_t i, const QString& marker) const {
  return i > 0 && pieces_[i].text.startsWith(marker);
}

QString BankFileModel::text() const {
  QString t;
  qsizetype size = 0;
  for (const Piece& p : pieces_) size += p.text.size();
  t.reserve(size);
  for (const Piece& p : pieces_) t += p.text;
  return t;
}

QString BankFileModel::oldBlock(long long n) const {
  const QString marker = markerOf(n);
  const QString next = markerOf(n + 1);
  std::size_t i = 1;
  while (i < pieces_.size() && !opens(i, marker)) ++i;
  if (i >= pieces_.size()) return QString();
  QString t = pieces_[i].text.mid(marker.size());
  std::size_t j = i + 1;
  for (; j < pieces_.size() && !opens(j, next); ++j) t += pieces_[j].text;
  // The CR LF in front of the next marker belongs to that marker.
  if (j < pieces_.size()) t.chop(2);
  t = ReplaceAll(t, QStringLiteral("\r\n") + marker, QString());
  return ReplaceAll(t, QStringLiteral("\r\n") + next, QString());
}

void BankFileModel::put(long long n, const QString& bankText) {
  const QString marker = markerOf(n);
  const QString next = markerOf(n + 1);
  // The file is read with a CR LF added.
  pieces_.back().text += kCrLf;
  pieces_.back().settled = false;
  std::size_t p = 0;
  for (std::size_t i = 1; i < pieces_.size() && p == 0; ++i)
    if (opens(i, marker)) p = i;
  std::size_t q = 0;
  for (std::size_t i = pieces_.size() - 1; i > 0 && q == 0; --i)
    if (opens(i, next)) q = i;
  auto pieceBefore = [this](std::size_t at) -> Piece& {
    // The start marker brings a CR LF of its own behind the one there is.
    Piece& before = pieces_[at - 1];
    before.text += kCrLf;
    before.settled = false;
    return before;
  };
  if (p > 0 && q > p) {
    // In the middle: the pieces from the question's own marker up to the
    // next number's marker give way.
    pieceBefore(p);
    std::vector<Piece> fresh = cut(marker + bankText + pieces_[q].text);
    pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(p), pieces_.begin() + static_cast<std::ptrdiff_t>(q) + 1);
    pieces_.insert(pieces_.begin() + static_cast<std::ptrdiff_t>(p), fresh.begin(), fresh.end());
  } else if (p > 0) {
    // The last question of the file: the rest of the file gives way.
    pieceBefore(p);
    std::vector<Piece> fresh = cut(marker + bankText);
    pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(p), pieces_.end());
    pieces_.insert(pieces_.end(), fresh.begin(), fresh.end());
  } else {
    // No marker yet: the question goes to the end.
    pieceBefore(pieces_.size());
    std::vector<Piece> fresh = cut(marker + bankText);
    pieces_.insert(pieces_.end(), fresh.begin(), fresh.end());
  }
  squeeze();
  // Written with a CR LF at the end.
  pieces_.back().text += kCrLf;
  pieces_.back().settled = settledText(pieces_.back().text);
}

void BankFileModel::squeeze() {
  auto squeezeOne = [](Piece& piece) {
    if (piece.settled) return;
    piece.text = ReplaceAll(ReplaceAll(piece.text, kDoubleCrLf, kCrLf), kBulletCrLf, QStringLiteral("●"));
    piece.settled = settledText(piece.text);
  };
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    squeezeOne(pieces_[i]);
    // A piece that lost its last CR LF no longer ends before a marker: the
    // next piece is part of it.
    while (i + 1 < pieces_.size() && !pieces_[i].text.endsWith(kCrLf)) {
      squeezeOne(pieces_[i + 1]);
      pieces_[i].text += pieces_[i + 1].text;
      pieces_[i].settled = settledText(pieces_[i].text);
      pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
  }
}

void BankFileModel::recut(std::size_t i) {
  std::vector<Piece> fresh = cut(pieces_[i].text);
  pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(i));
  pieces_.insert(pieces_.begin() + static_cast<std::ptrdiff_t>(i), fresh.begin(), fresh.end());
}

void BankFileModel::append(const QString& appended) {
  pieces_.back().text += appended;
  recut(pieces_.size() - 1);
}

BankFileModel& BankFileBatch::model(const QString& suffix, bool changing) {
  const QString path = env_.path(suffix);
  auto it = files_.find(path);
  if (it == files_.end()) it = files_.insert(path, BankFileModel(ReadFileAsText(path)));
  if (changing && !changed_.contains(path)) changed_.append(path);
  return *it;
}

QString BankFileBatch::GetOneOldTi(const QString& id) {
  return model(BankFileOf(id), false).oldBlock(ItemSerial(id));
}

void BankFileBatch::PutItemText(const QString& id, const QString& text) {
  model(BankFileOf(id), true).put(ItemSerial(id), BankFormOf(text));
}

void BankFileBatch::AppendItemText(const QString& id, const QString& text) {
  model(AppendedFileOf(id), true).append(AppendedItemText(id, text));
}

QList<std::pair<QString, QString>> BankFileBatch::changedFiles() const {
  QList<std::pair<QString, QString>> out;
  for (const QString& path : changed_) out.append({path, files_.value(path).text()});
  return out;
}

void BankFileBatch::markWritten() { changed_.clear(); }

}  // namespace mj
