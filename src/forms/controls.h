#pragma once

#include <deque>
#include <memory>

#include "forms/control.h"

namespace kestro::forms {

/// Captions mark their mnemonic with "&"; "&&" is an ampersand.
class CaptionedControl : public Control {
 public:
  [[nodiscard]] const std::string& caption() const { return caption_; }
  void SetCaption(std::string_view caption) { Assign(caption_, std::string(caption)); }

 protected:
  using Control::Control;

 private:
  std::string caption_;
};

/// A text on the window. A value label shows data: its "&" is no mnemonic, and
/// the front end lets the user select and copy it. A heading is the value that
/// the window is about.
class Label final : public CaptionedControl {
 public:
  enum class Role { kCaption, kValue, kHeading };

  Label(Form& form, Container* parent, std::string_view name, Role role = Role::kCaption)
      : CaptionedControl(form, parent, name), role_(role) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kLabel; }
  [[nodiscard]] Role role() const { return role_; }

 private:
  Role role_;
};

class Button final : public CaptionedControl {
 public:
  enum class Role { kPlain, kDefault, kCancel };  // Enter / Escape press the latter two

  Button(Form& form, Container* parent, std::string_view name, Role role = Role::kPlain)
      : CaptionedControl(form, parent, name), role_(role) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kButton; }
  [[nodiscard]] Role role() const { return role_; }
  void Click() { Raise(on_click); }

  Handler on_click;

 private:
  Role role_;
};

class TextBox final : public Control {
 public:
  enum class Lines { kOne, kMany };

  TextBox(Form& form, Container* parent, std::string_view name, Lines lines = Lines::kOne)
      : Control(form, parent, name), lines_(lines) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kTextBox; }
  [[nodiscard]] Lines lines() const { return lines_; }
  [[nodiscard]] const std::string& text() const { return text_; }
  /// Raises the change event when the text differs, whoever sets it.
  void SetText(std::string_view text);
  /// Most characters that can be typed; 0 = no limit. A text set by the program is not cut.
  [[nodiscard]] int max_length() const { return max_length_; }
  void SetMaxLength(int characters) { Assign(max_length_, characters); }
  [[nodiscard]] bool read_only() const { return read_only_; }
  void SetReadOnly(bool read_only) { Assign(read_only_, read_only); }

  Handler on_change;

 private:
  Lines lines_;
  std::string text_;
  int max_length_ = 0;
  bool read_only_ = false;
};

/// A drop-down list. Its click event is raised whenever the list index changes,
/// by the user or by the program alike.
class ComboBox final : public Control {
 public:
  enum class Style { kList, kEditable };  // only its items, or any text

  ComboBox(Form& form, Container* parent, std::string_view name, Style style = Style::kList)
      : Control(form, parent, name), style_(style) {}
  [[nodiscard]] Style style() const { return style_; }
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kComboBox; }
  [[nodiscard]] const std::vector<std::string>& items() const { return items_; }
  void AddItem(std::string_view item);
  /// Removes the items; the list index becomes -1 and the text empty without an event.
  void Clear();
  /// -1 = nothing selected.
  [[nodiscard]] int list_index() const { return list_index_; }
  /// Raises 5 for an index that the list does not have. The text becomes that of the item.
  void SetListIndex(int index);
  /// Text of the selected item, empty when there is none; of an editable one
  /// what stands in its field.
  [[nodiscard]] std::string text() const;
  /// Text of an editable one; the list index becomes that of the item with just
  /// this text, or -1, without an event.
  void SetText(std::string_view text);
  /// Most characters that can be typed; 0 = no limit.
  [[nodiscard]] int max_length() const { return max_length_; }
  void SetMaxLength(int characters) { Assign(max_length_, characters); }

  Handler on_click;

 private:
  Style style_;
  std::vector<std::string> items_;
  int list_index_ = -1;
  std::string typed_;  // of an editable one
  int max_length_ = 0;
};

class CheckBox final : public CaptionedControl {
 public:
  CheckBox(Form& form, Container* parent, std::string_view name) : CaptionedControl(form, parent, name) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kCheckBox; }
  /// 0 = off, 1 = on; any other number counts as on and is kept.
  [[nodiscard]] int value() const { return value_; }
  void SetValue(int value) { Assign(value_, value); }

 private:
  int value_ = 0;
};

/// A box around controls, with a caption or without.
class Frame final : public CaptionedControl, public Container {
 public:
  Frame(Form& form, Container* parent, std::string_view name) : CaptionedControl(form, parent, name) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kFrame; }
  [[nodiscard]] bool Reachable() const override { return Control::Reachable(); }
};

/// Tab pages; one is selected and its controls can be reached.
class TabPages final : public Control {
 public:
  class Page final : public Container {
   public:
    explicit Page(const TabPages& pages, int index) : pages_(pages), index_(index) {}
    [[nodiscard]] bool Reachable() const override { return pages_.tab() == index_ && pages_.Reachable(); }
    [[nodiscard]] const std::string& caption() const { return caption_; }

   private:
    friend class TabPages;
    const TabPages& pages_;
    int index_;
    std::string caption_;
  };

  TabPages(Form& form, Container* parent, std::string_view name, int count);
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kTabPages; }
  [[nodiscard]] int page_count() const { return static_cast<int>(pages_.size()); }
  [[nodiscard]] Page& page(int index) { return pages_.at(static_cast<std::size_t>(index)); }
  [[nodiscard]] const Page& page(int index) const { return pages_.at(static_cast<std::size_t>(index)); }
  void SetTabCaption(int index, std::string_view caption);
  [[nodiscard]] int tab() const { return tab_; }
  void SetTab(int index) { Assign(tab_, index); }

 private:
  std::deque<Page> pages_;
  int tab_ = 0;
};

/// Shows a picture file (system path), scaled into the control.
class Picture final : public Control {
 public:
  Picture(Form& form, Container* parent, std::string_view name) : Control(form, parent, name) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kPicture; }
  [[nodiscard]] const std::string& file() const { return file_; }
  /// Empty = no picture. A file that cannot be shown leaves the control empty on the screen.
  void SetFile(std::string_view path) { Assign(file_, std::string(path)); }

 private:
  std::string file_;
};

/// Shows how far a work has come. Without a range (minimum and maximum equal) it shows that the work goes on
/// and not how far it is.
class ProgressBar final : public Control {
 public:
  ProgressBar(Form& form, Container* parent, std::string_view name) : Control(form, parent, name) {}
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kProgressBar; }
  [[nodiscard]] int minimum() const { return minimum_; }
  [[nodiscard]] int maximum() const { return maximum_; }
  [[nodiscard]] int value() const { return value_; }
  /// Raises 5 when the maximum is below the minimum. The value is moved into the range.
  void SetRange(int minimum, int maximum);
  /// A value beyond the range is moved to its end.
  void SetValue(int value);

 private:
  int minimum_ = 0;
  int maximum_ = 100;
  int value_ = 0;
};

/// An entry of a menu. Roots are pop-up menus or the heads of the menu bar.
class MenuItem final : public CaptionedControl {
 public:
  enum class Role { kEntry, kSeparator, kPopup, kBar };

  MenuItem(Form& form, MenuItem* parent_item, std::string_view name, Role role = Role::kEntry,
           std::optional<int> array_index = {});
  [[nodiscard]] ControlKind kind() const override { return ControlKind::kMenuItem; }
  [[nodiscard]] Role role() const { return role_; }
  [[nodiscard]] MenuItem* parent_item() const { return parent_item_; }
  [[nodiscard]] const std::vector<MenuItem*>& children() const { return children_; }
  [[nodiscard]] bool checked() const { return checked_; }
  void SetChecked(bool checked) { Assign(checked_, checked); }
  void Click() { Raise(on_click); }
  /// Key that chooses a reachable entry of the menu bar without opening the menu,
  /// as ParseKey reads it: "Ctrl+N", "F5", "Del"; empty = none. The control that
  /// has the keyboard comes first: Del in a text box deletes text.
  [[nodiscard]] const std::string& shortcut() const { return shortcut_; }
  void SetShortcut(std::string_view key) { Assign(shortcut_, std::string(key)); }

  Handler on_click;

 protected:
  [[nodiscard]] bool ParentReachable() const override;

 private:
  friend class MenuArray;
  MenuItem* parent_item_;
  Role role_;
  std::vector<MenuItem*> children_;
  bool checked_ = false;
  std::string shortcut_;
};

/// A control array of menu entries below one parent, numbered from 0. Element 0
/// is there from the start and cannot be unloaded.
class MenuArray {
 public:
  MenuArray(Form& form, MenuItem& parent, std::string_view name);

  [[nodiscard]] int count() const { return static_cast<int>(elements_.size()); }
  /// Raises 9 for an index that is not loaded.
  [[nodiscard]] MenuItem& at(int index);
  [[nodiscard]] const MenuItem& at(int index) const;
  MenuItem& LoadNext();
  /// Removes every element but element 0.
  void UnloadAllButFirst();

  std::function<void(int index)> on_click;

 private:
  MenuItem& Add();

  Form& form_;
  MenuItem& parent_;
  std::string name_;
  std::deque<std::unique_ptr<MenuItem>> elements_;
};

}  // namespace kestro::forms
