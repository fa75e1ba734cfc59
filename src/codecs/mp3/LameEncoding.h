#pragma once

#include "codecs/mp3/Mp3Parameters.h"

#include <cstddef>

namespace Sonmira {

// What passes between the program and the module that drives LAME. The module knows nothing else of the
// program and throws nothing at it: failures are codes below zero, those of <lame/lame.h>.
class LameEncoding {
public:
    LameEncoding() = default;
    virtual ~LameEncoding() = default;
    LameEncoding(const LameEncoding&) = delete;
    LameEncoding& operator=(const LameEncoding&) = delete;

    // Frames of interleaved samples, 16 bits or floats of full scale 1.0. What is ready goes to `mp3`, which
    // has room for so many bytes. Returns their count.
    virtual int EncodeShorts(const short* samples, int frames, unsigned char* mp3, int room) noexcept = 0;
    virtual int EncodeFloats(const float* samples, int frames, unsigned char* mp3, int room) noexcept = 0;
    // The rest of the frames.
    virtual int Finish(unsigned char* mp3, int room) noexcept = 0;
    // After Finish: the size of the frame with the tag, which is written where there is room for it.
    virtual std::size_t TagFrame(unsigned char* frame, std::size_t room) const noexcept = 0;
};

}  // namespace Sonmira

// The one function of the module: hands out a new encoder, which the caller deletes, or null and a code. The
// number in its name changes with anything above or in the parameters, so that a module of another version
// of the program is not taken for this one's.
extern "C" Sonmira::LameEncoding* SonmiraLameEncoding1(const Sonmira::Mp3Parameters& parameters,
                                                       int& code) noexcept;

namespace Sonmira {

using OpenLameEncoding = decltype(SonmiraLameEncoding1);
inline constexpr const char* OpenLameEncodingName = "SonmiraLameEncoding1";

}  // namespace Sonmira
