#pragma once

#include "soak/soak_world.h"

namespace kestro::soak {

/// Checks what must hold whenever the application waits for events: flags that
/// contradict each other, windows that should be gone, a tray icon of another
/// state, a line that is open twice. What is wrong goes to the world's findings.
void CheckAtRest(SoakWorld& world);

/// Checks what must hold right after a call was reported as over.
void CheckAfterCall(SoakWorld& world);

}  // namespace kestro::soak
