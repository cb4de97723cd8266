#pragma once

#include <span>
#include <string>
#include <vector>

#include "ports/ansi_code_page.h"
#include "ports/file_system.h"
#include "ports/notification_area.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// A notification area that only writes down what it is given, and sends the
/// events that a script asks for.
class RecordingNotificationArea final : public ports::NotificationArea {
 public:
  RecordingNotificationArea(const ports::FileSystem& files, const ports::AnsiCodePage& code_page,
                            Transcript& transcript)
      : files_(files), code_page_(code_page), transcript_(transcript) {}

  /// Handles are 1, 2, 3 ..., one a file.
  ports::IconHandle LoadIconFile(std::string_view path) override;
  bool NotifyIcon(ports::NotificationMessage message, const ports::NotificationRecord& record) override;
  [[nodiscard]] bool Available() override { return true; }
  void SetCallback(ports::IconCallback callback) override { callback_ = std::move(callback); }

  /// Path of the file behind an icon's handle, empty for another number.
  [[nodiscard]] std::string_view IconFile(ports::IconHandle icon) const;

  /// An event of the icon; false when the icon is not there or nobody receives its events.
  bool SendEvent(ports::IconEvent event);

 private:
  void RecordModify(const ports::NotificationRecord& record);
  [[nodiscard]] std::string FileText(ports::IconHandle icon) const;

  const ports::FileSystem& files_;
  const ports::AnsiCodePage& code_page_;
  Transcript& transcript_;
  ports::IconCallback callback_;
  std::vector<std::string> icon_files_;  // handle - 1 is the place
  bool icon_shown_ = false;
};

/// Text of a fixed field of the notification record, up to its terminating zero or its end.
[[nodiscard]] std::string FieldText(std::span<const char> field, const ports::AnsiCodePage& code_page);

}  // namespace kestro::scenario
