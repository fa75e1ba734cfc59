#include "platform/Folders.h"
#include "shell/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST(Settings, LieInAFolderOfTheirOwnThatIsMade) {
    const TestFolder folder;
    setenv("XDG_CONFIG_HOME", folder.Native().constData(), 1);
    LocateSettingsFile();
    EXPECT_EQ(SettingsFolder, folder.Path("SonmiraPack") + u'\\');
    EXPECT_EQ(SettingsFile, folder.Path("SonmiraPack/Sonmira.ini"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Native("SonmiraPack").toStdString()));
    EXPECT_FALSE(NativeExists(folder.Native("SonmiraPack/Sonmira.ini")));
}

TEST(Settings, AreFoundAgainWhereTheyAre) {
    const TestFolder folder;
    setenv("XDG_CONFIG_HOME", folder.Native().constData(), 1);
    folder.MakeFile("SonmiraPack/Sonmira.ini", "[LAUNCH]\nVALUE=True\n");
    LocateSettingsFile();
    EXPECT_EQ(ReadIniValue(SettingsFile, u"LAUNCH"_s, u"VALUE"_s), u"True"_s);
}

TEST(Settings, LieBesideTheProgramWhereThereIsNoApplicationDataFolder) {
    const TestFolder folder;
    setenv("XDG_CONFIG_HOME", folder.Native("none").constData(), 1);
    LocateSettingsFile();
    EXPECT_EQ(SettingsFolder, ProgramFolder() + u'\\');
    EXPECT_EQ(SettingsFile, ProgramFolder() + u"\\Sonmira.ini"_s);
    EXPECT_FALSE(NativeExists(folder.Native("none")));
}

TEST(Settings, AFolderThatCannotBeMadeLosesWritesWithoutAWord) {
    const TestFolder folder;
    setenv("XDG_CONFIG_HOME", folder.Native().constData(), 1);
    std::filesystem::create_symlink("none/none", folder.Native("SonmiraPack").toStdString());
    LocateSettingsFile();
    EXPECT_EQ(SettingsFile, folder.Path("SonmiraPack/Sonmira.ini"));
    EXPECT_NO_THROW(WriteIniValue(SettingsFile, u"S"_s, u"k"_s, u"1"_s));
    EXPECT_EQ(ReadIniValue(SettingsFile, u"S"_s, u"k"_s), QString());
}

TEST(Settings, AValueIsInTheFileAtOnce) {
    const TestFolder folder;
    const QString file = folder.Path("a.ini");
    WriteIniValue(file, u"LANGUE"_s, u"VALUE"_s, u" 6"_s);
    EXPECT_EQ(ContentOf(folder.Native("a.ini")), "[LANGUE]\nVALUE= 6\n");
    WriteIniValue(file, u"LANGUE"_s, u"VALUE"_s, u" 7"_s);
    EXPECT_EQ(ContentOf(folder.Native("a.ini")), "[LANGUE]\nVALUE= 7\n");
}

TEST(Settings, AChangeByAnotherHandIsSeenAtOnce) {
    const TestFolder folder;
    const QString file = folder.MakeFile("a.ini", "[MPC]\nQuality=5\n");
    EXPECT_EQ(ReadIniValue(file, u"MPC"_s, u"Quality"_s), u"5"_s);
    folder.MakeFile("a.ini", "[MPC]\nQuality=9\n");
    EXPECT_EQ(ReadIniValue(file, u"MPC"_s, u"Quality"_s), u"9"_s);
}

TEST(Settings, AMissingAndAnEmptyValueReadAlike) {
    const TestFolder folder;
    const QString file = folder.MakeFile("a.ini", "[S]\nempty=\n");
    EXPECT_EQ(ReadIniValue(file, u"S"_s, u"empty"_s), QString());
    EXPECT_EQ(ReadIniValue(file, u"S"_s, u"none"_s), QString());
    EXPECT_EQ(ReadIniValue(folder.Path("none.ini"), u"S"_s, u"k"_s), QString());
}

TEST(Settings, ALongValueComesBackCut) {
    const TestFolder folder;
    const QString file = folder.Path("a.ini");
    // By its characters, whatever they take in the file.
    for (const QChar letter : {u'x', u'\u65e5'}) {
        WriteIniValue(file, u"S"_s, u"k"_s, QString(255, letter));
        EXPECT_EQ(ReadIniValue(file, u"S"_s, u"k"_s), QString(254, letter));
        EXPECT_TRUE(ContentOf(folder.Native("a.ini")).contains(QString(255, letter).toUtf8()));
    }
}

}  // namespace
}  // namespace Sonmira
