// Every file of the fuzz corpus (tests/fuzz/corpus/<target>/) through its
// target, in the normal test build: each input that once crashed a target
// stays a test, with the sanitizers of this build watching.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "fuzz_target.h"

using namespace mj;

namespace {
const QString kCorpus = QStringLiteral(MJ_FUZZ_CORPUS_DIR);
}

TEST(FuzzCorpus, EveryTargetHasASeedCorpus) {
  ASSERT_FALSE(fuzz::Targets().empty());
  for (const auto& [name, target] : fuzz::Targets()) {
    const QDir dir(kCorpus + u'/' + name);
    EXPECT_FALSE(dir.entryList(QDir::Files).isEmpty()) << name.toStdString();
  }
  // And every corpus folder has its target.
  for (const QString& folder : QDir(kCorpus).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
    EXPECT_TRUE(fuzz::Targets().count(folder)) << folder.toStdString();
}

TEST(FuzzCorpus, EveryInputRunsThroughItsTarget) {
  int inputs = 0;
  for (const auto& [name, target] : fuzz::Targets()) {
    const QDir dir(kCorpus + u'/' + name);
    for (const QString& file : dir.entryList(QDir::Files, QDir::Name)) {
      SCOPED_TRACE((name + u'/' + file).toStdString());
      QFile f(dir.filePath(file));
      ASSERT_TRUE(f.open(QIODevice::ReadOnly));
      const QByteArray bytes = f.readAll();
      EXPECT_EQ(target(reinterpret_cast<const uint8_t*>(bytes.constData()), static_cast<size_t>(bytes.size())), 0);
      ++inputs;
    }
  }
  EXPECT_GT(inputs, 0);
}
