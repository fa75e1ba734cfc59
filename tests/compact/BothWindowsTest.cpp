// The main window and the compact one make the same files of the same album.
#include "AudiotoolTest.h"
#include "engine/MadeSources.h"
#include "engine/OutputFormats.h"
#include "library/widgets/ConversionTree.h"
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
    void MakeAlbum(bool oneByOne) {
        const QByteArray wav = Folder.Native("in.wav");
        Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 44100 * 5 / 2, 0.4), WavKind::Signed16));
        Folder.MakeFolder("Music");
        std::size_t n = 0;
        for (const char* ending : SourceEndings) {
            if ((UnderSanitizers || oneByOne) && n++ % 4 != 0) continue;
            const QByteArray name = "of " + QByteArray(ending).replace("+", "plus") + "." + ending;
            MakeSource(wav, Folder.Native("Music/" + name));
            Names.append(name);
        }
    }
    void ByTheMainWindow(bool oneByOne) {
        BatchConverter window;
        window.show();
        OutputPanel& panel = *window.Form().Picture9;
        panel.TextOutPath->SetText(Folder.MakeFolder("main"));
        panel.ComboOutFormat->SelectText(GetParam().Format.toString());
        QStringList paths;
        for (const QByteArray& name : Names) paths.append(Folder.Path("Music/" + name));
        Dialogs().OpenFiles = [&](const OpenDialogRequest&) { return std::optional(paths); };
        window.Form().addfile->trigger();
        if (!oneByOne) {
            window.StartRun();
            return;
        }
        ConversionTree& tree = *window.Form().TreeView1;
        for (const QString& path : paths) {
            QTreeWidgetItem* const node = tree.NodeOf(path);
            tree.scrollToItem(node);
            QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(node).center());
            window.Form().ConvertSlection->trigger();
        }
    }
    void ByTheCompactWindow(bool oneByOne) {
        Open();
        Panel().TextOutPath->SetText(Folder.MakeFolder("compact"));
        Panel().ComboOutFormat->SelectText(GetParam().Format.toString());
        for (const QByteArray& name : Names) Window->AddFileToList(Folder.Path("Music/" + name));
        if (!oneByOne) Click(Form().CmdConvert);
        for (int row = 1; oneByOne && row <= Rows().Count(); ++row) {
            Select(row);
            Form().ConvertNow->trigger();
        }
    }
    void ExpectTheSameFiles(bool oneByOne) {
        WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
        MakeAlbum(oneByOne);
        ByTheMainWindow(oneByOne);
        ByTheCompactWindow(oneByOne);
        EXPECT_TRUE(Said.empty());
        for (const QByteArray& name : Names) {
            const QByteArray output = name.left(name.lastIndexOf('.')) + '.' + GetParam().Ending;
            const QByteArray byMain = ContentOf(Folder.Native("main/" + output));
            EXPECT_GT(byMain.size(), 1000) << output.constData();
            EXPECT_TRUE(byMain == ContentOf(Folder.Native("compact/" + output))) << output.constData();
        }
    }

    QList<QByteArray> Names;
};

TEST_P(BothWindows, MakeTheSameFilesInARun) {
    ExpectTheSameFiles(false);
}

TEST_P(BothWindows, MakeTheSameFilesOneByOne) {
    ExpectTheSameFiles(true);
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
