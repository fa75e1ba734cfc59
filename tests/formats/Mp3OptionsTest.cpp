#include "OptionsTest.h"

#include <QtEndian>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Mp3Window : public OptionsTest {
protected:
    static void SaveKey(int key, const QString& value) { Save(u"Mp3"_s, QString::number(key), value); }
    static QString Key(int key) { return Saved(u"Mp3"_s, QString::number(key)); }
    static QString Keys() { return SavedNumbers(u"Mp3"_s, 22).join(u' '); }
    static QRadioButton* Option(const QButtonGroup* group, int number) {
        return static_cast<QRadioButton*>(group->button(number));
    }
    static bool IsUsable(const QWidget& window, const char* name) {
        return window.findChild<QWidget*>(QString::fromLatin1(name))->isEnabled();
    }

    // The tones of Sound(), by their frequencies.
    static constexpr double Low = 1000;
    static constexpr double Passed = 15000;
    static constexpr double Stopped = 17200;
    static TestSound Sound() {
        TestSound sound = MakeTone(44100, 2, 3 * 44100, Low, 0.2);
        for (const double frequency : {Passed, Stopped}) {
            const TestSound more = MakeTone(44100, 2, 3 * 44100, frequency, 0.2);
            for (std::size_t n = 0; n < sound.Samples.size(); ++n) sound.Samples[n] += more.Samples[n];
        }
        // A second of rest, for which a variable rate needs next to nothing.
        sound.Samples.resize(sound.Samples.size() + 88200);
        return sound;
    }
    // The level of that tone in the middle of the file's sound, as another decoder hears it.
    double LevelIn(const QByteArray& mp3, double frequency) {
        const QByteArray raw =
            RunTool({"ffmpeg", "-v", "error", "-i", mp3, "-f", "s16le", "-ac", "1", "-"}).Output;
        std::vector<double> samples;
        for (qsizetype at = 44100 * 2; at < 44100 * 4; at += 2) {
            samples.push_back(qFromLittleEndian<qint16>(raw.constData() + at) / 32768.0);
        }
        return LevelAt(samples, 44100, frequency);
    }
    // How many different sizes its frames have.
    static qsizetype FrameSizes(const QByteArray& mp3) {
        const QList<QByteArray> sizes =
            RunTool({"ffprobe", "-v", "error", "-show_entries", "packet=size", "-of", "csv=p=0", mp3})
                .Output.split('\n');
        return QSet<QByteArray>(sizes.begin(), sizes.end()).size() - 1;
    }
};

TEST_F(Mp3Window, WhatIsAppliedIsSavedShownAgainAndHeard) {
    Open();
    InMp3([this](Mp3Options& window) {
        MoveTo(window.sldrBitrate, 11);
        Choose(window.cmbChMode, 0);
        window.tabMP3->setCurrentIndex(2);
        Choose(window.cmbVBRCodingMethod, 3);
        window.tabMP3->setCurrentIndex(1);
        Tick(window.chLFilt);
        Type(window.udLFiltF, 16000);
        Click(window.cmdApply);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(Key(3), u"192"_s);
        Click(window.cmdOK);
        EXPECT_FALSE(window.isVisible());
    });
    const QString keys =
        u"128 0 192 True False 1 0 3 False 44100 -1 5 16000 760 True False False 2 320 2 4 "
        "True"_s;
    EXPECT_EQ(Keys(), keys);
    const QString summary = Summary();

    EXPECT_TRUE(CloseWindow());
    Open();
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Mp3"_s);
    EXPECT_EQ(Summary(), summary);
    EXPECT_EQ(Keys(), keys);
    InMp3([](Mp3Options& window) {
        EXPECT_EQ(window.tabMP3->currentIndex(), 0);
        EXPECT_EQ(window.frmBitrate->title(), u"Current bitrate: 192 kbit"_s);
        EXPECT_EQ(window.sldrBitrate->value(), 11);
        EXPECT_EQ(window.cmbChMode->currentText(), u"Mono"_s);
        EXPECT_EQ(window.cmbFrequency->currentText(), u"44 100 Hz"_s);
        EXPECT_EQ(window.sldrQuality->value(), 3);
        EXPECT_FALSE(window.chHFilt->isChecked());
        EXPECT_EQ(window.udHFiltF->value(), 30);
        EXPECT_EQ(window.udHFiltW->value(), 5);
        EXPECT_TRUE(window.chLFilt->isChecked());
        EXPECT_EQ(window.udLFiltF->value(), 16000);
        EXPECT_EQ(window.udLFiltW->value(), 760);
        EXPECT_EQ(window.cmbVBRCodingMethod->currentText(), u"New"_s);
        EXPECT_EQ(window.udVbrQuality->value(), 4);
        EXPECT_EQ(window.udAbrBitrate->value(), 128);
        EXPECT_EQ(window.sldrVbrBitrate->value(), 14);
        EXPECT_EQ(window.lblVbrBitrate->text(), u"Current bitrate: 320 kbit"_s);
        EXPECT_TRUE(window.chWriteVBRHeader->isChecked());
        EXPECT_FALSE(window.chStrictlyEnforceMinBitrate->isChecked());
        EXPECT_FALSE(window.chStrictlyISOCompliance->isChecked());
        EXPECT_TRUE(window.chShortBlocks->isChecked());
        EXPECT_TRUE(window.chBitReservoir->isChecked());
        EXPECT_FALSE(window.chBlockType->isChecked());
        EXPECT_FALSE(window.chErrorProtection->isChecked());
        EXPECT_EQ(window.cmbATHControl->currentIndex(), 0);
        EXPECT_EQ(window.cmbEmphasis->currentIndex(), 0);
    });

    const QByteArray made = Convert(Sound(), "mp3");
    EXPECT_EQ(Probe(made, "codec_name,sample_rate,channels"), "mp3,44100,1");
    EXPECT_TRUE(ContentOf(made).left(2000).contains("Xing")) << "the mark of a variable rate";
    EXPECT_GT(FrameSizes(made), 2);
    EXPECT_GT(LevelIn(made, Low), 0.15);
    EXPECT_GT(LevelIn(made, Passed), 0.15);
    EXPECT_LT(LevelIn(made, Stopped), 0.005);

    InMp3([](Mp3Options& window) {
        Tick(window.chLFilt);
        Click(window.cmdOK);
    });
    EXPECT_EQ(Key(13), u"-1"_s);
    EXPECT_GT(LevelIn(Convert(Sound(), "mp3"), Stopped), 0.1) << "it was the filter that took it";
}

TEST_F(Mp3Window, MovingABitrateRenewsItsCaptionAndItsTip) {
    Open();
    InMp3([](Mp3Options& window) {
        constexpr int kilobits[] = {8, 16, 24, 32, 48, 56, 64, 96, 112, 128, 160, 192, 224, 256, 320};
        window.cmbVBRCodingMethod->SelectPlace(1);
        for (const bool ofVbr : {false, true}) {
            window.tabMP3->setCurrentIndex(ofVbr ? 2 : 0);
            QSlider* const slider = ofVbr ? window.sldrVbrBitrate : window.sldrBitrate;
            QTest::keyClick(slider, Qt::Key_End);
            QTest::keyClick(slider, Qt::Key_Home);
            for (const int value : kilobits) {
                const QString caption = u"Current bitrate: %1 kbit"_s.arg(value);
                EXPECT_EQ(ofVbr ? window.lblVbrBitrate->text() : window.frmBitrate->title(), caption);
                EXPECT_EQ(slider->toolTip(), QString::number(value));
                QTest::keyClick(slider, Qt::Key_Right);
            }
        }
    });
}

TEST_F(Mp3Window, TheMethodDecidesWhatCanBeUsed) {
    Open();
    InMp3([](Mp3Options& window) {
        window.tabMP3->setCurrentIndex(2);
        for (int method = 0; method < 6; ++method) {
            Choose(window.cmbVBRCodingMethod, method);
            const bool none = method == 0;
            const bool abr = method == 5;
            for (const char* name : {"lblVbrQuality", "txtVbrQuality", "udVbrQuality"}) {
                EXPECT_EQ(IsUsable(window, name), !none && !abr) << name << ' ' << method;
            }
            for (const char* name : {"lblAbrBitrate", "txtAbrBitrate", "udAbrBitrate"}) {
                EXPECT_EQ(IsUsable(window, name), abr) << name << ' ' << method;
            }
            for (const char* name : {"frmVbrBitrate", "lblVbrBitrate", "sldrVbrBitrate", "frmVbrAdvanced",
                                     "chWriteVBRHeader", "chStrictlyEnforceMinBitrate"}) {
                EXPECT_EQ(IsUsable(window, name), !none) << name << ' ' << method;
                EXPECT_TRUE(window.findChild<QWidget*>(QString::fromLatin1(name))->isVisible());
            }
        }
    });
}

TEST_F(Mp3Window, AFilterIsUsableWhereItsBoxIsTicked) {
    Open();
    InMp3([](Mp3Options& window) {
        window.tabMP3->setCurrentIndex(1);
        for (const char* letter : {"H", "L"}) {
            auto* box = window.findChild<QCheckBox*>(u"ch%1Filt"_s.arg(QLatin1String(letter)));
            for (const bool usable : {false, true, false}) {
                EXPECT_EQ(box->isChecked(), usable);
                for (const char* name : {"t%1FiltF", "t%1FiltW", "ud%1FiltF", "ud%1FiltW", "lbl%1FiltW"}) {
                    const QString control = QString::fromLatin1(name).arg(QLatin1String(letter));
                    EXPECT_EQ(window.findChild<QWidget*>(control)->isEnabled(), usable)
                        << control.toStdString();
                }
                Tick(box);
            }
        }
    });
}

TEST_F(Mp3Window, AFrequencyOfZeroIsAFilterAndAWidthOfZeroIsNone) {
    for (const int key : {11, 12, 13, 14}) SaveKey(key, u"0"_s);
    Open();
    InMp3([](Mp3Options& window) {
        EXPECT_TRUE(window.chHFilt->isChecked());
        EXPECT_TRUE(window.chLFilt->isChecked());
        EXPECT_EQ(window.udHFiltF->value(), 0);
        EXPECT_EQ(window.udLFiltF->value(), 0);
        EXPECT_EQ(window.udHFiltW->value(), 5);
        EXPECT_EQ(window.udLFiltW->value(), 760);
        Click(window.cmdOK);
    });
    EXPECT_EQ(SavedNumbers(u"Mp3"_s, 14).mid(10), (QStringList{u"0"_s, u"5"_s, u"0"_s, u"760"_s}));
}

TEST_F(Mp3Window, ABitrateWithoutAPositionShowsInTheCaptionOnly) {
    SaveKey(3, u"40"_s);
    SaveKey(19, u"80"_s);
    Open();
    InMp3([](Mp3Options& window) {
        EXPECT_EQ(window.frmBitrate->title(), u"Current bitrate: 40 kbit"_s);
        EXPECT_EQ(window.lblVbrBitrate->text(), u"Current bitrate: 80 kbit"_s);
        EXPECT_EQ(window.sldrBitrate->value(), 0);
        EXPECT_EQ(window.sldrVbrBitrate->value(), 0);
        MoveTo(window.sldrBitrate, 12);
        window.tabMP3->setCurrentIndex(6);
        QTest::keyClicks(window.txtCommLine, u"-b 80"_s);
        Click(window.cmdApply);
        EXPECT_EQ(window.frmBitrate->title(), u"Current bitrate: 80 kbit"_s);
        EXPECT_EQ(window.sldrBitrate->value(), 12);
        EXPECT_EQ(Key(3), u"80"_s);
    });
}

TEST_F(Mp3Window, ApplyOnThePresetTabTakesTheMarkedPresetAndDiscardsWhatWasEdited) {
    Open();
    InMp3([this](Mp3Options& window) {
        Choose(window.cmbChMode, 4);
        window.tabMP3->setCurrentIndex(3);
        Tick(window.chErrorProtection);
        window.tabMP3->setCurrentIndex(4);
        EXPECT_TRUE(Option(window.opPreset, 1)->isChecked());
        Click(window.cmdApply);
        EXPECT_EQ(window.cmbChMode->currentText(), u"Mono"_s);
        EXPECT_EQ(window.cmbFrequency->currentData().toInt(), 8000);
        EXPECT_FALSE(window.chErrorProtection->isChecked());
        EXPECT_EQ(window.frmBitrate->title(), u"Current bitrate: 16 kbit"_s);
        EXPECT_EQ(Key(3), u"16"_s);
        EXPECT_EQ(Key(10), u"8000"_s);
        ClickOption(window.opPreset, 10);
        Click(window.cmdOK);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Key(3), u"256"_s);
    EXPECT_EQ(Key(6), u"2"_s);
    EXPECT_EQ(Key(10), u"44100"_s);
    InMp3([](Mp3Options& window) {
        EXPECT_EQ(window.tabMP3->currentIndex(), 0);
        EXPECT_EQ(window.sldrBitrate->value(), 13);
        EXPECT_TRUE(Option(window.opPreset, 1)->isChecked()) << "marked anew at each opening";
    });
}

TEST_F(Mp3Window, ApplyOnTheAltPresetTabTakesTheMarkedOne) {
    Open();
    InMp3([](Mp3Options& window) {
        window.tabMP3->setCurrentIndex(5);
        EXPECT_TRUE(Option(window.opAltPreset, 1)->isChecked());
        Click(window.cmdApply);
        EXPECT_EQ(window.cmbVBRCodingMethod->currentText(), u"MTRH"_s);
        EXPECT_EQ(Key(20), u"3"_s);
        ClickOption(window.opAltPreset, 5);
        Click(window.cmdApply);
        EXPECT_EQ(window.cmbVBRCodingMethod->currentText(), u"None"_s);
        EXPECT_EQ(window.frmBitrate->title(), u"Current bitrate: 320 kbit"_s);
    });
    EXPECT_EQ(Key(3), u"320"_s);
    EXPECT_EQ(Key(20), u"-1"_s);
}

TEST_F(Mp3Window, ApplyOnTheCommandLineTabTakesTheLine) {
    Open();
    InMp3([](Mp3Options& window) {
        Choose(window.cmbChMode, 4);
        window.tabMP3->setCurrentIndex(6);
        QTest::keyClicks(window.txtCommLine, u"-b 112 -m m -q 7 --resample 32 --nonsense"_s);
        Click(window.cmdApply);
        EXPECT_EQ(window.sldrBitrate->value(), 8);
        EXPECT_EQ(window.cmbChMode->currentText(), u"Mono"_s);
        EXPECT_EQ(window.sldrQuality->value(), 7);
        EXPECT_EQ(window.cmbFrequency->currentData().toInt(), 32000);
    });
    EXPECT_EQ(Key(3) + u' ' + Key(6) + u' ' + Key(8) + u' ' + Key(10), u"112 1 7 32000"_s);
    EXPECT_EQ(Probe(Convert(Sound(), "mp3"), "sample_rate,channels,bit_rate"), "32000,1,112000");
}

TEST_F(Mp3Window, CancelKeepsTheQualityUntilTheFormatIsSelectedAgainAndNothingElse) {
    Open();
    InMp3([](Mp3Options& window) {
        MoveTo(window.sldrQuality, 7);
        MoveTo(window.sldrBitrate, 2);
        Choose(window.cmbChMode, 0);
        Click(window.cmdCancel);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Keys().trimmed(), QString());
    InMp3([](Mp3Options& window) {
        EXPECT_EQ(window.sldrQuality->value(), 7);
        EXPECT_EQ(window.sldrBitrate->value(), 9);
        EXPECT_EQ(window.cmbChMode->currentIndex(), 2);
        window.close();
    });
    Select(u"Mp3"_s);
    InMp3([](Mp3Options& window) { EXPECT_EQ(window.sldrQuality->value(), 3); });
    EXPECT_EQ(Keys().trimmed(), QString());
}

TEST_F(Mp3Window, MonoKeepsTheStereoModeForLater) {
    SaveKey(18, u"3"_s);
    Open();
    InMp3([](Mp3Options& window) {
        EXPECT_EQ(window.cmbChMode->currentText(), u"Forced Joint Stereo"_s);
        Choose(window.cmbChMode, 0);
        Click(window.cmdOK);
    });
    EXPECT_EQ(Key(6), u"1"_s);
    EXPECT_EQ(Key(18), u"3"_s);
    InMp3([](Mp3Options& window) {
        EXPECT_EQ(window.cmbChMode->currentIndex(), 0);
        Choose(window.cmbChMode, 1);
        Click(window.cmdOK);
    });
    EXPECT_EQ(Key(6), u"2"_s);
    EXPECT_EQ(Key(18), u"1"_s);
}

TEST_F(Mp3Window, EveryControlOfTheFirstFourTabsGoesIntoItsKey) {
    Open();
    InMp3([](Mp3Options& window) {
        Choose(window.cmbFrequency, 8);
        Choose(window.cmbChMode, 4);
        MoveTo(window.sldrBitrate, 7);
        MoveTo(window.sldrQuality, 6);
        window.tabMP3->setCurrentIndex(1);
        Tick(window.chHFilt);
        Tick(window.chLFilt);
        Type(window.udHFiltF, 120);
        Type(window.udHFiltW, 40);
        Type(window.udLFiltF, 18000);
        Type(window.udLFiltW, 900);
        window.tabMP3->setCurrentIndex(2);
        Choose(window.cmbVBRCodingMethod, 4);
        Type(window.udVbrQuality, 8);
        Choose(window.cmbVBRCodingMethod, 5);
        Type(window.udAbrBitrate, 141);
        MoveTo(window.sldrVbrBitrate, 12);
        Tick(window.chWriteVBRHeader);
        Tick(window.chStrictlyEnforceMinBitrate);
        window.tabMP3->setCurrentIndex(3);
        for (QCheckBox* box : {window.chStrictlyISOCompliance, window.chShortBlocks, window.chBitReservoir,
                               window.chBlockType, window.chErrorProtection}) {
            Tick(box);
        }
        Choose(window.cmbATHControl, 3);
        Choose(window.cmbEmphasis, 2);
        Click(window.cmdOK);
    });
    EXPECT_EQ(Keys(),
              u"141 3 96 False True 2 2 6 True 48000 120 40 18000 900 False True True 4 224 4 8 "
              "False"_s);
}

TEST_F(Mp3Window, DamagedKeysLeaveTheirDefaults) {
    for (int key = 1; key <= 22; ++key) SaveKey(key, u"none"_s);
    SaveKey(8, u"99999"_s);
    Open();
    EXPECT_EQ(Summary(), u"MPEG Layer-3 44100 Hz, Stereo, 128 kbit/s"_s);
    EXPECT_EQ(InMp3([](Mp3Options& window) {
                  EXPECT_EQ(window.sldrQuality->value(), 3);
                  EXPECT_EQ(window.udAbrBitrate->value(), 128);
              }),
              1);
    EXPECT_TRUE(Boxes.empty());
}

// A saved value that its control cannot show.
class Mp3WindowBeyondItsControls : public Mp3Window,
                                   public ::testing::WithParamInterface<std::pair<int, const char*>> {};

TEST_P(Mp3WindowBeyondItsControls, DoesNotOpenButTellsOfAFailure) {
    Save(u"AudioConverter"_s, u"Format"_s, u"Mp3"_s);
    SaveKey(GetParam().first, QString::fromLatin1(GetParam().second));
    Open();
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(InMp3([](Mp3Options& window) { Click(window.cmdCancel); }), 0);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text, u"380 : Invalid property value\nPlease re-install the application."_s);
    EXPECT_EQ(Boxes[0].Icon, MessageIcon::Critical);
    EXPECT_EQ(Boxes[0].Title, u"Sonmira"_s);
    EXPECT_EQ(ProgramEnds, 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, Mp3WindowBeyondItsControls,
                         ::testing::Values(std::pair{10, "12345"}, std::pair{21, "12"}, std::pair{8, "10"},
                                           std::pair{1, "3"}, std::pair{1, "321"}, std::pair{20, "5"},
                                           std::pair{18, "5"}, std::pair{2, "4"}, std::pair{7, "3"},
                                           std::pair{11, "48001"}, std::pair{12, "-1"},
                                           std::pair{13, "48001"}, std::pair{14, "48001"}));

}  // namespace
}  // namespace Sonmira
