#pragma once

#include <QString>

namespace Sonmira {

// The genres that a number stands for: 0 to 79 as ID3v1 defines them, 80 to 147 as players extended them.
inline constexpr int GenreCount = 148;

// The name of a genre; the empty text for any other number.
QString GenreName(int index);

// The number of the genre of exactly that name, case aside; -1 for none.
int GenreIndexOf(const QString& name);

}  // namespace Sonmira
