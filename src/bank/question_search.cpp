#include "bank/question_search.h"

#include <algorithm>
#include <cstring>

#include "bank/bank_text.h"
#include "bank/tables.h"
#include "platform/text_toolkit.h"
#include "platform/events.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

bool IsQuote(QChar c) { return c == u'"' || c == u'“' || c == u'”' || c == u'＂'; }
bool IsBlank(QChar c) { return c == u' ' || c == u'\t' || c == u'\u3000' || c == u'\r' || c == u'\n'; }
bool IsLineBreak(QChar c) { return c == u'\r' || c == u'\n'; }

char16_t Fold(char16_t u) {
  if (u >= 0xFF01 && u <= 0xFF5E)
    u = static_cast<char16_t>(u - 0xFEE0);
  else if (u == 0x3000)
    u = u' ';
  if (u >= u'A' && u <= u'Z') u = static_cast<char16_t>(u + (u'a' - u'A'));
  return u;
}

// The line shown for a hit is cut to this many characters, of which about
// kBefore stand before the place found, so that a long stem still shows
// what was found with some words around it.
constexpr qsizetype kLineWidth = 60;
constexpr qsizetype kBefore = 20;

const QString kEllipsis = QStringLiteral("…");

// The first place of word in text from `from` on, or -1. The search runs
// over the bytes with the C library's memmem, which skips through the
// 16 MB of texts of a folder of 20,000 questions several times as fast as
// QStringMatcher does (whose skip table sees only the low byte of a
// character, alike in many Chinese characters); a find that starts inside
// a character is passed over.
qsizetype FindWord(QStringView text, qsizetype from, QStringView word) {
  if (word.isEmpty()) return from <= text.size() ? from : -1;
  const char* base = reinterpret_cast<const char*>(text.data());
  const char* end = base + text.size() * 2;
  const auto bytes = static_cast<std::size_t>(word.size()) * 2;
  for (const char* p = base + from * 2; p < end;) {
    const auto* found = static_cast<const char*>(memmem(p, static_cast<std::size_t>(end - p), word.data(), bytes));
    if (!found) return -1;
    if ((found - base) % 2 == 0) return (found - base) / 2;
    p = found + 1;
  }
  return -1;
}

}  // namespace

QString FoldForSearch(const QString& text) {
  // Written into the buffer directly: an append per character costs more
  // than the folding itself when every hit line of a big search is made.
  QString out(text.size(), Qt::Uninitialized);
  char16_t* to = reinterpret_cast<char16_t*>(out.data());
  qsizetype n = 0;
  for (QChar c : text)
    if (!IsLineBreak(c)) to[n++] = Fold(c.unicode());
  out.truncate(n);
  return out;
}

QStringList SearchWords(const QString& query) {
  QStringList out;
  QString word;
  bool quoted = false;
  const auto push = [&] {
    const QString w = FoldForSearch(word);
    word.clear();
    if (!w.isEmpty()) out.append(w);
  };
  for (QChar c : query) {
    if (IsQuote(c)) {
      // An opening quote ends the word before it; a closing one ends the
      // quoted word, blanks and all.
      push();
      quoted = !quoted;
    } else if (!quoted && IsBlank(c)) {
      push();
    } else {
      word.append(c);
    }
  }
  push();
  return out;
}

QString SearchableText(const QString& block, long long n) {
  QString provider;
  const QString question = GetOneShiTi(block, n);
  return GetField(question, 1, provider) + kCrLf + GetField(question, 2, provider);
}

SearchHit HitLine(const QString& text, const QStringList& words) {
  SearchHit hit;
  // The text without its line breaks, and where they stood.
  QString flat(text.size(), Qt::Uninitialized);
  char16_t* to = reinterpret_cast<char16_t*>(flat.data());
  qsizetype n = 0;
  std::vector<qsizetype> breaks;
  for (QChar c : text) {
    if (IsLineBreak(c)) {
      if (breaks.empty() || breaks.back() != n) breaks.push_back(n);
    } else {
      to[n++] = c.unicode();
    }
  }
  flat.truncate(n);
  const QString folded = FoldForSearch(flat);
  // The first place of any word; of two words found at the same place the
  // longer one.
  qsizetype at = -1, length = 0;
  for (const QString& w : words) {
    const qsizetype i = folded.indexOf(w);
    if (i < 0) continue;
    if (at < 0 || i < at || (i == at && w.size() > length)) {
      at = i;
      length = w.size();
    }
  }
  if (at < 0) return hit;
  // The line of that place, to the line end behind the word.
  qsizetype lineStart = 0, lineEnd = flat.size();
  for (qsizetype b : breaks) {
    if (b <= at) lineStart = b;
    if (b >= at + length) {
      lineEnd = b;
      break;
    }
  }
  while (lineStart < at && (flat[lineStart] == u' ' || flat[lineStart] == u'\u3000' || flat[lineStart] == u'\t'))
    ++lineStart;
  qsizetype start = lineStart, end = lineEnd;
  if (end - start > kLineWidth) {
    start = std::max(lineStart, at - kBefore);
    end = std::min(lineEnd, std::max(start + kLineWidth, at + length));
  }
  const QString prefix = start > lineStart ? kEllipsis : QString();
  hit.line = prefix + flat.mid(start, end - start) + (end < lineEnd ? kEllipsis : QString());
  // Every place of every word inside the line; places that overlap become
  // one mark.
  QList<TextMark> marks;
  for (const QString& w : words) {
    for (qsizetype i = folded.indexOf(w, start); i >= 0 && i + w.size() <= end; i = folded.indexOf(w, i + w.size()))
      marks.append({i - start + prefix.size(), w.size()});
  }
  std::sort(marks.begin(), marks.end(),
            [](const TextMark& a, const TextMark& b) { return a.start < b.start || (a.start == b.start && a.length > b.length); });
  for (const TextMark& m : marks) {
    if (!hit.marks.isEmpty() && m.start <= hit.marks.back().start + hit.marks.back().length) {
      TextMark& last = hit.marks.back();
      last.length = std::max(last.length, m.start + m.length - last.start);
    } else {
      hit.marks.append(m);
    }
  }
  return hit;
}

void QuestionSearch::readFile(BankFile& f) const {
  bool ok = false;
  const QString text = ReadText(f.path, &ok);
  f.readable = ok;
  f.texts.clear();
  // One pass over the markers "●" + n + "●": the block of a question is
  // what GetOneShiTi takes for it, the text behind the first such marker up
  // to the next "●". Every "●" may begin a marker, the closing one of a
  // marker as well, as a plain search for the marker would find it there.
  const QChar dot(u'●');
  for (qsizetype p = text.indexOf(dot); p >= 0; p = text.indexOf(dot, p + 1)) {
    qsizetype q = p + 1;
    while (q < text.size() && text[q] >= u'0' && text[q] <= u'9') ++q;
    if (q == p + 1 || q >= text.size() || text[q] != dot) continue;
    const QString digits = text.mid(p + 1, q - p - 1);
    if (digits.startsWith(u'0') || f.texts.contains(digits)) continue;
    qsizetype e = text.indexOf(dot, q + 1);
    if (e < 0) e = text.size();
    f.texts.insert(digits, SearchableText(text.mid(p, e - p), digits.toLongLong()));
  }
}

struct SearchCorpus {
  struct Question {
    QString id;
    QString bank;  // the 6 characters of the ID
    qsizetype file = -1;  // the bank file, an index into the search's files
    QString text;         // its searchable text (shared with the file's)
  };
  std::vector<Question> questions;
  // The folded texts of all questions, one behind the other, each closed by
  // a line feed (which no folded text or word holds); starts[i] is where
  // question i begins, starts.back() the length of the whole.
  QString folded;
  std::vector<qsizetype> starts;
};

QuestionSearch::QuestionSearch() : corpus_(std::make_shared<const SearchCorpus>()) {}
QuestionSearch::~QuestionSearch() = default;
QuestionSearch::QuestionSearch(QuestionSearch&&) noexcept = default;
QuestionSearch& QuestionSearch::operator=(QuestionSearch&&) noexcept = default;

qsizetype QuestionSearch::questionCount() const { return static_cast<qsizetype>(corpus_->questions.size()); }

bool QuestionSearch::sameQuestions(const ItemIndex& internal) const {
  // Compared in place: building the list of 20,000 IDs each time would cost
  // more than the search itself.
  const std::vector<SearchCorpus::Question>& questions = corpus_->questions;
  std::size_t k = 0;
  for (const ItemIndex* index : {&internal, static_cast<const ItemIndex*>(&papers_)}) {
    for (const ItemRow& row : *index) {
      if (!row.valid2 || row.itemid.isEmpty()) continue;
      if (k >= questions.size() || questions[k].id != row.itemid) return false;
      ++k;
    }
  }
  return k == questions.size();
}

void QuestionSearch::refresh(const Env& env, const ItemIndex& internal) {
  if (root_ != env.root) {
    // Another program folder: nothing read so far counts; whoever listens
    // to the progress still does.
    auto listener = std::move(progress);
    *this = QuestionSearch();
    progress = std::move(listener);
    root_ = env.root;
  }
  // The paper table is small and read again whenever it changed.
  const QString dbf = env.path(QStringLiteral("\\dbf"));
  const FileStamp papers = StampOf(AppPath(dbf, QStringLiteral("\\") + tables::kCsItems));
  if (!papersRead_ || papers != papersStamp_) {
    ReadData2ItemData(dbf, tables::kCsItems, papers_);
    papersStamp_ = papers;
    papersRead_ = true;
  }
  const bool same = sameQuestions(internal);
  QStringList ids;
  if (!same) {
    // The bank file of every question, each file once in used_.
    ids.reserve(internal.size() + papers_.size());
    for (const ItemIndex* index : {&internal, static_cast<const ItemIndex*>(&papers_)})
      for (const ItemRow& row : *index)
        if (row.valid2 && !row.itemid.isEmpty()) ids.append(row.itemid);
    fileOfQuestion_.clear();
    fileOfQuestion_.reserve(ids.size());
    used_.clear();
    std::vector<bool> isUsed(files_.size(), false);
    for (const QString& id : ids) {
      const QString relative = BankFileOf(id);
      auto it = fileOf_.constFind(relative);
      qsizetype index;
      if (it == fileOf_.constEnd()) {
        // A new file has the stamp of a missing one until it is read below:
        // a missing file is never read and stays unreadable.
        index = static_cast<qsizetype>(files_.size());
        files_.push_back(BankFile{env.path(relative), FileStamp(), false, {}});
        isUsed.push_back(false);
        fileOf_.insert(relative, index);
      } else {
        index = *it;
      }
      if (!isUsed[index]) {
        isUsed[index] = true;
        used_.push_back(index);
      }
      fileOfQuestion_.push_back(index);
    }
  }
  // Each file read when it is new or changed.
  Breather breather;
  qsizetype done = 0;
  bool read = false;
  for (qsizetype index : used_) {
    BankFile& f = files_[index];
    const FileStamp stamp = StampOf(f.path);
    if (stamp != f.stamp) {
      f.stamp = stamp;
      readFile(f);
      read = true;
    }
    if (progress) progress(++done, static_cast<qsizetype>(used_.size()));
    breather.tick();
  }
  if (same && !read) return;
  if (same) {
    ids.reserve(questionCount());
    for (const SearchCorpus::Question& q : corpus_->questions) ids.append(q.id);
  }
  rebuild(ids);
}

void QuestionSearch::rebuild(const QStringList& ids) {
  // A new corpus, never the old one changed: results found in the old one
  // keep it.
  auto corpus = std::make_shared<SearchCorpus>();
  corpus->questions.reserve(ids.size());
  qsizetype size = 0;
  for (qsizetype i = 0; i < ids.size(); ++i) {
    const QString& id = ids[i];
    const qsizetype file = fileOfQuestion_[i];
    // Serial 0 is read as question 1, as the practice reads it.
    const QString key = QString::number(std::max<long long>(ItemSerial(id), 1));
    corpus->questions.push_back({id, Left(id, 6), file, files_[file].texts.value(key)});
    size += corpus->questions.back().text.size() + 1;
  }
  QString& folded = corpus->folded;
  folded.resize(size);
  char16_t* out = reinterpret_cast<char16_t*>(folded.data());
  qsizetype at = 0;
  corpus->starts.reserve(corpus->questions.size() + 1);
  for (const SearchCorpus::Question& q : corpus->questions) {
    corpus->starts.push_back(at);
    for (QChar c : q.text)
      if (!IsLineBreak(c)) out[at++] = Fold(c.unicode());
    out[at++] = u'\n';
  }
  folded.truncate(at);
  corpus->starts.push_back(at);
  corpus_ = std::move(corpus);
}

SearchResults QuestionSearch::results(const QStringList& words) const {
  SearchResults r;
  r.corpus_ = corpus_;
  r.titles_ = titles_.titles();
  r.words_ = words;
  const SearchCorpus& c = *corpus_;
  if (words.isEmpty() || c.questions.empty()) return r;
  // The longest word is likely the rarest: the texts are scanned for it,
  // and only the questions that hold it are tested for the others.
  qsizetype longest = 0;
  for (qsizetype i = 1; i < words.size(); ++i)
    if (words[i].size() > words[longest].size()) longest = i;
  const QStringView word(words[longest]);
  const QStringView corpus(c.folded);
  qsizetype from = 0;
  while (from < corpus.size()) {
    const qsizetype p = FindWord(corpus, from, word);
    if (p < 0) break;
    const auto q = static_cast<qsizetype>(std::upper_bound(c.starts.begin(), c.starts.end(), p) - c.starts.begin()) - 1;
    const QStringView text = corpus.mid(c.starts[q], c.starts[q + 1] - 1 - c.starts[q]);
    bool all = true;
    for (qsizetype i = 0; i < words.size() && all; ++i)
      if (i != longest && !text.contains(words[i])) all = false;
    if (all) r.found_.push_back(q);
    from = c.starts[q + 1];
  }
  return r;
}

SearchResults QuestionSearch::searchResults(const Env& env, const ItemIndex& internal, const QString& query) {
  refresh(env, internal);
  titles_.of(env);
  return results(SearchWords(query));
}

QStringList QuestionSearch::unreadableFiles() const {
  QStringList out;
  std::vector<bool> told(files_.size(), false);
  for (const SearchCorpus::Question& q : corpus_->questions) {
    if (told[q.file] || files_[q.file].readable) continue;
    told[q.file] = true;
    out.append(files_[q.file].path);
  }
  return out;
}

QString SearchResults::id(qsizetype i) const { return corpus_->questions[found_[i]].id; }

QString SearchResults::bank(qsizetype i) const {
  const QString& bank = corpus_->questions[found_[i]].bank;
  return titles_.value(bank, bank);
}

SearchHit SearchResults::hit(qsizetype i) const {
  const SearchCorpus::Question& q = corpus_->questions[found_[i]];
  SearchHit h = HitLine(q.text, words_);
  h.id = q.id;
  h.bank = titles_.value(q.bank, q.bank);
  return h;
}

QList<SearchHit> SearchResults::hits() const {
  QList<SearchHit> out;
  out.reserve(size());
  for (qsizetype i = 0; i < size(); ++i) out.append(hit(i));
  return out;
}

QString SearchResults::ids() const {
  QString out;
  out.reserve(size() * 11);
  for (qsizetype q : found_) out += corpus_->questions[q].id;
  return out;
}

QList<SearchHit> SearchQuestions(const Env& env, const QString& query) {
  ItemIndex internal;
  ReadData2ItemData(env.path(QStringLiteral("\\dbf")), tables::kItems, internal);
  QuestionSearch search;
  return search.search(env, internal, query);
}

QString MarkedLine(const SearchHit& hit, const QString& open, const QString& close) {
  QString out;
  qsizetype at = 0;
  for (const TextMark& m : hit.marks) {
    out += hit.line.mid(at, m.start - at) + open + hit.line.mid(m.start, m.length) + close;
    at = m.start + m.length;
  }
  return out + hit.line.mid(at);
}

}  // namespace mj
