#include "kit/PropertyStore.h"

#include <algorithm>

namespace Sonmira {

void PropertyStore::Write(const QString& name, const QVariant& value, const QVariant& standard) {
    if (value != standard) Entries.append({name, value});
}

QVariant PropertyStore::Read(const QString& name, const QVariant& standard) const {
    const auto entry = std::find_if(Entries.begin(), Entries.end(),
                                    [&](const Entry& candidate) { return candidate.Name == name; });
    return entry == Entries.end() ? standard : entry->Value;
}

}  // namespace Sonmira
