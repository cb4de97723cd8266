#pragma once

#include "adapters/win32/front_end/control_binding.h"

namespace kestro::adapters::win32 {

/// A flat tool bar. Its buttons carry their texts, which show as tool tips
/// beside the pictures; where the program holds no pictures, as captions.
class ToolBarBinding final : public ControlBinding {
 public:
  ToolBarBinding(forms::ToolBar& bar, HWND parent, BindingOwner& owner);

  [[nodiscard]] SizeHint Measure() const override;
  void UseFonts() override;
  void OnCommand(int id, int notification) override;

  /// Shown and enabled; false for a gap or a number that is none.
  [[nodiscard]] bool CanPress(int number) const;
  /// The report of a press on the button.
  void Press(int number) const;

 private:
  void AddButtons();
  void LoadPictures();
  void SetText(int number, std::wstring text);
  [[nodiscard]] std::wstring Text(int number) const;
  [[nodiscard]] DWORD State(int number) const;
  void SyncContent() override;
  void ReadContent(forms::ControlReading& reading) const override;

  forms::ToolBar& bar_;
  OwnedImageList pictures_;
};

}  // namespace kestro::adapters::win32
