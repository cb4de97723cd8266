#include "scenario/dumps.h"

#include <algorithm>
#include <span>
#include <type_traits>
#include <variant>

#include "scenario/quoting.h"
#include "scenario/recording_notification_area.h"

namespace kestro::scenario {
namespace {

constexpr std::size_t kIndent = 2;

std::string_view StateWord(forms::WindowState state) {
  switch (state) {
    case forms::WindowState::kMinimized:
      return "minimized";
    case forms::WindowState::kMaximized:
      return "maximized";
    case forms::WindowState::kNormal:
      break;
  }
  return "normal";
}

/// " WORD N N", nothing without numbers.
std::string NumbersBehind(std::string_view word, const std::vector<int>& numbers) {
  std::string text = numbers.empty() ? std::string() : " " + std::string(word);
  for (const int number : numbers) text += " " + std::to_string(number);
  return text;
}

std::string ControlLine(const forms::ControlReading& control, std::size_t depth) {
  std::string line = std::string(depth * kIndent, ' ') + control.name;
  for (const std::string& text : control.texts) line += " " + Quoted(text);
  if (control.picture) line += " " + (control.picture->empty() ? "empty" : QuotedPath(*control.picture));
  if (control.index) line += " index " + std::to_string(*control.index);
  if (control.typed && control.index == -1 && !control.typed->empty()) {
    line += " text " + Quoted(*control.typed);
  }
  if (control.progress) {
    line += " value " + std::to_string(control.progress->value) + " of " +
            std::to_string(control.progress->maximum);
  }
  if (control.grid) line += " rows " + std::to_string(control.grid->row_count);
  line += NumbersBehind("hidden", control.hidden_buttons);
  line += NumbersBehind("disabled", control.disabled_buttons);
  if (control.hidden) line += " hidden";
  if (control.disabled) line += " disabled";
  if (control.checked) line += " checked";
  if (control.focus) line += " focus";
  return line;
}

void DumpRows(const forms::GridReading& grid, std::vector<std::string>& lines) {
  std::int64_t row = 0;
  for (const auto& cells : grid.rows) {
    std::string line = std::string(2 * kIndent, ' ') + "row " + std::to_string(row);
    for (const std::string& cell : cells) line += " " + Quoted(cell);
    if (row == grid.selected_row) line += " selected";
    lines.push_back(std::move(line));
    ++row;
  }
}

std::string ReadingName(const forms::MenuItem& item) {
  if (!item.array_index()) return item.name();
  return item.name() + "(" + std::to_string(*item.array_index()) + ")";
}

void DumpEntries(const forms::MenuItem& parent, const forms::WindowReading& reading, std::size_t depth,
                 std::vector<std::string>& lines) {
  for (const forms::MenuItem* item : parent.children()) {
    const auto shown = std::find_if(reading.controls.begin(), reading.controls.end(),
                                    [&](const auto& control) { return control.name == ReadingName(*item); });
    if (shown == reading.controls.end()) continue;
    lines.push_back(ControlLine(*shown, depth));
    DumpEntries(*item, reading, depth + 1, lines);
  }
}

std::int64_t Truth(bool value) { return value ? -1 : 0; }

std::string ValueText(const ports::DatabaseValue& value) {
  return std::visit(
      [](const auto& content) -> std::string {
        using Content = std::decay_t<decltype(content)>;
        if constexpr (std::is_same_v<Content, ports::Null>) {
          return "null";
        } else if constexpr (std::is_same_v<Content, std::string>) {
          return Quoted(content);
        } else {
          return Quoted(std::to_string(content));
        }
      },
      value);
}

std::string RowLine(const ports::Recordset& rows) {
  std::string line(kIndent - 1, ' ');
  for (int field = 0; field < rows.FieldCount(); ++field) line += " " + ValueText(rows.Field(field));
  return line;
}

}  // namespace

std::vector<std::string> DumpWindow(const forms::Form& form, const forms::WindowReading& reading) {
  std::string head = "window " + form.name() + " " + Quoted(reading.caption) +
                     (reading.visible ? " visible " : " hidden ") + std::string(StateWord(reading.state));
  if (form.placed()) head += Named("left", form.left()) + Named("top", form.top());
  std::vector<std::string> lines = {std::move(head)};
  for (const auto& control : reading.controls) {
    lines.push_back(ControlLine(control, 1));
    if (control.grid) DumpRows(*control.grid, lines);
  }
  return lines;
}

std::vector<std::string> DumpMenu(const forms::MenuItem& menu, const forms::WindowReading& reading) {
  std::vector<std::string> lines = {"menu " + menu.name()};
  DumpEntries(menu, reading, 1, lines);
  return lines;
}

std::string DumpCall(const app::Application& application) {
  const telephony::CurrentCall& call = application.Call();
  return "CurrentCallHandle=" + HandleText(call.CurrentCallHandle) +
         " CurrentCallerId=" + Quoted(call.CurrentCallerId) + Named("CallerFound", Truth(call.CallerFound)) +
         Named("IsExternal", Truth(call.IsExternal)) + Named("IsTransfered", Truth(call.IsTransfered)) +
         Named("SwitchPending", Truth(call.SwitchPending)) + Named("SwitchFailed", Truth(call.SwitchFailed)) +
         Named("CurrentLineId", application.CurrentLineId()) +
         Named("LineIdSet", Truth(application.LineIdSet())) +
         Named("RedirectAllowed", Truth(application.Flags().RedirectAllowed));
}

std::string DumpFlags(const app::Application& application) {
  const core::ApplicationFlags& flags = application.Flags();
  const std::string line = Named("ApplicationStarted", Truth(flags.ApplicationStarted)) +
                           Named("DatabaseAccessible", Truth(flags.DatabaseAccessible)) +
                           Named("ModalDialogOpen", Truth(flags.ModalDialogOpen)) +
                           Named("CallInProgress", Truth(flags.CallInProgress)) +
                           Named("CallAccepted", Truth(flags.CallAccepted)) +
                           Named("CallerFound", Truth(application.Call().CallerFound)) +
                           Named("ContactDetailShown", Truth(flags.ContactDetailShown)) +
                           Named("ShuttingDown", Truth(flags.ShuttingDown));
  return line.substr(1);
}

std::string DumpIcon(const ports::NotificationRecord& record, const ports::AnsiCodePage& code_page) {
  const auto field = [&](std::span<const char> bytes) { return Quoted(FieldText(bytes, code_page)); };
  return "icon" + Named("cbSize", record.cbSize) + Named("hWnd", record.hWnd) + Named("uID", record.uID) +
         Named("uFlags", record.uFlags) + Named("uCallbackMessage", record.uCallbackMessage) +
         Named("hIcon", record.hIcon) + " szTip=" + field(record.szTip) + " szInfo=" + field(record.szInfo) +
         Named("uTimeout", record.uTimeoutOrVersion) + " szInfoTitle=" + field(record.szInfoTitle) +
         Named("dwInfoFlags", record.dwInfoFlags);
}

std::vector<std::string> DumpSettings(const ports::MemorySettingsStore& settings, std::string_view key) {
  std::vector<std::string> lines;
  for (const auto& [place, value] : settings.values()) {
    if (place.first == key) lines.push_back(std::string(kIndent, ' ') + place.second + " = " + Quoted(value));
  }
  return lines;
}

std::vector<std::string> DumpSql(std::string_view statement, ports::Database& database,
                                 std::string_view connection_string) {
  const auto connection = database.CreateConnection();
  connection->Open(connection_string, {}, {}, ports::Connection::kConnectUnspecified);
  const auto command = database.CreateCommand();
  command->SetCommandType(ports::Command::kText);
  command->SetCommandText(statement);
  command->SetActiveConnection(*connection);
  std::vector<std::string> lines;
  for (const auto rows = command->Execute(ports::Command::kExecuteUnspecified); !rows->AtEnd();
       rows->MoveNext()) {
    lines.push_back(RowLine(*rows));
  }
  return lines;
}

}  // namespace kestro::scenario
