#include "codecs/mp3/Mp3Writer.h"

#include "platform/Failure.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<const LameLibrary> LoadedLibrary() {
    auto library = LameLibrary::Load();
    if (!library) throw Failure(FailureNumber::Component, u"The MP3 encoder library is missing"_s);
    return library;
}

}  // namespace

Mp3Writer::Mp3Writer(const Mp3Format& format) : Encoder(LoadedLibrary(), format.Parameters) {}

void Mp3Writer::Write(const AudioBlock& block, OutputFile& file) {
    Encoded.clear();
    Encoder.Encode(block, Encoded);
    file.Write(Encoded);
}

void Mp3Writer::Finish(OutputFile& file) {
    Encoded.clear();
    Encoder.Finish(Encoded);
    file.Write(Encoded);
    const std::vector<std::byte> tag = Encoder.TagFrame();
    if (!tag.empty()) file.Patch(0, tag);
}

}  // namespace Sonmira
