#include "programs/kestro-cti/desktop_program.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include <QGuiApplication>
#include <QSessionManager>

#include "adapters/posix/user_folders.h"
#include "base/runtime_error.h"
#include "core/registry_settings_module.h"
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

adapters::LogFile::Options LogOptions() {
  return {adapters::LogFallbackFolder(),
          [](const std::string& text) { std::cerr << "kestro-cti: " << text << std::endl; }};
}

}  // namespace

DesktopProgram::DesktopProgram()
    : program_folder_(adapters::ExecutableFolder()),
      database_([this](std::string_view path) { return std::filesystem::path(NativePath(path)); }),
      world_(PrepareDemoWorld(program_folder_)),
      files_(paths_, program_folder_, world_.user_data_folder),
      log_(clock_, paths_, LogOptions()),
      exchange_([this](std::function<void()> task) { poster_(std::move(task)); }),
      tray_(kProductName, CatalogueText(kOpenTextNumber)),
      windows_(boundary_, [this](std::string_view path) { return NativePath(path); }),
      notification_area_(windows_, code_page_, tray_,
                         [this](std::string_view path) { return NativePath(path); }),
      boxes_(boundary_, kProductName) {
  SetUpExchange();
  SetUpSettings();
  OpenControlSocket();
  tray_.Explore(kPatienceWithDesktop);
  shell_ = std::make_unique<adapters::PosixShellInformation>(tray_.ShowsBalloons());
  application_ = std::make_unique<app::Application>(app::Ports{exchange_, code_page_, settings_, files_,
                                                               notification_area_, *shell_, foreground_,
                                                               boxes_, database_, log_, process_, windows_});
  signals_ = std::make_unique<EndingSignals>(descriptors_, [this] { application_->End(); });
}

DesktopProgram::~DesktopProgram() = default;

void DesktopProgram::SetUpExchange() {
  exchange::Device device;
  device.name = kDemoLine;
  exchange_.AddDevice(device);
  exchange_.AnswerByItself(true);
}

void DesktopProgram::SetUpSettings() {
  settings_.CreateKey(core::kSettingsKey);
  settings_.SetValue(core::kSettingsKey, core::SettingName::kDatabasePath,
                     paths_.ToSystem(world_.database_file));
  settings_.SetValue(core::kSettingsKey, core::SettingName::kPhoneLine, kDemoLine);
}

void DesktopProgram::OpenControlSocket() {
  runtime_folder_.Prepare();
  control_socket_ = std::make_unique<adapters::ControlSocketServer>(
      socket_events_, runtime_folder_.SocketPath(),
      [this](std::string_view request) { return commands_.Execute(request); });
}

int DesktopProgram::Run() {
  QObject session;
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, &session, [this](QSessionManager& /*manager*/) {
    boundary_.Run(EventBoundary::Cause::kSystem, [this] { application_->End(); });
  });
  boundary_.Run(EventBoundary::Cause::kUser, [this] { application_->Start(); });
  if (!boundary_.ended()) {
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
