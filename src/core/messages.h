#pragma once

#include <initializer_list>
#include <string>

#include "core/localization.h"
#include "ports/message_boxes.h"

namespace kestro::core {

/// Message boxes with catalogue texts.
class Messages {
 public:
  Messages(Localization& texts, ports::MessageBoxes& boxes) : texts_(texts), boxes_(boxes) {}

  ports::BoxAnswer Show(int style, std::string_view text_id,
                        std::initializer_list<std::string> parameters = {}) {
    return boxes_.Show(texts_.GetLocalizedString(text_id, parameters), style);
  }
  /// A text that comes ready from elsewhere.
  void ShowText(int style, std::string_view text) { boxes_.Show(text, style); }
  void Notice(std::string_view text_id, std::initializer_list<std::string> parameters = {}) {
    Show(ports::kInformation, text_id, parameters);
  }
  void Warning(std::string_view text_id, std::initializer_list<std::string> parameters = {}) {
    Show(ports::kExclamation, text_id, parameters);
  }

 private:
  Localization& texts_;
  ports::MessageBoxes& boxes_;
};

}  // namespace kestro::core
