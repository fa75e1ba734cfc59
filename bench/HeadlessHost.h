#pragma once

#include "engine/RunView.h"
#include "library/Collection.h"

#include <QSet>

#include <functional>
#include <vector>

namespace Sonmira {

// Stands in for a window where there is none: benchmarks and tests run the real engine over it. Keeps what
// a window would show, so that a test can read it, and calls a function at each yield, so that a test can
// act like a user in the middle of a run.
class HeadlessHost final : public RunView, public CollectionView {
public:
    struct Row {
        QString Text;
        QString Name;
        QString Progress;
        QString Icon;
        std::vector<QString> ProgressSeen;  // every text that the progress cell held, in order
    };

    // What the controls of a window would hold.
    QString OutputFolder;
    QString Format;
    bool SaveBesideOriginal = false;
    bool RemoveOriginal = false;

    // What a window would show.
    std::vector<Row> Rows;
    QString Count;
    QString Folder;
    QString FileName;
    QString Duration;
    int Progress = 0;
    bool ControlsEnabled = true;
    std::vector<QString> NodeKeys;  // in the order of adding, the root not among them
    std::vector<QString> NodeImages;
    int DirectoryCount = 0;
    int FileCount = 0;
    QString StatusPath;
    PanelTag Panel;
    int TrashedFiles = -1;  // until a run has ended
    qint64 TrashedBytes = 0;

    std::function<void()> AtYield;
    std::function<void(bool enabled)> AtControls;

    // RunView.
    QString TextOutPath() const override { return OutputFolder; }
    void SetTextOutPath(const QString& folder) override { OutputFolder = folder; }
    bool CheckOutPath() const override { return SaveBesideOriginal; }
    bool Check2() const override { return RemoveOriginal; }
    QString ComboOutFormat() const override { return Format; }
    void SetControlsEnabled(bool enabled) override {
        ControlsEnabled = enabled;
        if (AtControls) AtControls(enabled);
    }
    void ClearRows() override { Rows.clear(); }
    int AddRow() override;
    void SetRowNumber(int row, int number) override { At(row).Text = RowNumberText(number); }
    void SetRowName(int row, const QString& name) override { At(row).Name = name; }
    void SetRowPercent(int row, int percent) override { SetRowProgress(row, PercentText(percent)); }
    void SetRowFailure(int row, std::optional<RowFailure> reason) override {
        SetRowProgress(row, FailureText(reason));
    }
    void SetRowIcon(int row, QStringView icon) override { At(row).Icon = icon.toString(); }
    void ScrollToRow(int /*row*/) override {}
    void ShowCount(int done, int total) override { Count = CountText(done, total); }
    void ShowFolder(const QString& path) override { Folder = path; }
    void ShowFileName(const QString& name) override { FileName = name; }
    void ClearDuration() override { Duration.clear(); }
    void ShowProgress(int percent) override { Progress = percent; }
    void ShowTrashed(int files, qint64 bytes) override {
        TrashedFiles = files;
        TrashedBytes = bytes;
    }
    PanelTag GetPanelTag() const override { return Panel; }
    void SetPanelTag(const PanelTag& tag) override { Panel = tag; }
    void Yield() override;

    // CollectionView.
    void GetIcon(const QString& /*path*/) override {}
    void GetIcon4(const QString& /*path*/) override {}
    void AddNode(const QString& parentKey, const QString& key, const QString& text,
                 const QString& imageKey) override;
    void ShowPath(const QString& path) override { StatusPath = path; }
    void ShowDirectoryCount(int count) override { DirectoryCount = count; }
    void ShowFileCount(int count) override { FileCount = count; }

private:
    void SetRowProgress(int row, const QString& text);
    QString RowProgress(int row) const override;
    Row& At(int row);

    QSet<QString> Keys;
};

}  // namespace Sonmira
