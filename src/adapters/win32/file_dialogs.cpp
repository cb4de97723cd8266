#include "adapters/win32/file_dialogs.h"

#include <algorithm>
#include <vector>

#include "adapters/win32/wide_text.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kMostCharacters = 4096;  // of a path

/// "Text files|*.txt|" becomes a list of texts that each end in a zero, with one more behind the last.
std::wstring FilterList(std::string_view filter) {
  std::wstring list = ToWide(filter);
  if (list.empty()) return list;
  if (list.back() != L'|') list.push_back(L'|');
  std::replace(list.begin(), list.end(), L'|', L'\0');
  list.push_back(L'\0');
  return list;
}

}  // namespace

bool Win32FileDialogs::Ask(OPENFILENAMEW& dialog) {
  const Win32EventBoundary::ForeignLoop loop(boundary_);
  return ::GetOpenFileNameW(&dialog) != FALSE;
}

std::optional<std::string> Win32FileDialogs::OpenFile(const ports::FileDialogRequest& request) {
  boundary_.ThrowIfEnded();
  const std::wstring title = ToWide(request.title);
  const std::wstring filter = FilterList(request.filter);
  const std::wstring folder = ToWide(request.initial_path);
  std::string_view extension = request.default_extension;
  if (extension.starts_with('.')) extension.remove_prefix(1);
  const std::wstring wide_extension = ToWide(extension);
  std::vector<wchar_t> name(kMostCharacters, L'\0');
  const std::wstring initial_name = ToWide(request.initial_name);
  std::copy_n(initial_name.begin(), std::min(initial_name.size(), name.size() - 1), name.begin());

  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = ::GetActiveWindow();
  dialog.lpstrTitle = title.empty() ? nullptr : title.c_str();
  dialog.lpstrFilter = filter.empty() ? nullptr : filter.c_str();
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = name.data();
  dialog.nMaxFile = static_cast<DWORD>(name.size());
  dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  dialog.lpstrDefExt = wide_extension.empty() ? nullptr : wide_extension.c_str();
  dialog.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  const bool chosen = Ask(dialog);
  boundary_.ThrowIfEnded();
  if (!chosen) return std::nullopt;
  return ToUtf8(name.data());
}

}  // namespace kestro::adapters
