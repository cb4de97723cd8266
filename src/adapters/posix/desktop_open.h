#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "adapters/posix/detached_processes.h"
#include "ports/shell_execute.h"

namespace kestro::adapters {

/// The program of every desktop that opens addresses with what the user has chosen for them.
inline constexpr std::string_view kDesktopOpener = "xdg-open";

/// Opens web and mail addresses and files through the desktop. An address of
/// another kind is refused: what a desktop does with one depends on what is installed.
class DesktopOpen final : public ports::ShellExecute {
 public:
  /// Native path of a system path; may raise base::RuntimeError.
  using NativePathFunction = std::function<std::string(std::string_view path)>;

  static constexpr std::chrono::milliseconds kPatience{2000};

  /// `processes` must outlive it.
  DesktopOpen(NativePathFunction native_path, DetachedProcesses& processes)
      : native_path_(std::move(native_path)), processes_(processes) {}

  /// Blocks for at most kPatience to see whether the desktop refuses.
  bool Open(std::string_view target) override;

 private:
  [[nodiscard]] std::optional<std::string> FileUri(std::string_view path) const;

  NativePathFunction native_path_;
  DetachedProcesses& processes_;
};

}  // namespace kestro::adapters
