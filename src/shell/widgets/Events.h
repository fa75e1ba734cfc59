#pragma once

#include "platform/Failure.h"
#include "platform/Paths.h"

#include <QObject>

#include <functional>

namespace Sonmira {

class Failure;

// The standard failure box: what failed, and that the application should be installed again.
void ShowFailureBox(const Failure& failure);

// The end of a failure that no routine caught: the user is told, and the program ends.
void ReportUncaughtFailure(const Failure& failure);

// What ReportUncaughtFailure does last; a test replaces it to stay alive.
std::function<void()>& ProgramEnd();

// Calls a handler with the arguments of a signal, or without them where it takes none.
template <class Handler, class... Arguments>
void CallHandler(const Handler& handler, Arguments&&... arguments) {
    if constexpr (std::is_invocable_v<const Handler&, Arguments...>) {
        handler(std::forward<Arguments>(arguments)...);
    } else {
        handler();
    }
}

// Runs what an event asked for. A failure that it lets through ends in the failure report, here and nowhere
// else, so that none ever unwinds through the toolkit.
template <class Work>
void GuardEvent(const Work& work) {
    try {
        work();
    } catch (const Failure& failure) {
        ReportUncaughtFailure(failure);
    } catch (const std::exception& error) {
        ReportUncaughtFailure(Failure(FailureNumber::InvalidCall, FromNarrow(error.what())));
    }
}

// Runs a handler that answers for its own failures: the user is told, and the program goes on.
template <class Work>
void WithFailureBox(const Work& work) {
    try {
        work();
    } catch (const Failure& failure) {
        ShowFailureBox(failure);
    } catch (const std::exception& error) {
        ShowFailureBox(Failure(FailureNumber::InvalidCall, FromNarrow(error.what())));
    }
}

// Connects a signal to an event handler under GuardEvent.
template <class Sender, class Signal, class Handler>
void OnEvent(Sender* sender, Signal signal, QObject* context, Handler handler) {
    QObject::connect(sender, signal, context, [handler](auto&&... arguments) -> void {
        GuardEvent([&] { CallHandler(handler, std::forward<decltype(arguments)>(arguments)...); });
    });
}

}  // namespace Sonmira
