#pragma once

#include "formats/PanelRunView.h"

#include <functional>

namespace Sonmira {

struct AudiotoolForm;

// What a run reads and shows, on the compact window. Its rows are there before the run, with their positions
// and names; a run only changes their states.
class AudiotoolRunView final : public PanelRunView {
public:
    // `lockInputs` is what SetControlsEnabled does.
    AudiotoolRunView(AudiotoolForm& form, std::function<void(bool enabled)> lockInputs);

    // The row that the next AddRow of a run means.
    void TakeRow(int row) { RowInHand = row; }

    bool Check2() const override { return false; }
    void SetControlsEnabled(bool enabled) override { LockInputs(enabled); }

    void ClearRows() override;
    int AddRow() override { return RowInHand; }
    void SetRowNumber(int /*row*/, int /*number*/) override {}
    void SetRowName(int /*row*/, const QString& /*name*/) override {}
    void SetRowPercent(int row, int percent) override { SetRowProgress(row, PercentText(percent)); }
    void SetRowFailure(int row, std::optional<RowFailure> reason) override {
        SetRowProgress(row, FailureText(reason));
    }
    void SetRowIcon(int row, QStringView icon) override;
    void ScrollToRow(int row) override;

    void ShowCount(int done, int total) override;
    void ShowFolder(const QString& /*path*/) override {}
    void ShowFileName(const QString& name) override;
    void ClearDuration() override {}
    void ShowProgress(int percent) override;
    void ShowWmaStageFailure() override;

    // There is no tag page here: its fields are held without a screen, empty at first.
    PanelTag GetPanelTag() const override { return Panel; }
    void SetPanelTag(const PanelTag& tag) override { Panel = tag; }

private:
    void SetRowProgress(int row, const QString& text);
    QString RowProgress(int row) const override;

    AudiotoolForm& Form;
    std::function<void(bool)> LockInputs;
    int RowInHand = 0;
    PanelTag Panel;
};

}  // namespace Sonmira
