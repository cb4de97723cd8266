#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "contacts/contact_integration_module.h"
#include "core/database_location.h"
#include "core/messages.h"
#include "core/procedure_frame.h"
#include "import/contact_import_progress.h"
#include "import/cvs_parser.h"
#include "import/import_columns.h"
#include "import/import_pace.h"
#include "import/imported_phone_types.h"
#include "import/line_reader.h"
#include "ports/ansi_code_page.h"
#include "ports/clock.h"

namespace kestro::import {

/// Imports contacts from a text file, one a line. docs/import.md describes the
/// file and what becomes of a faulty one.
///
/// Contacts are stored in groups, each in one transaction. Window events run
/// between the groups only: whatever ends the import there (Abort, the end of the
/// application, a kill), all contacts that the window has counted are stored.
/// A group that cannot be stored is halved until the contacts at fault stand alone.
class ContactsImport {
 public:
  struct Needs {
    core::LogModule& log;
    core::Messages& messages;
    core::Localization& texts;
    core::Functions::DatabaseLocation& location;
    contacts::ContactIntegrationModule& contacts;
    ports::FileSystem& files;
    ports::FileDialogs& file_dialogs;
    ports::AnsiCodePage& code_page;
    const ports::Clock& clock;
    frmContactImportProgress& window;
  };
  /// Plugs the import into its window.
  explicit ContactsImport(const Needs& needs);

  /// Asks for a file and imports it. The window must be shown.
  void StartContactsImport();

 private:
  /// What a first pass over the file tells.
  struct Survey {
    std::int64_t lines = 0;
    bool is_utf8 = true;  // begins with the byte-order mark, or is UTF-8 all through
  };
  struct Group {
    std::vector<contacts::Contact> contacts;
    std::vector<std::int64_t> lines;  // that they come from
  };
  /// One import on its way.
  struct Run {
    Run(const Needs& needs, Survey file_survey);

    Survey survey;
    contacts::CTIContacts component;
    CVSParser parser;
    ImportPace pace;
    std::string text;  // of the current line
    std::vector<std::string_view> fields;
    std::int64_t line_number = 0;  // of the current line, from 1
    std::int64_t lines_done = 0;
    std::int64_t count = 0;  // contacts stored
    Group pending;           // read and not yet stored
    Group storing;           // its room is used again and again
    std::size_t pending_bytes = 0;
  };

  [[nodiscard]] bool GetImportSourceFilePath(std::string& path);
  void ImportContactsFile(const std::string& path);
  [[nodiscard]] Survey CountLines(const std::string& path);
  /// False when the import ended before the end of the file.
  [[nodiscard]] bool ImportLines(Run& run, const std::string& path);
  [[nodiscard]] bool ReadLines(Run& run, LineReader& lines);
  [[nodiscard]] bool ImportCVSLine(Run& run, bool readable, std::string_view line);
  [[nodiscard]] std::string_view TextOf(Run& run, std::string_view line) const;
  [[nodiscard]] bool ChangesMoreThanItsContact(const Run& run);
  [[nodiscard]] bool ImportContact(Run& run);
  void SetField(contacts::Contact& contact, const ImportColumn& column, std::string_view field);
  [[nodiscard]] std::string GetImportedContactPicturePath(std::string_view path);

  // What returns a truth value here tells whether to go on.
  [[nodiscard]] bool StorePending(Run& run);
  [[nodiscard]] bool Store(Run& run, std::span<contacts::Contact> group, std::span<const std::int64_t> lines);
  [[nodiscard]] bool StoreOne(Run& run, const contacts::Contact& contact, std::int64_t line_number);
  /// Not whether to go on, but whether all of them are stored now; otherwise none is.
  [[nodiscard]] bool StoreTogether(Run& run, std::span<contacts::Contact> group);
  [[nodiscard]] bool AskWhetherToGoOn(std::string_view text_id, std::int64_t line_number);
  [[nodiscard]] bool Pause(Run& run);
  void ShowProgress(const Run& run);

  core::ProcedureFrame procedure_;
  Needs needs_;
  ImportedPhoneTypes phone_types_;
  bool import_cancelled_ = false;
};

}  // namespace kestro::import
