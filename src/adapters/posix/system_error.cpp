#include "adapters/posix/system_error.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace kestro::adapters {
namespace {

std::string TextOf(std::int32_t number) {
  switch (number) {
    case base::kFileNotFound:
      return "File not found";
    case base::kFileAlreadyExists:
      return "File already exists";
    case base::kPathNotFound:
      return "Path not found";
    default:
      return "Path/File access error";
  }
}

}  // namespace

void RaiseError(std::int32_t number, std::string_view more) {
  std::string text = TextOf(number);
  if (!more.empty()) text.append(": ").append(more);
  throw base::RuntimeError(number, text);
}

void RaiseSystemError(int error, std::int32_t number_when_missing) {
  switch (error) {
    case ENOENT:
      RaiseError(number_when_missing);
    case ENOTDIR:
      RaiseError(base::kPathNotFound);
    case EEXIST:
      RaiseError(base::kFileAlreadyExists);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      RaiseError(base::kPathAccessError);
    default:
      RaiseError(base::kPathAccessError, std::generic_category().message(error));
  }
}

}  // namespace kestro::adapters
