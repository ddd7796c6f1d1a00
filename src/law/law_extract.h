#pragma once
// Cutting articles out of a law text: the text of listed article numbers,
// and the numbers of the articles that contain a search text.

#include <QHash>
#include <QList>
#include <QString>

namespace mj {

class LawText;

// Where the article heading lines of a text stand, so that the heading of
// article N (and the next heading behind a place) is found without searching
// the whole text again. Every answer is exactly what a plain search for the
// marker would give.
//
// Markers start with CR LF and two ideographic blanks, then:
//   Kind::Di     第 + key + 条   (key: the first 条 behind 第 ends it)
//   Kind::Dun    key + 、
//   Kind::Point  key + ．
class LawIndex {
 public:
  enum class Kind { Di, Dun, Point };

  LawIndex() = default;
  explicit LawIndex(const QString& text);
  // When the caller knows the text's type (GetLawTextType) already.
  LawIndex(const QString& text, int type);

  const QString& text() const { return text_; }
  int type() const { return type_; }  // GetLawTextType of the text
  // The marker of kind with key.
  static QString marker(Kind kind, const QString& key);
  // 1-based place of the first marker of kind with key at or after from, as
  // InStr(from, text, marker(kind, key)); 0 when none.
  qsizetype find(Kind kind, const QString& key, qsizetype from = 1) const;
  // 1-based place of the first CR LF + "　　第" at or after from; 0 when none.
  qsizetype findDiLine(qsizetype from) const;
  // TextBetween(text, marker(kindA, keyA), marker(kindB, keyB)).
  QString between(Kind kindA, const QString& keyA, Kind kindB, const QString& keyB) const;

 private:
  static constexpr qsizetype kMaxKey = 12;
  QString text_;
  int type_ = 0;
  QHash<QString, QList<qsizetype>> byKind_[3];
  QList<qsizetype> diLines_;
};

// The text of the articles listed as 12．13．, in list order; numbers outside
// 1..(length of the numeral table / 9) are passed over. The numeral table is
// one made by GetLongDaXie. An index of the same text may be given to spare
// the searches; the result is the same.
QString GetPutTxt2Text(const QString& lawText, const QString& numeralTable, const QString& numbers,
                       const LawIndex* index = nullptr);

// The numbers of the articles containing the trimmed find text, as 3．7．.
QString GetMyLongDaAn(const QString& lawText, const QString& numeralTable, const QString& findText,
                      const LawIndex* index = nullptr);
// The same for a loaded law, with its cached numeral table, index and last
// article number.
QString GetMyLongDaAn(const LawText& law, const QString& findText);

}  // namespace mj
