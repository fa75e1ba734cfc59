#include "platform/Dialogs.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class LanguageFiles : public ::testing::Test {
protected:
    ~LanguageFiles() override {
        OverrideLanguageFolder({});
        LanguageLines.Assign({});
    }
    QStringList Captions() const {
        OverrideLanguageFolder(Folder.Path());
        QStringList captions;
        for (const LanguageFile& file : FindLanguageFiles()) captions += file.Caption;
        return captions;
    }
    // The lines of the table after that content was loaded.
    QStringList Loaded(const QByteArray& content) const {
        LoadLanguageFile(Folder.MakeFile("a.lng", content));
        QStringList lines;
        while (PassOver([&] { lines += LanguageLines[static_cast<int>(lines.size())]; })) continue;
        return lines;
    }

    TestFolder Folder;
};

TEST_F(LanguageFiles, AreListedInTheOrderOfTheFolder) {
    for (const char* name : {"French.lng", "English.lng", "deutsch.lng"}) Folder.MakeFile(name);
    EXPECT_EQ(Captions(), QStringList({u"deutsch"_s, u"English"_s, u"French"_s}));
}

TEST_F(LanguageFiles, KnowTheirPath) {
    Folder.MakeFile("English.lng");
    for (const QString& folder : {Folder.Path(), Folder.Path() + u'\\'}) {
        OverrideLanguageFolder(folder);
        ASSERT_EQ(FindLanguageFiles().size(), 1U);
        EXPECT_EQ(FindLanguageFiles().front().Path, Folder.Path("English.lng"));
    }
}

TEST_F(LanguageFiles, EndInSmallLetters) {
    for (const char* name : {"A.LNG", "B.Lng", "C.txt", "D.lng.bak"}) Folder.MakeFile(name);
    EXPECT_EQ(Captions(), QStringList());
}

TEST_F(LanguageFiles, NeedNoDotAndLoseFourCharactersAllTheSame) {
    Folder.MakeFile("Klinglng");
    Folder.MakeFile("lng");
    EXPECT_EQ(Captions(), QStringList({u"Klin"_s, QString()}));
}

TEST_F(LanguageFiles, MayBeHidden) {
    Folder.MakeFile(".Secret.lng");
    EXPECT_EQ(Captions(), QStringList{u".Secret"_s});
}

TEST_F(LanguageFiles, AreNeverFolders) {
    Folder.MakeFolder("English.lng");
    EXPECT_EQ(Captions(), QStringList());
}

TEST_F(LanguageFiles, AreNoneInAFolderThatIsMissing) {
    OverrideLanguageFolder(Folder.Path("none"));
    EXPECT_TRUE(FindLanguageFiles().empty());
}

TEST_F(LanguageFiles, LieBesideTheProgram) {
    const std::filesystem::path lang = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "Lang";
    const bool isNew = std::filesystem::create_directory(lang);
    const std::filesystem::path file = lang / "zz-beside-the-program.lng";
    std::filesystem::create_symlink("none", file);
    OverrideLanguageFolder(QString());
    QStringList paths;
    for (const LanguageFile& found : FindLanguageFiles()) paths += found.Path;
    std::filesystem::remove(file);
    if (isNew) std::filesystem::remove(lang);
    EXPECT_TRUE(paths.contains(ProgramFolder() + u"\\Lang\\zz-beside-the-program.lng"_s));
}

TEST_F(LanguageFiles, LinesAreNumberedFromZeroAndOneEmptyOneStandsBehindTheLast) {
    EXPECT_EQ(Loaded("File\nAdd a file"), QStringList({u"File"_s, u"Add a file"_s, QString()}));
    EXPECT_EQ(Loaded("File\nAdd a file\n"), QStringList({u"File"_s, u"Add a file"_s, QString()}));
}

TEST_F(LanguageFiles, AnEmptyLineShiftsNothing) {
    EXPECT_EQ(Loaded("a\n\nc\n\n"), QStringList({u"a"_s, QString(), u"c"_s, QString(), QString()}));
}

TEST_F(LanguageFiles, AnEmptyFileHasOneEmptyLine) {
    EXPECT_EQ(Loaded(""), QStringList{QString()});
}

TEST_F(LanguageFiles, MayHaveEitherLineEndAndAByteOrderMark) {
    EXPECT_EQ(Loaded("\xEF\xBB\xBF"
                     "a\r\nb\nc\r\n"),
              QStringList({u"a"_s, u"b"_s, u"c"_s, QString()}));
}

TEST_F(LanguageFiles, LinesStandAsTheyAre) {
    EXPECT_EQ(Loaded(" a \t\n\xC3\xA9\"\n"), QStringList({u" a \t"_s, u"\u00e9\""_s, QString()}));
}

TEST_F(LanguageFiles, BytesThatAreNoUtf8AreLatin1) {
    EXPECT_EQ(Loaded("Fran\xE7"
                     "ais \xF0\x9F\x8E\xB5\n")
                  .constFirst(),
              u"Français 🎵"_s);
}

TEST_F(LanguageFiles, ANewFileReplacesAllLinesOfTheOneBefore) {
    EXPECT_EQ(Loaded("a\nb\nc\n").size(), 4);
    EXPECT_EQ(Loaded("x\n"), QStringList({u"x"_s, QString()}));
}

TEST_F(LanguageFiles, ALineThatTheFileDoesNotHaveFails) {
    Loaded("a\n");
    for (const int line : {2, 100, -1}) {
        try {
            EXPECT_EQ(LanguageLines[line], QString());
            ADD_FAILURE() << line;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Number, FailureNumber::SubscriptOutOfRange);
        }
    }
}

TEST(LanguageTable, IsEmptyUntilAFileIsLoaded) {
    EXPECT_TRUE(LanguageLines.IsEmpty());
    EXPECT_THROW(LanguageLines[0], Failure);
}

TEST_F(LanguageFiles, AMissingFileIsToldAndEndsTheProgram) {
    Dialogs().ShowMessage = [](const QString& text, MessageIcon icon, const QString& title) {
        std::fprintf(stderr, "%s|%d|%s|%d", text.toUtf8().constData(), icon == MessageIcon::Critical,
                     title.toUtf8().constData(), LanguageLines[0].isEmpty());
    };
    EXPECT_EXIT(LoadLanguageFile(Folder.Path("none.lng")), ::testing::ExitedWithCode(0),
                "Can't find the Language file.1.Sonmira Audio.1");
    EXPECT_EXIT(LoadLanguageFile(QString()), ::testing::ExitedWithCode(0), "Can't find the Language file");
}

TEST_F(LanguageFiles, AFileThatCannotBeReadFails) {
    ASSERT_EQ(mkfifo(Folder.Native("a.lng").constData(), 0600), 0);
    try {
        LoadLanguageFile(Folder.Path("a.lng"));
        ADD_FAILURE();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number, FailureNumber::PathFileAccess);
    }
}

}  // namespace
}  // namespace Sonmira
