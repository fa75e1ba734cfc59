#pragma once

#include "codecs/WavDecoding.h"

#include <QString>

#include <functional>

namespace Sonmira {

// What the decoders have in common: they block on the calling thread, take inner paths, make the WAV before
// they decode and leave what was decoded in it. Their operations differ in little but in what they answer,
// and so do their Progress events, which are called many times a second.
class WavDecoder {
public:
    virtual ~WavDecoder() = default;

    // From inside Progress: ends the decoding after the block at hand. Else without effect.
    virtual void StopCodec() { IsStopped = true; }

protected:
    // Decodes by `decode` (DecodeIntoWav or DecodeIntoWavOrPart), telling frames done and in all to `tell`.
    template <class Decode, class Tell>
    void DecodeBy(const Decode& decode, const QString& input, const QString& output, const SoundOpening& open,
                  const Tell& tell) {
        IsStopped = false;
        decode(input, output, open, [&](qint64 done, qint64 total) {
            tell(done, total);
            return !IsStopped;
        });
    }

private:
    bool IsStopped = false;
};

// Decodes AAC into a WAV file: ADTS and LATM streams, and MP4 and its relatives, of the low complexity and
// the high efficiency kinds.
class AacDecoder : public WavDecoder {
public:
    // Names the file to decode and makes sure that it can be: fails with a text for people when it is
    // missing, damaged or no sound. No file is named then.
    virtual void SetInputFile(const QString& path);
    // Names the WAV to write; nothing is created yet. The empty text takes the name away.
    virtual void SetOutputFile(const QString& path);
    virtual QString GetOutputFile() const { return Output; }

    // Decodes into 16 bits at the file's own rate, one or two channels. Returns 1, also when it was stopped,
    // which leaves the WAV with what was decoded: who stopped it knows, and whoever reads an answer of 0
    // takes the file for one that needs no output. So a file that is damaged further on, or a disk that takes
    // no more, shows in the WAV alone, which counts more sound than it has. Fails when either file is not
    // named or not usable.
    virtual qint16 DecodeToWav();

    std::function<void(qint16 percent)> Progress;  // 0 to 100

private:
    QString Input;
    QString Output;
};

// Decodes Apple Lossless into a WAV file, bit for bit: MP4 and its relatives, and Core Audio files.
class AlacDecoder : public WavDecoder {
public:
    // 1 when the file's sound is Apple Lossless, else 0, also for a file that cannot be read.
    virtual qint16 IsAlac(const QString& path);

    // Decodes the whole file; there is no way to stop it. Returns 1, also where not all of it
    // could be decoded or written: the WAV then counts more sound than it has, and whoever takes a failure
    // for an answer of 0 would make no output of it. Fails when either file is not usable.
    virtual qint16 DecodeToWav(const QString& path, const QString& outputPath);
    // The decoding runs to its end.
    void StopCodec() override {}

    // Of any file that can be read: whole seconds (cut), frames a second, channels, bits a sample. Returns 1;
    // 0, with all of them 0, for a file that cannot be read.
    virtual qint16 TrackInfo(const QString& path, double& duration, qint32& rate, qint32& channels,
                             qint32& bits);

    std::function<void(qint32 done, qint32 total)> Progress;
};

// Decodes FLAC, plain or in Ogg, into a WAV file, bit for bit, and tells its comments.
class FlacDecoder : public WavDecoder {
public:
    // Opens the file and reads its comments. Fails with a text for people when it cannot be read; no file is
    // named then and the comments are empty.
    virtual void SetInputFile(const QString& path);

    // The comments of the file, empty where it has none: TITLE, ARTIST, ALBUM, DATE or YEAR, COMMENT or
    // DESCRIPTION, GENRE. Several of one name stand behind each other with ";" between.
    virtual QString Title() const { return Comments.Title; }
    virtual QString Artist() const { return Comments.Artist; }
    virtual QString Album() const { return Comments.Album; }
    virtual QString Year() const { return Comments.Year; }
    virtual QString Comment() const { return Comments.Comment; }
    virtual QString Genre() const { return Comments.Genre; }

    // Names the WAV to write; nothing is created yet.
    virtual void SetOutputFile(const QString& path);
    // Decodes at the file's own rate and width (8, 16, 24 or 32 bits); more channels than two are mixed to
    // two. Fails when either file is not named or not usable, and at the end when frames were damaged; the
    // WAV then holds what was decoded, as it does after a stop.
    virtual void DecodeToWav();

    // Whole seconds, cut; 0 for a file that cannot be read.
    virtual qint32 TrackLength(const QString& path);

    std::function<void(qint16 percent)> Progress;  // 0 to 100

private:
    struct Texts {
        QString Title;
        QString Artist;
        QString Album;
        QString Year;
        QString Comment;
        QString Genre;
    };

    QString Input;
    QString Output;
    Texts Comments;
};

// Decodes Musepack of stream versions 7 and 8 into a WAV file.
class MpcDecoder : public WavDecoder {
public:
    // Decodes into 16 bits at the file's own rate and channel count. Fails when either file is not usable,
    // and at the end when the file gave less than its header counts; the WAV then holds what was decoded, as
    // it does after a stop.
    virtual void DecodeToWav(const QString& path, const QString& outputPath);

    // Whole seconds, cut; 0 for a file that cannot be read.
    virtual qint32 TrackLength(const QString& path);

    std::function<void(qint32 total, qint32 done)> Progress;
};

}  // namespace Sonmira
