#include "compact/AudiotoolRunView.h"

#include "compact/AudiotoolForm.h"
#include "compact/AudiotoolList.h"
#include "platform/Dialogs.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

AudiotoolRunView::AudiotoolRunView(AudiotoolForm& form, std::function<void(bool enabled)> lockInputs)
    : PanelRunView(*form.Output), Form(form), LockInputs(std::move(lockInputs)) {}

void AudiotoolRunView::ClearRows() {
    Form.ListViewFiles->Rows().ResetStates();
}

void AudiotoolRunView::SetRowProgress(int row, const QString& text) {
    AudiotoolRows& rows = Form.ListViewFiles->Rows();
    RowState state = rows.State(row);
    state.Progress = text;
    rows.SetState(row, state);
}

QString AudiotoolRunView::RowProgress(int row) const {
    return Form.ListViewFiles->Rows().State(row).Progress;
}

void AudiotoolRunView::SetRowIcon(int row, QStringView icon) {
    AudiotoolRows& rows = Form.ListViewFiles->Rows();
    RowState state = rows.State(row);
    state.Icon = icon.toString();
    rows.SetState(row, state);
}

void AudiotoolRunView::ScrollToRow(int row) {
    Form.ListViewFiles->ScrollToRow(row);
}

void AudiotoolRunView::ShowCount(int done, int total) {
    Form.LabelCounterFiles->setText(CountText(done, total));
}

void AudiotoolRunView::ShowFileName(const QString& name) {
    Form.LabelCurrentFile->setText(LanguageLines[LanguageLine::CurrentFile] + ShownName(name));
}

// The bar of the row in hand is the bar of the run.
void AudiotoolRunView::ShowProgress(int percent) {
    if (RowInHand == 0) return;
    AudiotoolRows& rows = Form.ListViewFiles->Rows();
    RowState state = rows.State(RowInHand);
    state.Percent = percent;
    rows.SetState(RowInHand, state);
}

void AudiotoolRunView::ShowWmaStageFailure() {
    // The one box of this window that has another title, which it has always had.
    Dialogs().ShowMessage(LanguageLines[LanguageLine::WmaFailed], MessageIcon::Warning, u"Sonmira Cutter"_s);
}

}  // namespace Sonmira
