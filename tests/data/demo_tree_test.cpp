// The built demonstration program folder: every folder and file the program
// expects, tables with their fields and counts, directory rows that match
// the questions, bank files that hold every question, citations that point
// at articles that exist, and the small files around them.

#include <gtest/gtest.h>

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

#include "bank/tables.h"
#include "data_test_util.h"
#include "law/new_law.h"
#include "platform/inifile.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::datatest;

namespace {

const QStringList kOutsideFolders = {u"宪法类"_qs, u"民法类"_qs,           u"刑法类"_qs,   u"经济法类"_qs,
                                     u"商法类"_qs, u"国际（经济）法类"_qs, u"行政法类"_qs, u"律师法类"_qs,
                                     u"试卷一"_qs, u"试卷二"_qs,           u"试卷三"_qs};

QString DemoPath(const QString& suffix) { return AppPath(Demo(), suffix); }

// The bank file of a question ID.
QString BankFileOf(const QString& id) {
  return id.startsWith(u'0') ? u"\\moniti\\"_qs + id.left(5) + u".mmd"_qs : u"\\yibanti\\"_qs + id.left(6) + u".mmd"_qs;
}

// Field k of a question block, cut at "■" as the program does.
QString FieldOf(const QString& block, int k) {
  const QStringList parts = block.split(u'■');
  return k - 1 < parts.size() ? parts[k - 1] : QString();
}

bool IsRange(const QString& flag, int* a, int* b) {
  static const QRegularExpression range(u"^([0-9]+)-([0-9]+)$"_qs);
  const auto m = range.match(flag);
  if (!m.hasMatch()) return false;
  *a = m.captured(1).toInt();
  *b = m.captured(2).toInt();
  return true;
}

}  // namespace

TEST(DemoData, HasEveryFolderOfTheLayout) {
  const QStringList dirs = {u"\\dbf"_qs,    u"\\yibanti"_qs,  u"\\moniti"_qs,   u"\\lawtxt"_qs,
                            u"\\readme"_qs, u"\\外部题库"_qs, u"\\更新的题"_qs, u"\\模糊题"_qs,
                            u"\\知识点"_qs, u"\\新知识点"_qs, u"\\法律文书"_qs, u"\\ini"_qs};
  for (const QString& d : dirs) EXPECT_TRUE(DirExists(DemoPath(d))) << d.toStdString();
  for (const QString& d : kOutsideFolders) {
    const QString p = DemoPath(u"\\外部题库\\"_qs + d);
    EXPECT_TRUE(DirExists(p)) << d.toStdString();
    EXPECT_TRUE(QDir(p).isEmpty()) << d.toStdString();
  }
  EXPECT_TRUE(QDir(DemoPath(u"\\模糊题"_qs)).isEmpty());
  // Explanations of three points and one knowledge file on offer.
  EXPECT_EQ(QDir(DemoPath(u"\\知识点"_qs)).entryList(QDir::Files, QDir::Name),
            (QStringList{u"12.txt"_qs, u"32.txt"_qs, u"4.txt"_qs}));
  EXPECT_EQ(QDir(DemoPath(u"\\新知识点"_qs)).entryList(QDir::Files), QStringList{u"newzsd1.txt"_qs});
  // The sample update package and no day file yet.
  EXPECT_EQ(QDir(DemoPath(u"\\更新的题"_qs)).entryList(QDir::Files), QStringList{u"示例更新包.new"_qs});
  EXPECT_FALSE(QDir(DemoPath(u"\\法律文书"_qs)).entryList(QDir::Files).isEmpty());
  EXPECT_FALSE(QDir(DemoPath(u"\\readme"_qs)).entryList({u"*.htm"_qs}, QDir::Files).isEmpty());
}

TEST(DemoData, HasEveryFileOfTheLayout) {
  const QStringList files = {u"\\dbf\\33.mmd"_qs,
                             u"\\dbf\\33ok.mmd"_qs,
                             u"\\dbf\\items.mmd"_qs,
                             u"\\dbf\\csface.mmd"_qs,
                             u"\\dbf\\csitems.mmd"_qs,
                             u"\\dbf\\listbox.mmd"_qs,
                             u"\\dbf\\dagang.mmd"_qs,
                             u"\\ini\\emphases.ini"_qs,
                             u"\\ini\\lumenhelp.ini"_qs,
                             u"\\ini\\newlumen.txt"_qs,
                             u"\\ini\\sample1.ini"_qs,
                             u"\\ini\\sample2.ini"_qs,
                             u"\\ini\\shijuan.mmd"_qs,
                             u"\\ini\\zimu.mmd"_qs,
                             u"\\ini\\leibie.mmd"_qs,
                             u"\\ini\\jiemian.jpg"_qs,
                             u"\\ini\\startpage.jpg"_qs,
                             u"\\ini\\fa.ico"_qs,
                             u"\\ini\\mmpoint.cur"_qs,
                             u"\\ini\\Help4AddNewLaw.ini"_qs,
                             u"\\ini\\listbox.ini"_qs,
                             u"\\readme\\autonewer.htm"_qs,
                             u"\\外部题库\\外部题库试样1.txt"_qs,
                             u"\\外部题库\\外部题库试样2.txt"_qs,
                             u"\\外部题库\\外部题库试样3（含错误）.txt"_qs};
  for (const QString& f : files) EXPECT_TRUE(FileExists(DemoPath(f))) << f.toStdString();
  // The settings file is the program's to create.
  EXPECT_FALSE(PathExists(DemoPath(u"\\ini\\userself.ini"_qs)));
  // The samples lie in the paper folder as the program copies them.
  EXPECT_EQ(ReadBytes(DemoPath(u"\\ini\\sample1.ini"_qs)), ReadBytes(DemoPath(u"\\外部题库\\外部题库试样1.txt"_qs)));
  EXPECT_EQ(ReadBytes(DemoPath(u"\\ini\\sample2.ini"_qs)), ReadBytes(DemoPath(u"\\外部题库\\外部题库试样2.txt"_qs)));
}

TEST(DemoData, TextFilesAreGbkWithCrLf) {
  const QStringList files = DemoTextFiles();
  EXPECT_GT(files.size(), 20);
  // The real statutes are written by the program's clean-up, whose last step
  // indents the empty line behind the last line end as well.
  QSet<QString> cleaned;
  for (const RealLaw& law : RealLawsOfTheList()) cleaned.insert(u"lawtxt/"_qs + law.title.mid(1, law.title.size() - 2) + u".mmd"_qs);
  for (const QString& rel : files) {
    const QByteArray bytes = ReadBytes(Demo() + u'/' + rel);
    EXPECT_FALSE(bytes.startsWith("\xEF\xBB\xBF")) << rel.toStdString();
    const QString text = FromGbk(bytes);
    EXPECT_FALSE(text.contains(QChar::ReplacementCharacter)) << rel.toStdString();
    EXPECT_EQ(ToGbk(text), bytes) << rel.toStdString();
    EXPECT_TRUE(text.endsWith(cleaned.contains(rel) ? kCrLf + u"　　"_qs : kCrLf)) << rel.toStdString();
    EXPECT_EQ(text.count(u'\n'), text.count(kCrLf)) << rel.toStdString() << ": a line end without CR";
    EXPECT_EQ(text.count(u'\r'), text.count(kCrLf)) << rel.toStdString() << ": a CR without LF";
  }
}

TEST(DemoData, TablesHaveTheirFieldsAndCounts) {
  struct Expect {
    QString table;
    QList<DbfField> fields;
    int rows;
  };
  const QList<Expect> expect = {
      {u"items.mmd"_qs, tables::ItemFields(true), 45}, {u"csitems.mmd"_qs, tables::ItemFields(false), 18},
      {u"33ok.mmd"_qs, tables::DirectoryFields(), 15}, {u"csface.mmd"_qs, tables::DirectoryFields(), 8},
      {u"33.mmd"_qs, tables::LawNameFields(), 3},
      {u"listbox.mmd"_qs, tables::LawListFields(), 3 + static_cast<int>(RealLawsOfTheList().size())},
      {u"dagang.mmd"_qs, tables::OutlineFields(), 37},
  };
  for (const Expect& e : expect) {
    DbfTable t = DbfTable::open(DemoPath(u"\\dbf\\"_qs + e.table));
    ASSERT_TRUE(t.isOpen()) << e.table.toStdString() << ": " << t.error().toStdString();
    const QList<DbfField> got = t.fields();
    ASSERT_EQ(got.size(), e.fields.size()) << e.table.toStdString();
    for (int i = 0; i < got.size(); ++i) {
      EXPECT_EQ(got[i].name.toLower(), e.fields[i].name) << e.table.toStdString();
      EXPECT_EQ(got[i].type, e.fields[i].type) << e.table.toStdString() << " " << e.fields[i].name.toStdString();
    }
    EXPECT_EQ(t.rows().size(), e.rows) << e.table.toStdString();
  }
  // At least 60 questions in all, every one of the three types in both kinds.
  const auto items = TableRows(DemoPath(u"\\dbf\\items.mmd"_qs));
  const auto csitems = TableRows(DemoPath(u"\\dbf\\csitems.mmd"_qs));
  EXPECT_GE(items.size() + csitems.size(), 60);
  for (const auto* rows : {&items, &csitems}) {
    QSet<QString> types;
    for (const auto& r : *rows) types.insert(r[u"itemtype"_qs]);
    EXPECT_EQ(types, (QSet<QString>{u"1"_qs, u"2"_qs, u"3"_qs}));
  }
}

TEST(DemoData, ItemRowsAreThoseOfAFreshDataSet) {
  int forum = 0;
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs}) {
    const auto rows = TableRows(DemoPath(u"\\dbf\\"_qs + table));
    QSet<QString> ids;
    for (const auto& r : rows) {
      const QString id = r[u"itemid"_qs];
      SCOPED_TRACE(id.toStdString());
      static const QRegularExpression idForm(u"^[0-9]{5}[123][0-9]{5}$"_qs);
      EXPECT_TRUE(idForm.match(id).hasMatch());
      EXPECT_FALSE(ids.contains(id));
      ids.insert(id);
      EXPECT_EQ(id.startsWith(u'0'), table == u"csitems.mmd");
      EXPECT_EQ(r[u"filename"_qs], id.left(6));
      EXPECT_EQ(r[u"story"_qs], u"no"_qs);
      EXPECT_EQ(r[u"hastest"_qs], QString());
      EXPECT_EQ(r[u"valid2"_qs], u"T"_qs);
      EXPECT_EQ(r[u"hasselect"_qs], u"T"_qs);
      EXPECT_EQ(r[u"itemtype"_qs], id.mid(5, 1));
      const QString key = r[u"answer"_qs];
      static const QRegularExpression keyForm(u"^A?B?C?D?$"_qs);
      EXPECT_TRUE(!key.isEmpty() && keyForm.match(key).hasMatch());
      if (id[5] == u'1') {
        EXPECT_EQ(key.size(), 1);
      }
      if (id[5] == u'2') {
        EXPECT_GE(key.size(), 2);
      }
      if (!r.value(u"boardid"_qs).isEmpty()) {
        ++forum;
        EXPECT_NE(r.value(u"topicid"_qs), QString());
      }
    }
  }
  EXPECT_GE(forum, 3);
}

TEST(DemoData, DirectoryRowsMatchTheQuestions) {
  const QList<std::pair<QString, QString>> pairs = {{u"33ok.mmd"_qs, u"items.mmd"_qs},
                                                    {u"csface.mmd"_qs, u"csitems.mmd"_qs}};
  for (const auto& [face, itemTable] : pairs) {
    SCOPED_TRACE(face.toStdString());
    DbfTable t = DbfTable::open(DemoPath(u"\\dbf\\"_qs + face));
    ASSERT_TRUE(t.isOpen());
    const auto items = TableRows(DemoPath(u"\\dbf\\"_qs + itemTable));
    const QList<int> rows = t.rows();
    const bool papers = face == u"csface.mmd";
    QList<int> totals(rows.size() + 1), eligible(rows.size() + 1);
    QList<bool> leaf(rows.size() + 1);
    QSet<QString> banksListed;
    bool nested = false;
    for (int i = 0; i < rows.size(); ++i) {
      const int r = rows[i], gridRow = i + 1;
      SCOPED_TRACE(gridRow);
      const QString label = t.trimmedText(r, tables::kDirLabel);
      const QString b = t.trimmedText(r, tables::kDirFile);
      const QString flag = t.trimmedText(r, tables::kDirFlag);
      EXPECT_FALSE(label.isEmpty());
      EXPECT_EQ(t.trimmedText(r, tables::kDirId), QString::number(gridRow));
      EXPECT_EQ(t.number(r, tables::kDirDone), 0);
      EXPECT_EQ(t.number(r, tables::kDirRight), 0);
      EXPECT_EQ(t.number(r, tables::kDirMinutes), 0);
      EXPECT_EQ(t.trimmedText(r, tables::kDirScore), u"0%"_qs);
      totals[gridRow] = int(t.number(r, tables::kDirTotal));
      eligible[gridRow] = int(t.number(r, tables::kDirEligible));
      EXPECT_EQ(totals[gridRow], eligible[gridRow]) << "every question is due in a fresh data set";
      int a = 0, z = 0;
      if (IsRange(flag, &a, &z)) {
        EXPECT_TRUE(t.isNull(r, tables::kDirFile)) << "a heading has no file";
        EXPECT_EQ(a, gridRow + 1) << "a heading's children follow it";
        EXPECT_GE(z, a);
        EXPECT_LE(z, rows.size());
        // Nested headings lie wholly inside their parent's range.
        for (int k = a; k <= z && k <= rows.size(); ++k) {
          int a2 = 0, z2 = 0;
          if (IsRange(t.trimmedText(rows[k - 1], tables::kDirFlag), &a2, &z2)) {
            nested = true;
            EXPECT_LE(z2, z);
          }
        }
        continue;
      }
      leaf[gridRow] = true;
      EXPECT_FALSE(flag.contains(u'-'));
      // The bank of the row: the 6 characters before ".mmd".
      ASSERT_TRUE(b.toUpper().endsWith(u".MMD"_qs)) << b.toStdString();
      const QString bank = Mid(b, Len(b) - 9, 6);
      EXPECT_EQ(GetSmallTxtName(b), bank);
      EXPECT_FALSE(banksListed.contains(bank));
      banksListed.insert(bank);
      int count = 0;
      for (const auto& item : items)
        if (item[u"filename"_qs] == bank && item[u"valid2"_qs] == u"T") ++count;
      EXPECT_EQ(totals[gridRow], count) << bank.toStdString();
      EXPECT_GT(count, 0);
      if (papers) {
        EXPECT_EQ(b, u"\\moniti\\"_qs + bank + u".mmd"_qs);
        EXPECT_TRUE(bank.startsWith(u'0'));
        EXPECT_TRUE(label.contains(u"试卷"_qs));
        EXPECT_TRUE(FileExists(DemoPath(u"\\moniti\\"_qs + bank.left(5) + u".mmd"_qs)));
      } else {
        EXPECT_EQ(b, u"\\yibanti\\"_qs + bank + u".mmd"_qs);
        EXPECT_FALSE(bank.startsWith(u'0'));
        EXPECT_TRUE(FileExists(DemoPath(b)));
        // The label names the law and the type, as the new-ID lookup wants.
        const QString typeWord = Mid(u"单项多项任意"_qs, (bank.right(1).toInt() - 1) * 2 + 1, 2) + u"选择题"_qs;
        EXPECT_TRUE(label.contains(typeWord)) << label.toStdString();
        EXPECT_TRUE(label.startsWith(u'《') && label.contains(u'》'));
      }
    }
    if (!papers) {
      EXPECT_TRUE(nested) << "a heading over headings";
    }
    // Heading counts are the sums of their leaves.
    for (int i = 0; i < rows.size(); ++i) {
      int a = 0, z = 0;
      if (!IsRange(t.trimmedText(rows[i], tables::kDirFlag), &a, &z)) continue;
      int sum = 0, sumOk = 0;
      for (int k = a; k <= z; ++k)
        if (leaf[k]) {
          sum += totals[k];
          sumOk += eligible[k];
        }
      EXPECT_EQ(totals[i + 1], sum);
      EXPECT_EQ(eligible[i + 1], sumOk);
    }
    // Every question's bank has exactly one row.
    for (const auto& item : items) EXPECT_TRUE(banksListed.contains(item[u"filename"_qs]));
  }
}

TEST(DemoData, InternalBankCodesAreLawCodes) {
  const auto laws = TableRows(DemoPath(u"\\dbf\\33.mmd"_qs));
  QSet<QString> codes;
  for (const auto& l : laws) codes.insert(l[u"filename"_qs].right(5));
  DbfTable t = DbfTable::open(DemoPath(u"\\dbf\\33ok.mmd"_qs));
  for (int r : t.rows()) {
    if (t.isNull(r, tables::kDirFile)) continue;
    const QString b = t.trimmedText(r, tables::kDirFile);
    const QString code = Mid(b, 10, 5);
    EXPECT_TRUE(codes.contains(code)) << b.toStdString();
    // The law of the code is the law the label names.
    for (const auto& l : laws)
      if (l[u"filename"_qs].right(5) == code) {
        EXPECT_TRUE(t.trimmedText(r, tables::kDirLabel).startsWith(l[u"lawname"_qs]));
      }
  }
  static const QRegularExpression codeForm(u"^[1-9][0-9]{4}$"_qs);
  for (const QString& c : codes) EXPECT_TRUE(codeForm.match(c).hasMatch()) << c.toStdString();
}

TEST(DemoData, EveryQuestionHasItsBlockInItsBankFile) {
  QHash<QString, int> perFile;
  int withNote = 0, withProvider = 0;
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs}) {
    for (const auto& r : TableRows(DemoPath(u"\\dbf\\"_qs + table))) {
      const QString id = r[u"itemid"_qs];
      SCOPED_TRACE(id.toStdString());
      const QString file = BankFileOf(id);
      const QString text = ReadDemo(file);
      ASSERT_FALSE(text.isEmpty()) << file.toStdString();
      ++perFile[file];
      const int n = int(Val(Mid(id, 7, 5)));
      const QString marker = kCrLf + u'●' + QString::number(n) + u'●';
      EXPECT_EQ(text.count(marker), 1);
      const QString block = TextBetween(text, u'●' + QString::number(n) + u'●', u"●"_qs);
      ASSERT_FALSE(block.isEmpty());
      const QString field1 = FieldOf(block, 1), field2 = FieldOf(block, 2);
      EXPECT_EQ(block.count(u'■'), 1);
      EXPECT_TRUE(field1.contains(u"(      )"_qs));
      for (const QString& opt : {u"A．"_qs, u"B．"_qs, u"C．"_qs, u"D．"_qs}) EXPECT_EQ(field1.count(kCrLf + opt), 1);
      EXPECT_TRUE(field2.startsWith(u"答案："_qs + r[u"answer"_qs] + u"参见《"_qs)) << field2.toStdString();
      QString f2 = field2;
      EXPECT_EQ(AnswerLetters(f2), r[u"answer"_qs]);
      EXPECT_TRUE(field2.endsWith(kCrLf));
      if (field2.contains(u"[注释："_qs)) {
        ++withNote;
        EXPECT_TRUE(field2.contains(kCrLf + u"[注释：]"_qs));
        EXPECT_TRUE(field2.contains(u"[注于："_qs));
      }
      if (field1.contains(u"[本题ID及提供者有关信息：]"_qs)) {
        ++withProvider;
        const QString provider = field1.mid(field1.indexOf(kCrLf + u"[本题ID及提供者有关信息：]"_qs));
        EXPECT_TRUE(provider.contains(u"[本题标识ID：]["_qs + id + u']'));
        for (const QString& tag : {u"[提供者姓名或昵称：]"_qs, u"[提供者QQ号码：]"_qs, u"[提供者E_mail：]"_qs,
                                   u"[提供者主页：]"_qs, u"[提供日期：]"_qs})
          EXPECT_TRUE(provider.contains(kCrLf + tag));
      }
    }
  }
  EXPECT_GE(withNote, 5);
  EXPECT_GE(withProvider, 3);
  // Each file holds its questions and nothing else: two "●" per question,
  // numbered 1, 2, 3, ... in file order, after a first line of its own.
  for (auto it = perFile.cbegin(); it != perFile.cend(); ++it) {
    SCOPED_TRACE(it.key().toStdString());
    const QString text = ReadDemo(it.key());
    EXPECT_FALSE(text.startsWith(u'●'));
    EXPECT_TRUE(text.left(text.indexOf(kCrLf)).contains(u"示例数据"_qs));
    EXPECT_EQ(text.count(u'●'), 2 * it.value());
    qsizetype pos = 0;
    for (int n = 1; n <= it.value(); ++n) {
      const qsizetype p = text.indexOf(kCrLf + u'●' + QString::number(n) + u'●', pos);
      EXPECT_GT(p, pos - 1) << n;
      pos = p;
    }
  }
}

TEST(DemoData, CitationsPointAtArticlesThatExist) {
  QHash<QString, LawFile> laws;
  for (const LawFile& l : DemoLaws()) laws.insert(l.title, l);
  int entries = 0, multiLaw = 0, ranges = 0;
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs}) {
    for (const auto& r : TableRows(DemoPath(u"\\dbf\\"_qs + table))) {
      const QString id = r[u"itemid"_qs];
      SCOPED_TRACE(id.toStdString());
      QList<Citation> list;
      ASSERT_TRUE(ParseFlatList(r[u"aboutlaw"_qs], &list)) << r[u"aboutlaw"_qs].toStdString();
      QSet<QString> titles;
      for (const Citation& c : list) {
        ++entries;
        titles.insert(c.title);
        ASSERT_TRUE(laws.contains(c.title)) << c.title.toStdString();
        const LawFile& law = laws[c.title];
        EXPECT_TRUE(law.text.contains(kCrLf + ArticleHeading(law.type, c.number)))
            << c.title.toStdString() << " " << c.number;
      }
      if (titles.size() > 1) ++multiLaw;
      // Every cited law shows in the question's own citation text, and the
      // list has at least the articles named there.
      const QString block =
          TextBetween(ReadDemo(BankFileOf(id)), u'●' + QString::number(int(Val(Mid(id, 7, 5)))) + u'●', u"●"_qs);
      const QString citation = FieldOf(block, 2).section(u"参见"_qs, 1).section(kCrLf, 0, 0);
      for (const QString& title : titles) EXPECT_TRUE(citation.contains(title));
      static const QRegularExpression range(u"第([0-9]+)-([0-9]+)条"_qs);
      for (auto m = range.globalMatch(citation); m.hasNext();) {
        const auto rm = m.next();
        ++ranges;
        for (int n = rm.captured(1).toInt(); n <= rm.captured(2).toInt(); ++n) {
          bool found = false;
          for (const Citation& c : list) found |= c.number == n;
          EXPECT_TRUE(found) << n;
        }
      }
    }
  }
  EXPECT_GT(entries, 63);
  EXPECT_GE(multiLaw, 1);
  EXPECT_GE(ranges, 5);
}

TEST(DemoData, LawFilesHaveTheLawTextLayout) {
  const QList<LawFile> laws = DemoLaws();
  ASSERT_GE(laws.size(), 3);
  QSet<int> types;
  bool toc = false, appendix = false, longType1 = false;
  for (const LawFile& law : laws) {
    SCOPED_TRACE(law.title.toStdString());
    ASSERT_FALSE(law.text.isEmpty());
    types.insert(law.type);
    QStringList lines = law.text.split(kCrLf);
    ASSERT_EQ(lines.takeLast(), QString());
    QString name = law.title;
    name.remove(u'《').remove(u'》');
    EXPECT_EQ(lines[0], name);
    EXPECT_TRUE(lines[1].contains(u"示例数据"_qs));
    static const QRegularExpression heading(u"^　　第[零一二三四五六七八九十百千万]+[编章节条]"_qs);
    for (int i = 1; i < lines.size(); ++i) {
      EXPECT_TRUE(lines[i].startsWith(u"　　"_qs)) << i;
      EXPECT_FALSE(lines[i].mid(2).startsWith(u'　')) << i;
      const auto m = heading.match(lines[i]);
      if (m.hasMatch()) {
        EXPECT_EQ(lines[i].mid(m.capturedLength(), 1), u" "_qs) << "one blank behind a heading: " << i;
        EXPECT_NE(lines[i].mid(m.capturedLength() + 1, 1), u" "_qs) << i;
      }
      if (lines[i] == u"　　目录") toc = true;
      if (lines[i].startsWith(u"　　附件"_qs)) appendix = true;
    }
    // The articles run 1, 2, 3, ... and none more.
    const QString body =
        law.text.left(law.text.contains(u"\r\n　　附件"_qs) ? law.text.indexOf(u"\r\n　　附件"_qs) : law.text.size());
    int n = 1;
    qsizetype pos = 0;
    while (true) {
      const qsizetype p = body.indexOf(kCrLf + ArticleHeading(law.type, n), pos);
      if (p < 0) break;
      pos = p;
      ++n;
    }
    const int count = n - 1;
    EXPECT_GE(count, 10);
    EXPECT_FALSE(body.contains(kCrLf + ArticleHeading(law.type, count + 1)));
    if (law.type == 1 && count >= 30) {
      longType1 = true;
      for (const QString& h : {u"第十一条 "_qs, u"第二十条 "_qs, u"第三十条 "_qs}) EXPECT_TRUE(body.contains(h));
    }
  }
  EXPECT_EQ(types, (QSet<int>{1, 2, 3}));
  EXPECT_TRUE(toc);
  EXPECT_TRUE(appendix);
  EXPECT_TRUE(longType1);
}

TEST(DemoData, LawNameTableAndLawListAgree) {
  const auto names = TableRows(DemoPath(u"\\dbf\\33.mmd"_qs));
  const auto list = TableRows(DemoPath(u"\\dbf\\listbox.mmd"_qs));
  // The laws with banks, then the real statutes, which have none and so no
  // row in the law-name table.
  const QList<RealLaw> real = RealLawsOfTheList();
  ASSERT_EQ(names.size() + real.size(), list.size());
  for (int i = 0; i < real.size(); ++i) {
    const auto& row = list[names.size() + i];
    EXPECT_EQ(row[u"lawname"_qs], real[i].title);
    EXPECT_EQ(row[u"f"_qs], QString::number(real[i].paper));
    EXPECT_EQ(row[u"c"_qs], QString(real[i].letter));
    EXPECT_EQ(row[u"lei"_qs], QString::number(ClassChoices().indexOf(u"属"_qs + real[i].klass + u"类法律、法规"_qs) + 1));
  }
  for (int i = 0; i < names.size(); ++i) {
    const QString title = names[i][u"lawname"_qs];
    EXPECT_TRUE(title.startsWith(u'《') && title.endsWith(u'》'));
    EXPECT_TRUE(title.contains(u"示例"_qs)) << "a demonstration law says so in its title";
    EXPECT_EQ(list[i][u"lawname"_qs], title);
    EXPECT_TRUE(QSet<QString>({u"1"_qs, u"2"_qs, u"3"_qs}).contains(list[i][u"f"_qs]));
    EXPECT_EQ(list[i][u"c"_qs].size(), 1);
    EXPECT_TRUE(list[i][u"c"_qs][0] >= u'A' && list[i][u"c"_qs][0] <= u'Z');
    const int lei = list[i][u"lei"_qs].toInt();
    EXPECT_TRUE(lei >= 1 && lei <= 8);
    QString name = title;
    name.remove(u'《').remove(u'》');
    EXPECT_TRUE(FileExists(DemoPath(u"\\lawtxt\\"_qs + name + u".mmd"_qs)));
  }
}

TEST(DemoData, LawTreeFilesNameEveryLaw) {
  const auto names = TableRows(DemoPath(u"\\dbf\\33.mmd"_qs));
  const QStringList groups1 = {u"试卷一相关法律、法规"_qs, u"试卷二相关法律、法规"_qs, u"试卷三相关法律、法规"_qs};
  const QStringList groups3 = {u"宪法"_qs, u"民法"_qs,   u"行政法"_qs,         u"刑法"_qs,
                               u"商法"_qs, u"经济法"_qs, u"国际（经济）法"_qs, u"律师法"_qs};
  for (const QString& tree : {u"shijuan.mmd"_qs, u"zimu.mmd"_qs, u"leibie.mmd"_qs}) {
    SCOPED_TRACE(tree.toStdString());
    const QString text = ReadDemo(u"\\ini\\"_qs + tree);
    QString file;
    QSet<QString> laws;
    static const QRegularExpression fileLine(u"^file=\"(.*)\"$"_qs, QRegularExpression::CaseInsensitiveOption);
    for (const QString& line : text.split(kCrLf, Qt::SkipEmptyParts)) {
      if (const auto m = fileLine.match(line); m.hasMatch()) {
        file = m.captured(1);
        EXPECT_TRUE(FileExists(DemoPath(file))) << file.toStdString();
        continue;
      }
      EXPECT_FALSE(file.isEmpty()) << "every node has an existing file as its tag";
      if (tree == u"zimu.mmd") {
        EXPECT_EQ(line.mid(1, 2), u" 《"_qs);
        laws.insert(line.mid(2));
        EXPECT_EQ(file, u"\\lawtxt\\"_qs + line.mid(3, line.size() - 4) + u".mmd"_qs);
      } else if (line.startsWith(u"    "_qs)) {
        laws.insert(line.mid(4));
        EXPECT_EQ(file, u"\\lawtxt\\"_qs + line.mid(5, line.size() - 6) + u".mmd"_qs);
      } else {
        EXPECT_TRUE((tree == u"shijuan.mmd" ? groups1 : groups3).contains(line)) << line.toStdString();
      }
    }
    for (const auto& n : names) EXPECT_TRUE(laws.contains(n[u"lawname"_qs])) << n[u"lawname"_qs].toStdString();
  }
}

TEST(DemoData, EmphasesNameLawsAndArticles) {
  const QString file = DemoPath(u"\\ini\\emphases.ini"_qs);
  for (const LawFile& law : DemoLaws()) {
    const QString section = law.title.mid(1, law.title.size() - 2);
    for (const QString& key : {u"重点法条"_qs, u"次重点法条"_qs}) {
      const QString v = IniRead(file, section, key);
      EXPECT_FALSE(v.isEmpty()) << section.toStdString();
      static const QRegularExpression box(u"^[0-9]+(-[0-9]+)?(,[0-9]+(-[0-9]+)?)*$"_qs);
      EXPECT_TRUE(box.match(v).hasMatch()) << v.toStdString();
      for (const QString& n : v.split(QRegularExpression(u"[,-]"_qs)))
        EXPECT_TRUE(law.text.contains(kCrLf + ArticleHeading(law.type, n.toInt()))) << n.toStdString();
    }
  }
}

TEST(DemoData, NewsFileHasTheKeysAndNotices) {
  const QString file = DemoPath(u"\\ini\\newlumen.txt"_qs);
  EXPECT_FALSE(IniRead(file, u"信息"_qs, u"信息号"_qs).isEmpty());
  const int exam = IniRead(file, u"信息"_qs, u"考试时间"_qs).toInt();
  const QDate day = QDate(2003, 1, 1).addDays(exam);
  EXPECT_EQ(day.year(), 2027);
  EXPECT_EQ(day, QDate(2027, 9, 18));
  for (const QString& key : {u"法条详解"_qs, u"做下一题"_qs, u"知识点文件下载网上目录"_qs})
    EXPECT_TRUE(IniRead(file, u"信息"_qs, key).startsWith(u"https://mingjing.example.org/"_qs)) << key.toStdString();
  const QString text = ReadDemo(u"\\ini\\newlumen.txt"_qs);
  for (const QString& key : {u"保留链接1="_qs, u"保留链接2="_qs, u"知识点文件个数="_qs})
    EXPECT_TRUE(text.contains(kCrLf + key)) << key.toStdString();
  // One knowledge file on offer: the sample in 新知识点, taken in when the window first opens.
  EXPECT_EQ(IniRead(file, u"信息"_qs, u"知识点文件个数"_qs), u"1"_qs);
  // Values fit the 127 bytes of the profile reader.
  for (const QString& line : text.split(kCrLf))
    if (line.contains(u'=')) {
      EXPECT_LE(GbkLength(line.section(u'=', 1)), 127) << line.toStdString();
    }
  // Notices from 通知1 on, each with a text.
  int notices = 0;
  while (!IniRead(file, u"通知"_qs + QString::number(notices + 1), u"显示内容"_qs).isEmpty()) ++notices;
  EXPECT_GE(notices, 3);
  EXPECT_FALSE(text.contains(u"[通知"_qs + QString::number(notices + 1) + u']'));
  EXPECT_TRUE(IniRead(file, u"通知1"_qs, u"显示内容"_qs).contains(u'●'));
}

// The windows of the program have help sections 1 to 18; the windows added
// beyond them follow on.
constexpr int kLastHelpSection = 21;

TEST(DemoData, HelpFileHasASectionForEveryWindow) {
  const QString text = ReadDemo(u"\\ini\\lumenhelp.ini"_qs);
  qsizetype pos = 0;
  for (int n = 1; n <= kLastHelpSection; ++n) {
    const QString a = u'[' + QString::number(n) + u']';
    EXPECT_EQ(text.count(a), 1) << n;
    const qsizetype p = text.indexOf(a);
    EXPECT_GT(p, pos - 1) << n;
    pos = p;
    const QString section = n < kLastHelpSection ? TextBetween(text, a, u'[' + QString::number(n + 1) + u']')
                                                 : text.mid(p + a.size());
    EXPECT_GT(section.trimmed().size(), 10) << n;
  }
  EXPECT_FALSE(text.contains(u'[' + QString::number(kLastHelpSection + 1) + u']'));
  EXPECT_FALSE(text.contains(u"[0]"_qs));
}

TEST(DemoData, OutlineRowsAreNumberedAndCiteArticles) {
  DbfTable t = DbfTable::open(DemoPath(u"\\dbf\\dagang.mmd"_qs));
  ASSERT_TRUE(t.isOpen());
  QHash<QString, LawFile> laws;
  for (const LawFile& l : DemoLaws()) laws.insert(l.title, l);
  int n = 0, cited = 0, maxDepth = 0;
  QSet<QString> marks;
  for (int r : t.rows()) {
    ++n;
    EXPECT_EQ(int(t.number(r, u"therecn"_qs)), n);
    const QString a = t.text(r, u"a"_qs);
    EXPECT_FALSE(a.trimmed().isEmpty());
    maxDepth = std::max(maxDepth, int(a.size() - QString(a).remove(QRegularExpression(u"^ +"_qs)).size()));
    if (n == 1) {
      EXPECT_FALSE(a.startsWith(u' '));
    }
    EXPECT_TRUE(t.isNull(r, u"b"_qs));
    marks.insert(t.trimmedText(r, u"k"_qs));
    const QString d = t.trimmedText(r, u"d"_qs);
    if (d.isEmpty()) continue;
    ++cited;
    static const QRegularExpression shortForm(u"^(《[^》]+》)([0-9]+)\\.$"_qs);
    const auto m = shortForm.match(d);
    ASSERT_TRUE(m.hasMatch()) << d.toStdString();
    ASSERT_TRUE(laws.contains(m.captured(1)));
    const LawFile& law = laws[m.captured(1)];
    EXPECT_TRUE(law.text.contains(kCrLf + ArticleHeading(law.type, m.captured(2).toInt()))) << d.toStdString();
  }
  EXPECT_GE(cited, 10);
  EXPECT_GE(maxDepth, 6) << "a few levels";
  EXPECT_TRUE(marks.contains(u"1"_qs) && marks.contains(u"3"_qs));
}

TEST(DemoData, SamplePapersHaveTheValidatorLayout) {
  const QSet<QString> registered = [] {
    QSet<QString> s;
    for (const auto& r : TableRows(AppPath(Demo(), u"\\dbf\\listbox.mmd"_qs))) s.insert(r[u"lawname"_qs]);
    return s;
  }();
  QHash<QString, LawFile> laws;
  for (const LawFile& l : DemoLaws()) laws.insert(l.title, l);
  for (int k = 1; k <= 2; ++k) {
    SCOPED_TRACE(k);
    const QString text = ReadDemo(u"\\ini\\sample"_qs + QString::number(k) + u".ini"_qs);
    EXPECT_TRUE(text.left(text.indexOf(kCrLf)).contains(u"示例数据"_qs));
    const qsizetype p1 = text.indexOf(u"一、单项选择题"_qs), p2 = text.indexOf(u"二、多项选择题"_qs),
                    p3 = text.indexOf(u"三、任意选择题"_qs);
    EXPECT_TRUE(p1 > 0 && p2 > p1 && p3 > p2);
    EXPECT_FALSE(text.contains(u"案例"_qs));
    const bool separate = text.contains(kCrLf + u"[本卷参考答案]"_qs);
    EXPECT_EQ(separate, k == 2);
    const QString questions = separate ? text.left(text.indexOf(kCrLf + u"[本卷参考答案]"_qs)) : text;
    const qsizetype options = questions.count(u"A．"_qs);
    for (const QString& o : {u"B．"_qs, u"C．"_qs, u"D．"_qs}) EXPECT_EQ(questions.count(o), options);
    EXPECT_EQ(questions.count(kCrLf + u"A．"_qs), options);
    EXPECT_EQ(text.count(kCrLf + u"[答案：]"_qs), options);
    // Citations name registered laws and articles that exist.
    static const QRegularExpression cite(u"\\[参见：\\](《[^》]+》)第([0-9]+)(?:-([0-9]+))?条"_qs);
    int cites = 0;
    for (auto it = cite.globalMatch(text); it.hasNext();) {
      const auto m = it.next();
      ++cites;
      EXPECT_TRUE(registered.contains(m.captured(1))) << m.captured(1).toStdString();
      ASSERT_TRUE(laws.contains(m.captured(1)));
      const int last = m.captured(3).isEmpty() ? m.captured(2).toInt() : m.captured(3).toInt();
      for (int n = m.captured(2).toInt(); n <= last; ++n)
        EXPECT_TRUE(laws[m.captured(1)].text.contains(kCrLf + ArticleHeading(laws[m.captured(1)].type, n)));
    }
    EXPECT_EQ(cites, options);
  }
}

TEST(DemoData, HelpPagesAndFormatDocuments) {
  const QString page = ReadDemo(u"\\readme\\autonewer.htm"_qs);
  EXPECT_TRUE(page.contains(u"charset=gbk"_qs));
  EXPECT_TRUE(page.contains(u"自动更新"_qs));
  EXPECT_TRUE(page.contains(u"示例数据"_qs));
  for (const QString& f : QDir(DemoPath(u"\\法律文书"_qs)).entryList(QDir::Files))
    EXPECT_TRUE(ReadText(DemoPath(u"\\法律文书\\"_qs + f)).contains(u"示例数据"_qs)) << f.toStdString();
  EXPECT_FALSE(ReadDemo(u"\\ini\\Help4AddNewLaw.ini"_qs).isEmpty());
  // Replacement pairs in the quoted-list form: "[a]-->[b]",1
  static const QRegularExpression pair(u"^\"\\[[^\\]]+\\]-->\\[[^\"]*\\]\",[01]$"_qs);
  for (const QString& line : ReadDemo(u"\\ini\\listbox.ini"_qs).split(kCrLf, Qt::SkipEmptyParts))
    EXPECT_TRUE(pair.match(line).hasMatch()) << line.toStdString();
}

TEST(DemoData, PicturesLoad) {
  QImageReader splash(DemoPath(u"\\ini\\jiemian.jpg"_qs));
  EXPECT_EQ(splash.format(), QByteArray("jpeg"));
  const QImage s = splash.read();
  EXPECT_FALSE(s.isNull());
  EXPECT_GE(s.width(), 300);
  EXPECT_GE(s.height(), 200);
  // The start page's picture is the splash without the start-up's words
  // and bar: where the bar stands, the splash is dark and the start page
  // shows the background.
  const QImage start = QImage(DemoPath(u"\\ini\\startpage.jpg"_qs));
  ASSERT_EQ(start.size(), s.size());
  const QPoint bar(s.width() / 2, static_cast<int>(s.height() * 0.87) + 1);
  EXPECT_LT(qGray(s.pixel(bar)), 40);
  EXPECT_GT(qGray(start.pixel(bar)) - qGray(s.pixel(bar)), 25);
  const QPoint words(s.width() / 2, static_cast<int>(s.height() * 0.87) - 16);
  int differ = 0;
  for (int x = s.width() / 3; x < s.width() * 2 / 3; ++x)
    if (qAbs(qGray(start.pixel(x, words.y())) - qGray(s.pixel(x, words.y()))) > 60) ++differ;
  EXPECT_GT(differ, 10);  // the words are on the splash only
  // Elsewhere the two are the same picture.
  EXPECT_LT(qAbs(qGray(start.pixel(60, 60)) - qGray(s.pixel(60, 60))), 8);
  QImageReader icon(DemoPath(u"\\ini\\fa.ico"_qs));
  EXPECT_EQ(icon.format(), QByteArray("ico"));
  EXPECT_EQ(icon.read().size(), QSize(32, 32));
  // The pointer is a cursor file: type 2, one picture, hot spot at the tip.
  const QByteArray cur = ReadBytes(DemoPath(u"\\ini\\mmpoint.cur"_qs));
  ASSERT_GT(cur.size(), 22);
  EXPECT_EQ(cur.mid(0, 6), QByteArray("\0\0\2\0\1\0", 6));
  EXPECT_EQ(cur[6], char(32));
  EXPECT_EQ(cur[10], char(9));
  EXPECT_EQ(cur[12], char(1));
}
