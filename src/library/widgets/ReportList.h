#pragma once

#include <QString>

class QTableView;
class QWidget;

namespace Sonmira {

// Makes a table look and act like a report: whole rows, no grid, rows of one height, no wrapped text.
void MakeReportList(QTableView& list);

// Draws into the middle of an empty list or tree what one does with it, and a hint below; `viewport` is being
// painted.
void PaintEmptyHint(QWidget& viewport, const QString& hint);

}  // namespace Sonmira
