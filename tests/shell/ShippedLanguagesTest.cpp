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

TEST(ShippedLanguages, KeepTheDesignTextsInEnglish) {
    const QStringList english = LinesOf(u"English"_s);
    const std::map<qsizetype, QString> design = {{0, u"File"_s},
                                                 {2, u"Close"_s},
                                                 {14, u"Save in the original's directory"_s},
                                                 {23, u"Convert All"_s},
                                                 {41, u"Encoded By:"_s},
                                                 {56, u"Remove original file after conversion"_s},
                                                 {63, u"Cancel the conversion of this file"_s},
                                                 {72, u"Open Directory"_s}};
    for (const auto& [line, text] : design) EXPECT_EQ(english[line], text);
}

}  // namespace
}  // namespace Sonmira
