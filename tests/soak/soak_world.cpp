#include "soak/soak_world.h"

#include <algorithm>
#include <filesystem>

#include "base/runtime_error.h"
#include "scenario/dumps.h"
#include "scenario/world.h"
#include "whole/catalogue_numbers.h"

namespace kestro::soak {
namespace {

constexpr std::string_view kTemplate = "C:\\Program\\DBTemplate.tpl";
constexpr std::string_view kDataFolder = "C:\\Data\\KESTRO\\KESTROCTI";
constexpr int kApplicationError = 106;
constexpr int kContacts = 40;
constexpr int kOneInBoxesIsHeldOpen = 3;

std::string ContactNumber(int contact) { return "6020000" + std::to_string(10 + contact); }

/// Some contacts share a number, some have none at all.
std::string AddressBookText() {
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

}  // namespace

const std::vector<std::string>& DeviceNames() {
  static const std::vector<std::string> kNames = {"EXT 101", "EXT 102", "P\xC5\x99\xC3\xADpojka 103", ""};
  return kNames;
}

const std::vector<std::string>& KnownNumbers() {
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

SoakWorld::SoakWorld(std::uint64_t seed) : random_(seed), machine_(folder_.path(), KESTRO_PROGRAM_DIR) {
  machine_.Files().CreateFolder("C:\\Data\\KESTRO");
  machine_.Files().CreateFolder(kDataFolder);
  Restore();
  machine_.WriteFile("C:\\Data\\import.csv", "Eva;Firma;;585000111\r\n;;;\r\n\"Petr\r\nPavel;;;\"\r\n");
  // As much of a picture as is looked at: signature and size.
  machine_.WriteFile("C:\\Program\\Picture.png",
                     std::string_view("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x10\0\0\0\x10\x08\x02\0\0\0", 29));
}

void SoakWorld::Restore() {
  const std::filesystem::path folder = machine_.NativePath(kDataFolder);
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".png") std::filesystem::remove(entry.path());
  }
  MakeDatabase(kDatabase);
  MakeDatabase(kOtherDatabase);
}

/// Rows are replaced inside the file: the application goes on with its database.
void SoakWorld::MakeDatabase(std::string_view path) {
  const std::string connection = scenario::ConnectionStringOf(path);
  if (!machine_.Files().FileExists(path)) machine_.Files().CopyFileTo(kTemplate, path, true);
  for (const char* statement : {"DELETE FROM Contact", "DELETE FROM PhoneLine", "DELETE FROM PhoneType"}) {
    static_cast<void>(scenario::DumpSql(statement, machine_.Database(), connection));
  }
  scenario::LoadAddressBook(AddressBookText(), machine_.Database(), connection);
}

void SoakWorld::AddDevices() {
  for (const std::string& name : DeviceNames()) {
    exchange::Device device;
    device.name = machine_.CodePage().FromText(name);
    device.line_states = 0x1F;
    if (name == DeviceNames()[1]) device.provider = "PANASONIC KX-TDA";
    session_->exchange.AddDevice(device);
  }
}

void SoakWorld::StartApplication() {
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
      [this](const test::HeadlessFrontEnd::Task& task) { At(OnTheLine(), task); });
  session_ = std::make_unique<scenario::Session>(machine_, *front_end_, transcript_);
  AddDevices();
  for (const auto& [name, value] : settings) session_->SetSetting(name, value);
  session_->windows.SetModalHook(
      [this](forms::Form& window) { session_->front_end.Post([this, &window] { use_modal_(window); }); });
  if (random_.OneIn(4)) session_->shell.SetShellMajor(4);  // a desktop without balloons
  told_of_error_ = false;
  line_is_open_ = false;
  At(AtStart(), [this] { session_->StartApplication(); });
}

void SoakWorld::At(AllowedMessages allowed, const std::function<void()>& work) {
  struct Scope {
    std::vector<AllowedMessages>& places;
    ~Scope() { places.pop_back(); }
  };
  places_.push_back(allowed);
  const Scope scope{places_};
  work();
}

ports::BoxAnswer SoakWorld::AnswerBox(std::string_view text, int style, ports::BoxAnswer planned) {
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

void SoakWorld::CheckBox(std::string_view text) {
  const AllowedMessages allowed = places_.empty() ? AllowedMessages() : places_.back();
  const auto numbers = test::CatalogueNumbersOf(text);
  if (numbers.empty()) findings_.Add("a message that is not in the catalogue: " + std::string(text));
  const auto fitting = std::ranges::find_if(
      numbers, [&](int number) { return std::ranges::find(allowed, number) != allowed.end(); });
  if (fitting == numbers.end()) findings_.Add("a message that has no business here: " + std::string(text));
  const int number = fitting == numbers.end() ? 0 : *fitting;
  ++boxes_[number];
  if (number == kApplicationError) told_of_error_ = true;
}

/// Closing counts as done also where the line functions refuse it: the application cannot do more.
void SoakWorld::Watch(std::string_view line) {
  if (line.starts_with("line lineClose") || line.starts_with("line lineShutdown")) line_is_open_ = false;
  if (!line.starts_with("line lineOpen") || !line.ends_with(" = 0")) return;
  if (line_is_open_) findings_.Add("a line is opened while one is open");
  line_is_open_ = true;
}

void SoakWorld::CheckEnd() {
  if (expected_end_.empty()) {
    findings_.Add(told_of_error_ ? "the application ended with message 106" : "the application ended");
  }
  if (!application().Flags().ShuttingDown)
    findings_.Add("the application ended without its ending procedure");
  for (const forms::Form* form : application().Forms()) {
    if (form->loaded()) findings_.Add("the window " + form->name() + " is left after the end");
  }
  ++ends_[expected_end_];
  expected_end_.clear();
}

}  // namespace kestro::soak
