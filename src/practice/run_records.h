#pragma once
// The practice record of a question after an answer: written into the run's
// rows of the item table (the rows the run list was made from) and into the
// question index, so that the eligibility of the question follows at once.

#include <QString>

#include "bank/eligibility.h"
#include "bank/item_index.h"
#include "platform/env.h"

namespace mj {

// Writes the record of one attempt at question itemId: the entry is the
// present time and the trimmed answer; the row of itemId among the run's rows
// gets the next record (a wrong answer replaces the whole record, a record
// longer than 200 characters keeps its first 160). When the working index and
// the whole index have the same size, the first row of the working index with
// that ID (`itemRow`, which the caller has from FindItemRow(itemData,
// itemId)) gets the new record in both (the simulated papers have no working
// index, so nothing changes there). Returns the record written, empty when
// the question is not among the run's rows (then the index is left alone).
// A record that could not be written to the table still goes into the
// index; writeProblem (when given) then says why it was not written, and is
// empty when it was. The table's record is on the disk when this returns.
QString AltStory(const Env& env, const RunRecordSet& records, ItemIndex& itemData, ItemIndex& allItemData, bool isWrong,
                 const QString& givenAnswer, const QString& itemId, qsizetype itemRow,
                 QString* writeProblem = nullptr);

}  // namespace mj
