#include <algorithm>

#include <QTabBar>
#include <QTabWidget>

#include "adapters/qt/bindings.h"
#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

class Tabs final : public QTabBar {
 public:
  using QTabBar::QTabBar;

  /// Width of all tabs in full, whatever the present width is.
  [[nodiscard]] int FullWidth() const {
    int width = 0;
    for (int i = 0; i < count(); ++i) width += tabSizeHint(i).width();
    return width;
  }
};

/// Tab pages that like to be wide enough for all their tabs, and scroll them where they cannot be.
class Pages final : public QTabWidget {
 public:
  explicit Pages(QWidget* parent) : QTabWidget(parent), tabs_(*new Tabs(this)) {
    setTabBar(&tabs_);
    setElideMode(Qt::ElideRight);
    setUsesScrollButtons(true);
  }

  [[nodiscard]] QSize sizeHint() const override {
    const int widest = TextWidth(fontMetrics(), kWidestTabs);
    const QSize base = QTabWidget::sizeHint();
    return {std::max(base.width(), std::min(tabs_.FullWidth() + kAroundTabs, widest)), base.height()};
  }

 private:
  static constexpr int kWidestTabs = 100;  // characters
  static constexpr int kAroundTabs = 4;    // pixels

  Tabs& tabs_;
};

class TabPagesBinding final : public ControlBinding {
 public:
  TabPagesBinding(forms::TabPages& pages, QWidget& parent, BindingOwner& owner)
      : ControlBinding(pages, owner), pages_(pages), widget_(*new Pages(&parent)) {
    for (int i = 0; i < pages.page_count(); ++i) widget_.addTab(new QWidget(&widget_), QString());
    QObject::connect(&widget_, &QTabWidget::currentChanged, &widget_, [this](int index) {
      if (!syncing()) this->owner().UserActed(pages_, [this, index] { pages_.SetTab(index); });
    });
  }

  [[nodiscard]] QWidget& widget() const override { return widget_; }
  [[nodiscard]] QWidget* ContainerWidget(const forms::Container& container) const override {
    for (int i = 0; i < pages_.page_count(); ++i) {
      if (&container == static_cast<const forms::Container*>(&pages_.page(i))) return widget_.widget(i);
    }
    return nullptr;
  }

 private:
  void SyncContent() override {
    for (int i = 0; i < pages_.page_count(); ++i) widget_.setTabText(i, ToQString(pages_.page(i).caption()));
    widget_.setCurrentIndex(pages_.tab());
  }
  void ReadContent(forms::ControlReading& reading) const override {
    for (int i = 0; i < widget_.count(); ++i) reading.texts.push_back(ToUtf8(widget_.tabText(i)));
    reading.index = widget_.currentIndex();
  }

  forms::TabPages& pages_;
  Pages& widget_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::TabPages& pages, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<TabPagesBinding>(pages, parent, owner);
}

}  // namespace kestro::adapters
