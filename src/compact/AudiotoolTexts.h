#pragma once

#include <QString>

namespace Sonmira {

struct AudiotoolForm;

// Loads a language file and gives every control of the compact window its text from it. The headers of the
// list and the commands for questions and for translators have no line and stay as they were designed.
void ApplyLanguage(const QString& path, AudiotoolForm& form);

}  // namespace Sonmira
