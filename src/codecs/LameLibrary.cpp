#include "codecs/LameLibrary.h"

#include "codecs/CHandle.h"
#include "codecs/Samples.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/NativePath.h"

#include <dlfcn.h>
#include <lame/lame.h>

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
               FindOne("lame_set_VBR", SetVbr) && FindOne("lame_set_brate", SetBitRate) &&
               FindOne("lame_set_scale", SetScale) && FindOne("lame_set_bWriteVbrTag", SetWriteTag) &&
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

LameStream::LameStream(std::shared_ptr<const LameLibrary> library, const Mp3Format& format)
    : Library(std::move(library)), Encoder(Library->Call->Init()), Channels(format.Channels) {
    if (Encoder == nullptr) throw LameFailure(-2);
    try {
        const LameLibrary::Functions& call = *Library->Call;
        Checked(call.SetErrorReport(Encoder, nullptr));
        Checked(call.SetMessageReport(Encoder, nullptr));
        Checked(call.SetDebugReport(Encoder, nullptr));
        Checked(call.SetInSampleRate(Encoder, format.Frequency));
        // Equal rates keep the encoder's own resampler out, which lets aliases through at -19 dB.
        Checked(call.SetOutSampleRate(Encoder, format.Frequency));
        Checked(call.SetChannels(Encoder, format.Channels));
        Checked(call.SetMode(Encoder, format.Channels == 1 ? MONO : JOINT_STEREO));
        Checked(call.SetVbr(Encoder, vbr_off));
        Checked(call.SetBitRate(Encoder, format.Kilobits));
        Checked(call.SetScale(Encoder, UndoneGain(format.Kilobits)));
        Checked(call.SetWriteTag(Encoder, 1));
        call.SetWriteId3(Encoder, 0);
        Checked(call.InitParameters(Encoder));
    } catch (const Failure&) {
        Library->Call->Close(Encoder);
        throw;
    }
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
