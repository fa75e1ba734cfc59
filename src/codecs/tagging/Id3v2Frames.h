#pragma once

#include <id3v2framefactory.h>
#include <id3v2header.h>
#include <tpropertymap.h>

namespace TagLib::ID3v2 {
class Tag;
}

namespace Sonmira {

// Changes single frames of an ID3v2 tag; all others stay as they are, of which the library's own way would
// join some and drop others.
// Source of the facts: ID3v2.3.0 and ID3v2.4.0, id3.org.
void ChangeFrames(TagLib::ID3v2::Tag& tag, const TagLib::PropertyMap& changes);

// The version in which a tag is written: the older one stays, since some players read that only, unless the
// tag holds a frame that it does not know and the library would drop.
TagLib::ID3v2::Version VersionToWrite(const TagLib::ID3v2::Tag& tag);

// Makes the frames of a tag, and keeps those of the older versions that the library drops because the newest
// one has no such frame.
TagLib::ID3v2::FrameFactory* KeepingFrames();

}  // namespace Sonmira
