#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QScreen>

#include "adapters/qt/typing_limit.h"
#include "qt/sample_form.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {
namespace {

struct Look {
  const char* name;
  double font_scale;
  std::string text;  // in every caption and value
};

std::string Repeat(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

/// Font of the application while it lives.
class ScaledFont {
 public:
  explicit ScaledFont(double scale) : before_(QApplication::font()) {
    QFont font = before_;
    font.setPointSizeF(font.pointSizeF() * scale);
    QApplication::setFont(font);
  }
  ~ScaledFont() { QApplication::setFont(before_); }
  ScaledFont(const ScaledFont&) = delete;
  ScaledFont& operator=(const ScaledFont&) = delete;

 private:
  QFont before_;
};

void SetEveryText(SampleForm& form, const std::string& text) {
  for (forms::Control* control : form.controls()) {
    if (auto* captioned = dynamic_cast<forms::CaptionedControl*>(control)) captioned->SetCaption(text);
    if (auto* box = dynamic_cast<forms::TextBox*>(control)) box->SetText(text);
    if (auto* combo = dynamic_cast<forms::ComboBox*>(control)) combo->AddItem(text);
  }
  form.pages.SetTabCaption(0, text);
}

class Layout : public ScreenFrontEnd, public testing::WithParamInterface<Look> {
 protected:
  /// Place of the widget on what the window shows (or can be scrolled to).
  static QRect PlaceOf(const QWidget& widget, const QWidget& content) {
    return {widget.mapTo(&content, QPoint()), widget.size()};
  }
  /// Width of what is written on a button or a label, 0 for other widgets.
  static int CaptionWidth(const QWidget& widget) {
    QString text;
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) text = button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) text = label->text();
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
  }
};

TEST_P(Layout, ControlsStayInsideApartAndWhole) {
  const ScaledFont font(GetParam().font_scale);
  SampleForm form(host_);
  form.Load();
  if (!GetParam().text.empty()) SetEveryText(form, GetParam().text);
  form.Show();
  QCoreApplication::processEvents();
  const adapters::QtWindow& window = *host_.Window(form);
  const QSize room = window.screen()->availableSize();
  EXPECT_LE(window.width(), room.width());
  EXPECT_LE(window.height(), room.height());

  std::vector<std::pair<std::string, QRect>> places;
  const QWidget* content = window.Binding(form.cmdOk)->widget().parentWidget();
  for (const forms::Control* control : form.controls()) {
    const adapters::ControlBinding* binding = window.Binding(*control);
    if (binding == nullptr || !binding->widget().isVisible()) continue;
    const QWidget& widget = binding->widget();
    const QRect place = PlaceOf(widget, *content);
    EXPECT_TRUE(content->rect().contains(place)) << control->name();
    EXPECT_GE(widget.width(), widget.minimumSizeHint().width()) << control->name();
    EXPECT_GE(widget.height(), widget.minimumSizeHint().height()) << control->name();
    EXPECT_LE(CaptionWidth(widget), widget.width()) << control->name();
    const bool holds_others =
        control->kind() == forms::ControlKind::kFrame || control->kind() == forms::ControlKind::kTabPages;
    if (holds_others) continue;
    for (const auto& [name, other] : places) {
      EXPECT_FALSE(place.intersects(other)) << control->name() << " and " << name;
    }
    places.emplace_back(control->name(), place);
  }
  EXPECT_GE(places.size(), 9u);
}

INSTANTIATE_TEST_SUITE_P(Looks, Layout,
                         testing::Values(Look{"Plain", 1, ""}, Look{"TwiceAsLarge", 2, ""},
                                         Look{"LongWords", 1, Repeat("W", 200)},
                                         Look{"LongTexts", 1, Repeat("word ", 40)},
                                         Look{"LongAndLarge", 2, Repeat("W", 200)},
                                         Look{"Lines", 1.5, Repeat("line\r\n", 30)}),
                         [](const auto& look) { return look.param.name; });

using LayoutOnce = ScreenFrontEnd;

TEST_F(LayoutOnce, AWindowGrowsForWhatItIsGivenWhileShown) {
  SampleForm form(host_);
  form.Show();
  QCoreApplication::processEvents();
  const QWidget& value = host_.Window(form)->Binding(form.lblNumber)->widget();
  const int one_line = value.height();
  form.lblNumber.SetCaption(Repeat("word ", 30));
  QCoreApplication::processEvents();
  EXPECT_GE(value.height(), 2 * one_line);
}

TEST_F(LayoutOnce, DataIsNeverTakenForMarkup) {
  SampleForm form(host_);
  form.lblValue.SetCaption("<b>x</b>&amp;");
  form.lblName.SetCaption("<i>Name</i>:");
  form.Show();
  const auto controls = driver_.Read(form).controls;
  const auto value = std::ranges::find(controls, form.lblValue.name(), &forms::ControlReading::name);
  EXPECT_EQ(value->texts, (std::vector<std::string>{"<b>x</b>&amp;"}));
  const auto* label = qobject_cast<QLabel*>(&host_.Window(form)->Binding(form.lblName)->widget());
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

}  // namespace
}  // namespace kestro::front_end_tests
