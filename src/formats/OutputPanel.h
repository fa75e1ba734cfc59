#pragma once

#include <QWidget>

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
    QLineEdit* TextOutFormat;  // read-only summary of the format
    QCheckBox* Check2;
};

}  // namespace Sonmira
