#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "ports/file_system.h"

namespace kestro::import {

/// The lines of a text file, one after the other, in bounded memory. A line ends
/// with LF, CR LF or CR, the last one also with the file; behind a line end at
/// the end of the file there is no further line.
class LineReader {
 public:
  /// Longest line, in bytes.
  static constexpr std::size_t kMostLineBytes = std::size_t{1} << 20U;

  enum class Step {
    kLine,     // line() is the next line
    kTooLong,  // the next line has more than kMostLineBytes
    kMore,     // a block was read and the line goes on: a pause for whoever has something else to do
    kEnd,
  };

  explicit LineReader(std::unique_ptr<ports::FileReader> file) : file_(std::move(file)) {}

  /// Reads on, at most one block. Raises what the file raises.
  [[nodiscard]] Step Next();
  /// The bytes of the line without its end; valid until the next call of Next.
  [[nodiscard]] std::string_view line() const { return line_; }

 private:
  static constexpr std::size_t kBlockBytes = std::size_t{64} << 10U;

  bool Fill();
  [[nodiscard]] Step Finish(std::string_view rest);
  void Keep(std::string_view part);

  std::unique_ptr<ports::FileReader> file_;
  std::array<char, kBlockBytes> block_{};
  std::size_t position_ = 0;
  std::size_t filled_ = 0;
  bool at_end_ = false;
  bool behind_carriage_return_ = false;
  bool in_line_ = false;   // `begun_` holds what earlier blocks had of the line
  bool too_long_ = false;  // then it does not
  std::string begun_;
  std::string_view line_;
};

}  // namespace kestro::import
