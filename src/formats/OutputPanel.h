#pragma once

#include "kit/Placing.h"

#include <QWidget>

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;

namespace Sonmira {

class ChoiceList;
class IconBox;
class PathBox;

// The controls of the output configuration, under their design names, without any behaviour. They follow the
// width of the panel; its height is DesignHeight, more where letters are larger.
class OutputPanel : public QWidget {
    Q_OBJECT

public:
    // In twips: a heading as high as the caption strip of a card, four rows, and a last one in the foot band.
    static constexpr int DesignHeight = 2565;

    explicit OutputPanel(QWidget* parent = nullptr);

    // For those who leave the panel to a layout; the last row takes no room where it is hidden.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    IconBox* HeadingIcon;
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

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    std::array<QWidget*, 5> Details() const;
    void PlaceControls();
    void FollowWidth();

    Placing Inside;
};

}  // namespace Sonmira
