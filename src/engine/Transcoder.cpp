#include "engine/Destination.h"
#include "engine/OutputStage.h"
#include "engine/ProgressEvents.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "engine/StopCommands.h"
#include "engine/TagTransfer.h"
#include "platform/Failure.h"
#include "platform/FileIdentity.h"
#include "platform/Values.h"
#include "shell/LanguageFiles.h"

#include <QScopeGuard>

namespace Sonmira {

namespace {

double Divide(double dividend, double divisor) {
    if (divisor == 0) throw Failure(FailureNumber::DivisionByZero);
    return dividend / divisor;
}

// The part of the stream that is done, in percent: never 0, because a file in work has begun, and never
// beyond 100, because a stream may hold more than its header says.
int PercentOf(double position, double streamLength) {
    const double percent = RoundHalfEven(Divide(position, streamLength) * 100);
    return static_cast<int>(std::clamp(percent, 1.0, 100.0));
}

// Returns whether the copy came to its end; false after a stop command.
bool CopyBlocks(Run& run, RunView& view, Components components) {
    AudioSource& source = components.FileRenc;
    const qint64 blockSize = qint64{source.SampleRate()} * source.ChannelCount();
    source.StopAsked = [&run] { return IsCopyStopped(run); };
    const auto forget = qScopeGuard([&] { source.StopAsked = nullptr; });
    const auto streamLength = static_cast<double>(source.StreamLength());
    double position = 0;
    do {
        if (IsCopyStopped(run)) return false;
        const AudioBlock block = source.ReadBlock(blockSize);
        if (block.IsEmpty()) break;
        components.FileWenc.WriteBlock(block);
        position += Divide(static_cast<double>(block.Bytes.size()), static_cast<double>(source.ByteRate()));
        position = std::min(position, streamLength);
        const int percent = PercentOf(position, streamLength);
        view.ShowProgress(percent);
        view.UpdateRowPercent(run.CurrentItem(), percent);
        view.Yield();
    } while (run.Busy());
    return !run.CancelAll();
}

// Creates the output and returns its path.
using CreateOutput = std::function<QString(AudioSink& sink)>;

// The path of the output; nothing after a stop command.
std::optional<QString> Copy(Run& run, RunView& view, Components components, const QString& inputPath,
                            const CreateOutput& create) {
    run.ForgetCancel();
    view.ShowProgress(0);
    components.FileRenc.OpenForRead(inputPath);
    QString outputPath = create(components.FileWenc);
    components.FileWenc.SetSourceFormat(components.FileRenc.SampleRate(), components.FileRenc.ChannelCount());
    if (!CopyBlocks(run, view, components)) return std::nullopt;
    components.FileWenc.CloseFile();
    components.FileRenc.CloseFile();
    return outputPath;
}

void Transcode(Run& run, RunView& view, Components components, const QString& inputPath,
               const CreateOutput& create) {
    std::optional<QString> output;
    PassOver([&] { output = Copy(run, view, components, inputPath, create); });
    if (output) {
        // Its folder may be gone by now.
        run.EndOutput(!run.CancelAll() && StampOf(*output).has_value());
        if (!run.CancelAll()) WriteOutputTag(run, view, components, *output);
        view.SetRowPercent(run.CurrentItem(), 100);
        view.ShowProgress(0);
        return;
    }
    run.FailFile();
    PassOver([&] { components.FileWenc.CloseFile(); });
    PassOver([&] { components.FileRenc.CloseFile(); });
    view.ShowProgress(0);
    view.SetRowIcon(run.CurrentItem(), ErrorIcon);
    view.SetRowFailure(run.CurrentItem(), RowFailure::General);
}

}  // namespace

void TranscodeStream(Run& run, RunView& view, Components components, const QString& inputPath,
                     OutputName& output) {
    Transcode(run, view, components, inputPath, [&](AudioSink& sink) {
        output.CreateBy([&](const QString& path) { sink.OpenForWrite(path); });
        return output.Path();
    });
}

void TranscodeStream(Run& run, RunView& view, Components components, const QString& inputPath,
                     const QString& outputPath) {
    Transcode(run, view, components, inputPath, [&](AudioSink& sink) {
        sink.OpenForWrite(outputPath);
        return outputPath;
    });
}

}  // namespace Sonmira
