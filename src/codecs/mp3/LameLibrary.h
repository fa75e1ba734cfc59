#pragma once

#include "codecs/mp3/Mp3Parameters.h"
#include "codecs/sound/AudioBlock.h"

#include <memory>

struct lame_global_struct;

namespace Sonmira {

// The MP3 encoder library of the system folder, loaded at run time. It is a gate of its own: without the
// library everything else works, so nothing here is ever linked.
class LameLibrary {
public:
    // The library, or null when the system folder holds none or it lacks a function that is needed.
    static std::shared_ptr<const LameLibrary> Load();

    ~LameLibrary();
    LameLibrary(const LameLibrary&) = delete;
    LameLibrary& operator=(const LameLibrary&) = delete;

private:
    friend class LameStream;
    struct Functions;
    explicit LameLibrary(std::unique_ptr<Functions> functions);
    std::unique_ptr<Functions> Call;
};

// One encoder for one stream, with the tag that tells players where the sound begins and ends. What the
// encoder makes is MPEG frames, in whole bytes.
class LameStream {
public:
    LameStream(std::shared_ptr<const LameLibrary> library, const Mp3Parameters& parameters);
    ~LameStream();
    LameStream(const LameStream&) = delete;
    LameStream& operator=(const LameStream&) = delete;

    // Both append to `mp3`. The block holds whole frames of the format; 16-bit samples are taken as they
    // are, others as floats that are limited to full scale.
    void Encode(const AudioBlock& block, std::vector<std::byte>& mp3);
    void Finish(std::vector<std::byte>& mp3);
    // After Finish: the frame that must stand in place of the first one, of equal size; empty where the
    // parameters want none.
    std::vector<std::byte> TagFrame() const;

private:
    void SetUp(const Mp3Parameters& parameters);
    void SetUpRates(const Mp3Parameters& parameters);
    void SetUpFilters(const Mp3Parameters& parameters);
    int EncodeSamples(const AudioBlock& block, unsigned char* mp3, int room);

    std::shared_ptr<const LameLibrary> Library;
    lame_global_struct* Encoder;
    int Channels;
};

}  // namespace Sonmira
