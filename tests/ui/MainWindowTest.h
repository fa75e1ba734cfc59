#pragma once

#include "formats/OutputPanel.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "platform/Dialogs.h"
#include "platform/Processes.h"
#include "shell/LanguageFiles.h"
#include "shell/Settings.h"
#include "shell/widgets/ChoiceList.h"
#include "shell/widgets/PathBox.h"
#include "support/ModalAnswer.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"
#include "ui/BatchConverter.h"

#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidgetItemIterator>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <filesystem>

namespace Sonmira {

// A caption without the mark of the letter by which it is reached.
inline QString WithoutLetter(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

// The real main window over the real components, with settings and output of its own.
class MainWindowTest : public ::testing::Test {
protected:
    MainWindowTest() {
        QCoreApplication::setApplicationVersion(QStringLiteral("2.1.0"));
        OverrideLanguageFolder(Shipped.Path());
        for (const auto& file : std::filesystem::directory_iterator(SONMIRA_LANG)) {
            if (file.path().extension() != ".lng") continue;
            Shipped.MakeFile(QByteArray::fromStdString(file.path().filename().string()),
                             ContentOf(QByteArray::fromStdString(file.path().string())));
        }
        SettingsFolder = Folder.Path("settings") + QLatin1Char('\\');
        Folder.MakeFolder("settings");
        SettingsFile = SettingsFolder + QStringLiteral("Sonmira.ini");
        Folder.MakeFolder("out");
        // Not the first start, which asks for a language.
        WriteIniValue(SettingsFile, QStringLiteral("LANGUE"), QStringLiteral("VALUE"), QStringLiteral(" 0"));
        Processes().List = [] { return std::vector<RunningProcess>{{QStringLiteral("Sonmira"), OwnId}}; };
        Processes().End = [this](qint64 id) {
            Ended.push_back(id);
            return true;
        };
        Dialogs().BrowseForFolder = [this](const QString& /*title*/) { return FolderToChoose; };
    }

    ~MainWindowTest() override {
        Window.reset();
        Processes() = RealProcesses;
    }

    // Closes the window as a user does. The test lives on behind the forced end, so the farewell comes, too.
    bool CloseWindow() {
        const ModalAnswer farewell(QStringLiteral("LameEncoder"), [](QWidget& notice) { notice.close(); });
        return Window->close();
    }

    BatchConverter& Open() {
        Window = std::make_unique<BatchConverter>();
        Window->show();
        QApplication::processEvents();
        return *Window;
    }

    BatchConverterForm& Form() { return Window->Form(); }
    OutputPanel& Panel() { return *Form().Picture9; }
    FileListModel& Rows() { return Form().ListViewFiles->Rows(); }
    QString Progress(int row) { return Rows().Text(row, FileListModel::ProgressColumn); }
    QString IconOf(int row) { return Rows().index(row - 1, 0).data(FileListModel::IconKeyRole).toString(); }

    void ClickToolbar(int button) {
        QTest::mouseClick(Form().Toolbar1->widgetForAction(Form().ToolbarButton(button)), Qt::LeftButton);
    }
    void AddFolderByCommand(const QString& folder) {
        FolderToChoose = folder;
        ClickToolbar(3);
    }

    // Texts of the tree's nodes in the order in which they are shown.
    QStringList Nodes() {
        QStringList texts;
        for (QTreeWidgetItemIterator it(Form().TreeView1); *it != nullptr; ++it) texts.append((*it)->text(0));
        return texts;
    }

    QString Setting(const QString& key) {
        return ReadIniValue(SettingsFile, QStringLiteral("AudioConverter"), key);
    }

    // A WAV of that many minutes whose sound is a hole in the file.
    void MakeLongWav(const QByteArray& name, int minutes) {
        const qint64 bytes = qint64{minutes} * 60 * 44100 * 4;
        QByteArray header = WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16);
        const auto put = [&](qsizetype at, qint64 value) {
            for (int n = 0; n < 4; ++n) header[at + n] = static_cast<char>(value >> (8 * n));
        };
        put(4, 36 + bytes);
        put(40, bytes);
        Folder.MakeFile(name, header);
        std::filesystem::resize_file(Folder.Native(name).toStdString(),
                                     static_cast<std::uintmax_t>(44 + bytes));
    }

    // Acts once, as soon as the first row has reached `percent`.
    void WhenReached(int percent, std::function<void()> act) {
        auto* poll = new QTimer(Window.get());
        QObject::connect(poll, &QTimer::timeout, poll, [this, poll, percent, act] {
            if (Rows().RowCount() < 1 || Progress(1).chopped(2).toInt() < percent) return;
            poll->stop();
            act();
        });
        poll->start(5);
    }

    static constexpr qint64 OwnId = 4711;
    const ProcessFunctions RealProcesses = Processes();
    std::vector<qint64> Ended;  // processes that were ended by force
    TestFolder Folder;
    TestFolder Shipped;
    QString FolderToChoose;
    std::unique_ptr<BatchConverter> Window;
};

}  // namespace Sonmira
