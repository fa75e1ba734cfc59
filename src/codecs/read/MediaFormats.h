#pragma once

struct AVInputFormat;

namespace Sonmira {

class InputFile;

// The readers of the library that may open a file, by their names, with commas between. Each reads the sound
// of one file that says by its content what it is. Not among them are lists, indexes and scripts, which name
// other files or addresses; devices; raw samples, which could be anything; and the formats of games, which
// any noise looks like.
extern const char* const MediaFormatNames;

// The reader for a file that the library's own search takes for nothing: behind a tag so long that the search
// ends in it, and AAC of so few frames that they might be those of something else. Null for all other files,
// which the library knows by itself.
const AVInputFormat* HiddenMediaFormat(const InputFile& file);

}  // namespace Sonmira
