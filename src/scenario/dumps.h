#pragma once

#include <string>
#include <vector>

#include "app/application.h"
#include "forms/front_end_driver.h"
#include "ports/ansi_code_page.h"
#include "ports/database.h"
#include "ports/memory_settings_store.h"

namespace kestro::scenario {

/// State as transcript lines. Truth values are printed as -1 and 0.

/// The window and, below it, one line a control: its name, its texts in quotes,
/// then the words that hold. An editable list that holds a text of its own adds
/// `text "..."`. A grid has its column captions as texts and below it a line for
/// each of its first rows. A tool bar has its tool tips ("" for a gap) and
/// `hidden N N` and `disabled N N` for its buttons, before the words about itself.
[[nodiscard]] std::vector<std::string> DumpWindow(const forms::Form& form,
                                                  const forms::WindowReading& reading);
/// The menu's entries as the front end shows them (`reading` is that of the menu's window).
[[nodiscard]] std::vector<std::string> DumpMenu(const forms::MenuItem& menu,
                                                const forms::WindowReading& reading);
[[nodiscard]] std::string DumpCall(const app::Application& application);
[[nodiscard]] std::string DumpFlags(const app::Application& application);
[[nodiscard]] std::string DumpIcon(const ports::NotificationRecord& record,
                                   const ports::AnsiCodePage& code_page);
/// Name and value of each setting under `key`, in the order of the names.
[[nodiscard]] std::vector<std::string> DumpSettings(const ports::MemorySettingsStore& settings,
                                                    std::string_view key);
/// Runs the statement and prints its rows. Raises base::RuntimeError.
[[nodiscard]] std::vector<std::string> DumpSql(std::string_view statement, ports::Database& database,
                                               std::string_view connection_string);

}  // namespace kestro::scenario
