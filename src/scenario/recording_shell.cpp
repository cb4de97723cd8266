#include "scenario/recording_shell.h"

#include "scenario/quoting.h"

namespace kestro::scenario {

bool RecordingShellExecute::Open(std::string_view target) {
  transcript_.Add("open " + QuotedPath(target));
  return true;
}

void RecordingClipboard::SetText(std::string_view text) {
  inner_.SetText(text);
  transcript_.Add("clipboard " + Quoted(text));
}

ports::SystemInformation ScriptedSystemInformation::Read() {
  if (!known_) return {};
  return {"Qt 6.4.2", "SQLite 3.40.1", "Debian GNU/Linux 12 (bookworm)", "GNOME, wayland"};
}

}  // namespace kestro::scenario
