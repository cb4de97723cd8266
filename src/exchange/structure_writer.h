#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace kestro::exchange {

/// Fills a variable-size structure in the caller's buffer: the fixed part first,
/// then texts in the variable area as far as they fit.
///
/// At most dwTotalSize bytes are used, and never more than the buffer has,
/// whatever dwTotalSize says. Bytes behind the used ones stay as they are.
class StructureWriter {
 public:
  /// Clears the fixed part (dwTotalSize stays) unless the buffer cannot hold it.
  StructureWriter(std::span<std::uint8_t> buffer, std::size_t fixed_size);

  /// The fixed part fits. When it does not, nothing else may be called.
  [[nodiscard]] bool fits() const { return fits_; }

  void Put(std::size_t offset, std::uint32_t value);
  /// Appends the text and a terminating zero and stores size and offset in the
  /// fixed part; both stay zero when the text does not fit.
  void PutText(std::size_t size_field, std::size_t offset_field, std::string_view text);
  /// Stores dwNeededSize and dwUsedSize.
  void Finish();

 private:
  std::span<std::uint8_t> buffer_;
  bool fits_;
  std::size_t needed_;
  std::size_t used_;
};

}  // namespace kestro::exchange
