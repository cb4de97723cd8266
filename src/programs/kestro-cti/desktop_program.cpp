#include "programs/kestro-cti/desktop_program.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include <QGuiApplication>
#include <QSessionManager>

#include "adapters/posix/user_folders.h"
#include "adapters/qt/toolkit_version.h"
#include "adapters/sqlite/engine_version.h"
#include "base/runtime_error.h"
#include "generated/text_catalogue_table.h"
#include "generated/version.h"

namespace kestro::programs {
namespace {

using adapters::EventBoundary;

constexpr std::chrono::milliseconds kPatienceWithDesktop{3000};
constexpr int kOpenTextNumber = 301;

std::string_view CatalogueText(int number) {
  const auto texts = core::CatalogueTexts();
  const auto found =
      std::find_if(texts.begin(), texts.end(), [&](const auto& entry) { return entry.number == number; });
  return found == texts.end() ? std::string_view() : found->text;
}

core::LogFile::Options LogOptions() {
  const std::string home = adapters::UserStateHome();
  return {home.empty() ? home : home + "/kestro-cti",
          [](const std::string& text) { std::cerr << "kestro-cti: " << text << std::endl; }};
}

}  // namespace

DesktopProgram::DesktopProgram(World world, adapters::InstanceLock instances, const Link& link)
    : program_folder_(adapters::ExecutableFolder()),
      database_(database_files_,
                [this](std::string_view path) { return std::filesystem::path(NativePath(path)); }),
      log_(clock_, log_on_disk_, LogOptions()),
      world_(MakeWorld(world)),
      files_(paths_, program_folder_, world_.user_data_folder),
      exchange_([this](std::function<void()> task) { poster_(std::move(task)); }),
      instances_(std::move(instances)),
      tray_(kProductName, CatalogueText(kOpenTextNumber)),
      windows_(boundary_, [this](std::string_view path) { return NativePath(path); }),
      notification_area_(windows_, code_page_, tray_,
                         [this](std::string_view path) { return NativePath(path); }),
      boxes_(boundary_, kProductName),
      file_dialogs_(
          boundary_, [this](std::string_view path) { return NativePath(path); },
          [this](std::string_view path) { return paths_.ToSystem(path); }),
      system_information_(adapters::ToolkitVersion(), adapters::DatabaseEngineVersion()),
      dialling_(*world_.settings, processes_, exchange_, code_page_) {
  SetUpExchange();
  tray_.Explore(kPatienceWithDesktop);
  MakeApplication();
  if (link) application_->DialLink(*link);
  // A second instance leaves the sockets to the first one; it ends by itself after its start checks.
  if (!instances_.AnotherInstanceRuns()) OpenSockets();
  signals_ = std::make_unique<EndingSignals>(descriptors_, [this] { application_->End(); });
}

DesktopProgram::~DesktopProgram() = default;

UserWorld DesktopProgram::MakeWorld(World world) {
  if (world == World::kDemo) return DemoWorld(program_folder_);
  return OwnWorld(clock_, [this](const std::string& text) { Report(text); });
}

/// To the terminal or the session's journal: the method log may be off, or not known yet.
void DesktopProgram::Report(const std::string& text) {
  std::cerr << "kestro-cti: " << text << std::endl;
  log_.LineEntry({"KESTROCTI.RegistryModule", "SettingsFile"}, text);
}

void DesktopProgram::MakeApplication() {
  shell_ = std::make_unique<adapters::PosixShellInformation>(tray_.ShowsBalloons());
  application_ = std::make_unique<app::Application>(
      app::Ports{exchange_, code_page_, *world_.settings, files_, notification_area_, *shell_, foreground_,
                 boxes_, file_dialogs_, database_, log_, process_, instances_, windows_, dialling_,
                 desktop_open_, system_information_, clipboard_, clock_});
}

void DesktopProgram::SetUpExchange() {
  exchange::Device device;
  device.name = kExchangeLine;
  exchange_.AddDevice(device);
  exchange_.AnswerByItself(true);
}

void DesktopProgram::OpenSockets() {
  runtime_folder_.Prepare();
  control_socket_ = std::make_unique<adapters::ControlSocketServer>(
      socket_events_, runtime_folder_.SocketPath(),
      [this](std::string_view request) { return commands_.Execute(request); });
  activation_ = std::make_unique<adapters::ActivationSocket>(
      socket_events_, adapters::ActivationSocketPath(runtime_folder_),
      [this](const adapters::ActivationSocket::Request& request) { OnRequest(request); });
}

void DesktopProgram::OnRequest(const adapters::ActivationSocket::Request& request) {
  if (request.number) {
    application_->DialLink(*request.number);
  } else {
    application_->Activate();
  }
}

int DesktopProgram::Run(bool end_after_start) {
  QObject session;
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, &session, [this](QSessionManager& /*manager*/) {
    boundary_.Run(EventBoundary::Cause::kSystem, [this] { application_->End(); });
  });
  // Queued before the start: it also ends a start that waits for an answer.
  if (end_after_start) poster_([this] { application_->End(); });
  boundary_.Run(EventBoundary::Cause::kUser, [this] { application_->Start(); });
  if (!boundary_.ended() && !end_after_start) {
    std::cout << kProductName << " runs on its software exchange. From another terminal:\n"
              << "  cti-exchange ring 602111222               a known caller\n"
              << "  cti-exchange ring 777888999               an unknown one\n"
              << "  cti-exchange ring 21 --internal           a colleague\n"
              << "  cti-exchange answer                       the call is answered\n"
              << "  cti-exchange hang-up                      it ends" << std::endl;
  }
  return boundary_.RunUntilEnded();
}

}  // namespace kestro::programs
