#pragma once

#include "codecs/AudioInformation.h"

#include <tpropertymap.h>

// The fields of a tag against the named properties that the tag library has for most formats.
namespace Sonmira {

QString FromTagText(const TagLib::String& text);
// Without what follows a first NUL.
TagLib::String ToTagText(const QString& text);

TagValues ValuesOf(const TagLib::PropertyMap& properties);

// `properties` with every field of `values` that differs from what they say now. `kind` decides which of the
// two genre fields has the word: the number for 1, the text for 2, each where it says something.
TagLib::PropertyMap WithValues(TagLib::PropertyMap properties, const TagValues& values, qint16 kind);

}  // namespace Sonmira
