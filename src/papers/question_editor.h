#pragma once
// The question editor's work: a bank question taken apart into stem, four
// options, answer, citations and note; the parts checked; the question built
// again in the bank's layout and written into its bank file and its row of
// the question table; optionally a copy with the provider's details for
// posting on a forum.

#include <QDate>
#include <QString>
#include <array>
#include <optional>

#include "bank/item_index.h"
#include "platform/env.h"

namespace mj {

struct QuestionParts {
  QString stem;                    // Text1
  std::array<QString, 4> options;  // Text2 to Text5: A to D
  QString answer;                  // Text6
  QString citations;               // Text7: 《name》第n条 one behind the other
  QString note;                    // Text8
};

// GetTxtWillAlt: the question `id` as the editor takes it apart: field 1 of
// its block in the bank file (stem and options), a line end, field 2 (answer,
// citations, note). Empty when the file or the question is missing.
QString GetTxtWillAlt(const Env& env, const QString& id);

// The parts of such a text: the stem before CR LF + "A．"; the options
// between the option markers, D up to CR LF + "答案："; the answer letters
// between CR LF + "答案：" and the first "参见" behind it; behind that
// "参见" the citations (line ends removed) and, behind "[注释：]", the note
// without an earlier date stamp.
QuestionParts SplitQuestion(const QString& text);

// A note as the note box keeps it: cut at "[注于：]", so that the date of an
// earlier note does not pile up.
QString CutNoteDate(const QString& note);

// The check: the first failure's message, empty when all passed.
QString CheckQuestionParts(const QuestionParts& parts);
inline const QString kEditorCheckPassed = QStringLiteral("通过合法性检验，你现在可以保存你的更改了。");

// The citation "name第n条" (name trimmed) added to the citations unless it is
// there already; *added tells which.
QString AddCitation(const QString& citations, const QString& lawName, int article, bool* added = nullptr);
// The last citation (from its last 《) removed.
QString RemoveLastCitation(const QString& citations);

// The provider of a posted question (\ini\YourInfo.ini).
struct ProviderInfo {
  QString name, qq, email, homePage;
  bool operator==(const ProviderInfo&) const = default;
};
inline const QString kProviderFile = QStringLiteral("\\ini\\YourInfo.ini");
inline const QString kPostFile = QStringLiteral("\\ini\\交流共进.txt");
// The four values of the provider file (one line of four quoted texts);
// empty ones for a missing file.
ProviderInfo ReadProvider(const Env& env);
// Rewrites the provider file. False when it cannot be written.
bool WriteProvider(const Env& env, const ProviderInfo& info);
// GetItemInfo: the four values one behind the other; empty when all are.
QString GetItemInfo(const ProviderInfo& info);

// A date as texts of the program write it: 2026年3月5日.
QString ChineseDate(const QDate& date);

// OkItem: the question text for the bank (bankText) and, with a provider,
// the text to post (postText: the provider block behind the options).
struct BuiltQuestion {
  QString bankText;
  QString postText;
};
BuiltQuestion OkItem(const QuestionParts& parts, const QString& id, const QDate& today,
                     const std::optional<ProviderInfo>& provider);

// F9AltDbf: the row of `id` in items.mmd (csitems.mmd for an ID beginning
// with "0"): story "no", so that the question is due again; aboutlaw the
// flat list of the citations; answer the letters left-justified in four;
// itemtype 3 stays, else 1 for one letter and 2 for more. The row as it now
// stands; nothing when the table cannot be opened or has no such row
// (*tableOk false for the first).
std::optional<ItemRow> F9AltDbf(const Env& env, const QString& id, const QString& citations,
                                const QString& answer, bool* tableOk = nullptr);

// The row of the index changed as the table was; nothing when absent.
void UpdateIndexRow(ItemIndex& index, const ItemRow& row);

// Saving a question: OkItem, the bank file, the table, and with a provider
// the post file. `error` names what could not be written.
struct SaveOutcome {
  bool saved = false;        // the bank file was written
  QString error;             // a message naming the file that could not be written
  QString clipboard;         // the post text, when posted
  std::optional<ItemRow> row;  // the question's row as it now stands
};
SaveOutcome SaveEditedQuestion(const Env& env, const QString& id, const QuestionParts& parts,
                               const std::optional<ProviderInfo>& provider);

}  // namespace mj
