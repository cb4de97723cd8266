#include "core/localization.h"

#include <algorithm>

#include "base/text.h"
#include "generated/text_catalogue_table.h"

namespace kestro::core {
namespace {

constexpr std::string_view kPlaceholder = "%%p";

std::string_view CatalogueEntry(int number) {
  const auto texts = CatalogueTexts();
  const auto found =
      std::lower_bound(texts.begin(), texts.end(), number,
                       [](const CatalogueText& text, int wanted) { return text.number < wanted; });
  if (found == texts.end() || found->number != number) {
    throw base::RuntimeError(base::kResourceNotFound,
                             "Text " + std::to_string(number) + " is not in the catalogue");
  }
  return found->text;
}

}  // namespace

std::string Localization::GetLocalizedString(std::string_view text_id,
                                             std::span<const std::string> parameters) const {
  return procedure_("GetLocalizedString", [&] {
    std::string text(CatalogueEntry(base::ToInt32(text_id)));
    for (const std::string& parameter : parameters) {
      const auto position = text.find(kPlaceholder);
      if (position != std::string::npos) text.replace(position, kPlaceholder.size(), parameter);
    }
    return text;
  });
}

}  // namespace kestro::core
