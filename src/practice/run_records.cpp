#include "practice/run_records.h"

#include "platform/vbtext.h"
#include "practice/answer_check.h"

namespace mj {

QString AltStory(const Env& env, const RunRecordSet& records, ItemIndex& itemData, ItemIndex& allItemData, bool isWrong,
                 const QString& givenAnswer, const QString& itemId, qsizetype itemRow, QString* writeProblem) {
  const QString entry = RecordEntry(env.now(), Trim(givenAnswer));
  const std::optional<QString> story =
      records.updateStory(itemId, [&](const QString& old) { return NextRecord(old, entry, isWrong); }, writeProblem);
  if (!story) return QString();
  if (itemData.size() == allItemData.size() && itemRow > 0) {
    allItemData[itemRow - 1].story = *story;
    itemData[itemRow - 1].story = *story;
  }
  return *story;
}

}  // namespace mj
