#include "adapters/posix/system_error.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace kestro::adapters {

void RaiseSystemError(int error, std::int32_t number_when_missing) {
  switch (error) {
    case ENOENT:
      base::RaiseFileError(number_when_missing);
    case ENOTDIR:
      base::RaiseFileError(base::kPathNotFound);
    case EEXIST:
      base::RaiseFileError(base::kFileAlreadyExists);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      base::RaiseFileError(base::kPathAccessError);
    default:
      base::RaiseFileError(base::kPathAccessError, std::generic_category().message(error));
  }
}

}  // namespace kestro::adapters
