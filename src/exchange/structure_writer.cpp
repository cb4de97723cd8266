#include "exchange/structure_writer.h"

#include <algorithm>

#include "ports/line_structures.h"

namespace kestro::exchange {
namespace {

std::span<std::uint8_t> UsablePart(std::span<std::uint8_t> buffer) {
  if (buffer.size() < sizeof(std::uint32_t)) return {};
  const std::size_t told = ports::ReadDword(buffer, ports::kTotalSize);
  return buffer.first(std::min(told, buffer.size()));
}

}  // namespace

StructureWriter::StructureWriter(std::span<std::uint8_t> buffer, std::size_t fixed_size)
    : buffer_(UsablePart(buffer)),
      fits_(buffer_.size() >= fixed_size),
      needed_(fixed_size),
      used_(fixed_size) {
  if (!fits_) return;
  const auto behind_total_size = buffer_.first(fixed_size).subspan(sizeof(std::uint32_t));
  std::fill(behind_total_size.begin(), behind_total_size.end(), std::uint8_t{0});
}

void StructureWriter::Put(std::size_t offset, std::uint32_t value) {
  ports::WriteDword(buffer_, offset, value);
}

void StructureWriter::PutText(std::size_t size_field, std::size_t offset_field, std::string_view text) {
  const std::size_t size = text.size() + 1;
  needed_ += size;
  if (size > buffer_.size() - used_) return;
  const auto target = buffer_.subspan(used_, size);
  std::copy(text.begin(), text.end(), target.begin());
  target.back() = 0;
  Put(size_field, static_cast<std::uint32_t>(size));
  Put(offset_field, static_cast<std::uint32_t>(used_));
  used_ += size;
}

void StructureWriter::Finish() {
  Put(ports::kNeededSize, static_cast<std::uint32_t>(needed_));
  Put(ports::kUsedSize, static_cast<std::uint32_t>(used_));
}

}  // namespace kestro::exchange
