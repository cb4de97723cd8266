#pragma once

#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "ports/logging_component.h"

namespace kestro::test {

/// Keeps every entry of the method log as text: "SOURCE | MESSAGE", errors as
/// "ERROR NUMBER SOURCE | DESCRIPTION". Can refuse the n-th entry from now.
class LogCapture final : public ports::LoggingComponent {
 public:
  void SetFileLogging(bool enabled) override { calls.emplace_back(enabled ? "file on" : "file off"); }
  void SetLogDirectory(std::string_view directory) override {
    calls.push_back("directory " + std::string(directory));
  }
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override {
    lines.push_back("ERROR " + std::to_string(number) + " " + std::string(source) + " | " +
                    std::string(description));
  }
  void LineEntry(const base::LogSource& source, std::string_view message) override {
    if (refuse_in > 0 && --refuse_in == 0) throw base::RuntimeError(75, "Path/File access error");
    lines.push_back(source.Text() + " | " + std::string(message));
  }

  std::vector<std::string> lines;
  std::vector<std::string> calls;
  int refuse_in = 0;  // 0 = never
};

}  // namespace kestro::test
