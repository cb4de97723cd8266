#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/field_size.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kFewestCharacters = 20;
constexpr int kRound = 40;  // milliseconds between two steps of a bar without a range

class ProgressBarBinding final : public ControlBinding {
 public:
  ProgressBarBinding(forms::ProgressBar& bar, HWND parent, BindingOwner& owner)
      : ControlBinding(bar, owner), bar_(bar) {
    Create(parent, PROGRESS_CLASSW, PBS_SMOOTH);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const int width = fonts().normal.Width(kFewestCharacters);
    const int height = FieldHeight(fonts());
    return {width, width, height, height, true, false};
  }

 private:
  void SyncContent() override {
    ShowWork(bar_.minimum() == bar_.maximum());
    Send(PBM_SETRANGE32, static_cast<WPARAM>(bar_.minimum()), bar_.maximum());
    Send(PBM_SETPOS, static_cast<WPARAM>(bar_.value()));
  }
  /// Without a range the bar only shows that the work goes on.
  void ShowWork(bool on) {
    const LONG_PTR style = GetWindowLongPtrW(window(), GWL_STYLE);
    if (((style & PBS_MARQUEE) != 0) == on) return;
    SetWindowLongPtrW(window(), GWL_STYLE, style ^ PBS_MARQUEE);
    Send(PBM_SETMARQUEE, on ? TRUE : FALSE, kRound);
  }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.progress = {static_cast<int>(Send(PBM_GETPOS)), static_cast<int>(Send(PBM_GETRANGE, FALSE))};
  }

  forms::ProgressBar& bar_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::ProgressBar& bar, HWND parent, BindingOwner& owner) {
  return std::make_unique<ProgressBarBinding>(bar, parent, owner);
}

}  // namespace kestro::adapters::win32
