#pragma once

#include <memory>
#include <string>

#include "jet/file_layer.h"

namespace kestro::adapters {

/// The files of this system for the database engine. Has no state; any number of objects may exist. The lock
/// is the operating system's: advisory where the system has nothing better.
class SystemFileLayer : public jet::FileLayer {
 public:
  [[nodiscard]] std::unique_ptr<jet::File> Open(const std::string& path, jet::FileMode mode) override;
  [[nodiscard]] bool Exists(const std::string& path) override;
  void Remove(const std::string& path) override;
  void SyncFolder(const std::string& path) override;
};

}  // namespace kestro::adapters
