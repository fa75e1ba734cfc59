#pragma once

#include "codecs/mp3/LameEncoding.h"
#include "codecs/mp3/Mp3Parameters.h"
#include "codecs/sound/AudioBlock.h"

#include <memory>

namespace Sonmira {

// The MP3 encoder library of the system folder, loaded at run time. It is a gate of its own: without the
// library everything else works, so nothing of it is ever linked. It is our module over LAME (codecs/lame).
class LameLibrary {
public:
    // The library, or null when the system folder holds none or one that cannot be loaded: a file of another
    // kind or not yet whole, a module of another version, one whose own libraries are gone.
    static std::shared_ptr<const LameLibrary> Load();

    ~LameLibrary();
    LameLibrary(const LameLibrary&) = delete;
    LameLibrary& operator=(const LameLibrary&) = delete;

private:
    friend class LameStream;
    LameLibrary(void* module, OpenLameEncoding* open);

    void* Module;
    OpenLameEncoding* Open;
};

// One encoder for one stream, with the tag that tells players where the sound begins and ends. What the
// encoder makes is MPEG frames, in whole bytes.
class LameStream {
public:
    LameStream(std::shared_ptr<const LameLibrary> library, const Mp3Parameters& parameters);

    // Both append to `mp3`. The block holds whole frames of the format; 16-bit samples are taken as they
    // are, others as floats that are limited to full scale.
    void Encode(const AudioBlock& block, std::vector<std::byte>& mp3);
    void Finish(std::vector<std::byte>& mp3);
    // After Finish: the frame that must stand in place of the first one, of equal size; empty where the
    // parameters want none.
    std::vector<std::byte> TagFrame() const;

private:
    int EncodeSamples(const AudioBlock& block, unsigned char* mp3, int room);

    std::shared_ptr<const LameLibrary> Library;
    std::unique_ptr<LameEncoding> Encoder;  // goes before the library, whose code it is
    int Channels;
};

}  // namespace Sonmira
