#include "ui/LanguageTargets.h"

#include "formats/OutputPanel.h"
#include "library/widgets/FileList.h"
#include "shell/LanguageFiles.h"
#include "ui/BatchConverterForm.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QToolButton>

namespace Sonmira {

void ApplyLanguage(const QString& path, BatchConverterForm& form) {
    LoadLanguageFile(path);
    const LanguageTable& line = LanguageLines;

    // Captions 4 and 7 go to separators, so that buttons 3 and 6 keep their design captions.
    form.ToolbarButton(1)->setText(line[12]);
    form.ToolbarButton(2)->setText(line[1]);
    form.ToolbarButton(4)->setText(line[55]);
    form.ToolbarButton(7)->setText(line[22]);
    form.ToolbarButton(8)->setText(line[7]);
    form.ToolbarButton(5)->setText(line[23]);
    form.SSTab1->setTabText(0, line[19]);

    form.file->setTitle(line[0]);
    form.addfile->setText(line[1]);
    form.Quit->setText(line[21]);
    form.Quit->setText(line[2]);
    form.Informations->setTitle(line[7]);
    form.about->setText(line[9]);
    form.Label31->setText(line[10]);
    form.Label2->setText(line[11]);
    form.mynew->setText(line[12]);
    form.Picture9->Label11->setText(line[13]);
    form.Picture9->CheckOutPath->setText(line[14]);
    form.Picture9->Label5->setText(line[15]);
    form.Picture9->Label6->setText(line[16]);
    form.Picture9->Label7->setText(line[17]);
    form.cancel->setText(line[22]);
    form.ConvertAll->setText(line[23]);
    form.adddirectory->setText(line[55]);
    form.Picture9->Check2->setText(line[56]);
    form.Label28->setText(line[57]);
    form.Label1->setText(line[58]);
    form.Label27->setText(line[60]);
    form.Label32->setText(line[0] + u':');
    form.StopImg->setToolTip(line[63]);
    form.ActionMenu->setTitle(line[67]);
    form.ListViewFiles->Rows().SetHeader(FileListModel::TrackColumn, line[61]);
    form.ListViewFiles->Rows().SetHeader(FileListModel::FilenameColumn, line[26]);
    form.ListViewFiles->Rows().SetHeader(FileListModel::ProgressColumn, line[74]);
}

}  // namespace Sonmira
