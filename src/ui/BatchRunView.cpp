#include "ui/BatchRunView.h"

#include "engine/RunView.h"
#include "formats/OutputPanel.h"
#include "kit/MyProgressBar.h"
#include "library/widgets/FileList.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "platform/widgets/DesktopSignals.h"
#include "shell/LanguageFiles.h"
#include "shell/widgets/InputBoxes.h"
#include "ui/BatchConverterForm.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QWidget>

namespace Sonmira {

using namespace Qt::StringLiterals;

void RunNews::Begin() {
    Title = Window.windowTitle();
    Clock.start();
    Runs = true;
    Done = Total = InHand = 0;
    Told = -1;
    TrashText.clear();
}

void RunNews::Count(int done, int total) {
    Done = done;
    Total = total;
    InHand = 0;
    Tell();
}

void RunNews::Progress(int percent) {
    // At the end of a file its progress goes back to nothing, before the count goes on.
    InHand = qMax(InHand, qBound(0, percent, 100));
    Tell();
}

void RunNews::Tell() {
    if (!Runs || Total <= 0) return;
    const int percent = qBound(0, (Done * 100 + (Done < Total ? InHand : 0)) / Total, 100);
    if (percent == Told) return;
    Told = percent;
    Window.setWindowTitle(u"%1 % - %2"_s.arg(QString::number(percent), Title));
    Desktop().ShowProgress(percent / 100.0);
}

void RunNews::End() {
    Runs = false;
    Window.setWindowTitle(Title);
    Desktop().HideProgress();
    if (Clock.elapsed() < Long || Window.isActiveWindow()) return;
    const QString word = Done < Total ? LanguageLineOr(LanguageLine::Stopped, u"Stopped"_s)
                                      : LanguageLineOr(LanguageLine::Converted, u"Converted"_s);
    QString text = word + u": "_s + CountText(Done, Total);
    if (!TrashText.isEmpty()) text += u'\n' + TrashText;
    Desktop().Notify(u"Sonmira"_s, text);
    QApplication::alert(&Window);
}

BatchRunView::BatchRunView(BatchConverterForm& form, std::function<void(bool enabled)> lockInputs,
                           RunNews* news)
    : PanelRunView(*form.Picture9), Form(form), LockInputs(std::move(lockInputs)), News(news) {}

void BatchRunView::SetControlsEnabled(bool enabled) {
    LockInputs(enabled);
}

void BatchRunView::ClearRows() {
    Form.ListViewFiles->Rows().Clear();
    ShowTrashed(0, 0);
}
int BatchRunView::AddRow() {
    return Form.ListViewFiles->Rows().AddRow();
}

void BatchRunView::SetRowNumber(int row, int number) {
    Form.ListViewFiles->Rows().SetText(row, FileListModel::TrackColumn, RowNumberText(number));
}

void BatchRunView::SetRowName(int row, const QString& name) {
    Form.ListViewFiles->Rows().SetText(row, FileListModel::FilenameColumn, ShownName(name));
}

void BatchRunView::SetRowPercent(int row, int percent) {
    Form.ListViewFiles->Rows().SetProgress(row, PercentText(percent), percent);
}

void BatchRunView::SetRowFailure(int row, std::optional<RowFailure> reason) {
    Form.ListViewFiles->Rows().SetProgress(row, FailureText(reason), {});
}

QString BatchRunView::RowProgress(int row) const {
    return Form.ListViewFiles->Rows().Text(row, FileListModel::ProgressColumn);
}

void BatchRunView::SetRowIcon(int row, QStringView icon) {
    Form.ListViewFiles->Rows().SetIcon(row, icon.toString());
}

void BatchRunView::ScrollToRow(int row) {
    Form.ListViewFiles->ScrollToRow(row);
}

void BatchRunView::ShowTrashed(int files, qint64 bytes) {
    QString text;
    if (files > 0) {
        text = u"%1: %2 (%3)"_s.arg(LanguageLineOr(LanguageLine::InTheTrash, u"In the trash"_s))
                   .arg(files)
                   .arg(QLocale().formattedDataSize(bytes));
    }
    Form.StatusPanel2->setText(text);
    Form.StatusPanel2->setVisible(!text.isEmpty());
    if (News != nullptr) News->Trashed(text);
}

void BatchRunView::ShowCount(int done, int total) {
    Form.Label29->setText(CountText(done, total));
    if (News != nullptr) News->Count(done, total);
}
void BatchRunView::ShowFolder(const QString& path) {
    Form.Label30->setText(ShownPath(path));
}
void BatchRunView::ShowFileName(const QString& name) {
    Form.LabelFileName->setText(ShownName(name));
}
void BatchRunView::ClearDuration() {
    Form.LabelDuration->clear();
}
void BatchRunView::ShowProgress(int percent) {
    Form.mpb->SetValue(percent);
    if (News != nullptr) News->Progress(percent);
}

PanelTag BatchRunView::GetPanelTag() const {
    const TagFields& fields = *Form.TagPage.Fields;
    return {fields.infoArtist->text(), fields.infoAlbum->text(), fields.infoYear->text(),
            fields.infoComment->text(), fields.infoGenre->currentText()};
}

void BatchRunView::SetPanelTag(const PanelTag& tag) {
    const TagFields& fields = *Form.TagPage.Fields;
    // A text box ends at the first NUL. Padding in it would look like blanks, and what is typed behind that
    // would be cut off by whoever reads the text up to the NUL.
    const auto shown = [](const QString& text) { return UpToNul(text).toString(); };
    fields.infoArtist->setText(shown(tag.Artist));
    fields.infoAlbum->setText(shown(tag.Album));
    fields.infoYear->setText(shown(tag.Year));
    fields.infoComment->setText(shown(tag.Comment));
    fields.infoGenre->setEditText(shown(tag.Genre));
}

}  // namespace Sonmira
