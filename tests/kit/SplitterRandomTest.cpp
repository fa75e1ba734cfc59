#include "SplitterModel.h"
#include "SplitterTest.h"

#include <random>

namespace Sonmira {
namespace {

// The real control beside the model, through random changes.
class SplitterRandom : public SplitterTest, public ::testing::WithParamInterface<int> {
protected:
    int Number(int least, int most) { return std::uniform_int_distribution(least, most)(Random); }

    // A size as a caller may give it: mostly one that makes sense, now and then none.
    int AnySize() {
        switch (Number(0, 9)) {
            case 0:
                return Number(-40'000, -1);
            case 1:
                return Number(20'000, 100'000);
            case 2:
                return 0;
            default:
                return Number(0, 9'000);
        }
    }

    void ChangeBoth() {
        switch (Number(0, 10)) {
            case 0: {
                const int position = AnySize();
                Control.SetSplitterPos(position);
                Model.WriteSplitterPos(position);
                break;
            }
            case 1: {
                const float ratio = static_cast<float>(Number(-200, 1200)) / 1000.F;
                Control.SetRatioFromTop(ratio);
                Model.WriteRatioFromTop(ratio);
                break;
            }
            case 2: {
                const int size = Number(-20, 300);
                Control.SetSplitterSize(size);
                Model.WriteSplitterSize(size);
                break;
            }
            case 3: {
                const int maintain = Number(0, 1);
                Control.SetMaintain(maintain);
                Model.WriteMaintain(maintain);
                break;
            }
            case 4: {
                const int size = AnySize();
                Control.SetMaxSize(size);
                Model.WriteMaxSize(size);
                break;
            }
            case 5: {
                const int child = Number(0, 1);
                Control.SetMaxSizeAppliesTo(child);
                Model.WriteMaxSizeAppliesTo(child);
                break;
            }
            case 6: {
                const int size = AnySize();
                Control.SetMinSize1(size);
                Model.WriteMinSize1(size);
                break;
            }
            case 7: {
                const int size = AnySize();
                Control.SetMinSize2(size);
                Model.WriteMinSize2(size);
                break;
            }
            case 8: {
                const int size = Number(-100, 4'000);
                Control.SetMinSizeAux(size);
                Model.WriteMinSizeAux(size);
                break;
            }
            default: {
                const int width = Number(0, 20) == 0 ? 3840 : Number(0, 800);
                const int height = Number(0, 20) == 0 ? 2160 : Number(0, 600);
                const bool isNew = QSize(width, height) != Control.size();
                ResizeTo(width, height);
                const bool lying = Control.Orientation() == 1;
                if (isNew) {
                    Model.Resized(ToTwips(lying ? height : width), ToTwips(lying ? width : height));
                }
                break;
            }
        }
    }

    // Twips on the screen, written out once more.
    static int Pixels(int twips) { return static_cast<int>(std::round(twips / 15.0)); }

    void ExpectSame(const QString& when) {
        SCOPED_TRACE(when.toStdString());
        ASSERT_EQ(Control.SplitterSize(), Model.SplitterSize);
        ASSERT_EQ(Control.Maintain(), Model.Maintain);
        ASSERT_EQ(Control.SplitterPos(), SplitterModel::SixteenBits(Model.SplitterPos));
        ASSERT_EQ(Control.RatioFromTop(), Model.RatioFromTop);
        ASSERT_EQ(Control.CurrSplitterPos(), SplitterModel::SixteenBits(Model.CurrSplitterPos));
        ASSERT_EQ(Control.BarPosition(), Model.CurrSplitterPos);
        ASSERT_EQ(Control.CurrRatioFromTop(), Model.CurrRatioFromTop);
        ASSERT_EQ(Control.MaxSize(), Model.MaxSize);
        ASSERT_EQ(Control.MinSize1(), Model.MinSize1);
        ASSERT_EQ(Control.MinSize2(), Model.MinSize2);
        ASSERT_EQ(Control.MinSizeAux(), Model.MinSizeAux);
        ASSERT_EQ(Control.CrossSize(), Model.CrossSize);

        const bool lying = Control.Orientation() == 1;
        const auto along = [&](const QWidget& control) {
            const QRect place = control.geometry();
            return lying ? std::array{place.y(), place.height(), place.x(), place.width()}
                         : std::array{place.x(), place.width(), place.y(), place.height()};
        };
        const int position = Model.CurrSplitterPos;
        const int start = position + Model.SplitterSize;
        const int rest = Model.Length - start < Model.MinSize2 ? Model.MinSize2 : Model.Length - start;
        const int cross = Pixels(Model.CrossSize);
        ASSERT_EQ(along(First), (std::array{0, Pixels(position), 0, cross}));
        ASSERT_EQ(along(*Bar()), (std::array{Pixels(position), Pixels(start) - Pixels(position), 0, cross}));
        ASSERT_EQ(along(Second), (std::array{Pixels(start), Pixels(start + rest) - Pixels(start), 0, cross}));
    }

    std::mt19937 Random{static_cast<unsigned>(GetParam())};
    SplitterModel Model;
};

TEST_P(SplitterRandom, AThousandChangesLeaveWhatTheModelSays) {
    const int orientation = GetParam() % 2;
    Control.SetOrientation(orientation);
    Control.SetSplitterPos(1000);
    Model.Resized(orientation == 1 ? Across : Length, orientation == 1 ? Length : Across);
    Model.WriteSplitterPos(1000);
    ExpectSame(QStringLiteral("at the start"));
    for (int n = 0; n < 1000 && !HasFatalFailure(); ++n) {
        ChangeBoth();
        ExpectSame(QStringLiteral("after change %1").arg(n));
    }
}

INSTANTIATE_TEST_SUITE_P(TenTimes, SplitterRandom, ::testing::Range(0, 10));

}  // namespace
}  // namespace Sonmira
