#include "engine/InputCheck.h"

#include "engine/Run.h"
#include "engine/RunView.h"
#include "platform/Failure.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"

namespace Sonmira {

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

// The length in whole seconds of what a decoder of its own reads; nothing where that is no matter.
std::optional<double> TestedDuration(Components parts, const QString& path) {
    if (EndsInUpper(path, u"AAC") || EndsInUpper(path, u"ALAC")) {
        parts.AACDecoder1.SetInputFile(path);
        parts.AACDecoder1.SetOutputFile({});
        if (parts.alacdec1.IsAlac(path) != 1) return std::nullopt;
        double duration = 0;
        qint32 unused = 0;
        parts.alacdec1.TrackInfo(path, duration, unused, unused, unused);
        return duration;
    }
    if (EndsInUpper(path, u"APE") || EndsInUpper(path, u"APL")) return parts.Ape.GetDurationTrack(path);
    if (EndsInUpper(path, u"FLAC")) return parts.FlacCodec1.TrackLength(path);
    if (EndsInUpper(path, u"MPC") || EndsInUpper(path, u"MP+")) return parts.mpcdecoder1.TrackLength(path);
    // That it could be opened was the test.
    parts.FileRenc.CloseFile();
    return std::nullopt;
}

// A file of that many seconds or fewer is taken for a broken one.
constexpr double TooShort = 1;

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
        if (IsStreamReadable(path)) parts.FileRenc.OpenForRead(path);
        const std::optional<double> duration = TestedDuration(parts, path);
        if (duration && *duration <= TooShort) throw Failure(FailureNumber::Component);
    });
    if (!readable) Reject(run, view, parts, path, reason);
    return readable;
}

}  // namespace Sonmira
