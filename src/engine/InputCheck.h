#pragma once

#include "engine/Components.h"

namespace Sonmira {

class Run;
class RunView;

// Whether the file is there and fit to be converted: what the streaming reader reads is opened, what a
// decoder of its own reads must be longer than a second, in whole ones (AAC: can be read at all). A file that
// is refused gets the reason into its row and sets FileError.
bool CheckInputFile(Run& run, RunView& view, Components parts, const QString& path);

// The length of a file in seconds, by what reads its format: of a stream to the millisecond, of what a
// decoder of its own reads in whole seconds; 0 for an AAC file, whose decoder tells none, and for a file that
// such a decoder cannot read. Fails where the streaming reader or the AAC decoder refuses the file. Opens the
// file in the components, so no run may be busy with them.
double ReadDuration(Components parts, const QString& path);

// A length for people: minutes and seconds, two digits each at least ("07:05", "120:00").
QString MinutesAndSeconds(double seconds);

// The length of a file for people; "-" for an AAC file without one, and "00:00" for a file that cannot be
// read.
QString ReadFileInformation(Components parts, const QString& path);

}  // namespace Sonmira
