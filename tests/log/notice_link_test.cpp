// Notice links come from a file downloaded from the network: only web
// addresses and help documents of the program may be opened.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "log/news.h"
#include "support/test_env.h"

using namespace mj;

TEST(NoticeLink, WebAddressesAreOpened) {
  test::TestEnv t;
  EXPECT_EQ(NoticeLinkTarget(t.env, u"http://mingjing.example.org/a.htm"_qs), u"http://mingjing.example.org/a.htm"_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"https://mingjing.example.org/"_qs), u"https://mingjing.example.org/"_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"HTTPS://Example.org/x?a=1&b=2"_qs), u"HTTPS://Example.org/x?a=1&b=2"_qs);
  // Blanks around the value are no part of it.
  EXPECT_EQ(NoticeLinkTarget(t.env, u" https://example.org/ "_qs), u"https://example.org/"_qs);
}

TEST(NoticeLink, OtherSchemesAreNotOpened) {
  test::TestEnv t;
  for (const QString& link : {u"mailto:someone@example.org"_qs, u"file:///bin/sh"_qs, u"file:///etc/passwd"_qs,
                              u"javascript:alert(1)"_qs, u"ftp://example.org/x"_qs, u"http:"_qs, u"https://"_qs,
                              u"http:///bin/sh"_qs, u"news:comp.lang"_qs, u"xdg-open"_qs})
    EXPECT_EQ(NoticeLinkTarget(t.env, link), u""_qs) << link.toStdString();
}

TEST(NoticeLink, ProgramsAndPathsOutsideReadmeAreNotOpened) {
  test::TestEnv t;
  t.writeGbk(u"\\readme\\autonewer.htm"_qs, u"<html></html>"_qs);
  t.writeGbk(u"\\readme\\start.desktop"_qs, u"[Desktop Entry]\r\nExec=sh\r\n"_qs);
  t.writeGbk(u"\\readme\\run.sh"_qs, u"#!/bin/sh\r\n"_qs);
  t.writeGbk(u"\\lmdata"_qs, u"#!/bin/sh\r\n"_qs);
  t.writeGbk(u"\\ini\\x.htm"_qs, u"<html></html>"_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\start.desktop"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\run.sh"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\lmdata"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\ini\\x.htm"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\..\\ini\\x.htm"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\..\\lmdata"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\missing.htm"_qs), u""_qs);
  // Relative paths would be taken from wherever the desktop stands.
  EXPECT_EQ(NoticeLinkTarget(t.env, u"readme\\autonewer.htm"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"..\\..\\bin\\sh"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"lmdata"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"/bin/sh"_qs), u""_qs);
  EXPECT_EQ(NoticeLinkTarget(t.env, t.path(u"\\readme\\autonewer.htm"_qs)), u""_qs);
  // A link inside readme that leads elsewhere.
  ASSERT_TRUE(QFile::link(t.path(u"\\ini\\x.htm"_qs), t.path(u"\\readme\\away.htm"_qs)));
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\away.htm"_qs), u""_qs);
}

TEST(NoticeLink, HelpDocumentsOfTheProgramAreOpened) {
  test::TestEnv t;
  t.writeGbk(u"\\readme\\autonewer.htm"_qs, u"<html></html>"_qs);
  t.writeGbk(u"\\readme\\sub\\notes.txt"_qs, u"x"_qs);
  const QString page = QFileInfo(t.path(u"\\readme\\autonewer.htm"_qs)).canonicalFilePath();
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\autonewer.htm"_qs), page);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"/readme/autonewer.htm"_qs), page);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\README\\AUTONEWER.HTM"_qs), page);
  EXPECT_EQ(NoticeLinkTarget(t.env, u"\\readme\\sub\\notes.txt"_qs),
            QFileInfo(t.path(u"\\readme\\sub\\notes.txt"_qs)).canonicalFilePath());
}
