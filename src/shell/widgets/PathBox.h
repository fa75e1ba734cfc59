#pragma once

#include <QLineEdit>

namespace Sonmira {

// A text box for one path. The user sees and types the desktop's form; the program sees the inner form,
// which survives even where the shown text cannot say it all (bytes that are no text).
class PathBox : public QLineEdit {
    Q_OBJECT

public:
    explicit PathBox(QWidget* parent = nullptr);

    QString Text() const { return Inner; }
    void SetText(const QString& path);

private:
    QString Inner;
};

}  // namespace Sonmira
