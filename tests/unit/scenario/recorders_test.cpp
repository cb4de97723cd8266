#include <gtest/gtest.h>

#include "scenario/dumps.h"
#include "scenario/recording_form_host.h"
#include "scenario/recording_message_boxes.h"
#include "scenario/recording_notification_area.h"
#include "support/latin1_code_page.h"
#include "support/no_files.h"

namespace kestro::scenario {
namespace {

using ports::BoxAnswer;

class OnlyIcons final : public test::NoFiles {
 public:
  bool FileExists(std::string_view path) const override { return path.starts_with("C:\\Program\\Icons\\"); }
};

class RecordersTest : public ::testing::Test {
 protected:
  std::vector<std::string> lines;
  Transcript transcript{[this](std::string_view line) { lines.emplace_back(line); }};
  test::Latin1CodePage code_page;
  OnlyIcons files;
};

TEST_F(RecordersTest, NotificationRequestsAreToldApart) {
  RecordingNotificationArea area(files, code_page, transcript);
  int events = 0;
  area.SetCallback([&](std::uint32_t code) { events += static_cast<int>(code); });
  EXPECT_FALSE(area.SendEvent(ports::kLeftButtonUp));  // no icon yet
  const ports::IconHandle idle = area.LoadIconFile("C:\\Program\\Icons\\idle.ico");
  EXPECT_EQ(area.LoadIconFile("C:\\Program\\Icons\\ringing.ico"), idle + 1);
  EXPECT_EQ(area.LoadIconFile("C:\\Program\\Icons\\idle.ico"), idle);
  EXPECT_THROW(static_cast<void>(area.LoadIconFile("C:\\Program\\idle.ico")), base::RuntimeError);

  ports::NotificationRecord record;
  record.cbSize = 504;
  record.uFlags = 7;
  record.uCallbackMessage = 512;
  record.hIcon = idle;
  record.szTip[0] = 'T';
  area.NotifyIcon(ports::kNimAdd, record);
  record.uTimeoutOrVersion = 3;
  area.NotifyIcon(ports::kNimSetVersion, record);
  record.uFlags = ports::kNifInfo;
  area.NotifyIcon(ports::kNimModify, record);  // no text: removal
  record.szInfo.fill('i');                     // no terminating zero
  record.szInfoTitle[0] = '\xE9';
  record.dwInfoFlags = 1;
  record.uTimeoutOrVersion = 5000;
  area.NotifyIcon(ports::kNimModify, record);
  record.uFlags = ports::kNifIcon;
  record.hIcon = 7;  // not ours
  area.NotifyIcon(ports::kNimModify, record);
  EXPECT_TRUE(area.SendEvent(ports::kRightButtonUp));
  area.NotifyIcon(ports::kNimDelete, record);
  EXPECT_FALSE(area.SendEvent(ports::kRightButtonUp));
  EXPECT_EQ(events, 517);
  EXPECT_EQ(lines,
            (std::vector<std::string>{
                R"(icon add size=504 flags=7 callback=512 file="Icons\idle.ico" tip="T")",
                "icon version 3",
                "icon balloon removed",
                "icon balloon title=\"\xC3\xA9\" text=\"" + std::string(256, 'i') + "\" info=1 timeout=5000",
                "icon modify flags=2 file=none",
                "icon delete",
            }));
  EXPECT_EQ(DumpIcon(record, code_page),
            "icon cbSize=504 hWnd=0 uID=0 uFlags=2 uCallbackMessage=512 hIcon=7 szTip=\"T\" szInfo=\"" +
                std::string(256, 'i') + "\" uTimeout=5000 szInfoTitle=\"\xC3\xA9\" dwInfoFlags=1");
}

TEST_F(RecordersTest, BoxesAreAnsweredInTurn) {
  Problems problems;
  RecordingMessageBoxes boxes([](std::string_view, int, BoxAnswer planned) { return planned; }, transcript,
                              problems);
  EXPECT_EQ(boxes.Show("a\r\nb", ports::kInformation), BoxAnswer::kOk);
  EXPECT_EQ(boxes.Show("c", ports::kYesNo | ports::kQuestion), BoxAnswer::kYes);
  boxes.Queue(BoxAnswer::kNo);
  boxes.Queue(BoxAnswer::kNo);
  EXPECT_EQ(boxes.Show("d", ports::kYesNo | ports::kQuestion), BoxAnswer::kNo);
  EXPECT_FALSE(problems.Take());
  EXPECT_EQ(boxes.Show("e", ports::kInformation), BoxAnswer::kOk);
  EXPECT_EQ(problems.Take(), "the message box does not offer the answer no");
  EXPECT_EQ(boxes.queued(), 0U);
  EXPECT_EQ(lines, (std::vector<std::string>{R"(box style=64 "a\r\nb" = ok)", R"(box style=36 "c" = yes)",
                                             R"(box style=36 "d" = no)", R"(box style=64 "e" = ok)"}));
}

}  // namespace
}  // namespace kestro::scenario
