// Qt's own dialogs speak Chinese: the test programs load the translation as
// the program does (test_main.cpp), so these texts are what a user sees.
#include <gtest/gtest.h>

#include <QAction>
#include <QColorDialog>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <memory>

#include "platform/qt_translations.h"
#include "support/window_checks.h"

namespace {

QStringList buttonTexts(const QWidget* w) {
  QStringList texts;
  for (const QPushButton* b : w->findChildren<QPushButton*>())
    if (!b->text().isEmpty()) texts << b->text();
  return texts;
}

}  // namespace

TEST(QtTranslations, StandardTextsAreChinese) {
  EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Look in:"), QStringLiteral("查找范围："));
  EXPECT_EQ(QCoreApplication::translate("QColorDialog", "Select Color"), QStringLiteral("选择颜色"));
  EXPECT_EQ(QCoreApplication::translate("QFontDialog", "Select Font"), QStringLiteral("选择字体"));
  EXPECT_EQ(QLocale().language(), QLocale::Chinese);
  QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  EXPECT_EQ(box.button(QDialogButtonBox::Ok)->text(), QStringLiteral("确定"));
  EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text(), QStringLiteral("取消"));
}

TEST(QtTranslations, ContextMenuOfATextBoxIsChinese) {
  QLineEdit edit(QStringLiteral("刑法第一条"));
  std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
  QStringList texts;
  for (QAction* a : menu->actions())
    if (!a->isSeparator()) texts << a->text().section(u'\t', 0, 0);
  EXPECT_TRUE(texts.contains(QStringLiteral("复制(&C)"))) << texts.join(u' ').toStdString();
  EXPECT_TRUE(texts.contains(QStringLiteral("粘贴(&P)"))) << texts.join(u' ').toStdString();
  EXPECT_TRUE(texts.contains(QStringLiteral("全选"))) << texts.join(u' ').toStdString();
}

// The dialogs the settings and the law query open, as the user sees them.
TEST(QtTranslations, ColourDialogIsChinese) {
  QColorDialog dlg;
  dlg.setOption(QColorDialog::DontUseNativeDialog);
  const QStringList texts = buttonTexts(&dlg);
  EXPECT_TRUE(texts.contains(QStringLiteral("确定"))) << texts.join(u' ').toStdString();
  EXPECT_TRUE(texts.contains(QStringLiteral("取消")));
  EXPECT_TRUE(texts.contains(QStringLiteral("添加到自定义颜色(&A)"))) << texts.join(u' ').toStdString();
  mj::test::CheckOnScreens(&dlg, QStringLiteral("colour_dialog"));
}

TEST(QtTranslations, FontDialogIsChinese) {
  QFontDialog dlg;
  dlg.setOption(QFontDialog::DontUseNativeDialog);
  QStringList labels;
  for (const QLabel* l : dlg.findChildren<QLabel*>()) labels << l->text();
  EXPECT_TRUE(labels.contains(QStringLiteral("字体(&F)"))) << labels.join(u' ').toStdString();
  EXPECT_TRUE(buttonTexts(&dlg).contains(QStringLiteral("取消")));
  mj::test::CheckOnScreens(&dlg, QStringLiteral("font_dialog"));
}

TEST(QtTranslations, FileDialogIsChinese) {
  QTemporaryDir dir;
  QFileDialog dlg(nullptr, QStringLiteral("打开格式文书文件"), dir.path(), QStringLiteral("所有文件 (*)"));
  dlg.setOption(QFileDialog::DontUseNativeDialog);
  QStringList labels;
  for (const QLabel* l : dlg.findChildren<QLabel*>()) labels << l->text();
  EXPECT_TRUE(labels.contains(QStringLiteral("查找范围："))) << labels.join(u' ').toStdString();
  EXPECT_TRUE(buttonTexts(&dlg).contains(QStringLiteral("打开(&O)"))) << buttonTexts(&dlg).join(u' ').toStdString();
  mj::test::CheckOnScreens(&dlg, QStringLiteral("file_dialog"));
}
