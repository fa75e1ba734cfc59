#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

// What an MP3 file is made of, read byte by byte: ISO 11172-3 and 13818-3 for the frames, the tag of the
// encoder after what its first frame is known to hold.
namespace Sonmira {

struct Mp3Granule {
    int BlockType = 0;  // 0 long, 1 start, 2 short, 3 stop
    int PartLength = 0;
};

struct Mp3Frame {
    int Version = 0;  // 1, 2, or 25 for the extension to the lowest rates
    int Rate = 0;
    int Kilobits = 0;
    bool HasChecksum = false;
    int Mode = 0;  // 0 stereo, 1 joint, 2 dual, 3 mono
    int ModeExtension = 0;
    int Emphasis = 0;
    int ReservoirBytes = 0;            // how far back its data begin
    std::vector<Mp3Granule> Granules;  // those of channel 0 and 1 in turn
    bool ChecksumFits = true;
};

struct Mp3Tag {
    QByteArray Name;  // "Xing" or "Info"
    int Method = 0;   // 1 constant, 2 average, 3 old, 4 newest, 5 new
    int Lowpass = 0;  // hundreds of Hz
    int AthType = 0;
    int Kilobits = 0;  // constant, average or least
    int VbrQuality = 0;
    int EncoderQuality = 0;
    int Frames = 0;
    bool IsUnwise = false;  // settings that the encoder's makers advise against
};

struct Mp3File {
    std::vector<Mp3Frame> Frames;  // of sound: without that of the tag
    std::optional<Mp3Tag> Tag;
    qsizetype Rest = 0;  // bytes that are no frame

    double MeanKilobits() const;
    int LeastKilobits() const;
    int MostKilobits() const;
    // How many granules of channel 0 or 1 are of short blocks.
    int ShortBlocks(int channel) const;
    int MostReservoirBytes() const;
};

Mp3File Mp3FileOf(const QByteArray& bytes);

}  // namespace Sonmira
