#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

class QTableView;
class QWidget;

namespace Sonmira {

// Makes a table look and act like a report: whole rows, no grid, rows of one height, no wrapped text.
void MakeReportList(QTableView& list);

// The rows as high as the letters of the list want, and as the design has them at least. Again where the
// letters change.
void FitRowsToFont(QTableView& list);

// Writes a hint into the middle of an empty list or tree, below a drawing where there is room for one;
// `viewport` is being painted.
void PaintEmptyHint(QWidget& viewport, const QString& hint);

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
