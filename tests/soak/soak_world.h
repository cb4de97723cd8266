#pragma once

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/scope_value.h"
#include "scenario/dumps.h"
#include "scenario/world.h"
#include "soak/catalogue_numbers.h"
#include "soak/places.h"
#include "soak/random.h"
#include "whole/program_world.h"

namespace kestro::soak {

/// Path of the database, and of another one that the settings can be pointed at.
inline constexpr std::string_view kDatabase = R"(C:\Data\KESTRO\KESTROCTI\CTIDB.mdb)";
inline constexpr std::string_view kOtherDatabase = R"(C:\Data\KESTRO\KESTROCTI\Other.mdb)";

inline constexpr std::string_view kTemplate = "C:\\Program\\DBTemplate.tpl";
inline constexpr std::string_view kDataFolder = R"(C:\Data\KESTRO\KESTROCTI)";
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
inline constexpr std::array<std::string_view, 4> kDevices = {"EXT 101", "EXT 102",
                                                             "P\xC5\x99\xC3\xADpojka 103", ""};

/// The application and the next one, which follows when that has ended; only
/// those messages may come up that have some business where they do.
class SoakWorld final : public test::ProgramWorld {
 public:
  explicit SoakWorld(std::uint64_t seed)
      : ProgramWorld([this](std::string_view line) { Watch(line); }), random_(seed) {
    machine().Files().CreateFolder("C:\\Data\\KESTRO");
    machine().Files().CreateFolder(kDataFolder);
    Restore();
    machine().WriteFile("C:\\Data\\import.csv", "Eva;Firma;;585000111\r\n;;;\r\n\"Petr\r\nPavel;;;\"\r\n");
    machine().WriteFile("C:\\Program\\Picture.png", test::kPicture);
  }

  ~SoakWorld() override { EndSession(); }  // which is watched to its end
  SoakWorld(const SoakWorld&) = delete;
  SoakWorld& operator=(const SoakWorld&) = delete;

  [[nodiscard]] Random& random() { return random_; }

  /// Starts an application on what the one before has left; base::ProcessEnded comes through.
  void StartApplication() {
    std::map<std::string, std::string> settings = {{"DatabasePath", std::string(kDatabase)},
                                                   {"FirstStartDone", "1"},
                                                   {"PhoneLine", std::string(kDevices.front())}};
    if (has_session()) {
      for (const auto& [place, value] : session().settings.values()) settings[place.second] = value;
    }
    NewSession([this](const auto& task) { At(kOnTheLine, task); });
    AddDevices();
    for (const auto& [name, value] : settings) session().SetSetting(name, value);
    if (random_.OneIn(4)) session().shell.SetShellMajor(4);  // a desktop without balloons
    told_of_error_ = false;
    line_is_open_ = false;
    At(kAtStart, [this] { session().StartApplication(); });
  }
  /// The address books as they were at first, and no pictures. For a world that stays small.
  void Restore() {
    const std::filesystem::path folder = machine().NativePath(kDataFolder);
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".png") std::filesystem::remove(entry.path());
    }
    MakeDatabase(kDatabase);
    MakeDatabase(kOtherDatabase);
  }

  /// Runs something that the application does at that place, where only those messages may come.
  void At(AllowedMessages allowed, const std::function<void()>& work) {
    const base::ScopeValue scope(allowed_, allowed);
    work();
  }
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

  [[nodiscard]] const std::map<int, std::int64_t>& boxes() const { return boxes_; }
  [[nodiscard]] const std::map<std::string, std::int64_t>& ends() const { return ends_; }

 private:
  ports::BoxAnswer AnswerBox(std::string_view text, int style, ports::BoxAnswer planned) override {
    CheckBox(text);
    if (meanwhile_ && !box_open_ && random_.OneIn(kOneInBoxesIsHeldOpen)) {
      const base::ScopeValue scope(box_open_, true);
      meanwhile_();
    }
    return planned == ports::BoxAnswer::kYes && (style & ports::kYesNo) != 0 && random_.OneIn(2)
               ? ports::BoxAnswer::kNo
               : planned;
  }
  void CheckBox(std::string_view text) {
    const auto numbers = CatalogueNumbersOf(text);
    const auto fitting = std::ranges::find_first_of(numbers, allowed_);
    if (fitting == numbers.end()) return Find("a message that has no business here: " + std::string(text));
    ++boxes_[*fitting];
    if (*fitting == kApplicationError) told_of_error_ = true;
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
    if (!machine().Files().FileExists(path)) machine().Files().CopyFileTo(kTemplate, path, true);
    for (const char* statement : {"DELETE FROM Contact", "DELETE FROM PhoneLine", "DELETE FROM PhoneType"}) {
      static_cast<void>(scenario::DumpSql(statement, machine().Database(), connection));
    }
    scenario::LoadAddressBook(AddressBookText(), machine().Database(), connection);
  }
  void AddDevices() {
    for (const std::string_view name : kDevices) {
      exchange::Device device;
      device.name = machine().CodePage().FromText(name);
      device.line_states = 0x1F;
      if (name == kDevices[1]) device.provider = "PANASONIC KX-TDA";
      session().exchange.AddDevice(device);
    }
  }

  Random random_;
  AllowedMessages allowed_;  // here and now
  std::function<void()> meanwhile_;
  std::string expected_end_;
  bool told_of_error_ = false;  // message 106
  std::map<int, std::int64_t> boxes_;
  std::map<std::string, std::int64_t> ends_;
  bool box_open_ = false;
  bool line_is_open_ = false;
};

}  // namespace kestro::soak
