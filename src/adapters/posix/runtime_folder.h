#pragma once

#include <string>

namespace kestro::adapters {

/// The user's folder for things that live as long as the program, such as
/// sockets: $XDG_RUNTIME_DIR/kestro-cti, or, where that variable names no folder
/// of this user, kestro-cti-UID in the temporary directory.
///
/// Nobody else may look into it or lay anything there: it must be a real folder
/// (no symbolic link) that belongs to the user and has mode 0700.
class RuntimeFolder {
 public:
  /// Works out where it is; touches nothing.
  RuntimeFolder();
  explicit RuntimeFolder(std::string native_path) : path_(std::move(native_path)) {}

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string SocketPath() const { return path_ + "/exchange.sock"; }

  /// Makes the folder when it is missing. Raises 75 when it is not the user's alone.
  void Prepare() const;
  /// False when there is no such folder. Raises 75 when it is not the user's alone.
  [[nodiscard]] bool Exists() const;

 private:
  std::string path_;
};

}  // namespace kestro::adapters
