#include "practice/answer_check.h"

#include "platform/vbtext.h"

namespace mj {

const QStringList& AnswerCaptions() {
  static const QStringList captions = {
      QStringLiteral("A"),   QStringLiteral("B"),   QStringLiteral("C"),    QStringLiteral("D"),
      QStringLiteral("AB"),  QStringLiteral("AC"),  QStringLiteral("AD"),   QStringLiteral("BC"),
      QStringLiteral("BD"),  QStringLiteral("CD"),  QStringLiteral("ABC"),  QStringLiteral("ABD"),
      QStringLiteral("ACD"), QStringLiteral("BCD"), QStringLiteral("ABCD"),
  };
  return captions;
}

int AnswerButtonIndex(const QString& answer) { return static_cast<int>(AnswerCaptions().indexOf(answer)); }

QString Order(const QString& text) {
  QString out;
  for (const QChar c : {u'A', u'B', u'C', u'D'})
    if (text.contains(c)) out.append(c);
  return out;
}

QString CheckDaAn(const QString& a, const QString& b, int mode) {
  QString out;
  if (mode == 1) {
    for (const QChar c : a)
      if (!b.contains(c)) out.append(c);
  } else if (mode == 2) {
    for (const QChar c : b)
      if (!a.contains(c)) out.append(c);
  }
  return out;
}

bool SameAnswer(const QString& a, const QString& b) {
  return CheckDaAn(a, b, 1).isEmpty() && CheckDaAn(a, b, 2).isEmpty();
}

QString RecordEntry(const QDateTime& when, const QString& answer) {
  return when.toString(QStringLiteral("yyyy-MM-dd HH:mm")) + Right(QStringLiteral("    ") + answer, 4);
}

QString NextRecord(const QString& oldStory, const QString& entry, bool isWrong) {
  QString story;
  if (isWrong || Len(oldStory) == 2)
    story = entry;
  else
    story = entry + oldStory;
  if (Len(story) > kRecordLimit) story = Left(story, kRecordKeep);
  return story;
}

QString OutcomeSentence(const LastAttempt& last, bool isWrong, const QString& caption) {
  QString wrongPrefix = QStringLiteral("你");
  QString rightPrefix;
  if (!last.answer.isEmpty()) {
    if (last.wasRight) {
      wrongPrefix = QStringLiteral("上次做对了，但本次你");
      rightPrefix = QStringLiteral("上次做对了，本次又");
    } else {
      wrongPrefix = QStringLiteral("上次错选了答案") + last.answer + QStringLiteral("，本次你又");
      rightPrefix = QStringLiteral("上次错选了答案") + last.answer + QStringLiteral("，但本次");
    }
  }
  if (isWrong) return wrongPrefix + QStringLiteral("错选了答案") + caption + QStringLiteral("。");
  return rightPrefix + QStringLiteral("恭喜你，你做对了。");
}

QString GetHistoryText(const QString& newStory) {
  if (newStory == u"no" || Len(newStory) < kEntryLength) return QStringLiteral("本题第一次做");
  const qsizetype n = Len(newStory) / kEntryLength;
  QString list;
  for (qsizetype i = 0; i < n; ++i) list += Mid(newStory, i * kEntryLength + 1, kEntryLength) + kCrLf;
  if (n == 1) return QStringLiteral("本题只做过一次，情况如下：") + kCrLf + kCrLf + list;
  return QStringLiteral("本题共做过") + CStr(n) + QStringLiteral("次，分别如下：") + kCrLf + kCrLf + list;
}

}  // namespace mj
