#include "shell/LanguageFiles.h"
#include "shell/Settings.h"
#include "shell/widgets/LanguageChoice.h"
#include "support/TestFolder.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class LanguagePicker : public ::testing::Test {
protected:
    LanguagePicker() {
        SettingsFile = Folder.Path("Sonmira.ini");
        OverrideLanguageFolder(Folder.MakeFolder("Lang"));
    }
    ~LanguagePicker() override { OverrideLanguageFolder({}); }

    Form1& Open(const QList<QByteArray>& files) {
        for (const QByteArray& file : files) Folder.MakeFile("Lang/" + file);
        Picker = std::make_unique<Form1>(nullptr);
        Picker->show();
        QApplication::processEvents();
        return *Picker;
    }
    void ClickRow(int place) {
        QListWidget& list = *Picker->ListView1;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                          list.visualItemRect(list.item(place)).center());
    }
    QString Saved() { return ReadIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s); }
    // As the file holds it: with the blank that reading drops.
    QByteArray SavedLine() {
        const QByteArray content = ContentOf(Folder.Native("Sonmira.ini"));
        return content.mid(content.indexOf("VALUE")).trimmed();
    }

    TestFolder Folder;
    std::unique_ptr<Form1> Picker;
};

TEST_F(LanguagePicker, ListsTheFilesAndMarksEnglish) {
    Open({"Danish.lng", "English.lng", "French.lng", "NOT.LNG"});
    EXPECT_EQ(Picker->windowTitle(), u"Sonmira - Language"_s);
    ASSERT_EQ(Picker->ListView1->count(), 3);
    EXPECT_EQ(Picker->ListView1->item(0)->text(), u"Danish"_s);
    EXPECT_EQ(Picker->ListView1->item(0)->data(Qt::UserRole).toString(), u"Danish.lng"_s);
    EXPECT_EQ(Picker->ListView1->selectedItems(), QList{Picker->ListView1->item(1)});
}

TEST_F(LanguagePicker, IsInEnglishWhateverIsLoaded) {
    LanguageLines.Assign(QStringList(101, u"loaded"_s));
    Open({"French.lng"});
    LanguageLines.Assign({});
    EXPECT_EQ(Picker->windowTitle(), u"Sonmira - Language"_s);
    const auto labels = Picker->findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0]->text(), u"Select your language :"_s);
    EXPECT_TRUE(labels[0]->isVisible());
    EXPECT_EQ(Picker->Command1->text(), u"Ok"_s);
    EXPECT_TRUE(Picker->Command1->isVisible());
}

TEST_F(LanguagePicker, MarksNothingWhereNoFileIsEnglish) {
    Open({"english.lng", "French.lng"});
    EXPECT_TRUE(Picker->ListView1->selectedItems().isEmpty());
}

TEST_F(LanguagePicker, OneClickChoosesAndCloses) {
    Open({"English.lng", "French.lng", "German.lng"});
    ClickRow(2);
    EXPECT_FALSE(Picker->isVisible());
    EXPECT_EQ(SavedLine(), "VALUE= 2");
}

TEST_F(LanguagePicker, OkTakesTheMarkedRow) {
    Open({"Danish.lng", "English.lng"});
    QTest::mouseClick(Picker->Command1, Qt::LeftButton);
    EXPECT_FALSE(Picker->isVisible());
    EXPECT_EQ(Saved(), u"1"_s);
}

TEST_F(LanguagePicker, OkTakesTheFirstRowWhereNoneIsMarked) {
    Open({"Danish.lng", "French.lng"});
    QTest::mouseClick(Picker->Command1, Qt::LeftButton);
    EXPECT_EQ(SavedLine(), "VALUE= 0");
}

TEST_F(LanguagePicker, TheKeyboardChoosesToo) {
    Open({"English.lng", "French.lng"});
    QTest::keyClick(Picker->ListView1, Qt::Key_Down);
    QTest::keyClick(Picker->ListView1, Qt::Key_Return);
    EXPECT_FALSE(Picker->isVisible());
    EXPECT_EQ(Saved(), u"1"_s);
}

TEST_F(LanguagePicker, ClosingItSavesNothing) {
    Open({"English.lng", "French.lng"}).close();
    EXPECT_FALSE(NativeExists(Folder.Native("Sonmira.ini")));
}

TEST_F(LanguagePicker, AStrayEscapeDoesNotCloseIt) {
    Open({"English.lng", "French.lng"});
    QTest::keyClick(Picker.get(), Qt::Key_Escape);
    QTest::keyClick(Picker->ListView1, Qt::Key_Escape);
    EXPECT_TRUE(Picker->isVisible());
}

}  // namespace
}  // namespace Sonmira
