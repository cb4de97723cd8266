#pragma once

#include <filesystem>
#include <string>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/sqlite/sqlite_database.h"
#include "adapters/win32/code_page.h"
#include "adapters/win32/win32_file_system.h"
#include "scenario/machine.h"

namespace kestro::programs {

/// The machine of one scenario: its folder is the application's drive C:, whose
/// program folder gets the template and the icons that lie beside the running
/// program.
class WindowsMachine final : public scenario::Machine {
 public:
  /// `folder` exists and is empty, and outlives the machine; so does the program
  /// folder `installed`. std::filesystem errors come through.
  WindowsMachine(const std::filesystem::path& folder, const std::filesystem::path& installed);

  [[nodiscard]] ports::FileSystem& Files() override { return files_; }
  [[nodiscard]] ports::Database& Database() override { return database_; }
  [[nodiscard]] ports::AnsiCodePage& CodePage() override { return code_page_; }
  void WriteFile(std::string_view path, std::string_view bytes) override;
  void RemoveFile(std::string_view path) override;
  void SetReadOnly(std::string_view path) override;

  /// Where a path of the application really lies. Raises 76 for one outside of its drive.
  [[nodiscard]] std::string RealPath(std::string_view path) const;

 private:
  std::string folder_;
  adapters::Win32FileSystem files_;
  adapters::SystemFileLayer database_files_;
  adapters::SqliteDatabase database_;
  // Transcripts must not depend on the language of the machine.
  adapters::SystemCodePage code_page_{adapters::SystemCodePage::kCentralEuropean};
};

}  // namespace kestro::programs
