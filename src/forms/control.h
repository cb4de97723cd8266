#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestro::forms {

class Form;
class Container;

enum class ControlKind {
  kLabel,
  kTextBox,
  kComboBox,
  kCheckBox,
  kButton,
  kFrame,
  kTabPages,
  kPicture,
  kProgressBar,
  kMenuItem,
  kGrid,
  kToolBar,
};

using Handler = std::function<void()>;

/// One named control of a window, without any drawing. Controls are members of
/// their form and live as long as it does; constructing one registers it, so the
/// order of construction is the window's own order (and its tab order). Every
/// change of state is reported to the front end that shows the window.
class Control {
 public:
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  [[nodiscard]] virtual ControlKind kind() const = 0;
  [[nodiscard]] Form& form() const { return form_; }
  /// The surrounding frame or tab page, nullptr on the window itself.
  [[nodiscard]] Container* parent() const { return parent_; }
  [[nodiscard]] const std::string& name() const { return name_; }
  /// Place in a control array.
  [[nodiscard]] std::optional<int> array_index() const { return array_index_; }

  [[nodiscard]] bool visible() const { return visible_; }
  void SetVisible(bool visible);
  [[nodiscard]] bool enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  void SetFocus();

  /// Can be acted on: enabled and visible up to the window, on the selected tab page.
  [[nodiscard]] bool Reachable() const;

  /// The control whose caption names this one for assistive tools, with the mnemonic leading here.
  void SetNamedBy(const Control& label) { named_by_ = &label; }
  [[nodiscard]] const Control* named_by() const { return named_by_; }
  /// The control's own name for assistive tools, where no other control's caption says it.
  void SetSpokenName(std::string_view name) { Assign(spoken_name_, std::string(name)); }
  [[nodiscard]] const std::string& spoken_name() const { return spoken_name_; }

 protected:
  Control(Form& form, Container* parent, std::string_view name, std::optional<int> array_index = {});

  [[nodiscard]] virtual bool ParentReachable() const;
  void Changed();
  template <class Value>
  void Assign(Value& field, Value value) {
    if (field == value) return;
    field = std::move(value);
    Changed();
  }
  static void Raise(const Handler& handler) {
    if (handler) handler();
  }

 private:
  Form& form_;
  Container* parent_;
  std::string name_;
  std::optional<int> array_index_;
  const Control* named_by_ = nullptr;
  std::string spoken_name_;
  bool visible_ = true;
  bool enabled_ = true;
};

/// A control's place in its container's rows and columns.
struct Cell {
  int row = 0;
  int column = 0;
  int row_span = 1;
  int column_span = 1;
};

/// Something that holds controls: the window itself, a frame, a tab page.
class Container {
 public:
  struct Placed {
    Control* control;
    Cell cell;
  };

  virtual ~Container() = default;
  void Place(Control& control, Cell cell) { placed_.push_back({&control, cell}); }
  /// The column / row takes the space that is left over.
  void GrowColumn(int column) { growing_column_ = column; }
  void GrowRow(int row) { growing_row_ = row; }

  [[nodiscard]] const std::vector<Placed>& placed() const { return placed_; }
  [[nodiscard]] std::optional<int> growing_column() const { return growing_column_; }
  [[nodiscard]] std::optional<int> growing_row() const { return growing_row_; }
  [[nodiscard]] virtual bool Reachable() const = 0;

 private:
  std::vector<Placed> placed_;
  std::optional<int> growing_column_;
  std::optional<int> growing_row_;
};

}  // namespace kestro::forms
