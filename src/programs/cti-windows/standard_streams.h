#pragma once

namespace kestro::programs {

/// A windowed program has the outputs that it was started with, or none. Where it
/// has none but was started from a console, this leads them to that console. What
/// is written keeps its line ends.
void OpenStandardStreams();

}  // namespace kestro::programs
