#pragma once

#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/TagValues.h"

namespace Sonmira {

constexpr qint64 Id3v1Size = 128;

// The ID3v1 tag at the end of a file; empty where there is none.
QByteArray Id3v1AtEnd(TagStream& file);
// One that says nothing.
QByteArray EmptyId3v1();

// The fields that an ID3v1 tag holds; a number beyond the table of genres is none.
TagValues ReadId3v1(const QByteArray& tag);

// Changes those fields in which `values` differs from `now`, and no other byte. Texts are Latin-1 there and
// cut at 30 characters, a track is at most 255 and is left out where a comment of full length has its place.
void ChangeId3v1(QByteArray& tag, const TagValues& now, const TagValues& values);

// Whether a comment that reaches to its end leaves no place for a track.
bool IsTrackCrowdedOut(const QByteArray& tag);

TagEdits EditsOfId3v1(const TagValues& now, const TagValues& values);
RawFields Id3v1Fields(const QByteArray& tag);

}  // namespace Sonmira
