#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/JobDriver.h"
#include "engine/Run.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

long ResidentKilobytes() {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

// A WAV whose header is right and whose sound is a hole in the file: it takes no disk and no time to make.
void MakeLongSilence(const TestFolder& folder, const QByteArray& name, std::int64_t frames) {
    QByteArray header = WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16);
    const auto put = [&](qsizetype at, std::int64_t value) {
        for (int n = 0; n < 4; ++n) header[at + n] = static_cast<char>(value >> (8 * n));
    };
    put(4, 36 + frames * 4);
    put(40, frames * 4);
    folder.MakeFile(name, header);
    std::filesystem::resize_file(folder.Native(name).toStdString(),
                                 static_cast<std::uintmax_t>(44 + frames * 4));
}

TEST(LongFile, MemoryStaysFlatOverSixtyMinutes) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer keeps freed memory for a while";
#endif
    constexpr std::int64_t Frames = 60LL * 60 * 44100;
    const TestFolder folder;
    MakeLongSilence(folder, "Music/long.wav", Frames);
    NumberLanguageLines();
    HeadlessHost host;
    host.OutputFolder = folder.MakeFolder("out");
    host.Format = u"Wav"_s;
    Collection items;
    AddDirectory(items, host, folder.Path("Music"));
    CodecSet codecs;
    AudioFile& writer = codecs.FileWenc;
    writer.SetFormatPCM(44100, 1, 8);

    long early = 0;
    long most = 0;
    host.AtYield = [&] {
        const long now = ResidentKilobytes();
        if (host.Progress >= 1 && host.Progress <= 5) early = std::max(early, now);
        if (host.Progress <= 5) return;
        most = std::max(most, now);
    };
    Sonmira::Run run;
    JobDriver(run, host, codecs.Parts(), items).RunAllConversions();
    EXPECT_EQ(host.Rows[0].Icon, u"converted"_s);
    EXPECT_GE(std::filesystem::file_size(folder.Native("out/Music/long.wav").toStdString()), 44U + Frames);
    EXPECT_LT(most - early, 16 * 1024) << "kilobytes grown after the first twentieth";
}

}  // namespace
}  // namespace Sonmira
