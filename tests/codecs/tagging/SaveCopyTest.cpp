// The copy that a save works on: what is in the folder while it is there, and after the program has died.
#include "TagFiles.h"
#include "codecs/AudioInformation.h"
#include "platform/Failure.h"
#include "platform/SafeRewrite.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class SaveCopy : public TagFileTest {
protected:
    static constexpr CopyName Manners[] = {CopyName::NoneWherePossible, CopyName::Always};

    // Names that only a listing with all files shows.
    int HiddenNames() const {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(Folder.Native().toStdString()))
            count += entry.path().filename().string().starts_with('.') ? 1 : 0;
        return count;
    }
    // Whether files without a name can be made in the folder and be linked.
    bool HasUnnamedFiles() const {
        const int file = open(Folder.Native().constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
        if (file >= 0) close(file);
        return file >= 0;
    }
    static void Write(const QByteArray& file, const QByteArray& content) {
        std::ofstream(file.toStdString(), std::ios::trunc) << content.toStdString();
    }
    // Runs `work` in a process of its own and kills that after a pause, or when it says that it is there.
    template <class Work>
    static void RunAndKill(const Work& work, int microseconds) {
        int there[2];
        ASSERT_EQ(pipe(there), 0);
        const pid_t child = fork();
        if (child == 0) {
            try {
                work(there[1]);
            } catch (const Failure&) {
                _exit(1);
            }
            _exit(0);
        }
        char byte = 0;
        ASSERT_EQ(read(there[0], &byte, 1), 1);
        usleep(static_cast<useconds_t>(microseconds));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(there[0]);
        close(there[1]);
    }
    static void SayThere(int pipe) { [[maybe_unused]] const ssize_t written = write(pipe, "x", 1); }
};

TEST_F(SaveCopy, ACopyHasNoNameWhereTheFileSystemHasSuchFilesAndTakesTheFilesPlace) {
    for (const CopyName manner : Manners) {
        Folder.MakeFile("a.bin", "old");
        const bool isNamed = manner == CopyName::Always || !HasUnnamedFiles();
        RewriteThroughCopy(
            Folder.Native("a.bin"),
            [&](const QByteArray& copy) {
                EXPECT_EQ(ContentOf(copy), "old");
                EXPECT_EQ(HiddenNames(), isNamed ? 1 : 0);
                Write(copy, "new");
            },
            manner);
        EXPECT_EQ(Content("a.bin"), "new");
        EXPECT_EQ(HiddenNames(), 0);
    }
}

TEST_F(SaveCopy, ACopyOfADeadProgramIsRemovedByTheNextSaveAndNoOtherFile) {
    const QByteArray dead = Folder.Native(".sonmira-a1B2c3");
    const QByteArray living = Folder.Native(".sonmira-a1B2c4");
    for (const QByteArray& name : {dead, living}) Write(name, "copy");
    for (const char* other : {".sonmira-notes", ".sonmira-12-0.tmp", ".sonmira-a1B2c-", "sonmira-a1B2c5"})
        Folder.MakeFile(other, "theirs");
    const int lock = open(living.constData(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    const QString path = Make("a.flac");
    AudioInformation tag;
    tag.LoadTag(path);
    tag.Title = u"New"_s;
    tag.SaveTag(path);
    EXPECT_FALSE(std::filesystem::exists(dead.toStdString()));
    EXPECT_TRUE(std::filesystem::exists(living.toStdString()));
    for (const char* other : {".sonmira-notes", ".sonmira-12-0.tmp", ".sonmira-a1B2c-", "sonmira-a1B2c5"})
        EXPECT_EQ(Content(other), "theirs") << other;
    close(lock);
}

TEST_F(SaveCopy, AProgramKilledWhileItWritesTheCopyLeavesTheFileAndNothingForLong) {
    for (const CopyName manner : Manners) {
        Folder.MakeFile("a.bin", "old");
        const bool isNamed = manner == CopyName::Always || !HasUnnamedFiles();
        const auto work = [&](int there) {
            RewriteThroughCopy(
                Folder.Native("a.bin"),
                [&](const QByteArray& copy) {
                    Write(copy, "half");
                    SayThere(there);
                    for (;;) pause();
                },
                manner);
        };
        RunAndKill(work, 0);
        EXPECT_EQ(Content("a.bin"), "old");
        EXPECT_EQ(HiddenNames(), isNamed ? 1 : 0);
        RewriteThroughCopy(
            Folder.Native("a.bin"), [](const QByteArray& copy) { Write(copy, "new"); }, manner);
        EXPECT_EQ(Content("a.bin"), "new");
        EXPECT_EQ(HiddenNames(), 0);
    }
}

TEST_F(SaveCopy, AProgramKilledAtAnyMomentLeavesTheOldFileOrTheNewOne) {
    constexpr int Rounds = 40;
    constexpr int MostPause = 12'000;
    constexpr qsizetype Size = 4 << 20;
    const QByteArray before(Size, 'o');
    const QByteArray after(Size + 1, 'n');
    std::mt19937 random(20);
    std::uniform_int_distribution<int> pause(0, MostPause);
    for (const CopyName manner : Manners) {
        for (int n = 0; n < Rounds; ++n) {
            Folder.MakeFile("a.bin", before);
            const auto work = [&](int there) {
                SayThere(there);
                RewriteThroughCopy(
                    Folder.Native("a.bin"), [&](const QByteArray& copy) { Write(copy, after); }, manner);
            };
            RunAndKill(work, pause(random));
            const QByteArray content = Content("a.bin");
            EXPECT_TRUE(content == before || content == after) << n;
            EXPECT_LE(HiddenNames(), 1) << n;
            RewriteThroughCopy(
                Folder.Native("a.bin"), [](const QByteArray&) {}, manner);
            EXPECT_EQ(HiddenNames(), 0) << n;
        }
    }
}

TEST_F(SaveCopy, AProgramKilledInASaveOfATagLeavesAFileThatPlays) {
    constexpr int Rounds = 15;
    constexpr int MostPause = 20'000;
    const QString path = Make("a.flac", {"-metadata", "title=Old"});
    const QByteArray old = Content("a.flac");
    std::mt19937 random(21);
    std::uniform_int_distribution<int> pause(0, MostPause);
    for (int n = 0; n < Rounds; ++n) {
        Folder.MakeFile("a.flac", old);
        const auto work = [&](int there) {
            SayThere(there);
            AudioInformation tag;
            tag.LoadTag(path);
            tag.Title = u"New"_s;
            tag.SaveTag(path);
        };
        RunAndKill(work, pause(random));
        AudioInformation tag;
        tag.LoadTag(path);
        EXPECT_TRUE(Content("a.flac") == old || tag.Title == u"New"_s) << n;
        EXPECT_EQ(RunTool({"flac", "-s", "-t", Folder.Native("a.flac")}).ExitCode, 0) << n;
        EXPECT_LE(HiddenNames(), 1) << n;
    }
}

}  // namespace
}  // namespace Sonmira
