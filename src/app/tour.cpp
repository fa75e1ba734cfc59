// sonmira_tour FOLDER
//
// Shows the program to somebody who has no display: makes a small album, drives the real main window
// through adding the folder, choosing a format and converting, and saves a picture at each stage. All of it,
// settings too, lies below FOLDER.
#include "codecs/AudioFile.h"
#include "formats/OutputPanel.h"
#include "kit/CadreDesign.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "platform/widgets/QtDialogs.h"
#include "shell/widgets/InputBoxes.h"
#include "shell/widgets/Main.h"
#include "ui/BatchConverter.h"
#include "ui/TabStrip.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <QtTest/QTest>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

using namespace Sonmira;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

constexpr int Rate = 44100;

// A short tune of decaying tones, different for each track.
AudioBlock Tune(int seconds, int key) {
    static constexpr double Scale[] = {1, 1.125, 1.25, 1.5, 1.6667, 2};
    std::vector<std::int16_t> samples(static_cast<std::size_t>(seconds) * Rate * 2);
    for (std::size_t frame = 0; frame < samples.size() / 2; ++frame) {
        const double time = static_cast<double>(frame) / Rate;
        const auto note = static_cast<std::size_t>(time * 3);
        const double pitch = 220 * std::exp2(key / 12.0) * Scale[(note * 7 + note / 5) % std::size(Scale)];
        const double fade = std::exp(-4 * (time * 3 - static_cast<double>(note)));
        const double tone = std::sin(2 * M_PI * pitch * time) + 0.3 * std::sin(4 * M_PI * pitch * time);
        samples[frame * 2] = static_cast<std::int16_t>(12000 * fade * tone);
        samples[frame * 2 + 1] =
            static_cast<std::int16_t>(9000 * fade * std::sin(2 * M_PI * pitch * 1.5 * time));
    }
    AudioBlock block;
    block.Type = SampleType::Int16;
    block.Bytes.resize(samples.size() * sizeof samples[0]);
    std::memcpy(block.Bytes.data(), samples.data(), block.Bytes.size());
    return block;
}

void MakeAlbum(const fs::path& music) {
    fs::create_directories(music / "Live at the Pier");
    fs::create_directories(music / "Empty");
    AudioFile writer;
    const auto write = [&](const fs::path& path, int seconds, int key) {
        writer.OpenForWrite(FromNative(path.string()));
        writer.SetSourceFormat(Rate, 2);
        writer.WriteBlock(Tune(seconds, key));
        writer.CloseFile();
    };
    writer.SetFormatPCM(Rate, 2, 16);
    write(music / "01 - First tide.wav", 30, 0);
    write(music / "02 - Paper boats.wav", 40, 5);
    writer.SetFormatOggVorbis(Rate, 2, {}, {}, {}, 400);
    write(music / "Live at the Pier" / "Soundcheck.ogg", 20, 3);
    writer.SetFormatMP3(Rate, 192, 2);
    write(music / "Live at the Pier" / "Harbour lights.mp3", 20, 7);
}

// Waits for a window of that name, which opens in the middle of something else, and then runs `work` on it.
void WhenShown(const QString& name, const std::function<void(QWidget&)>& work) {
    auto* poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [=] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() != name || !window->isVisible()) continue;
            poll->stop();
            poll->deleteLater();
            work(*window);
            return;
        }
    });
    poll->start(50);
}

// The pictures of single windows that the help document shows.
void HelpPicture(QWidget& window, const fs::path& root, const char* name) {
    window.grab().save(FromNarrow((root / "pictures" / (std::string(name) + ".png")).string()));
}

// The first start asks for the language.
void ChooseEnglish(const fs::path& root) {
    WhenShown(u"Form1"_s, [root](QWidget& form) {
        QTest::qWait(200);
        HelpPicture(form, root, "language");
        auto* list = form.findChild<QListWidget*>(u"ListView1"_s);
        const QRect english = list->visualItemRect(list->currentItem());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, english.center());
    });
}

class Tour {
public:
    Tour(BatchConverter& shown, fs::path root) : Window(shown), Root(std::move(root)) {}

    // Returns whether every row was converted.
    bool Play() {
        QTest::qWait(300);
        Picture("1-started");
        AddAlbum();
        Picture("3-added");
        ChooseOutput();
        Picture("4-format-chosen");
        HelpPicture(*Window.Form().Picture9Frame, Root, "formats");
        Convert();
        Picture("6-converted");
        const bool converted = EveryRowConverted();
        ShowTag();
        Picture("7-tag");
        return converted;
    }

private:
    void Picture(const char* name) {
        QTest::qWait(150);
        const fs::path file = Root / "pictures" / (std::string(name) + ".png");
        Window.screen()->grabWindow(0).save(FromNarrow(file.string()));
        std::printf("picture    %s\n", file.c_str());
        std::fflush(stdout);
    }

    void Click(int button) {
        QToolBar* const bar = Window.Form().Toolbar1;
        QTest::mouseClick(bar->widgetForAction(Window.Form().ToolbarButton(button)), Qt::LeftButton);
    }

    // The click opens the real folder dialog and returns when it closes, so a timer types into it.
    void AddAlbum() {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            poll.stop();
            auto* name = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
            name->setText(FromNarrow((Root / "Music").string()));
            Picture("2-choosing-the-folder");
            QTest::keyClick(name, Qt::Key_Return);
        });
        poll.start(50);
        Click(3);
        Window.Form().TreeView1->expandAll();
    }

    void ChooseOutput() {
        OutputPanel& panel = *Window.Form().Picture9;
        panel.TextOutPath->selectAll();
        QTest::keyClicks(panel.TextOutPath, FromNarrow((Root / "Converted").string()));
        panel.ComboOutFormat->setFocus();
        QTest::keyClick(panel.ComboOutFormat, Qt::Key_Home);
    }

    void Convert() {
        fs::create_directories(Root / "Converted");
        QTimer half;
        QObject::connect(&half, &QTimer::timeout, &half, [&] {
            FileListModel& rows = Window.Form().ListViewFiles->Rows();
            constexpr int Enough = 40;  // percent of the second file, so that a picture of it shows something
            if (rows.RowCount() < 2) return;
            if (LeadingNumber(rows.Text(2, FileListModel::ProgressColumn)) < Enough) return;
            half.stop();
            Picture("5-converting");
            HelpPicture(Window, Root, "main");
        });
        half.start(20);
        Click(5);
    }

    void ShowTag() {
        Window.Form().SSTab1->setCurrentIndex(1);
        Window.Tags().LoadTagPanel(
            FromNative((Root / "Converted" / "Music" / "Live at the Pier" / "Harbour lights.mp3").string()));
    }

    bool EveryRowConverted() {
        FileListModel& rows = Window.Form().ListViewFiles->Rows();
        bool all = rows.RowCount() == 4;
        for (int row = 1; row <= rows.RowCount(); ++row) {
            const QString progress = rows.Text(row, FileListModel::ProgressColumn);
            std::printf("row        %s %s: %s\n",
                        ToNarrow(rows.Text(row, FileListModel::TrackColumn)).constData(),
                        ToNarrow(rows.Text(row, FileListModel::FilenameColumn)).constData(),
                        ToNarrow(progress).constData());
            all = all && progress == u"100 %";
        }
        return all;
    }

    BatchConverter& Window;
    fs::path Root;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: sonmira_tour FOLDER\n");
        return 2;
    }
    const fs::path root = fs::absolute(argv[1]);
    // Only a folder that an earlier tour has made is made anew: whatever else is there is somebody's.
    const fs::path marker = root / "made-by-the-tour";
    if (fs::exists(root) && !fs::is_empty(root) && !fs::exists(marker)) {
        std::fprintf(stderr, "sonmira_tour: %s is not empty\n", root.c_str());
        return 2;
    }
    fs::remove_all(root);
    fs::create_directories(root / "settings");
    fs::create_directories(root / "pictures");
    std::ofstream(marker) << "This folder is emptied by the next tour.\n";
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((root / "settings").string()));
    QApplication application(argc, argv);
    QApplication::setApplicationVersion(QString::fromUtf16(SONMIRA_VERSION));
    ApplyTheme(application);
    InstallQtDialogs();

    MakeAlbum(root / "Music");
    ChooseEnglish(root);
    BatchConverter* shown = nullptr;
    const std::unique_ptr<QWidget> window = Main([&] {
        auto made = std::make_unique<BatchConverter>();
        shown = made.get();
        return made;
    });
    const bool converted = Tour(*shown, root).Play();
    for (const auto& entry : fs::recursive_directory_iterator(root / "Converted")) {
        if (entry.is_regular_file()) std::printf("output     %s\n", entry.path().c_str());
    }
    std::printf(converted ? "The album is converted.\n" : "The tour failed.\n");
    std::fflush(stdout);
    // Closing the main window ends the program at once, with success.
    if (converted) window->close();
    return 1;
}
