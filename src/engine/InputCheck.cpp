#include "engine/InputCheck.h"

#include "engine/InputStage.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "library/AudioFileNames.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "shell/LanguageFiles.h"

#include <QScopeGuard>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

void Reject(Run& run, RunView& view, Components parts, const QString& path,
            std::optional<RowFailure> reason) {
    view.SetRowFailure(run.CurrentItem(), RowFailure::General);
    run.FailFile();
    if (EndsInUpper(path, u"WMA")) {
        reason = parts.Settings.WmaSupported ? RowFailure::WmaUnreadable : RowFailure::WmaUnsupported;
    } else if (EndsInUpper(path, u"AAC")) {
        reason = RowFailure::AacUnreadable;
    }
    view.SetRowFailure(run.CurrentItem(), reason);
}

// A file of that many seconds or fewer is taken for a broken one.
constexpr double TooShort = 1;

double LengthOfStream(AudioSource& fileRenc, const QString& path) {
    const auto close = qScopeGuard([&] { PassOver([&] { fileRenc.CloseFile(); }); });
    fileRenc.OpenForRead(path);
    return static_cast<double>(fileRenc.Length()) / 1000;
}

}  // namespace

bool CheckInputFile(Run& run, RunView& view, Components parts, const QString& path) {
    std::optional<RowFailure> reason;
    const auto because = [&reason](RowFailure failure) {
        FailureText(failure);  // fails where the language has none
        reason = failure;
    };
    const bool readable = PassOver([&] {
        // Inside, so that a language without the line refuses the file and does not end the run.
        because(RowFailure::OtherUnreadable);
        if (FindFirstName(path, SearchFor::VisibleFiles).isEmpty()) {
            because(RowFailure::FileNotFound);
            throw Failure(FailureNumber::FileNotFound);
        }
        if (IsStreamReadable(path)) {
            // That it could be opened was the test.
            parts.FileRenc.OpenForRead(path);
            parts.FileRenc.CloseFile();
        }
        const std::optional<double> duration = InputStage::DecodedLength(parts, path);
        if (duration && *duration <= TooShort) throw Failure(FailureNumber::Component);
    });
    if (!readable) Reject(run, view, parts, path, reason);
    return readable;
}

double ReadDuration(Components parts, const QString& path) {
    if (IsStreamReadable(path)) return LengthOfStream(parts.FileRenc, path);
    return InputStage::DecodedLength(parts, path).value_or(0);
}

QString MinutesAndSeconds(double seconds) {
    const auto total = static_cast<qint64>(RoundHalfEven(seconds));
    return FormatNumber(total / 60, u"#00") + u':' + FormatNumber(total % 60, u"#00");
}

QString ReadFileInformation(Components parts, const QString& path) {
    double seconds = 0;
    const bool read = PassOver([&] { seconds = ReadDuration(parts, path); });
    if (read && seconds == 0 && InputFormatOf(path).Reader == InputReader::Aac) return u"-"_s;
    return MinutesAndSeconds(seconds);
}

}  // namespace Sonmira
