// The real statutes of the shared test data, from their Markdown, through the
// clean-up and the adding of a new law, against the same statutes as the
// program's law files: article by article, as the article splitter cuts them.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMap>

#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "law/new_law.h"
#include "law/numerals.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

// Why an article cut from the cleaned law differs from the shipped one.
enum class Why {
  // The clean-up joins a line that does not end a sentence to the next one:
  // lines ending in a comma (宪法 总理，), a line ending in an ASCII colon in
  // the check's reflow (which keeps a line end only behind the full-width
  // ：；。), a part's heading and its dated
  // note (物权编2020年5月28日...), an appendix heading and its first line.
  // Where a list's first item （一） was joined to the line before it, the
  // splitter takes the last item of the list for a note after the article
  // and leaves it out; where the heading of the last appendix was joined to
  // the line before it, the last article runs up to the first appendix only.
  JoinedLines,
  // The blank behind a heading goes behind 第十七条 of 第十七条之一, not behind
  // 之一: the blank rule looks for 第 + numeral + 条 only.
  BlankBeforeZhiYi,
  // The last article of a law carries two empty indented lines: the final
  // step adds a line end to a text that ends in one, then indents both.
  EmptyLinesAtEnd,
  // 民法典 spells articles 1010 to 1019 第一千零一十条 …; the check asks for the
  // program's 第一千零十条, so the builder (and a user) respells them. The
  // shipped file keeps the textbook spelling, where the splitter finds no
  // such article and article 1009 runs on over them.
  Respelled,
};

void PrintTo(Why w, std::ostream* os) {
  static const char* names[] = {"JoinedLines", "BlankBeforeZhiYi", "EmptyLinesAtEnd", "Respelled"};
  *os << names[static_cast<int>(w)];
}

QString Strip(QString s, bool blanksToo) {
  s.remove(u"\r\n"_qs);
  s.remove(u'　');
  if (blanksToo) s.remove(u' ');
  return s;
}

std::optional<Why> Explain(const QString& mine, const QString& shipped) {
  if (mine == shipped + u"　　\r\n　　\r\n"_qs) return Why::EmptyLinesAtEnd;
  if (shipped.isEmpty() && mine.startsWith(u"　　第一千零十"_qs)) return Why::Respelled;
  if (shipped.startsWith(mine) && shipped.contains(u"第一千零一十条"_qs)) return Why::Respelled;
  if (Strip(mine, false) == Strip(shipped, false)) return Why::JoinedLines;
  if (Strip(shipped, false).startsWith(Strip(mine, false)) && mine.contains(u"（一）"_qs) &&
      !mine.contains(u"　　（一"_qs) && shipped.contains(u"　　（一"_qs))
    return Why::JoinedLines;
  if (Strip(shipped, false).startsWith(Strip(mine, false)) &&
      Strip(shipped, false).mid(Strip(mine, false).size()).startsWith(u"附件"_qs))
    return Why::JoinedLines;
  if (Strip(mine, true) == Strip(shipped, true) && mine.contains(u"条 之"_qs)) return Why::BlankBeforeZhiYi;
  return std::nullopt;
}

struct Statute {
  QString name;
  QStringList md;  // under laws-md, in order
};

QList<Statute> Statutes(const QString& mdDir) {
  QList<Statute> out;
  for (const QString& f : QDir(mdDir).entryList({u"*.md"_qs}, QDir::Files, QDir::Name))
    out.append({f.chopped(3), {f}});
  out.append({u"民法典"_qs,
              {u"民法典/总则.md"_qs, u"民法典/物权编.md"_qs, u"民法典/合同编.md"_qs, u"民法典/人格权编.md"_qs,
               u"民法典/婚姻家庭编.md"_qs, u"民法典/继承编.md"_qs, u"民法典/侵权责任编.md"_qs, u"民法典/附则.md"_qs}});
  return out;
}

QString ReadUtf8(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

TEST(NewLawReal, EveryStatuteGoesThroughTheWizardAndItsArticlesMatchTheShippedFiles) {
  const QString real = test::RealDataDir();
  if (real.isEmpty()) GTEST_SKIP() << "../shared/realdata is absent";
  const QList<Statute> statutes = Statutes(real + u"/laws-md"_qs);
  ASSERT_EQ(statutes.size(), 24);

  // Every difference, law by law, with its reason.
  const QMap<QString, QMap<int, Why>> expected = [] {
    QMap<QString, QMap<int, Why>> e;
    auto add = [&e](const QString& law, Why why, std::initializer_list<int> articles) {
      for (int a : articles) e[law][a] = why;
    };
    const Why J = Why::JoinedLines, Z = Why::BlankBeforeZhiYi, E = Why::EmptyLinesAtEnd, R = Why::Respelled;
    add(u"仲裁法"_qs, J, {13});
    add(u"仲裁法"_qs, E, {80});
    add(u"企业破产法"_qs, E, {136});
    add(u"保险法"_qs, J, {100, 106});
    add(u"保险法"_qs, E, {185});
    add(u"公司法"_qs, E, {218});
    add(u"刑事诉讼法"_qs, E, {308});
    add(u"刑法"_qs, Z, {17,  37,  120, 135, 139, 162, 175, 185, 205, 210, 219, 224, 234, 236, 244, 253, 260,
                        262, 276, 280, 284, 291, 299, 307, 308, 334, 336, 342, 344, 355, 388, 390, 399});
    add(u"刑法"_qs, J, {452});
    add(u"劳动合同法"_qs, J, {14, 41});
    add(u"劳动合同法"_qs, E, {98});
    add(u"反不正当竞争法"_qs, E, {33});
    add(u"合伙企业法"_qs, E, {109});
    add(u"国家赔偿法"_qs, E, {42});
    add(u"宪法"_qs, J, {65, 86, 93, 124});
    add(u"宪法"_qs, E, {143});
    add(u"律师法"_qs, E, {60});
    add(u"民事诉讼法"_qs, E, {291});
    add(u"民法典"_qs, J, {204, 462, 988, 1039, 1118, 1163, 1258});
    add(u"民法典"_qs, R, {1009, 1010, 1011, 1012, 1013, 1014, 1015, 1016, 1017, 1018, 1019});
    add(u"民法典"_qs, E, {1260});
    add(u"治安管理处罚法"_qs, J, {43});
    add(u"治安管理处罚法"_qs, E, {119});
    add(u"法官法"_qs, E, {69});
    add(u"消费者权益保护法"_qs, E, {63});
    add(u"监察法"_qs, E, {69});
    add(u"票据法"_qs, E, {110});
    add(u"立法法"_qs, E, {120});
    add(u"行政处罚法"_qs, E, {86});
    add(u"行政复议法"_qs, E, {90});
    add(u"行政诉讼法"_qs, J, {31, 74});
    add(u"行政诉讼法"_qs, E, {103});
    add(u"证券法"_qs, E, {226});
    return e;
  }();

  test::TestEnv te;
  te.mkdir(u"\\lawtxt"_qs);
  te.writeGbk(u"\\ini\\shijuan.mmd"_qs, u"试卷一相关法律、法规\r\n试卷二相关法律、法规\r\n试卷三相关法律、法规\r\n"_qs);
  int equal = 0, total = 0;
  QMap<QString, QMap<int, Why>> found;
  for (const Statute& s : statutes) {
    SCOPED_TRACE(s.name.toStdString());
    QStringList parts;
    for (const QString& f : s.md) parts << ReadUtf8(real + u"/laws-md/"_qs + f);
    const QString text = JoinMarkdownParts(parts);
    ASSERT_FALSE(text.isEmpty());
    // A single file opens through the first step as a user opens it.
    if (s.md.size() == 1) {
      QString error;
      EXPECT_EQ(ReadNewLawSource(real + u"/laws-md/"_qs + s.md[0], &error), text);
      EXPECT_TRUE(error.isEmpty());
    }

    NewLawWizard w(te.env);
    w.view = text;
    w.clean();
    QList<BoxRecord> boxes = te.boxes.take();
    if (s.name == u"民法典") {
      // The check names the first article in the textbook spelling; respelled
      // by hand, the text goes through.
      ASSERT_EQ(boxes.size(), 2);
      EXPECT_EQ(boxes[1].text, u"共一千二百六十条，第一千零十条条有误"_qs);
      EXPECT_FALSE(w.checked);
      w.view = RespellArticleHeads(text);
      w.clean();
      boxes = te.boxes.take();
    }
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_EQ(boxes[0].text, DetectedTypeText(1));
    ASSERT_TRUE(w.checked) << boxes[1].text.toStdString();
    EXPECT_TRUE(w.enabled[2]);

    w.classify();
    w.setCombo(1, PaperChoices()[0]);
    w.setCombo(2, LetterChoices()[0]);
    w.setCombo(3, ClassChoices()[0]);
    w.setTitle(u"《"_qs + s.name + u"》"_qs);
    ASSERT_TRUE(w.enabled[3]);
    te.boxes.answer(box::Yes);
    ASSERT_TRUE(w.add());
    te.boxes.clear();

    const LawTextPtr mine = LoadLawByName(te.env, s.name);
    ASSERT_TRUE(mine);
    EXPECT_EQ(ReadLawFile(LawFilePath(te.env, s.name)), w.view);
    const LawText shipped(ReadLawFile(real + u"/lawtxt/"_qs + s.name + u".mmd"_qs));
    ASSERT_EQ(mine->type(), 1);
    ASSERT_EQ(mine->lastItemNum(), shipped.lastItemNum());
    for (int n = 1; n <= shipped.lastItemNum(); ++n) {
      const QString numbers = CStr(n) + u"．"_qs;
      const QString a = GetPutTxt2Text(mine->text(), mine->numeralTable(), numbers, &mine->index());
      const QString b = GetPutTxt2Text(shipped.text(), shipped.numeralTable(), numbers, &shipped.index());
      ++total;
      if (a == b) {
        ++equal;
        continue;
      }
      const std::optional<Why> why = Explain(a, b);
      EXPECT_TRUE(why.has_value()) << "article " << n << "\n mine:    " << a.toStdString()
                                   << "\n shipped: " << b.toStdString();
      if (why) found[s.name][n] = *why;
    }
  }
  EXPECT_EQ(found, expected);
  EXPECT_EQ(total, 4470);
  EXPECT_EQ(equal, 4383);
  // Every statute went into the tree by paper, under its group.
  const QString tree = te.readGbk(u"\\ini\\shijuan.mmd"_qs);
  for (const Statute& s : statutes)
    EXPECT_TRUE(tree.contains(u"File=\"\\lawtxt\\"_qs + s.name + u".mmd\"\r\n    《"_qs + s.name + u"》\r\n"_qs));
}

}  // namespace
}  // namespace mj
