#pragma once

#include <QtGlobal>

#include <optional>

namespace Sonmira {

class InputFile;

// The frames of sound that the header of a Musepack file of stream version 8 counts, if the file is whole:
// its packets follow each other without a gap, and the one that ends the stream ends the file. A packet is
// two letters, its size with these and itself included (7 bits a byte, the upper ones first, the eighth bit
// set on all but the last), and its content; the header's begins with a CRC-32, the version and that count in
// the same form.
std::optional<qint64> LengthOfWholeMpc(const InputFile& file);

}  // namespace Sonmira
