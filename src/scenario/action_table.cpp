#include "scenario/action_table.h"

#include <array>

namespace kestro::scenario {
namespace {

using enum ActionKind;

constexpr auto kForms = std::to_array<ActionForm>({
    {kDevice, "device TEXT [provider TEXT] [states NUMBER]"},
    {kSetting, "setting NAME TEXT"},
    {kProgramFile, "program-file TEXT TEXT"},
    {kDataFile, "data-file TEXT TEXT [utf-8]"},
    {kWithoutTemplate, "without-template"},
    {kWithoutIcons, "without-icons"},
    {kReadOnlyDatabase, "read-only-database"},
    {kNoDatabase, "no-database"},
    {kAnotherInstance, "another-instance"},
    {kWithoutSystemInformation, "without-system-information"},
    {kWindows, "windows VERSION [9x]"},
    {kShell32, "shell32 NUMBER"},
    {kScreen, "screen NUMBER NUMBER"},
    {kPhoneType, "phone-type TEXT NUMBER"},
    {kPhoneLine, "phone-line TEXT TEXT"},
    {kCustomFields, "custom-fields TEXT TEXT TEXT TEXT"},
    {kContact, "contact PAIRS"},
    {kLineFunctionFails, "line-function NAME fails NUMBER [times NUMBER]"},
    {kLineFunctionWorks, "line-function NAME works"},
    {kStart, "start"},
    {kCallOffering, "call NUMBER offering [from TEXT] [origin internal|external|NUMBER] [reason NUMBER]"},
    {kCallConnected, "call NUMBER connected [to TEXT]"},
    {kCallDisconnected, "call NUMBER disconnected"},
    {kCallIdle, "call NUMBER idle"},
    {kCallInfo, "call NUMBER info [NUMBER]"},
    {kCallState, "call NUMBER state NUMBER"},
    {kReply, "reply NUMBER NUMBER"},
    {kMessage, "message NUMBER NUMBER NUMBER NUMBER NUMBER NUMBER"},
    {kRawCallInfo, "call-info NUMBER raw TEXT"},
    {kClick, "click CONTROL"},
    {kType, "type CONTROL TEXT"},
    {kChoose, "choose CONTROL NUMBER"},
    {kCheck, "check CONTROL 0|1"},
    {kRow, "row CONTROL NUMBER"},
    {kDoubleClick, "double-click CONTROL NUMBER"},
    {kHeader, "header CONTROL NUMBER"},
    {kTool, "tool CONTROL NUMBER"},
    {kKey, "key WINDOW TEXT"},
    {kTray, "tray left|right|double|balloon"},
    {kLink, "link TEXT"},
    {kClose, "close WINDOW [NUMBER]"},
    {kAnswer, "answer yes|no|ok|cancel"},
    {kFileCancel, "file cancel"},
    {kFile, "file TEXT"},
    {kDuring, "during"},
    {kLater, "later"},
    {kEnd, "end"},
    {kDialObject, "dial-object missing|fails|works|desktop"},
    {kDatabase, "database writing-fails|reading-fails|works"},
    {kAnotherProgram, "another-program TEXT"},
    {kLog, "log on|off"},
    {kDumpMenu, "dump menu"},
    {kDumpCall, "dump call"},
    {kDumpFlags, "dump flags"},
    {kDumpSettings, "dump settings"},
    {kDumpSql, "dump sql TEXT"},
    {kDumpIcon, "dump icon"},
    {kDumpWindow, "dump WINDOW"},
    {kExpect, "expect REST"},
    {kRefuse, "refuse REST"},
});

}  // namespace

std::span<const ActionForm> ActionForms() { return kForms; }

}  // namespace kestro::scenario
