#include "core/registry_settings_module.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "ports/memory_settings_store.h"
#include "support/log_capture.h"

namespace kestro::core {
namespace {

class UnreadableStore final : public ports::SettingsStore {
 public:
  std::int32_t CreateKey(std::string_view) override { return 0; }
  std::optional<std::string> QueryValue(std::string_view, std::string_view) override {
    throw base::RuntimeError(base::kPathAccessError, "Path/File access error");
  }
  std::int32_t SetValue(std::string_view, std::string_view, std::string_view) override { return 0; }
};

TEST(RegistrySettings, AFailingSettingsStoreIsNotedAndNoError) {
  test::LogCapture capture;
  LogModule log(capture);
  ports::MemorySettingsStore store;
  RegistrySettingsModule settings(log, store);
  settings.SaveRegistrySetting("Name", " x ");
  EXPECT_EQ(capture.lines.size(), 4U);  // two entries, two exits, no failure
  store.RefuseWrites(true);
  settings.SaveRegistrySetting("Name", "y");
  const std::string start = "KESTROCTI.RegistrySettingsModule.SetKeyValueAndCreatePath | ";
  EXPECT_EQ(std::ranges::count(capture.lines, start + "Key can not be created, error 5"), 1);
  EXPECT_EQ(std::ranges::count(capture.lines, start + "Setting Name can not be saved, error 5"), 1);
  EXPECT_EQ(settings.GetRegistrySetting("Name", "z"), " x ");
  UnreadableStore unreadable;
  EXPECT_EQ(RegistrySettingsModule(log, unreadable).GetRegistrySetting("Name", "z"), "z");
}

}  // namespace
}  // namespace kestro::core
