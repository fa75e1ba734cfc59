#pragma once

#include "codecs/tagging/RawFields.h"

#include <tpropertymap.h>

namespace Sonmira {

// A block of Vorbis comments, of which only those change that are named: others stay with their bytes,
// whether they are UTF-8 or not, and whether or not they have a name.
// Source of the facts: Ogg Vorbis I format specification, comment field and header.
class VorbisComments {
public:
    VorbisComments() = default;
    // As far as the sizes in the block fit into it.
    explicit VorbisComments(const QByteArray& block);

    // Whether that was all of it; else it is not to be written.
    bool IsWhole() const { return WasWhole; }
    TagLib::PropertyMap Properties() const;
    void Change(const TagLib::PropertyMap& changes);
    QByteArray Block() const;
    RawFields Fields() const;

private:
    bool WasWhole = true;
    QByteArray Vendor;
    QList<QByteArray> Comments;
    QByteArray Rest;  // a closing bit, padding, or what other programs keep there
};

}  // namespace Sonmira
