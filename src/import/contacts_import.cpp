#include "import/contacts_import.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "base/text.h"

namespace kestro::import {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kFilter = "Comma separated values (*.csv)|*.csv|";

/// A number of lines as far as a progress bar can show it.
int BarNumber(std::int64_t lines) {
  return static_cast<int>(std::min<std::int64_t>(lines, std::numeric_limits<int>::max()));
}

class Hourglass {
 public:
  explicit Hourglass(forms::FormHost& host) : host_(host) { host_.SetPointer(forms::Pointer::kHourglass); }
  ~Hourglass() { host_.SetPointer(forms::Pointer::kDefault); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  forms::FormHost& host_;
};

}  // namespace

ContactsImport::Run::Run(const Needs& needs, Survey file_survey)
    : survey(file_survey),
      component(needs.contacts.Connected<contacts::CTIContacts>()),
      parser(needs.log),
      pace(needs.clock) {}

ContactsImport::ContactsImport(const Needs& needs)
    : procedure_(needs.log, "KESTROCTI.ContactsImport", core::Spelling::kFullStop),
      needs_(needs),
      phone_types_(needs.log, needs.contacts) {
  needs_.window.on_start = [this] { StartContactsImport(); };
  needs_.window.on_cancel = [this] { import_cancelled_ = true; };
}

void ContactsImport::StartContactsImport() {
  procedure_.Outermost("StartContactsImport", [&] {
    import_cancelled_ = false;
    std::string path;
    if (GetImportSourceFilePath(path)) ImportContactsFile(path);
  });
}

bool ContactsImport::GetImportSourceFilePath(std::string& path) {
  return procedure_.Outermost(
      "GetImportSourceFilePath",
      [&] {
        ports::FileDialogRequest request;
        request.title = needs_.texts.GetLocalizedString("172");
        request.filter = kFilter;
        request.default_extension = ".csv";
        const auto chosen = needs_.file_dialogs.OpenFile(request);
        path = chosen.value_or(std::string());
        return chosen.has_value();
      },
      [&](const base::RuntimeError&) {
        path.clear();
        return false;
      });
}

void ContactsImport::ImportContactsFile(const std::string& path) {
  const std::string line_break(core::kLineBreak);
  std::optional<Run> run;
  procedure_.Outermost(
      "ImportContactsFile",
      [&] {
        if (!needs_.files.FileExists(path)) return needs_.messages.Warning("138");
        bool finished = false;
        {
          const Hourglass hourglass(needs_.window.host());
          run.emplace(needs_, CountLines(path));
          finished = ImportLines(*run, path);
        }
        needs_.messages.Notice(finished ? "140" : "139", {line_break, std::to_string(run->count)});
      },
      [&](const base::RuntimeError&) {
        needs_.messages.Notice("141", {line_break, std::to_string(run ? run->count : 0)});
      });
}

/// Counts the lines and finds out how the file is encoded. Logs under the name of another procedure; kept
/// as it is.
ContactsImport::Survey ContactsImport::CountLines(const std::string& path) {
  return procedure_("GetPhoneTypeOrder", [&] {
    Survey survey;
    bool has_mark = false;
    LineReader lines(needs_.files.OpenForReading(path));
    ImportPace pace(needs_.clock);
    needs_.window.host().DoEvents();  // shows the window
    for (auto step = lines.Next(); step != LineReader::Step::kEnd && !import_cancelled_;
         step = lines.Next()) {
      if (pace.PauseIsDue(0, 0)) {
        needs_.window.host().DoEvents();
        pace.PauseEnded();
      }
      if (step == LineReader::Step::kMore) continue;
      ++survey.lines;
      if (step == LineReader::Step::kTooLong) continue;
      has_mark |= survey.lines == 1 && lines.line().starts_with(kByteOrderMark);
      survey.is_utf8 = survey.is_utf8 && base::IsUtf8(lines.line());
    }
    survey.is_utf8 |= has_mark;
    return survey;
  });
}

bool ContactsImport::ImportLines(Run& run, const std::string& path) {
  LineReader lines(needs_.files.OpenForReading(path));
  needs_.window.ImportProgress.SetRange(0, BarNumber(run.survey.lines));
  ShowProgress(run);
  try {
    const bool finished = ReadLines(run, lines) && StorePending(run);
    ShowProgress(run);
    return finished;
  } catch (const std::exception&) {
    // The file cannot be read any further: what was read of it is not lost.
    static_cast<void>(StorePending(run));
    ShowProgress(run);
    throw;
  }
}

bool ContactsImport::ReadLines(Run& run, LineReader& lines) {
  while (!import_cancelled_) {
    const auto step = lines.Next();
    if (step == LineReader::Step::kEnd) return true;
    if (step != LineReader::Step::kMore) {
      ++run.line_number;
      if (!ImportCVSLine(run, step == LineReader::Step::kLine, lines.line())) return false;
      ++run.lines_done;
    }
    if (run.pace.PauseIsDue(run.pending.contacts.size(), run.pending_bytes) && !Pause(run)) return false;
  }
  return false;
}

bool ContactsImport::Pause(Run& run) {
  if (!StorePending(run)) return false;
  ShowProgress(run);
  needs_.window.host().DoEvents();
  run.pace.PauseEnded();
  return true;
}

void ContactsImport::ShowProgress(const Run& run) {
  needs_.window.ImportProgress.SetValue(BarNumber(run.lines_done));
  needs_.window.importedContactsLabel.SetCaption(
      needs_.texts.GetLocalizedString("173", {std::to_string(run.count)}));
}

bool ContactsImport::ImportCVSLine(Run& run, bool readable, std::string_view line) {
  const auto ask = [&](std::string_view text_id) {
    if (!StorePending(run)) return false;
    ShowProgress(run);
    return AskWhetherToGoOn(text_id, run.line_number);
  };
  return procedure_.Outermost(
      "ImportCVSLine",
      [&] {
        // No text holds a NUL character: such a line comes from a file of another kind.
        readable = readable && line.find('\0') == std::string_view::npos;
        const auto count = readable ? run.parser.ParseLine(TextOf(run, line), run.fields) : 0;
        if (count < 1 || count > kMostFields) return ask("142");
        if (ChangesMoreThanItsContact(run) && !StorePending(run)) return false;
        return ImportContact(run);
      },
      [&](const base::RuntimeError&) { return ask("143"); });
}

/// UTF-8 text of the line; its bytes stay where they are when they are UTF-8 already.
std::string_view ContactsImport::TextOf(Run& run, std::string_view line) const {
  if (run.line_number == 1 && line.starts_with(kByteOrderMark)) line.remove_prefix(kByteOrderMark.size());
  if (run.survey.is_utf8 && base::IsUtf8(line)) return line;
  return run.text = needs_.code_page.ToText(line);
}

/// Such a line waits until those before it are stored: should the import end with one of them, no telephone
/// type and no picture of a line behind it must be left.
bool ContactsImport::ChangesMoreThanItsContact(const Run& run) {
  const auto columns = ImportColumns();
  for (std::size_t i = 0; i < std::min(columns.size(), run.fields.size()); ++i) {
    const bool changes = columns[i].kind == ImportColumn::Kind::kPicture ? !run.fields[i].empty()
                         : columns[i].kind == ImportColumn::Kind::kPhoneType
                             ? !phone_types_.IsKnown(run.fields[i])
                             : false;
    if (changes) return true;
  }
  return false;
}

bool ContactsImport::ImportContact(Run& run) {
  return procedure_("ImportContact", [&] {
    contacts::Contact contact;
    const auto columns = ImportColumns();
    for (std::size_t i = 0; i < std::min(columns.size(), run.fields.size()); ++i) {
      SetField(contact, columns[i], run.fields[i]);
      run.pending_bytes += run.fields[i].size();
    }
    run.pending.contacts.push_back(std::move(contact));
    run.pending.lines.push_back(run.line_number);
    return true;
  });
}

void ContactsImport::SetField(contacts::Contact& contact, const ImportColumn& column,
                              std::string_view field) {
  const auto cut = [](std::string_view text, int width) {
    return base::FirstCharacters(text, static_cast<std::size_t>(width));
  };
  switch (column.kind) {
    case ImportColumn::Kind::kText: {
      const auto trimmed = base::Trim(field);
      column.text(contact) = column.width ? cut(trimmed, *column.width) : trimmed;
      return;
    }
    case ImportColumn::Kind::kPhone: {
      std::string& phone = contact.Phone[column.number];
      phone = cut(base::Trim(field), contacts::DatabaseLength::kPhone);
      contact.SearchPhone[column.number] =
          cut(needs_.contacts.GetInternationalCallerIdString(phone), contacts::DatabaseLength::kPhone);
      return;
    }
    case ImportColumn::Kind::kPhoneType:
      contact.PhoneType[column.number] = phone_types_.GetImportedPhoneType(field);
      return;
    case ImportColumn::Kind::kPicture:
      contact.PicturePath = GetImportedContactPicturePath(field);
      return;
  }
}

std::string ContactsImport::GetImportedContactPicturePath(std::string_view path) {
  return procedure_("GetImportedContactPicturePath", [&] {
    if (path.empty() || !needs_.files.FileExists(path)) return std::string();
    return needs_.location.CopyPictureToDestinationFolder(path, needs_.contacts.DatabasePath());
  });
}

bool ContactsImport::StorePending(Run& run) {
  if (run.pending.contacts.empty()) return true;
  run.storing.contacts.clear();
  run.storing.lines.clear();
  std::swap(run.pending, run.storing);
  run.pending_bytes = 0;
  if (!Store(run, run.storing.contacts, run.storing.lines)) return false;
  run.pace.GroupStored();
  return true;
}

bool ContactsImport::Store(Run& run, std::span<contacts::Contact> group,
                           std::span<const std::int64_t> lines) {
  if (group.size() == 1) return StoreOne(run, group.front(), lines.front());
  if (StoreTogether(run, group)) return true;
  const std::size_t half = group.size() / 2;
  return Store(run, group.first(half), lines.first(half)) &&
         Store(run, group.subspan(half), lines.subspan(half));
}

bool ContactsImport::StoreTogether(Run& run, std::span<contacts::Contact> group) {
  try {
    run.component.CreateContacts(group);
  } catch (const std::exception& error) {
    procedure_.Log("ImportContactsFile", std::string("The contacts are stored in parts: ") + error.what());
    return false;
  }
  run.count += static_cast<std::int64_t>(group.size());
  return true;
}

bool ContactsImport::StoreOne(Run& run, const contacts::Contact& contact, std::int64_t line_number) {
  return procedure_.Outermost(
      "ImportContact",
      [&] {
        run.component.CreateContact(contact);
        ++run.count;
        return true;
      },
      [&](const base::RuntimeError&) {
        ShowProgress(run);
        return AskWhetherToGoOn("143", line_number);
      });
}

bool ContactsImport::AskWhetherToGoOn(std::string_view text_id, std::int64_t line_number) {
  const auto answer = needs_.messages.Show(ports::kYesNo | ports::kQuestion, text_id,
                                           {std::to_string(line_number), std::string(core::kLineBreak)});
  return answer != ports::BoxAnswer::kNo;
}

}  // namespace kestro::import
