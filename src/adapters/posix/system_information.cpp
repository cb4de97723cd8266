#include "adapters/posix/system_information.h"

#include <cstdlib>
#include <fstream>
#include <sys/utsname.h>

#include "adapters/posix/utf8.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kNameField = "PRETTY_NAME=";
constexpr std::size_t kMostCharacters = 100;
constexpr int kMostLines = 200;

/// What comes from outside is shown on one line of bearable length, or not at all.
std::string Presentable(std::string_view text) {
  if (HasControlCharacter(text) || !base::IsUtf8(text)) return {};
  return std::string(base::FirstCharacters(base::Trim(text), kMostCharacters));
}

/// The distribution's own name of itself; empty when the file does not tell.
std::string DistributionName(const std::string& file) {
  std::ifstream in(file);
  std::string line;
  for (int number = 0; number < kMostLines && std::getline(in, line); ++number) {
    if (!line.starts_with(kNameField)) continue;
    std::string_view name = std::string_view(line).substr(kNameField.size());
    const bool quoted =
        name.size() >= 2 && (name.front() == '"' || name.front() == '\'') && name.back() == name.front();
    return Presentable(quoted ? name.substr(1, name.size() - 2) : name);
  }
  return {};
}

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : Presentable(value);
}

std::string Joined(const std::string& first, const std::string& second) {
  return first.empty() || second.empty() ? first + second : first + ", " + second;
}

std::string KernelName() {
  utsname names{};
  if (::uname(&names) != 0) return {};
  return std::string(names.sysname) + " " + names.release + " " + names.machine;
}

}  // namespace

ports::SystemInformation PosixSystemInformation::Read() {
  return {toolkit_, database_engine_, Joined(DistributionName(release_file_), KernelName()),
          Joined(Environment("XDG_CURRENT_DESKTOP"), Environment("XDG_SESSION_TYPE"))};
}

}  // namespace kestro::adapters
