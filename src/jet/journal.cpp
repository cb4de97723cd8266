#include "jet/journal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <random>
#include <utility>

#include "jet/error.h"

namespace kestro::jet {
namespace {

constexpr std::uint64_t kMark = 0x324E524A54454A4BU;  // "KJETJRN2"
constexpr std::size_t kHeaderSize = 64;
constexpr std::size_t kRecordSize = 8 + kPageSize + 8;
constexpr std::size_t kRecordsPerWrite = 64;
constexpr std::size_t kHeaderChecksumAt = 32;

std::uint64_t Mix(std::uint64_t sum, std::uint64_t word) {
  return std::rotl((sum ^ word) * 0x9E3779B97F4A7C15U, 29);
}

// Four sums side by side: each step of one has to wait for the step before. Whole words only.
std::uint64_t Checksum(std::uint64_t seed, ByteSpan bytes) {
  constexpr std::size_t kSums = 4;
  std::array<std::uint64_t, kSums> sums{};
  for (std::size_t i = 0; i < kSums; ++i) sums[i] = Mix(seed, bytes.size() + i);
  std::size_t at = 0;
  for (; at + 8 * kSums <= bytes.size(); at += 8 * kSums) {
    for (std::size_t i = 0; i < kSums; ++i) sums[i] = Mix(sums[i], Load64(bytes, at + 8 * i));
  }
  for (; at + 8 <= bytes.size(); at += 8) sums[0] = Mix(sums[0], Load64(bytes, at));
  std::uint64_t sum = seed;
  for (const std::uint64_t one : sums) sum = Mix(sum, one);
  return Mix(sum, sum >> 32);
}

std::uint64_t RecordChecksum(std::uint64_t salt, std::uint32_t place, ByteSpan record) {
  return Checksum(Mix(salt, place), record.first(8 + kPageSize));
}

std::uint64_t RecordOffset(std::uint32_t place) {
  return kHeaderSize + static_cast<std::uint64_t>(place) * kRecordSize;
}

std::uint64_t NewSalt() {
  std::random_device device;
  return (static_cast<std::uint64_t>(device()) << 32) | device();
}

void StoreMark(File& journal, std::uint64_t mark) {
  std::array<std::uint8_t, sizeof(mark)> bytes{};
  Store64(bytes, 0, mark);
  journal.WriteAt(0, bytes);
  journal.Sync();
}

std::optional<JournalHeader> ReadHeader(File& file) {
  std::array<std::uint8_t, kHeaderSize> bytes{};
  if (file.ReadAt(0, bytes) != bytes.size()) return std::nullopt;
  const ByteSpan header(bytes);
  if (Load64(header, 0) != kMark || Load32(header, 8) != kPageSize) return std::nullopt;
  if (Load64(header, kHeaderChecksumAt) != Checksum(kMark, header.first(kHeaderChecksumAt))) {
    return std::nullopt;
  }
  return JournalHeader{Load32(header, 12), Load64(header, 16), Load64(header, 24)};
}

}  // namespace

std::string JournalPath(const std::string& database_path) { return database_path + ".journal"; }

JournalWriter::JournalWriter(FileLayer& layer, std::string path, Place place, std::uint64_t original_size,
                             std::uint32_t records)
    : layer_(layer),
      path_(std::move(path)),
      place_(place),
      file_(layer.Open(path_, place == Place::kNothing ? FileMode::kCreate : FileMode::kReadWrite)),
      salt_(NewSalt()),
      buffer_(kHeaderSize + std::min<std::size_t>(records, kRecordsPerWrite) * kRecordSize),
      filled_(kHeaderSize) {
  const MutableBytes header(buffer_);
  Store64(header, 0, kMark);
  Store32(header, 8, kPageSize);
  Store32(header, 12, records);
  Store64(header, 16, original_size);
  Store64(header, 24, salt_);
  Store64(header, kHeaderChecksumAt, Checksum(kMark, header.first(kHeaderChecksumAt)));
}

MutableBytes JournalWriter::NextRecord() {
  if (buffer_.size() - filled_ < kRecordSize) Flush();
  const MutableBytes record = Part(MutableBytes(buffer_), filled_, kRecordSize);
  filled_ += kRecordSize;
  return record;
}

void JournalWriter::Add(PageNumber page, File& database) {
  const MutableBytes record = NextRecord();
  Store64(record, 0, page);
  const std::uint64_t offset = static_cast<std::uint64_t>(page) * kPageSize;
  if (database.ReadAt(offset, record.subspan(8, kPageSize)) != kPageSize) {
    throw Error(ErrorKind::kFileSystem, "The database file has become shorter");
  }
  Store64(record, 8 + kPageSize, RecordChecksum(salt_, added_, record));
  ++added_;
}

void JournalWriter::Flush() {
  file_->WriteAt(offset_, ByteSpan(buffer_).first(filled_));
  offset_ += filled_;
  filled_ = 0;
}

void JournalWriter::Finish() {
  if (filled_ > 0) Flush();
  file_->Sync();
  if (place_ != Place::kRetired) layer_.SyncFolder(path_);
}

void JournalWriter::Retire() { RetireJournal(*file_); }

void JournalWriter::Revive() { StoreMark(*file_, kMark); }

void RetireJournal(File& journal) { StoreMark(journal, 0); }

std::optional<JournalHeader> ReadCompleteJournal(File& file) {
  const std::optional<JournalHeader> header = ReadHeader(file);
  if (!header || file.Size() < RecordOffset(header->records)) return std::nullopt;
  std::array<std::uint8_t, kRecordSize> record{};
  for (std::uint32_t i = 0; i < header->records; ++i) {
    if (file.ReadAt(RecordOffset(i), record) != record.size()) return std::nullopt;
    if (Load64(record, 8 + kPageSize) != RecordChecksum(header->salt, i, record)) return std::nullopt;
  }
  return header;
}

void RestoreFromJournal(File& journal, const JournalHeader& header, File& database) {
  const auto belongs = [&](bool condition) {
    if (!condition) {
      throw Error(ErrorKind::kDamaged, "The journal beside the database does not belong to it");
    }
  };
  belongs(header.original_size % kPageSize == 0 && header.original_size <= database.Size());
  std::array<std::uint8_t, kRecordSize> record{};
  for (const bool writing : {false, true}) {
    for (std::uint32_t i = 0; i < header.records; ++i) {
      belongs(journal.ReadAt(RecordOffset(i), record) == record.size());
      const std::uint64_t offset = static_cast<std::uint64_t>(Load32(record, 0)) * kPageSize;
      belongs(offset < header.original_size);
      if (writing) database.WriteAt(offset, ByteSpan(record).subspan(8, kPageSize));
    }
  }
  if (database.Size() != header.original_size) database.Truncate(header.original_size);
  database.Sync();
}

}  // namespace kestro::jet
