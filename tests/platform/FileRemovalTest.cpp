#include "platform/Failure.h"
#include "platform/FileRemoval.h"
#include "platform/Paths.h"
#include "support/TestFolder.h"
#include "support/Unprivileged.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace Sonmira {
namespace {

namespace fs = std::filesystem;

using Removal = void (*)(QStringView);
using Place = SourceRemoval::Place;

void RemoveSource(QStringView path) {
    RemoveSourceFile(path, WithoutTrash::Delete);
}

int FailureOf(Removal remove, const QString& path) {
    try {
        remove(path);
        return 0;
    } catch (const Failure& failure) {
        return failure.Number;
    }
}

QByteArray TrashName(const QByteArray& name) {
    return QByteArray(getenv("XDG_DATA_HOME")) + "/Trash/files/" + name;
}

// What both ways of removal have in common.
class EitherRemoval : public ::testing::TestWithParam<Removal> {
protected:
    TestFolder Folder;
};

INSTANTIATE_TEST_SUITE_P(FileRemoval, EitherRemoval, ::testing::Values(&DeleteFileOutright, &RemoveSource),
                         [](const auto& removal) {
                             return removal.param == &DeleteFileOutright ? "DeleteFileOutright"
                                                                         : "RemoveSourceFile";
                         });

TEST_P(EitherRemoval, TakesTheFileAway) {
    GetParam()(Folder.MakeFile("a.mp3"));
    EXPECT_FALSE(NativeExists(Folder.Native("a.mp3")));
}

TEST_P(EitherRemoval, TakesAFileWhoseNameIsNoText) {
    GetParam()(Folder.MakeFile("\xE9.mp3"));
    EXPECT_FALSE(NativeExists(Folder.Native("\xE9.mp3")));
}

TEST(RemoveSourceFile, PutsANameThatIsNoTextIntoTheTrashToo) {
    const TestFolder folder;
    RemoveSource(folder.MakeFile("raw\xE9.mp3", "music"));
    EXPECT_EQ(ContentOf(TrashName("raw\xE9.mp3")), "music");
}

TEST_P(EitherRemoval, TakesWildcardsLiterally) {
    Folder.MakeFile("a.mp3");
    EXPECT_EQ(FailureOf(GetParam(), Folder.Path("*.mp3")), FailureNumber::FileNotFound);
    GetParam()(Folder.MakeFile("?.mp3"));
    EXPECT_FALSE(NativeExists(Folder.Native("?.mp3")));
    EXPECT_TRUE(NativeExists(Folder.Native("a.mp3")));
}

TEST_P(EitherRemoval, FailsForAFileThatIsNotThere) {
    EXPECT_EQ(FailureOf(GetParam(), Folder.Path("none")), FailureNumber::FileNotFound);
    EXPECT_EQ(FailureOf(GetParam(), Folder.Path("none/a")), FailureNumber::FileNotFound);
    EXPECT_EQ(FailureOf(GetParam(), QString()), FailureNumber::FileNotFound);
}

TEST_P(EitherRemoval, NeverTakesAFolder) {
    Folder.MakeFolder("sub");
    fs::create_symlink("sub", Folder.Native("link").toStdString());
    for (const char* name : {"sub", "sub/", "link"}) {
        EXPECT_EQ(FailureOf(GetParam(), Folder.Path(name)), FailureNumber::PathFileAccess) << name;
    }
    EXPECT_TRUE(NativeExists(Folder.Native("sub")));
    EXPECT_TRUE(NativeExists(Folder.Native("link")));
}

TEST_P(EitherRemoval, TakesALinkAndLeavesItsTarget) {
    Folder.MakeFile("target");
    fs::create_symlink("target", Folder.Native("link").toStdString());
    GetParam()(Folder.Path("link"));
    EXPECT_FALSE(NativeExists(Folder.Native("link")));
    EXPECT_TRUE(NativeExists(Folder.Native("target")));
}

TEST_P(EitherRemoval, TakesADanglingLink) {
    fs::create_symlink("none", Folder.Native("link").toStdString());
    GetParam()(Folder.Path("link"));
    EXPECT_FALSE(NativeExists(Folder.Native("link")));
}

TEST_P(EitherRemoval, GoesUpFromWhereALinkLeads) {
    Folder.MakeFile("a.mp3", "the wrong one");
    Folder.MakeFile("far/a.mp3");
    Folder.MakeFolder("far/sub");
    fs::create_symlink("far/sub", Folder.Native("link").toStdString());
    GetParam()(Folder.Path("link/../a.mp3"));
    EXPECT_TRUE(NativeExists(Folder.Native("a.mp3")));
    EXPECT_FALSE(NativeExists(Folder.Native("far/a.mp3")));
}

TEST_P(EitherRemoval, FailsInAProtectedFolder) {
    const Unprivileged user;
    const QString file = Folder.MakeFile("sub/a.mp3");
    chmod(Folder.Native("sub").constData(), 0500);
    EXPECT_EQ(FailureOf(GetParam(), file), FailureNumber::PermissionDenied);
    EXPECT_TRUE(NativeExists(Folder.Native("sub/a.mp3")));
}

TEST(FileRemoval, ASourceFileGoesToTheTrash) {
    const TestFolder folder;
    RemoveSource(folder.MakeFile("source.mp3", "music"));
    EXPECT_EQ(ContentOf(TrashName("source.mp3")), "music");
}

TEST(FileRemoval, ATemporaryFileDoesNotGoToTheTrash) {
    const TestFolder folder;
    DeleteFileOutright(folder.MakeFile("temporary.wav"));
    EXPECT_FALSE(NativeExists(TrashName("temporary.wav")));
}

TEST(FileRemoval, ANameThatLeavesTheTrashNoRoomForItsEndingIsCutThere) {
    const TestFolder folder;
    const QByteArray longest = QByteArray(230, 'n') + ".mp3";
    RemoveSource(folder.MakeFile(longest, "music"));
    EXPECT_EQ(ContentOf(TrashName(longest)), "music");
    for (const QByteArray content : {"first", "second"}) {
        const QByteArray tooLong = QByteArray(246, 'n') + content.left(5);
        EXPECT_EQ(RemoveSourceFile(folder.MakeFile(tooLong, content), WithoutTrash::Keep).Ends, Place::Trash);
        EXPECT_FALSE(NativeExists(folder.Native(tooLong)));
    }
    EXPECT_EQ(ContentOf(TrashName(QByteArray(231, 'n'))), "first");
    EXPECT_EQ(ContentOf(TrashName(QByteArray(231, 'n') + ".2")), "second");
    const QByteArray note =
        ContentOf(TrashName(QByteArray(231, 'n')).replace("/files/", "/info/") + ".trashinfo");
    EXPECT_TRUE(note.startsWith("[Trash Info]\nPath=" + folder.Native() + '/' + QByteArray(246, 'n')))
        << note.constData();
    EXPECT_TRUE(note.contains("\nDeletionDate=20")) << note.constData();
}

TEST(FileRemoval, TellsWhereTheFileWentAndHowLargeItIs) {
    const TestFolder folder;
    const SourceRemoval removal = RemoveSourceFile(folder.MakeFile("a.mp3", "music"), WithoutTrash::Keep);
    EXPECT_EQ(removal.Ends, Place::Trash);
    EXPECT_EQ(removal.Size, 5);
}

// A volume that is seen by this process alone.
bool MountVolume(const QByteArray& folder) {
    const int apart = getuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
    return unshare(apart) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", folder.constData(), "tmpfs", 0, "size=8m") == 0;
}

// A volume whose topmost folder takes no trash, such as a share.
TEST(FileRemoval, FromAVolumeWithoutATrashACopyGoesToTheOneOfTheHomeFolder) {
    const TestFolder folder;
    folder.MakeFolder("volume");
    const QByteArray volume = folder.Native("volume");
    if (!MountVolume(volume)) GTEST_SKIP() << "no disk of our own here";
    const QString file = folder.MakeFile("volume/Music/far.mp3", "music");
    const timespec times[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
    utimensat(AT_FDCWD, folder.Native("volume/Music/far.mp3").constData(), times, 0);
    chmod(volume.constData(), 0555);
    {
        const Unprivileged user;
        EXPECT_EQ(RemoveSourceFile(file, WithoutTrash::Keep).Ends, Place::Trash);
        EXPECT_FALSE(NativeExists(folder.Native("volume/Music/far.mp3")));
        EXPECT_EQ(ContentOf(TrashName("far.mp3")), "music");
        struct stat status {};
        stat(TrashName("far.mp3").constData(), &status);
        EXPECT_EQ(status.st_mtime, 1'000'000'000);
        setenv("XDG_DATA_HOME", folder.Native("nowhere/data").constData(), 1);
        folder.MakeFile("nowhere");
        const QString other = folder.MakeFile("volume/Music/other.mp3", "music");
        EXPECT_EQ(RemoveSourceFile(other, WithoutTrash::Keep).Ends, Place::Stays);
        EXPECT_EQ(ContentOf(folder.Native("volume/Music/other.mp3")), "music");
    }
    chmod(volume.constData(), 0755);
    umount(volume.constData());
}

// From here on the trash lies elsewhere.

// A trash that takes names but cannot be opened lets nobody have it reach the disk.
TEST(FileRemoval, AFileOfAnotherVolumeStaysWhereItsCopyMayNotHaveReachedTheDisk) {
    const TestFolder folder;
    setenv("XDG_DATA_HOME", folder.Native("data").constData(), 1);
    const QString file = folder.MakeFile("volume/Music/far.mp3", "music");
    const QByteArray volume = folder.Native("volume");
    if (!MountVolume(volume)) GTEST_SKIP() << "no disk of our own here";
    folder.MakeFile("volume/Music/far.mp3", "music");
    chmod(volume.constData(), 0555);
    for (const QByteArray part : {"info", "files"}) {
        const QByteArray trash = folder.Native("data/Trash/" + part);
        folder.MakeFolder("data/Trash/info");
        folder.MakeFolder("data/Trash/files");
        chmod(trash.constData(), 0300);
        {
            const Unprivileged user;
            EXPECT_EQ(RemoveSourceFile(file, WithoutTrash::Keep).Ends, Place::Stays) << part.constData();
        }
        chmod(trash.constData(), 0700);
        EXPECT_EQ(ContentOf(folder.Native("volume/Music/far.mp3")), "music") << part.constData();
        EXPECT_TRUE(fs::is_empty(trash.toStdString())) << part.constData();
    }
    chmod(volume.constData(), 0755);
    umount(volume.constData());
}

TEST(FileRemoval, ASourceFileGoesForGoodWhereTheTrashIsProtected) {
    for (const char* part : {"info", "files"}) {
        const TestFolder folder;
        setenv("XDG_DATA_HOME", folder.Native("data").constData(), 1);
        folder.MakeFolder("data/Trash/info");
        folder.MakeFolder("data/Trash/files");
        const QString file = folder.MakeFile("source.mp3");
        chmod(folder.Native(QByteArray("data/Trash/") + part).constData(), 0500);
        const Unprivileged user;
        EXPECT_EQ(RemoveSourceFile(file, WithoutTrash::Keep).Ends, Place::Stays);
        EXPECT_TRUE(NativeExists(folder.Native("source.mp3"))) << part;
        EXPECT_EQ(RemoveSourceFile(file, WithoutTrash::Delete).Ends, Place::Nowhere);
        EXPECT_FALSE(NativeExists(folder.Native("source.mp3"))) << part;
        EXPECT_TRUE(fs::is_empty(folder.Native("data/Trash/info").toStdString())) << part;
        EXPECT_TRUE(fs::is_empty(folder.Native("data/Trash/files").toStdString())) << part;
    }
}

TEST(FileRemoval, ASourceFileInAProtectedFolderDoesNotReachTheTrash) {
    const TestFolder folder;
    setenv("XDG_DATA_HOME", folder.Native("data").constData(), 1);
    folder.MakeFolder("data");
    const QString file = folder.MakeFile("sub/a.mp3", "music");
    chmod(folder.Native("sub").constData(), 0500);
    const Unprivileged user;
    EXPECT_EQ(FailureOf(&RemoveSource, file), FailureNumber::PermissionDenied);
    EXPECT_EQ(ContentOf(folder.Native("sub/a.mp3")), "music");
    EXPECT_FALSE(NativeExists(folder.Native("data/Trash")));
}

TEST(FileRemoval, ASourceFileGoesForGoodWhereThereIsNoTrash) {
    const TestFolder folder;
    setenv("XDG_DATA_HOME", (folder.Native("file") + "/data").constData(), 1);
    folder.MakeFile("file");
    const QString file = folder.MakeFile("source.mp3");
    const fs::path before = fs::current_path();
    fs::current_path(folder.Native().toStdString());
    RemoveSource(file);
    fs::current_path(before);
    EXPECT_FALSE(NativeExists(folder.Native("source.mp3")));
    EXPECT_FALSE(NativeExists(folder.Native("files"))) << "the working folder is no trash";
}

}  // namespace
}  // namespace Sonmira
