#pragma once

#include "shell/LanguageFiles.h"

#include <QString>

#include <functional>

namespace Sonmira {

// A line of the language file and where it goes: the text or title of a control, or what a function does with
// it.
struct LanguageTarget {
    template <class Control>
    LanguageTarget(int line, Control* control)
        : Line(line), Write([control](const QString& text) {
              if constexpr (requires { control->setTitle(text); }) {
                  control->setTitle(text);
              } else {
                  control->setText(text);
              }
          }) {}
    LanguageTarget(int line, std::function<void(const QString& text)> write)
        : Line(line), Write(std::move(write)) {}

    int Line;
    std::function<void(const QString& text)> Write;
};

// Writes each line to its target, one after the other: where a line is missing, those before it stand.
inline void WriteLines(std::initializer_list<LanguageTarget> targets) {
    for (const LanguageTarget& target : targets) target.Write(LanguageLines[target.Line]);
}

}  // namespace Sonmira
