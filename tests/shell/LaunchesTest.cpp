#include "platform/ChildProcess.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "shell/LanguageFiles.h"
#include "shell/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Launches : public ::testing::Test {
protected:
    Launches() {
        SettingsFile = Folder.Path("Sonmira.ini");
        DesktopLauncher() = [this](const QString& target, const QString& folder) {
            Opened.append(target);
            Folders.append(folder);
            return Taken;
        };
    }
    ~Launches() override {
        DesktopLauncher() = Real;
        LanguageLines.Assign({});
    }

    void SaveLanguage(const QString& place) { WriteIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s, place); }
    // A language file of that marker is loaded.
    void LoadMarker(const QString& marker) {
        QStringList lines(101, u"-"_s);
        lines[93] = marker;
        LanguageLines.Assign(lines);
    }
    // What was opened, less the host.
    QString Page() const {
        return Opened.isEmpty() ? QString() : QString(Opened.last()).remove(u"https://sonmira.example"_s);
    }

    const std::function<bool(const QString&, const QString&)> Real = DesktopLauncher();
    TestFolder Folder;
    QStringList Opened;
    QStringList Folders;
    bool Taken = true;
};

TEST_F(Launches, HelpIsTheDocumentBesideTheProgram) {
    OpenHelp();
    EXPECT_EQ(Opened, QStringList{ProgramFolder() + u"\\Sonmira.chm"_s});
    EXPECT_EQ(Folders, QStringList{ProgramFolder()});
}

TEST_F(Launches, QuestionsGoByTheSavedPlaceInTheMenu) {
    SaveLanguage(u" 1"_s);
    OpenQuestions();
    EXPECT_EQ(Page(), u"/FAQ/FAQ_Sonmira.htm"_s);
    SaveLanguage(u" 0"_s);
    OpenQuestions();
    EXPECT_EQ(Page(), u"/FAQ/FAQ_SonmiraEn.htm"_s);
    SaveLanguage(u" 11"_s);
    OpenQuestions();
    EXPECT_EQ(Page(), u"/FAQ/FAQ_SonmiraEn.htm"_s);
}

TEST_F(Launches, QuestionsFailWhereNoLanguageIsSaved) {
    for (const QString& place : {QString(), u"one"_s}) {
        SaveLanguage(place);
        try {
            OpenQuestions();
            ADD_FAILURE();
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Number, FailureNumber::TypeMismatch);
        }
    }
    EXPECT_TRUE(Opened.isEmpty());
}

TEST_F(Launches, TheHomePageGoesByTheLoadedFile) {
    LoadMarker(u"Français"_s);
    OpenHomePage();
    EXPECT_EQ(Page(), u"/"_s);
    LoadMarker(u"français"_s);
    OpenHomePage();
    EXPECT_EQ(Page(), u"/indexEn.html"_s);
}

TEST_F(Launches, TheTwoLanguageTestsMayDisagree) {
    SaveLanguage(u" 1"_s);
    LoadMarker(u"English"_s);
    OpenQuestions();
    EXPECT_EQ(Page(), u"/FAQ/FAQ_Sonmira.htm"_s);
    OpenHomePage();
    EXPECT_EQ(Page(), u"/indexEn.html"_s);
}

TEST_F(Launches, TheHomePageFailsWhereNoLanguageIsLoaded) {
    LanguageLines.Assign({});
    try {
        OpenHomePage();
        ADD_FAILURE();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number, FailureNumber::SubscriptOutOfRange);
    }
}

TEST_F(Launches, WhatNothingTakesIsPassedOver) {
    Taken = false;
    EXPECT_NO_THROW(OpenHelp());
    EXPECT_FALSE(ShellOpen(u"\\none"_s, QString(), true));
}

TEST_F(Launches, TheEncoderHasAPageAndADownload) {
    EXPECT_EQ(EncoderPage(), u"https://sonmira.example/lame_encoder_download.htm"_s);
    EXPECT_EQ(EncoderDownload(), u"https://sonmira.example/download_soft.php?d=5197&s=22"_s);
}

}  // namespace
}  // namespace Sonmira
