#include "platform/ChildProcess.h"
#include "platform/Failure.h"
#include "support/TestFolder.h"
#include "support/Waiting.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <vector>

namespace Sonmira {
namespace {

using namespace std::chrono_literals;

class ProgramBeside : public ::testing::Test {
public:
    ProgramBeside()
        : Output(::open(Folder.Native("out").constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600)) {}
    ~ProgramBeside() override { ::close(Output); }

protected:
    // A zombie, or a program that still runs, would be there to wait for.
    static bool HasNoChild() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

    TestFolder Folder;
    int Output;
};

std::span<const std::byte> BytesOf(const QByteArray& text) {
    return std::as_bytes(std::span(text.constData(), static_cast<std::size_t>(text.size())));
}

TEST_F(ProgramBeside, GetsItsInputAndWritesIntoTheFile) {
    {
        ChildProcess program({"cat"}, Output);
        const QByteArray text = QByteArray("words and more words\n").repeated(100'000);
        std::span<const std::byte> left = BytesOf(text);
        while (!left.empty()) left = left.subspan(program.Send(left, 100ms).value());
        program.CloseInput();
        const auto ending = program.WaitForEnd(LongestWait);
        ASSERT_TRUE(ending);
        EXPECT_TRUE(ending->IsGood());
        EXPECT_TRUE(ContentOf(Folder.Native("out")) == text);
    }
    EXPECT_TRUE(HasNoChild());
}

TEST_F(ProgramBeside, TellsItsExitCode) {
    ChildProcess program({"sh", "-c", "exit 7"}, Output);
    const auto ending = program.WaitForEnd(LongestWait);
    ASSERT_TRUE(ending);
    EXPECT_EQ(ending->ExitCode, 7);
    EXPECT_EQ(ending->Signal, 0);
    EXPECT_FALSE(ending->IsGood());
}

TEST_F(ProgramBeside, TellsTheSignalThatEndedIt) {
    ChildProcess program({"sh", "-c", "kill -9 $$"}, Output);
    const auto ending = program.WaitForEnd(LongestWait);
    ASSERT_TRUE(ending);
    EXPECT_EQ(ending->Signal, SIGKILL);
    EXPECT_FALSE(ending->IsGood());
}

TEST_F(ProgramBeside, ThatIsMissingFailsWithItsName) {
    EXPECT_FALSE(IsProgramInstalled(QStringLiteral("no-such-program")));
    EXPECT_TRUE(IsProgramInstalled(QStringLiteral("cat")));
    try {
        ChildProcess program({"no-such-program"}, Output);
        FAIL() << "started";
    } catch (const Failure& failure) {
        EXPECT_TRUE(failure.Description.contains(QStringLiteral("no-such-program")));
    }
    EXPECT_TRUE(HasNoChild());
}

TEST_F(ProgramBeside, ThatReadsNoMoreTakesNothingAndHarmsNobody) {
    ChildProcess program({"true"}, Output);
    ASSERT_TRUE(program.WaitForEnd(LongestWait));
    const QByteArray text(1000, 'x');
    EXPECT_FALSE(program.Send(BytesOf(text), 100ms));
}

TEST_F(ProgramBeside, ThatReadsNothingYetTakesWhatThePipeHoldsAndNeverBlocks) {
    ChildProcess program({"sleep", Sleeper}, Output);
    const QByteArray text(1'000'000, 'x');
    std::size_t taken = 0;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 20; ++i) taken += program.Send(BytesOf(text), 10ms).value();
    EXPECT_LT(std::chrono::steady_clock::now() - start, FarLessThanTheSleeper);
    EXPECT_GT(taken, 0U);
    EXPECT_LT(taken, 20'000'000U);
    EXPECT_FALSE(program.WaitForEnd(20ms));
}

TEST_F(ProgramBeside, EndsWithItsOwner) {
    const auto start = std::chrono::steady_clock::now();
    { const ChildProcess program({"sh", "-c", QByteArray("trap '' TERM; exec sleep ") + Sleeper}, Output); }
    EXPECT_LT(std::chrono::steady_clock::now() - start, FarLessThanTheSleeper);
    EXPECT_TRUE(HasNoChild());
}

TEST_F(ProgramBeside, HoldsNoneOfOurOtherFiles) {
    const int other = ::open(Folder.Native("other").constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ChildProcess program({"ls", "-l", "/proc/self/fd"}, Output);
    ASSERT_TRUE(program.WaitForEnd(LongestWait));
    ::close(other);
    const QByteArray files = ContentOf(Folder.Native("out"));
    EXPECT_TRUE(files.contains(Folder.Native("out")));
    EXPECT_FALSE(files.contains(Folder.Native("other")));
}

}  // namespace
}  // namespace Sonmira
