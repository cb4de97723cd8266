#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "jet/bytes.h"
#include "jet/file_layer.h"
#include "jet/page.h"

namespace kestro::jet {

/// The file beside the database that holds the former content of the pages a commit is about to overwrite.
/// It is complete and on the disk before the first of them is touched, and losing its mark is the moment at
/// which the transaction counts: then it is retired, which is as good as not being there. A journal that is
/// torn was never needed: then the database is untouched.
///
/// Layout: header of 64 bytes (mark, page size, number of records, size of the database before, salt,
/// checksum), then a record a page (number, content, checksum with the salt and the record's place).
class JournalWriter {
 public:
  /// What is there already. One that can be written over needs no new blocks.
  enum class Place {
    kNothing,
    kLeftOver,  // the journal of a commit that was given up before the database was touched
    kRetired,   // the journal of the last commit, whose name is safe on the disk
  };

  JournalWriter(FileLayer& layer, std::string path, Place place, std::uint64_t original_size,
                std::uint32_t records);

  /// Takes over the page as it is in the database; kFileSystem when it is not there any more.
  void Add(PageNumber page, File& database);

  /// Returns when the journal and its name are safe on the disk.
  void Finish();

  /// Returns when the journal counts for nothing any more, also after a loss of power.
  void Retire();

  /// Makes it count again: Retire() failed, and whether it did anything is unknown.
  void Revive();

  [[nodiscard]] File& file() { return *file_; }
  /// Bytes written.
  [[nodiscard]] std::uint64_t size() const { return offset_; }

 private:
  void Flush();
  [[nodiscard]] MutableBytes NextRecord();

  FileLayer& layer_;
  std::string path_;
  Place place_;
  std::unique_ptr<File> file_;
  std::uint64_t salt_;
  std::uint64_t offset_ = 0;
  std::uint32_t added_ = 0;
  std::vector<std::uint8_t> buffer_;  // room for what is written at once
  std::size_t filled_ = 0;
};

struct JournalHeader {
  std::uint32_t records = 0;
  std::uint64_t original_size = 0;
  std::uint64_t salt = 0;
};

/// The header of a complete journal, all records checked; nothing when it is torn or no journal at all.
/// `file` may hold anything.
std::optional<JournalHeader> ReadCompleteJournal(File& file);

/// Takes the journal its mark; returns when that is on the disk. From then on the journal counts for nothing.
void RetireJournal(File& journal);

/// Puts the former pages back, cuts the database to its former size and makes that durable. Throws kDamaged
/// when the journal cannot belong to this database; nothing is changed then.
void RestoreFromJournal(File& journal, const JournalHeader& header, File& database);

std::string JournalPath(const std::string& database_path);

}  // namespace kestro::jet
