#include "ui/LanguageTargets.h"

#include "formats/OutputPanel.h"
#include "library/widgets/FileList.h"
#include "shell/LanguageFiles.h"
#include "tags/TagMemory.h"
#include "ui/BatchConverterForm.h"
#include "ui/TabStrip.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace Sonmira {

namespace {

// Places of fields whose captions are set out of the row.
constexpr std::size_t EncodedByPlace = 11;

void CaptionTagFields(TagPanelForm& page) {
    const LanguageTable& line = LanguageLines;
    // The captions in the order of the fields; the album's is none of them and stays as it was designed.
    struct Target {
        std::size_t Place;
        int Line;
    };
    static constexpr Target Targets[] = {{0, 30}, {1, 31},  {EncodedByPlace, 32},
                                         {3, 33}, {4, 34},  {5, 35},
                                         {6, 36}, {7, 37},  {8, 38},
                                         {9, 39}, {10, 40}, {12, 42}};
    for (const Target& target : Targets) page.Fields->Captions[target.Place]->setText(line[target.Line]);
    page.Fields->Captions[EncodedByPlace]->setText(line[41]);
}

}  // namespace

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
    form.SSTab1->setTabText(1, line[5]);

    form.file->setTitle(line[0]);
    form.addfile->setText(line[1]);
    form.Quit->setText(line[21]);
    form.Quit->setText(line[2]);
    form.Options->setTitle(line[3]);
    form.Languer->setTitle(line[4]);
    form.acceptWma->setText(line[6]);
    form.Informations->setTitle(line[7]);
    form.Homepage->setText(line[8]);
    form.about->setText(line[9]);
    form.Label31->setText(line[10]);
    form.Label2->setText(line[11]);
    form.mynew->setText(line[12]);
    form.Picture9->Label11->setText(line[13]);
    form.Picture9->CheckOutPath->setText(line[14]);
    form.Picture9->Label5->setText(line[15]);
    form.Picture9->Label6->setText(line[16]);
    form.Picture9->Label7->setText(line[17]);
    form.Label26->setText(line[19]);
    form.cancel->setText(line[22]);
    form.ConvertAll->setText(line[23]);
    form.removefromlist->setText(line[25]);
    form.TagPage.Frame1->setTitle(line[29]);
    CaptionTagFields(form.TagPage);
    form.TagPage.Command3->setText(line[43]);
    form.aide->setText(line[49]);

    TagMemory& memory = *form.TagPage.Picture4;
    for (std::size_t n = 0; n < memory.Label24.size(); ++n) {
        memory.Label24[n]->setText(line[30 + static_cast<int>(n)]);
    }
    form.TagPage.ToolbarButton(5)->setToolTip(line[22]);
    form.TagPage.ToolbarButton(7)->setToolTip(line[43]);
    memory.Label23->setText(line[71]);
    form.TagPage.ToolbarButton(1)->setToolTip(line[68]);
    form.TagPage.ToolbarButton(2)->setToolTip(line[69]);
    form.TagPage.ToolbarButton(3)->setToolTip(line[70]);

    form.adddirectory->setText(line[55]);
    form.Picture9->Check2->setText(line[56]);
    form.Label28->setText(line[57]);
    form.Label1->setText(line[58]);
    form.Label27->setText(line[60]);
    form.Label32->setText(line[0] + u':');
    form.StopImg->setToolTip(line[63]);
    form.StopImg->setAccessibleName(line[63]);
    form.ConvertSlection->setText(line[64]);
    form.convertnoww->setText(line[64]);
    form.playfilemenu->setText(line[65]);
    form.playfile->setText(line[65]);
    form.ActionMenu->setTitle(line[67]);
    form.OpenDirectory->setText(line[72]);
    FileListModel& rows = form.ListViewFiles->Rows();
    rows.SetHeader(FileListModel::TrackColumn, line[61]);
    rows.SetHeader(FileListModel::FilenameColumn, line[26]);
    rows.SetHeader(FileListModel::ProgressColumn, line[74]);
    form.CaptionsChanged();
}

}  // namespace Sonmira
