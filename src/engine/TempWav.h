#pragma once

#include <QString>

namespace Sonmira {

// The path of the temporary WAV for a file: in the temporary folder, under the file's name less its last
// `extensionLength` characters, and "wav".
QString TempWavPathFor(const QString& path, int extensionLength);

// The same, with whatever lay there removed: an older file, or a link to another. Empty where something
// stays, such as a file in a folder that takes no changes, which would be converted for the song.
QString FreeTempWavPathFor(const QString& path, int extensionLength);

}  // namespace Sonmira
