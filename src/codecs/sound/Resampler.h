#pragma once

#include <QtGlobal>

#include <memory>
#include <span>
#include <vector>

namespace Sonmira {

// How far the conversion's own errors lie below full scale.
enum class ResamplerPrecision {
    Bits20,  // -120 dB: for everything that ends in 16 bits or in a lossy format
    Bits28,  // as good as the 32-bit samples between the stages can be
};

// Converts interleaved frames of one rate to another by the soxr library, without delay: frame 0 stays
// frame 0, and n frames become exactly n * to / from of them, rounded to the nearest whole number.
class Resampler {
public:
    // Rates in Hz, 1 or more. Fails when they are more than a thousand times apart.
    Resampler(int from, int to, int channels, ResamplerPrecision precision);
    ~Resampler();
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    // Takes all of `frames` and appends what is ready.
    void Convert(std::span<const float> frames, std::vector<float>& converted);
    // Ends the stream and appends the rest.
    void Finish(std::vector<float>& converted);

private:
    class Library;
    std::unique_ptr<Library> Handle;
    qint64 From;
    qint64 To;
    std::size_t Channels;
    qint64 FramesIn = 0;
    qint64 FramesOut = 0;
};

}  // namespace Sonmira
