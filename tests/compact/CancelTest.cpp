// The cancel button, for sources and outputs of every component that it reaches.
#include "AudiotoolTest.h"
#include "engine/MadeSources.h"
#include "engine/OutputFormats.h"
#include "support/Timing.h"

#include <QElapsedTimer>

#include <ostream>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

struct Route {
    const char* Name;
    const char* Source;
    QStringView Format;
};

void PrintTo(const Route& route, std::ostream* out) {
    *out << route.Name;
}

class CancelledRow : public AudiotoolTest, public ::testing::WithParamInterface<Route> {};

TEST_P(CancelledRow, EndsTheRunAtOnceAndKeepsItsSource) {
    OpenFor(GetParam().Format);
    MakeLongWav("long.wav", 12);
    const QByteArray source = QByteArray("a.") + GetParam().Source;
    MakeSource(Folder.Native("long.wav"), Folder.Native(source));
    MakeWav("b.wav");
    AddFiles({source, "b.wav"});
    QElapsedTimer sinceClick;
    int farthest = 0;  // percent, after the click
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [&](int row) {
        if (sinceClick.isValid() && row == 1) farthest = std::max(farthest, Rows().State(row).Percent);
    });
    WhenBarReaches(2, [&] {
        sinceClick.start();
        Click(Form().cmdCancel);
    });
    Click(Form().CmdConvert);
    ASSERT_TRUE(sinceClick.isValid());
    EXPECT_LT(farthest, 60) << "the work goes on to its end where nobody hears";
    if (LooksAtMilliseconds()) {
        EXPECT_LT(sinceClick.elapsed(), 500);
    }
    EXPECT_NE(IconOf(1), u"conversion"_s) << "the row has its end";
    EXPECT_EQ(IconOf(2), QString()) << "the next one is not begun";
    EXPECT_EQ(Window->State().KillFlag(), 1);
    EXPECT_FALSE(Window->State().Busy());
    EXPECT_TRUE(Form().CmdConvert->isEnabled()) << "the window is free again";
    EXPECT_TRUE(NativeExists(Folder.Native(source)));
    EXPECT_TRUE(Said.empty());
}

INSTANTIATE_TEST_SUITE_P(Of, CancelledRow,
                         ::testing::Values(Route{"AacDecoder", "aac", FormatName::Ogg},
                                           Route{"FlacDecoder", "flac", FormatName::Mp3},
                                           Route{"ApeDecoder", "ape", FormatName::Mpc},
                                           Route{"ApeEncoder", "wav", FormatName::Ape},
                                           Route{"MpcEncoder", "wav", FormatName::Mpc},
                                           Route{"Streams", "wav", FormatName::Ogg}),
                         [](const auto& route) { return std::string(route.param.Name); });

}  // namespace
}  // namespace Sonmira
