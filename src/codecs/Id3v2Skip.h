#pragma once

#include <QtGlobal>

namespace Sonmira {

class InputFile;

// Where a file begins in earnest: behind the ID3v2 tags that stand in front of it.
qint64 BehindId3v2(const InputFile& file);

}  // namespace Sonmira
