#include "jet/database.h"

#include <chrono>
#include <ratio>
#include <utility>

#include "jet/error.h"
#include "jet/journal.h"
#include "jet/new_database.h"
#include "jet/properties.h"
#include "jet/table_builder.h"
#include "jet/table_storage.h"

namespace kestro::jet {
namespace {

constexpr double kUnixEpoch = 25569;  // in days since 1899-12-30

double SystemNow() {
  using Days = std::chrono::duration<double, std::ratio<86400>>;
  return kUnixEpoch +
         std::chrono::duration_cast<Days>(std::chrono::system_clock::now().time_since_epoch()).count();
}

// A journal beside the file means that a commit was interrupted.
void Recover(FileLayer& layer, const std::string& path, File& database) {
  const std::string journal_path = JournalPath(path);
  if (!layer.Exists(journal_path)) return;
  {
    const std::unique_ptr<File> journal = layer.Open(journal_path, FileMode::kReadWrite);
    if (const auto header = ReadCompleteJournal(*journal)) {
      RestoreFromJournal(*journal, *header, database);
      RetireJournal(*journal);  // should its name come back after a loss of power
    }
  }
  layer.Remove(journal_path);
}

// Other programs announce their shared use of the file in a file beside it.
std::string SharedUseReason(FileLayer& layer, const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  const std::size_t dot = path.rfind('.');
  const bool has_extension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
  const std::string stem = has_extension ? path.substr(0, dot) : path;
  for (const char* extension : {".ldb", ".LDB"}) {
    const std::string lock = stem + extension;
    if (!layer.Exists(lock)) continue;
    try {
      layer.Remove(lock);
    } catch (const Error&) {
      return "Another program has the database open (" + lock + " cannot be removed)";
    }
  }
  return {};
}

struct OpenedFile {
  std::unique_ptr<File> file;
  std::string read_only_reason;
};

OpenedFile OpenForReading(FileLayer& layer, const std::string& path, std::string reason) {
  if (layer.Exists(JournalPath(path))) {
    // Nothing but opening for writing can tell whether it is needed.
    const std::unique_ptr<File> journal = layer.Open(JournalPath(path), FileMode::kRead);
    if (ReadCompleteJournal(*journal)) {
      throw Error(ErrorKind::kDamaged,
                  "A change of the database was interrupted; it must be opened for writing once");
    }
  }
  return {layer.Open(path, FileMode::kRead), std::move(reason)};
}

OpenedFile OpenFile(FileLayer& layer, const std::string& path, OpenMode mode) {
  if (mode == OpenMode::kReadOnly) return OpenForReading(layer, path, "The database was opened for reading");
  std::unique_ptr<File> file;
  try {
    file = layer.Open(path, FileMode::kReadWrite);
  } catch (const Error& error) {
    if (error.kind() != ErrorKind::kReadOnly) throw;
    return OpenForReading(layer, path, error.what());
  }
  std::string reason = SharedUseReason(layer, path);
  if (!reason.empty()) {
    file.reset();  // others may go on reading
    return OpenForReading(layer, path, std::move(reason));
  }
  Recover(layer, path, *file);
  return {std::move(file), {}};
}

}  // namespace

Database::Database(FileLayer& layer, std::string path, DatabaseOptions options)
    : layer_(layer), path_(std::move(path)), options_(std::move(options)) {
  if (!options_.now) options_.now = SystemNow;
}

Database::~Database() = default;

std::unique_ptr<Database> Database::Open(FileLayer& layer, const std::string& path, OpenMode mode,
                                         DatabaseOptions options) {
  std::unique_ptr<Database> database(new Database(layer, path, std::move(options)));
  OpenedFile opened = OpenFile(layer, path, mode);
  auto pager = std::make_unique<Pager>(layer, std::move(opened.file), path, database->options_.cache_pages);
  if (pager->page_count() == 0) throw Error(ErrorKind::kNotADatabase, "The file is empty");
  const HeaderPage header = ParseHeaderPage(pager->Read(0).bytes());
  database->storage_ = std::make_unique<Storage>(std::move(pager));
  Storage& storage = *database->storage_;
  storage.read_only_reason = std::move(opened.read_only_reason);
  if (storage.read_only_reason.empty()) storage.read_only_reason = header.read_only_reason;
  if (storage.read_only_reason.empty()) storage.read_only_reason = storage.space.ReadOnlyReason();
  database->catalog_ = std::make_unique<Catalog>(storage, header.catalog);
  return database;
}

std::unique_ptr<Database> Database::Create(FileLayer& layer, const std::string& path,
                                           DatabaseOptions options) {
  std::unique_ptr<Database> database(new Database(layer, path, std::move(options)));
  {
    std::unique_ptr<File> file = layer.Open(path, FileMode::kCreate);
    // A journal left by a file of this name that is gone.
    layer.Remove(JournalPath(path));
    auto pager = std::make_unique<Pager>(layer, std::move(file), path, database->options_.cache_pages);
    database->storage_ = std::make_unique<Storage>(std::move(pager));
  }
  Storage& storage = *database->storage_;
  storage.pager.Begin();
  FillNewDatabase(storage, database->options_.now());
  storage.pager.Commit();
  database->catalog_ = std::make_unique<Catalog>(storage, 2);
  return database;
}

std::vector<std::string> Database::Tables() {
  std::vector<std::string> names;
  for (CatalogEntry& entry : catalog_->Entries()) {
    if (!entry.system && !entry.linked) names.push_back(std::move(entry.name));
  }
  return names;
}

std::shared_ptr<Table> Database::OpenTable(std::string_view name) {
  const std::optional<CatalogEntry> entry = catalog_->Find(name);
  if (!entry) throw Error(ErrorKind::kNotFound, "There is no table \"" + std::string(name) + "\"");
  if (entry->linked) {
    throw Error(ErrorKind::kReadOnly,
                "The table \"" + entry->name + "\" is linked: its rows are in another file");
  }
  std::weak_ptr<Table>& known = tables_[entry->page];
  if (std::shared_ptr<Table> table = known.lock()) return table;
  TableDefinition definition = ReadTableDefinition(storage_->pager, entry->page);
  const std::string reason = ApplyProperties(catalog_->Properties(*entry), definition.columns);
  if (definition.read_only_reason.empty()) definition.read_only_reason = reason;
  if (entry->system) definition.system = true;
  auto table = std::make_shared<Table>(*storage_, entry->name, std::move(definition));
  known = table;
  return table;
}

void Database::RequireChangeable() const {
  if (!storage_->read_only_reason.empty()) throw Error(ErrorKind::kReadOnly, storage_->read_only_reason);
  storage_->pager.RequireSound();
  const std::string reason = catalog_->ReadOnlyReason();
  if (!reason.empty()) throw Error(ErrorKind::kReadOnly, "Tables cannot be created or dropped: " + reason);
}

std::shared_ptr<Table> Database::CreateTable(const TableDesign& design) {
  RequireChangeable();
  TableDefinition definition = BuildTableDefinition(design);
  if (catalog_->Find(design.name)) {
    throw Error(ErrorKind::kDuplicate, "There is a table \"" + design.name + "\" already");
  }
  ChangeGuard guard(storage_->pager);
  tables_changed_ = true;
  CreateTableStorage(*storage_, definition);
  catalog_->Add(definition.page, design.name, MakeProperties(definition.columns), options_.now());
  guard.Done();
  return OpenTable(design.name);
}

void Database::DropTable(std::string_view name) {
  RequireChangeable();
  const std::shared_ptr<Table> table = OpenTable(name);
  if (!table->ReadOnlyReason().empty()) throw Error(ErrorKind::kReadOnly, table->ReadOnlyReason());
  const std::optional<CatalogEntry> entry = catalog_->Find(name);
  ChangeGuard guard(storage_->pager);
  tables_changed_ = true;
  catalog_->Remove(*entry);
  DropTableStorage(*storage_, table->definition());
  table->MarkDropped();
  tables_.erase(entry->page);
  guard.Done();
}

void Database::Begin() {
  if (!storage_->read_only_reason.empty()) throw Error(ErrorKind::kReadOnly, storage_->read_only_reason);
  storage_->pager.Begin();
  tables_changed_ = false;
}

void Database::Commit() {
  try {
    storage_->pager.Commit();
  } catch (const Error&) {
    // It may have ended as a rollback.
    if (!storage_->pager.in_transaction()) ForgetChanges();
    throw;
  }
}

void Database::Rollback() {
  storage_->pager.Rollback();
  ForgetChanges();
}

bool Database::InTransaction() const { return storage_->pager.in_transaction(); }

void Database::LeaveOneFile() { storage_->pager.RemoveJournal(); }

std::size_t Database::BeginSavepoint() { return storage_->pager.BeginSavepoint(); }

void Database::ReleaseSavepoint(std::size_t depth) { storage_->pager.ReleaseSavepoint(depth); }

void Database::RollbackToSavepoint(std::size_t depth) {
  storage_->pager.RollbackToSavepoint(depth);
  ForgetChanges();
}

// After a rollback: tables created or dropped since may have become others.
void Database::ForgetChanges() {
  storage_->space.Forget();
  if (!tables_changed_) return;
  std::erase_if(tables_, [this](const auto& known) {
    const std::shared_ptr<Table> table = known.second.lock();
    if (table == nullptr) return true;
    const std::optional<CatalogEntry> entry = catalog_->Find(table->name());
    if (entry && entry->page == known.first) return false;
    table->MarkDropped();
    return true;
  });
}

}  // namespace kestro::jet
