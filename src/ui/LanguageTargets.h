#pragma once

#include <QString>

namespace Sonmira {

struct BatchConverterForm;

// Loads a language file and gives every control of the main window its text from it, in a fixed order in
// which some texts are written twice and the later one stands.
void ApplyLanguage(const QString& path, BatchConverterForm& form);

}  // namespace Sonmira
