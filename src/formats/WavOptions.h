#pragma once

#include "formats/FormatCaller.h"
#include "formats/WavSettings.h"

#include <QDialog>

class QButtonGroup;
class QPushButton;

namespace Sonmira {

// The window of the WAV format.
class WavOptions : public QDialog {
    Q_OBJECT

public:
    explicit WavOptions(QWidget* owner);

    // Takes the caller and shows the saved choice. To be called before the window is shown.
    void LoadForm(const FormatCaller& caller);

    QButtonGroup* Option1;  // frequencies, by their places
    QButtonGroup* Option2;  // channels
    QButtonGroup* Option3;  // bits
    QPushButton* Command1;
    QPushButton* Command2;

private:
    void Command1_Click();
    void Command2_Click();
    void Form_Unload();
    void UseCdFormat();
    WavChoice Chosen() const;

    std::optional<FormatCaller> Caller;
};

}  // namespace Sonmira
