#pragma once

#include <string>
#include <string_view>

#include "adapters/win32/front_end/win32_form_host.h"
#include "forms/front_end_driver.h"

namespace kestro::adapters {

/// Operates the windows of a Win32FormHost through their native controls: presses
/// and keys go where the user's would, readings are what the controls hold.
class Win32FrontEndDriver final : public forms::FrontEndDriver {
 public:
  /// `tray_window` names the window whose controls can be used although it is
  /// never shown, a modal window in front or not. `host` must outlive the driver.
  explicit Win32FrontEndDriver(Win32FormHost& host, std::string_view tray_window = "SystemTrayForm");

  bool Click(forms::Form& form, forms::Control& control) override;
  bool Type(forms::Form& form, forms::Control& control, std::string_view text) override;
  bool Choose(forms::Form& form, forms::Control& control, int index) override;
  bool Check(forms::Form& form, forms::CheckBox& control, bool checked) override;
  bool PressRow(forms::Form& form, forms::Grid& grid, std::int64_t row) override;
  bool DoubleClickRow(forms::Form& form, forms::Grid& grid, std::int64_t row) override;
  bool PressHeader(forms::Form& form, forms::Grid& grid, int column) override;
  bool PressTool(forms::Form& form, forms::ToolBar& bar, int number) override;
  bool PressKey(forms::Form& form, const forms::Key& key) override;
  void Close(forms::Form& form, int unload_mode) override;
  [[nodiscard]] forms::WindowReading Read(forms::Form& form) override;
  void Settle() override;
  bool SavePicture(forms::Form& form, const std::string& native_file) override;

 private:
  [[nodiscard]] bool WindowReachable(const forms::Form& form) const;
  /// The control's binding if the user can act on it, else nullptr.
  [[nodiscard]] win32::ControlBinding* Reachable(const forms::Form& form,
                                                 const forms::Control& control) const;
  bool ClickMenu(win32::Window& window, const forms::MenuItem& item);
  /// After an action: the end of the process comes through.
  bool Done() const;

  Win32FormHost& host_;
  std::string tray_window_;
};

}  // namespace kestro::adapters
