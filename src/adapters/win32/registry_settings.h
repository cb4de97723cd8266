#pragma once

#include "ports/ansi_code_page.h"
#include "ports/settings_store.h"

namespace kestro::adapters {

/// String values below the current user's root of the registry. Texts there are
/// ANSI; a value that is written is durable with the registry's own next flush.
class RegistrySettings final : public ports::SettingsStore {
 public:
  /// The code page must outlive the object.
  explicit RegistrySettings(const ports::AnsiCodePage& code_page) : code_page_(code_page) {}

  std::int32_t CreateKey(std::string_view key) override;
  /// Opened, asked for type and size, read and closed each time. A text ends
  /// before its terminating zero; a number is its signed decimal text.
  [[nodiscard]] std::optional<std::string> QueryValue(std::string_view key, std::string_view name) override;
  std::int32_t SetValue(std::string_view key, std::string_view name, std::string_view value) override;

 private:
  const ports::AnsiCodePage& code_page_;
};

}  // namespace kestro::adapters
