#include "adapters/win32/shell_open.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <shellapi.h>
#include <shlwapi.h>
#include <string>

#include "adapters/win32/wide_text.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::array<std::string_view, 3> kAddressStarts = {"http://", "https://", "mailto:"};
constexpr INT_PTR kLargestFailure = 32;  // what ShellExecute returns

bool HasControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
  });
}

bool IsAddress(std::string_view target) {
  return std::any_of(kAddressStarts.begin(), kAddressStarts.end(), [&](std::string_view start) {
    return target.size() > start.size() && base::EqualIgnoringCase(target.substr(0, start.size()), start);
  });
}

/// A file with a full path that the shell shows rather than runs.
bool IsDocument(std::string_view target, const std::wstring& wide) {
  const bool full = target.size() > 3 && (target.substr(1, 2) == ":\\" || target.starts_with("\\\\"));
  if (!full) return false;
  const DWORD attributes = ::GetFileAttributesW(wide.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
  return ::AssocIsDangerous(wide.c_str()) == FALSE;
}

}  // namespace

bool ShellOpen::Open(std::string_view target) {
  if (HasControlCharacter(target)) return false;
  const std::wstring wide = ToWide(target);
  if (!IsAddress(target) && !IsDocument(target, wide)) return false;
  const HINSTANCE result = ::ShellExecuteW(nullptr, L"open", wide.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(result) > kLargestFailure;
}

}  // namespace kestro::adapters
