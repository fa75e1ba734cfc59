#pragma once

#include <functional>

namespace Sonmira {

class Failure;

// The standard failure box: what failed, and that the application should be installed again.
void ShowFailureBox(const Failure& failure);

// The end of a failure that no routine caught: the user is told, and the program ends.
void ReportUncaughtFailure(const Failure& failure);

// What ReportUncaughtFailure does last; a test replaces it to stay alive.
std::function<void()>& ProgramEnd();

}  // namespace Sonmira
