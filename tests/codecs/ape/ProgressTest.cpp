#include "Signals.h"
#include "codecs/ApeFunctions.h"
#include "codecs/ape/Decode.h"
#include "codecs/ape/Encode.h"
#include "support/TestFolder.h"
#include "support/Timing.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace Sonmira {
namespace {

using Clock = std::chrono::steady_clock;

// A little less than four groups of frames.
QString MakeSource(const TestFolder& folder) {
    return folder.MakeFile("in.wav", WavOf(MakeApeSignal("walk", 2, 1'150'000), WavKind::Signed16));
}

// With one worker only one group waits beside the one at work: half of the sound at most is done where none
// was taken back yet.
const ApeWorkers Slow{1, AvailableApeKernels().front()};

// The progress is told once in a while only. Who takes as long as that to hear it is told of every step,
// however fast the machine is.
constexpr std::chrono::milliseconds SlowListener{30};

TEST(ApeProgress, RisesFromNothingToAHundredPercentOnTheCallingThread) {
    const TestFolder folder;
    const QString wav = MakeSource(folder);
    const qint32 killFlag = 0;
    const auto caller = std::this_thread::get_id();
    std::vector<qint32> told;
    const ApeProgressCallback progress = [&](qint32 value) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        told.push_back(value);
        std::this_thread::sleep_for(SlowListener);
    };
    const auto expectRise = [&] {
        ASSERT_GE(told.size(), 5U);
        EXPECT_EQ(told.front(), 0);
        EXPECT_EQ(told.back(), 100'000);
        EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
        EXPECT_GE(std::count_if(told.begin(), told.end(),
                                [](qint32 value) { return value > 0 && value < 100'000; }),
                  2);
        told.clear();
    };
    EncodeApe(wav, folder.Path("out.ape"), 3000, progress, killFlag, Slow);
    expectRise();
    DecodeApe(folder.Path("out.ape"), folder.Path("back.wav"), progress, killFlag, Slow);
    expectRise();
}

TEST(ApeStop, IsHeardAtOnceAndLeavesThePartialFile) {
    const TestFolder folder;
    const QString wav = MakeSource(folder);
    CompressFile(wav, folder.Path("whole.ape"), 3000, {}, 0);
    qint32 killFlag = 0;
    int calls = 0;
    Clock::time_point stopped;
    const ApeProgressCallback progress = [&](qint32 value) {
        EXPECT_LT(value, 100'000);
        if (++calls < 4) {
            std::this_thread::sleep_for(SlowListener);
            return;
        }
        EXPECT_EQ(calls, 4) << "told of nothing more";
        killFlag = 1;
        stopped = Clock::now();
    };
    const auto expectStopped = [&] {
        EXPECT_EQ(calls, 4);
        if (LooksAtMilliseconds()) {
            EXPECT_LT(Clock::now() - stopped, std::chrono::milliseconds(100));
        }
        calls = 0;
        killFlag = 0;
    };
    EncodeApe(wav, folder.Path("out.ape"), 3000, progress, killFlag, Slow);
    expectStopped();
    EXPECT_TRUE(NativeExists(folder.Native("out.ape")));
    EXPECT_LT(ContentOf(folder.Native("out.ape")).size(),
              ContentOf(folder.Native("whole.ape")).size() * 6 / 10);
    DecodeApe(folder.Path("whole.ape"), folder.Path("back.wav"), progress, killFlag, Slow);
    expectStopped();
    EXPECT_TRUE(NativeExists(folder.Native("back.wav")));
    const QByteArray back = ContentOf(folder.Native("back.wav"));
    EXPECT_LT(back.size(), ContentOf(folder.Native("in.wav")).size() * 6 / 10);
    EXPECT_EQ(qFromLittleEndian<quint32>(back.constData() + 40), back.size() - 44)
        << "who stopped it takes what there is";
    EXPECT_EQ(qFromLittleEndian<quint32>(back.constData() + 4), back.size() - 8);
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
