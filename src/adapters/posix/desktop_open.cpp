#include "adapters/posix/desktop_open.h"

#include <algorithm>
#include <array>
#include <sys/stat.h>

#include "adapters/posix/tel_uri.h"
#include "adapters/posix/utf8.h"
#include "base/runtime_error.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kLettersAndDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::string_view kPlainInPath = "/-._~";
/// Every mark that an address may hold, and "%", which begins what is encoded already.
constexpr std::string_view kPlainInAddress = "-._~:/?#[]@!$&'()*+,;=%";
constexpr std::string_view kFurtherMarksInScheme = "+-.";
constexpr std::array<std::string_view, 3> kSchemes = {"http", "https", "mailto"};

bool IsIn(std::string_view set, char character) { return set.find(character) != std::string_view::npos; }

std::string Encoded(std::string_view text, std::string_view plain) {
  std::string encoded;
  for (const char character : text) {
    if (IsIn(kLettersAndDigits, character) || IsIn(plain, character)) {
      encoded.push_back(character);
    } else {
      AppendPercentEncoded(encoded, character);
    }
  }
  return encoded;
}

/// What stands before the ":" of an address; empty for a path, whose drive is one letter.
std::string_view SchemeOf(std::string_view target) {
  const std::size_t colon = target.find(':');
  if (colon == std::string_view::npos || colon < 2) return {};
  const std::string_view scheme = target.substr(0, colon);
  const bool valid = std::all_of(scheme.begin(), scheme.end(), [](char character) {
    return IsIn(kLettersAndDigits, character) || IsIn(kFurtherMarksInScheme, character);
  });
  return valid ? scheme : std::string_view();
}

/// The address in a form that every program understands; nothing for one that is not opened.
std::optional<std::string> Address(std::string_view target, std::string_view scheme) {
  const bool accepted = std::any_of(kSchemes.begin(), kSchemes.end(), [scheme](std::string_view known) {
    return base::EqualIgnoringCase(known, scheme);
  });
  const std::string_view rest = target.substr(scheme.size() + 1);
  const bool is_mail = base::EqualIgnoringCase(scheme, "mailto");
  const bool complete = is_mail ? !rest.empty() : rest.starts_with("//") && rest.size() > 2;
  if (!accepted || !complete) return std::nullopt;
  return Encoded(target, kPlainInAddress);
}

}  // namespace

bool DesktopOpen::Open(std::string_view target) {
  if (HasControlCharacter(target)) return false;
  const std::string_view scheme = SchemeOf(target);
  const auto uri = scheme.empty() ? FileUri(target) : Address(target, scheme);
  if (!uri) return false;
  try {
    processes_.Start({std::string(kDesktopOpener), *uri}, kPatience);
    return true;
  } catch (const base::RuntimeError&) {
    return false;
  }
}

std::optional<std::string> DesktopOpen::FileUri(std::string_view path) const {
  try {
    const std::string native = native_path_(path);
    struct stat status {};
    const bool opens =
        native.starts_with('/') && ::stat(native.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    if (!opens) return std::nullopt;
    return "file://" + Encoded(native, kPlainInPath);
  } catch (const base::RuntimeError&) {  // no path that this system has
    return std::nullopt;
  }
}

}  // namespace kestro::adapters
