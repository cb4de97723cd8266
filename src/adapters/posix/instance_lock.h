#pragma once

#include "adapters/posix/file_descriptor.h"
#include "adapters/posix/runtime_folder.h"
#include "ports/instance_guard.h"

namespace kestro::adapters {

/// One program a user: a lock on a file in the user's runtime folder. The system
/// takes it back when the process ends, however it ends; the file stays and
/// means nothing.
class InstanceLock final : public ports::InstanceGuard {
 public:
  explicit InstanceLock(RuntimeFolder folder) : folder_(std::move(folder)) {}

  /// Makes the runtime folder when it is missing. Raises 75 when the folder or the
  /// file in it is not the user's alone, or locks do not work there.
  [[nodiscard]] bool AnotherInstanceRuns() override;
  /// See ActivationSocket.
  void BringOtherToFront() override;

 private:
  RuntimeFolder folder_;
  FileDescriptor lock_;  // held
};

}  // namespace kestro::adapters
