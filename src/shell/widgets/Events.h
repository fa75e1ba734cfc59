#pragma once

#include "platform/Failure.h"
#include "platform/NarrowText.h"
#include "shell/widgets/FailureReport.h"

#include <QObject>

namespace Sonmira {

// Calls a handler with the arguments of a signal, or without them where it takes none.
template <class Handler, class... Arguments>
void CallHandler(const Handler& handler, Arguments&&... arguments) {
    if constexpr (std::is_invocable_v<const Handler&, Arguments...>) {
        handler(std::forward<Arguments>(arguments)...);
    } else {
        handler();
    }
}

// Connects a signal to an event handler. A failure that the handler lets through ends in the failure
// report, here and nowhere else, so that none ever unwinds through the toolkit.
template <class Sender, class Signal, class Handler>
void OnEvent(Sender* sender, Signal signal, QObject* context, Handler handler) {
    QObject::connect(sender, signal, context, [handler](auto&&... arguments) -> void {
        try {
            CallHandler(handler, std::forward<decltype(arguments)>(arguments)...);
        } catch (const Failure& failure) {
            ReportUncaughtFailure(failure);
        } catch (const std::exception& error) {
            ReportUncaughtFailure(Failure(FailureNumber::InvalidCall, FromNarrow(error.what())));
        }
    });
}

}  // namespace Sonmira
