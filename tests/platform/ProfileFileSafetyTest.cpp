#include "platform/Paths.h"
#include "platform/ProfileFile.h"
#include "support/Sanitized.h"
#include "support/TestFolder.h"
#include "support/Unprivileged.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <thread>

// What a write does to the file as a whole: its mode, its links, its neighbours, other writers.
namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

mode_t ModeOf(const QByteArray& native) {
    struct stat status {};
    return stat(native.constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

std::ptrdiff_t EntriesOf(const TestFolder& folder) {
    return std::distance(fs::directory_iterator(folder.Native().toStdString()), fs::directory_iterator());
}

TEST(ProfileFileSafety, AWriteKeepsTheModeOfTheFile) {
    const TestFolder folder;
    const QString file = folder.MakeFile("a.ini", "[S]\n");
    chmod(folder.Native("a.ini").constData(), 0640);
    EXPECT_TRUE(WriteProfileValue(file, u"S", u"k", u"1"));
    EXPECT_EQ(ModeOf(folder.Native("a.ini")), 0640U);
}

TEST(ProfileFileSafety, ANewFileHasTheModeOfTheUsersMask) {
    const TestFolder folder;
    const mode_t before = umask(027);
    EXPECT_TRUE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"1"));
    umask(before);
    EXPECT_EQ(ModeOf(folder.Native("a.ini")), 0640U);
}

TEST(ProfileFileSafety, AWriteLeavesNothingElseInTheFolder) {
    const TestFolder folder;
    EXPECT_TRUE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"1"));
    EXPECT_TRUE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"2"));
    EXPECT_EQ(EntriesOf(folder), 1);
}

TEST(ProfileFileSafety, AReaderThatHoldsTheOldFileStillSeesItWhole) {
    const TestFolder folder;
    const QString file = folder.MakeFile("a.ini", "[S]\nk=1\n");
    const int reader = open(folder.Native("a.ini").constData(), O_RDONLY);
    EXPECT_TRUE(WriteProfileValue(file, u"S", u"k", u"a much longer value"));
    char content[64] = {};
    EXPECT_EQ(read(reader, content, sizeof content), 8);
    close(reader);
    EXPECT_STREQ(content, "[S]\nk=1\n");
}

TEST(ProfileFileSafety, ALinkIsKeptAndItsTargetWritten) {
    const TestFolder folder;
    folder.MakeFile("real/b.ini", "[S]\nk=1\n");
    fs::create_symlink("real/b.ini", folder.Native("a.ini").toStdString());
    EXPECT_TRUE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"2"));
    EXPECT_TRUE(fs::is_symlink(folder.Native("a.ini").toStdString()));
    EXPECT_EQ(ContentOf(folder.Native("real/b.ini")), "[S]\nk=2\n");
}

TEST(ProfileFileSafety, ADanglingLinkGetsItsTarget) {
    const TestFolder folder;
    fs::create_symlink(folder.Native("b.ini").toStdString(), folder.Native("a.ini").toStdString());
    EXPECT_TRUE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"2"));
    EXPECT_EQ(ContentOf(folder.Native("b.ini")), "[S]\nk=2\n");
}

TEST(ProfileFileSafety, ALinkToItselfIsRefused) {
    const TestFolder folder;
    fs::create_symlink("a.ini", folder.Native("a.ini").toStdString());
    EXPECT_FALSE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"2"));
}

TEST(ProfileFileSafety, AMissingFolderLosesTheWrite) {
    const TestFolder folder;
    EXPECT_FALSE(WriteProfileValue(folder.Path("none/a.ini"), u"S", u"k", u"1"));
    EXPECT_FALSE(NativeExists(folder.Native("none")));
    EXPECT_FALSE(WriteProfileValue(QString(), u"S", u"k", u"1"));
}

TEST(ProfileFileSafety, AFolderInThePlaceOfTheFileStays) {
    const TestFolder folder;
    folder.MakeFile("a.ini/inside");
    EXPECT_FALSE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"1"));
    EXPECT_EQ(ReadProfileValue(folder.Path("a.ini"), u"S", u"k"), QString());
    EXPECT_TRUE(NativeExists(folder.Native("a.ini/inside")));
    EXPECT_EQ(EntriesOf(folder), 1);
}

TEST(ProfileFileSafety, AWriteProtectedFileStaysAsItIs) {
    const TestFolder folder;
    const Unprivileged user;
    const QString file = folder.MakeFile("a.ini", "[S]\nk=1\n");
    chmod(folder.Native("a.ini").constData(), 0444);
    EXPECT_FALSE(WriteProfileValue(file, u"S", u"k", u"2"));
    EXPECT_EQ(ContentOf(folder.Native("a.ini")), "[S]\nk=1\n");
}

TEST(ProfileFileSafety, APipeInThePlaceOfTheFileIsNotWaitedFor) {
    const TestFolder folder;
    ASSERT_EQ(mkfifo(folder.Native("a.ini").constData(), 0600), 0);
    EXPECT_EQ(ReadProfileValue(folder.Path("a.ini"), u"S", u"k"), QString());
    EXPECT_FALSE(WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"1"));
}

TEST(ProfileFileSafety, ALargeBinaryFileIsReadAndKept) {
    const TestFolder folder;
    QByteArray content(qsizetype{3} * 1024 * 1024, '\0');
    for (qsizetype i = 0; i < content.size(); ++i) content[i] = static_cast<char>((i * 7919) >> 5);
    const QString file = folder.MakeFile("a.ini", content);
    EXPECT_EQ(ReadProfileValue(file, u"no such", u"k"), QString());
    EXPECT_TRUE(WriteProfileValue(file, u"no such", u"k", u"1"));
    EXPECT_TRUE(ContentOf(folder.Native("a.ini")).startsWith(content));
    EXPECT_EQ(ReadProfileValue(file, u"no such", u"k"), u"1"_s);
}

TEST(ProfileFileSafety, AFileTooLargeForSettingsIsLeftAlone) {
    const TestFolder folder;
    const QString file = folder.MakeFile("a.ini", "[S]\nk=1\n");
    ASSERT_EQ(truncate(folder.Native("a.ini").constData(), 65LL * 1024 * 1024), 0);
    EXPECT_EQ(ReadProfileValue(file, u"S", u"k"), QString());
    EXPECT_FALSE(WriteProfileValue(file, u"S", u"k", u"2"));
}

void WriteNumbered(const QString& file, const QString& prefix, int count) {
    for (int i = 0; i < count; ++i) {
        if (!WriteProfileValue(file, u"S", prefix + QString::number(i), QString::number(i))) _exit(1);
    }
}

void ExpectNumbered(const QString& file, const QString& prefix, int count) {
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(ReadProfileValue(file, u"S", prefix + QString::number(i)), QString::number(i));
    }
}

// Whether the content is what some number of whole writes leave behind.
bool IsWhole(const QByteArray& content) {
    return content.isEmpty() || (content.startsWith("[S]") && content.endsWith('\n'));
}

TEST(ProfileFileSafety, TwoProgramsThatWriteAtOnceLoseNothingAndNobodySeesAHalfWrittenFile) {
    constexpr int Count = UnderSanitizers ? 200 : 1000;
    const TestFolder folder;
    const QString file = folder.Path("a.ini");
    std::atomic<bool> done = false;
    std::atomic<int> halves = 0;
    std::thread reader([&] {
        while (!done) halves += IsWhole(ContentOf(folder.Native("a.ini"))) ? 0 : 1;
    });
    const pid_t other = fork();
    ASSERT_GE(other, 0);
    if (other == 0) {
        WriteNumbered(file, u"other"_s, Count);
        _exit(0);
    }
    WriteNumbered(file, u"own"_s, Count);
    int status = -1;
    waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    done = true;
    reader.join();
    EXPECT_EQ(halves, 0);
    ExpectNumbered(file, u"own"_s, Count);
    ExpectNumbered(file, u"other"_s, Count);
}

TEST(ProfileFileSafety, TwoThreadsThatWriteAtOnceLoseNothing) {
    const TestFolder folder;
    const QString file = folder.Path("a.ini");
    std::thread other([&] { WriteNumbered(file, u"other"_s, 200); });
    WriteNumbered(file, u"own"_s, 200);
    other.join();
    ExpectNumbered(file, u"own"_s, 200);
    ExpectNumbered(file, u"other"_s, 200);
}

TEST(ProfileFileSafety, AWriteWaitsForTheLockOfTheFolder) {
    const TestFolder folder;
    const int holder = open(folder.Native().constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(holder, LOCK_EX), 0);
    std::atomic<bool> isWritten = false;
    std::thread writer([&] { isWritten = WriteProfileValue(folder.Path("a.ini"), u"S", u"k", u"1"); });
    // Time for a write that does not wait. On a slow machine it may come too late to be noticed, no more.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(NativeExists(folder.Native("a.ini")));
    flock(holder, LOCK_UN);
    writer.join();
    close(holder);
    EXPECT_TRUE(isWritten);
}

}  // namespace
}  // namespace Sonmira
