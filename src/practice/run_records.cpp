#include "practice/run_records.h"

#include "platform/vbtext.h"
#include "practice/answer_check.h"

namespace mj {

QString AltStory(const Env& env, const RunRecordSet& records, ItemIndex& itemData, ItemIndex& allItemData, bool isWrong,
                 const QString& givenAnswer, const QString& itemId) {
  const QString entry = RecordEntry(env.now(), Trim(givenAnswer));
  const std::optional<int> record = records.findRecord(itemId);
  if (!record) return QString();
  const QString story = NextRecord(records.story(*record), entry, isWrong);
  records.setStory(*record, story);
  if (itemData.size() == allItemData.size()) {
    const qsizetype row = FindItemRow(itemData, itemId);
    if (row > 0) {
      allItemData[row - 1].story = story;
      itemData[row - 1].story = story;
    }
  }
  return story;
}

}  // namespace mj
