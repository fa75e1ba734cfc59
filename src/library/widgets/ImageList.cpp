#include "library/widgets/ImageList.h"

#include "platform/Failure.h"

namespace Sonmira {

void ImageList::Add(const QString& key, const QIcon& image) {
    if (Images.contains(key)) throw Failure(FailureNumber::KeyNotUnique);
    Images.insert(key, image);
}

QIcon ImageList::At(const QString& key) const {
    const auto found = Images.constFind(key);
    if (found == Images.constEnd()) throw Failure(FailureNumber::KeyNotFound);
    return found.value();
}

}  // namespace Sonmira
