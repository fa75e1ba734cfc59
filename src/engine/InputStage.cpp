#include "engine/InputStage.h"

#include "engine/ProgressEvents.h"
#include "engine/Run.h"
#include "engine/TagTransfer.h"
#include "library/AudioFileNames.h"
#include "platform/Paths.h"

namespace Sonmira {

namespace {

using Length = std::optional<double>;

Length LengthOfAac(Components& parts, const QString& path) {
    parts.AACDecoder1.SetInputFile(path);
    parts.AACDecoder1.SetOutputFile({});
    if (parts.alacdec1.IsAlac(path) != 1) return std::nullopt;
    double duration = 0;
    qint32 unused = 0;
    parts.alacdec1.TrackInfo(path, duration, unused, unused, unused);
    return duration;
}

}  // namespace

// What a decoder of its own reads, a row each.
struct InputStage::Road {
    InputReader Reader;
    int ExtensionLength;  // the characters of the name that make way for "wav"
    Length (*LengthOf)(Components& parts, const QString& path);
    void (*ReadTag)(InputStage& stage);
    // Whether all of it was decoded into `wav`, which may end up as another.
    bool (*Decode)(InputStage& stage, QString& wav);
    bool LowersKillFlag;
    bool MustBeWhole;  // nobody asks the others: a WAV that is missing shows at the next look-up
};

const InputStage::Road InputStage::Roads[] = {
    // Three letters also for "alac", of which one stays in the name.
    {InputReader::Aac, 3, LengthOfAac,
     [](InputStage& on) { on.Statement([&] { ReadTagOfAac(on.ThisRun, on.View, on.Parts, on.HeldTitle); }); },
     [](InputStage& on, QString& wav) { return on.DecodeAac(wav); }, false, true},
    {InputReader::Flac, 4,
     [](Components& parts, const QString& path) -> Length { return parts.FlacCodec1.TrackLength(path); },
     [](InputStage& on) {
         on.Statement([&] { on.Parts.FlacCodec1.SetInputFile(on.ThisRun.CurrentInput()); });
         on.Statement([&] { ReadTagOfFlac(on.ThisRun, on.Parts, on.HeldTitle); });
     },
     [](InputStage& on, QString& wav) {
         on.Parts.FlacCodec1.SetOutputFile(wav);
         return PassOver([&] { on.Parts.FlacCodec1.DecodeToWav(); });
     },
     false, false},
    {InputReader::Ape, 3,
     [](Components& parts, const QString& path) -> Length { return parts.Ape.GetDurationTrack(path); },
     [](InputStage& on) {
         on.Statement([&] { ReadTagOfBlock(on.ThisRun, on.Parts, on.Rules.UntaggedApeYear); });
     },
     [](InputStage& on, QString& wav) {
         return PassOver([&] {
             on.Parts.Ape.DecompressFile(on.ThisRun.CurrentInput(), wav,
                                         MakeApeDecodingProgress(on.ThisRun, on.View), on.ThisRun.KillFlag());
         });
     },
     true, false},
    {InputReader::Mpc, 3,
     [](Components& parts, const QString& path) -> Length { return parts.mpcdecoder1.TrackLength(path); },
     [](InputStage& on) {
         on.Statement([&] { ReadTagOfBlock(on.ThisRun, on.Parts, on.Rules.UntaggedMpcYear); });
     },
     [](InputStage& on, QString& wav) {
         return PassOver([&] { on.Parts.mpcdecoder1.DecodeToWav(on.ThisRun.CurrentInput(), wav); });
     },
     true, false},
};

const InputStage::Road* InputStage::RoadOf(const QString& path) {
    const InputReader reader = InputFormatOf(path).Reader;
    for (const Road& road : Roads) {
        if (road.Reader == reader) return &road;
    }
    return nullptr;
}

std::optional<double> InputStage::DecodedLength(Components parts, const QString& path) {
    const Road* const road = RoadOf(path);
    return road == nullptr ? std::nullopt : road->LengthOf(parts, path);
}

// The tests follow each other on CurrentInput, which a decoder moves to its WAV: then no later one fits.
bool InputStage::Prepare() {
    const Road* road = RoadOf(ThisRun.CurrentInput());
    if (road != nullptr && road->MustBeWhole && !Take(*road)) return false;
    if (InputFormatOf(ThisRun.CurrentInput()).HasStreamTag) {
        ReadTagOfStream(ThisRun, View, Parts.Tags, Rules, Statement);
    }
    road = RoadOf(ThisRun.CurrentInput());
    return road == nullptr || Take(*road);
}

bool InputStage::Take(const Road& road) {
    ThisRun.KeepSource();
    road.ReadTag(*this);
    if (road.LowersKillFlag) ThisRun.LowerKillFlag();
    QString wav = ThisRun.BeginDecoding(road.ExtensionLength);
    const bool isWhole = road.Decode(*this, wav);
    if (road.MustBeWhole && !isWhole) return false;
    ThisRun.EndDecoding(wav, isWhole);
    return true;
}

bool InputStage::DecodeAac(QString& wav) {
    Statement([&] { Parts.AACDecoder1.SetInputFile(ThisRun.CurrentInput()); });
    Statement([&] { Parts.AACDecoder1.SetOutputFile(wav); });
    qint16 result = 0;
    // A decoder that fails is one that answers no.
    PassOver([&] {
        const bool isAlac = Parts.alacdec1.IsAlac(ThisRun.CurrentInput()) == 1;
        result = isAlac ? Parts.alacdec1.DecodeToWav(ThisRun.CurrentInput(), wav) == 1
                        : Parts.AACDecoder1.DecodeToWav();
    });
    wav = Parts.AACDecoder1.GetOutputFile();
    return result > 0;
}

}  // namespace Sonmira
