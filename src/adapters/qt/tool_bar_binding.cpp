#include <algorithm>

#include <QAction>
#include <QIcon>
#include <QToolBar>

#include "adapters/qt/bindings.h"
#include "adapters/qt/qt_text.h"
#include "forms/grid.h"

namespace kestro::adapters {
namespace {

/// Picture of a tool in every size that was drawn of it; empty for an unknown name.
QIcon ToolIcon(const std::string& picture) {
  QIcon icon;
  for (const int size : {24, 48, 96}) {
    icon.addFile(QStringLiteral(":/tools/%1-%2.png").arg(ToQString(picture)).arg(size), {size, size});
  }
  return icon;
}

/// A text as the caption of an action: no part of it is a mnemonic.
QString AsCaption(QString text) { return text.replace(QLatin1Char('&'), QLatin1String("&&")); }

class ToolBarBinding final : public ControlBinding {
 public:
  ToolBarBinding(forms::ToolBar& bar, QWidget& parent, BindingOwner& owner)
      : ControlBinding(bar, owner), bar_(bar), widget_(*new QToolBar(&parent)) {
    widget_.setMovable(false);
    widget_.setFloatable(false);
    widget_.setToolButtonStyle(Qt::ToolButtonIconOnly);
    const int side = std::max(kSmallestIcon, widget_.fontMetrics().height() * 3 / 2);
    widget_.setIconSize({side, side});
    for (int number = 1; number <= bar.count(); ++number) Add(number);
  }

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  static constexpr int kSmallestIcon = 24;  // logical pixels

  void Add(int number) {
    const std::string& picture = bar_.item(number).picture;
    if (picture.empty()) {
      widget_.addSeparator();
      return;
    }
    QAction* action = widget_.addAction(ToolIcon(picture), QString());
    QObject::connect(action, &QAction::triggered, &widget_,
                     [this, number] { owner().UserActed(bar_, [this, number] { bar_.Press(number); }); });
  }
  void SyncContent() override {
    for (int number = 1; number <= bar_.count(); ++number) {
      QAction& action = *widget_.actions()[number - 1];
      const forms::ToolBar::Item& item = bar_.item(number);
      action.setVisible(item.visible);
      if (action.isSeparator()) continue;
      const QString text = ToQString(item.tool_tip);
      action.setText(AsCaption(text));
      action.setToolTip(AsToolTip(text));
      action.setEnabled(item.enabled);
      widget_.widgetForAction(&action)->setAccessibleName(text);
    }
  }
  void ReadContent(forms::ControlReading& reading) const override {
    int number = 0;
    for (const QAction* action : widget_.actions()) {
      ++number;
      reading.texts.push_back(ToUtf8(WithoutMnemonic(action->text())));
      if (!action->isVisible()) {
        reading.hidden_buttons.push_back(number);
      } else if (!action->isSeparator() && !action->isEnabled()) {
        reading.disabled_buttons.push_back(number);
      }
    }
  }

  forms::ToolBar& bar_;
  QToolBar& widget_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::ToolBar& bar, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<ToolBarBinding>(bar, parent, owner);
}

}  // namespace kestro::adapters
