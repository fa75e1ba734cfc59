#pragma once

#include "codecs/tagging/RawFields.h"

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

}  // namespace Sonmira
