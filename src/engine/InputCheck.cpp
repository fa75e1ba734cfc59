#include "engine/InputCheck.h"

#include "engine/RunState.h"
#include "engine/RunView.h"
#include "platform/Failure.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"

namespace Sonmira {

namespace {

// Lines of the language file.
constexpr int FileNotFoundLine = 95;
constexpr int GeneralFailureLine = 96;
constexpr int WmaUnreadableLine = 97;
constexpr int AacUnreadableLine = 98;
constexpr int OtherUnreadableLine = 99;
constexpr int WmaUnsupportedLine = 100;

void Reject(RunState& run, RunView& view, const QString& path, const QString& message) {
    view.SetRowProgress(run.CurrentItem, LanguageLines[GeneralFailureLine]);
    run.FileError = true;
    QString reason = message;
    if (EndsInUpper(path, u"WMA")) {
        reason = LanguageLines[run.WmaSupported ? WmaUnreadableLine : WmaUnsupportedLine];
    } else if (EndsInUpper(path, u"AAC")) {
        reason = LanguageLines[AacUnreadableLine];
    }
    view.SetRowProgress(run.CurrentItem, reason);
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

bool CheckInputFile(RunState& run, RunView& view, Components parts, const QString& path) {
    QString message;
    const bool readable = PassOver([&] {
        // Inside, so that a language without the line refuses the file and does not end the run.
        message = LanguageLines[OtherUnreadableLine];
        if (FindFirstName(path, SearchFor::VisibleFiles).isEmpty()) {
            message = LanguageLines[FileNotFoundLine];
            throw Failure(FailureNumber::FileNotFound);
        }
        if (IsStreamReadable(path)) parts.FileRenc.OpenForRead(path);
        const std::optional<double> duration = TestedDuration(parts, path);
        if (duration && *duration <= TooShort) throw Failure(FailureNumber::Component);
    });
    if (!readable) Reject(run, view, path, message);
    return readable;
}

}  // namespace Sonmira
