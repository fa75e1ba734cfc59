#pragma once

#include <QString>

// The inputs, by the endings of their names, which are compared in upper case; no dot is needed.
namespace Sonmira {

// Who reads the sound: the streaming reader, or a decoder of its own.
enum class InputReader { Stream, Aac, Flac, Ape, Mpc };

// Who takes such a file, beside the command that takes any: a scan and a drop, a drop alone, neither.
enum class TakenBy { Scan, Drop, Nobody };

struct InputFormat {
    QStringView Ending;
    InputReader Reader = InputReader::Stream;
    TakenBy Adding = TakenBy::Nobody;
    bool HasStreamTag = true;  // what the tag object reads is the file's tag, or a part of it
};

// The row of the format; that of a stream nobody takes where the ending is none of the table.
const InputFormat& InputFormatOf(const QString& path);

// Whether the streaming reader takes the file: true unless the path ends in aac, ape, apl, mpc, mp+, flac or
// alac.
bool IsStreamReadable(const QString& path);

// A file found by the scan of a folder.
bool IsScannedAudioFile(const QString& name);
// A file dropped by itself; takes mpc, mp+ and alac beside what a scan takes.
bool IsDroppedAudioFile(const QString& path);

// The filter of the open dialog, pairs "description|patterns|".
QString AudioFileFilter();

}  // namespace Sonmira
