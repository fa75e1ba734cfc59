#include "engine/Components.h"
#include "engine/InputCheck.h"
#include "platform/Paths.h"
#include "support/RealFiles.h"
#include "support/Sanitized.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

double SecondsByFfprobe(const QByteArray& file) {
    const QList<QByteArray> command = {"ffprobe", "-v", "error", "-show_entries", "format=duration", "-of"};
    return RunTool(command + QList<QByteArray>{"csv=p=0", file}).Output.trimmed().toDouble();
}

// The program only estimates files without a header that counts, takes the pictures of an AVI for its length
// and does not know Musepack's own count.
double SecondsByOthers(const RealFile& real) {
    if (real.Codec.startsWith("musepack")) {
        const TestFolder folder;
        RunTool({"mpcdec", real.Path, folder.Native("out.wav")});
        return SecondsByFfprobe(folder.Native("out.wav"));
    }
    const bool isEstimated =
        real.Codec == "mp3" || real.Codec == "aac" || real.Path.toLower().endsWith(".avi");
    const double seconds = isEstimated ? 0 : SecondsByFfprobe(real.Path);
    return seconds > 0 ? seconds : static_cast<double>(real.Frames) / real.Rate;
}

QString Written(double seconds) {
    const auto whole = static_cast<int>(seconds);
    return QString::asprintf("%02d:%02d", whole / 60, whole % 60);
}

class RealFileLength : public ::testing::TestWithParam<RealFile> {};

TEST_P(RealFileLength, IsThatOfAnotherProgram) {
    const RealFile& real = GetParam();
    CodecSet codecs;
    const std::string text = ReadFileInformation(codecs.Parts(), FromNative(real.Path)).toStdString();
    if (real.State == "refused") {
        EXPECT_EQ(text, "00:00");
        return;
    }
    if (real.Path.endsWith(".aac")) {
        EXPECT_EQ(text, "-");
        return;
    }
    bool hasDecoderOfItsOwn = false;
    for (const char* ending : {".flac", ".ape", ".mpc"}) {
        hasDecoderOfItsOwn = hasDecoderOfItsOwn || real.Path.endsWith(ending);
    }
    // Others count a lossy codec's delay as sound, which can reach over the edge of a second.
    constexpr double Delay = 0.06;
    const double seconds = SecondsByOthers(real);
    std::vector<std::string> right;
    for (const double length : {seconds - Delay, seconds, seconds + Delay}) {
        right.push_back(
            Written(hasDecoderOfItsOwn ? std::floor(length) : std::nearbyint(length)).toStdString());
    }
    EXPECT_TRUE(std::find(right.begin(), right.end(), text) != right.end())
        << text << " and by others " << seconds << " seconds";
}

INSTANTIATE_TEST_SUITE_P(Corpus, RealFileLength, ::testing::ValuesIn(SomeOf(RealFiles(), 3)), NameOfRealFile);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealFileLength);

}  // namespace
}  // namespace Sonmira
