#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestro::ports {

/// Message-box styles; the buttons and the icon are added up.
enum BoxStyle : int {
  kOkOnly = 0,
  kYesNo = 4,
  kCritical = 16,
  kQuestion = 32,
  kExclamation = 48,
  kInformation = 64,
  kSecondButton = 256,  // takes the Enter key in place of the first one
};

enum class BoxAnswer { kOk, kCancel, kYes, kNo };

/// Modal message boxes with the program's title; return when the user has answered.
class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  virtual BoxAnswer Show(std::string_view text, int style) = 0;
};

struct FileDialogRequest {
  std::string title;
  std::string filter;             // "Description|*.ext|" pairs
  std::string default_extension;  // with its dot where the caller gives it
  std::string initial_path;       // may be empty
  std::string initial_name;
};

/// The common open-file dialog.
class FileDialogs {
 public:
  virtual ~FileDialogs() = default;
  /// System path of the chosen file; nothing when the user cancelled.
  virtual std::optional<std::string> OpenFile(const FileDialogRequest& request) = 0;
};

}  // namespace kestro::ports
