#include "core/masking_log.h"

#include <gtest/gtest.h>

#include "ports/memory_settings_store.h"
#include "support/log_capture.h"

namespace kestro {
namespace {

TEST(MaskNumbers, LeavesNoTelephoneNumberReadable) {
  const struct {
    const char* text;
    const char* masked;
  } cases[] = {
      {"", ""},
      {"Method started.", "Method started."},
      {"error 5, 1234", "error 5, 1234"},
      {"12345", "***45"},
      {"+420 602 111 222", "+*** *** *** *22"},
      {"call from (0602) 111-222.", "call from (****) ***-*22."},
      {"602/111222 and 603.222.333", "***/****22 and ***.***.*33"},
      {"x602111222y", "x*******22y"},
      {"1234|5678", "1234|5678"},
      {"12\n345", "12\n345"},
      {"602\xC2\xA0"
       "111\xE2\x80\x91"
       "222",
       "***\xC2\xA0"
       "***\xE2\x80\x91"
       "*22"},
      {"Novák 602111222 Š", "Novák *******22 Š"},
      {"\xFF"
       "602111222\xFF",
       "\xFF*******22\xFF"},
      {"602111222, 603222333", "*******22, *******33"},
  };
  for (const auto& entry : cases) EXPECT_EQ(entry.masked, core::MaskNumbers(entry.text)) << entry.text;
}

TEST(MaskingLog, MasksOnlyWhenTheSettingsSaySo) {
  constexpr base::LogSource kSource{"KESTROCTI.Module", "P602111222"};
  const struct {
    const char* setting;  // null = none
    std::vector<std::string> lines;
  } cases[] = {
      {nullptr,
       {"KESTROCTI.Module.P602111222 | to 602111222", "ERROR 602111222 A602111222:: | no 602111222"}},
      {"0", {"KESTROCTI.Module.P602111222 | to 602111222", "ERROR 602111222 A602111222:: | no 602111222"}},
      {"1", {"KESTROCTI.Module.P602111222 | to *******22", "ERROR 602111222 A*******22:: | no *******22"}},
  };
  for (const auto& entry : cases) {
    ports::MemorySettingsStore settings;
    settings.CreateKey(core::kLogKey);
    if (entry.setting != nullptr) settings.SetValue(core::kLogKey, core::kMaskNumbers, entry.setting);
    test::LogCapture capture;
    core::MaskingLog log(capture, settings);
    log.SetLogDirectory("C:\\602111222");
    log.SetFileLogging(true);
    log.LineEntry(kSource, "to 602111222");
    log.ErrorEntry(602111222, "A602111222::", "no 602111222");
    EXPECT_EQ(entry.lines, capture.lines);
    EXPECT_EQ((std::vector<std::string>{"directory C:\\602111222", "file on"}), capture.calls);
  }
}

}  // namespace
}  // namespace kestro
