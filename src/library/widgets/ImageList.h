#pragma once

#include <QHash>
#include <QIcon>

namespace Sonmira {

// Images by key, one a key. Keys differ by case.
class ImageList {
public:
    bool Contains(const QString& key) const { return Images.contains(key); }
    // Fails with KeyNotUnique when the key is there already.
    void Add(const QString& key, const QIcon& image);
    // Fails with KeyNotFound when there is none.
    QIcon At(const QString& key) const;

private:
    QHash<QString, QIcon> Images;
};

}  // namespace Sonmira
