#pragma once

#include <QByteArray>

// Sources for whole runs, made by programs that are not ours.
namespace Sonmira {

// Every ending of a source that a tool can make.
inline constexpr const char* SourceEndings[] = {"wav", "avi",  "mp3",  "ogg", "wma", "aac",
                                                "m4a", "alac", "flac", "ape", "mpc", "mp+"};

// Makes `file` of the WAV file `wav` in the format that its ending says. Both are native names; a failure of
// the tool is one of the test.
void MakeSource(const QByteArray& wav, const QByteArray& file);

}  // namespace Sonmira
