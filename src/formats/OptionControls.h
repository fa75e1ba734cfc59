#pragma once

#include "platform/Failure.h"
#include "shell/widgets/ChoiceList.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QSlider>

#include <memory>

// What the options windows are built of.
namespace Sonmira {

template <class Control, class... Arguments>
Control* MakeControl(const QString& name, Arguments&&... arguments) {
    auto* control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(name);
    return control;
}

// A titled frame around a column.
QGroupBox* MakeFrame(const QString& name, const QString& caption);
// Adds a row to the column of a frame or page.
void AddRow(QWidget* page, std::initializer_list<QWidget*> row);

// Adds a grid to it, for rows whose controls stand below each other.
QGridLayout* AddGrid(QWidget* page);
// Adds the last row of a window, at its right end.
void AddButtons(QWidget* window, std::initializer_list<QPushButton*> buttons);

void EnableAll(bool enabled, std::initializer_list<QWidget*> controls);

// A horizontal slider over 0 to `most`, with ticks.
QSlider* MakeSlider(const QString& name, int most, int largeStep, int tick);
// One over the positions of the bit rate table.
QSlider* MakeBitrateSlider(const QString& name);
// The sample rates of MPEG audio, each with its frequency in Hz as data.
ChoiceList* MakeFrequencyList(const QString& name);
// Makes a group of options one stop of the tab key, at the chosen one, as the arrow keys choose in it. To be
// called when all are in it.
void MakeOneTabStop(QButtonGroup& options);
// Selects the item of that data; fails with InvalidPropertyValue where there is none.
void SelectData(ChoiceList& list, int data);

// Puts a value into a slider or an up-down; one outside its range fails with InvalidPropertyValue.
template <class Control>
void SetInRange(Control& control, int value) {
    if (value < control.minimum() || value > control.maximum()) {
        throw Failure(FailureNumber::InvalidPropertyValue);
    }
    control.setValue(value);
}

// "Current bitrate: 128 kbit", `what` being what stands before the colon.
QString BitrateText(const QString& what, int kilobits);

}  // namespace Sonmira
