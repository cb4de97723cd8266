#include "import/imported_phone_types.h"

#include <algorithm>
#include <limits>

#include "base/runtime_error.h"
#include "base/text.h"

namespace kestro::import {
namespace {

constexpr std::int32_t kOrderWhileUnread = 1'000'000;

/// What of a type's name counts, in the form that the names are kept in.
std::string KeyOf(std::string_view name) {
  return base::FoldCase(base::FirstCharacters(name, contacts::DatabaseLength::kPhoneTypeName));
}

}  // namespace

ImportedPhoneTypes::ImportedPhoneTypes(core::LogModule& log, contacts::ContactIntegrationModule& contacts)
    : procedure_(log, "KESTROCTI.ContactsImport", core::Spelling::kFullStop), contacts_(contacts) {}

void ImportedPhoneTypes::ReadOnce() {
  const std::string path = contacts_.DatabasePath();
  if (loaded_ && path == database_path_) return;
  loaded_ = false;
  types_.clear();
  largest_order_ = 0;
  for (const auto& type : contacts_.Connected<contacts::PhoneTypeService>().GetPhoneTypes()) {
    Keep(type.name, type);
  }
  database_path_ = path;
  loaded_ = true;
}

void ImportedPhoneTypes::Keep(std::string_view name, const contacts::PhoneType& type) {
  const bool is_first = types_.try_emplace(base::FoldCase(name), type).second;
  if (is_first) largest_order_ = types_.size() == 1 ? type.Order : std::max(largest_order_, type.Order);
}

bool ImportedPhoneTypes::IsKnown(std::string_view name) {
  ReadOnce();
  return types_.contains(KeyOf(name));
}

std::int64_t ImportedPhoneTypes::GetImportedPhoneType(std::string_view name) {
  return procedure_("GetImportedPhoneType", [&] {
    name = base::FirstCharacters(name, contacts::DatabaseLength::kPhoneTypeName);
    ReadOnce();
    const auto found = types_.find(KeyOf(name));
    return found == types_.end() ? CreateNewPhoneType(name) : found->second.id;
  });
}

std::int64_t ImportedPhoneTypes::CreateNewPhoneType(std::string_view name) {
  return procedure_("CreateNewPhoneType", [&] {
    contacts::PhoneType type{0, std::string(base::Trim(name)), GetPhoneTypeOrder()};
    type.id = contacts_.Connected<contacts::PhoneTypeService>().AddPhoneType(type);
    Keep(name, type);
    return type.id;
  });
}

std::int32_t ImportedPhoneTypes::GetPhoneTypeOrder() {
  return procedure_("GetPhoneTypeOrder", [&] {
    if (!loaded_) return kOrderWhileUnread;
    if (types_.empty()) return 1;
    if (largest_order_ == std::numeric_limits<std::int32_t>::max()) base::RaiseOverflow();
    return largest_order_ + 1;
  });
}

}  // namespace kestro::import
