#include "engine/InputStage.h"

#include "engine/ProgressEvents.h"
#include "engine/Run.h"
#include "engine/TagReading.h"
#include "platform/Paths.h"

namespace Sonmira {

namespace {

bool EndsInOneOf(const QString& path, std::initializer_list<QStringView> endings) {
    return std::any_of(endings.begin(), endings.end(),
                       [&](QStringView ending) { return EndsInUpper(path, ending); });
}

constexpr int ShortExtension = 3;
constexpr int FlacExtension = 4;

}  // namespace

// The tests follow each other on CurrentInput, which a decoder moves to its WAV: then no later one fits.
bool InputStage::Prepare(QString& heldTitle) {
    if (EndsInOneOf(ThisRun.CurrentInput(), {u"AAC", u"ALAC"}) && !PrepareAac(heldTitle)) return false;
    if (!EndsInOneOf(ThisRun.CurrentInput(), {u"AAC", u"WAV", u"AVI", u"APE", u"APL", u"FLAC"})) {
        ReadTagOfStream(ThisRun, View, Parts.Tags, Rules, Statement);
    }
    if (EndsInUpper(ThisRun.CurrentInput(), u"FLAC")) PrepareFlac(heldTitle);
    if (EndsInOneOf(ThisRun.CurrentInput(), {u"APE", u"APL"})) PrepareApe();
    if (EndsInOneOf(ThisRun.CurrentInput(), {u"MPC", u"MP+"})) PrepareMpc();
    return true;
}

bool InputStage::PrepareAac(QString& heldTitle) {
    ThisRun.KeepSource();
    Statement([&] { ReadTagOfAac(ThisRun, View, Parts, heldTitle); });
    // Three letters also for "alac", of which one stays in the name.
    const QString wav = ThisRun.BeginDecoding(ShortExtension);
    Statement([&] { Parts.AACDecoder1.SetInputFile(ThisRun.CurrentInput()); });
    Statement([&] { Parts.AACDecoder1.SetOutputFile(wav); });
    qint16 result = 0;
    // A decoder that fails is one that answers no.
    PassOver([&] {
        const bool isAlac = Parts.alacdec1.IsAlac(ThisRun.CurrentInput()) == 1;
        result = isAlac ? Parts.alacdec1.DecodeToWav(ThisRun.CurrentInput(), wav) == 1
                        : Parts.AACDecoder1.DecodeToWav();
    });
    if (result <= 0) return false;
    ThisRun.EndDecoding(Parts.AACDecoder1.GetOutputFile(), true);
    return true;
}

void InputStage::PrepareFlac(const QString& heldTitle) {
    ThisRun.KeepSource();
    Statement([&] { Parts.FlacCodec1.SetInputFile(ThisRun.CurrentInput()); });
    Statement([&] { ReadTagOfFlac(ThisRun, Parts, heldTitle); });
    const QString wav = ThisRun.BeginDecoding(FlacExtension);
    Parts.FlacCodec1.SetOutputFile(wav);
    // Nobody reads the results of these three decoders: a WAV that is missing shows at the next look-up.
    const bool isWhole = PassOver([&] { Parts.FlacCodec1.DecodeToWav(); });
    ThisRun.EndDecoding(wav, isWhole);
}

void InputStage::PrepareApe() {
    ThisRun.KeepSource();
    Statement([&] { ReadTagOfBlock(ThisRun, Parts, Rules.UntaggedApeYear); });
    ThisRun.LowerKillFlag();
    const QString wav = ThisRun.BeginDecoding(ShortExtension);
    const bool isWhole = PassOver([&] {
        Parts.Ape.DecompressFile(ThisRun.CurrentInput(), wav, MakeApeDecodingProgress(ThisRun, View),
                                 ThisRun.KillFlag());
    });
    ThisRun.EndDecoding(wav, isWhole);
}

void InputStage::PrepareMpc() {
    ThisRun.KeepSource();
    Statement([&] { ReadTagOfBlock(ThisRun, Parts, Rules.UntaggedMpcYear); });
    ThisRun.LowerKillFlag();
    const QString wav = ThisRun.BeginDecoding(ShortExtension);
    const bool isWhole = PassOver([&] { Parts.mpcdecoder1.DecodeToWav(ThisRun.CurrentInput(), wav); });
    ThisRun.EndDecoding(wav, isWhole);
}

}  // namespace Sonmira
