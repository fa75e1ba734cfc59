#include "ui/BatchConverter.h"

#include "engine/JobDriver.h"
#include "engine/StopCommands.h"
#include "formats/OutputPanel.h"
#include "library/AddFiles.h"
#include "library/widgets/AddFileDialog.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "shell/LanguageFiles.h"
#include "shell/Paths.h"
#include "shell/Settings.h"
#include "shell/widgets/About.h"
#include "shell/widgets/ChoiceList.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/PathBox.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The least size in twips; 15 twips are one logical pixel at every scale.
constexpr double LeastWidth = 9195.0;
constexpr double LeastHeight = 8400.0;
constexpr double TwipsPerPixel = 15.0;

constexpr int FolderDialogTitleLine = 18;

}  // namespace

BatchConverter::BatchConverter()
    : Controls(*this),
      CollectionShown(Controls, [this](bool enabled) { SetControlsEnabled(enabled); }),
      RunShown(Controls, [this](bool enabled) { SetControlsEnabled(enabled); }),
      FormatSelector(*Controls.Picture9, FileWenc) {
    setObjectName(u"BatchConverter"_s);
    setMinimumSize(qRound(LeastWidth / TwipsPerPixel), qRound(LeastHeight / TwipsPerPixel));
    resize(960, 640);
    ConnectEvents();
    Form_Load();
}

void BatchConverter::ConnectEvents() {
    const auto toolbar = [this](int button, auto handler) {
        OnEvent(Controls.ToolbarButton(button), &QAction::triggered, this, handler);
    };
    const auto menu = [this](QAction* command, auto handler) {
        OnEvent(command, &QAction::triggered, this, handler);
    };
    const auto newConversion = [this] {
        if (InputsFree()) NewConversion();
    };
    menu(Controls.mynew, newConversion);
    toolbar(1, newConversion);
    menu(Controls.addfile, [this] { addfile_Click(); });
    toolbar(2, [this] { addfile_Click(); });
    menu(Controls.adddirectory, [this] { adddirectory_Click(); });
    toolbar(3, [this] { adddirectory_Click(); });
    menu(Controls.ConvertAll, [this] { StartRun(); });
    toolbar(5, [this] { StartRun(); });
    menu(Controls.cancel, [this] { cancel_Click(); });
    toolbar(6, [this] { cancel_Click(); });
    menu(Controls.about, [this] {
        if (!InputsLocked) ShowAbout(this);
    });
    toolbar(8, [this] { ShowAbout(this); });
    menu(Controls.Quit, [this] {
        if (!Run.Busy) close();
    });
    OnEvent(Controls.StopImg, &QToolButton::clicked, this, [this] { SkipFile(Run); });
    OnEvent(Controls.ClearImg, &QToolButton::clicked, this, [this] { ClearRowsWhenIdle(Run, RunShown); });
    OnEvent(Controls.TreeView1, &ConversionTree::FilesDropped, this,
            [this](const QStringList& paths) { AddDrop(paths); });
}

void BatchConverter::NewConversion() {
    Controls.ListViewFiles->Rows().Clear();
    Controls.TreeView1->ResetToRoot();
    Items.Records.Reset();
    Items.DirectoryCount = Items.FileCount = 0;
    CollectionShown.ShowDirectoryCount(0);
    CollectionShown.ShowFileCount(0);
    for (QLabel* label : {Controls.LabelFileName, Controls.LabelDuration, Controls.Label29}) label->clear();
}

void BatchConverter::addfile_Click() {
    if (InputsFree()) AddFileDialog(Items, CollectionShown);
}

void BatchConverter::adddirectory_Click() {
    if (!InputsFree()) return;
    const QString path = BrowseForFolder(LanguageLines[FolderDialogTitleLine]);
    if (!path.isEmpty()) AddFolder(path);
}

void BatchConverter::AddFolder(const QString& path) {
    if (InputsFree()) AddDirectory(Items, CollectionShown, path);
}

void BatchConverter::AddDrop(const QStringList& paths) {
    if (InputsFree()) AddDropped(Items, CollectionShown, paths);
}

void BatchConverter::StartRun() {
    if (InputsFree()) JobDriver(Run, RunShown, {FileRenc, FileWenc}, Items).RunAllConversions();
}

void BatchConverter::cancel_Click() {
    CancelEverything(Run, Items);
}

void BatchConverter::SetControlsEnabled(bool enabled) {
    InputsLocked = !enabled;
    for (const int button : {1, 2, 3, 4, 5, 7, 8}) Controls.ToolbarButton(button)->setEnabled(enabled);
    Controls.ToolbarButton(6)->setEnabled(!enabled);
    const OutputPanel& panel = *Controls.Picture9;
    panel.ComboOutFormat->setEnabled(enabled);
    panel.CmdSelectPath->setEnabled(enabled);
    panel.CheckOutPath->setEnabled(enabled);
    panel.Check2->setEnabled(enabled);
}

void BatchConverter::closeEvent(QCloseEvent* event) {
    bool cancel = false;
    Form_QueryUnload(cancel);
    event->setAccepted(!cancel);
    if (cancel) return;
    // A scan, or a run that has not accepted a file yet, ends at its next step instead of going on behind a
    // window that is gone.
    Items.StopScan = true;
    Run.CancelAll = true;
}

void BatchConverter::Form_QueryUnload(bool& cancel) {
    const auto keep = [](const QString& key, const QString& value) {
        WriteIniValue(SettingsFile, u"AudioConverter"_s, key, value);
    };
    keep(u"OutputPath"_s, RunShown.TextOutPath());
    keep(u"Modepath"_s, RunShown.CheckOutPath() ? u"TRUE"_s : u"FALSE"_s);
    keep(u"Format"_s, RunShown.ComboOutFormat());
    if (Run.Busy) cancel = true;
}

}  // namespace Sonmira
