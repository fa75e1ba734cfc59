#pragma once

class QWidget;

namespace Sonmira {

// Shows the logo and the version until the user closes it.
void ShowAbout(QWidget* owner);

}  // namespace Sonmira
