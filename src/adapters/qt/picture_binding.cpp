#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QWidget>

#include "adapters/qt/bindings.h"
#include "adapters/qt/qt_text.h"
#include "base/runtime_error.h"

namespace kestro::adapters {
namespace {

constexpr qint64 kMostPixels = 64'000'000;
constexpr int kBytesPerPixel = 4;
constexpr int kSharpSize = 640;  // logical pixels: no picture is shown larger than that
constexpr int kPreferredSize = 120;
constexpr int kSmallestSize = 64;

/// The picture scaled down to what can be shown; a null image for a file that is no usable picture.
QImage LoadPicture(const QString& native_file, double pixel_ratio) {
  if (!QFileInfo(native_file).isFile()) return {};
  QImageReader reader(native_file);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  // Bitmaps only: other formats are programs in their own right.
  static const QList<QByteArray> formats{"bmp", "gif", "ico", "jpeg", "jpg", "png"};
  if (!formats.contains(reader.format())) return {};
  const QSize size = reader.size();
  if (size.isEmpty() || qint64{size.width()} * size.height() > kMostPixels) return {};
  QImageReader::setAllocationLimit(static_cast<int>(kMostPixels * kBytesPerPixel / 1'000'000));
  const int side = static_cast<int>(kSharpSize * pixel_ratio);
  if (size.width() > side || size.height() > side) {
    reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio));
  }
  return reader.read();
}

/// Shows an image as large as it fits, in its own proportions.
class PictureView final : public QWidget {
 public:
  explicit PictureView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }

  void SetImage(QImage image) {
    image_ = std::move(image);
    update();
  }
  [[nodiscard]] bool empty() const { return image_.isNull(); }
  [[nodiscard]] QSize sizeHint() const override { return {kPreferredSize, kPreferredSize}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {kSmallestSize, kSmallestSize}; }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    if (empty()) return;
    QRect place(QPoint(), image_.size().scaled(size(), Qt::KeepAspectRatio));
    place.moveCenter(rect().center());
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image_);
  }

 private:
  QImage image_;
};

class PictureBinding final : public ControlBinding {
 public:
  PictureBinding(forms::Picture& picture, QWidget& parent, BindingOwner& owner)
      : ControlBinding(picture, owner), picture_(picture), widget_(*new PictureView(&parent)) {}

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  void SyncContent() override {
    if (picture_.file() == file_) return;
    file_ = picture_.file();
    widget_.SetImage(file_.empty() ? QImage() : Load());
  }
  [[nodiscard]] QImage Load() const {
    try {
      return LoadPicture(ToQString(owner().NativePath(file_)), widget_.devicePixelRatioF());
    } catch (const base::RuntimeError&) {  // a path that this system cannot have
      return {};
    }
  }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.picture = widget_.empty() ? std::string() : file_;
  }

  forms::Picture& picture_;
  PictureView& widget_;
  std::string file_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Picture& picture, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<PictureBinding>(picture, parent, owner);
}

}  // namespace kestro::adapters
