#pragma once

#include "platform/Dialogs.h"
#include "platform/Processes.h"
#include "shell/LanguageFiles.h"
#include "shell/Settings.h"
#include "support/ModalAnswer.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"
#include "support/WindowWaiting.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <filesystem>

namespace Sonmira {

// What a test of a real window needs around it: settings, languages, an output folder and a process list of
// its own. No process is ever ended.
class WindowTest : public ::testing::Test {
protected:
    WindowTest() {
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
        Processes().List = [this] { return std::vector<RunningProcess>{{OwnProgram, OwnId}}; };
        Processes().End = [this](qint64 id) {
            Ended.push_back(id);
            return true;
        };
        Dialogs().BrowseForFolder = [this](const QString& /*title*/) { return FolderToChoose; };
    }
    ~WindowTest() override {
        OverrideLanguageFolder({});
        LanguageLines.Assign({});
        Processes() = RealProcesses;
        Dialogs() = RealDialogs;
    }

    static QString Setting(const QString& key) {
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

    static constexpr qint64 OwnId = 4711;
    QString OwnProgram = QStringLiteral("Sonmira");  // the file name of the program under test
    const ProcessFunctions RealProcesses = Processes();
    const DialogFunctions RealDialogs = Dialogs();
    std::vector<qint64> Ended;  // processes that were ended by force
    TestFolder Folder;
    TestFolder Shipped;
    QString FolderToChoose;
};

}  // namespace Sonmira
