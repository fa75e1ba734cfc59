#pragma once

#include <QByteArray>

#include <tstringlist.h>

#include <optional>

// The texts within frames of ID3v2, as programs wrote them and not only as they should have.
// Source of the facts: ID3v2.2.0, ID3v2.3.0 and ID3v2.4.0, id3.org.
namespace Sonmira {

enum class Id3v2Text : char { Latin = 0, Marked = 1, BigEndian = 2, Utf8 = 3 };

// A text in the encoding of that number: UTF-16 without its mark counts as the byte order that it looks like,
// and what is no UTF-8 as Latin-1.
TagLib::String DecodeId3v2(const QByteArray& bytes, char encoding);
QByteArray EncodeId3v2(const TagLib::String& text, Id3v2Text encoding);

// How texts are written into a tag of that version.
Id3v2Text Id3v2EncodingFor(const TagLib::StringList& texts, int version, bool withoutLatin);

// The texts of a list, which a NUL in that encoding parts.
QList<QByteArray> SplitId3v2(const QByteArray& bytes, char encoding);
// The first text and all behind it; nothing where no NUL ends it.
std::optional<std::pair<QByteArray, QByteArray>> FirstOfId3v2(const QByteArray& bytes, char encoding);

// The content of a text frame (encoding and texts) with a mark in front of UTF-16 that has none, and with the
// right number where it claims to be UTF-8 and is not.
QByteArray RepairedId3v2Text(const QByteArray& content);

}  // namespace Sonmira
