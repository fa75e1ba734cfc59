#include "OptionsTest.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class OggWindow : public OptionsTest {
protected:
    OggWindow() { Save(u"AudioConverter"_s, u"Format"_s, u"Ogg"_s); }

    static void SaveKeys(const QStringList& values) {
        for (int n = 0; n < values.size(); ++n) Save(u"OGG"_s, QString::number(n + 1), values[n]);
    }
    static QString Keys() { return SavedNumbers(u"OGG"_s, 8).join(u' '); }
    // The names of those controls of the window that cannot be used.
    static QStringList Disabled(const OggOptions& window) {
        QStringList names;
        for (const QWidget* control : std::initializer_list<const QWidget*>{
                 window.chVbr, window.lblBitrate, window.sldrBitrate, window.frmVbr, window.lblMinBitrate,
                 window.sldrMinBitrate, window.lblMaxBitrate, window.sldrMaxBitrate, window.frmQuality,
                 window.sldrQuality}) {
            if (!control->isEnabled()) names.append(control->objectName());
        }
        return names;
    }
    static QString Bitrates(const OggOptions& window) {
        return window.lblBitrate->text() + u'/' + window.lblMinBitrate->text() + u'/' +
               window.lblMaxBitrate->text();
    }
    // A bit rate that the stream's header tells, by its name there; empty where it tells none.
    static QByteArray Header(const QByteArray& path, const QByteArray& name) {
        const QByteArray told = RunTool({"ogginfo", path}).Output;
        const qsizetype at = told.indexOf(name + ": ");
        if (at < 0) return {};
        return told.mid(at + name.size() + 2, told.indexOf('\n', at) - at - name.size() - 2).trimmed();
    }
    static TestSound Sound() { return MakeNoise(44100, 2, 2 * 44100); }
};

TEST_F(OggWindow, OpensWithItsOwnChoiceWhateverWasSaved) {
    SaveKeys({u"0"_s, u"1"_s, u"48000"_s, u"1"_s, u"900"_s, u"96"_s, u"64"_s, u"160"_s});
    Open();
    EXPECT_EQ(Summary(), u"Ogg Vorbis 48000 Hz, Mono, 96 kbit/s, 64 to 160 kbit/s"_s);
    InOgg([](OggOptions& window) {
        EXPECT_EQ(window.windowTitle(), u"Ogg Vorbis Option"_s);
        EXPECT_EQ(window.cmbFrequency->currentData().toInt(), 44100);
        EXPECT_EQ(window.cmbChMode->currentText(), u"Stereo"_s);
        EXPECT_EQ(Bitrates(window),
                  u"Current nominal bitrate: 128 kbit/Current min bitrate: 128 kbit/"
                  "Current max bitrate: 128 kbit"_s);
        for (const QSlider* slider : {window.sldrBitrate, window.sldrMinBitrate, window.sldrMaxBitrate}) {
            EXPECT_EQ(slider->value(), 9);
        }
        EXPECT_FALSE(window.chQuality->isChecked());
        EXPECT_FALSE(window.chVbr->isChecked());
        EXPECT_EQ(window.sldrQuality->value(), 300);
        Click(window.cmdOk);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(Keys(), u"0 0 44100 2 300 128 128 128"_s);
    EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Stereo, 128 kbit/s"_s);
}

TEST_F(OggWindow, ControlsHaveTheirCaptionsItemsAndRanges) {
    Open();
    InOgg([](OggOptions& window) {
        EXPECT_EQ(ItemsOf(window.cmbChMode), (QStringList{u"Mono"_s, u"Stereo"_s}));
        ASSERT_EQ(window.cmbFrequency->count(), 9);
        EXPECT_EQ(window.cmbFrequency->itemData(0).toInt(), 8000);
        EXPECT_EQ(window.cmbFrequency->itemData(8).toInt(), 48000);
        for (const QSlider* slider : {window.sldrBitrate, window.sldrMinBitrate, window.sldrMaxBitrate}) {
            EXPECT_EQ(slider->minimum(), 0);
            EXPECT_EQ(slider->maximum(), 14);
            EXPECT_EQ(slider->pageStep(), 2);
        }
        EXPECT_EQ(window.sldrQuality->minimum(), 0);
        EXPECT_EQ(window.sldrQuality->maximum(), 1000);
        EXPECT_EQ(window.sldrQuality->singleStep(), 1);
        EXPECT_EQ(window.sldrQuality->pageStep(), 1);
        EXPECT_EQ(window.sldrQuality->tickInterval(), 100);
        EXPECT_EQ(window.frmFrequency->title(), u"Sampling Frequency"_s);
        EXPECT_EQ(window.frmChMode->title(), u"Channels Mode"_s);
        EXPECT_EQ(window.frmOption->title(), u"Option"_s);
        EXPECT_EQ(window.frmVbr->title(), u"VBR"_s);
        EXPECT_EQ(window.frmQuality->title(), u"Quality (Compression)"_s);
        EXPECT_EQ(window.chQuality->text(), u"Quality Enabled"_s);
        EXPECT_EQ(window.chVbr->text(), u"VBR Enabled"_s);
        EXPECT_EQ(window.cmdOk->text(), u"Ok"_s);
        EXPECT_EQ(window.cmdCancel->text(), u"Cancel"_s);
        EXPECT_EQ(window.cmdApply->text(), u"Apply"_s);
    });
}

TEST_F(OggWindow, MovingASliderRenewsItsLabelAndItsTip) {
    Open();
    InOgg([](OggOptions& window) {
        Tick(window.chVbr);
        MoveTo(window.sldrBitrate, 10);
        MoveTo(window.sldrMinBitrate, 7);
        MoveTo(window.sldrMaxBitrate, 14);
        EXPECT_EQ(Bitrates(window),
                  u"Current nominal bitrate: 160 kbit/Current min bitrate: 96 kbit/"
                  "Current max bitrate: 320 kbit"_s);
        EXPECT_EQ(window.sldrBitrate->toolTip(), u"160"_s);
        EXPECT_EQ(window.sldrMinBitrate->toolTip(), u"96"_s);
        EXPECT_EQ(window.sldrMaxBitrate->toolTip(), u"320"_s);
        Tick(window.chQuality);
        for (int n = 0; n < 25; ++n) QTest::keyClick(window.sldrQuality, Qt::Key_Right);
        EXPECT_EQ(window.sldrQuality->toolTip(), u"3.25"_s);
        QTest::keyClick(window.sldrQuality, Qt::Key_PageUp);
        EXPECT_EQ(window.sldrQuality->value(), 326);
    });
}

TEST_F(OggWindow, TheBoxesDecideWhatCanBeUsed) {
    Open();
    InOgg([](OggOptions& window) {
        const QStringList limits = {u"lblMinBitrate"_s, u"sldrMinBitrate"_s, u"lblMaxBitrate"_s,
                                    u"sldrMaxBitrate"_s};
        const QStringList quality = {u"frmQuality"_s, u"sldrQuality"_s};
        EXPECT_EQ(Disabled(window), QStringList(u"frmVbr"_s) + limits + quality);
        Tick(window.chVbr);
        EXPECT_EQ(Disabled(window), quality);
        Tick(window.chVbr);
        EXPECT_EQ(Disabled(window), limits + quality) << "the frame of the limits stays";
        Tick(window.chQuality);
        const QStringList byQuality =
            QStringList{u"chVbr"_s, u"lblBitrate"_s, u"sldrBitrate"_s, u"frmVbr"_s} + limits;
        EXPECT_EQ(Disabled(window), byQuality);
        Tick(window.chQuality);
        EXPECT_EQ(Disabled(window), QStringList(u"frmVbr"_s) + limits + quality);
        Tick(window.chVbr);
        Tick(window.chQuality);
        EXPECT_EQ(Disabled(window), byQuality);
        EXPECT_TRUE(window.chVbr->isChecked()) << "kept, though it cannot be used";
        Tick(window.chQuality);
        EXPECT_EQ(Disabled(window), QStringList(u"sldrQuality"_s)) << "the frame of the quality stays";
    });
}

TEST_F(OggWindow, WithBothBoxesTheQualityWins) {
    Open();
    InOgg([](OggOptions& window) {
        Tick(window.chVbr);
        Tick(window.chQuality);
        window.sldrQuality->setValue(700);
        Click(window.cmdOk);
    });
    EXPECT_EQ(Keys(), u"1 1 44100 2 700 128 128 128"_s);
    EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Stereo, quality 7.0"_s);
}

TEST_F(OggWindow, ANominalBitrateStandsInTheHeaderWithoutLimits) {
    Open();
    InOgg([](OggOptions& window) {
        Choose(window.cmbFrequency, 8);
        MoveTo(window.sldrBitrate, 10);
        Click(window.cmdOk);
    });
    EXPECT_EQ(Keys(), u"0 0 48000 2 300 160 128 128"_s);
    const QByteArray output = Convert(Sound(), "ogg");
    EXPECT_TRUE(Header(output, "Nominal bitrate").startsWith("160.0"));
    EXPECT_EQ(Header(output, "Upper bitrate"), QByteArray());
    EXPECT_EQ(Header(output, "Lower bitrate"), QByteArray());
    EXPECT_EQ(Probe(output, "codec_name,sample_rate,channels"), "vorbis,48000,2");
}

TEST_F(OggWindow, AManagedStreamHasItsThreeBitratesInTheHeader) {
    Open();
    InOgg([](OggOptions& window) {
        Tick(window.chVbr);
        MoveTo(window.sldrMinBitrate, 7);
        MoveTo(window.sldrMaxBitrate, 11);
        Click(window.cmdOk);
    });
    EXPECT_EQ(Keys(), u"0 1 44100 2 300 128 96 192"_s);
    const QByteArray output = Convert(Sound(), "ogg");
    EXPECT_TRUE(Header(output, "Nominal bitrate").startsWith("128.0"));
    EXPECT_TRUE(Header(output, "Upper bitrate").startsWith("192.0"));
    EXPECT_TRUE(Header(output, "Lower bitrate").startsWith("96.0"));
}

TEST_F(OggWindow, MoreQualityGivesALargerFile) {
    std::vector<std::uintmax_t> sizes;
    for (const int quality : {0, 500, 1000}) {
        Open();
        InOgg([&](OggOptions& window) {
            Choose(window.cmbChMode, 0);
            Tick(window.chQuality);
            window.sldrQuality->setValue(quality);
            Click(window.cmdOk);
        });
        const QByteArray output = Convert(Sound(), "ogg");
        EXPECT_EQ(Probe(output, "channels"), "1");
        sizes.push_back(std::filesystem::file_size(output.toStdString()));
    }
    EXPECT_GT(sizes[1], sizes[0] * 3 / 2);
    EXPECT_GT(sizes[2], sizes[1] * 3 / 2);
}

TEST_F(OggWindow, ARefusedCombinationIsSavedButNotSetAndTheWindowStays) {
    Open();
    const QString before = Summary();
    for (const bool byOk : {false, true}) {
        Boxes.clear();
        InOgg([&](OggOptions& window) {
            Choose(window.cmbFrequency, 0);
            MoveTo(window.sldrBitrate, 14);
            Click(byOk ? window.cmdOk : window.cmdApply);
            EXPECT_TRUE(window.isVisible());
            Click(window.cmdCancel);
            EXPECT_FALSE(window.isVisible());
        });
        ASSERT_EQ(Boxes.size(), 1U);
        EXPECT_EQ(Boxes[0].Text, u"Incorrect format"_s);
        EXPECT_EQ(Boxes[0].Icon, MessageIcon::Critical);
        EXPECT_EQ(Boxes[0].Title, u"Sonmira"_s);
        EXPECT_EQ(Keys(), u"0 0 8000 2 300 320 128 128"_s);
        EXPECT_EQ(Summary(), before);
    }
    EXPECT_EQ(Probe(Convert(Sound(), "ogg"), "sample_rate"), "44100") << "the earlier format stays";
    Boxes.clear();
    Select(u"Ogg"_s);
    EXPECT_EQ(Summary(), u"Ogg Vorbis 8000 Hz, Stereo, quality 3.0"_s);
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(OggWindow, RefusedLimitsGiveWayToTheSavedQualityAtTheNextSelection) {
    SaveKeys({u"0"_s, u"1"_s, u"44100"_s, u"2"_s, u"650"_s, u"128"_s, u"320"_s, u"64"_s});
    Open();
    EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Stereo, quality 6.5"_s);
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(OggWindow, WithoutVbrLimitsThatWouldBeRefusedAreNotLookedAt) {
    SaveKeys({u"0"_s, u"0"_s, u"44100"_s, u"2"_s, u"650"_s, u"128"_s, u"320"_s, u"64"_s});
    Open();
    EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Stereo, 128 kbit/s"_s);
}

TEST_F(OggWindow, ApplyStaysOpenAndCancelChangesNothing) {
    Open();
    InOgg([this](OggOptions& window) {
        Choose(window.cmbChMode, 0);
        Click(window.cmdApply);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Mono, 128 kbit/s"_s);
        Choose(window.cmbChMode, 1);
        MoveTo(window.sldrBitrate, 12);
        Click(window.cmdCancel);
    });
    EXPECT_EQ(Keys(), u"0 0 44100 1 300 128 128 128"_s);
    EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Mono, 128 kbit/s"_s);
}

TEST_F(OggWindow, WithoutTheFirstKeyTheOthersAreIgnored) {
    SaveKeys({QString(), u"1"_s, u"8000"_s, u"x"_s, u"900"_s, u"96"_s, u"64"_s, u"160"_s});
    Open();
    EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Stereo, quality 4.0"_s);
    EXPECT_EQ(Saved(u"OGG"_s, u"1"_s), QString());
}

TEST_F(OggWindow, ADamagedKeyAtTheSelectionEndsInTheFailureReport) {
    Save(u"AudioConverter"_s, u"Format"_s, u"Mp3"_s);
    SaveKeys({u"0"_s, u"0"_s, u"44100"_s, u"two"_s, u"300"_s, u"128"_s, u"128"_s, u"128"_s});
    Open();
    Select(u"Ogg"_s);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text, u"Run-time error 13 : Type mismatch"_s);
    EXPECT_EQ(ProgramEnds, 1);
}

TEST_F(OggWindow, ADamagedKeyAtTheStartIsPassedOverInSilence) {
    SaveKeys({u"1"_s, u"0"_s, u"44100"_s, u"2"_s, QString(), u"128"_s, u"128"_s, u"128"_s});
    Open();
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(ProgramEnds, 0);
    EXPECT_EQ(Summary(), QString());
}

TEST_F(OggWindow, AfterADamagedKeyNoOtherFormatIsWrittenAsOgg) {
    SaveKeys({u"1"_s, u"0"_s, u"44100"_s, u"2"_s, QString(), u"128"_s, u"128"_s, u"128"_s});
    Open();
    Folder.MakeFile("Music/a.wav", WavOf(Sound(), WavKind::Signed16));
    Panel().TextOutPath->SetText(Folder.Path("out"));
    AddFolderByCommand(Folder.Path("Music"));
    ClickToolbar(5);
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_FALSE(ContentOf(Folder.Native("out/Music/a.ogg")).contains("LAME"));
    InOgg([](OggOptions& window) { Click(window.cmdOk); });
    EXPECT_EQ(Probe(Convert(Sound(), "ogg"), "codec_name"), "vorbis") << "the window repairs it";
}

}  // namespace
}  // namespace Sonmira
