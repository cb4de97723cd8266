#pragma once

#include <string>
#include <string_view>

#include "adapters/headless/headless_form_host.h"
#include "forms/front_end_driver.h"

namespace kestro::adapters {

/// Operates the windows of a HeadlessFormHost: what the user could reach on a
/// screen is done through the model, what he could not is refused.
class HeadlessFrontEndDriver final : public forms::FrontEndDriver {
 public:
  /// `tray_window` names the window whose controls can be used although it is
  /// never shown, a modal window in front or not. `host` must outlive the driver.
  explicit HeadlessFrontEndDriver(HeadlessFormHost& host, std::string_view tray_window = "SystemTrayForm")
      : host_(host), tray_window_(tray_window) {}

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
  void Settle() override { host_.DoEvents(); }
  bool SavePicture(forms::Form& /*form*/, const std::string& /*native_file*/) override { return false; }

 private:
  [[nodiscard]] bool WindowReachable(const forms::Form& form) const;
  [[nodiscard]] bool Reachable(const forms::Form& form, const forms::Control& control) const;

  HeadlessFormHost& host_;
  std::string tray_window_;
};

}  // namespace kestro::adapters
