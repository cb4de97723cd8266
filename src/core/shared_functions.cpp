#include "core/shared_functions.h"

#include "base/text.h"

namespace kestro::core {

std::string SharedFunctions::Nz(const std::optional<std::string>& value, std::string_view fallback) const {
  return procedure_("Nz", [&] { return std::string(base::OrDefault(value.value_or(""), fallback)); });
}

std::string SharedFunctions::GetCurrentApplicationPath() const {
  return procedure_("GetCurrentApplicationPath", [&] {
    const std::string folder = base::ReplaceAll(files_.ProgramFolder(), "/", "\\");
    std::string path(base::Trim(folder));
    if (!path.empty() && path.back() != '\\') path.push_back('\\');
    return path;
  });
}

void SharedFunctions::SetSortStringForDataSource(ports::Recordset& recordset, std::string_view column) const {
  procedure_.With(Spelling::kBare, "SetSortStringForDataSource", [&] {
    std::string sort(column);
    if (recordset.Sort() == column) sort += " DESC";
    recordset.SetSort(sort);
  });
}

}  // namespace kestro::core
