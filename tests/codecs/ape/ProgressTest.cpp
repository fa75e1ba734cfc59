#include "Signals.h"
#include "codecs/ApeFunctions.h"
#include "codecs/ape/Decode.h"
#include "codecs/ape/Encode.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace Sonmira {
namespace {

using Clock = std::chrono::steady_clock;

// Twenty seconds of sound.
QString MakeSource(const TestFolder& folder) {
    return folder.MakeFile("in.wav", WavOf(MakeApeSignal("walk", 2, 900'000), WavKind::Signed16));
}

// The portable kernels take long enough for a stop to come in between.
const ApeWorkers Slow{2, AvailableApeKernels().front()};

TEST(ApeProgress, RisesFromNothingToAHundredPercentOnTheCallingThread) {
    const TestFolder folder;
    const QString wav = MakeSource(folder);
    const qint32 killFlag = 0;
    const auto caller = std::this_thread::get_id();
    std::vector<qint32> told;
    const ApeProgressCallback progress = [&](qint32 value) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        told.push_back(value);
    };
    const auto expectRise = [&] {
        ASSERT_GE(told.size(), 5U);
        EXPECT_EQ(told.front(), 0);
        EXPECT_EQ(told.back(), 100'000);
        EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
        EXPECT_GT(told[told.size() / 2], 0);
        told.clear();
    };
    EncodeApe(wav, folder.Path("out.ape"), 3000, progress, killFlag, Slow);
    expectRise();
    DecodeApe(folder.Path("out.ape"), folder.Path("back.wav"), progress, killFlag, Slow);
    expectRise();
}

TEST(ApeStop, IsHeardWithinATenthOfASecondAndLeavesThePartialFile) {
    const TestFolder folder;
    const QString wav = MakeSource(folder);
    CompressFile(wav, folder.Path("whole.ape"), 3000, {}, 0);
    qint32 killFlag = 0;
    int calls = 0;
    Clock::time_point stopped;
    const ApeProgressCallback progress = [&](qint32 value) {
        EXPECT_LT(value, 100'000);
        if (++calls < 4) return;
        EXPECT_EQ(calls, 4);
        killFlag = 1;
        stopped = Clock::now();
    };
    EncodeApe(wav, folder.Path("out.ape"), 3000, progress, killFlag, Slow);
    EXPECT_LT(Clock::now() - stopped, std::chrono::milliseconds(100));
    EXPECT_TRUE(NativeExists(folder.Native("out.ape")));
    calls = 0;
    killFlag = 0;
    DecodeApe(folder.Path("whole.ape"), folder.Path("back.wav"), progress, killFlag, Slow);
    EXPECT_LT(Clock::now() - stopped, std::chrono::milliseconds(100));
    EXPECT_TRUE(NativeExists(folder.Native("back.wav")));
    EXPECT_LT(ContentOf(folder.Native("back.wav")).size(), ContentOf(folder.Native("in.wav")).size());
}

TEST(ApeStop, ThatWasThereBeforeStopsAtOnce) {
    const TestFolder folder;
    const QString wav = MakeSource(folder);
    const qint32 killFlag = 1;
    CompressFile(wav, folder.Path("out.ape"), 1000, {}, killFlag);
    EXPECT_LT(ContentOf(folder.Native("out.ape")).size(), 1000);
}

}  // namespace
}  // namespace Sonmira
