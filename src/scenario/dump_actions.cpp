#include "scenario/dump_actions.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "scenario/dumps.h"
#include "scenario/window_actions.h"
#include "scenario/world.h"

namespace kestro::scenario {
namespace {

using Lines = std::vector<std::string>;

Lines WindowLines(const Action& action, Session& session) {
  forms::Form& form = FindWindow(action, action.Text(0), session);
  if (!form.loaded()) return {"window " + form.name() + " unloaded"};
  return DumpWindow(form, session.front_end.Driver().Read(form));
}

Lines MenuLines(Session& session) {
  const forms::MenuItem& menu = session.application()->TrayMenu();
  return DumpMenu(menu, session.front_end.Driver().Read(menu.form()));
}

Lines Execute(const Action& action, std::string_view statement, Session& session) {
  try {
    return DumpSql(statement, session.machine.Database(),
                   ConnectionStringOf(session.application()->DatabasePath()));
  } catch (const base::RuntimeError& error) {
    throw ScriptError(action.line, error.description());
  }
}

Lines RowLines(const Action& action, Session& session) {
  static constexpr std::string_view kSelect = "select ";
  const std::string_view statement = base::Trim(action.Text(0));
  if (!base::EqualIgnoringCase(base::FirstCharacters(statement, kSelect.size()), kSelect)) {
    throw ScriptError(action.line, "only SELECT statements can be dumped");
  }
  return Execute(action, statement, session);
}

/// Nothing for an action that is no dump.
std::optional<Lines> LinesOf(const Action& action, Session& session) {
  switch (action.kind) {
    case ActionKind::kDumpSettings:
      return DumpSettings(session.settings, kSettingsKey);
    case ActionKind::kDumpWindow:
      return WindowLines(action, session);
    case ActionKind::kDumpMenu:
      return MenuLines(session);
    case ActionKind::kDumpCall:
      return Lines{DumpCall(*session.application())};
    case ActionKind::kDumpFlags:
      return Lines{DumpFlags(*session.application())};
    case ActionKind::kDumpIcon:
      return Lines{DumpIcon(session.application()->TrayIconData(), session.machine.CodePage())};
    case ActionKind::kDumpSql:
      return RowLines(action, session);
    case ActionKind::kAnotherProgram:
      return Execute(action, action.Text(0), session);
    default:
      return std::nullopt;
  }
}

}  // namespace

bool PerformDumpAction(const Action& action, Session& session) {
  auto lines = LinesOf(action, session);
  if (!lines) return false;
  for (std::string& line : *lines) session.transcript.Add(std::move(line));
  return true;
}

}  // namespace kestro::scenario
