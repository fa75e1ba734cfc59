#pragma once

#include "formats/PanelRunView.h"

#include <functional>

namespace Sonmira {

struct BatchConverterForm;
class RunNews;

// What a run reads and shows, on the main window.
class BatchRunView final : public PanelRunView {
public:
    // `lockInputs` is what SetControlsEnabled does. Where there are `news`, they hear of the progress; they
    // outlive the view.
    BatchRunView(BatchConverterForm& form, std::function<void(bool enabled)> lockInputs,
                 RunNews* news = nullptr);

    void SetControlsEnabled(bool enabled) override;

    void ClearRows() override;
    int AddRow() override;
    void SetRowNumber(int row, int number) override;
    void SetRowName(int row, const QString& name) override;
    void SetRowPercent(int row, int percent) override;
    void SetRowFailure(int row, std::optional<RowFailure> reason) override;
    void SetRowIcon(int row, QStringView icon) override;
    void ScrollToRow(int row) override;

    void ShowCount(int done, int total) override;
    void ShowFolder(const QString& path) override;
    void ShowFileName(const QString& name) override;
    void ClearDuration() override;
    void ShowProgress(int percent) override;
    void ShowTrashed(int files, qint64 bytes) override;

    PanelTag GetPanelTag() const override;
    void SetPanelTag(const PanelTag& tag) override;

private:
    QString RowProgress(int row) const override;

    BatchConverterForm& Form;
    std::function<void(bool)> LockInputs;
    RunNews* News;
};

}  // namespace Sonmira
