#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/form_host.h"
#include "ports/foreground_windows.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// Passes everything on to the front end and writes down which windows come and
/// go. The size of the screen is the script's, so that every front end gives
/// the same transcript.
class RecordingFormHost final : public forms::FormHost {
 public:
  /// Called before a window is shown modally, with the window; see SetModalHook.
  using ModalHook = std::function<void(forms::Form&)>;

  RecordingFormHost(forms::FormHost& inner, Transcript& transcript)
      : inner_(inner), transcript_(transcript) {}

  void SetScreen(forms::ScreenSize screen) { screen_ = screen; }
  /// The hook arranges for what happens while the modal window waits.
  void SetModalHook(ModalHook hook) { modal_hook_ = std::move(hook); }

  /// The hook runs behind each pause in which the application, at work, lets events run.
  void SetPauseHook(forms::Handler hook) { pause_hook_ = std::move(hook); }
  /// Such a pause is on.
  [[nodiscard]] bool in_pause() const { return in_pause_; }

  /// Name of the loaded window of that handle, empty for another number.
  [[nodiscard]] std::string WindowName(ports::WindowHandle window) const;
  /// Whether the user could use the window's own close button.
  [[nodiscard]] bool InUsersReach(const forms::Form& form) const;
  /// Windows shown or brought to the front since the last call, each once.
  [[nodiscard]] std::vector<forms::Form*> TakeAppeared();
  void BroughtToFront(ports::WindowHandle window);

  forms::WindowHandle Load(forms::Form& form) override;
  void Unload(forms::Form& form) override;
  void Show(forms::Form& form) override;
  void Hide(forms::Form& form) override;
  void ShowModal(forms::Form& form, forms::Form* owner) override;
  void WindowChanged(forms::Form& form) override { inner_.WindowChanged(form); }
  void ControlChanged(forms::Form& form, forms::Control& control) override {
    inner_.ControlChanged(form, control);
  }
  void MenuChanged(forms::Form& form, forms::MenuItem& parent) override { inner_.MenuChanged(form, parent); }
  void FocusControl(forms::Form& form, forms::Control& control) override {
    inner_.FocusControl(form, control);
  }
  void PopupMenu(forms::Form& form, forms::MenuItem& menu) override;
  [[nodiscard]] forms::ScreenSize Screen() const override { return screen_; }
  void SetPointer(forms::Pointer pointer) override;
  void DoEvents() override;

 private:
  void Appeared(forms::Form& form);

  forms::FormHost& inner_;
  Transcript& transcript_;
  forms::ScreenSize screen_;
  ModalHook modal_hook_;
  forms::Handler pause_hook_;
  bool in_pause_ = false;
  std::map<ports::WindowHandle, forms::Form*> windows_;
  std::vector<forms::Form*> modal_;
  std::vector<forms::Form*> appeared_;
};

/// The front end's foreground, written down when a window gets it.
class RecordingForegroundWindows final : public ports::ForegroundWindows {
 public:
  RecordingForegroundWindows(ports::ForegroundWindows& inner, RecordingFormHost& host, Transcript& transcript)
      : inner_(inner), host_(host), transcript_(transcript) {}

  bool SetForegroundWindow(ports::WindowHandle window) override;
  [[nodiscard]] ports::WindowHandle GetForegroundWindow() override { return inner_.GetForegroundWindow(); }
  [[nodiscard]] std::uint32_t GetWindowThread(ports::WindowHandle window) override {
    return inner_.GetWindowThread(window);
  }
  void AttachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override {
    inner_.AttachThreadInput(from, to, attach);
  }
  [[nodiscard]] bool IsIconic(ports::WindowHandle window) override { return inner_.IsIconic(window); }
  void ShowWindowCommand(ports::WindowHandle window, int command) override {
    inner_.ShowWindowCommand(window, command);
  }
  std::int32_t SetWindowPos(ports::WindowHandle window, std::int32_t insert_after,
                            std::uint32_t flags) override {
    return inner_.SetWindowPos(window, insert_after, flags);
  }

 private:
  ports::ForegroundWindows& inner_;
  RecordingFormHost& host_;
  Transcript& transcript_;
};

}  // namespace kestro::scenario
