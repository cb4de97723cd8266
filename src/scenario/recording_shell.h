#pragma once

#include "ports/clipboard.h"
#include "ports/shell_execute.h"
#include "ports/system_information.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// Writes down what is opened; nothing is really opened.
class RecordingShellExecute final : public ports::ShellExecute {
 public:
  explicit RecordingShellExecute(Transcript& transcript) : transcript_(transcript) {}
  bool Open(std::string_view target) override;

 private:
  Transcript& transcript_;
};

/// Passes everything on and writes it down.
class RecordingClipboard final : public ports::Clipboard {
 public:
  RecordingClipboard(ports::Clipboard& inner, Transcript& transcript)
      : inner_(inner), transcript_(transcript) {}
  void SetText(std::string_view text) override;

 private:
  ports::Clipboard& inner_;
  Transcript& transcript_;
};

/// A system that is the same on every machine, or about which nothing can be found out.
class ScriptedSystemInformation final : public ports::SystemInformationTool {
 public:
  void SetNothingKnown() { known_ = false; }
  bool StartTool() override { return false; }
  [[nodiscard]] ports::SystemInformation Read() override;

 private:
  bool known_ = true;
};

}  // namespace kestro::scenario
