#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "jet/bytes.h"
#include "jet/row_id.h"

namespace kestro::jet {

struct RealIndex;
class RowLayout;
struct TableDefinition;

/// An entry of an index (or the beginning of one), as it is compared bytewise: key, page, slot. Lives on the
/// stack; longer keys than fit are not supported. Made for every row, too large to be zeroed each time.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
class IndexKey {
 public:
  static constexpr std::size_t kCapacity = 1100;

  [[nodiscard]] ByteSpan bytes() const { return ByteSpan(bytes_).first(size_); }
  [[nodiscard]] std::size_t size() const { return size_; }
  void Clear() { size_ = 0; }
  void Cut(std::size_t size) { size_ = size; }

  /// False when the key became too long; then it is useless.
  bool Append(std::uint8_t byte) {
    if (size_ == kCapacity) return false;
    bytes_[size_++] = byte;
    return true;
  }
  bool Append(ByteSpan bytes) {
    if (bytes.size() > kCapacity - size_) return false;
    Copy(bytes_, size_, bytes);
    size_ += bytes.size();
    return true;
  }
  bool AppendRow(RowId id);

 private:
  std::array<std::uint8_t, kCapacity> bytes_;
  std::size_t size_ = 0;
};

inline constexpr std::uint8_t kKeyNull = 0x00;
inline constexpr std::uint8_t kKeyValue = 0x7F;
inline constexpr std::size_t kRowBytesInKey = 4;

enum class KeyResult {
  kKey,
  kSomeNull,     // a key too, but one of its columns is null
  kAllNull,      // a key too, but all of its columns are null
  kUnsupported,  // a value, or a type, whose place in the order is not known
};

/// The key of a row in an index, without page and slot.
KeyResult MakeKey(const TableDefinition& definition, const RealIndex& index, const RowLayout& row,
                  IndexKey& key);

/// Empty when keys of this index can be made; otherwise why not.
std::string_view KeyTypeProblem(const TableDefinition& definition, const RealIndex& index);

/// Flag and value of an ascending INT32 column.
void AppendInt32Key(std::int32_t value, IndexKey& key);

}  // namespace kestro::jet
