#include <QImage>
#include <QMenu>
#include <QTemporaryDir>

#include "adapters/qt/qt_notification_area.h"
#include "qt/sample_form.h"
#include "screen_front_end.h"
#include "support/error_number.h"
#include "support/latin1_code_page.h"

namespace kestro::front_end_tests {
namespace {

using namespace ports;
using Calls = std::vector<std::string>;

/// A desktop that writes down what it is asked for.
class FakeTray final : public adapters::TrayBackend {
 public:
  [[nodiscard]] bool Available() const override { return true; }
  void ShowIcon(const QIcon& icon, const QString& tip, QMenu* menu) override {
    calls.push_back("icon " + std::to_string(icon.availableSizes().constFirst().width()) + " \"" +
                    tip.toStdString() +
                    "\" menu=" + (menu == nullptr ? "" : menu->objectName().toStdString()));
  }
  void HideIcon() override { calls.emplace_back("hide"); }
  void ShowBalloon(const adapters::Balloon& balloon) override {
    calls.push_back("balloon \"" + balloon.title.toStdString() + "\" \"" + balloon.text.toStdString() +
                    "\" " + std::to_string(balloon.timeout_ms));
  }
  void RemoveBalloon() override { calls.emplace_back("no balloon"); }
  void SetListener(Listener given) override { listener = std::move(given); }

  Calls TakeCalls() { return std::exchange(calls, {}); }

  Calls calls;
  Listener listener;
};

class NotificationArea : public ScreenFrontEnd {
 protected:
  void SetUp() override {
    form_.Load();
    for (int size : {16, 24}) {
      QImage image(size, size, QImage::Format_ARGB32);
      image.fill(Qt::blue);
      ASSERT_TRUE(image.save(QString::fromStdString(IconPath(size))));
    }
    area_.SetCallback([this](std::uint32_t code) { codes_.push_back(code); });
    record_.cbSize = 504;
    record_.hWnd = form_.handle();
    record_.uFlags = kNifMessage | kNifIcon | kNifTip;
    record_.uCallbackMessage = 512;
    record_.uID = record_.hIcon = area_.LoadIconFile(IconPath(16));
    Fill(record_.szTip, "KESTRO CTI");
  }
  std::string IconPath(int size) {
    return folder_.filePath(QString::number(size) + QStringLiteral(".png")).toStdString();
  }
  template <std::size_t kWidth>
  static void Fill(std::array<char, kWidth>& field, std::string_view text) {
    field.fill('\0');
    std::copy_n(text.begin(), std::min(text.size(), kWidth), field.begin());
  }

  QTemporaryDir folder_;
  SampleForm form_{host_};
  FakeTray tray_;
  test::Latin1CodePage code_page_;
  adapters::QtNotificationArea area_{host_, code_page_, tray_,
                                     [](std::string_view path) { return std::string(path); }};
  NotificationRecord record_;
  std::vector<std::uint32_t> codes_;
};

TEST_F(NotificationArea, ShowsWhatTheFlagsName) {
  EXPECT_TRUE(area_.NotifyIcon(kNimAdd, record_));
  EXPECT_TRUE(area_.NotifyIcon(kNimSetVersion, record_));
  EXPECT_EQ(tray_.TakeCalls(), Calls{"icon 16 \"KESTRO CTI\" menu=mPopup"});

  Fill(record_.szTip, "not asked for");
  record_.uFlags = kNifIcon;
  record_.hIcon = area_.LoadIconFile(IconPath(24));
  EXPECT_TRUE(area_.NotifyIcon(kNimModify, record_));
  EXPECT_EQ(tray_.TakeCalls(), Calls{"icon 24 \"KESTRO CTI\" menu=mPopup"});

  record_.uFlags = kNifInfo;
  record_.uTimeoutOrVersion = 5000;
  Fill(record_.szInfo, "Jan Nov\xE1k\r\n  ");
  Fill(record_.szInfoTitle, "External call");
  EXPECT_TRUE(area_.NotifyIcon(kNimModify, record_));
  EXPECT_EQ(tray_.TakeCalls(), Calls{"balloon \"External call\" \"Jan Nov\xC3\xA1k\r\n  \" 5000"});
  Fill(record_.szInfo, "");
  EXPECT_TRUE(area_.NotifyIcon(kNimModify, record_));
  EXPECT_EQ(tray_.TakeCalls(), Calls{"no balloon"});

  EXPECT_TRUE(area_.NotifyIcon(kNimDelete, record_));
  EXPECT_EQ(tray_.TakeCalls(), (Calls{"no balloon", "hide"}));
}

TEST_F(NotificationArea, RefusesWhatDoesNotFit) {
  EXPECT_FALSE(area_.NotifyIcon(kNimModify, record_)) << "before it was added";
  EXPECT_FALSE(area_.NotifyIcon(kNimDelete, record_));
  NotificationRecord odd = record_;
  odd.cbSize = 500;
  EXPECT_FALSE(area_.NotifyIcon(kNimAdd, odd));
  odd = record_;
  odd.hIcon = 77;
  EXPECT_FALSE(area_.NotifyIcon(kNimAdd, odd));
  EXPECT_TRUE(area_.NotifyIcon(kNimAdd, record_));
  EXPECT_FALSE(area_.NotifyIcon(kNimAdd, record_)) << "twice";
  odd = record_;
  odd.uID = 78;
  EXPECT_FALSE(area_.NotifyIcon(kNimModify, odd)) << "another icon";
  EXPECT_EQ(tray_.TakeCalls().size(), 1u);
}

TEST_F(NotificationArea, TextsEndAtTheZeroOrBeforeTheLastPlace) {
  struct Case {
    std::uint32_t size;
    std::size_t tip;  // characters shown of a tip that fills its field
    bool balloon;
  };
  for (const Case& test : {Case{504, 127, true}, Case{488, 127, true}, Case{88, 63, false}}) {
    FakeTray tray;
    adapters::QtNotificationArea area(host_, code_page_, tray,
                                      [](std::string_view path) { return std::string(path); });
    record_.cbSize = test.size;
    record_.hIcon = area.LoadIconFile(IconPath(16));
    record_.uFlags = kNifIcon | kNifTip | kNifInfo;
    record_.szTip.fill('t');
    record_.szInfo.fill('i');
    record_.szInfoTitle.fill('h');
    EXPECT_TRUE(area.NotifyIcon(kNimAdd, record_));
    Calls expected{"icon 16 \"" + std::string(test.tip, 't') + "\" menu=mPopup"};
    if (test.balloon) {
      expected.push_back("balloon \"" + std::string(63, 'h') + "\" \"" + std::string(255, 'i') + "\" 0");
    }
    EXPECT_EQ(tray.TakeCalls(), expected) << test.size;
  }
}

TEST_F(NotificationArea, EventsReachTheCallbackOnlyWhileTheIconIsThere) {
  tray_.listener(kLeftButtonUp);
  area_.NotifyIcon(kNimAdd, record_);
  for (IconEvent event : {kLeftButtonUp, kLeftDoubleClick, kRightButtonUp, kBalloonUserClick}) {
    tray_.listener(event);
  }
  area_.NotifyIcon(kNimDelete, record_);
  tray_.listener(kLeftButtonUp);
  EXPECT_EQ(codes_, (std::vector<std::uint32_t>{514, 515, 517, 1029}));
}

TEST_F(NotificationArea, AnEventOfTheIconIsTheUsersAndMayEndTheProcess) {
  area_.NotifyIcon(kNimAdd, record_);
  bool by_the_user = false;
  area_.SetCallback([&](std::uint32_t) {
    by_the_user = boundary_.user_action();
    area_.SetCallback({});
    throw base::ProcessEnded{};
  });
  tray_.listener(kLeftButtonUp);
  EXPECT_TRUE(by_the_user);
  EXPECT_TRUE(boundary_.ended());
}

TEST_F(NotificationArea, IconFilesAreLoadedOnceAndCheckedAlways) {
  const IconHandle handle = area_.LoadIconFile(IconPath(16));
  EXPECT_EQ(handle, record_.hIcon);
  EXPECT_NE(area_.LoadIconFile(IconPath(24)), handle);
  const auto error_of = [&](const std::string& path) {
    return test::ErrorNumberOf([&] { area_.LoadIconFile(path); });
  };
  EXPECT_EQ(error_of(folder_.filePath(QStringLiteral("none.ico")).toStdString()), base::kFileNotFound);
  QFile broken(folder_.filePath(QStringLiteral("broken.ico")));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("no icon");
  broken.close();
  EXPECT_EQ(error_of(broken.fileName().toStdString()), base::kInvalidPicture);
}

}  // namespace
}  // namespace kestro::front_end_tests
