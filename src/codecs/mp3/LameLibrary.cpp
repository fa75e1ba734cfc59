#include "codecs/mp3/LameLibrary.h"

#include "codecs/sound/AudioBlock.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Handles.h"
#include "platform/Paths.h"

#include <dlfcn.h>
#include <link.h>

#include <cstring>

namespace Sonmira {

using namespace Qt::StringLiterals;

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

// What one call may make at most of so many frames, by <lame/lame.h>.
std::size_t RoomFor(std::size_t frames) {
    return frames + frames / 4 + 7200;
}

// The loader maps whatever the headers promise and ends the program where a file was cut off, as one is that
// is still being copied. The table of sections is the last thing in a file, so that all before it is there.
bool IsWholeModule(const QByteArray& file) {
    const QByteArray content = ReadFileBytes(file).value_or(QByteArray());
    ElfW(Ehdr) head;
    if (content.size() < qsizetype{sizeof head}) return false;
    std::memcpy(&head, content.constData(), sizeof head);
    const quint64 end = head.e_shoff + quint64{head.e_shnum} * head.e_shentsize;
    return content.startsWith(ELFMAG) && end <= static_cast<quint64>(content.size());
}

}  // namespace

LameLibrary::LameLibrary(void* module, OpenLameEncoding* open) : Module(module), Open(open) {}

LameLibrary::~LameLibrary() {
    dlclose(Module);
}

std::shared_ptr<const LameLibrary> LameLibrary::Load() {
    const QByteArray file = ToNative(WithBackslash(EncoderSystemFolder()) + u"lame_enc.dll"_s);
    if (!IsWholeModule(file)) return nullptr;
    CHandle<void, dlclose> module(dlopen(file.constData(), RTLD_NOW | RTLD_LOCAL));
    if (!module) return nullptr;
    auto* open = reinterpret_cast<OpenLameEncoding*>(dlsym(module.get(), OpenLameEncodingName));
    if (open == nullptr) return nullptr;
    return std::shared_ptr<const LameLibrary>(new LameLibrary(module.release(), open));
}

LameStream::LameStream(std::shared_ptr<const LameLibrary> library, const Mp3Parameters& parameters)
    : Library(std::move(library)), Channels(parameters.ChannelCount) {
    int code = 0;
    Encoder.reset(Library->Open(parameters, code));
    if (!Encoder) throw LameFailure(code);
}

int LameStream::EncodeSamples(const AudioBlock& block, unsigned char* mp3, int room) {
    const int frames = static_cast<int>(block.Bytes.size() / BytesOf(block.Type)) / Channels;
    if (block.Type == SampleType::Int16) {
        return Encoder->EncodeShorts(SamplesOf<short>(block).data(), frames, mp3, room);
    }
    return Encoder->EncodeFloats(LimitedFloatsOf(block).data(), frames, mp3, room);
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
    const int made = Checked(Encoder->Finish(target, static_cast<int>(RoomFor(0))));
    mp3.resize(start + static_cast<std::size_t>(made));
}

std::vector<std::byte> LameStream::TagFrame() const {
    std::vector<std::byte> frame(Encoder->TagFrame(nullptr, 0));
    auto* target = static_cast<unsigned char*>(static_cast<void*>(frame.data()));
    const std::size_t made = Encoder->TagFrame(target, frame.size());
    if (made != frame.size()) frame.clear();
    return frame;
}

}  // namespace Sonmira
