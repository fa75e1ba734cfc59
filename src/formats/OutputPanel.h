#pragma once

#include <QWidget>

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;

namespace Sonmira {

class ChoiceList;
class PathBox;

// The controls of the output configuration, under their design names, without any behaviour.
class OutputPanel : public QWidget {
    Q_OBJECT

public:
    explicit OutputPanel(QWidget* parent = nullptr);

    QLabel* Label11;  // heading
    QCheckBox* CheckOutPath;
    QLabel* Label5;
    PathBox* TextOutPath;
    QToolButton* CmdSelectPath;
    QLabel* Label6;
    ChoiceList* ComboOutFormat;
    QLabel* Label7;
    // One of these shows what there is to choose in the format.
    QLineEdit* TextOutFormat;         // read-only summary of the format
    QToolButton* CmdFormatParameter;  // opens the options of a format that is shown by its summary
    ChoiceList* ComboWmaFormat;
    ChoiceList* ComboAPEFormat;
    ChoiceList* ComboFLACFormat;
    ChoiceList* ComboMPCFormat;
    QCheckBox* Check2;

    // Shows that one of the detail controls, the button with the summary, and hides the others.
    void ShowDetail(const QWidget* detail);

    // Locks or frees the controls for the time of a run. The text of the output folder stays free, because
    // what is typed there counts for the next file, and so does the quality of Musepack, as it always has.
    void SetControlsEnabled(bool enabled);

private:
    std::array<QWidget*, 5> Details() const;
};

}  // namespace Sonmira
