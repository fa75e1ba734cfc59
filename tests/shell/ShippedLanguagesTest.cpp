#include "shell/LanguageFiles.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype LineCount = 102;

// The languages that the program comes with, in the order of the menu.
const QStringList Names = {u"English"_s,    u"French"_s,  u"German"_s,    u"Italian"_s,
                           u"Portuguese"_s, u"Spanish"_s, u"US English"_s};

QStringList LinesOf(const QString& name) {
    const QByteArray file = QByteArray(SONMIRA_LANG) + '/' + name.toUtf8() + ".lng";
    QStringList lines = QString::fromUtf8(ContentOf(file)).split(u'\n');
    EXPECT_TRUE(lines.last().isEmpty()) << "a line break ends the file " << name.toStdString();
    lines.removeLast();
    return lines;
}

// Lines whose word is the same in that language as in English.
const std::map<QString, std::set<qsizetype>> SameWords = {{u"French"_s, {67, 82}},
                                                          {u"German"_s, {32, 33, 35, 40, 59, 82, 83}},
                                                          {u"Italian"_s, {0, 32, 35, 40, 52, 59, 82, 83}},
                                                          {u"Portuguese"_s, {35, 40, 82}},
                                                          {u"Spanish"_s, {35, 40, 52, 79, 82}}};

TEST(ShippedLanguages, StandInTheMenuInTheirOrder) {
    TestFolder folder;
    for (const QString& name : Names) folder.MakeFile(name.toUtf8() + ".lng");
    OverrideLanguageFolder(folder.Path());
    QStringList captions;
    for (const LanguageFile& file : FindLanguageFiles()) captions.append(file.Caption);
    OverrideLanguageFolder({});
    EXPECT_EQ(captions, Names);
}

TEST(ShippedLanguages, HaveEveryLine) {
    for (const QString& name : Names) {
        const QStringList lines = LinesOf(name);
        EXPECT_EQ(lines.size(), LineCount) << name.toStdString();
        for (qsizetype n = 0; n < lines.size(); ++n) {
            EXPECT_FALSE(lines[n].trimmed().isEmpty()) << name.toStdString() << " line " << n;
            EXPECT_FALSE(lines[n].contains(u'\uFFFD')) << name.toStdString() << " line " << n;
        }
    }
}

TEST(ShippedLanguages, LeaveNothingInEnglishByAccident) {
    const QStringList english = LinesOf(u"English"_s);
    for (const auto& [name, same] : SameWords) {
        const QStringList lines = LinesOf(name);
        ASSERT_EQ(lines.size(), english.size());
        for (qsizetype n = 0; n < lines.size(); ++n) {
            EXPECT_EQ(lines[n] == english[n], same.contains(n))
                << name.toStdString() << " line " << n << ": " << lines[n].toStdString();
        }
    }
}

TEST(ShippedLanguages, SayWhichTheyAre) {
    EXPECT_EQ(LinesOf(u"French"_s)[93], u"Français"_s) << "the home page goes by it";
    std::set<QString> markers;
    for (const QString& name : Names) markers.insert(LinesOf(name)[93]);
    EXPECT_EQ(markers.size(), std::size(Names));
}

// What stands in the windows before any file is loaded. English says the same, so that it changes nothing.
const std::map<qsizetype, QString> DesignTexts = {{0, u"File"_s},
                                                  {1, u"Add a file"_s},
                                                  {2, u"Close"_s},
                                                  {3, u"Option"_s},
                                                  {4, u"Language"_s},
                                                  {6, u"acceptWma"_s},
                                                  {7, u"Information"_s},
                                                  {8, u"Homepage"_s},
                                                  {9, u"About"_s},
                                                  {10, u"Files to convert :"_s},
                                                  {11, u"Files:"_s},
                                                  {12, u"new"_s},
                                                  {13, u"Output configuration :"_s},
                                                  {14, u"Save in the original's directory"_s},
                                                  {15, u"- Output path :"_s},
                                                  {16, u"- Output format :"_s},
                                                  {17, u"- Format parameter :"_s},
                                                  {19, u"Conversion information :"_s},
                                                  {22, u"Cancel"_s},
                                                  {23, u"Convert All"_s},
                                                  {25, u"Remove from list"_s},
                                                  {28, u"Audio Information"_s},
                                                  {29, u"Tag Version"_s},
                                                  {30, u"Title:"_s},
                                                  {31, u"Artists:"_s},
                                                  {32, u"Album:"_s},
                                                  {33, u"Genre:"_s},
                                                  {34, u"Genre (String):"_s},
                                                  {35, u"Copyright:"_s},
                                                  {36, u"Year:"_s},
                                                  {37, u"Track:"_s},
                                                  {38, u"Comment:"_s},
                                                  {39, u"Composer:"_s},
                                                  {40, u"URL:"_s},
                                                  {41, u"Encoded By:"_s},
                                                  {42, u"OriginalArtist:"_s},
                                                  {43, u"Save"_s},
                                                  {49, u"Help"_s},
                                                  {55, u"Add a directory"_s},
                                                  {56, u"Remove original file after conversion"_s},
                                                  {57, u"Directory :"_s},
                                                  {58, u"Directories:"_s},
                                                  {60, u"Duration:"_s},
                                                  {63, u"Cancel the conversion of this file"_s},
                                                  {64, u"Convert Selection"_s},
                                                  {65, u"Play this file"_s},
                                                  {67, u"Action"_s},
                                                  {71, u"Tag in memory :"_s},
                                                  {72, u"Open Directory"_s}};

TEST(ShippedLanguages, KeepTheDesignTextsInEnglish) {
    const QStringList english = LinesOf(u"English"_s);
    ASSERT_EQ(DesignTexts.size(), 49U);
    for (const auto& [line, text] : DesignTexts) EXPECT_EQ(english[line], text) << "line " << line;
}

TEST(ShippedLanguages, KeepTheToolTipsOfTheTagPageInEnglish) {
    EXPECT_EQ(LinesOf(u"English"_s).mid(68, 3),
              (QStringList{u"Copy Tag Information"_s, u"Paste Tag Information"_s, u"Show Tag in memory"_s}));
}

}  // namespace
}  // namespace Sonmira
