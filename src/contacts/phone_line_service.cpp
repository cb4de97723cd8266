#include "contacts/phone_line_service.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "contacts/connected_recordset.h"
#include "contacts/database_session.h"

namespace kestro::contacts {
namespace {

/// A line that is no number comes last.
std::int64_t Number(const PhoneLine& line) {
  const auto number = base::ParseInt32(line.Line);
  return number ? *number : std::numeric_limits<std::int64_t>::max();
}

std::string_view NameOf(const PhoneLine& line) { return line.Name ? std::string_view(*line.Name) : ""; }

}  // namespace

std::vector<PhoneLine> PhoneLineService::GetPhoneLines() {
  DatabaseSession session(database_, connection_string_);
  std::vector<PhoneLine> lines;
  const auto rows = session.Query("SELECT id, Line, Name FROM PhoneLine ORDER BY id");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    PhoneLine line{rows->Integer(0), std::string(rows->Text(1)), std::nullopt};
    if (rows->Field(2) != ports::DatabaseValue(ports::Null{})) line.Name = rows->Text(2);
    lines.push_back(std::move(line));
  }
  std::ranges::stable_sort(lines, {}, Number);
  return lines;
}

std::unique_ptr<ports::Recordset> PhoneLineService::ListPhoneLines() {
  return std::make_unique<ConnectedRecordset>(
      database_, connection_string_,
      "SELECT id, Line, Name FROM PhoneLine ORDER BY CAST(Line AS INTEGER), id");
}

std::int64_t PhoneLineService::AddPhoneLine(const PhoneLine& line) {
  DatabaseSession session(database_, connection_string_);
  return session.Insert("INSERT INTO PhoneLine (Line, Name) VALUES (?, ?)", {line.Line, NameOf(line)});
}

void PhoneLineService::UpdatePhoneLine(const PhoneLine& line) {
  DatabaseSession session(database_, connection_string_);
  session.RequireRow("SELECT id FROM PhoneLine WHERE id = ?", line.id);
  session.Run("UPDATE PhoneLine SET Line = ?, Name = ? WHERE id = ?", {line.Line, NameOf(line), line.id});
}

void PhoneLineService::DeletePhoneLine(const PhoneLine& line) {
  DatabaseSession session(database_, connection_string_);
  session.Run("DELETE FROM PhoneLine WHERE id = ?", {line.id});
}

}  // namespace kestro::contacts
