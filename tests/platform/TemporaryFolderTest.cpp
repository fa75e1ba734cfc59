#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/TemporaryFolder.h"
#include "support/TestFolder.h"
#include "support/Tool.h"
#include "support/Unprivileged.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class TemporaryFolders : public ::testing::Test {
protected:
    QByteArray UsersFolder(const QByteArray& tail = {}) const {
        return Place.Native("sonmira-" + QByteArray::number(geteuid()) + tail);
    }
    std::optional<ProcessFolder> Claim() const { return ProcessFolder::Claim({Place.Native()}); }

    // Another process that claims a folder, makes a file of that name in it and then waits to be ended.
    pid_t StartAnother(const QByteArray& name) const {
        int ready[2] = {};
        EXPECT_EQ(pipe(ready), 0);
        const pid_t process = fork();
        if (process == 0) {
            const auto folder = Claim();
            if (folder) std::filesystem::create_directories(folder->Native().toStdString());
            FILE* file = folder ? fopen((folder->Native() + '/' + name).constData(), "w") : nullptr;
            if (file != nullptr) {
                fprintf(file, "of %d", getpid());
                fclose(file);
            }
            const char byte = 'x';
            if (write(ready[1], &byte, 1) != 1) _exit(1);
            pause();
            _exit(0);
        }
        char byte = 0;
        EXPECT_EQ(read(ready[0], &byte, 1), 1);
        close(ready[0]);
        close(ready[1]);
        return process;
    }
    static void End(pid_t process) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }

    TestFolder Place;
};

TEST_F(TemporaryFolders, LieInOneOfTheUserAloneAndAreOneForEachProcess) {
    const auto folder = Claim();
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->Native(), UsersFolder() + '/' + QByteArray::number(getpid()));
    struct stat status {};
    ASSERT_EQ(stat(UsersFolder().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    const auto second = Claim();
    ASSERT_TRUE(second);
    EXPECT_NE(second->Native(), folder->Native());
    EXPECT_TRUE(folder->IsThere()) << "its lock is held";
}

TEST_F(TemporaryFolders, OfProcessesThatRunAreLeftAlone) {
    const pid_t other = StartAnother("song.wav");
    const auto folder = Claim();
    const QByteArray others = UsersFolder() + '/' + QByteArray::number(other) + "/song.wav";
    EXPECT_EQ(ContentOf(others), "of " + QByteArray::number(other));
    End(other);
}

TEST_F(TemporaryFolders, OfProcessesThatWereEndedGiveWhatLiesInThemToTheUsersFolder) {
    const pid_t first = StartAnother("song.wav");
    End(first);
    const pid_t second = StartAnother("song.wav");  // finds the first one's
    EXPECT_EQ(ContentOf(UsersFolder() + "/song.wav"), "of " + QByteArray::number(first));
    End(second);
    const auto folder = Claim();
    EXPECT_EQ(ContentOf(UsersFolder() + "/song.wav"), "of " + QByteArray::number(second)) << "replaced";
    EXPECT_FALSE(NativeExists(UsersFolder() + '/' + QByteArray::number(first)));
    EXPECT_FALSE(NativeExists(UsersFolder() + '/' + QByteArray::number(second)));
}

TEST_F(TemporaryFolders, NeverLieInWhatIsAnothersOrALink) {
    Place.MakeFolder("elsewhere");
    std::filesystem::create_symlink(Place.Native("elsewhere").toStdString(), UsersFolder().toStdString());
    Place.MakeFile("sonmira-" + QByteArray::number(geteuid()) + "-2", "a file");
    if (geteuid() == 0) {
        Place.MakeFolder("sonmira-0-3");
        ASSERT_EQ(chown(UsersFolder("-3").constData(), 12345, 12345), 0);
    }
    const auto folder = Claim();
    ASSERT_TRUE(folder);
    const QByteArray expected = UsersFolder(geteuid() == 0 ? "-4" : "-3");
    EXPECT_TRUE(folder->Native().startsWith(expected + '/')) << folder->Native().constData();
    EXPECT_TRUE(std::filesystem::is_empty(Place.Native("elsewhere").toStdString()));
}

TEST_F(TemporaryFolders, ThatOthersMayEnterAreClosedToThem) {
    ASSERT_EQ(mkdir(UsersFolder().constData(), 0777), 0);
    ASSERT_EQ(chmod(UsersFolder().constData(), 0777), 0);
    ASSERT_TRUE(Claim());
    struct stat status {};
    ASSERT_EQ(stat(UsersFolder().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(TemporaryFolders, LieInTheFirstPlaceThatCanBeUsed) {
    const QByteArray good = Place.Native("good");
    Place.MakeFolder("good");
    const QByteArray locked = Place.Native("locked");
    Place.MakeFolder("locked");
    const QByteArray tooLong = Place.Native(QByteArray(90, 'x'));
    Place.MakeFolder(QByteArray(90, 'x'));
    const QByteArray file = Place.Native("file");
    Place.MakeFile("file");
    chmod(locked.constData(), 0555);
    {
        const Unprivileged user;
        chmod(good.constData(), 0777);
        const auto folder = ProcessFolder::Claim({Place.Native("missing"), file, locked, tooLong, good});
        ASSERT_TRUE(folder);
        EXPECT_TRUE(folder->Native().startsWith(good + '/')) << folder->Native().constData();
    }
    chmod(locked.constData(), 0755);
    EXPECT_FALSE(ProcessFolder::Claim({Place.Native("missing")}));
}

TEST(TemporaryFolder, IsBelowTheConfiguredPlaceAndComesBackWhereItWasTakenAway) {
    const QString folder = TemporaryFolder();
    EXPECT_TRUE(folder.startsWith(FromNative(qgetenv("TMPDIR")) + u"\\sonmira-"_s)) << folder.toStdString();
    EXPECT_EQ(TemporaryFolder(), folder);
    std::filesystem::remove_all(qgetenv("TMPDIR").toStdString() + "/sonmira-" + std::to_string(geteuid()));
    EXPECT_TRUE(IsFolder(TemporaryFolder()));
}

TEST(TemporaryFolder, IsLookedForInThePlacesOfTheSystemWhereNoneIsConfigured) {
    const bool inMemory = RunTool({"stat", "-f", "-c", "%T", "/tmp"}).Output.trimmed() == "tmpfs";
    const QByteArray usual = qgetenv("TMPDIR");
    for (const char* configured : {"", "relative/place"}) {
        qputenv("TMPDIR", configured);
        QList<QByteArray> places = TemporaryPlaces();
        std::sort(places.begin(), places.end());
        EXPECT_EQ(places, (QList<QByteArray>{"/tmp", "/var/tmp"})) << configured;
    }
    qputenv("TMPDIR", "/some/place//");
    EXPECT_EQ(TemporaryPlaces().first(), "/some/place");
    EXPECT_EQ(TemporaryPlaces()[1], inMemory ? "/var/tmp" : "/tmp");
    qputenv("TMPDIR", usual);
}

}  // namespace
}  // namespace Sonmira
