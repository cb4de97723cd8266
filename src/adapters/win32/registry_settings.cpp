#include "adapters/win32/registry_settings.h"

#include <windows.h>

#include <cstring>
#include <memory>
#include <vector>

namespace kestro::adapters {
namespace {

constexpr REGSAM kAllAccess = 63;          // every right on the key itself
constexpr REGSAM kReadAccess = 0x20019;    // KEY_READ
constexpr DWORD kMostBytes = 64UL << 10U;  // of a text; more is no setting of ours

struct KeyCloser {
  using pointer = HKEY;
  void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using Key = std::unique_ptr<HKEY, KeyCloser>;

std::int32_t Result(LSTATUS status) { return static_cast<std::int32_t>(status); }

/// The key below the current user's root, or the error.
LSTATUS Open(const std::string& ansi_key, REGSAM access, Key& key) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegOpenKeyExA(HKEY_CURRENT_USER, ansi_key.c_str(), 0, access, &opened);
  if (status == ERROR_SUCCESS) key.reset(opened);
  return status;
}

std::optional<std::string> ReadText(const Key& key, const std::string& name, DWORD size) {
  if (size == 0) return std::string();
  std::vector<BYTE> buffer(size);
  DWORD type = 0;
  // The value may have changed since its size was asked for: only what was filled counts.
  if (::RegQueryValueExA(key.get(), name.c_str(), nullptr, &type, buffer.data(), &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  if (type != REG_SZ || size > buffer.size()) return std::nullopt;
  std::string text(size, '\0');
  std::memcpy(text.data(), buffer.data(), size);
  // Somebody else may have stored it without the zero that ends it.
  if (!text.empty() && text.back() == '\0') text.pop_back();
  return text;
}

std::optional<std::string> ReadNumber(const Key& key, const std::string& name) {
  DWORD value = 0;
  DWORD size = sizeof(value);
  DWORD type = 0;
  auto* const bytes = reinterpret_cast<BYTE*>(&value);
  if (::RegQueryValueExA(key.get(), name.c_str(), nullptr, &type, bytes, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  if (type != REG_DWORD || size != sizeof(value)) return std::nullopt;
  return std::to_string(static_cast<std::int32_t>(value));
}

}  // namespace

std::int32_t RegistrySettings::CreateKey(std::string_view key) {
  HKEY made = nullptr;
  const LSTATUS status = ::RegCreateKeyExA(HKEY_CURRENT_USER, code_page_.FromText(key).c_str(), 0, nullptr, 0,
                                           kAllAccess, nullptr, &made, nullptr);
  if (status == ERROR_SUCCESS) ::RegCloseKey(made);
  return Result(status);
}

std::optional<std::string> RegistrySettings::QueryValue(std::string_view key, std::string_view name) {
  Key opened;
  if (Open(code_page_.FromText(key), kReadAccess, opened) != ERROR_SUCCESS) return std::nullopt;
  const std::string ansi_name = code_page_.FromText(name);
  DWORD type = 0;
  DWORD size = 0;
  if (::RegQueryValueExA(opened.get(), ansi_name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  if (type == REG_DWORD) return ReadNumber(opened, ansi_name);
  if (type != REG_SZ || size > kMostBytes) return std::nullopt;
  const auto text = ReadText(opened, ansi_name, size);
  return text ? std::optional(code_page_.ToText(*text)) : std::nullopt;
}

std::int32_t RegistrySettings::SetValue(std::string_view key, std::string_view name, std::string_view value) {
  Key opened;
  const LSTATUS status = Open(code_page_.FromText(key), kAllAccess, opened);
  if (status != ERROR_SUCCESS) return Result(status);
  const std::string text = code_page_.FromText(value);
  const auto* const bytes = reinterpret_cast<const BYTE*>(text.c_str());
  return Result(::RegSetValueExA(opened.get(), code_page_.FromText(name).c_str(), 0, REG_SZ, bytes,
                                 static_cast<DWORD>(text.size() + 1)));
}

}  // namespace kestro::adapters
