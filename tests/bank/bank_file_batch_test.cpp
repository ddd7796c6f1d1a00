// Bank files changed in memory give, change by change, what the file
// functions give on disk.
#include "bank/bank_file_batch.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "bank/bank_text.h"
#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

namespace {

const QString kFile = u"\\yibanti\\100011.mmd"_qs;

QString idOf(int n) { return QStringLiteral("100011%1").arg(n, 5, 10, QChar(u'0')); }

// Pieces that the text functions treat specially, and plain text.
QString randomText(QRandomGenerator& rnd, int parts) {
  static const QStringList kParts = {u"\r\n"_qs, u"\r\n"_qs, u"\r\n\r\n"_qs, u"●"_qs, u"■答案：A参见《刑法》第1条"_qs,
                                     u"题干(      )"_qs, u"A．甲"_qs, u"[单选题]"_qs, u"［多选题］"_qs, u"[注释：]注"_qs,
                                     u" "_qs, u"\r"_qs, u"\n"_qs, u"乙"_qs, u"7"_qs, u"●3●"_qs, u"\r\n●2●"_qs};
  QString t;
  for (int i = 0; i < parts; ++i) t += kParts[rnd.bounded(kParts.size())];
  return t;
}

QString randomFile(QRandomGenerator& rnd) {
  QString f = rnd.bounded(3) == 0 ? QString() : u"示例：题库\r\n"_qs;
  const int n = rnd.bounded(8);
  for (int k = 1; k <= n; ++k) {
    if (rnd.bounded(6) == 0) continue;  // a missing number
    f += u"\r\n●"_qs + QString::number(rnd.bounded(5) == 0 ? k + 1 : k) + u"●"_qs + randomText(rnd, rnd.bounded(6));
    if (rnd.bounded(3) == 0) f += u"\r\n"_qs;
  }
  if (rnd.bounded(2) == 0) f += u"\r\n"_qs;
  return f;
}

}  // namespace

TEST(BankFileBatch, ChangesGiveWhatTheFileFunctionsGive) {
  QRandomGenerator rnd(4711);
  for (int round = 0; round < 100; ++round) {
    test::TestEnv disk;
    test::TestEnv memory;
    const QString start = randomFile(rnd);
    const bool exists = rnd.bounded(8) != 0;
    if (exists) {
      disk.writeGbk(kFile, start);
      memory.writeGbk(kFile, start);
    } else {
      disk.mkdir(u"\\yibanti"_qs);
      memory.mkdir(u"\\yibanti"_qs);
    }
    BankFileBatch batch(memory.env);
    QString log;
    for (int step = 0; step < 16; ++step) {
      const QString id = idOf(1 + rnd.bounded(9));
      const int op = rnd.bounded(5);
      if (op == 0) {
        const QString text = randomText(rnd, rnd.bounded(8));
        log += u"append "_qs + id + u" "_qs + text + u"\n"_qs;
        ASSERT_TRUE(AppendItemText(disk.env, id, text));
        batch.AppendItemText(id, text);
      } else if (op == 1) {
        log += u"old "_qs + id + u"\n"_qs;
      } else {
        const QString text = u"\r\n"_qs + randomText(rnd, rnd.bounded(10)) + (rnd.bounded(3) ? u"\r\n"_qs : QString());
        log += u"put "_qs + id + u" "_qs + text + u"\n"_qs;
        ASSERT_TRUE(PutItemText(disk.env, id, text));
        batch.PutItemText(id, text);
      }
      for (const int n : {1 + rnd.bounded(10), 1 + rnd.bounded(10)})
        ASSERT_EQ(batch.GetOneOldTi(idOf(n)), GetOneOldTi(disk.env, idOf(n)))
            << "round " << round << " question " << n << "\nstart: " << start.toStdString() << "\n" << log.toStdString();
      const QList<std::pair<QString, QString>> changed = batch.changedFiles();
      if (!changed.isEmpty()) {
        ASSERT_EQ(changed.size(), 1);
        ASSERT_EQ(ToGbk(changed[0].second), ReadBytes(disk.path(kFile)))
            << "round " << round << "\nstart: " << start.toStdString() << "\n" << log.toStdString();
      }
    }
  }
}

TEST(BankFileBatch, BlankLinesAndEmptyQuestions) {
  // Runs of blank lines take several changes to shrink; an empty question
  // loses its line end and with it the next question's marker.
  const QString start = u"题库\r\n\r\n\r\n\r\n\r\n●1●甲\r\n\r\n\r\n●2●\r\n●3●丙\r\n\r\n\r\n\r\n"_qs;
  test::TestEnv disk;
  test::TestEnv memory;
  disk.writeGbk(kFile, start);
  memory.writeGbk(kFile, start);
  BankFileBatch batch(memory.env);
  for (const int n : {1, 3, 1, 9, 2, 3}) {
    const QString text = u"\r\n新的第"_qs + QString::number(n) + u"题\r\n\r\n"_qs;
    ASSERT_TRUE(PutItemText(disk.env, idOf(n), text));
    batch.PutItemText(idOf(n), text);
    ASSERT_EQ(ToGbk(batch.changedFiles().value(0).second), ReadBytes(disk.path(kFile))) << n;
  }
  batch.markWritten();
  EXPECT_TRUE(batch.changedFiles().isEmpty());
}

TEST(BankFileBatch, AFileThatIsNotThereYet) {
  test::TestEnv disk;
  test::TestEnv memory;
  disk.mkdir(u"\\yibanti"_qs);
  BankFileBatch batch(memory.env);
  const QString text = u"[单选题]题干(      )\r\nA．甲\r\n■答案：A参见《刑法》第1条\r\n"_qs;
  ASSERT_TRUE(AppendItemText(disk.env, idOf(4), text));
  batch.AppendItemText(idOf(4), text);
  ASSERT_TRUE(PutItemText(disk.env, idOf(2), text));
  batch.PutItemText(idOf(2), text);
  const QList<std::pair<QString, QString>> changed = batch.changedFiles();
  ASSERT_EQ(changed.size(), 1);
  EXPECT_EQ(changed[0].first, memory.path(kFile));
  EXPECT_EQ(ToGbk(changed[0].second), ReadBytes(disk.path(kFile)));
  EXPECT_EQ(batch.GetOneOldTi(idOf(4)), GetOneOldTi(disk.env, idOf(4)));
}

TEST(BankFileBatch, PapersAndAppendsGoToTheirOwnFiles) {
  test::TestEnv memory;
  BankFileBatch batch(memory.env);
  batch.PutItemText(u"00001100002"_qs, u"\r\n试卷的题\r\n"_qs);
  batch.AppendItemText(u"00001100003"_qs, u"追加的题"_qs);
  const QList<std::pair<QString, QString>> changed = batch.changedFiles();
  ASSERT_EQ(changed.size(), 2);
  EXPECT_EQ(changed[0].first, memory.path(u"\\moniti\\00001.mmd"_qs));
  EXPECT_EQ(changed[0].second, u"\r\n●2●试卷的题\r\n\r\n"_qs);
  EXPECT_EQ(changed[1].first, memory.path(u"\\yibanti\\000011.mmd"_qs));
  EXPECT_EQ(changed[1].second, u"●3●追加的题\r\n"_qs);
}
