#pragma once

#include <string>
#include <string_view>

#include "adapters/qt/qt_form_host.h"
#include "forms/front_end_driver.h"

namespace kestro::adapters {

/// Operates the windows of a QtFormHost through their widgets: mouse and key
/// events go where the user's would, readings are what the widgets hold.
class QtFrontEndDriver final : public forms::FrontEndDriver {
 public:
  /// `tray_window` names the window whose controls can be used although it is
  /// never shown, a modal window in front or not. `host` must outlive the driver.
  explicit QtFrontEndDriver(QtFormHost& host, std::string_view tray_window = "SystemTrayForm")
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
  void Settle() override;
  bool SavePicture(forms::Form& form, const std::string& native_file) override;

 private:
  [[nodiscard]] bool WindowReachable(const forms::Form& form) const;
  /// The control's widget if the user can act on it, else nullptr.
  [[nodiscard]] QWidget* ReachableWidget(const forms::Form& form, const forms::Control& control) const;
  bool ClickMenu(QtWindow& window, const forms::MenuItem& item);
  static void PressButton(QtWindow& window, const forms::Control& control, QWidget& widget);
  /// After an action: the end of the process comes through.
  bool Done() const;

  QtFormHost& host_;
  std::string tray_window_;
};

}  // namespace kestro::adapters
