#pragma once

#include <array>
#include <span>
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
  std::string_view window;
  std::string_view control;  // empty = every other one of the window
  std::array<int, 10> numbers{};
};

inline constexpr std::array kPlaces = {
    Place{"SystemTrayForm", "mnuRedirectList", {116}},
    Place{"SystemTrayForm", "btnTransferCall", {116}},
    Place{"SystemTrayForm", "mPopStartStop", {100, 101, 108, 109, 110, 113, 114}},
    Place{"SystemTrayForm", "mPopSettings", {100, 101, 108, 109, 110, 113, 114}},
    Place{"Settings", "OKButton", {145, 146}},
    Place{"Settings", "", {145, 146}},
    Place{"frmMainForm", "btnSearch", {129, 132}},
    Place{"frmMainForm", "ActionToolbar", {127, 128, 129, 130, 131, 285, 310}},
    Place{"frmMainForm", "ContactsGrid", {129, 131, 310}},
    Place{"frmMainForm", "mnuNewContact", {129, 310}},
    Place{"frmMainForm", "mnuEditContact", {129, 131, 310}},
    Place{"frmMainForm", "mnuDeleteContact", {127, 128, 129, 130}},
    Place{"frmMainForm", "mnuImportContacts", {129, 100, 101, 138, 139, 140, 141, 142, 143}},
    Place{"frmContactImportProgress", "CancelButton", {144}},
    Place{"frmContactImportProgress", "", {144}},
    Place{"frmMainForm", "mnuUserFields", {129, 100, 101, 109, 113}},
    Place{"frmMainForm", "mnuPhoneLines", {129}},
    Place{"frmMainForm", "", {127, 128, 129, 130, 131, 132, 310}},
    Place{"frmEditContact", "cmdOK", {133, 134}},
    Place{"frmEditContact", "cmdChangePicture", {309}},
    Place{"frmEditContact", "btnMakeCallPhone1", {285}},
    Place{"frmEditContact", "btnMakeCallPhone2", {285}},
    Place{"frmEditContact", "btnMakeCallPhone3", {285}},
    Place{"frmEditContact", "btnMakeCallPhone4", {285}},
    Place{"frmEditContact", "", {133, 134, 285, 309}},
    Place{"frmPhoneLinesList", "cmdEdit", {121}},
    Place{"frmPhoneLinesList", "cmdDelete", {121, 122}},
    Place{"frmPhoneLinesList", "LinesGrid", {121}},
    Place{"frmPhoneLinesList", "", {121}},
    Place{"frmEditLine", "OKButton", {123, 124, 125}},
    Place{"frmEditLine", "", {123, 124, 125}},
    Place{"frmUserFieldsNames", "OKButton", {135, 136}},
    Place{"frmUserFieldsNames", "", {135, 136}},
    Place{"ContactDetail", "cmbRedirectTo", {116}},
    Place{"ContactDetail", "cmdEdit", {310}},
    Place{"ContactDetail", "cmdNew", {310}},
    Place{"ContactDetail", "", {116, 310}},
    Place{"UnknownContact", "cmbRedirectTo", {116}},
    Place{"UnknownContact", "cmdNew", {310}},
    Place{"UnknownContact", "", {116, 310}},
};

/// When the user uses that control. An empty control name: anything in the window (a key, its closing).
inline AllowedMessages InWindow(std::string_view window, std::string_view control = {}) {
  for (const Place& place : kPlaces) {
    if (place.window == window && place.control == control) return place.numbers;
  }
  return {};
}

}  // namespace kestro::soak
