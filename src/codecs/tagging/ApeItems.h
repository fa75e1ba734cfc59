#pragma once

#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/TagValues.h"

#include <tpropertymap.h>

namespace Sonmira {

// An APEv2 tag, of which only those items change that are named; others stay with their bytes.
// Source of the facts: APE tags 2.000 as Hydrogenaudio keeps them.
class ApeItems {
public:
    // From the bytes of a tag, as far as they can be read; none are a new tag.
    explicit ApeItems(const QByteArray& tag);

    TagLib::PropertyMap Properties() const;
    void Change(const TagLib::PropertyMap& changes);
    QByteArray Bytes() const;
    RawFields Fields() const;

private:
    struct Item {
        quint32 Flags;
        QByteArray Key;
        QByteArray Value;
    };
    QByteArray Block(quint32 flags, qsizetype size) const;

    QList<Item> Items;
    quint32 Version = 2000;
    quint32 Flags;  // those of the whole tag
};

// Bytes of the APEv2 and the ID3v1 tag at the end of a file, by their own word; 0 where there is none.
qint64 TagsAtEnd(TagStream& file);

// Fails where the APEv2 tag at the end of a file (before an ID3v1 tag, if there is one) says a size that its
// items do not have: the tag library would take sound for a part of it.
// Source of the facts: APE tags 2.000 as Hydrogenaudio keeps them.
void CheckApeTagSize(TagStream& file);

}  // namespace Sonmira
