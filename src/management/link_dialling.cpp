#include "management/link_dialling.h"

#include <utility>

#include "base/scope_value.h"
#include "core/dial_link.h"

namespace kestro::management {

void LinkDialling::DialLink(std::string_view number) {
  if (!started_) {
    waiting_ = number;
    return;
  }
  procedure_.Outermost(
      "DialLink",
      [&] {
        if (asking_ || needs_.flags.ShuttingDown) return;
        const base::ScopeValue asking(asking_, true);
        AskAndDial(number);
      },
      [&](const base::RuntimeError&) { needs_.messages.Notice("285"); });
}

void LinkDialling::AskAfterStart() {
  started_ = true;
  if (const auto number = std::exchange(waiting_, std::nullopt)) DialLink(*number);
}

void LinkDialling::AskAndDial(std::string_view number) {
  if (!core::IsLinkNumber(number)) return needs_.messages.Warning("321");
  if (needs_.dialling.HandsToDesktop()) return needs_.messages.Warning("322");
  // "No" takes the Enter key: the question comes up while the user may be typing.
  constexpr int kStyle = ports::kYesNo | ports::kQuestion | ports::kSecondButton;
  if (needs_.messages.Show(kStyle, "320", {std::string(number), std::string(core::kLineBreak)}) ==
      ports::BoxAnswer::kYes) {
    needs_.dialling.Dial(number);
  }
}

}  // namespace kestro::management
