#include "law/new_law.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <random>

#include "law/law_files.h"
#include "law/law_text.h"
#include "law/line_joiner.h"
#include "law/numerals.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/literal_joiner.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

QString Lines(const QStringList& lines) { return lines.join(u"\r\n"_qs) + u"\r\n"_qs; }

// ---- The line joiner -------------------------------------------------------------

TEST(JoinBrokenLines, ATextWithoutFinalLineEndLosesItsLastLine) {
  EXPECT_EQ(JoinBrokenLines(u"第一条 甲。\r\n第二条 乙。"_qs), u"第一条 甲。\r\n"_qs);
  EXPECT_EQ(JoinBrokenLines(u"第一条 甲。\r\n第二条 乙。\r\n"_qs), u"第一条 甲。\r\n第二条 乙。\r\n"_qs);
}

TEST(JoinBrokenLines, ATextOfOneLineOrStartingWithTwoLineEndsIsEmpty) {
  EXPECT_EQ(JoinBrokenLines(u"第一条 甲。"_qs), QString());
  EXPECT_EQ(JoinBrokenLines(QString()), QString());
  EXPECT_EQ(JoinBrokenLines(u"\r\n"_qs), QString());
  EXPECT_EQ(JoinBrokenLines(u"\r\n\r\n甲。\r\n"_qs), QString());
  // One leading line end goes.
  EXPECT_EQ(JoinBrokenLines(u"\r\n甲。\r\n"_qs), u"甲。\r\n"_qs);
}

TEST(JoinBrokenLines, AnEmptyLineEndsTheWalkABlankOneIsPassedOver) {
  EXPECT_EQ(JoinBrokenLines(u"甲。\r\n\r\n乙。\r\n"_qs), u"甲。\r\n"_qs);
  EXPECT_EQ(JoinBrokenLines(u"甲。\r\n   \r\n乙。\r\n"_qs), u"甲。\r\n乙。\r\n"_qs);
  EXPECT_EQ(JoinBrokenLines(u"  甲。 \r\n  乙。\r\n  "_qs), u"甲。\r\n乙。\r\n"_qs);
}

TEST(JoinBrokenLines, ASentenceBrokenInTheMiddleIsJoined) {
  EXPECT_EQ(JoinBrokenLines(Lines({u"中华人民共和国"_qs, u"示例法规定"_qs, u"第一条 为了示例，"_qs, u"制定本法。"_qs})),
            Lines({u"中华人民共和国示例法规定"_qs, u"第一条 为了示例，制定本法。"_qs}));
}

TEST(JoinBrokenLines, SentenceMarksAndHeadingsOfEachStyleKeepTheLineEnd) {
  for (const QString& mark : {u"。"_qs, u"："_qs, u"；"_qs, u":"_qs, u";"_qs})
    EXPECT_EQ(JoinBrokenLines(u"甲"_qs + mark + u"\r\n乙\r\n"_qs), u"甲"_qs + mark + u"\r\n乙"_qs);
  EXPECT_EQ(JoinBrokenLines(Lines({u"总则"_qs, u"第一条 甲。"_qs})), Lines({u"总则"_qs, u"第一条 甲。"_qs}));
  EXPECT_EQ(JoinBrokenLines(Lines({u"总则"_qs, u"第一章 甲"_qs, u"第一条 乙。"_qs})),
            Lines({u"总则"_qs, u"第一章 甲"_qs, u"第一条 乙。"_qs}));
  EXPECT_EQ(JoinBrokenLines(Lines({u"总则"_qs, u"一、甲。"_qs})), Lines({u"总则"_qs, u"一、甲。"_qs}));
  EXPECT_EQ(JoinBrokenLines(Lines({u"总则"_qs, u"2．乙。"_qs})), Lines({u"总则"_qs, u"2．乙。"_qs}));
  // The dated note under a title: a first line closed by brackets.
  EXPECT_EQ(JoinBrokenLines(Lines({u"示例法"_qs, u"（2024年通过）"_qs, u"第一条 甲。"_qs})),
            Lines({u"示例法"_qs, u"（2024年通过）"_qs, u"第一条 甲。"_qs}));
  // A list item is no heading in any style.
  EXPECT_EQ(JoinBrokenLines(Lines({u"下列"_qs, u"（一）甲；"_qs})), Lines({u"下列（一）甲；"_qs}));
}

TEST(JoinBrokenLines, GivesWhatItsRulesWrittenOutGive) {
  QStringList pieces = {u"第一条 甲，"_qs, u"乙。"_qs, u"一、丙"_qs, u"2．丁"_qs, u"（一）戊；"_qs, u"（2020年）"_qs,
                        u"第二章 总则"_qs, u"　　第三条 己"_qs, u"　"_qs, u" "_qs, QString(), u"附件"_qs,
                        u"第十二编"_qs, u"1、庚:"_qs, u"(注)"_qs, u"十、辛"_qs};
  std::mt19937 rng(42);
  for (int i = 0; i < 3000; ++i) {
    QString t;
    const int n = static_cast<int>(rng() % 12);
    for (int k = 0; k < n; ++k) t += pieces[rng() % pieces.size()] + (rng() % 5 ? u"\r\n"_qs : QString());
    ASSERT_EQ(JoinBrokenLines(t), test::LiteralJoinBrokenLines(t)) << t.toStdString();
  }
  const QString real = test::RealDataDir();
  if (real.isEmpty()) return;
  for (const QString& f : {u"宪法.md"_qs, u"刑事诉讼法.md"_qs, u"仲裁法.md"_qs}) {
    QString error;
    const QString text = ReadNewLawSource(real + u"/laws-md/"_qs + f, &error);
    ASSERT_EQ(JoinBrokenLines(text), test::LiteralJoinBrokenLines(text)) << f.toStdString();
  }
}

// ---- Reading the outside text ---------------------------------------------------

TEST(NewLawSource, MarkdownLosesItsMarkupAndEveryLineEndsInALineEnd) {
  const QString md = u"# 中华人民共和国示例法\n\n2024年1月1日 通过\n\n<!-- INFO END -->\n\n## 第一章\u2002总则\n\n"
                     u"**第一条** 为了示例，制定本法。\n\n> 引文\n---\n第二条 本法\t适用。 ##"_qs;
  EXPECT_EQ(MarkdownToPlainText(md),
            Lines({u"中华人民共和国示例法"_qs, QString(), u"2024年1月1日 通过"_qs, QString(), QString(), QString(),
                   u"第一章 总则"_qs, QString(), u"第一条 为了示例，制定本法。"_qs, QString(), u"引文"_qs, QString(),
                   u"第二条 本法 适用。 ##"_qs}));
}

TEST(NewLawSource, AStatuteInSeveralFilesKeepsOneTitle) {
  const QString a = u"# 示例法典\n\n# 总则\n\n第一条 甲。\n"_qs;
  const QString b = u"# 示例法典\n\n# 分则\n\n第二条 乙。\n"_qs;
  EXPECT_EQ(JoinMarkdownParts({a, b}), Lines({u"示例法典"_qs, QString(), u"总则"_qs, QString(), u"第一条 甲。"_qs,
                                              QString(), u"分则"_qs, QString(), u"第二条 乙。"_qs}));
}

TEST(NewLawSource, AWebPageGivesItsText) {
  const QString html =
      u"<html><head><title>x</title><style>p{}</style></head><body><h1>示例法</h1>\n<p>第一条&nbsp;甲&lt;乙&gt;。</p>"
      u"<script>var a;</script><p>第二条 &#20057;&#x4E19;&amp;。<br>续</p></body></html>"_qs;
  EXPECT_EQ(HtmlToPlainText(html), u"\r\n示例法\r\n \r\n第一条 甲<乙>。\r\n\r\n第二条 乙丙&。\r\n续\r\n"_qs);
}

class NewLawFiles : public ::testing::Test {
 protected:
  QString write(const QString& name, const QByteArray& bytes) {
    const QString p = te.root() + u"/in/"_qs + name;
    QDir().mkpath(te.root() + u"/in"_qs);
    QFile f(p);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return p;
  }
  test::TestEnv te;
};

TEST_F(NewLawFiles, TextInGbkOrUtf8WithAnyLineEnds) {
  QString error;
  EXPECT_EQ(ReadNewLawSource(write(u"a.txt"_qs, ToGbk(u"示例法\n第一条 甲。\r第二条 乙。\r\n"_qs)), &error),
            Lines({u"示例法"_qs, u"第一条 甲。"_qs, u"第二条 乙。"_qs}));
  EXPECT_TRUE(error.isEmpty());
  EXPECT_EQ(ReadNewLawSource(write(u"b.txt"_qs, u"示例法\n第一条\u00A0甲。\n"_qs.toUtf8()), &error),
            Lines({u"示例法"_qs, u"第一条 甲。"_qs}));
  EXPECT_EQ(ReadNewLawSource(write(u"c.md"_qs, "\xEF\xBB\xBF# 示例法\n第一条 甲。"), &error),
            Lines({u"示例法"_qs, u"第一条 甲。"_qs}));
  EXPECT_EQ(ReadNewLawSource(write(u"d.HTM"_qs, ToGbk(u"<p>示例法</p><p>第一条 甲。</p>"_qs)), &error),
            u"\r\n示例法\r\n\r\n第一条 甲。\r\n"_qs);
}

TEST_F(NewLawFiles, RandomBytesAnEmptyFileAndAHugeFileAreRefusedWithAMessage) {
  QString error;
  QByteArray random(4096, '\0');
  QRandomGenerator rng(7);
  for (char& c : random) c = static_cast<char>(rng.bounded(256));
  const QString r = write(u"random.txt"_qs, random);
  EXPECT_EQ(ReadNewLawSource(r, &error), QString());
  EXPECT_EQ(error, u"文件"_qs + QDir::toNativeSeparators(r) +
                       u"不是文本文件（既不是GBK编码，也不是UTF-8编码的文字），没有打开。"_qs);
  const QString e = write(u"empty.txt"_qs, QByteArray());
  EXPECT_EQ(ReadNewLawSource(e, &error), QString());
  EXPECT_EQ(error, u"文件"_qs + QDir::toNativeSeparators(e) + u"是空的，没有可以整理的内容。"_qs);
  const QString big = write(u"big.txt"_qs, QByteArray(20 * 1024 * 1024, 'a'));
  EXPECT_EQ(ReadNewLawSource(big, &error), QString());
  EXPECT_EQ(error, u"文件"_qs + QDir::toNativeSeparators(big) +
                       u"有20.0MB，超过了10.0MB，不像是一部法律/法规的全文，没有打开。"_qs);
  EXPECT_EQ(ReadNewLawSource(te.root() + u"/in/none.txt"_qs, &error), QString());
  EXPECT_EQ(error, u"文件"_qs + QDir::toNativeSeparators(te.root() + u"/in/none.txt"_qs) + u"不存在。"_qs);
}

// ---- The wizard ---------------------------------------------------------------------

class Wizard : public ::testing::Test {
 protected:
  Wizard() : w(te.env) {
    te.mkdir(u"\\lawtxt"_qs);
    te.writeGbk(u"\\ini\\shijuan.mmd"_qs, kPaperTree);
    te.writeGbk(u"\\ini\\leibie.mmd"_qs, kClassTree);
    te.writeGbk(u"\\ini\\zimu.mmd"_qs, kLetterTree);
  }
  // Runs step 2 on text and gives the boxes it showed.
  QList<BoxRecord> clean(const QString& text) {
    w.view = text;
    w.clean();
    return te.boxes.take();
  }
  void classifyAs(const QString& title, int paper = 0, int letter = 0, int klass = 0) {
    w.classify();
    w.setCombo(1, PaperChoices()[paper]);
    w.setCombo(2, LetterChoices()[letter]);
    w.setCombo(3, ClassChoices()[klass]);
    w.setTitle(title);
  }
  // Every file below the program folder with its bytes.
  QMap<QString, QByteArray> files() const {
    QMap<QString, QByteArray> out;
    QDirIterator it(te.root(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
      const QString p = it.next();
      QFile f(p);
      f.open(QIODevice::ReadOnly);
      out.insert(QDir(te.root()).relativeFilePath(p), f.readAll());
    }
    return out;
  }

  static inline const QString kPaperTree =
      u"FILE=\"\\lawtxt\\甲法.mmd\"\r\n试卷一相关法律、法规\r\nFILE=\"\\lawtxt\\甲法.mmd\"\r\n    《甲法》\r\n"
      u"FILE=\"\\lawtxt\\乙法.mmd\"\r\n试卷二相关法律、法规\r\nFILE=\"\\lawtxt\\乙法.mmd\"\r\n    《乙法》\r\n"_qs;
  static inline const QString kClassTree =
      u"FILE=\"\\lawtxt\\甲法.mmd\"\r\n宪法\r\nFILE=\"\\lawtxt\\甲法.mmd\"\r\n    《甲法》\r\n"
      u"FILE=\"\\lawtxt\\乙法.mmd\"\r\n国际（经济）法\r\nFILE=\"\\lawtxt\\乙法.mmd\"\r\n    《乙法》\r\n"_qs;
  static inline const QString kLetterTree =
      u"FILE=\"\\lawtxt\\甲法.mmd\"\r\nJ 《甲法》\r\nFILE=\"\\lawtxt\\乙法.mmd\"\r\nY 《乙法》\r\n"_qs;
  static inline const QString kSmallLaw = Lines({u"示例法"_qs, u"（2024年1月1日通过）"_qs, u"第一章　总　则"_qs,
                                                 u"第一条　为了示例，"_qs, u"制定本法。"_qs, u"第二条 本法适用于示例。"_qs,
                                                 u"【有效性】有效"_qs, u"第三条 本法自公布之日起施行。"_qs});

  test::TestEnv te;
  NewLawWizard w;
};

TEST_F(Wizard, OpensWithTheHelpTextAndTheButtonsOfTheFirstStep) {
  te.writeGbk(u"\\ini\\Help4AddNewLaw.ini"_qs, u"说明\r\n第二行\r\n"_qs);
  w.start();
  EXPECT_EQ(w.view, u"说明\r\n第二行\r\n"_qs);
  EXPECT_TRUE(w.enabled[0] && w.enabled[1] && w.enabled[4]);
  EXPECT_FALSE(w.enabled[2] || w.enabled[3] || w.classifyVisible || w.checked);
  EXPECT_EQ(w.title, u"《》"_qs);

  test::TestEnv bare;
  NewLawWizard none(bare.env);
  none.start();
  EXPECT_EQ(none.view, QString()) << "no help file, nothing shown";
}

TEST_F(Wizard, StepOneAsksWithTheFilterAndLoadsTheFile) {
  w.view = u"旧文本"_qs;
  EXPECT_FALSE(w.open()) << "cancelled";
  EXPECT_EQ(w.view, u"旧文本"_qs);
  ASSERT_EQ(te.dialogs.fileRequests.size(), 1);
  EXPECT_EQ(te.dialogs.fileRequests[0].filter,
            u"文本文件(*.txt)|*.txt|网页文件1 (*.htm)|*.htm|网页文件2 (*.html)|*.html|"
            u"Markdown文件 (*.md)|*.md|所有文件(*.*)|*.*"_qs);

  classifyAs(u"《丙法》"_qs);
  ASSERT_TRUE(w.enabled[3]);
  QDir().mkpath(te.root() + u"/in"_qs);
  WriteTextAtomic(te.root() + u"/in/丙法.txt"_qs, kSmallLaw);
  te.dialogs.answer(te.root() + u"/in/丙法.txt"_qs);
  EXPECT_TRUE(w.open());
  EXPECT_EQ(w.view, kSmallLaw);
  EXPECT_EQ(w.openedFile, te.root() + u"/in/丙法.txt"_qs);
  EXPECT_FALSE(w.classifyVisible);
  EXPECT_FALSE(w.enabled[3]);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(Wizard, StepOneSaysWhyAFileCannotBeOpenedAndKeepsTheText) {
  w.view = u"旧文本"_qs;
  QDir().mkpath(te.root() + u"/in"_qs);
  QFile f(te.root() + u"/in/空.txt"_qs);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.close();
  te.dialogs.answer(te.root() + u"/in/空.txt"_qs);
  EXPECT_FALSE(w.open());
  EXPECT_EQ(w.view, u"旧文本"_qs);
  const auto boxes = te.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text,
            u"文件"_qs + QDir::toNativeSeparators(te.root() + u"/in/空.txt"_qs) + u"是空的，没有可以整理的内容。"_qs);
}

TEST_F(Wizard, StepTwoCleansChecksAndIndentsALaw) {
  const auto boxes = clean(kSmallLaw);
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].text, u"检测到文本类型为1，即其法条表示形如：\r\n第一条 …………\r\n第二条 …………\r\n"
                           u"如实际情况不是这样，请手工更改。"_qs);
  EXPECT_EQ(boxes[1].text, u"Ok，含有第一条至第三条。\r\n\r\n返回后请注意一下看是否本法条确实是三条。\r\n"
                           u"如果没什么问题，在进行归类后，就可以添加进入系统了。"_qs);
  EXPECT_EQ(w.view, u"示例法\r\n　　（2024年1月1日通过）\r\n　　第一章 总则\r\n　　第一条 为了示例，制定本法。\r\n"
                    u"　　第二条 本法适用于示例。\r\n　　【有效性】有效\r\n　　第三条 本法自公布之日起施行。\r\n　　\r\n　　"_qs);
  EXPECT_TRUE(w.checked);
  EXPECT_TRUE(w.enabled[2]);
  // The result is a law text the splitter reads.
  EXPECT_EQ(GetLawTextType(w.view), 1);
  EXPECT_EQ(LastItemNum(w.view), 3);
}

TEST_F(Wizard, StepTwoTellsTheTypesWithTheirNumbersSwappedAndCountsInNumerals) {
  auto boxes = clean(Lines({u"示例规定"_qs, u"一、甲。"_qs, u"二、乙。"_qs, u"三、丙。"_qs}));
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].text, u"检测到文本类型为3，即其法条表示形如：\r\n一、 …………\r\n二、 …………\r\n"
                           u"如实际情况不是这样，请手工更改。"_qs);
  EXPECT_TRUE(boxes[1].text.startsWith(u"Ok，含有第一条至第三条。"_qs));
  EXPECT_EQ(w.view, u"示例规定\r\n　　一、甲。\r\n　　二、乙。\r\n　　三、丙。\r\n　　\r\n　　"_qs);

  boxes = clean(Lines({u"示例办法"_qs, u"1．甲。"_qs, u"2．乙。"_qs}));
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].text, u"检测到文本类型为2，即其法条表示形如：\r\n1． …………\r\n2． …………\r\n"
                           u"如实际情况不是这样，请手工更改。"_qs);
  EXPECT_TRUE(boxes[1].text.startsWith(u"Ok，含有第一条至第二条。"_qs)) << "a numeral also for digits";
}

TEST_F(Wizard, ATextWithoutTypeMarkerIsRestored) {
  for (const QString& text : {Lines({u"散文"_qs, u"这是一段话，提到第二条。"_qs}),
                              Lines({u"示例办法"_qs, u"1.甲。"_qs, u"2.乙。"_qs}), QString()}) {
    const auto boxes = clean(text);
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].title, u"整理程序中断"_qs);
    EXPECT_EQ(boxes[0].text, u"没有文本类型标志符“第二条”，“2．”或“二、”请详细看一下刚才的说明或改一下本文本"_qs);
    EXPECT_EQ(w.view, text);
    EXPECT_FALSE(w.checked);
    EXPECT_FALSE(w.enabled[2]);
  }
}

TEST_F(Wizard, ArticleNumbersThatJumpEndTheCheckAtTheMissingOne) {
  const auto boxes = clean(Lines({u"示例法"_qs, u"第一条 甲。"_qs, u"第二条 乙。"_qs, u"第四条 丁。"_qs}));
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[1].text, u"共四条，第三条条有误"_qs);
  EXPECT_FALSE(w.checked);
  EXPECT_FALSE(w.enabled[2]);
  // The view keeps the cleaned text.
  EXPECT_EQ(w.view, u"示例法\r\n　　第一条 甲。\r\n　　第二条 乙。\r\n　　第四条 丁。\r\n　　\r\n　　"_qs);
}

TEST_F(Wizard, AGapAfterASuccessfulCheckLeavesTheFlagAsItWas) {
  clean(kSmallLaw);
  ASSERT_TRUE(w.checked);
  const auto boxes = clean(Lines({u"示例法"_qs, u"第一条 甲。"_qs, u"第二条 乙。"_qs, u"第四条 丁。"_qs}));
  EXPECT_EQ(boxes.last().text, u"共四条，第三条条有误"_qs);
  EXPECT_TRUE(w.checked);
  EXPECT_TRUE(w.enabled[2]);
}

TEST_F(Wizard, AHeadingGluedToASentenceIsOfferedForRepair) {
  const QString glued = Lines({u"示例法"_qs, u"第一条 甲。"_qs, u"第二条 乙。第三条 丙。"_qs, u"第四条 丁。"_qs});
  QList<std::pair<qsizetype, qsizetype>> selected;
  QString viewAtSelection;
  w.onSelect = [&](qsizetype start, qsizetype length) {
    selected.append({start, length});
    viewAtSelection = w.view;
  };
  te.boxes.answer(box::Ok);  // the type found
  te.boxes.answer(box::Yes);
  auto boxes = clean(glued);
  ASSERT_EQ(boxes.size(), 3);
  EXPECT_EQ(boxes[1].text, u"第三条有误，但该条头存在，要更改吗"_qs);
  EXPECT_EQ(box::buttonsOf(boxes[1].style), box::YesNo);
  EXPECT_TRUE(boxes[2].text.startsWith(u"Ok，含有第一条至第四条。"_qs));
  ASSERT_EQ(selected.size(), 1);
  EXPECT_EQ(viewAtSelection.mid(selected[0].first, selected[0].second), u"第三条"_qs);
  EXPECT_TRUE(w.checked);
  EXPECT_EQ(w.view, u"示例法\r\n　　第一条 甲。\r\n　　第二条 乙。\r\n　　第三条 丙。\r\n　　第四条 丁。\r\n　　\r\n　　"_qs);

  // No: the flag is cleared and the check ends.
  te.boxes.answer(box::Ok);
  te.boxes.answer(box::No);
  boxes = clean(glued);
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_FALSE(w.checked);
  EXPECT_FALSE(w.enabled[2]);
}

TEST_F(Wizard, ArticlesOutOfOrderAreQuestioned) {
  // 3 stands before 2: behind 2 there is no line starting with 第三条, but
  // the heading is in the text, so the user is asked.
  const QString text = Lines({u"示例法"_qs, u"第一条 甲。"_qs, u"第三条 丙。"_qs, u"第二条 乙。"_qs, u"第四条 丁。"_qs});
  te.boxes.answer(box::Ok);
  te.boxes.answer(box::No);
  auto boxes = clean(text);
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[1].text, u"第三条有误，但该条头存在，要更改吗"_qs);
  EXPECT_FALSE(w.checked);
  // Yes puts a line break before the heading, which stands at a line start
  // already, and the check goes on from there: the order is not repaired.
  te.boxes.answer(box::Ok);
  te.boxes.answer(box::Yes);
  boxes = clean(text);
  ASSERT_EQ(boxes.size(), 3);
  EXPECT_TRUE(boxes[2].text.startsWith(u"Ok，含有第一条至第四条。"_qs));
  EXPECT_EQ(w.view, u"示例法\r\n　　第一条 甲。\r\n　　第三条 丙。\r\n　　第二条 乙。\r\n　　第四条 丁。\r\n　　\r\n　　"_qs);
}

TEST_F(Wizard, ALastArticleWhoseNumeralIsUnknownIsNamed) {
  const auto boxes = clean(Lines({u"示例法"_qs, u"第一条 甲。"_qs, u"第二条 乙。"_qs, u"第一千零一十条 丙。"_qs}));
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[1].text, kNoLastArticleText);
  EXPECT_FALSE(w.checked);
}

TEST_F(Wizard, TheCheckStartsAboveAnAppendix) {
  const auto boxes = clean(Lines({u"示例法"_qs, u"第一条 甲。"_qs, u"第二条 乙。"_qs, u"附件"_qs,
                                  u"第九条 附件里的条文。"_qs}));
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_TRUE(boxes[1].text.startsWith(u"Ok，含有第一条至第二条。"_qs)) << boxes[1].text.toStdString();
}

TEST_F(Wizard, TheTableOfContentsGetsItsOwnLine) {
  // The joiner runs the title into 目录; the table of contents gets its line back.
  clean(Lines({u"示例法"_qs, u"目录"_qs, u"第一章 总则"_qs, u"第一章 总则"_qs, u"第一条 甲。"_qs, u"第二条 乙。"_qs}));
  EXPECT_EQ(w.view, u"示例法\r\n　　目录\r\n　　第一章 总则\r\n　　第一章 总则\r\n　　第一条 甲。\r\n"
                    u"　　第二条 乙。\r\n　　\r\n　　"_qs);
  EXPECT_EQ(GetLawTextType(w.view), 1);
}

// ---- Headings and their blank ---------------------------------------------------------

QString LiteralAddSpace(const QString& text, const QString& unit, int count) {
  QString t = text;
  for (int i = 1; i <= count; ++i) {
    const QString head = kCrLf + u"第"_qs + DaXie(i) + unit;
    t = ReplaceAll(t, head, head + u" "_qs);
  }
  return t;
}

TEST(AddSpace, OnlyTheFirstThirtyChaptersAndFifteenHundredArticlesGetTheirBlank) {
  EXPECT_EQ(AddSpace(u"\r\n第三十章甲\r\n第三十一章乙"_qs, u"章"_qs, 30), u"\r\n第三十章 甲\r\n第三十一章乙"_qs);
  EXPECT_EQ(AddSpace(u"\r\n第一千五百条甲\r\n第一千五百零一条乙"_qs, u"条"_qs, 1500),
            u"\r\n第一千五百条 甲\r\n第一千五百零一条乙"_qs);
  // Only at a line start, only the numeral exactly, never inside a sentence.
  EXPECT_EQ(AddSpace(u"第一条甲\r\n依第二条\r\n第十一条乙\r\n第十条之一丙"_qs, u"条"_qs, 1500),
            u"第一条甲\r\n依第二条\r\n第十一条 乙\r\n第十条 之一丙"_qs);
}

TEST(AddSpace, GivesWhatTheReplacementsOneByOneGive) {
  std::mt19937 rng(3);
  const QStringList units = {u"章"_qs, u"编"_qs, u"节"_qs, u"条"_qs};
  for (int round = 0; round < 40; ++round) {
    QString t;
    for (int k = 0; k < 60; ++k) {
      const int n = static_cast<int>(rng() % 1700);
      t += (rng() % 4 ? kCrLf : QString()) + u"第"_qs + (rng() % 10 ? DaXie(n) : u"一千零一十"_qs) +
           units[rng() % units.size()] + (rng() % 3 ? u"甲"_qs : u" 乙"_qs);
    }
    for (const QString& u : units)
      for (int count : {30, 1500}) ASSERT_EQ(AddSpace(t, u, count), LiteralAddSpace(t, u, count));
  }
}

TEST(FormatHeads, BlanksGoAndHeadingsAndMarksGetTheirPlaces) {
  EXPECT_EQ(FormatHeads(u"示例法 【有效性】有效第一编　总则\r\n第一章 甲\r\n第一节 乙\r\n第一条 丙"_qs),
            u"示例法\r\n【有效性】有效\r\n第一编 总则\r\n第一章 甲\r\n第一节 乙\r\n第一条 丙"_qs);
  EXPECT_EQ(FormatHeads(u"【注】甲"_qs), u"【注】甲"_qs) << "a leading line end goes";
}

// ---- Classifying -----------------------------------------------------------------------

TEST_F(Wizard, StepThreeShowsTheControlsAndAddIsEnabledOnlyForAFullClassification) {
  clean(kSmallLaw);
  w.classify();
  EXPECT_TRUE(w.classifyVisible);
  EXPECT_EQ(w.title, u"《》"_qs);
  EXPECT_FALSE(w.enabled[2]);
  EXPECT_FALSE(w.enabled[3]);
  w.setCombo(1, PaperChoices()[1]);
  w.setCombo(2, LetterChoices()[25]);
  EXPECT_FALSE(w.enabled[3]);
  w.setCombo(3, ClassChoices()[6]);
  EXPECT_FALSE(w.enabled[3]) << "the title is still 《》";
  for (const QString& bad : {u"丙法"_qs, u"《丙法"_qs, u"丙法》"_qs, u"《》"_qs, u"《丙法》 "_qs}) {
    w.setTitle(bad);
    EXPECT_FALSE(w.enabled[3]) << bad.toStdString();
  }
  w.setTitle(u"《丙法》"_qs);
  EXPECT_TRUE(w.enabled[3]);
  w.setCombo(2, QString());
  EXPECT_FALSE(w.enabled[3]);
}

TEST(Classification, ChoicesAndTheKeysReadFromThem) {
  EXPECT_EQ(PaperChoices(), (QStringList{u"属试卷一相关法律、法规"_qs, u"属试卷二相关法律、法规"_qs,
                                         u"属试卷三相关法律、法规"_qs}));
  ASSERT_EQ(LetterChoices().size(), 26);
  EXPECT_EQ(LetterChoices()[0], u"属以字母A开头的法律、法规"_qs);
  EXPECT_EQ(LetterChoices()[25], u"属以字母Z开头的法律、法规"_qs);
  EXPECT_EQ(ClassChoices().size(), 8);
  EXPECT_EQ(PaperGroupKey(PaperChoices()[2]), u"试卷三相关法律、法规"_qs);
  EXPECT_EQ(ClassGroupKey(ClassChoices()[1]), u"民法"_qs);
  EXPECT_EQ(ClassGroupKey(ClassChoices()[6]), u"国际（经济）法"_qs);
  EXPECT_EQ(LetterKey(LetterChoices()[2]), u"C"_qs);
}

// ---- The letter tree ----------------------------------------------------------------

TEST(FirstOkLine, TheFileLineOfTheFirstLawOfThatLetterOrALaterOne) {
  const QString tree = u"FILE=\"\\lawtxt\\甲.mmd\"\r\nA 《甲》\r\nfile=\"\\LAWTXT\\丙.mmd\"\r\nC 《丙》\r\n"_qs;
  EXPECT_EQ(FirstOkLine(tree, u"A"_qs), u"FILE=\"\\lawtxt\\甲.mmd\"\r\n"_qs);
  EXPECT_EQ(FirstOkLine(tree, u"B"_qs), u"file=\"\\LAWTXT\\丙.mmd\"\r\n"_qs) << "any letter case";
  EXPECT_EQ(FirstOkLine(tree, u"D"_qs), QString());
  EXPECT_EQ(FirstOkLine(tree, u"Z"_qs), QString());
}

TEST(FirstOkLine, ALawLineWithoutAFileLineOfItsOwnIsItself) {
  const QString tree = u"FILE=\"\\lawtxt\\甲.mmd\"\r\nA 《甲》\r\nB 《乙》\r\n"_qs;
  EXPECT_EQ(FirstOkLine(tree, u"B"_qs), u"B 《乙》\r\n"_qs);
  // A tree that begins with a law line has nothing before it: no mark.
  EXPECT_EQ(FirstOkLine(u"A 《甲》\r\n"_qs, u"A"_qs), QString());
}

TEST(AddToLetterTree, BeforeTheFirstLawOfTheLetterOrAtTheEnd) {
  const QString tree = u"FILE=\"\\lawtxt\\甲.mmd\"\r\nA 《甲》\r\nFILE=\"\\lawtxt\\丙.mmd\"\r\nC 《丙》\r\n"_qs;
  EXPECT_EQ(AddToLetterTree(tree, u"B"_qs, u"乙"_qs, u"《乙》"_qs),
            u"FILE=\"\\lawtxt\\甲.mmd\"\r\nA 《甲》\r\nFile=\"\\lawtxt\\乙.mmd\"\r\nB 《乙》\r\n"
            u"FILE=\"\\lawtxt\\丙.mmd\"\r\nC 《丙》\r\n"_qs);
  // Z with no law under it yet: at the end.
  EXPECT_EQ(AddToLetterTree(tree, u"Z"_qs, u"字"_qs, u"《字》"_qs),
            tree + u"File=\"\\lawtxt\\字.mmd\"\r\nZ 《字》\r\n"_qs);
  // Double line ends collapse.
  EXPECT_EQ(AddToLetterTree(u"FILE=\"\\lawtxt\\甲.mmd\"\r\nA 《甲》\r\n\r\n"_qs, u"Z"_qs, u"字"_qs, u"《字》"_qs),
            u"FILE=\"\\lawtxt\\甲.mmd\"\r\nA 《甲》\r\nFile=\"\\lawtxt\\字.mmd\"\r\nZ 《字》\r\n"_qs);
}

TEST(AddToGroupTree, UnderEveryLineOfTheGroup) {
  EXPECT_EQ(AddToGroupTree(u"x\r\n民法\r\n    《甲》\r\n"_qs, u"民法"_qs, u"乙"_qs, u"《乙》"_qs),
            u"x\r\n民法\r\nFile=\"\\lawtxt\\乙.mmd\"\r\n    《乙》\r\n    《甲》\r\n"_qs);
  EXPECT_EQ(AddToGroupTree(u"刑法\r\n"_qs, u"民法"_qs, u"乙"_qs, u"《乙》"_qs), u"刑法\r\n"_qs) << "no such group";
}

// ---- Adding ------------------------------------------------------------------------------

TEST_F(Wizard, StepFourWritesTheLawAndEntersItIntoTheThreeTrees) {
  clean(kSmallLaw);
  classifyAs(u"《丙法》"_qs, 1, 1, 6);
  te.boxes.answer(box::Yes);
  ASSERT_TRUE(w.add());
  const auto boxes = te.boxes.take();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].title, u"请你确认"_qs);
  EXPECT_EQ(boxes[0].text, u"根据你所选的归类，本法律：\r\n1、属试卷二相关法律、法规\r\n2、属以字母B开头的法律、法规\r\n"
                           u"3、属国际（经济）法类法律、法规\r\n名称为:《丙法》\r\n你现在确定按此设置将该文本加入系统吗？"_qs);
  EXPECT_EQ(box::buttonsOf(boxes[0].style), box::YesNo);
  EXPECT_EQ(boxes[1].title, u"完成"_qs);
  EXPECT_EQ(boxes[1].text, u"　　添加顺利完成，你可以从法律查询界面来看一下效果了。\r\n"
                           u"但请注意，新添加的法律/法规不能从法条到试题，只可以从试题到法条。"_qs);
  EXPECT_EQ(w.addedTitle, u"《丙法》"_qs);

  QFile law(te.path(u"\\lawtxt\\丙法.mmd"_qs));
  ASSERT_TRUE(law.open(QIODevice::ReadOnly));
  EXPECT_EQ(law.readAll(), ToGbk(w.view));
  EXPECT_EQ(te.readGbk(u"\\ini\\shijuan.mmd"_qs),
            u"FILE=\"\\lawtxt\\甲法.mmd\"\r\n试卷一相关法律、法规\r\nFILE=\"\\lawtxt\\甲法.mmd\"\r\n    《甲法》\r\n"
            u"FILE=\"\\lawtxt\\乙法.mmd\"\r\n试卷二相关法律、法规\r\nFile=\"\\lawtxt\\丙法.mmd\"\r\n    《丙法》\r\n"
            u"FILE=\"\\lawtxt\\乙法.mmd\"\r\n    《乙法》\r\n"_qs);
  EXPECT_EQ(te.readGbk(u"\\ini\\leibie.mmd"_qs),
            u"FILE=\"\\lawtxt\\甲法.mmd\"\r\n宪法\r\nFILE=\"\\lawtxt\\甲法.mmd\"\r\n    《甲法》\r\n"
            u"FILE=\"\\lawtxt\\乙法.mmd\"\r\n国际（经济）法\r\nFile=\"\\lawtxt\\丙法.mmd\"\r\n    《丙法》\r\n"
            u"FILE=\"\\lawtxt\\乙法.mmd\"\r\n    《乙法》\r\n"_qs);
  EXPECT_EQ(te.readGbk(u"\\ini\\zimu.mmd"_qs),
            u"File=\"\\lawtxt\\丙法.mmd\"\r\nB 《丙法》\r\nFILE=\"\\lawtxt\\甲法.mmd\"\r\nJ 《甲法》\r\n"
            u"FILE=\"\\lawtxt\\乙法.mmd\"\r\nY 《乙法》\r\n"_qs);
  // The law reads as any other.
  const LawTextPtr added = LoadLawByName(te.env, u"丙法"_qs);
  ASSERT_TRUE(added);
  EXPECT_EQ(added->lastItemNum(), 3);
}

TEST_F(Wizard, AnExistingLawIsNeverOverwritten) {
  te.writeGbk(u"\\lawtxt\\丙法.mmd"_qs, u"旧的丙法"_qs);
  clean(kSmallLaw);
  classifyAs(u"《丙法》"_qs);
  const auto before = files();
  EXPECT_FALSE(w.add());
  const auto boxes = te.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"请重来"_qs);
  EXPECT_EQ(boxes[0].text, u"文件"_qs + QDir::toNativeSeparators(te.path(u"\\lawtxt\\丙法.mmd"_qs)) +
                               u"已经存在，请重新命名该法律/法规的标题。"_qs);
  EXPECT_EQ(files(), before);
}

TEST_F(Wizard, NoChangesWithoutTheUsersYes) {
  clean(kSmallLaw);
  classifyAs(u"《丙法》"_qs);
  const auto before = files();
  te.boxes.answer(box::No);
  EXPECT_FALSE(w.add());
  EXPECT_EQ(te.boxes.take().size(), 1);
  EXPECT_EQ(files(), before);
}

TEST_F(Wizard, ATitleThatIsNoPlainFileNameIsRefused) {
  clean(kSmallLaw);
  const auto before = files();
  for (const QString& title : {u"《a\\b》"_qs, u"《a/b》"_qs, u"《..》"_qs, u"《../ini/x》"_qs, u"《C:法》"_qs,
                               u"《 丙法》"_qs, u"《丙《法》》"_qs, u"《丙?法》"_qs, u"《丙法.》"_qs}) {
    classifyAs(title);
    ASSERT_TRUE(w.enabled[3]) << title.toStdString();
    EXPECT_FALSE(w.add());
    const auto boxes = te.boxes.take();
    ASSERT_EQ(boxes.size(), 1) << title.toStdString();
    EXPECT_EQ(boxes[0].title, u"请重来"_qs);
    EXPECT_EQ(boxes[0].text, BadTitleText(title));
    EXPECT_EQ(files(), before) << title.toStdString();
  }
}

TEST_F(Wizard, ACharacterThatGbkCannotHoldIsNamedBeforeAnythingIsWritten) {
  clean(kSmallLaw);
  w.view.replace(u"示例。"_qs, u"示例\U0001F600。"_qs);
  classifyAs(u"《丙法》"_qs);
  const auto before = files();
  EXPECT_FALSE(w.add());
  const auto boxes = te.boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"文本中的字符“\U0001F600”不能按GBK编码保存，请先在下面的框中把它改掉，再添加进系统。"_qs);
  EXPECT_EQ(files(), before);
}

TEST_F(Wizard, MissingTreeFilesAndGroupsAreSkippedSilently) {
  QFile::remove(te.path(u"\\ini\\leibie.mmd"_qs));
  clean(kSmallLaw);
  classifyAs(u"《丙法》"_qs, 2, 2, 3);  // paper three and 刑法: neither group is in the trees
  te.boxes.answer(box::Yes);
  ASSERT_TRUE(w.add());
  EXPECT_EQ(te.boxes.take().size(), 2);
  EXPECT_FALSE(QFile::exists(te.path(u"\\ini\\leibie.mmd"_qs)));
  EXPECT_EQ(te.readGbk(u"\\ini\\shijuan.mmd"_qs), kPaperTree);
  EXPECT_TRUE(te.readGbk(u"\\ini\\zimu.mmd"_qs).startsWith(u"File=\"\\lawtxt\\丙法.mmd\"\r\nC 《丙法》\r\n"_qs));
}

TEST_F(Wizard, TheLawFolderIsMadeWhenMissing) {
  QDir(te.path(u"\\lawtxt"_qs)).removeRecursively();
  clean(kSmallLaw);
  classifyAs(u"《丙法》"_qs);
  te.boxes.answer(box::Yes);
  EXPECT_TRUE(w.add());
  EXPECT_TRUE(QFile::exists(te.path(u"\\lawtxt\\丙法.mmd"_qs)));
}

TEST_F(Wizard, BadInputOfEveryKindWritesNothingOutsideTheLawFolder) {
  const auto before = files();
  QDir().mkpath(te.root() + u"/in"_qs);
  QByteArray random(2048, '\0');
  QRandomGenerator rng(11);
  for (char& c : random) c = static_cast<char>(rng.bounded(256));
  for (const auto& [name, bytes] : QList<std::pair<QString, QByteArray>>{
           {u"random.txt"_qs, random}, {u"empty.txt"_qs, QByteArray()}, {u"huge.txt"_qs, QByteArray(20 << 20, 'x')}}) {
    QFile f(te.root() + u"/in/"_qs + name);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    f.close();
    w.view = u"旧文本"_qs;
    te.dialogs.answer(f.fileName());
    EXPECT_FALSE(w.open()) << name.toStdString();
    EXPECT_EQ(w.view, u"旧文本"_qs);
    EXPECT_EQ(te.boxes.take().size(), 1);
    f.remove();
  }
  // A text without any article heading.
  EXPECT_EQ(clean(u"只是一段文字。\r\n又一段。\r\n"_qs).size(), 1);
  EXPECT_FALSE(w.enabled[2]);
  QDir(te.root() + u"/in"_qs).removeRecursively();
  EXPECT_EQ(files(), before);
}

}  // namespace
}  // namespace mj
