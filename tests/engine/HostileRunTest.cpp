#include "MadeSources.h"
#include "RealEngine.h"
#include "support/Sanitized.h"
#include "support/Timing.h"

#include <sys/resource.h>

#include <filesystem>
#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr auto MostTime = std::chrono::seconds(60);  // of the processor
constexpr long MostKilobytes = 300L * 1024;

// Whatever a file holds, its run ends soon, in a row that says how, and leaves the window to the user.
class HostileRun : public RealEngine, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        Ending = GetParam();
        Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 100'000), WavKind::Signed16));
        const QByteArray kind = Ending == "apl" ? QByteArray("ape") : Ending;
        MakeSource(Folder.Native("in.wav"), Folder.Native("made." + kind));
        Intact = ContentOf(Folder.Native("made." + kind));
        TakeFile(Folder.MakeFile("song." + Ending));
    }

    void TearDown() override {
#ifndef __SANITIZE_ADDRESS__
        rusage usage = {};
        getrusage(RUSAGE_SELF, &usage);
        EXPECT_LT(usage.ru_maxrss, MostKilobytes);
#endif
    }

    void ConvertOne(const QByteArray& content, QStringView format) {
        Folder.MakeFile("song." + Ending, content);
        const auto start = CpuClock::now();
        Convert(format);
        EXPECT_LT(CpuClock::now() - start, MostTime);
        ASSERT_EQ(Host.Rows.size(), 1U);
        EXPECT_TRUE(Host.ControlsEnabled);
        EXPECT_FALSE(Run.Busy());
        if (Row().Icon == ErrorIcon) {
            EXPECT_TRUE(Row().Progress.startsWith(u"line 9") || Row().Progress.endsWith(u" %"))
                << Row().Progress.toStdString();
        } else {
            EXPECT_EQ(Row().Icon, ConvertedIcon);
        }
        std::filesystem::remove_all(Folder.Native("out").toStdString());
        Folder.MakeFolder("out");
    }

    // To WAV, and to the other formats in turn.
    void ConvertHostile(const QByteArray& content) {
        SCOPED_TRACE(Round);
        ConvertOne(content, FormatName::Wav);
        constexpr QStringView Others[] = {FormatName::Flac, FormatName::Mp3, FormatName::Ape,
                                          FormatName::Ogg,  FormatName::Wma, FormatName::Mpc};
        ConvertOne(content, Others[static_cast<std::size_t>(Round++) % std::size(Others)]);
    }

    QByteArray Ending;
    QByteArray Intact;
    int Round = 0;
};

TEST_P(HostileRun, OfAFileCutAnywhereEndsWell) {
    for (const qsizetype size : {1, 4, 11, 24, 44, 45, 60, 77, 100, 500}) {
        ConvertHostile(Intact.first(std::min(size, Intact.size())));
    }
    for (int part = 1; part < 12; ++part) ConvertHostile(Intact.first(Intact.size() * part / 12));
}

TEST_P(HostileRun, OfRandomBytesEndsWell) {
    std::mt19937 random(20240401);
    for (int round = 0; round < 12; ++round) {
        QByteArray bytes(qsizetype{round} * 3000, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        // Some with the first bytes of a good file, so that it is taken for one.
        if (round % 2 == 0) bytes.replace(0, qsizetype{40} * round, Intact.first(qsizetype{40} * round));
        ConvertHostile(bytes);
    }
}

TEST_P(HostileRun, OfAHeaderThatPromisesGigabytesEndsWell) {
    for (qsizetype at = 0; at < (UnderSanitizers ? 48 : 96); at += 4) {
        QByteArray lying = Intact;
        ConvertHostile(lying.replace(at, 4, at % 8 == 0 ? QByteArray(4, '\x7F') : QByteArray(4, '\xFF')));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, HostileRun,
                         ::testing::Values("wav", "avi", "mp3", "ogg", "wma", "m4a", "aac", "alac", "ape",
                                           "apl", "flac", "mpc", "mp+"),
                         [](const auto& ending) {
                             const std::string name = ending.param;
                             return name == "mp+" ? std::string("mpplus") : name;
                         });

}  // namespace
}  // namespace Sonmira
