#pragma once

#include <QString>

class QWidget;

namespace Sonmira {

// What stands in the title of a main window: the name and the version, "Sonmira V2.1".
QString ProgramTitle();

// Shows the logo and the version until the user closes it.
void ShowAbout(QWidget* owner);

}  // namespace Sonmira
