#include "core/help_pages.h"

#include <filesystem>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/no_files.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using test_support::ReadFile;

class NoShell final : public ports::ShellExecute {
 public:
  bool Open(std::string_view /*target*/) override { return false; }
};

TEST(HelpPages, WhatCannotBeOpenedIsAnError) {
  test::LogCapture capture;
  core::LogModule log(capture);
  test::NoFiles files;
  core::SharedFunctions shared(log, files);
  NoShell shell;
  EXPECT_THROW(core::HelpPages(log, shared, shell).Open(), base::RuntimeError);
}

// The pages as the build has put them beside the program.
const fs::path kHelp = fs::path(KESTRO_PROGRAM_DIR) / "Help";

std::vector<fs::path> Pages() {
  std::vector<fs::path> pages;
  for (const auto& entry : fs::directory_iterator(kHelp)) {
    if (entry.path().extension() == ".html") pages.push_back(entry.path());
  }
  return pages;
}

/// The values of href, src and the first file of srcset.
std::vector<std::string> ReferencesIn(const std::string& html) {
  static const std::regex kReference("(?:href|src|srcset)=\"([^\" ]*)");
  std::vector<std::string> references;
  for (std::sregex_iterator match(html.begin(), html.end(), kReference), end; match != end; ++match) {
    references.push_back((*match)[1]);
  }
  return references;
}

TEST(HelpPages, LeadOnlyToWhatIsThere) {
  ASSERT_TRUE(fs::exists(kHelp / "index.html"));
  std::set<std::string> reached = {"index.html"};
  for (const fs::path& page : Pages()) {
    for (const std::string& reference : ReferencesIn(ReadFile(page))) {
      EXPECT_TRUE(fs::exists(kHelp / reference)) << page.filename() << ": " << reference;
      if (page.filename() == "index.html") reached.insert(reference);
    }
  }
  for (const fs::path& page : Pages()) {
    EXPECT_TRUE(reached.contains(page.filename().string())) << page.filename() << " is not in the start page";
  }
}

TEST(HelpPages, CanBeReadByEverybody) {
  static const std::regex kPicture("<img [^>]*>");
  for (const fs::path& page : Pages()) {
    const std::string html = ReadFile(page);
    for (const char* part : {"<!DOCTYPE html>", "<html lang=\"en\">", "<meta charset=\"utf-8\">", "<title>",
                             "<meta name=\"viewport\"", "<main", "<h1>"}) {
      EXPECT_NE(std::string::npos, html.find(part)) << page.filename() << ": " << part;
    }
    EXPECT_EQ(std::string::npos, html.find("http")) << page.filename() << " needs no network";
    EXPECT_EQ(std::string::npos, html.find("<script")) << page.filename();
    for (std::sregex_iterator match(html.begin(), html.end(), kPicture), end; match != end; ++match) {
      EXPECT_NE(std::string::npos, match->str().find("alt=\"")) << page.filename() << ": " << match->str();
    }
  }
}

}  // namespace
}  // namespace kestro
