#pragma once

#include <string>

namespace kestro::programs {

/// Makes the contacts database of the demonstration, with a sample address
/// book, where the first start of a user with that data folder finds it. One
/// that is there already, changed or not, stays as it is. Paths are native.
/// Raises base::RuntimeError.
void PrepareDemoAddressBook(const std::string& program_folder, const std::string& user_data_folder);

}  // namespace kestro::programs
