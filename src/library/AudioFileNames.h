#pragma once

#include <QString>

// What counts as an audio file, by the way in which it arrives. Names are compared in upper case by their
// last three or four characters, and no dot is needed.
namespace Sonmira {

// A file found by the scan of a folder.
bool IsScannedAudioFile(const QString& name);
// A file dropped by itself; takes mpc, mp+ and alac beside what a scan takes.
bool IsDroppedAudioFile(const QString& path);

// The filter of the open dialog, pairs "description|patterns|".
QString AudioFileFilter();

}  // namespace Sonmira
