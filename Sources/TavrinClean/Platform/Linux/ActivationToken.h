// The right to come to the front, which a desktop gives with each start and a running program must be handed.
#pragma once

#include <QVariantMap>

namespace tavrin {

/// What a launcher gave this start, as the "platform data" of the Desktop Entry Specification 1.5; empty where it gave
/// nothing. Read from the environment.
[[nodiscard]] QVariantMap activationOfThisStart();

/// Takes the right over from another start's platform data: the toolkit uses it the next time that a window asks to be
/// activated. Main thread.
void takeActivation(const QVariantMap& platformData);

}  // namespace tavrin
