#pragma once

#include <QString>

// The profile service: ini files of sections and keys. Nothing is cached; each call goes to the file.
//
// A section is a line "[name]", a key a line "name=value". Names are compared without regard to case and
// the first match wins. Blanks around key and value are dropped. Lines that are neither (comments with
// ";", unknown text), their order and the line ends of the file are kept by a write.
namespace Sonmira {

// The longest value that a read gives back, in characters of UTF-16, whatever they take in the file. A longer
// one is cut there, or one before where the cut would part a pair.
inline constexpr int LongestProfileValue = 254;

// The value, or the empty text when the file, section or key is missing.
QString ReadProfileValue(QStringView file, QStringView section, QStringView key);

// Sets one value, making file, section and key as needed. The new content goes to a temporary file beside
// it and takes the old one's place by a rename, under a lock that other running instances respect.
// Line breaks in `value` become blanks. Returns whether the value was written.
bool WriteProfileValue(QStringView file, QStringView section, QStringView key, QStringView value);

}  // namespace Sonmira
