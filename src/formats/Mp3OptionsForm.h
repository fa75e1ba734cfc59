#pragma once

#include <QDialog>

class QButtonGroup;
class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QLineEdit;
class QSlider;
class QSpinBox;
class QTabWidget;

namespace Sonmira {

class ChoiceList;

// The controls of the MP3 window, under their design names, without any behaviour. An up-down and its text
// box are one control here, which bears the name of the up-down.
class Mp3OptionsForm : public QDialog {
    Q_OBJECT

public:
    explicit Mp3OptionsForm(QWidget* owner);

    QTabWidget* tabMP3;

    QGroupBox* frmBitrate;
    QSlider* sldrBitrate;
    QGroupBox* frmChMode;
    ChoiceList* cmbChMode;
    QGroupBox* frmQuality;
    QSlider* sldrQuality;
    QGroupBox* frmFrequency;
    ChoiceList* cmbFrequency;

    QCheckBox* chHFilt;
    QSpinBox* udHFiltF;
    QLabel* lblHFiltW;
    QSpinBox* udHFiltW;
    QCheckBox* chLFilt;
    QSpinBox* udLFiltF;
    QLabel* lblLFiltW;
    QSpinBox* udLFiltW;

    ChoiceList* cmbVBRCodingMethod;
    QLabel* lblVbrQuality;
    QSpinBox* udVbrQuality;
    QLabel* lblAbrBitrate;
    QSpinBox* udAbrBitrate;
    QGroupBox* frmVbrBitrate;
    QSlider* sldrVbrBitrate;
    QLabel* lblVbrBitrate;
    QGroupBox* frmVbrAdvanced;
    QCheckBox* chWriteVBRHeader;
    QCheckBox* chStrictlyEnforceMinBitrate;

    QCheckBox* chStrictlyISOCompliance;
    QCheckBox* chShortBlocks;
    QCheckBox* chBitReservoir;
    QCheckBox* chBlockType;
    QCheckBox* chErrorProtection;
    ChoiceList* cmbATHControl;
    ChoiceList* cmbEmphasis;

    QButtonGroup* opPreset;     // by their numbers, from 1
    QButtonGroup* opAltPreset;  // the same
    QLineEdit* txtCommLine;

    QPushButton* cmdOK;
    QPushButton* cmdCancel;
    QPushButton* cmdApply;

private:
    void AddGeneral();
    void AddFiltering();
    void AddVbr();
    void AddExpert();
    void AddPresets();
    void AddCommandLine();
    QWidget* AddPage(const QString& caption);
};

}  // namespace Sonmira
