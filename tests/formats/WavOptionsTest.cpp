#include "OptionsTest.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

const QString CdText = u"PCM 44100 Hz, Stereo, 16 bits"_s;

class WavWindow : public OptionsTest {
protected:
    WavWindow() { Save(u"AudioConverter"_s, u"Format"_s, u"Wav"_s); }

    static void SavePlaces(const QString& frequency, const QString& channel, const QString& bits) {
        Save(u"Wav"_s, u"Frequency"_s, frequency);
        Save(u"Wav"_s, u"Channel"_s, channel);
        Save(u"Wav"_s, u"bits"_s, bits);
    }
    static QString Places() {
        return Saved(u"Wav"_s, u"Frequency"_s) + u'/' + Saved(u"Wav"_s, u"Channel"_s) + u'/' +
               Saved(u"Wav"_s, u"bits"_s);
    }
    static QString Shown(const WavOptions& window) {
        return u"%1/%2/%3"_s.arg(window.Option1->checkedId())
            .arg(window.Option2->checkedId())
            .arg(window.Option3->checkedId());
    }
    static void Pick(const WavOptions& window, int frequency, int channel, int bits) {
        ClickOption(window.Option1, frequency);
        ClickOption(window.Option2, channel);
        ClickOption(window.Option3, bits);
        EXPECT_EQ(Shown(window), u"%1/%2/%3"_s.arg(frequency).arg(channel).arg(bits));
    }
    static QString Field(const QByteArray& path, const char* option) {
        return QString::fromLatin1(RunTool({"soxi", option, path}).Output.trimmed());
    }
};

TEST_F(WavWindow, OffersItsThreeGroupsWithCdSoundChosen) {
    Open();
    EXPECT_EQ(InWav([](WavOptions& window) {
                  EXPECT_EQ(window.windowTitle(), u"Wav PCM Option format"_s);
                  EXPECT_EQ(CaptionsOf(window.Option1, 0),
                            (QStringList{u"96000 Hz"_s, u"88200 Hz"_s, u"48000 Hz"_s, u"44100 Hz"_s,
                                         u"32000 Hz"_s, u"24000 Hz"_s, u"22050 Hz"_s, u"16000 Hz"_s,
                                         u"12000 Hz"_s, u"11025 Hz"_s, u"8000 Hz"_s, u"6000 Hz"_s}));
                  EXPECT_EQ(CaptionsOf(window.Option2, 0), (QStringList{u"Mono"_s, u"Stéréo"_s}));
                  EXPECT_EQ(
                      CaptionsOf(window.Option3, 0),
                      (QStringList{u"2 bits per sample"_s, u"3 bits per sample"_s, u"4 bits per sample"_s,
                                   u"5 bits per sample"_s, u"8 bits per sample"_s, u"16 bits per sample"_s,
                                   u"24 bits per sample"_s, u"32 bits per sample"_s}));
                  EXPECT_EQ(Shown(window), u"3/1/5"_s);
                  EXPECT_EQ(window.findChild<QGroupBox*>(u"Frame1"_s)->title(), u"Sampling Frequency :"_s);
                  EXPECT_EQ(window.findChild<QGroupBox*>(u"Frame2"_s)->title(), u"Channel Mode :"_s);
                  EXPECT_EQ(window.findChild<QGroupBox*>(u"Frame3"_s)->title(), u"Bits per sample :"_s);
                  EXPECT_EQ(window.Command1->text(), u"Apply"_s);
                  EXPECT_EQ(window.Command2->text(), u"Restore CD Audio default format"_s);
              }),
              1);
}

TEST_F(WavWindow, UnusualChoicesAreGreyAndCanBeChosenAllTheSame) {
    Open();
    InWav([](WavOptions& window) {
        const auto greys = [](const QButtonGroup* group) {
            QList<int> places;
            for (int n = 0; group->button(n) != nullptr; ++n) {
                const QPalette& palette = group->button(n)->palette();
                if (palette.color(QPalette::Active, QPalette::WindowText).rgb() == 0xFF808080) places << n;
                EXPECT_TRUE(group->button(n)->isEnabled());
            }
            return places;
        };
        EXPECT_EQ(greys(window.Option1), (QList<int>{0, 1}));
        EXPECT_EQ(greys(window.Option2), QList<int>());
        EXPECT_EQ(greys(window.Option3), (QList<int>{0, 1, 2, 3, 6, 7}));
        Pick(window, 0, 0, 7);
        Click(window.Command1);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Summary(), u"PCM 96000 Hz, Mono, 32 bits"_s);
}

TEST_F(WavWindow, WithoutKeysTheFormatIsCdSoundAndNoKeyIsWritten) {
    Open();
    EXPECT_EQ(Summary(), CdText);
    InWav([](WavOptions& window) { window.close(); });
    EXPECT_EQ(Summary(), CdText);
    EXPECT_EQ(Places(), u"//"_s);
}

TEST_F(WavWindow, ApplySavesThePlacesAndCloses) {
    Open();
    InWav([](WavOptions& window) {
        Pick(window, 6, 0, 4);
        Click(window.Command1);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Places(), u"6/0/4"_s);
    EXPECT_EQ(Summary(), u"PCM 22050 Hz, Mono, 8 bits"_s);
    InWav([](WavOptions& window) { EXPECT_EQ(Shown(window), u"6/0/4"_s); });
    EXPECT_EQ(Places(), u"6/0/4"_s) << "the close box keeps an accepted format";
    EXPECT_EQ(Summary(), u"PCM 22050 Hz, Mono, 8 bits"_s);
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(WavWindow, ARefusedApplyTellsSoStaysAndIsTheSavedFormat) {
    Open();
    InWav([this](WavOptions& window) {
        Pick(window, 6, 0, 0);
        Click(window.Command1);
        EXPECT_TRUE(window.isVisible());
        ASSERT_EQ(Boxes.size(), 1U);
        EXPECT_EQ(Boxes[0].Text, u"Can't set this format to the encoder. Please modify format options."_s);
        EXPECT_EQ(Boxes[0].Icon, MessageIcon::Warning);
        EXPECT_EQ(Boxes[0].Title, u"Sonmira"_s);
        EXPECT_EQ(Places(), u"6/0/0"_s);
        EXPECT_TRUE(Summary().isEmpty());
        Pick(window, 6, 0, 5);
        Click(window.Command1);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Places(), u"6/0/5"_s);
    EXPECT_EQ(Summary(), u"PCM 22050 Hz, Mono, 16 bits"_s);
}

TEST_F(WavWindow, GivingUpOnARefusedFormatLeavesCdSound) {
    for (const bool byEscape : {false, true}) {
        Open();
        InWav([&](WavOptions& window) {
            Pick(window, 0, 0, 3);
            Click(window.Command1);
            EXPECT_TRUE(Summary().isEmpty());
            if (byEscape) {
                QTest::keyClick(&window, Qt::Key_Escape);
            } else {
                window.close();
            }
            EXPECT_FALSE(window.isVisible());
        });
        EXPECT_EQ(Places(), u"3/1/5"_s);
        EXPECT_EQ(Summary(), CdText);
    }
}

TEST_F(WavWindow, ARefusedSavedFormatIsToldByNothingUntilTheWindowIsUsed) {
    SavePlaces(u"3"_s, u"1"_s, u"2"_s);
    Open();
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Wav"_s);
    EXPECT_TRUE(Summary().isEmpty());
    EXPECT_TRUE(Panel().TextOutFormat->isVisible());
    EXPECT_TRUE(Boxes.empty());
    InWav([](WavOptions& window) { EXPECT_EQ(Shown(window), u"3/1/2"_s); });
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(Summary(), CdText);
    EXPECT_EQ(Places(), u"3/1/5"_s);
}

TEST_F(WavWindow, RestoreGivesCdSoundAndCloses) {
    SavePlaces(u"11"_s, u"0"_s, u"4"_s);
    Open();
    EXPECT_EQ(Summary(), u"PCM 6000 Hz, Mono, 8 bits"_s);
    InWav([](WavOptions& window) {
        EXPECT_EQ(Shown(window), u"11/0/4"_s);
        Click(window.Command2);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Places(), u"3/1/5"_s);
    EXPECT_EQ(Summary(), CdText);
}

TEST_F(WavWindow, APlaceBeyondTheGroupIsNoFormatAndLeavesTheChoiceOfTheWindow) {
    for (const QString& place : {u"12"_s, u"-1"_s}) {
        SavePlaces(place, u"0"_s, u"4"_s);
        Open();
        EXPECT_TRUE(Summary().isEmpty());
        InWav([](WavOptions& window) {
            EXPECT_EQ(Shown(window), u"3/0/4"_s);
            Click(window.Command1);
        });
        EXPECT_EQ(Summary(), u"PCM 44100 Hz, Mono, 8 bits"_s);
        EXPECT_EQ(Places(), u"3/0/4"_s);
    }
}

TEST_F(WavWindow, APlaceThatIsNoNumberStandsForThatOfCdSound) {
    SavePlaces(u"many"_s, u"0"_s, u"4"_s);
    Open();
    EXPECT_EQ(Summary(), u"PCM 44100 Hz, Mono, 8 bits"_s);
    InWav([](WavOptions& window) { EXPECT_EQ(Shown(window), u"3/0/4"_s); });
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(ProgramEnds, 0);
}

TEST_F(WavWindow, WhatIsAppliedIsWhatARunWrites) {
    Open();
    InWav([](WavOptions& window) {
        Pick(window, 11, 0, 4);
        Click(window.Command1);
    });
    const QByteArray output = Convert(MakeTone(44100, 2, 44100, 440), "wav");
    EXPECT_EQ(Field(output, "-r"), u"6000"_s);
    EXPECT_EQ(Field(output, "-c"), u"1"_s);
    EXPECT_EQ(Field(output, "-b"), u"8"_s);
    EXPECT_EQ(Field(output, "-e"), u"Unsigned Integer PCM"_s);
    EXPECT_NEAR(Field(output, "-s").toInt(), 6000, 2);
    const QByteArray stat = RunTool({"sox", output, "-n", "stat"}).Errors;
    const qsizetype at = stat.indexOf("Rough   frequency:");
    EXPECT_NEAR(stat.mid(at + 18, stat.indexOf('\n', at) - at - 18).trimmed().toInt(), 440, 15);
}

}  // namespace
}  // namespace Sonmira
