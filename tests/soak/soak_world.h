#pragma once

#include <algorithm>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "programs/cti-scenario/posix_machine.h"
#include "scenario/dumps.h"
#include "scenario/session.h"
#include "scenario/world.h"
#include "soak/places.h"
#include "unit/support/temporary_folder.h"
#include "whole/catalogue_numbers.h"
#include "whole/headless_front_end.h"
#include "whole/random.h"

namespace kestro::soak {

/// Path of the database, and of another one that the settings can be pointed at.
inline constexpr std::string_view kDatabase = "C:\\Data\\KESTRO\\KESTROCTI\\CTIDB.mdb";
inline constexpr std::string_view kOtherDatabase = "C:\\Data\\KESTRO\\KESTROCTI\\Other.mdb";

inline constexpr std::string_view kTemplate = "C:\\Program\\DBTemplate.tpl";
inline constexpr std::string_view kDataFolder = "C:\\Data\\KESTRO\\KESTROCTI";
inline constexpr int kApplicationError = 106;
inline constexpr int kContacts = 40;
inline constexpr int kOneInBoxesIsHeldOpen = 3;

inline std::string ContactNumber(int contact) { return "6020000" + std::to_string(10 + contact); }

/// Some contacts share a number, some have none at all.
inline std::string AddressBookText() {
  std::string text =
      "phone-type \"Work\" 1\nphone-type \"Mobile\" 2\nphone-type \"Home\" 3\nphone-type \"Fax\" 4\n"
      "custom-fields \"A\" \"B\" \"C\" \"D\"\n"
      "phone-line \"21\" \"Reception\"\nphone-line \"22\" \"Jan Nov\xC3\xA1k\"\nphone-line \"23\" \"\"\n";
  for (int contact = 0; contact < kContacts; ++contact) {
    const std::string number = contact % 8 == 7 ? "" : ContactNumber(contact / 2);
    text += "contact Name=\"Contact " + std::to_string(contact) + " \xC5\xBDi\xC5\xBEka\" Phone1=\"" +
            number + "\" Phone2=\"+420 585 000 1" + std::to_string(10 + contact) +
            "\" City=\"Brno\" Note=\"line\\r\\ntwo\"\n";
  }
  return text;
}

/// Names of the devices, the first of which is the one watched at first.
inline const std::vector<std::string>& DeviceNames() {
  static const std::vector<std::string> kNames = {"EXT 101", "EXT 102", "P\xC5\x99\xC3\xADpojka 103", ""};
  return kNames;
}

/// Numbers that contacts have.
inline const std::vector<std::string>& KnownNumbers() {
  static const std::vector<std::string> kNumbers = [] {
    std::vector<std::string> numbers;
    for (int contact = 0; contact < kContacts / 2; ++contact) {
      numbers.push_back(ContactNumber(contact));
      numbers.push_back("+420" + ContactNumber(contact));
      numbers.push_back("00420585000110");
    }
    return numbers;
  }();
  return kNumbers;
}

/// One machine with its files, database and settings, and the application that
/// runs on it now; another one follows when that has ended.
class SoakWorld {
 public:
  explicit SoakWorld(std::uint64_t seed) : random_(seed), machine_(folder_.path(), KESTRO_PROGRAM_DIR) {
    machine_.Files().CreateFolder("C:\\Data\\KESTRO");
    machine_.Files().CreateFolder(kDataFolder);
    Restore();
    machine_.WriteFile("C:\\Data\\import.csv", "Eva;Firma;;585000111\r\n;;;\r\n\"Petr\r\nPavel;;;\"\r\n");
    // As much of a picture as is looked at: signature and size.
    machine_.WriteFile(
        "C:\\Program\\Picture.png",
        std::string_view("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x10\0\0\0\x10\x08\x02\0\0\0", 29));
  }

  [[nodiscard]] test::Random& random() { return random_; }
  /// Something is wrong with the application. Collected, not thrown: the application's own handlers would
  /// catch what is thrown inside its calls.
  void Find(std::string text) { findings_.push_back(std::move(text)); }
  [[nodiscard]] const std::vector<std::string>& findings() const { return findings_; }
  [[nodiscard]] scenario::Session& session() { return *session_; }
  [[nodiscard]] app::Application& application() { return *session_->application(); }
  [[nodiscard]] scenario::Transcript& transcript() { return transcript_; }

  /// Starts an application on what the one before has left; base::ProcessEnded comes through.
  void StartApplication() {
    std::map<std::string, std::string> settings = {{"DatabasePath", std::string(kDatabase)},
                                                   {"FirstStartDone", "1"},
                                                   {"PhoneLine", DeviceNames().front()}};
    if (session_) {
      for (const auto& [place, value] : session_->settings.values()) settings[place.second] = value;
    }
    session_.reset();
    front_end_ = std::make_unique<test::HeadlessFrontEnd>(
        [this](std::string_view text, int style, ports::BoxAnswer planned) {
          return AnswerBox(text, style, planned);
        },
        [this](const test::HeadlessFrontEnd::Task& task) { At(kOnTheLine, task); });
    session_ = std::make_unique<scenario::Session>(machine_, *front_end_, transcript_);
    AddDevices();
    for (const auto& [name, value] : settings) session_->SetSetting(name, value);
    session_->windows.SetModalHook(
        [this](forms::Form& window) { session_->front_end.Post([this, &window] { use_modal_(window); }); });
    if (random_.OneIn(4)) session_->shell.SetShellMajor(4);  // a desktop without balloons
    told_of_error_ = false;
    line_is_open_ = false;
    At(kAtStart, [this] { session_->StartApplication(); });
  }
  /// The address books as they were at first, and no pictures. For a world that stays small.
  void Restore() {
    const std::filesystem::path folder = machine_.NativePath(kDataFolder);
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".png") std::filesystem::remove(entry.path());
    }
    MakeDatabase(kDatabase);
    MakeDatabase(kOtherDatabase);
  }

  /// Runs something that the application does at that place, where only those messages may come.
  void At(AllowedMessages allowed, const std::function<void()>& work) {
    struct Scope {
      std::vector<AllowedMessages>& places;
      ~Scope() { places.pop_back(); }
    };
    places_.push_back(allowed);
    const Scope scope{places_};
    work();
  }
  /// Uses a modal window until it is closed.
  void SetModalUser(std::function<void(forms::Form&)> use) { use_modal_ = std::move(use); }
  /// What goes on while a message box is open.
  void SetMeanwhile(std::function<void()> work) { meanwhile_ = std::move(work); }

  /// The next thing that happens may end the application for that reason.
  void ExpectEnd(const std::string& reason) { expected_end_ = reason; }
  /// The application has ended; checks how.
  void CheckEnd() {
    if (expected_end_.empty()) {
      Find(told_of_error_ ? "the application ended with message 106" : "the application ended");
    }
    if (!application().Flags().ShuttingDown) Find("the application ended without its ending procedure");
    for (const forms::Form* form : application().Forms()) {
      if (form->loaded()) Find("the window " + form->name() + " is left after the end");
    }
    ++ends_[expected_end_];
    expected_end_.clear();
  }
  void ExpectNoEnd() { expected_end_.clear(); }

  /// What was last written down, for the report.
  [[nodiscard]] const std::deque<std::string>& last_lines() const { return transcript_.Tail(); }
  [[nodiscard]] const std::map<int, std::int64_t>& boxes() const { return boxes_; }
  [[nodiscard]] const std::map<std::string, std::int64_t>& ends() const { return ends_; }

 private:
  ports::BoxAnswer AnswerBox(std::string_view text, int style, ports::BoxAnswer planned) {
    CheckBox(text);
    if (meanwhile_ && open_boxes_ == 0 && random_.OneIn(kOneInBoxesIsHeldOpen)) {
      struct Scope {
        int& count;
        ~Scope() { --count; }
      };
      ++open_boxes_;
      const Scope scope{open_boxes_};
      meanwhile_();
    }
    return planned == ports::BoxAnswer::kYes && (style & ports::kYesNo) != 0 && random_.OneIn(2)
               ? ports::BoxAnswer::kNo
               : planned;
  }
  void CheckBox(std::string_view text) {
    const AllowedMessages allowed = places_.empty() ? AllowedMessages() : places_.back();
    const auto numbers = test::CatalogueNumbersOf(text);
    if (numbers.empty()) Find("a message that is not in the catalogue: " + std::string(text));
    const auto fitting = std::ranges::find_if(
        numbers, [&](int number) { return std::ranges::find(allowed, number) != allowed.end(); });
    if (fitting == numbers.end()) Find("a message that has no business here: " + std::string(text));
    const int number = fitting == numbers.end() ? 0 : *fitting;
    ++boxes_[number];
    if (number == kApplicationError) told_of_error_ = true;
  }
  /// Sees every line of the transcript: no line is opened while one is open.
  /// Closing counts as done also where the line functions refuse it: the application cannot do more.
  void Watch(std::string_view line) {
    if (line.starts_with("line lineClose") || line.starts_with("line lineShutdown")) line_is_open_ = false;
    if (!line.starts_with("line lineOpen") || !line.ends_with(" = 0")) return;
    if (line_is_open_) Find("a line is opened while one is open");
    line_is_open_ = true;
  }
  /// Rows are replaced inside the file: the application goes on with its database.
  void MakeDatabase(std::string_view path) {
    const std::string connection = scenario::ConnectionStringOf(path);
    if (!machine_.Files().FileExists(path)) machine_.Files().CopyFileTo(kTemplate, path, true);
    for (const char* statement : {"DELETE FROM Contact", "DELETE FROM PhoneLine", "DELETE FROM PhoneType"}) {
      static_cast<void>(scenario::DumpSql(statement, machine_.Database(), connection));
    }
    scenario::LoadAddressBook(AddressBookText(), machine_.Database(), connection);
  }
  void AddDevices() {
    for (const std::string& name : DeviceNames()) {
      exchange::Device device;
      device.name = machine_.CodePage().FromText(name);
      device.line_states = 0x1F;
      if (name == DeviceNames()[1]) device.provider = "PANASONIC KX-TDA";
      session_->exchange.AddDevice(device);
    }
  }

  test::Random random_;
  std::vector<std::string> findings_;
  test_support::TemporaryFolder folder_;
  programs::PosixMachine machine_;
  scenario::Transcript transcript_{[this](std::string_view line) { Watch(line); }};
  std::unique_ptr<test::HeadlessFrontEnd> front_end_;
  std::unique_ptr<scenario::Session> session_;
  std::vector<AllowedMessages> places_;
  std::function<void(forms::Form&)> use_modal_;
  std::function<void()> meanwhile_;
  std::string expected_end_;
  bool told_of_error_ = false;  // message 106
  std::map<int, std::int64_t> boxes_;
  std::map<std::string, std::int64_t> ends_;
  int open_boxes_ = 0;
  bool line_is_open_ = false;
};

}  // namespace kestro::soak
