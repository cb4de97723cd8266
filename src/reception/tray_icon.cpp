#include "reception/tray_icon.h"

#include <algorithm>
#include <span>

namespace kestro::reception::Functions {
namespace {

constexpr std::string_view kIdleIcon = "Icons\\idle.ico";
constexpr std::string_view kRingingIcon = "Icons\\ringing.ico";
constexpr std::string_view kAcceptedIcon = "Icons\\accepted.ico";
constexpr std::string_view kStoppedIcon = "Icons\\stopped.ico";
constexpr std::string_view kTip = "KESTRO CTI";
constexpr std::uint32_t kMouseMoveMessage = 512;
constexpr std::uint32_t kBalloonTimeoutMs = 5000;
constexpr std::size_t kMostNames = 3;

/// A text that fills the field loses its terminating zero.
void SetField(std::span<char> field, std::string_view bytes) {
  std::fill(field.begin(), field.end(), '\0');
  std::copy_n(bytes.begin(), std::min(bytes.size(), field.size()), field.begin());
}

}  // namespace

TrayIcon::TrayIcon(core::LogModule& log, core::Localization& texts, core::SharedFunctions& shared,
                   core::Functions::ShellVersion& shell, ports::NotificationArea& area,
                   const ports::AnsiCodePage& code_page, SystemTrayForm& tray)
    : procedure_(log, "KESTROCTI.Functions", core::Spelling::kFullStop),
      texts_(texts),
      shared_(shared),
      shell_(shell),
      area_(area),
      code_page_(code_page),
      tray_(tray) {}

ports::IconHandle TrayIcon::LoadIcon(std::string_view file) {
  return area_.LoadIconFile(shared_.GetCurrentApplicationPath().append(file));
}

void TrayIcon::InitializeTrayIcon() {
  procedure_.Outermost("InitializeTrayIcon", [&] {
    const ports::IconHandle icon = LoadIcon(kIdleIcon);
    const bool balloon = shell_.DoSupportTrayBaloon();
    TrayIconData_.cbSize = static_cast<std::uint32_t>(shell_.NFStructureSize(balloon));
    TrayIconData_.hWnd = tray_.handle();
    TrayIconData_.uID = icon;
    TrayIconData_.uFlags = ports::kNifMessage | ports::kNifIcon | ports::kNifTip;
    TrayIconData_.uCallbackMessage = kMouseMoveMessage;
    TrayIconData_.hIcon = icon;
    SetField(TrayIconData_.szTip, kTip);
    if (balloon) TrayIconData_.uTimeoutOrVersion = ports::kNotifyIconVersion;
    area_.NotifyIcon(ports::kNimAdd, TrayIconData_);
    if (balloon) area_.NotifyIcon(ports::kNimSetVersion, TrayIconData_);
    tray_.Hide();
  });
}

void TrayIcon::ChangeIcon(std::string_view file) {
  TrayIconData_.hIcon = LoadIcon(file);
  TrayIconData_.uFlags = ports::kNifIcon;
  area_.NotifyIcon(ports::kNimModify, TrayIconData_);
}

void TrayIcon::ChangeTrayIconToRinging() {
  procedure_.Outermost("ChangeTrayIconToRinging", [&] { ChangeIcon(kRingingIcon); });
}

void TrayIcon::ChangeTrayIconToAccepted() {
  procedure_.Outermost("ChangeTrayIconToAccepted", [&] { ChangeIcon(kAcceptedIcon); });
}

void TrayIcon::ChangeTrayIconToStoppedApplication() {
  procedure_.Outermost("ChangeTrayIconToStoppedApplication", [&] { ChangeIcon(kStoppedIcon); });
}

void TrayIcon::ChangeTrayIconToIdle() {
  procedure_.Outermost("ChangeTrayIconToIdle", [&] {
    ChangeIcon(kIdleIcon);
    RemoveBalloon();
  });
}

void TrayIcon::RemoveBalloon() {
  TrayIconData_.uFlags = ports::kNifInfo;
  SetField(TrayIconData_.szInfo, "");
  SetField(TrayIconData_.szInfoTitle, "");
  area_.NotifyIcon(ports::kNimModify, TrayIconData_);
}

void TrayIcon::DeleteTrayBaloonTooltip() {
  procedure_.Outermost("DeleteTrayBaloonTooltip", [&] { RemoveBalloon(); });
}

void TrayIcon::ShowBaloonToolTip(std::string_view title, std::string_view text) {
  procedure_.Outermost("ShowBaloonToolTip", [&] {
    DeleteTrayBaloonTooltip();
    TrayIconData_.uFlags = ports::kNifInfo;
    TrayIconData_.dwInfoFlags = ports::kNiifInfo;
    TrayIconData_.uTimeoutOrVersion = kBalloonTimeoutMs;
    SetField(TrayIconData_.szInfo, code_page_.FromText(text));
    SetField(TrayIconData_.szInfoTitle, code_page_.FromText(title));
    area_.NotifyIcon(ports::kNimModify, TrayIconData_);
    TrayIconData_.uTimeoutOrVersion = 0;
  });
}

void TrayIcon::ShowContactDataBaloon(const contacts::FoundContacts& found) {
  procedure_.Outermost("ShowContactDataBaloon", [&] {
    std::string text;
    if (found) {
      for (std::size_t i = 0; i < std::min(found->size(), kMostNames); ++i) {
        text.append((*found)[i].Name).append(core::kLineBreak);
      }
      // Behind three names the dots follow even when there are no more.
      if (found->size() >= kMostNames) text.append("...");
    }
    ShowBaloonToolTip(texts_.GetLocalizedString("279"), text + "  ");
  });
}

void TrayIcon::RemoveIcon() { area_.NotifyIcon(ports::kNimDelete, TrayIconData_); }

}  // namespace kestro::reception::Functions
