#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Decodes FLAC, plain or in Ogg, into a WAV file, bit for bit, and tells its comments. Everything blocks on
// the calling thread; paths are inner ones.
class FlacDecoder {
public:
    virtual ~FlacDecoder() = default;

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
    // From inside Progress: ends the decoding after the block at hand. Else without effect.
    virtual void StopCodec() { Stopped = true; }

    // Whole seconds, cut; 0 for a file that cannot be read.
    virtual qint32 TrackLength(const QString& path);

    // Called many times a second while decoding, with 0 to 100.
    std::function<void(qint16 percent)> Progress;

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
    bool Stopped = false;
};

}  // namespace Sonmira
