#include "engine/InputStage.h"

#include "engine/ProgressEvents.h"
#include "engine/RunState.h"
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
bool InputStage::Prepare(TempWav& temp, QString& heldTitle) {
    if (EndsInOneOf(Run.CurrentInput, {u"AAC", u"ALAC"}) && !PrepareAac(temp, heldTitle)) return false;
    if (!EndsInOneOf(Run.CurrentInput, {u"AAC", u"WAV", u"AVI", u"APE", u"APL", u"FLAC"})) {
        ReadTagOfStream(Run, View, Parts.Tags, Rules, Statement);
    }
    if (EndsInUpper(Run.CurrentInput, u"FLAC")) PrepareFlac(temp, heldTitle);
    if (EndsInOneOf(Run.CurrentInput, {u"APE", u"APL"})) PrepareApe(temp);
    if (EndsInOneOf(Run.CurrentInput, {u"MPC", u"MP+"})) PrepareMpc(temp);
    return true;
}

void InputStage::BeginDecoding(TempWav& temp, int extensionLength) {
    temp.Path = FreeTempWavPathFor(Run.CurrentInput, extensionLength);
    Run.Busy = true;
}

void InputStage::TakeTempWav(TempWav& temp) {
    temp.Used = true;
    Run.CurrentInput = temp.Path;
}

bool InputStage::PrepareAac(TempWav& temp, QString& heldTitle) {
    Run.RealFileName = Run.CurrentInput;
    Run.EncodageParticulier = true;
    Statement([&] { ReadTagOfAac(Run, View, Parts, heldTitle); });
    // Three letters also for "alac", of which one stays in the name.
    BeginDecoding(temp, ShortExtension);
    Statement([&] { Parts.AACDecoder1.SetInputFile(Run.CurrentInput); });
    Statement([&] { Parts.AACDecoder1.SetOutputFile(temp.Path); });
    qint16 result = 0;
    // A decoder that fails is one that answers no.
    PassOver([&] {
        const bool isAlac = Parts.alacdec1.IsAlac(Run.CurrentInput) == 1;
        result = isAlac ? Parts.alacdec1.DecodeToWav(Run.CurrentInput, temp.Path) == 1
                        : Parts.AACDecoder1.DecodeToWav();
    });
    if (result <= 0) return false;
    TakeTempWav(temp);
    Run.CurrentInput = Parts.AACDecoder1.GetOutputFile();
    return true;
}

void InputStage::PrepareFlac(TempWav& temp, const QString& heldTitle) {
    Run.RealFileName = Run.CurrentInput;
    Run.EncodageParticulier = true;
    Statement([&] { Parts.FlacCodec1.SetInputFile(Run.CurrentInput); });
    Statement([&] { ReadTagOfFlac(Run, Parts, heldTitle); });
    BeginDecoding(temp, FlacExtension);
    Parts.FlacCodec1.SetOutputFile(temp.Path);
    // Nobody reads the results of these three decoders: a WAV that is missing shows at the next look-up.
    Run.InputIsWhole = PassOver([&] { Parts.FlacCodec1.DecodeToWav(); });
    TakeTempWav(temp);
}

void InputStage::PrepareApe(TempWav& temp) {
    Run.RealFileName = Run.CurrentInput;
    Run.EncodageParticulier = true;
    Statement([&] { ReadTagOfBlock(Run, Parts, Rules.UntaggedApeYear); });
    Run.KillFlag = 0;
    BeginDecoding(temp, ShortExtension);
    Run.InputIsWhole = PassOver([&] {
        Parts.Ape.DecompressFile(Run.CurrentInput, temp.Path, MakeApeDecodingProgress(Run, View),
                                 Run.KillFlag);
    });
    TakeTempWav(temp);
}

void InputStage::PrepareMpc(TempWav& temp) {
    Run.RealFileName = Run.CurrentInput;
    Run.EncodageParticulier = true;
    Statement([&] { ReadTagOfBlock(Run, Parts, Rules.UntaggedMpcYear); });
    Run.KillFlag = 0;
    BeginDecoding(temp, ShortExtension);
    Run.InputIsWhole = PassOver([&] { Parts.mpcdecoder1.DecodeToWav(Run.CurrentInput, temp.Path); });
    TakeTempWav(temp);
}

}  // namespace Sonmira
