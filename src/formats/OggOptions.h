#pragma once

#include "formats/FormatCaller.h"
#include "formats/OggSettings.h"

#include <QDialog>

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QSlider;

namespace Sonmira {

class ChoiceList;

// The window of the Ogg Vorbis format. It always opens with its own choice, whatever was saved; only the
// frequency and the channels follow the caller.
class OggOptions : public QDialog {
    Q_OBJECT

public:
    explicit OggOptions(QWidget* owner);

    // Takes the caller and shows the choice to start with. Fails with InvalidPropertyValue where the caller's
    // frequency is none of the list.
    void Loader(const FormatCaller& caller);

    QGroupBox* frmFrequency;
    ChoiceList* cmbFrequency;
    QGroupBox* frmChMode;
    ChoiceList* cmbChMode;
    QGroupBox* frmOption;
    QCheckBox* chQuality;
    QCheckBox* chVbr;
    QLabel* lblBitrate;
    QSlider* sldrBitrate;
    QGroupBox* frmVbr;
    QLabel* lblMinBitrate;
    QSlider* sldrMinBitrate;
    QLabel* lblMaxBitrate;
    QSlider* sldrMaxBitrate;
    QGroupBox* frmQuality;
    QSlider* sldrQuality;
    QPushButton* cmdOk;
    QPushButton* cmdCancel;
    QPushButton* cmdApply;

private:
    void ConnectEvents();
    void chQuality_Click();
    void chVbr_Click();
    void ShowBitrates();
    // Whether the format was set; else the user was told.
    bool ApplyOggOptions();

    std::optional<FormatCaller> Caller;
    OggChoice Choice;
};

}  // namespace Sonmira
