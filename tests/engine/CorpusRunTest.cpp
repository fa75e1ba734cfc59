#include "RealEngine.h"
#include "platform/Paths.h"
#include "support/RealFiles.h"
#include "support/Sanitized.h"
#include "support/Tool.h"

#include <cstdio>
#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr int OutputRate = 44100;

// Frames at 44100 Hz that another program decodes from a file; -1 where it decodes none.
std::int64_t FramesByOthers(const TestFolder& folder, const QByteArray& file) {
    const QByteArray raw = folder.Native("raw");
    const ToolResult decoded =
        RunTool({"ffmpeg", "-v", "error", "-y", "-i", file, "-f", "s16le", "-ac", "2", "-ar", "44100", raw});
    if (decoded.ExitCode != 0) return -1;
    return static_cast<std::int64_t>(std::filesystem::file_size(raw.toStdString())) / 4;
}

// A decoder of its own takes no file of a second or less, and none that the seconds, cut, make one of.
bool IsTooShort(const RealFile& real) {
    for (const char* ending : {".flac", ".ape", ".mpc"}) {
        if (real.Path.endsWith(ending)) return real.Frames < qint64{2} * real.Rate;
    }
    return false;
}

class CorpusRun : public RealEngine, public ::testing::WithParamInterface<RealFile> {
protected:
    // What the row should say in the end, as far as it is known of the file.
    QString ExpectedIcon(const RealFile& real, const OutputFormat& format) const {
        if (real.State == "refused" || IsTooShort(real)) return u"error"_s;
        // Less sound than the header counts. The encoders that read a WAV themselves are asked for no result.
        const bool isCut = real.Path.contains("early-eof");
        return isCut && !format.FromWav ? u"error"_s : u"converted"_s;
    }
};

TEST_P(CorpusRun, EndsInAnOutputOfItsLengthOrInAWrittenReason) {
    const RealFile& real = GetParam();
    const QByteArray name = real.Path.mid(real.Path.lastIndexOf('/') + 1);
    const QByteArray stem = name.first(name.lastIndexOf('.'));
    const double length = static_cast<double>(real.Frames) * OutputRate / real.Rate;
    QByteArray line = name;
    TakeFile(FromNative(real.Path));
    for (const OutputFormat& format : OutputFormats) {
        const auto place = static_cast<std::size_t>(&format - &OutputFormats[0]);
        if (UnderSanitizers && (static_cast<std::size_t>(real.Path.size()) + place) % 5 != 0) continue;
        SCOPED_TRACE(format.Ending);
        Convert(format.Name);
        ASSERT_EQ(Host.Rows.size(), 1U);
        EXPECT_TRUE(Host.ControlsEnabled);
        EXPECT_FALSE(Run.Busy());
        line += " | " + Row().Progress.toUtf8() + ' ' + Row().Icon.toUtf8();
        EXPECT_EQ(Row().Icon, ExpectedIcon(real, format));
        if (Row().Icon != u"converted") {
            EXPECT_TRUE(Row().Progress.startsWith(u"line 9")) << Row().Progress.toStdString();
            continue;
        }
        const QByteArray output = Folder.Native("out/" + stem + '.' + format.Ending);
        if (real.Path.contains("early-eof")) {
            EXPECT_TRUE(NativeExists(output));
            continue;
        }
        // A codec's delay and padding, which not every format can tell.
        EXPECT_NEAR(static_cast<double>(FramesByOthers(Folder, output)), length, 5200);
    }
    if (qEnvironmentVariableIsSet("SONMIRA_TABLE")) std::printf("%s\n", line.constData());
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusRun, ::testing::ValuesIn(RealFiles()), NameOfRealFile);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusRun);

}  // namespace
}  // namespace Sonmira
