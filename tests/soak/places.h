#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

namespace kestro::soak {

/// Numbers of the messages that may come up at a place, nested windows not
/// counted: they are places of their own.
using AllowedMessages = std::span<const int>;

/// A start of monitoring tells what is wrong with the line, and opens the settings with the reason.
inline constexpr std::array kAtStart = {100, 101, 104, 105, 108, 109, 110, 113, 114};
/// While messages of the line are handled.
inline constexpr std::array kOnTheLine = {103, 106};

struct Place {
  std::array<std::string_view, 5> uses;  // WINDOW.CONTROL, or WINDOW alone for a key or its closing
  std::array<int, 10> numbers;
};

inline constexpr auto kPlaces = std::to_array<Place>({
    {{"SystemTrayForm.mnuRedirectList", "SystemTrayForm.btnTransferCall", "ContactDetail.cmbRedirectTo",
      "UnknownContact.cmbRedirectTo"},
     {116}},
    {{"SystemTrayForm.mPopStartStop", "SystemTrayForm.mPopSettings"}, {100, 101, 108, 109, 110, 113, 114}},
    {{"ContactDetail.cmdEdit", "ContactDetail.cmdNew", "UnknownContact.cmdNew"}, {310}},
    {{"ContactDetail", "UnknownContact"}, {116, 310}},
    {{"Settings.OKButton", "Settings"}, {145, 146}},
    {{"frmMainForm.btnSearch"}, {129, 132}},
    {{"frmMainForm.ActionToolbar"}, {127, 128, 129, 130, 131, 285, 310}},
    {{"frmMainForm.ContactsGrid", "frmMainForm.mnuEditContact"}, {129, 131, 310}},
    {{"frmMainForm.mnuNewContact"}, {129, 310}},
    {{"frmMainForm.mnuDeleteContact"}, {127, 128, 129, 130}},
    {{"frmMainForm.mnuImportContacts"}, {129, 100, 101, 138, 139, 140, 141, 142, 143}},
    {{"frmMainForm.mnuUserFields"}, {129, 100, 101, 109, 113}},
    {{"frmMainForm.mnuPhoneLines"}, {129}},
    {{"frmMainForm"}, {127, 128, 129, 130, 131, 132, 310}},
    {{"frmContactImportProgress.CancelButton", "frmContactImportProgress"}, {144}},
    {{"frmEditContact.cmdOK"}, {133, 134}},
    {{"frmEditContact.cmdChangePicture"}, {309}},
    {{"frmEditContact.btnMakeCallPhone1", "frmEditContact.btnMakeCallPhone2",
      "frmEditContact.btnMakeCallPhone3", "frmEditContact.btnMakeCallPhone4"},
     {285}},
    {{"frmEditContact"}, {133, 134, 285, 309}},
    {{"frmPhoneLinesList.cmdEdit", "frmPhoneLinesList.LinesGrid", "frmPhoneLinesList"}, {121}},
    {{"frmPhoneLinesList.cmdDelete"}, {121, 122}},
    {{"frmEditLine.OKButton", "frmEditLine"}, {123, 124, 125}},
    {{"frmUserFieldsNames.OKButton", "frmUserFieldsNames"}, {135, 136}},
});

/// When the user uses that control; without a name: anything in the window (a key, its closing).
inline AllowedMessages InWindow(std::string_view window, std::string_view control = {}) {
  const std::string use = std::string(window).append(control.empty() ? "" : ".").append(control);
  const auto place = std::ranges::find_if(
      kPlaces, [&](const Place& one) { return std::ranges::find(one.uses, use) != one.uses.end(); });
  return place == kPlaces.end() ? AllowedMessages() : place->numbers;
}

}  // namespace kestro::soak
