#pragma once

#include <string>
#include <string_view>

#include "ports/logging_component.h"
#include "ports/settings_store.h"

namespace kestro::core {

/// Key and value of the settings that switch the masking on ("1").
inline constexpr std::string_view kLogKey = R"(Software\Kestro\CTI\Log)";
inline constexpr std::string_view kMaskNumbers = "MaskNumbers";

/// The text with every telephone number in it made unreadable: of a run of five
/// digits or more each digit but the last two becomes "*", so that the length and
/// the number of characters stay. Blanks, dashes (also typographic ones), plus,
/// brackets, dots and slashes between the digits belong to the run. What merely
/// looks like a number, a long handle for instance, is masked as well.
[[nodiscard]] std::string MaskNumbers(std::string_view text);

/// Stands in front of the logging component and masks the texts of the entries
/// when the user's settings ask for it; otherwise every call goes on as it is.
class MaskingLog final : public ports::LoggingComponent {
 public:
  /// Reads the setting once. The component must outlive the object.
  MaskingLog(ports::LoggingComponent& component, ports::SettingsStore& settings)
      : component_(component), masks_(settings.QueryValue(kLogKey, kMaskNumbers) == "1") {}

  void Reserved() override { component_.Reserved(); }
  void SetFileLogging(bool enabled) override;
  void SetLogDirectory(std::string_view directory) override { component_.SetLogDirectory(directory); }
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override;
  void LineEntry(const base::LogSource& source, std::string_view message) override;

 private:
  /// Nothing is stored while file logging is off; then masking would be work for nothing.
  [[nodiscard]] bool Masks() const { return masks_ && enabled_; }

  ports::LoggingComponent& component_;
  bool masks_;
  bool enabled_ = false;
};

}  // namespace kestro::core
