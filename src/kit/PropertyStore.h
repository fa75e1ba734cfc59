#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace Sonmira {

// What a host keeps of a control: named values in the order in which they were written. A value that equals
// the control's default is not kept.
class PropertyStore {
public:
    struct Entry {
        QString Name;
        QVariant Value;
    };

    void Write(const QString& name, const QVariant& value, const QVariant& standard);
    // The value of that name, or the default where there is none.
    QVariant Read(const QString& name, const QVariant& standard) const;

    QList<Entry> Entries;
};

}  // namespace Sonmira
