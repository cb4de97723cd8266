#include "import/cvs_parser.h"

#include <algorithm>
#include <limits>

#include "base/runtime_error.h"

namespace kestro::import {
namespace {

constexpr auto kNone = std::string_view::npos;

bool IsWhiteSpace(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

std::size_t BehindWhiteSpace(std::string_view line, std::size_t position) {
  while (position < line.size() && IsWhiteSpace(line[position])) ++position;
  return position;
}

/// End of the field at `start` if it is a quoted one, with nothing but white space around the quotes. The
/// end of the line ends a field as ";" does.
std::size_t EndOfQuotedField(std::string_view line, std::size_t start) {
  const std::size_t opening = BehindWhiteSpace(line, start);
  if (opening == line.size() || line[opening] != '"') return kNone;
  const std::size_t closing = line.find('"', opening + 1);
  if (closing == kNone) return kNone;
  const std::size_t end = BehindWhiteSpace(line, closing + 1);
  return end == line.size() || line[end] == ';' ? end : kNone;
}

std::size_t EndOfField(std::string_view line, std::size_t start) {
  const std::size_t quoted = EndOfQuotedField(line, start);
  return quoted != kNone ? quoted : std::min(line.find(';', start), line.size());
}

std::string_view WithoutEnclosure(std::string_view field) {
  while (!field.empty() && field.front() == ' ') field.remove_prefix(1);
  while (!field.empty() && field.back() == ' ') field.remove_suffix(1);
  if (field.empty() || field.front() != '"' || field.back() != '"') return field;
  if (field.size() == 1) {
    throw base::RuntimeError(base::kInvalidProcedureCall, "Invalid procedure call or argument");
  }
  return field.substr(1, field.size() - 2);
}

std::int32_t CountOf(const std::vector<std::string_view>& fields) {
  if (fields.size() > std::numeric_limits<std::int32_t>::max()) base::RaiseOverflow();
  return static_cast<std::int32_t>(fields.size());
}

}  // namespace

CVSParser::CVSParser(core::LogModule& log)
    : procedure_(log, "KESTROCTI.CVSParser", core::Spelling::kFullStop) {
  procedure_("Class_Initialize", [] {});
}

std::int32_t CVSParser::ParseLine(std::string_view line, std::vector<std::string_view>& fields) const {
  return procedure_.Outermost(
      "ParseLine",
      [&] {
        fields.clear();
        // Behind a ";" there is one more field, be it empty.
        for (std::size_t start = 0; start <= line.size();) {
          const std::size_t end = EndOfField(line, start);
          fields.push_back(WithoutEnclosure(line.substr(start, end - start)));
          start = end + 1;
        }
        return CountOf(fields);
      },
      [](const base::RuntimeError&) { return 0; });
}

}  // namespace kestro::import
