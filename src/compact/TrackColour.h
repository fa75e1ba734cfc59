#pragma once

#include <QColor>

namespace Sonmira {

// The colour of the file names, as the number that the settings file keeps: red in the lowest of three bytes,
// blue in the highest.
inline constexpr qint32 DefaultTrackColour = 16576;

QColor ColourOf(qint32 number);
// From 0xRRGGBB to that number.
qint32 ColourNumber(quint32 rgb);

// The saved number. Where there is none, the default, which is saved at once; also the default, and nothing
// is saved, where the value is no number.
qint32 SavedTrackColour();
void SaveTrackColour(qint32 number);

}  // namespace Sonmira
