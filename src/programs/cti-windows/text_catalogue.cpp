// The text catalogue of this program lies in its string-table resource, where the tools of translators find
// it.

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "adapters/win32/wide_text.h"
#include "generated/text_catalogue_table.h"

namespace kestro::core {
namespace {

constexpr int kTextsOfBlock = 16;

/// Block names are numbers, counted from 1; block 1 holds the texts 0 to 15.
BOOL CALLBACK AddBlock(HMODULE /*module*/, LPCWSTR /*type*/, LPWSTR name, LONG_PTR blocks) {
  if (IS_INTRESOURCE(name)) {
    reinterpret_cast<std::vector<int>*>(blocks)->push_back(
        static_cast<int>(reinterpret_cast<ULONG_PTR>(name)));
  }
  return TRUE;
}

class ResourceTexts {
 public:
  ResourceTexts() {
    std::vector<int> blocks;
    ::EnumResourceNamesW(nullptr, RT_STRING, &AddBlock, reinterpret_cast<LONG_PTR>(&blocks));
    std::sort(blocks.begin(), blocks.end());
    for (const int block : blocks) {
      for (int place = 0; place < kTextsOfBlock; ++place) Add((block - 1) * kTextsOfBlock + place);
    }
    for (std::size_t i = 0; i < entries_.size(); ++i) entries_[i].text = texts_[i];
  }

  [[nodiscard]] std::span<const CatalogueText> entries() const { return entries_; }

 private:
  /// A number without a text has an empty one in the resource.
  void Add(int number) {
    const wchar_t* start = nullptr;
    // A size of 0 asks for the place of the text itself.
    const int size = ::LoadStringW(nullptr, static_cast<UINT>(number), reinterpret_cast<LPWSTR>(&start), 0);
    if (size <= 0) return;
    texts_.push_back(adapters::ToUtf8({start, static_cast<std::size_t>(size)}));
    entries_.push_back({number, {}});
  }

  std::vector<std::string> texts_;
  std::vector<CatalogueText> entries_;
};

}  // namespace

std::span<const CatalogueText> CatalogueTexts() {
  static const ResourceTexts texts;
  return texts.entries();
}

}  // namespace kestro::core
