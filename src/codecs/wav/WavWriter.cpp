#include "codecs/wav/WavWriter.h"

#include "codecs/wav/WavHeader.h"
#include "platform/Failure.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

WavWriter::WavWriter(const PcmFormat& format, Beyond4Gb beyond, qint64 most)
    : Format(format), Beyond(beyond), Most(most), Packer(format.Bits) {}

void WavWriter::Claim(qint64 frames) {
    const qint64 most = MostWavData / FrameSize();
    Claimed = WavSizeBeyond(0, (frames > 0 ? std::min(frames, most) : most) * FrameSize());
}

void WavWriter::Write(const AudioBlock& block, OutputFile& file) {
    if (file.Size() == 0) file.Write(WavHeader(Format, Claimed));
    Packed.clear();
    Packer.Pack(block, Packed);
    const qint64 size = file.Size() - WavHeaderSize + static_cast<qint64>(Packed.size());
    if (size > Most && Beyond == Beyond4Gb::Fails) {
        throw Failure(FailureNumber::Component, u"A WAV file cannot grow beyond 4 GB"_s);
    }
    file.Write(Packed);
}

void WavWriter::Finish(OutputFile& file) {
    if (file.Size() == 0) file.Write(WavHeader(Format, 0));
    const qint64 dataSize = file.Size() - WavHeaderSize;
    if (Keeps) return file.Patch(0, WavHeader(Format, WavSizeBeyond(dataSize, Claimed)));
    if (dataSize % 2 != 0) file.Write(std::vector<std::byte>(1));
    file.Patch(0, WavHeader(Format, dataSize > Most ? UnknownWavSize : dataSize));
}

}  // namespace Sonmira
