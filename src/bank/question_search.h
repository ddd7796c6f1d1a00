#pragma once
// The text search over the questions: every live question of the internal
// banks (the question index) and of the simulated papers (\dbf\csitems.mmd)
// is read from its bank file as the practice reads it, and its stem with
// the options, its answer field and its notes are searched.
//
// The query is a line of words separated by blanks; every word must occur
// in a question for it to be a hit. A word in double quotes ("..." or
// “...”) is taken as it stands, blanks included. Full-width and half-width
// forms of letters, digits and signs match each other (Ａ and A, １ and 1),
// Latin letters match without regard to case, the ideographic blank matches
// the blank, and line breaks in the text are passed over, so that a word
// broken across two lines is still found.
//
// The search keeps what it read: the bank files are read again only when
// they changed on disk, so that a second search over a big folder costs
// little more than one pass over the texts in memory.

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "bank/bank_titles.h"
#include "bank/item_index.h"
#include "platform/env.h"
#include "platform/file_stamp.h"

namespace mj {

// A place in a text: the first character (from 0) and the length.
struct TextMark {
  qsizetype start = 0;
  qsizetype length = 0;
  bool operator==(const TextMark&) const = default;
};

struct SearchHit {
  QString id;     // the question ID
  QString bank;   // the title of its bank in the directory
  QString line;   // the line of the question around the first place found
  QList<TextMark> marks;  // every place of a search word in line
};

// The words of a query, folded as the texts are (see FoldForSearch). Empty
// words are dropped; a quoted word keeps its blanks.
QStringList SearchWords(const QString& query);

// A text as the search compares it: line breaks (CR, LF) left out,
// full-width forms U+FF01..U+FF5E as their half-width ones, the ideographic
// blank as a blank, Latin capitals as small letters. Every other character
// stays, so that place i of the result is character i of the text without
// its line breaks.
QString FoldForSearch(const QString& text);

// The text of a question that is searched: field 1 (the stem and the
// options, without the provider block), CR LF, field 2 (the answer, the
// citation and the notes), from the cleaned block of question n of a bank
// file's text, as the practice shows them.
QString SearchableText(const QString& block, long long n);

// The line shown for a hit in text (a question's searchable text) and the
// places of the words in it; words as SearchWords gives them. The line is
// the line of the first place any word occurs, joined with the following
// ones when the word runs over a line break, cut to about 60 characters
// around the place ("…" where something was cut). Empty when no word
// occurs.
SearchHit HitLine(const QString& text, const QStringList& words);

// What a search looks through, made again whenever a question or a bank
// file changed: the questions (ID, bank, searchable text) and their folded
// texts one behind the other. Results keep the one they were found in, so
// that a later refresh never changes the rows a list shows.
struct SearchCorpus;

// The questions found by a search, in the order they were searched. Only
// the questions are kept; the line shown for a hit (HitLine, the costly
// part for a word that occurs nearly everywhere) is made when it is asked
// for, so that a list shows the first rows of 20,000 hits at once.
class SearchResults {
 public:
  qsizetype size() const { return static_cast<qsizetype>(found_.size()); }
  bool isEmpty() const { return found_.empty(); }
  // The ID of hit i (from 0).
  QString id(qsizetype i) const;
  // The title of its bank in the directory (its 6 characters when no row
  // names it).
  QString bank(qsizetype i) const;
  // Hit i with its line and marks.
  SearchHit hit(qsizetype i) const;
  // Every hit made; for front ends that print them all.
  QList<SearchHit> hits() const;
  // The IDs of all hits, 11 characters each, one behind the other.
  QString ids() const;
  // The words searched, as SearchWords gives them.
  const QStringList& words() const { return words_; }

 private:
  friend class QuestionSearch;
  std::shared_ptr<const SearchCorpus> corpus_;
  QHash<QString, QString> titles_;
  QStringList words_;
  std::vector<qsizetype> found_;  // question numbers in the corpus
};

class QuestionSearch {
 public:
  QuestionSearch();
  ~QuestionSearch();
  QuestionSearch(QuestionSearch&&) noexcept;
  QuestionSearch& operator=(QuestionSearch&&) noexcept;

  // Brings the texts up to date: the live questions of `internal` (in
  // index order) and then those of the paper table, their bank files
  // read again where they changed. Window events are let through about
  // once a second while files are read.
  void refresh(const Env& env, const ItemIndex& internal);
  // Told by refresh after each bank file it looked at (and read when it
  // changed): the files so far, and the bank files of the questions.
  std::function<void(qsizetype done, qsizetype total)> progress;
  // The questions in which every word occurs, in the order above. No words:
  // no hits.
  SearchResults results(const QStringList& words) const;
  // The same with every hit's line made.
  QList<SearchHit> find(const QStringList& words) const { return results(words).hits(); }
  // refresh, the bank titles read again where they changed, and the
  // results for the query's words.
  SearchResults searchResults(const Env& env, const ItemIndex& internal, const QString& query);
  QList<SearchHit> search(const Env& env, const ItemIndex& internal, const QString& query) {
    return searchResults(env, internal, query).hits();
  }

  // The questions searched.
  qsizetype questionCount() const;
  // The bank files (paths) that are missing or could not be read.
  QStringList unreadableFiles() const;

 private:
  struct BankFile {
    QString path;
    FileStamp stamp;
    bool readable = false;
    // Marker digits of a question -> its searchable text.
    QHash<QString, QString> texts;
  };
  void readFile(BankFile& f) const;
  bool sameQuestions(const ItemIndex& internal) const;
  void rebuild(const QStringList& ids);

  QString root_;
  FileStamp papersStamp_;
  ItemIndex papers_;
  bool papersRead_ = false;
  BankTitles titles_;
  std::vector<BankFile> files_;
  QHash<QString, qsizetype> fileOf_;  // relative bank file -> index into files_
  std::vector<qsizetype> used_;       // the files of the questions, each once
  std::vector<qsizetype> fileOfQuestion_;
  std::shared_ptr<const SearchCorpus> corpus_;
};

// The search from a program folder alone, for front ends without the
// program's index in memory: the index is read from \dbf\items.mmd.
QList<SearchHit> SearchQuestions(const Env& env, const QString& query);

// A hit's line with every mark put between open and close ("【", "】").
QString MarkedLine(const SearchHit& hit, const QString& open, const QString& close);

}  // namespace mj
