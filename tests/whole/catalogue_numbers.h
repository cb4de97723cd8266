#pragma once

#include <string_view>
#include <vector>

namespace kestro::test {

/// Numbers of the catalogue entries that the text can be, with anything in place
/// of their parameters. Several entries have the same text; none means that the
/// text does not come from the catalogue.
[[nodiscard]] std::vector<int> CatalogueNumbersOf(std::string_view text);

}  // namespace kestro::test
