#include "platform/Folders.h"
#include "platform/Paths.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Each test runs in a process of its own, so that a changed environment is nobody else's.
void SetEnvironment(const char* name, const QByteArray& value) {
    setenv(name, value.constData(), 1);
}

TEST(Folders, TheProgramFolderIsTheOneOfThisProgram) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(ToNative(ProgramFolder()).toStdString(), program.parent_path().string());
}

TEST(Folders, ApplicationDataIsWhereTheUserPutIt) {
    const TestFolder folder;
    SetEnvironment("XDG_CONFIG_HOME", folder.Native());
    EXPECT_EQ(ApplicationDataFolder(), folder.Path());
    SetEnvironment("XDG_CONFIG_HOME", folder.Native() + "//");
    EXPECT_EQ(ApplicationDataFolder(), folder.Path());
}

TEST(Folders, ApplicationDataThatIsSetButMissingIsNotMade) {
    const TestFolder folder;
    SetEnvironment("HOME", folder.Native());
    SetEnvironment("XDG_CONFIG_HOME", folder.Native("none"));
    EXPECT_EQ(ApplicationDataFolder(), QString());
    folder.MakeFile("file");
    SetEnvironment("XDG_CONFIG_HOME", folder.Native("file"));
    EXPECT_EQ(ApplicationDataFolder(), QString());
    SetEnvironment("XDG_CONFIG_HOME", "tests");
    EXPECT_EQ(ApplicationDataFolder(), QString());
    EXPECT_FALSE(NativeExists(folder.Native("none")));
    EXPECT_FALSE(NativeExists(folder.Native(".config")));
}

TEST(Folders, ApplicationDataIsMadeInTheHomeFolderForNobodyElse) {
    const TestFolder folder;
    SetEnvironment("HOME", folder.Native() + "/");
    for (const bool isSet : {true, false}) {
        if (isSet) {
            SetEnvironment("XDG_CONFIG_HOME", "");
        } else {
            unsetenv("XDG_CONFIG_HOME");
        }
        EXPECT_EQ(ApplicationDataFolder(), folder.Path(".config"));
    }
    struct stat status {};
    ASSERT_EQ(stat(folder.Native(".config").constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST(Folders, ThereIsNoApplicationDataWithoutAHome) {
    const TestFolder folder;
    unsetenv("XDG_CONFIG_HOME");
    SetEnvironment("HOME", folder.Native("none"));
    EXPECT_EQ(ApplicationDataFolder(), QString());
    unsetenv("HOME");
    EXPECT_EQ(ApplicationDataFolder(), QString());
}

class DesktopFolderTest : public ::testing::Test {
protected:
    DesktopFolderTest() {
        Folder.MakeFolder("home");
        Folder.MakeFolder("config");
        SetEnvironment("HOME", Folder.Native("home"));
        SetEnvironment("XDG_CONFIG_HOME", Folder.Native("config"));
    }
    void Configure(const QByteArray& content) const { Folder.MakeFile("config/user-dirs.dirs", content); }

    TestFolder Folder;
};

TEST_F(DesktopFolderTest, IsTheUsualOneInTheHomeFolder) {
    Folder.MakeFolder("home/Desktop");
    EXPECT_EQ(DesktopFolder(), Folder.Path("home/Desktop"));
}

TEST_F(DesktopFolderTest, IsTheOneThatTheUserNamed) {
    Folder.MakeFolder("home/Desktop");
    Folder.MakeFolder("home/Mes \"B\xFCros\"");
    Configure(
        "# made by a tool\nXDG_MUSIC_DIR=\"$HOME/Music\"\nXDG_DESKTOP_DIR=\"$HOME/Mes "
        "\\\"B\xFCros\\\"\"\n");
    EXPECT_EQ(DesktopFolder(), Folder.Path("home/Mes \"B\xFCros\""));
}

TEST_F(DesktopFolderTest, MayLieOutsideTheHomeFolder) {
    Folder.MakeFolder("elsewhere");
    Configure("XDG_DESKTOP_DIR=\"" + Folder.Native("elsewhere") + "/\"");
    EXPECT_EQ(DesktopFolder(), Folder.Path("elsewhere"));
}

TEST_F(DesktopFolderTest, TheLastNameCounts) {
    Folder.MakeFolder("home/a");
    Folder.MakeFolder("home/b");
    Configure("XDG_DESKTOP_DIR=\"$HOME/a\"\nXDG_DESKTOP_DIR=\"$HOME/b\"\n");
    EXPECT_EQ(DesktopFolder(), Folder.Path("home/b"));
}

TEST_F(DesktopFolderTest, IsTheHomeFolderWhereThereIsNone) {
    EXPECT_EQ(DesktopFolder(), Folder.Path("home"));
    Configure("XDG_DESKTOP_DIR=\"$HOME/none\"\n");
    EXPECT_EQ(DesktopFolder(), Folder.Path("home"));
    Configure("XDG_DESKTOP_DIR=\"\nXDG_DESKTOP_DIR=\n");
    EXPECT_EQ(DesktopFolder(), Folder.Path("home"));
}

TEST_F(DesktopFolderTest, IsNothingWithoutAHome) {
    SetEnvironment("HOME", Folder.Native("none"));
    EXPECT_EQ(DesktopFolder(), QString());
    unsetenv("HOME");
    EXPECT_EQ(DesktopFolder(), QString());
}

TEST(Folders, TheEncodersFolderIsTheProgramsLibraryFolderBesideThatOfPrograms) {
    const auto programs = std::filesystem::path(ToNative(ProgramFolder()).toStdString());
    EXPECT_EQ(ToNative(EncoderSystemFolder()).toStdString(),
              (programs.parent_path() / "lib" / "sonmira").string());
}

TEST(Folders, TheEncodersFolderCanBeReplaced) {
    const QString real = EncoderSystemFolder();
    OverrideEncoderSystemFolder(u"\\a"_s);
    EXPECT_EQ(EncoderSystemFolder(), u"\\a"_s);
    OverrideEncoderSystemFolder(QString());
    EXPECT_EQ(EncoderSystemFolder(), real);
}

TEST(Folders, MakesOneLevelOfFolders) {
    const TestFolder folder;
    EXPECT_TRUE(CreateFolder(folder.Path("a") + u'\\'));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Native("a").toStdString()));
    EXPECT_FALSE(CreateFolder(folder.Path("a")));
    EXPECT_FALSE(CreateFolder(folder.Path("b/c")));
    EXPECT_FALSE(NativeExists(folder.Native("b")));
    EXPECT_FALSE(CreateFolder(QString()));
}

TEST(Folders, ANewFolderHasTheModeOfTheUsersMask) {
    const TestFolder folder;
    const mode_t before = umask(022);
    EXPECT_TRUE(CreateFolder(folder.Path("a\xFF")));
    umask(before);
    struct stat status {};
    ASSERT_EQ(stat(folder.Native("a\xFF").constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0755U);
}

}  // namespace
}  // namespace Sonmira
