#pragma once

#include <QByteArray>
#include <QString>

// Text is wide inside the system and narrow (UTF-8) at every border. A byte that is no valid UTF-8
// travels inside as the lone surrogate U+DC80 to U+DCFF (0xDC00 | byte) and goes out unchanged, so
// that any byte sequence makes the round trip.
namespace Sonmira {

QByteArray ToNarrow(QStringView text);
QString FromNarrow(QByteArrayView bytes);

// Whether the text came from bytes that are no valid UTF-8, that is, holds a lone surrogate.
bool HoldsRawBytes(QStringView text);

}  // namespace Sonmira
