#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "jet/checker.h"
#include "jet/error.h"
#include "jet/page.h"

namespace kestro::jet {

/// What the parts of the checker share: the findings so far, and who uses which page.
class CheckReport {
 public:
  explicit CheckReport(PageNumber pages) : users_(pages) { result_.pages = pages; }

  void Find(const std::string& finding) {
    if (result_.findings.size() < kMostFindings) result_.findings.push_back(finding);
  }

  /// Runs a part of the check; what it meets as damage becomes a finding.
  template <typename Part>
  void Try(const std::string& where, Part part) {
    try {
      part();
    } catch (const Error& error) {
      Find(where + ": " + error.what());
    }
  }

  /// Notes the user of a page; a finding and false when there is one already, or no such page.
  bool Claim(PageNumber page, const std::string& user) {
    if (page >= users_.size()) {
      Find(user + ": page " + std::to_string(page) + " is behind the end of the file");
      return false;
    }
    if (!users_[page].empty()) {
      Find("page " + std::to_string(page) + " is used by " + users_[page] + " and by " + user);
      return false;
    }
    users_[page] = user;
    return true;
  }

  /// Map pages may serve several tables, each of their rows one.
  void ClaimMapRow(DataPointer where, const std::string& user) {
    if (map_pages_.insert(where.page).second && !Claim(where.page, "usage maps")) return;
    if (!map_rows_.insert(where.Stored()).second) Find(user + ": its usage map serves another one, too");
  }

  [[nodiscard]] const std::string& user(PageNumber page) const { return users_[page]; }
  [[nodiscard]] const std::set<PageNumber>& map_pages() const { return map_pages_; }
  [[nodiscard]] CheckResult& result() { return result_; }

 private:
  CheckResult result_;
  std::vector<std::string> users_;  // empty: none so far
  std::set<PageNumber> map_pages_;
  std::set<std::uint32_t> map_rows_;
};

inline std::string OnPage(const std::string& who, PageNumber page) {
  return who + ", page " + std::to_string(page);
}

}  // namespace kestro::jet
