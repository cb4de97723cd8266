#pragma once

#include <QLabel>

namespace kestro::adapters {

/// A caption beside or above a field. A long caption is wrapped into lines, so
/// that it never decides the width of the window.
class CaptionLabel final : public QLabel {
 public:
  explicit CaptionLabel(QWidget* parent);

  /// The caption with its mnemonic mark. It leads to the buddy, if there is one.
  void SetCaption(const QString& caption);
  [[nodiscard]] const QString& caption() const { return caption_; }
  void SetField(QWidget& field);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void UpdateText();

  QString caption_;
};

}  // namespace kestro::adapters
