#pragma once

#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/headless/headless_form_host.h"
#include "base/text.h"
#include "core/log_module.h"
#include "import/contacts_import.h"
#include "ports/memory_settings_store.h"
#include "support/latin1_code_page.h"

namespace kestro::test {

/// Keeps nothing.
class NoLog final : public ports::LoggingComponent {
 public:
  void SetFileLogging(bool /*enabled*/) override {}
  void SetLogDirectory(std::string_view /*directory*/) override {}
  void ErrorEntry(std::int32_t /*number*/, std::string_view /*source*/,
                  std::string_view /*description*/) override {}
  void LineEntry(const base::LogSource& /*source*/, std::string_view /*message*/) override {}
};

/// Tells of what changes on the screen.
class WatchedHost final : public adapters::HeadlessFormHost {
 public:
  std::function<void(const forms::Control&)> on_control_changed;
  std::function<void()> on_pause;

  void ControlChanged(forms::Form& form, forms::Control& control) override {
    HeadlessFormHost::ControlChanged(form, control);
    if (on_control_changed) on_control_changed(control);
  }
  void DoEvents() override {
    HeadlessFormHost::DoEvents();
    if (on_pause) on_pause();
  }
};

/// The import with its window, everything around it and no other part of the application.
class ImportBench {
 public:
  /// `path` leads to the contacts database. What is given must outlive the bench.
  ImportBench(ports::Database& database, std::string path, ports::FileSystem& files,
              const ports::Clock& clock)
      : path_{std::move(path)},
        shared_(log_, files),
        location_(log_, messages_, shared_, registry_, files, process_),
        contacts_(log_, shared_, database, files, path_),
        import_(
            {log_, messages_, texts_, location_, contacts_, files, dialogs_, code_page_, clock, window_}) {}

  /// Imports the file; returns when the window has gone.
  void Import(const std::string& file) {
    dialogs_.file = file;
    window_.Import(owner_);
  }

  void UseDatabase(std::string path) { path_.path = std::move(path); }

  /// Message boxes that were shown, without their line breaks.
  std::vector<std::string> boxes;
  /// Answers a question; without it every question is answered yes.
  std::function<ports::BoxAnswer(const std::string& text)> on_question;

  [[nodiscard]] import::frmContactImportProgress& window() { return window_; }
  [[nodiscard]] WatchedHost& host() { return host_; }
  /// Contacts that the window counts.
  [[nodiscard]] long Count() const {
    return std::strtol(window_.importedContactsLabel.caption().c_str(), nullptr, 10);
  }

 private:
  class NoLine final : public core::LineMonitor {
   public:
    void InitializeLine() override {}
    void StartLineListening(std::int32_t /*device*/) override {}
    void StopLineListening() override {}
    void ShutDownLine() override {}
    void DropCall(bool /*keep_call*/) override {}
    bool IsLineIdSet() override { return false; }
    std::int32_t GetCurrentLineId() override { return 0; }
  };
  class End final : public ports::ProcessControl {
   public:
    [[noreturn]] void EndProcess() override { throw base::ProcessEnded{}; }
  };
  struct OneFile final : ports::FileDialogs {
    std::optional<std::string> OpenFile(const ports::FileDialogRequest& /*request*/) override { return file; }
    std::string file;
  };
  class Boxes final : public ports::MessageBoxes {
   public:
    explicit Boxes(ImportBench& bench) : bench_(bench) {}
    ports::BoxAnswer Show(std::string_view text, int style) override {
      bench_.boxes.push_back(base::ReplaceAll(text, core::kLineBreak, ""));
      if ((style & ports::kYesNo) == 0) return ports::BoxAnswer::kOk;
      return bench_.on_question ? bench_.on_question(bench_.boxes.back()) : ports::BoxAnswer::kYes;
    }

   private:
    ImportBench& bench_;
  };
  struct Path final : contacts::DatabasePathSource {
    explicit Path(std::string text) : path(std::move(text)) {}
    std::string DatabasePath() const override { return path; }
    std::string path;
  };

  Path path_;
  WatchedHost host_;
  NoLog no_log_;
  NoLine line_;
  End process_;
  OneFile dialogs_;
  Boxes message_boxes_{*this};
  Latin1CodePage code_page_;
  ports::MemorySettingsStore settings_;
  core::ApplicationFlags flags_;
  core::LogModule log_{no_log_};
  core::Localization texts_{log_};
  core::Messages messages_{texts_, message_boxes_};
  core::RegistrySettingsModule registry_{log_, settings_};
  core::Functions::ApplicationEnding ending_{log_, messages_, line_, host_, process_, flags_};
  core::SharedFunctions shared_;
  core::Functions::DatabaseLocation location_;
  contacts::ContactIntegrationModule contacts_;
  forms::Form owner_{host_, "owner", 1, 1};
  import::frmContactImportProgress window_{host_, {log_, messages_, texts_, flags_, ending_}};
  import::ContactsImport import_;
};

}  // namespace kestro::test
