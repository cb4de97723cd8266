#pragma once

#include <span>
#include <string_view>

namespace kestro::soak {

/// Numbers of the messages that may come up at a place, nested windows not
/// counted: they are places of their own.
using AllowedMessages = std::span<const int>;

/// While the program starts / while messages of the line are handled.
[[nodiscard]] AllowedMessages AtStart();
[[nodiscard]] AllowedMessages OnTheLine();

/// When the user uses that control. An empty control name: anything in the window (a key, its closing).
[[nodiscard]] AllowedMessages InWindow(std::string_view window, std::string_view control = {});

}  // namespace kestro::soak
