#pragma once

#include "formats/PanelRunView.h"

#include <QElapsedTimer>
#include <QString>

#include <functional>

class QWidget;

namespace Sonmira {

// What is told of a run to somebody who looks elsewhere: its progress in the title of the window and in the
// task bar, and a message at its end where the run was long and its window is not in front.
class RunNews {
public:
    // A run that ends before this is no news.
    static constexpr qint64 LongRun = 10'000;  // milliseconds

    // The window outlives the news. Its title is the one to which it goes back.
    explicit RunNews(QWidget& window, qint64 longRun = LongRun) : Window(window), Long(longRun) {}

    // A run is told of while one of these lives.
    class Session {
    public:
        explicit Session(RunNews& news) : News(news) { News.Begin(); }
        ~Session() { News.End(); }
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;

    private:
        RunNews& News;
    };

    // Files done and in all; the progress of the one in hand from 0 to 100. Outside a session nothing is
    // told.
    void Count(int done, int total);
    void Progress(int percent);
    // What went into the trash, for the message at the end.
    void Trashed(const QString& text) { TrashText = text; }

private:
    void Begin();
    void End();
    void Tell();

    QWidget& Window;
    qint64 Long;
    QString Title;
    QElapsedTimer Clock;
    bool Runs = false;
    int Done = 0;
    int Total = 0;
    int InHand = 0;  // percent
    int Told = -1;
    QString TrashText;
};

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
