#include "OptionsTest.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Mp3Form : public OptionsTest {};

TEST_F(Mp3Form, HasItsTabsListsAndCaptions) {
    Open();
    InMp3([](Mp3Options& window) {
        EXPECT_EQ(window.windowTitle(), u"MP3 Lame 3.98 Encoder Option"_s);
        QStringList tabs;
        for (int n = 0; n < window.tabMP3->count(); ++n) tabs.append(window.tabMP3->tabText(n));
        EXPECT_EQ(tabs, (QStringList{u"General"_s, u"Filtering"_s, u"VBR"_s, u"Expert"_s, u"Preset"_s,
                                     u"Alt-Preset"_s, u"Command Line"_s}));
        EXPECT_EQ(
            ItemsOf(window.cmbFrequency),
            (QStringList{u"  8 000 Hz"_s, u"11 025 Hz"_s, u"12 000 Hz "_s, u"16 000 Hz"_s, u"22 050 Hz"_s,
                         u"24 000 Hz"_s, u"32 000 Hz"_s, u"44 100 Hz"_s, u"48 000 Hz"_s}));
        EXPECT_EQ(ItemsOf(window.cmbChMode), (QStringList{u"Mono"_s, u"Stereo"_s, u"Joint Stereo"_s,
                                                          u"Forced Joint Stereo"_s, u"Dual Channels"_s}));
        EXPECT_EQ(ItemsOf(window.cmbVBRCodingMethod),
                  (QStringList{u"None"_s, u"Default"_s, u"Old"_s, u"New"_s, u"MTRH"_s, u"ABR"_s}));
        EXPECT_EQ(ItemsOf(window.cmbATHControl),
                  (QStringList{u"default"_s, u"only"_s, u"disabled"_s, u"only for short blocks"_s}));
        EXPECT_EQ(ItemsOf(window.cmbEmphasis),
                  (QStringList{u"default"_s, u"0/15 microseconds"_s, u"citt j.17"_s}));
        EXPECT_EQ(CaptionsOf(window.opPreset, 1),
                  (QStringList{u"Phone"_s, u"SW"_s, u"AM"_s, u"FM"_s, u"Voice"_s, u"Radio"_s, u"Tape"_s,
                               u"HiFi"_s, u"CD"_s, u"Studio"_s, u"R3Mix"_s}));
        EXPECT_EQ(
            CaptionsOf(window.opAltPreset, 1),
            (QStringList{u"Fast Standard"_s, u"Standard"_s, u"Fast Extreme"_s, u"Extrene"_s, u"Insane"_s}));
        const std::pair<const char*, QString> captions[] = {
            {"Label14", u"Coding Method:"_s},
            {"lblVbrQuality", u"VBR Quality:"_s},
            {"Label10", u"ATH Control:"_s},
            {"Label12", u"De-emphasis :"_s},
            {"Label6", u"faster"_s},
            {"Label7", u"better"_s},
            {"Label2", u"poor quality "_s},
            {"Label3", u"good quality "_s},
            {"frmFrequency", u"Sampling Frequency"_s},
            {"frmChMode", u"Channels Mode"_s},
            {"frmQuality", u"Encoder Quality"_s},
            {"frmVbrBitrate", u"Maximum VBR Bitrate"_s},
            {"frmVbrAdvanced", u"Advanced"_s},
            {"frmHFilt", u"HighPass Filter"_s},
            {"frmLFilt", u"LowPass Filter"_s},
            {"chHFilt", u"Highpass filtering frequency (in Hz):"_s},
            {"lblHFiltW", u"Width of Highpass filter (in Hz):"_s},
            {"chLFilt", u"Lowpass filtering frequency (in Hz):"_s},
            {"lblLFiltW", u"Width of Lowpass filter (in Hz):"_s},
            {"chWriteVBRHeader", u"Write VBR Header"_s},
            {"chStrictlyEnforceMinBitrate", u"Strictly enforce minimum bitrate"_s},
            {"chStrictlyISOCompliance", u"comply as much as possible to ISO MPEG spec"_s},
            {"chShortBlocks", u"short blocks"_s},
            {"chBitReservoir", u"bit reservoir"_s},
            {"chBlockType", u"allow block types to differ between channels"_s},
            {"chErrorProtection", u"include CRC -Checksums"_s},
            {"cmdOK", u"Ok"_s},
            {"cmdCancel", u"Cancel"_s},
            {"cmdApply", u"Apply"_s}};
        for (const auto& [name, caption] : captions) {
            const auto* control = window.findChild<QWidget*>(QString::fromLatin1(name));
            ASSERT_NE(control, nullptr) << name;
            const bool isFrame = qobject_cast<const QGroupBox*>(control) != nullptr;
            EXPECT_EQ(control->property(isFrame ? "title" : "text").toString(), caption) << name;
        }
    });
}

TEST_F(Mp3Form, ControlsHaveTheirRangesAndSteps) {
    Open();
    InMp3([](Mp3Options& window) {
        struct Range {
            const QSpinBox* UpDown;
            const char* Text;
            int Least;
            int Most;
            int Step;
        };
        for (const Range& range : {Range{window.udAbrBitrate, "txtAbrBitrate", 4, 320, 1},
                                   {window.udVbrQuality, "txtVbrQuality", 0, 9, 1},
                                   {window.udHFiltF, "tHFiltF", 0, 48000, 10},
                                   {window.udHFiltW, "tHFiltW", 0, 48000, 10},
                                   {window.udLFiltF, "tLFiltF", 0, 48000, 10},
                                   {window.udLFiltW, "tLFiltW", 0, 48000, 10}}) {
            EXPECT_EQ(range.UpDown->minimum(), range.Least) << range.Text;
            EXPECT_EQ(range.UpDown->maximum(), range.Most) << range.Text;
            EXPECT_EQ(range.UpDown->singleStep(), range.Step) << range.Text;
            EXPECT_NE(range.UpDown->findChild<QLineEdit*>(QString::fromLatin1(range.Text)), nullptr);
        }
        for (const QSlider* slider : {window.sldrBitrate, window.sldrVbrBitrate, window.sldrQuality}) {
            EXPECT_EQ(slider->minimum(), 0);
            EXPECT_EQ(slider->maximum(), slider == window.sldrQuality ? 9 : 14);
            EXPECT_EQ(slider->singleStep(), 1);
            EXPECT_EQ(slider->pageStep(), 2);
        }
        const int frequencies[] = {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};
        for (int n = 0; n < 9; ++n) EXPECT_EQ(window.cmbFrequency->itemData(n).toInt(), frequencies[n]);
    });
}

TEST_F(Mp3Form, EmptyUpDownsStandAsDesigned) {
    const Mp3OptionsForm form(nullptr);
    EXPECT_EQ(form.udAbrBitrate->value(), 123);
    EXPECT_EQ(form.udVbrQuality->value(), 0);
    EXPECT_EQ(form.udHFiltF->value(), 30);
    EXPECT_EQ(form.udHFiltW->value(), 5);
    EXPECT_EQ(form.udLFiltF->value(), 15160);
    EXPECT_EQ(form.udLFiltW->value(), 750);
    EXPECT_EQ(form.sldrQuality->value(), 0);
    EXPECT_EQ(form.tabMP3->currentIndex(), 0);
}

}  // namespace
}  // namespace Sonmira
