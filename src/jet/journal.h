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
/// It is complete and on the disk before the first of them is touched, and its removal is the moment at
/// which the transaction counts. A journal that is torn was never needed: then the database is untouched.
///
/// Layout: header of 64 bytes (mark, page size, number of records, size of the database before, salt,
/// checksum), then a record a page (number, content, checksum with the salt and the record's place).
class JournalWriter {
 public:
  /// Creates the file; an old one must have been dealt with.
  JournalWriter(FileLayer& layer, std::string path, std::uint64_t original_size, std::uint32_t records);

  void Add(PageNumber page, ByteSpan content);

  /// Returns when the journal and its name are safe on the disk.
  void Finish();

 private:
  void Flush();

  FileLayer& layer_;
  std::string path_;
  std::unique_ptr<File> file_;
  std::uint64_t salt_;
  std::uint64_t offset_ = 0;
  std::uint32_t added_ = 0;
  std::vector<std::uint8_t> buffer_;
};

struct JournalHeader {
  std::uint32_t records = 0;
  std::uint64_t original_size = 0;
  std::uint64_t salt = 0;
};

/// The header of a complete journal, all records checked; nothing when it is torn or no journal at all.
/// `file` may hold anything.
std::optional<JournalHeader> ReadCompleteJournal(File& file);

/// Puts the former pages back, cuts the database to its former size and makes that durable. Throws kDamaged
/// when the journal cannot belong to this database; nothing is changed then.
void RestoreFromJournal(File& journal, const JournalHeader& header, File& database);

std::string JournalPath(const std::string& database_path);

}  // namespace kestro::jet
