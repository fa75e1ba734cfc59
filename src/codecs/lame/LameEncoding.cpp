// The module that drives LAME: the only thing that is linked to its library.
#include "codecs/mp3/LameEncoding.h"

#include "platform/Handles.h"

#include <lame/lame.h>

#include <algorithm>
#include <memory>
#include <new>

namespace Sonmira {

namespace {

// Never leaves the module.
struct LameFailure {
    int Code;
};

void Checked(int code) {
    if (code < 0) throw LameFailure{code};
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

class Lame final : public LameEncoding {
public:
    explicit Lame(const Mp3Parameters& parameters) : Encoder(lame_init()), Channels(parameters.ChannelCount) {
        constexpr int NoMemory = -2;
        if (!Encoder) throw LameFailure{NoMemory};
        SetUp(parameters);
    }

    int EncodeShorts(const short* samples, int frames, unsigned char* mp3, int room) noexcept override {
        // The library takes a pointer to changeable samples and does not change them.
        auto* taken = const_cast<short*>(samples);
        if (Channels == 1) return lame_encode_buffer(Encoder.get(), taken, taken, frames, mp3, room);
        return lame_encode_buffer_interleaved(Encoder.get(), taken, frames, mp3, room);
    }
    int EncodeFloats(const float* samples, int frames, unsigned char* mp3, int room) noexcept override {
        lame_t encoder = Encoder.get();
        if (Channels == 1) return lame_encode_buffer_ieee_float(encoder, samples, samples, frames, mp3, room);
        return lame_encode_buffer_interleaved_ieee_float(encoder, samples, frames, mp3, room);
    }
    int Finish(unsigned char* mp3, int room) noexcept override {
        return lame_encode_flush(Encoder.get(), mp3, room);
    }
    std::size_t TagFrame(unsigned char* frame, std::size_t room) const noexcept override {
        return lame_get_lametag_frame(Encoder.get(), frame, room);
    }

private:
    void SetUp(const Mp3Parameters& parameters);
    void SetUpRates(const Mp3Parameters& parameters);
    void SetUpFilters(const Mp3Parameters& parameters);

    CHandle<lame_global_flags, lame_close> Encoder;
    int Channels;
};

void Lame::SetUp(const Mp3Parameters& parameters) {
    Checked(lame_set_errorf(Encoder.get(), nullptr));
    Checked(lame_set_msgf(Encoder.get(), nullptr));
    Checked(lame_set_debugf(Encoder.get(), nullptr));
    Checked(lame_set_in_samplerate(Encoder.get(), parameters.SampleRate));
    // Equal rates keep the encoder's own resampler out, which lets aliases through at -19 dB.
    Checked(lame_set_out_samplerate(Encoder.get(), parameters.SampleRate));
    Checked(lame_set_num_channels(Encoder.get(), Channels));
    Checked(lame_set_mode(Encoder.get(), Channels == 1 ? MONO : ModeOf(parameters.StereoMode)));
    Checked(lame_set_force_ms(Encoder.get(), Channels == 2 && parameters.StereoMode == 3 ? 1 : 0));
    Checked(lame_set_quality(Encoder.get(), parameters.EncoderQuality));
    SetUpRates(parameters);
    SetUpFilters(parameters);
    Checked(lame_set_disable_reservoir(Encoder.get(), parameters.BitReservoir ? 0 : 1));
    // One state of the library stands for both: the later call would undo the earlier one.
    if (parameters.ShortBlocks) {
        Checked(lame_set_allow_diff_short(Encoder.get(), parameters.BlockTypesDiffer ? 1 : 0));
    } else {
        Checked(lame_set_no_short_blocks(Encoder.get(), 1));
    }
    constexpr int EmphasisMarks[] = {0, 1, 3};  // 2 is reserved
    Checked(lame_set_emphasis(Encoder.get(), EmphasisMarks[std::clamp<int>(parameters.Emphasis, 0, 2)]));
    if (parameters.StrictIso) Checked(lame_set_strict_ISO(Encoder.get(), 1));
    if (parameters.AthControl == 1) Checked(lame_set_ATHonly(Encoder.get(), 1));
    if (parameters.AthControl == 2) Checked(lame_set_noATH(Encoder.get(), 1));
    if (parameters.AthControl == 3) Checked(lame_set_ATHshort(Encoder.get(), 1));
    Checked(lame_set_error_protection(Encoder.get(), parameters.ErrorProtection ? 1 : 0));
    lame_set_write_id3tag_automatic(Encoder.get(), 0);
    Checked(lame_init_params(Encoder.get()));
}

void Lame::SetUpRates(const Mp3Parameters& parameters) {
    const bool isConstant = parameters.VbrMethod == Mp3Parameters::None;
    Checked(lame_set_VBR(Encoder.get(), VbrOf(parameters.VbrMethod)));
    // At a constant rate the same frame says where the sound begins and ends, which nobody wants to miss.
    Checked(lame_set_bWriteVbrTag(Encoder.get(), isConstant || parameters.WriteVbrHeader ? 1 : 0));
    if (isConstant) {
        const int kilobits = NearestMp3Bitrate(parameters.Bitrate, parameters.SampleRate);
        Checked(lame_set_brate(Encoder.get(), kilobits));
        Checked(lame_set_scale(Encoder.get(), UndoneGain(kilobits)));
        return;
    }
    const auto nearest = [&](int kilobits) { return NearestMp3Bitrate(kilobits, parameters.SampleRate); };
    Checked(lame_set_VBR_max_bitrate_kbps(Encoder.get(), nearest(parameters.MaxVbrBitrate)));
    if (parameters.EnforceMinBitrate) {
        const int least = nearest(std::min(parameters.Bitrate, parameters.MaxVbrBitrate));
        Checked(lame_set_VBR_min_bitrate_kbps(Encoder.get(), least));
        Checked(lame_set_VBR_hard_min(Encoder.get(), 1));
    }
    if (parameters.VbrMethod == Mp3Parameters::Abr) {
        Checked(lame_set_VBR_mean_bitrate_kbps(Encoder.get(), parameters.AbrBitrate));
        // The library turns down by the nearest rate that such frames can have.
        Checked(lame_set_scale(Encoder.get(), UndoneGain(nearest(parameters.AbrBitrate))));
    } else {
        Checked(lame_set_VBR_q(Encoder.get(), std::clamp<int>(parameters.VbrQuality, 0, 9)));
    }
}

void Lame::SetUpFilters(const Mp3Parameters& parameters) {
    Checked(lame_set_lowpassfreq(Encoder.get(), FilterOf(parameters.LowpassFrequency)));
    if (parameters.LowpassWidth > 0) Checked(lame_set_lowpasswidth(Encoder.get(), parameters.LowpassWidth));
    Checked(lame_set_highpassfreq(Encoder.get(), FilterOf(parameters.HighpassFrequency)));
    if (parameters.HighpassWidth > 0)
        Checked(lame_set_highpasswidth(Encoder.get(), parameters.HighpassWidth));
}

}  // namespace

}  // namespace Sonmira

extern "C" [[gnu::visibility("default")]] Sonmira::LameEncoding* SonmiraLameEncoding1(
    const Sonmira::Mp3Parameters& parameters, int& code) noexcept {
    constexpr int NoMemory = -2;
    try {
        return std::make_unique<Sonmira::Lame>(parameters).release();
    } catch (const Sonmira::LameFailure& failure) {
        code = failure.Code;
    } catch (const std::bad_alloc&) {
        code = NoMemory;
    }
    return nullptr;
}
