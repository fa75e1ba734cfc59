#include "codecs/mp3/LameLibrary.h"

#include "codecs/sound/AudioBlock.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/Handles.h"
#include "platform/Paths.h"

#include <dlfcn.h>
#include <lame/lame.h>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

// Each member is named and typed after the function of <lame/lame.h> that it points to.
struct LameLibrary::Functions {
    CHandle<void, dlclose> Library;
    decltype(&lame_init) Init = nullptr;
    decltype(&lame_close) Close = nullptr;
    decltype(&lame_set_errorf) SetErrorReport = nullptr;
    decltype(&lame_set_msgf) SetMessageReport = nullptr;
    decltype(&lame_set_debugf) SetDebugReport = nullptr;
    decltype(&lame_set_in_samplerate) SetInSampleRate = nullptr;
    decltype(&lame_set_out_samplerate) SetOutSampleRate = nullptr;
    decltype(&lame_set_num_channels) SetChannels = nullptr;
    decltype(&lame_set_mode) SetMode = nullptr;
    decltype(&lame_set_VBR) SetVbr = nullptr;
    decltype(&lame_set_VBR_q) SetVbrQuality = nullptr;
    decltype(&lame_set_VBR_mean_bitrate_kbps) SetVbrMeanBitRate = nullptr;
    decltype(&lame_set_VBR_min_bitrate_kbps) SetVbrLeastBitRate = nullptr;
    decltype(&lame_set_VBR_max_bitrate_kbps) SetVbrMostBitRate = nullptr;
    decltype(&lame_set_VBR_hard_min) SetVbrHardLeast = nullptr;
    decltype(&lame_set_force_ms) SetForceMidSide = nullptr;
    decltype(&lame_set_quality) SetQuality = nullptr;
    decltype(&lame_set_disable_reservoir) SetDisableReservoir = nullptr;
    decltype(&lame_set_allow_diff_short) SetBlockTypesDiffer = nullptr;
    decltype(&lame_set_no_short_blocks) SetNoShortBlocks = nullptr;
    decltype(&lame_set_emphasis) SetEmphasis = nullptr;
    decltype(&lame_set_strict_ISO) SetStrictIso = nullptr;
    decltype(&lame_set_ATHonly) SetAthOnly = nullptr;
    decltype(&lame_set_noATH) SetNoAth = nullptr;
    decltype(&lame_set_ATHshort) SetAthShort = nullptr;
    decltype(&lame_set_lowpassfreq) SetLowpass = nullptr;
    decltype(&lame_set_lowpasswidth) SetLowpassWidth = nullptr;
    decltype(&lame_set_highpassfreq) SetHighpass = nullptr;
    decltype(&lame_set_highpasswidth) SetHighpassWidth = nullptr;
    decltype(&lame_set_error_protection) SetErrorProtection = nullptr;
    decltype(&lame_set_brate) SetBitRate = nullptr;
    decltype(&lame_set_scale) SetScale = nullptr;
    decltype(&lame_set_bWriteVbrTag) SetWriteTag = nullptr;
    decltype(&lame_set_write_id3tag_automatic) SetWriteId3 = nullptr;
    decltype(&lame_init_params) InitParameters = nullptr;
    decltype(&lame_encode_buffer) Encode = nullptr;
    decltype(&lame_encode_buffer_interleaved) EncodeInterleaved = nullptr;
    decltype(&lame_encode_buffer_ieee_float) EncodeFloat = nullptr;
    decltype(&lame_encode_buffer_interleaved_ieee_float) EncodeInterleavedFloat = nullptr;
    decltype(&lame_encode_flush) Flush = nullptr;
    decltype(&lame_get_lametag_frame) TagFrame = nullptr;

    // Whether all functions were found.
    bool Find() {
        return FindOne("lame_init", Init) && FindOne("lame_close", Close) &&
               FindOne("lame_set_errorf", SetErrorReport) && FindOne("lame_set_msgf", SetMessageReport) &&
               FindOne("lame_set_debugf", SetDebugReport) &&
               FindOne("lame_set_in_samplerate", SetInSampleRate) &&
               FindOne("lame_set_out_samplerate", SetOutSampleRate) &&
               FindOne("lame_set_num_channels", SetChannels) && FindOne("lame_set_mode", SetMode) &&
               FindOne("lame_set_VBR", SetVbr) && FindOne("lame_set_VBR_q", SetVbrQuality) &&
               FindOne("lame_set_VBR_mean_bitrate_kbps", SetVbrMeanBitRate) &&
               FindOne("lame_set_VBR_min_bitrate_kbps", SetVbrLeastBitRate) &&
               FindOne("lame_set_VBR_max_bitrate_kbps", SetVbrMostBitRate) &&
               FindOne("lame_set_VBR_hard_min", SetVbrHardLeast) &&
               FindOne("lame_set_force_ms", SetForceMidSide) && FindOne("lame_set_quality", SetQuality) &&
               FindOne("lame_set_disable_reservoir", SetDisableReservoir) &&
               FindOne("lame_set_allow_diff_short", SetBlockTypesDiffer) &&
               FindOne("lame_set_no_short_blocks", SetNoShortBlocks) &&
               FindOne("lame_set_emphasis", SetEmphasis) && FindOne("lame_set_strict_ISO", SetStrictIso) &&
               FindOne("lame_set_ATHonly", SetAthOnly) && FindOne("lame_set_noATH", SetNoAth) &&
               FindOne("lame_set_ATHshort", SetAthShort) && FindOne("lame_set_lowpassfreq", SetLowpass) &&
               FindOne("lame_set_lowpasswidth", SetLowpassWidth) &&
               FindOne("lame_set_highpassfreq", SetHighpass) &&
               FindOne("lame_set_highpasswidth", SetHighpassWidth) &&
               FindOne("lame_set_error_protection", SetErrorProtection) &&
               FindOne("lame_set_brate", SetBitRate) && FindOne("lame_set_scale", SetScale) &&
               FindOne("lame_set_bWriteVbrTag", SetWriteTag) &&
               FindOne("lame_set_write_id3tag_automatic", SetWriteId3) &&
               FindOne("lame_init_params", InitParameters) && FindOne("lame_encode_buffer", Encode) &&
               FindOne("lame_encode_buffer_interleaved", EncodeInterleaved) &&
               FindOne("lame_encode_buffer_ieee_float", EncodeFloat) &&
               FindOne("lame_encode_buffer_interleaved_ieee_float", EncodeInterleavedFloat) &&
               FindOne("lame_encode_flush", Flush) && FindOne("lame_get_lametag_frame", TagFrame);
    }

    template <class Function>
    bool FindOne(const char* name, Function& function) {
        function = reinterpret_cast<Function>(dlsym(Library.get(), name));
        return function != nullptr;
    }
};

namespace {

// The return codes that <lame/lame.h> gives for its encoding functions.
Failure LameFailure(int code) {
    switch (code) {
        case -1:
            return {FailureNumber::Component, u"The MP3 encoder made more data than it announced"_s};
        case -2:
            return {FailureNumber::Component, u"Not enough memory for the MP3 encoder"_s};
        case -3:
            return {FailureNumber::Component, u"The MP3 encoder was not set up"_s};
        case -4:
            return {FailureNumber::Component, u"The MP3 encoder failed in its hearing model"_s};
        default:
            return {FailureNumber::Component, u"The MP3 encoder failed"_s};
    }
}

int Checked(int code) {
    if (code < 0) throw LameFailure(code);
    return code;
}

// At constant rates below 256 kbit the encoder turns the sound down, to keep decoders from clipping. A
// converter must give back the loudness that it was given.
float UndoneGain(int kilobits) {
    if (kilobits >= 256) return 1.0F;
    if (kilobits >= 224) return 1.0F / 0.98F;
    if (kilobits >= 192) return 1.0F / 0.97F;
    return 1.0F / 0.95F;
}

MPEG_mode ModeOf(qint32 stereoMode) {
    switch (stereoMode) {
        case 1:
            return STEREO;
        case 4:
            return DUAL_CHANNEL;
        default:
            return JOINT_STEREO;
    }
}

vbr_mode VbrOf(qint32 method) {
    switch (method) {
        case Mp3Parameters::None:
            return vbr_off;
        case Mp3Parameters::Old:
            return vbr_rh;
        case Mp3Parameters::New:
            return vbr_mt;
        case Mp3Parameters::Mtrh:
            return vbr_mtrh;
        case Mp3Parameters::Abr:
            return vbr_abr;
        default:
            return vbr_default;
    }
}

// The library chooses at 0 and filters nothing at -1.
int FilterOf(qint32 frequency) {
    if (frequency < 0) return 0;
    return frequency == 0 ? -1 : frequency;
}

// What one call may make at most of so many frames, by <lame/lame.h>.
std::size_t RoomFor(std::size_t frames) {
    return frames + frames / 4 + 7200;
}

}  // namespace

LameLibrary::LameLibrary(std::unique_ptr<Functions> functions) : Call(std::move(functions)) {}

LameLibrary::~LameLibrary() = default;

std::shared_ptr<const LameLibrary> LameLibrary::Load() {
    const QByteArray file = ToNative(EncoderSystemFolder() + u"\\libmp3lame.so.0"_s);
    auto functions = std::make_unique<Functions>();
    functions->Library.reset(dlopen(file.constData(), RTLD_NOW | RTLD_LOCAL));
    if (!functions->Library || !functions->Find()) return nullptr;
    return std::shared_ptr<const LameLibrary>(new LameLibrary(std::move(functions)));
}

LameStream::LameStream(std::shared_ptr<const LameLibrary> library, const Mp3Parameters& parameters)
    : Library(std::move(library)), Encoder(Library->Call->Init()), Channels(parameters.ChannelCount) {
    if (Encoder == nullptr) throw LameFailure(-2);
    try {
        SetUp(parameters);
    } catch (const Failure&) {
        Library->Call->Close(Encoder);
        throw;
    }
}

void LameStream::SetUp(const Mp3Parameters& parameters) {
    const LameLibrary::Functions& call = *Library->Call;
    Checked(call.SetErrorReport(Encoder, nullptr));
    Checked(call.SetMessageReport(Encoder, nullptr));
    Checked(call.SetDebugReport(Encoder, nullptr));
    Checked(call.SetInSampleRate(Encoder, parameters.SampleRate));
    // Equal rates keep the encoder's own resampler out, which lets aliases through at -19 dB.
    Checked(call.SetOutSampleRate(Encoder, parameters.SampleRate));
    Checked(call.SetChannels(Encoder, Channels));
    Checked(call.SetMode(Encoder, Channels == 1 ? MONO : ModeOf(parameters.StereoMode)));
    Checked(call.SetForceMidSide(Encoder, Channels == 2 && parameters.StereoMode == 3 ? 1 : 0));
    Checked(call.SetQuality(Encoder, parameters.EncoderQuality));
    SetUpRates(parameters);
    SetUpFilters(parameters);
    Checked(call.SetDisableReservoir(Encoder, parameters.BitReservoir ? 0 : 1));
    // One state of the library stands for both: the later call would undo the earlier one.
    if (parameters.ShortBlocks) {
        Checked(call.SetBlockTypesDiffer(Encoder, parameters.BlockTypesDiffer ? 1 : 0));
    } else {
        Checked(call.SetNoShortBlocks(Encoder, 1));
    }
    constexpr int EmphasisMarks[] = {0, 1, 3};  // 2 is reserved
    Checked(call.SetEmphasis(Encoder, EmphasisMarks[std::clamp<int>(parameters.Emphasis, 0, 2)]));
    if (parameters.StrictIso) Checked(call.SetStrictIso(Encoder, 1));
    if (parameters.AthControl == 1) Checked(call.SetAthOnly(Encoder, 1));
    if (parameters.AthControl == 2) Checked(call.SetNoAth(Encoder, 1));
    if (parameters.AthControl == 3) Checked(call.SetAthShort(Encoder, 1));
    Checked(call.SetErrorProtection(Encoder, parameters.ErrorProtection ? 1 : 0));
    call.SetWriteId3(Encoder, 0);
    Checked(call.InitParameters(Encoder));
}

void LameStream::SetUpRates(const Mp3Parameters& parameters) {
    const LameLibrary::Functions& call = *Library->Call;
    const bool isConstant = parameters.VbrMethod == Mp3Parameters::None;
    Checked(call.SetVbr(Encoder, VbrOf(parameters.VbrMethod)));
    // At a constant rate the same frame says where the sound begins and ends, which nobody wants to miss.
    Checked(call.SetWriteTag(Encoder, isConstant || parameters.WriteVbrHeader ? 1 : 0));
    if (isConstant) {
        const int kilobits = NearestMp3Bitrate(parameters.Bitrate, parameters.SampleRate);
        Checked(call.SetBitRate(Encoder, kilobits));
        Checked(call.SetScale(Encoder, UndoneGain(kilobits)));
        return;
    }
    const auto nearest = [&](int kilobits) { return NearestMp3Bitrate(kilobits, parameters.SampleRate); };
    Checked(call.SetVbrMostBitRate(Encoder, nearest(parameters.MaxVbrBitrate)));
    if (parameters.EnforceMinBitrate) {
        const int least = nearest(std::min(parameters.Bitrate, parameters.MaxVbrBitrate));
        Checked(call.SetVbrLeastBitRate(Encoder, least));
        Checked(call.SetVbrHardLeast(Encoder, 1));
    }
    if (parameters.VbrMethod == Mp3Parameters::Abr) {
        Checked(call.SetVbrMeanBitRate(Encoder, parameters.AbrBitrate));
        // The library turns down by the nearest rate that such frames can have.
        Checked(call.SetScale(Encoder, UndoneGain(nearest(parameters.AbrBitrate))));
    } else {
        Checked(call.SetVbrQuality(Encoder, std::clamp<int>(parameters.VbrQuality, 0, 9)));
    }
}

void LameStream::SetUpFilters(const Mp3Parameters& parameters) {
    const LameLibrary::Functions& call = *Library->Call;
    Checked(call.SetLowpass(Encoder, FilterOf(parameters.LowpassFrequency)));
    if (parameters.LowpassWidth > 0) Checked(call.SetLowpassWidth(Encoder, parameters.LowpassWidth));
    Checked(call.SetHighpass(Encoder, FilterOf(parameters.HighpassFrequency)));
    if (parameters.HighpassWidth > 0) Checked(call.SetHighpassWidth(Encoder, parameters.HighpassWidth));
}

LameStream::~LameStream() {
    Library->Call->Close(Encoder);
}

int LameStream::EncodeSamples(const AudioBlock& block, unsigned char* mp3, int room) {
    const LameLibrary::Functions& call = *Library->Call;
    const int frames = static_cast<int>(block.Bytes.size() / BytesOf(block.Type)) / Channels;
    if (block.Type == SampleType::Int16) {
        // The library takes a pointer to changeable samples and does not change them.
        auto* samples = const_cast<short*>(SamplesOf<short>(block).data());
        if (Channels == 1) return call.Encode(Encoder, samples, samples, frames, mp3, room);
        return call.EncodeInterleaved(Encoder, samples, frames, mp3, room);
    }
    const std::vector<float> samples = LimitedFloatsOf(block);
    if (Channels == 1) return call.EncodeFloat(Encoder, samples.data(), samples.data(), frames, mp3, room);
    return call.EncodeInterleavedFloat(Encoder, samples.data(), frames, mp3, room);
}

void LameStream::Encode(const AudioBlock& block, std::vector<std::byte>& mp3) {
    if (block.IsEmpty()) return;
    const std::size_t start = mp3.size();
    const std::size_t room = RoomFor(block.Bytes.size() / BytesOf(block.Type));
    mp3.resize(start + room);
    auto* target = static_cast<unsigned char*>(static_cast<void*>(mp3.data() + start));
    const int made = Checked(EncodeSamples(block, target, static_cast<int>(room)));
    mp3.resize(start + static_cast<std::size_t>(made));
}

void LameStream::Finish(std::vector<std::byte>& mp3) {
    const std::size_t start = mp3.size();
    mp3.resize(start + RoomFor(0));
    auto* target = static_cast<unsigned char*>(static_cast<void*>(mp3.data() + start));
    const int made = Checked(Library->Call->Flush(Encoder, target, static_cast<int>(RoomFor(0))));
    mp3.resize(start + static_cast<std::size_t>(made));
}

std::vector<std::byte> LameStream::TagFrame() const {
    std::vector<std::byte> frame(Library->Call->TagFrame(Encoder, nullptr, 0));
    auto* target = static_cast<unsigned char*>(static_cast<void*>(frame.data()));
    const std::size_t made = Library->Call->TagFrame(Encoder, target, frame.size());
    if (made != frame.size()) frame.clear();
    return frame;
}

}  // namespace Sonmira
