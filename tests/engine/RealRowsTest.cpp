#include "MadeSources.h"
#include "RealEngine.h"

#include <chrono>
#include <thread>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// What moves while the real components work.
class RealRows : public RealEngine {
protected:
    struct Moment {
        int Bar;
        QString RowText;
    };

    void TakeSource(const QByteArray& ending) {
        Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 20L * 44100), WavKind::Signed16));
        MakeSource(Folder.Native("in.wav"), Folder.Native("song." + ending));
        TakeFile(Folder.Path("song." + ending));
    }

    // Converts the file and keeps what was shown at each yield, while a decoder of its own worked and after.
    void Watch(QStringView format) {
        Host.AtYield = [this] {
            if (Host.Rows.empty() || Row().Icon != ConversionIcon) return;
            const bool decodes = Run.EncodageParticulier() && Run.CurrentInput() == Run.RealFileName();
            std::vector<Moment>& moments = decodes ? Decoding : Later;
            moments.push_back({Host.Progress, Row().Progress});
            if (moments.size() < LeastMoments) std::this_thread::sleep_for(SlowScreen);
        };
        Convert(format);
        Host.AtYield = nullptr;
    }

    // Monkey's Audio tells how far it is once in a while only. A screen that takes as long to paint as that
    // sees some steps of it however fast the machine is.
    static constexpr std::size_t LeastMoments = 3;
    static constexpr std::chrono::milliseconds SlowScreen{30};

    static int MostOf(const std::vector<Moment>& moments) {
        int most = 0;
        for (const Moment& moment : moments) most = std::max(most, moment.Bar);
        return most;
    }

    static void ExpectRising(const std::vector<Moment>& moments) {
        for (std::size_t n = 1; n < moments.size(); ++n) EXPECT_GE(moments[n].Bar, moments[n - 1].Bar);
    }

    static void ExpectRowAtTheBar(const std::vector<Moment>& moments) {
        for (const Moment& moment : moments) {
            // The encoder's own 0 is the text that stands there already, and then the bar stays too.
            if (moment.RowText == u"0 %") continue;
            EXPECT_EQ(moment.RowText, QString::number(moment.Bar) + u" %"_s);
        }
    }

    std::vector<Moment> Decoding;
    std::vector<Moment> Later;
};

class RealDecoderRow : public RealRows, public ::testing::WithParamInterface<const char*> {};

TEST_P(RealDecoderRow, StaysAtNothingWhileTheBarRises) {
    TakeSource(GetParam());
    Watch(FormatName::Mp3);
    ASSERT_GE(Decoding.size(), LeastMoments);
    ExpectRising(Decoding);
    EXPECT_GE(MostOf(Decoding), 90);
    for (const Moment& moment : Decoding) EXPECT_EQ(moment.RowText, u"0 %"_s);
    EXPECT_EQ(Row().Progress, u"100 %"_s);
    EXPECT_EQ(Host.Progress, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, RealDecoderRow, ::testing::Values("aac", "alac", "flac", "ape", "mpc"),
                         [](const auto& ending) { return std::string(ending.param); });

TEST_F(RealRows, OfAStreamFollowTheBarTo100) {
    TakeSource("wav");
    Watch(FormatName::Mp3);
    ExpectRising(Later);
    ExpectRowAtTheBar(Later);
    EXPECT_EQ(Row().ProgressSeen.at(1), u"2 %"_s) << "half a second of twenty, to the even number";
    EXPECT_EQ(Row().Progress, u"100 %"_s);
    EXPECT_EQ(Host.Progress, 0);
}

TEST_F(RealRows, OfAnApeEncodingStayWhileTheBarRises) {
    TakeSource("wav");
    Watch(FormatName::Ape);
    ExpectRising(Later);
    EXPECT_EQ(MostOf(Later), 100);
    EXPECT_EQ(Row().ProgressSeen, std::vector<QString>{u"0 %"_s});
    EXPECT_EQ(Host.Progress, 0);
}

TEST_F(RealRows, OfAnApeToApeRouteStayToTheEnd) {
    TakeSource("ape");
    Watch(FormatName::Ape);
    EXPECT_EQ(MostOf(Decoding), 100);
    EXPECT_EQ(MostOf(Later), 100);
    EXPECT_EQ(Row().ProgressSeen, std::vector<QString>{u"0 %"_s});
}

TEST_F(RealRows, OfTheFlacEncoderFollowTheBar) {
    TakeSource("wav");
    Watch(FormatName::Flac);
    ExpectRowAtTheBar(Later);
    EXPECT_GT(Row().ProgressSeen.size(), 3U);
    EXPECT_EQ(Row().Progress, u"100 %"_s);
    EXPECT_EQ(Host.Progress, 0);
}

TEST_F(RealRows, OfTheMusepackEncoderFollowTheBar) {
    TakeSource("wav");
    Watch(FormatName::Mpc);
    ExpectRowAtTheBar(Later);
    EXPECT_GT(Row().ProgressSeen.size(), 3U);
    EXPECT_EQ(Row().Progress, u"100 %"_s);
    EXPECT_EQ(Host.Progress, 0);
}

TEST_F(RealRows, OfACopyOnTheWayToApeEndAt100) {
    TakeSource("mp3");
    Watch(FormatName::Ape);
    EXPECT_EQ(Row().Progress, u"100 %"_s);
    EXPECT_EQ(std::count(Row().ProgressSeen.begin(), Row().ProgressSeen.end(), u"100 %"_s), 2)
        << "the last block and the end of the copy, and nothing behind it";
}

TEST_F(RealRows, OfADecodedFileOnTheWayToFlacRiseOnlyInTheEncoder) {
    TakeSource("mpc");
    Watch(FormatName::Flac);
    for (const Moment& moment : Decoding) EXPECT_EQ(moment.RowText, u"0 %"_s);
    EXPECT_GE(MostOf(Decoding), 90);
    EXPECT_EQ(Row().Progress, u"100 %"_s);
}

// A WAV that was piped into being counts no bytes; nobody can tell how far the work is, but stops are heard.
TEST_F(RealRows, OfAWavOfUnknownLengthStillLetTheWindowLive) {
    QByteArray wav = WavOf(MakeSweep(44100, 2, 20L * 44100), WavKind::Signed16);
    wav.replace(4, 4, QByteArray(4, '\xFF')).replace(40, 4, QByteArray(4, '\xFF'));
    TakeFile(Folder.MakeFile("song.wav", wav));
    for (const QStringView format : {FormatName::Ape, FormatName::Flac, FormatName::Mpc}) {
        Later.clear();
        Watch(format);
        EXPECT_GE(Later.size(), LeastMoments) << format.toString().toStdString();
        EXPECT_EQ(Row().Icon, ConvertedIcon);
    }
}

}  // namespace
}  // namespace Sonmira
