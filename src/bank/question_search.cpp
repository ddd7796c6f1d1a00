#include "bank/question_search.h"

#include <algorithm>

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

}  // namespace

QString FoldForSearch(const QString& text) {
  QString out;
  out.reserve(text.size());
  for (QChar c : text) {
    if (IsLineBreak(c)) continue;
    out.append(QChar(Fold(c.unicode())));
  }
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
  QString flat;
  flat.reserve(text.size());
  std::vector<qsizetype> breaks;
  for (QChar c : text) {
    if (IsLineBreak(c)) {
      if (breaks.empty() || breaks.back() != flat.size()) breaks.push_back(flat.size());
    } else {
      flat.append(c);
    }
  }
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

void QuestionSearch::refresh(const Env& env, const ItemIndex& internal) {
  if (root_ != env.root) {
    *this = QuestionSearch();
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
  QStringList ids;
  ids.reserve(internal.size() + papers_.size());
  for (const ItemIndex* index : {&internal, static_cast<const ItemIndex*>(&papers_)})
    for (const ItemRow& row : *index)
      if (row.valid2 && !row.itemid.isEmpty()) ids.append(row.itemid);
  // The bank file of every question; then each of them read when it is
  // new or changed.
  bool changed = ids != ids_;
  std::vector<qsizetype> fileOfQuestion;
  fileOfQuestion.reserve(ids.size());
  std::vector<qsizetype> used;
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
      used.push_back(index);
    }
    fileOfQuestion.push_back(index);
  }
  Breather breather;
  qsizetype done = 0;
  for (qsizetype index : used) {
    BankFile& f = files_[index];
    const FileStamp stamp = StampOf(f.path);
    if (stamp != f.stamp) {
      f.stamp = stamp;
      readFile(f);
      changed = true;
    }
    if (progress) progress(++done, static_cast<qsizetype>(used.size()));
    breather.tick();
  }
  if (!changed) return;
  ids_ = ids;
  questions_.clear();
  questions_.reserve(ids.size());
  for (qsizetype i = 0; i < ids.size(); ++i) {
    const QString& id = ids[i];
    const qsizetype file = fileOfQuestion[i];
    // Serial 0 is read as question 1, as the practice reads it.
    const QString key = QString::number(std::max<long long>(ItemSerial(id), 1));
    questions_.push_back(Question{id, Left(id, 6), file, files_[file].texts.value(key)});
  }
  rebuildCorpus();
}

void QuestionSearch::rebuildCorpus() {
  qsizetype size = 0;
  for (const Question& q : questions_) size += q.text.size() + 1;
  corpus_.clear();
  corpus_.reserve(size);
  starts_.clear();
  starts_.reserve(questions_.size() + 1);
  for (const Question& q : questions_) {
    starts_.push_back(corpus_.size());
    for (QChar c : q.text)
      if (!IsLineBreak(c)) corpus_.append(QChar(Fold(c.unicode())));
    corpus_.append(u'\n');
  }
  starts_.push_back(corpus_.size());
}

QList<SearchHit> QuestionSearch::find(const QStringList& words) const {
  QList<SearchHit> hits;
  if (words.isEmpty() || questions_.empty()) return hits;
  // The longest word is likely the rarest: the corpus is scanned for it,
  // and only the questions that hold it are tested for the others.
  qsizetype longest = 0;
  for (qsizetype i = 1; i < words.size(); ++i)
    if (words[i].size() > words[longest].size()) longest = i;
  const QStringMatcher matcher(words[longest]);
  const QStringView corpus(corpus_);
  qsizetype from = 0;
  while (from < corpus.size()) {
    const qsizetype p = matcher.indexIn(corpus, from);
    if (p < 0) break;
    const auto q = static_cast<qsizetype>(std::upper_bound(starts_.begin(), starts_.end(), p) - starts_.begin()) - 1;
    const QStringView text = corpus.mid(starts_[q], starts_[q + 1] - 1 - starts_[q]);
    bool all = true;
    for (qsizetype i = 0; i < words.size() && all; ++i)
      if (i != longest && !text.contains(words[i])) all = false;
    if (all) {
      const Question& question = questions_[q];
      SearchHit hit = HitLine(question.text, words);
      hit.id = question.id;
      hit.bank = titles_.title(question.bank);
      hits.append(std::move(hit));
    }
    from = starts_[q + 1];
  }
  return hits;
}

QList<SearchHit> QuestionSearch::search(const Env& env, const ItemIndex& internal, const QString& query) {
  refresh(env, internal);
  titles_.of(env);
  return find(SearchWords(query));
}

QStringList QuestionSearch::unreadableFiles() const {
  QStringList out;
  std::vector<bool> told(files_.size(), false);
  for (const Question& q : questions_) {
    if (told[q.file] || files_[q.file].readable) continue;
    told[q.file] = true;
    out.append(files_[q.file].path);
  }
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
