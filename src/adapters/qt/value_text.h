#pragma once

#include <QTextEdit>

namespace kestro::adapters {

/// A text that shows data: plain, selectable, wrapped inside words where it must
/// be, as high as its text up to a few lines (then it scrolls). It stands on the
/// window like a label, not in a box.
class ValueText final : public QTextEdit {
 public:
  enum class Weight { kNormal, kHeading };

  ValueText(QWidget* parent, Weight weight);

  void SetValue(const QString& value);
  [[nodiscard]] const QString& value() const { return value_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void UseHeadingFont();
  void UpdateScrolling();
  [[nodiscard]] int LineHeight() const;
  /// Lines of the text in that width.
  [[nodiscard]] int LinesAt(int width) const;

  QString value_;
  Weight weight_;
};

}  // namespace kestro::adapters
