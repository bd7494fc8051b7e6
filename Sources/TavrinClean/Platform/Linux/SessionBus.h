// The user's message bus, without ever waiting for it.
#pragma once

#include <QDBusMessage>

namespace tavrin {

/// Sends a call whose answer nobody wants. Where no bus runs, nothing happens: none is started for it.
void sendOnSessionBus(const QDBusMessage& call);

/// Whether a bus runs that can be reached.
[[nodiscard]] bool hasSessionBus();

}  // namespace tavrin
