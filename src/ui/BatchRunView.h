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
    void SetRowText(int row, const QString& text) override;
    void SetRowName(int row, const QString& name) override;
    void SetRowProgress(int row, const QString& text) override;
    QString RowProgress(int row) const override;
    void SetRowIcon(int row, QStringView icon) override;
    void ScrollToRow(int row) override;

    void ShowCount(const QString& text) override;
    void ShowFolder(const QString& text) override;
    void ShowFileName(const QString& text) override;
    void ShowDuration(const QString& text) override;
    void ShowProgress(int percent) override;
    void ShowTrashed(int files, qint64 bytes) override;

    PanelTag GetPanelTag() const override;
    void SetPanelTag(const PanelTag& tag) override;

private:
    BatchConverterForm& Form;
    std::function<void(bool)> LockInputs;
    RunNews* News;
};

}  // namespace Sonmira
