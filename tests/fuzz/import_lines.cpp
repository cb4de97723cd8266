#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/property.h"
#include "import/cvs_parser.h"
#include "import/line_reader.h"
#include "support/log_capture.h"
#include "unit/support/text_file.h"

// Import files: the same lines however the file comes in, and fields that are parts of their line.

namespace kestro::fuzz {
namespace {

using import::LineReader;

/// Of a file that delivers at most so many bytes a read.
std::vector<std::string> LinesOf(std::string_view text, std::size_t most) {
  LineReader reader(std::make_unique<test_support::TextFile>(std::string(text), most));
  std::vector<std::string> lines;
  for (;;) {
    switch (reader.Next()) {
      case LineReader::Step::kLine:
        lines.emplace_back(reader.line());
        break;
      case LineReader::Step::kTooLong:
        Require(text.size() > LineReader::kMostLineBytes, "a short line that is too long");
        lines.emplace_back("too long");
        break;
      case LineReader::Step::kMore:
        break;
      case LineReader::Step::kEnd:
        return lines;
    }
  }
}

void CheckFields(const std::string& line) {
  test::LogCapture capture;
  core::LogModule log(capture);
  const import::CVSParser parser(log);
  std::vector<std::string_view> fields;
  const int count = parser.ParseLine(line, fields);
  Require(count == 0 || static_cast<std::size_t>(count) == fields.size(), "another number of fields");
  if (count == 0) return;
  const auto separators = static_cast<std::size_t>(std::count(line.begin(), line.end(), ';'));
  Require(fields.size() <= separators + 1, "more fields than separators make");
  for (const std::string_view field : fields) {
    const bool inside = field.empty() || (field.data() >= line.data() &&
                                          field.data() + field.size() <= line.data() + line.size());
    Require(inside, "a field outside its line");
  }
}

}  // namespace

void Check(std::string_view text) {
  const auto lines = LinesOf(text, 1 + text.size() % 7);
  Require(lines == LinesOf(text, text.size() + 1), "lines that depend on how the file is read");
  for (const std::string& line : lines) {
    Require(line.find_first_of("\r\n") == std::string::npos, "a line end inside a line");
    CheckFields(line);
  }
}

}  // namespace kestro::fuzz
