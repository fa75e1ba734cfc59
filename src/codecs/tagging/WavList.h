#pragma once

#include "codecs/tagging/RawFields.h"

#include <tpropertymap.h>

#include <optional>

namespace Sonmira {

// The INFO list of a WAV file, of which only those items change that are named; others stay with their bytes.
// Source of the facts: Multimedia Programming Interface and Data Specifications 1.0, RIFF.
class WavList {
public:
    WavList() = default;
    // From the content of the chunk, with the mark "INFO" in front. Nothing where it cannot be read to its
    // end, or an item is in it twice.
    static std::optional<WavList> Parse(const QByteArray& content);

    bool IsEmpty() const { return Items.isEmpty(); }
    TagLib::PropertyMap Properties() const;
    void Change(const TagLib::PropertyMap& changes);
    QByteArray Content() const;
    RawFields Fields() const;

private:
    struct Item {
        QByteArray Name;
        QByteArray Text;
        QByteArray Pad;
    };
    QList<Item> Items;
    QByteArray Rest;  // zeros
};

}  // namespace Sonmira
