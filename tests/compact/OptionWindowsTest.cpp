// The windows of the format parameters, opened from the compact window.
#include "AudiotoolTest.h"
#include "engine/OutputFormats.h"
#include "formats/Mp3Options.h"
#include "formats/OggOptions.h"
#include "formats/WavOptions.h"

#include <QButtonGroup>
#include <QRadioButton>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class OptionWindows : public AudiotoolTest {
protected:
    template <class Options>
    void In(const QString& name, const std::function<void(Options&)>& act) {
        const ModalAnswer answer(name, [&](QWidget& window) {
            window.activateWindow();
            act(static_cast<Options&>(window));
            if (window.isVisible()) window.close();
        });
        Click(Panel().CmdFormatParameter);
        EXPECT_EQ(answer.Seen(), 1) << name.toStdString();
    }
    // An entry of the first stream of what the one row became.
    QByteArray Converted(const QByteArray& output, const QByteArray& entry) {
        Click(Form().CmdConvert);
        return RunTool({"ffprobe", "-v", "error", "-show_entries", "stream=" + entry, "-of", "csv=p=0",
                        Folder.Native("out/" + output)})
            .Output.trimmed();
    }
    template <class Options>
    void ExpectMonoOnceChosen(QStringView format, const QString& name, QPushButton* Options::*accept,
                              const QByteArray& output) {
        OpenFor(format);
        MakeWav("a.wav");
        AddFiles({"a.wav"});
        In<Options>(name, [this, accept](Options& window) {
            QTest::keyClick(window.cmbChMode, Qt::Key_Home);
            Click(window.*accept);
        });
        EXPECT_TRUE(Panel().TextOutFormat->text().contains(u"Mono"_s))
            << Panel().TextOutFormat->text().toStdString();
        EXPECT_EQ(Converted(output, "channels"), "1");
    }
};

TEST_F(OptionWindows, ARateChosenForWavIsThatOfTheNextFile) {
    OpenFor(FormatName::Wav);
    MakeWav("a.wav");
    AddFiles({"a.wav"});
    In<WavOptions>(u"frmWav"_s, [this](WavOptions& window) {
        QTest::mouseClick(window.Option1->button(6), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        Click(window.Command1);
    });
    EXPECT_TRUE(Panel().TextOutFormat->text().contains(u"22050 Hz"_s))
        << Panel().TextOutFormat->text().toStdString();
    EXPECT_EQ(Converted("a.wav", "sample_rate"), "22050");
}

TEST_F(OptionWindows, AChannelModeChosenForMp3IsThatOfTheNextFile) {
    ExpectMonoOnceChosen(FormatName::Mp3, u"frmMP3"_s, &Mp3Options::cmdOK, "a.mp3");
}

TEST_F(OptionWindows, AChannelModeChosenForOggIsThatOfTheNextFile) {
    ExpectMonoOnceChosen(FormatName::Ogg, u"frmOgg"_s, &OggOptions::cmdOk, "a.ogg");
}

}  // namespace
}  // namespace Sonmira
