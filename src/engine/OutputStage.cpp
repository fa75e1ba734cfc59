#include "engine/OutputStage.h"

#include "engine/OutputFormatNames.h"
#include "engine/OutputName.h"
#include "engine/ProgressEvents.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "engine/TagWriting.h"
#include "engine/TempWav.h"
#include "engine/Transcoder.h"
#include "platform/Failure.h"
#include "platform/FileIdentity.h"
#include "platform/FileRemoval.h"
#include "platform/Paths.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

void OutputStage::Dispatch() {
    struct Route {
        QStringView Format;
        void (OutputStage::*Encode)();
    };
    static constexpr Route Routes[] = {
        {FormatName::Wma, &OutputStage::EncodeToWma}, {FormatName::Mp3, &OutputStage::EncodeToMp3},
        {FormatName::Ogg, &OutputStage::EncodeToOgg}, {FormatName::Wav, &OutputStage::EncodeToWav},
        {FormatName::Ape, &OutputStage::EncodeToApe}, {FormatName::Flac, &OutputStage::EncodeToFlac},
        {FormatName::Mpc, &OutputStage::EncodeToMpc},
    };
    const QString format = View.ComboOutFormat();
    for (const Route& route : Routes) {
        if (format != route.Format) continue;
        (this->*route.Encode)();
        return;
    }
}

void OutputStage::EncodeToMp3() {
    EncodeByStream(u".mp3"_s);
}
void OutputStage::EncodeToOgg() {
    EncodeByStream(u".ogg"_s);
}
void OutputStage::EncodeToWav() {
    EncodeByStream(u".wav"_s);
}

void OutputStage::EncodeByStream(const QString& extension) {
    if (!ThisRun.Busy()) return;
    OutputName output(ThisRun, extension);
    TranscodeStream(ThisRun, View, Parts, ThisRun.CurrentInput(), output);
}

void OutputStage::EncodeToWma() {
    if (!ThisRun.Busy()) return;
    const bool encoded = PassOver([&] {
        OutputName output(ThisRun, u".wma"_s);
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

void OutputStage::EncodeToApe() {
    EncodeFromWav(u".ape"_s, [this](const QString& wav, const QString& output) {
        ThisRun.LowerKillFlag();
        Parts.Ape.CompressFile(wav, output, Parts.Settings.ApeCompressionLevel, MakeApeProgress(View),
                               ThisRun.KillFlag());
    });
}

void OutputStage::EncodeToFlac() {
    EncodeFromWav(u".flac"_s, [this](const QString& wav, const QString& output) {
        ThisRun.LowerKillFlag();
        Parts.FlacCodec_Encoder1.EncodeFromWav(wav, output,
                                               static_cast<qint16>(Parts.Settings.FlacCompressionLevel));
    });
}

void OutputStage::EncodeToMpc() {
    // No quality goes along: the encoder runs at its own, unless a window has set that.
    EncodeFromWav(u".mpc"_s, [this](const QString& wav, const QString& output) {
        Parts.mpcencoder1.EncodeFromWav(wav, output);
    });
}

template <class Encode>
void OutputStage::EncodeFromWav(const QString& extension, Encode encode) {
    if (!ThisRun.Busy()) return;
    OutputName output(ThisRun, extension);
    const std::optional<QString> wav = WavInput();
    if (!wav) return;
    const bool isWavWhole = !ThisRun.FileError();
    // Nobody reads the encoders' results; a source is only spared for good by them.
    bool isOurs = true;
    const bool encoded = PassOver([&] {
        output.CreateBy([&](const QString& path) {
            isOurs = !StampOf(path);
            encode(*wav, path);
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
