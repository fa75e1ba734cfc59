// The main window and the compact one make the same files of the same album.
#include "AudiotoolTest.h"
#include "engine/MadeSources.h"
#include "engine/OutputFormatNames.h"
#include "platform/Clock.h"
#include "support/Sanitized.h"
#include "ui/BatchConverter.h"

#include <ostream>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

struct Output {
    QStringView Format;
    const char* Ending;
};

void PrintTo(const Output& output, std::ostream* out) {
    *out << output.Ending;
}

class BothWindows : public AudiotoolTest, public ::testing::WithParamInterface<Output> {
public:
    BothWindows() { OverrideCurrentYear(2031); }
    ~BothWindows() override { OverrideCurrentYear(0); }

protected:
    // One source of every kind, with names of their own, because all outputs lie in one folder.
    void MakeAlbum() {
        const QByteArray wav = Folder.Native("in.wav");
        Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 44100 * 5 / 2, 0.4), WavKind::Signed16));
        Folder.MakeFolder("Music");
        std::size_t n = 0;
        for (const char* ending : SourceEndings) {
            if (UnderSanitizers && n++ % 4 != 0) continue;
            const QByteArray name = "of " + QByteArray(ending).replace("+", "plus") + "." + ending;
            MakeSource(wav, Folder.Native("Music/" + name));
            Names.append(name);
        }
    }
    void ByTheMainWindow() {
        BatchConverter window;
        OutputPanel& panel = *window.Form().Picture9;
        panel.TextOutPath->SetText(Folder.MakeFolder("main"));
        panel.ComboOutFormat->SelectText(GetParam().Format.toString());
        QStringList paths;
        for (const QByteArray& name : Names) paths.append(Folder.Path("Music/" + name));
        Dialogs().OpenFiles = [&](const OpenDialogRequest&) { return std::optional(paths); };
        window.Form().addfile->trigger();
        window.StartRun();
    }
    void ByTheCompactWindow() {
        Open();
        Panel().TextOutPath->SetText(Folder.MakeFolder("compact"));
        Panel().ComboOutFormat->SelectText(GetParam().Format.toString());
        for (const QByteArray& name : Names) Window->AddFileToList(Folder.Path("Music/" + name));
        Click(Form().CmdConvert);
    }

    QList<QByteArray> Names;
};

TEST_P(BothWindows, MakeTheSameFiles) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    MakeAlbum();
    ByTheMainWindow();
    ByTheCompactWindow();
    EXPECT_TRUE(Said.empty());
    for (const QByteArray& name : Names) {
        const QByteArray output = name.left(name.lastIndexOf('.')) + '.' + GetParam().Ending;
        const QByteArray byMain = ContentOf(Folder.Native("main/" + output));
        EXPECT_GT(byMain.size(), 1000) << output.constData();
        EXPECT_TRUE(byMain == ContentOf(Folder.Native("compact/" + output))) << output.constData();
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, BothWindows,
                         ::testing::Values(Output{FormatName::Mp3, "mp3"}, Output{FormatName::Ogg, "ogg"},
                                           Output{FormatName::Wav, "wav"}, Output{FormatName::Wma, "wma"},
                                           Output{FormatName::Ape, "ape"}, Output{FormatName::Flac, "flac"},
                                           // At the quality that the encoder has by itself.
                                           Output{FormatName::Mpc, "mpc"}),
                         [](const auto& format) { return std::string(format.param.Ending); });

}  // namespace
}  // namespace Sonmira
