#include "adapters/win32/win32_file_system.h"

#include "adapters/win32/atomic_copy.h"
#include "adapters/win32/plain_file.h"
#include "adapters/win32/system_error.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kLongestName = 255;  // UTF-16 units

std::string WithoutTrailingSeparator(std::string path) {
  while (!path.empty() && path.back() == '\\') path.pop_back();
  return path;
}

}  // namespace

Win32FileSystem::Win32FileSystem(std::string program_folder, std::string user_data_folder,
                                 PathTranslator real_path)
    : program_folder_(WithoutTrailingSeparator(std::move(program_folder))),
      user_data_folder_(WithoutTrailingSeparator(std::move(user_data_folder))),
      real_path_(std::move(real_path)) {}

std::wstring Win32FileSystem::RealPath(std::string_view path) const {
  if (path.find('\0') != std::string_view::npos) base::RaiseFileError(base::kPathNotFound);
  return ToWide(real_path_ ? real_path_(path) : std::string(path));
}

unsigned long Win32FileSystem::AttributesOf(std::string_view path) const {
  try {
    return ::GetFileAttributesW(RealPath(path).c_str());
  } catch (const base::RuntimeError&) {
    return INVALID_FILE_ATTRIBUTES;
  }
}

bool Win32FileSystem::FileExists(std::string_view path) const {
  const auto attributes = AttributesOf(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool Win32FileSystem::FolderExists(std::string_view path) const {
  const auto attributes = AttributesOf(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void Win32FileSystem::CreateFolder(std::string_view path) {
  if (::CreateDirectoryW(RealPath(path).c_str(), nullptr) == FALSE) {
    RaiseSystemError(::GetLastError(), base::kPathNotFound);
  }
}

void Win32FileSystem::CopyFileTo(std::string_view source, std::string_view target, bool overwrite) {
  // The system calls a name that no file can have a missing path.
  if (ToWide(ports::GetFileName(target)).size() > kLongestName) {
    base::RaiseFileError(base::kPathAccessError, "File name too long");
  }
  CopyFileAtomically(RealPath(source), RealPath(target), overwrite);
}

int Win32FileSystem::FileAttributes(std::string_view path) const {
  constexpr unsigned long kFirstByte = 0xFF;  // read-only, hidden, system, folder, archive
  const auto attributes = AttributesOf(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) base::RaiseFileError(base::kFileNotFound);
  return static_cast<int>(attributes & kFirstByte);
}

std::unique_ptr<ports::FileReader> Win32FileSystem::OpenForReading(std::string_view path) const {
  return std::make_unique<PlainFileReader>(OpenPlainFile(RealPath(path)));
}

std::string Win32FileSystem::ReadStart(std::string_view path, std::size_t most_bytes) const {
  return ReadUpTo(OpenPlainFile(RealPath(path)), most_bytes);
}

std::string Win32FileSystem::ReadTextLinesJoined(std::string_view path, std::size_t most_bytes) const {
  std::string text = ReadToEnd(OpenPlainFile(RealPath(path)), most_bytes);
  std::erase_if(text, [](char byte) { return byte == '\r' || byte == '\n'; });
  return text;
}

std::string Win32FileSystem::UserDataFolder() const {
  if (user_data_folder_.empty()) base::RaiseFileError(base::kPathNotFound, "there is no home folder");
  return user_data_folder_;
}

}  // namespace kestro::adapters
