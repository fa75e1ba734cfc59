#include "engine/OutputStage.h"

#include "engine/Destination.h"
#include "engine/OutputFormats.h"
#include "engine/ProgressEvents.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "engine/TagTransfer.h"
#include "platform/Failure.h"
#include "platform/FileIdentity.h"
#include "platform/FileRemoval.h"
#include "platform/Paths.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

void OutputStage::Dispatch() {
    const QString format = View.ComboOutFormat();
    const auto* const row = std::find_if(std::begin(OutputTable), std::end(OutputTable),
                                         [&](const OutputRow& one) { return format == one.Name; });
    if (row == std::end(OutputTable) || !ThisRun.Busy()) return;
    const QString extension = u'.' + row->Ending.toString().toLower();
    switch (row->Road) {
        case OutputRoad::Stream:
            return EncodeByStream(extension);
        case OutputRoad::Wma:
            return EncodeToWma(extension);
        case OutputRoad::FromWav:
            return EncodeFromWav(*row, extension);
    }
}

void OutputStage::EncodeByStream(const QString& extension) {
    OutputName output(ThisRun, extension);
    TranscodeStream(ThisRun, View, Parts, ThisRun.CurrentInput(), output);
}

void OutputStage::EncodeToWma(const QString& extension) {
    const bool encoded = PassOver([&] {
        OutputName output(ThisRun, extension);
        Parts.FileRenc.OpenForRead(ThisRun.CurrentInput());
        // Without a usable format the file is left alone and finishes as converted.
        if (Parts.FileRenc.FormatCode() < 0) return;
        const int sampleRate = Parts.FileRenc.SampleRate();
        const int channelCount = Parts.FileRenc.ChannelCount();
        Parts.FileWenc.SetSourceFormat(sampleRate, channelCount);
        Parts.FileRenc.CloseFile();
        TranscodeStream(ThisRun, View, Parts, ThisRun.CurrentInput(), output);
    });
    if (encoded) return;
    ThisRun.FailFile();
    View.ShowWmaStageFailure();
}

void EncodeToApe(Run& run, RunView& view, Components& parts, const QString& wav, const QString& output) {
    run.LowerKillFlag();
    parts.Ape.CompressFile(wav, output, parts.Settings.ApeCompressionLevel, MakeApeProgress(view),
                           run.KillFlag());
}

void EncodeToFlac(Run& run, RunView& /*view*/, Components& parts, const QString& wav, const QString& output) {
    run.LowerKillFlag();
    parts.FlacCodec_Encoder1.EncodeFromWav(wav, output,
                                           static_cast<qint16>(parts.Settings.FlacCompressionLevel));
}

// No quality goes along: the encoder runs at its own, unless a window has set that.
void EncodeToMpc(Run& /*run*/, RunView& /*view*/, Components& parts, const QString& wav,
                 const QString& output) {
    parts.mpcencoder1.EncodeFromWav(wav, output);
}

void OutputStage::EncodeFromWav(const OutputRow& row, const QString& extension) {
    OutputName output(ThisRun, extension);
    const std::optional<QString> wav = WavInput();
    if (!wav) return;
    const bool isWavWhole = !ThisRun.FileError();
    // Nobody reads the encoders' results; a source is only spared for good by them.
    bool isOurs = true;
    const bool encoded = PassOver([&] {
        output.CreateBy([&](const QString& path) {
            isOurs = !StampOf(path);
            row.Encode(ThisRun, View, Parts, *wav, path);
        });
    });
    ThisRun.EndOutput(isWavWhole && encoded && StampOf(output.Path()).has_value());
    // An encoder that fails before it makes its file must not have that of another program tagged.
    if (encoded || isOurs) WriteOutputTag(ThisRun, View, Parts, output.Path());
    // Only a decoder's WAV goes. One that the copy has made stays in the temporary folder, as it always has.
    if (ThisRun.EncodageParticulier()) PassOver([&] { DeleteFileOutright(*wav); });
    View.ShowProgress(0);
}

std::optional<QString> OutputStage::WavInput() {
    if (EndsInUpper(ThisRun.CurrentInput(), u"WAV")) return ThisRun.CurrentInput();
    constexpr int ExtensionLength = 3;  // for every input, so that a longer one leaves a letter in the name
    const QString wav = FreeTempWavPathFor(ThisRun.CurrentInput(), ExtensionLength);
    Parts.FileWenc.SetFormatPCM(44100, 2, 16);
    TranscodeStream(ThisRun, View, Parts, ThisRun.CurrentInput(), wav);
    if (ThisRun.CancelAll()) return std::nullopt;
    return wav;
}

}  // namespace Sonmira
