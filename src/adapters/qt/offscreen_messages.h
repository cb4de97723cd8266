#pragma once

namespace kestro::adapters {

/// Keeps the toolkit from reporting, over and over, what its platform without a
/// screen cannot do. Every other message goes to standard error as before.
void DropOffscreenMessages();

}  // namespace kestro::adapters
