#include "scenario/window_actions.h"

#include <optional>

#include "core/dial_link.h"
#include "scenario/quoting.h"
#include "scenario/script_line.h"

namespace kestro::scenario {
namespace {

using forms::ControlKind;

/// A control as a script names it: WINDOW.NAME or WINDOW.NAME(INDEX).
struct ControlName {
  std::string_view window;
  std::string_view control;
  std::optional<int> index;
};

ControlName SplitControlName(const Action& action) {
  const std::string_view written = action.Text(0);
  const auto dot = written.find('.');
  if (dot == std::string_view::npos) throw ScriptError(action.line, "a control is written WINDOW.CONTROL");
  ControlName name{written.substr(0, dot), written.substr(dot + 1), std::nullopt};
  const auto bracket = name.control.find('(');
  if (bracket == std::string_view::npos) return name;
  const std::string_view digits = name.control.substr(bracket + 1);
  const auto index = digits.ends_with(')') ? ParseNumber(digits.substr(0, digits.size() - 1)) : std::nullopt;
  if (!index) throw ScriptError(action.line, "an element is written NAME(INDEX)");
  name.control = name.control.substr(0, bracket);
  name.index = static_cast<int>(*index);
  return name;
}

/// The control that an action is about, in its window.
struct Target {
  forms::Form& form;
  forms::Control& control;
};

Target FindTarget(const Action& action, Session& session, std::optional<int> index = {}) {
  const ControlName name = SplitControlName(action);
  forms::Form& form = FindWindow(action, name.window, session);
  forms::Control* control = form.FindControl(name.control, name.index ? name.index : index);
  if (control == nullptr || (name.index && !control->array_index())) {
    throw ScriptError(action.line, "unknown control " + action.Text(0));
  }
  return {form, *control};
}

[[noreturn]] void RaiseWrongKind(const Action& action, const std::string& what) {
  throw ScriptError(action.line, action.Text(0) + " is no " + what);
}

/// Writes the refusal down when the action was not done.
void Refuse(const Action& action, Session& session, bool done) {
  if (!done) session.transcript.Add("refused " + action.Text(0));
}

void Click(const Action& action, Session& session) {
  const Target target = FindTarget(action, session);
  const ControlKind kind = target.control.kind();
  if (kind != ControlKind::kButton && kind != ControlKind::kCheckBox && kind != ControlKind::kMenuItem) {
    RaiseWrongKind(action, "button, check box or menu entry");
  }
  Refuse(action, session,
         target.form.loaded() && session.front_end.Driver().Click(target.form, target.control));
}

void Type(const Action& action, Session& session) {
  const Target target = FindTarget(action, session);
  const auto* combo = dynamic_cast<forms::ComboBox*>(&target.control);
  const bool editable = combo != nullptr && combo->style() == forms::ComboBox::Style::kEditable;
  if (!editable && target.control.kind() != ControlKind::kTextBox) {
    RaiseWrongKind(action, "text box or editable list");
  }
  Refuse(
      action, session,
      target.form.loaded() && session.front_end.Driver().Type(target.form, target.control, action.Text(1)));
}

void Choose(const Action& action, Session& session) {
  const int index = action.Number(1);
  const Target target = FindTarget(action, session, index);
  forms::FrontEndDriver& driver = session.front_end.Driver();
  bool done = target.form.loaded();
  switch (target.control.kind()) {
    case ControlKind::kMenuItem:
      done = done && driver.Click(target.form, target.control);
      break;
    case ControlKind::kComboBox:
    case ControlKind::kTabPages:
      done = done && driver.Choose(target.form, target.control, index);
      break;
    default:
      RaiseWrongKind(action, "list, tab pages or menu");
  }
  Refuse(action, session, done);
}

void Check(const Action& action, Session& session) {
  const Target target = FindTarget(action, session);
  auto* box = dynamic_cast<forms::CheckBox*>(&target.control);
  if (box == nullptr) RaiseWrongKind(action, "check box");
  Refuse(action, session,
         target.form.loaded() && session.front_end.Driver().Check(target.form, *box, action.Number(1) != 0));
}

void Close(const Action& action, Session& session) {
  forms::Form& form = FindWindow(action, action.Text(0), session);
  const Argument* mode = action.Option("");
  const int unload_mode = mode == nullptr ? forms::kControlMenu : static_cast<int>(mode->number);
  const bool possible =
      form.loaded() && (unload_mode != forms::kControlMenu || session.windows.InUsersReach(form));
  if (possible) session.front_end.Driver().Close(form, unload_mode);
  Refuse(action, session, possible);
}

void SendTrayEvent(const Action& action, Session& session) {
  ports::IconEvent event = ports::kLeftButtonUp;
  if (action.Text(0) == "right") event = ports::kRightButtonUp;
  if (action.Text(0) == "double") event = ports::kLeftDoubleClick;
  if (action.Text(0) == "balloon") event = ports::kBalloonUserClick;
  if (!session.notification_area.SendEvent(event)) session.transcript.Add("refused tray");
}

/// `row`, `double-click` and `header`.
void PressGrid(const Action& action, Session& session) {
  const Target target = FindTarget(action, session);
  auto* grid = dynamic_cast<forms::Grid*>(&target.control);
  if (grid == nullptr) RaiseWrongKind(action, "grid");
  forms::FrontEndDriver& driver = session.front_end.Driver();
  const int number = action.Number(1);
  bool done = target.form.loaded();
  if (action.kind == ActionKind::kHeader) {
    done = done && driver.PressHeader(target.form, *grid, number);
  } else if (action.kind == ActionKind::kDoubleClick) {
    done = done && driver.DoubleClickRow(target.form, *grid, number);
  } else {
    done = done && driver.PressRow(target.form, *grid, number);
  }
  Refuse(action, session, done);
}

void PressTool(const Action& action, Session& session) {
  const Target target = FindTarget(action, session);
  auto* bar = dynamic_cast<forms::ToolBar*>(&target.control);
  if (bar == nullptr) RaiseWrongKind(action, "tool bar");
  Refuse(action, session,
         target.form.loaded() && session.front_end.Driver().PressTool(target.form, *bar, action.Number(1)));
}

void PressKey(const Action& action, Session& session) {
  forms::Form& form = FindWindow(action, action.Text(0), session);
  const auto key = forms::ParseKey(action.Text(1));
  if (!key) throw ScriptError(action.line, "unknown key " + Quoted(action.Text(1)));
  Refuse(action, session, form.loaded() && session.front_end.Driver().PressKey(form, *key));
}

}  // namespace

forms::Form& FindWindow(const Action& action, std::string_view name, Session& session) {
  forms::Form* form = session.application()->FindForm(name);
  if (form == nullptr) throw ScriptError(action.line, "unknown window " + Quoted(name));
  return *form;
}

bool PerformWindowAction(const Action& action, Session& session) {
  switch (action.kind) {
    case ActionKind::kClick:
      Click(action, session);
      return true;
    case ActionKind::kType:
      Type(action, session);
      return true;
    case ActionKind::kChoose:
      Choose(action, session);
      return true;
    case ActionKind::kCheck:
      Check(action, session);
      return true;
    case ActionKind::kClose:
      Close(action, session);
      return true;
    case ActionKind::kTray:
      SendTrayEvent(action, session);
      return true;
    case ActionKind::kLink:
      session.application()->DialLink(core::NumberOfLink(action.Text(0)));
      return true;
    case ActionKind::kRow:
    case ActionKind::kDoubleClick:
    case ActionKind::kHeader:
      PressGrid(action, session);
      return true;
    case ActionKind::kTool:
      PressTool(action, session);
      return true;
    case ActionKind::kKey:
      PressKey(action, session);
      return true;
    default:
      return false;
  }
}

}  // namespace kestro::scenario
