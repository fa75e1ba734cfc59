#pragma once

#include "codecs/tagging/RawFields.h"

#include <tpropertymap.h>

#include <optional>

namespace Sonmira {

// A block of Vorbis comments, of which only those change that are named: others stay with their bytes,
// whether they are UTF-8 or not, and whether or not they have a name.
// Source of the facts: Ogg Vorbis I format specification, comment field and header.
class VorbisComments {
public:
    VorbisComments() = default;
    // Nothing where the sizes in the block do not fit into it.
    static std::optional<VorbisComments> Parse(const QByteArray& block);

    TagLib::PropertyMap Properties() const;
    void Change(const TagLib::PropertyMap& changes);
    QByteArray Block() const;
    RawFields Fields() const;

private:
    QByteArray Vendor;
    QList<QByteArray> Comments;
    QByteArray Rest;  // a closing bit, padding, or what other programs keep there
};

}  // namespace Sonmira
