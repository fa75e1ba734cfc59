#include "codecs/SoundWriter.h"

#include "codecs/Mp3Writer.h"
#include "codecs/VorbisWriter.h"
#include "codecs/WavWriter.h"
#include "codecs/WmaWriter.h"

namespace Sonmira {

namespace {

struct WriterMaker {
    std::unique_ptr<SoundWriter> operator()(const PcmFormat& format) const {
        return std::make_unique<WavWriter>(format);
    }
    std::unique_ptr<SoundWriter> operator()(const Mp3Format& format) const {
        return std::make_unique<Mp3Writer>(format);
    }
    std::unique_ptr<SoundWriter> operator()(const VorbisFormat& format) const {
        return std::make_unique<VorbisWriter>(format);
    }
    std::unique_ptr<SoundWriter> operator()(const WmaFormat& format) const {
        return std::make_unique<WmaWriter>(format);
    }
};

}  // namespace

std::unique_ptr<SoundWriter> MakeSoundWriter(const OutputFormat& format) {
    return std::visit(WriterMaker(), format);
}

}  // namespace Sonmira
