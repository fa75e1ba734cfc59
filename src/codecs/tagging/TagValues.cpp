#include "codecs/tagging/TagValues.h"

#include <algorithm>

namespace Sonmira {

bool KeepsFields(const RawFields& before, const RawFields& after, const TagEdits& edits) {
    QMap<std::pair<QByteArray, QByteArray>, int> there;
    for (const RawField& field : after) ++there[{field.Name, field.Bytes}];
    QMap<QByteArray, int> changed;
    for (const RawField& field : before) {
        int& count = there[{field.Name, field.Bytes}];
        if (count > 0) {
            --count;
            continue;
        }
        const auto edit = edits.find(field.Key);
        if (field.Key.isEmpty() || edit == edits.end()) return false;
        if (!*edit && ++changed[field.Name] > 1) return false;
    }
    return true;
}

}  // namespace Sonmira
