#pragma once

#include <filesystem>
#include <string>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/posix/iconv_code_page.h"
#include "adapters/posix/path_map.h"
#include "adapters/posix/posix_file_system.h"
#include "adapters/posix/user_folders.h"
#include "adapters/sqlite/sqlite_database.h"
#include "scenario/machine.h"

namespace kestro::programs {

/// The scenario's folder is the application's drive C:. Its program folder gets
/// the template and the icons that lie in `installed`, beside the running program
/// unless told otherwise.
class PosixMachine final : public scenario::Machine {
 public:
  /// `folder` must outlive the machine. std::filesystem errors come through.
  explicit PosixMachine(const std::filesystem::path& folder,
                        const std::filesystem::path& installed = adapters::ExecutableFolder());

  [[nodiscard]] ports::FileSystem& Files() override { return files_; }
  [[nodiscard]] ports::Database& Database() override { return database_; }
  [[nodiscard]] ports::AnsiCodePage& CodePage() override { return code_page_; }
  void WriteFile(std::string_view path, std::string_view bytes) override;
  void RemoveFile(std::string_view path) override;
  void SetReadOnly(std::string_view path) override;
  [[nodiscard]] std::string NativePath(std::string_view path) const { return paths_.ToNative(path); }

 private:
  adapters::PathMap paths_;
  adapters::PosixFileSystem files_;
  adapters::IconvCodePage code_page_;
  adapters::SystemFileLayer database_files_;
  adapters::SqliteDatabase database_;
};

}  // namespace kestro::programs
