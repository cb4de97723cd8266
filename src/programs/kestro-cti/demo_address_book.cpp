#include "programs/kestro-cti/demo_address_book.h"

#include <filesystem>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/posix/atomic_copy.h"
#include "adapters/posix/user_folders.h"
#include "adapters/sqlite/sqlite_database.h"
#include "base/runtime_error.h"
#include "scenario/address_book.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTemplateName = "/DBTemplate.tpl";
constexpr const char* kDatabaseFolder = "/KESTRO/KESTROCTI";
constexpr const char* kDatabaseName = "/CTIDB.mdb";

constexpr std::string_view kAddressBook = R"(
phone-line "21" "Reception"
phone-line "22" "Warehouse"
phone-line "23" "Accounts"
custom-fields "Customer no." "Price group" "Terms" "Remarks"
contact Name="Jan Novák" Company="Novák & synové, s. r. o." Position="Owner" Phone1="602 111 222" PhoneType1="Mobile" Phone2="222 333 444" PhoneType2="Work" Street="Dlouhá 12" City="Praha" ZIPCode="110 00" Country="Czech Republic" Email="jan.novak@example.com" Note="Calls every Monday about the deliveries." UserField1="10021" UserField2="B" UserField3="14 days"
contact Name="Eva Malá" Company="Novák & synové, s. r. o." Position="Accountant" Phone1="603 222 333" PhoneType1="Mobile" Phone2="222 333 444" PhoneType2="Work" City="Praha" Email="eva.mala@example.com" UserField1="10021"
contact Name="Ingrid Sørensen" Company="Nordlys Trading" Position="Purchasing manager" Phone1="+45 33 12 34 56" PhoneType1="Work" City="København" Country="Denmark" Email="ingrid@example.com" Note="Speaks English."
)";

/// A file that is removed again unless it got its final name.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(std::string path) : path_(std::move(path)) { Remove(); }
  ~UnfinishedFile() { Remove(); }
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  void TakeName(const std::string& name) const {
    std::error_code error;
    fs::rename(path_, name, error);
    if (error) throw base::RuntimeError(base::kPathAccessError, name + ": " + error.message());
  }

 private:
  void Remove() const {
    std::error_code ignored;  // there may be nothing to remove
    fs::remove(path_, ignored);
  }

  std::string path_;
};

void FillDatabase(const std::string& file) {
  // The connection string's path is only handed through: it stands for the file itself.
  adapters::SystemFileLayer files;
  adapters::SqliteDatabase database(files, [&file](std::string_view) { return fs::path(file); });
  const std::string connection_string =
      std::string(ports::kConnectionStringStart).append("demonstration").append(ports::kConnectionStringEnd);
  scenario::LoadAddressBook(kAddressBook, database, connection_string);
}

/// Under its final name the file appears complete, and after it was closed.
void MakeDatabase(const std::string& from, const std::string& to) {
  const UnfinishedFile file(to + ".new");
  adapters::CopyFileAtomically(from, file.path(), true);
  FillDatabase(file.path());
  file.TakeName(to);
}

}  // namespace

void PrepareDemoAddressBook(const std::string& program_folder, const std::string& user_data_folder) {
  const std::string folder = user_data_folder + kDatabaseFolder;
  adapters::MakeFolders(folder);
  const std::string database_file = folder + kDatabaseName;
  if (!fs::exists(database_file)) MakeDatabase(program_folder + kTemplateName, database_file);
}

}  // namespace kestro::programs
