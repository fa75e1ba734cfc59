#pragma once

#include "codecs/mp3/Mp3Parameters.h"

#include <memory>

// The MP3 parameters in the settings file: 22 numbered keys.
namespace Sonmira {

struct FormatCaller;

// Makes new parameters of the saved keys and gives them to the caller's encoder; what comes back is the set
// in force. A key that is missing or damaged leaves its property as a new object has it. Nothing fails.
// Returns whether the encoder library could be loaded; else the earlier format stays.
bool ApplySavedMp3Format(const FormatCaller& caller, std::shared_ptr<Mp3Parameters>& parameters);

// Writes the keys.
void SaveMp3Format(const Mp3Parameters& parameters);

}  // namespace Sonmira
