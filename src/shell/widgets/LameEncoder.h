#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace Sonmira {

// The notice that the MP3 encoder is missing, in English only. However it is closed, the program goes on.
class LameEncoder : public QDialog {
    Q_OBJECT

public:
    explicit LameEncoder(QWidget* owner = nullptr);

    // Shows the notice and waits until it is closed.
    static void ShowNotice(QWidget* owner = nullptr);

    QLabel* Label1;         // headline
    QLabel* Label6;         // explanation
    QLabel* Label2;         // lead-in
    QPushButton* Label3;    // the address of the download page, as a link
    QLabel* Label4;         // where the library goes
    QPushButton* Command3;  // Download
    QPushButton* Command1;  // Cancel

private:
    void LayOut();

    QString SystemFolder;  // with a trailing backslash
};

}  // namespace Sonmira
