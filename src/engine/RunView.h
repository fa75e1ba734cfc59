#pragma once

#include "shell/LanguageFiles.h"

#include <QString>

#include <optional>

namespace Sonmira {

// What a row's icon says.
inline constexpr QStringView ConversionIcon = u"conversion";
inline constexpr QStringView ConvertedIcon = u"converted";
inline constexpr QStringView ErrorIcon = u"error";

// Why a row failed: the line of the language file that says so.
enum class RowFailure {
    FileNotFound = LanguageLine::FileNotFound,
    General = LanguageLine::RowFailed,
    WmaUnreadable = LanguageLine::WmaUnreadable,
    AacUnreadable = LanguageLine::AacUnreadable,
    OtherUnreadable = LanguageLine::OtherUnreadable,
    WmaUnsupported = LanguageLine::WmaUnsupported,
};

// The texts that a window makes of what it is told. They are made once, at the call: a language that comes
// later changes no row that is there.
QString RowNumberText(int number);
QString PercentText(int percent);
QString CountText(int done, int total);
// No reason has no text. Fails with SubscriptOutOfRange where the language has no such line.
QString FailureText(std::optional<RowFailure> reason);

// The fields of the tag page that a run reads and writes.
struct PanelTag {
    QString Artist;
    QString Album;
    QString Year;
    QString Comment;
    QString Genre;  // the text of the genre list
};

// What the engine reads from and shows on the window that started the run. Values are read at the moment
// they are needed, so that what a user types during a run counts for the next file.
class RunView {
public:
    virtual ~RunView() = default;

    // The output panel. The folder is an inner path, as typed.
    virtual QString TextOutPath() const = 0;
    virtual void SetTextOutPath(const QString& folder) = 0;
    virtual bool CheckOutPath() const = 0;  // save beside the original
    virtual bool Check2() const = 0;        // remove the original after conversion
    virtual QString ComboOutFormat() const = 0;

    // Locks (false) or frees (true) the inputs; the stop button takes the opposite.
    virtual void SetControlsEnabled(bool enabled) = 0;

    // The list of rows. Rows count from 1.
    virtual void ClearRows() = 0;
    virtual int AddRow() = 0;
    virtual void SetRowNumber(int row, int number) = 0;
    virtual void SetRowName(int row, const QString& name) = 0;
    virtual void SetRowPercent(int row, int percent) = 0;
    // The same where the row shows something else, because writing it costs far more than looking. Returns
    // whether it was written.
    bool UpdateRowPercent(int row, int percent);
    // No reason empties the text. Fails as FailureText does, and then changes nothing.
    virtual void SetRowFailure(int row, std::optional<RowFailure> reason) = 0;
    virtual void SetRowIcon(int row, QStringView icon) = 0;
    virtual void ScrollToRow(int row) = 0;

    // Labels and the bar (0 to 100).
    virtual void ShowCount(int done, int total) = 0;
    virtual void ShowFolder(const QString& path) = 0;
    virtual void ShowFileName(const QString& name) = 0;
    virtual void ClearDuration() = 0;
    virtual void ShowProgress(int percent) = 0;

    // At the end of a run: that many sources lie in the trash, with that many bytes. None where nothing went.
    virtual void ShowTrashed(int /*files*/, qint64 /*bytes*/) {}

    // The output to WMA failed before its stream was copied. Beside the row, some windows say so in a box.
    virtual void ShowWmaStageFailure() {}

    // The tag page as it stands. What is set may be filled up with NULs; a page shows the text before them.
    virtual PanelTag GetPanelTag() const = 0;
    virtual void SetPanelTag(const PanelTag& tag) = 0;

    // Lets the event loop run, so that a stop command is heard.
    virtual void Yield() = 0;

private:
    // What the row shows of its progress.
    virtual QString RowProgress(int row) const = 0;
};

}  // namespace Sonmira
