#include "adapters/win32/atomic_copy.h"

#include <array>

#include "adapters/win32/plain_file.h"
#include "adapters/win32/system_error.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{64} * 1024;
constexpr const wchar_t* kNamePrefix = L"ctc";

[[noreturn]] void RaiseForFolder() { RaiseSystemError(::GetLastError(), base::kPathNotFound); }

std::wstring FolderOf(const std::wstring& path) {
  const auto separator = path.find_last_of(L"\\/");
  return separator == std::wstring::npos ? L"." : path.substr(0, separator + 1);
}

/// A new file that removes itself unless it was given a name to stay under.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::wstring& folder) {
    std::array<wchar_t, MAX_PATH> name{};
    if (::GetTempFileNameW(folder.c_str(), kNamePrefix, 0, name.data()) == 0) RaiseForFolder();
    path_ = name.data();
    file_ = OwnHandle(::CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, TRUNCATE_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file_) return;
    const DWORD error = ::GetLastError();
    ::DeleteFileW(path_.c_str());
    RaiseSystemError(error, base::kPathNotFound);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    file_.reset();
    if (!renamed_) ::DeleteFileW(path_.c_str());
  }

  void CopyFrom(const Handle& source) {
    for (std::string block = ReadUpTo(source, kBlockBytes); !block.empty();
         block = ReadUpTo(source, kBlockBytes)) {
      WriteAll(file_, block);
    }
  }

  void RenameTo(const std::wstring& target, bool overwrite) {
    if (::FlushFileBuffers(file_.get()) == FALSE) RaiseForFolder();
    file_.reset();
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (overwrite ? MOVEFILE_REPLACE_EXISTING : 0U);
    if (::MoveFileExW(path_.c_str(), target.c_str(), flags) == FALSE) RaiseForFolder();
    renamed_ = true;
  }

 private:
  std::wstring path_;
  Handle file_;
  bool renamed_ = false;
};

}  // namespace

void CopyFileAtomically(const std::wstring& source, const std::wstring& target, bool overwrite) {
  const Handle original = OpenPlainFile(source);
  const DWORD attributes = ::GetFileAttributesW(target.c_str());
  const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
  if (exists && !overwrite) base::RaiseFileError(base::kFileAlreadyExists);
  if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) base::RaiseFileError(base::kPathAccessError);
  TemporaryFile copy(FolderOf(target));
  copy.CopyFrom(original);
  copy.RenameTo(target, overwrite);
}

}  // namespace kestro::adapters
