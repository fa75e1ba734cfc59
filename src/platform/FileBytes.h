#pragma once

#include <QByteArray>

#include <optional>

// Small text files (settings, language files) as bytes. Names are native bytes.
namespace Sonmira {

// A file of more bytes than this is none of ours and is not read.
inline constexpr qint64 LargestTextFile = 64LL * 1024 * 1024;

// The whole content of a regular file; nothing, with errno set, when it cannot be had. Never waits on a
// pipe or a device of that name.
std::optional<QByteArray> ReadFileBytes(const QByteArray& nativePath);

// Writes all bytes to an open file.
bool WriteAll(int file, QByteArrayView bytes);

}  // namespace Sonmira
