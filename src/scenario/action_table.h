#pragma once

#include <span>
#include <string_view>

namespace kestro::scenario {

enum class ActionKind {
  // the world
  kDevice,
  kSetting,
  kProgramFile,
  kDataFile,
  kWithoutTemplate,
  kWithoutIcons,
  kReadOnlyDatabase,
  kNoDatabase,
  kAnotherInstance,
  kWithoutSystemInformation,
  kWindows,
  kShell32,
  kScreen,
  kPhoneType,
  kPhoneLine,
  kCustomFields,
  kContact,
  kLineFunctionFails,
  kLineFunctionWorks,
  // the telephone line
  kStart,
  kCallOffering,
  kCallConnected,
  kCallDisconnected,
  kCallIdle,
  kCallInfo,
  kCallState,
  kReply,
  kMessage,
  kRawCallInfo,
  // the user
  kClick,
  kType,
  kChoose,
  kCheck,
  kRow,
  kDoubleClick,
  kHeader,
  kTool,
  kKey,
  kTray,
  kLink,
  kClose,
  kAnswer,
  kFile,
  kFileCancel,
  kDuring,
  kLater,
  kEnd,
  kDialObject,
  kDatabase,
  kAnotherProgram,
  // looking
  kLog,
  kDumpMenu,
  kDumpCall,
  kDumpFlags,
  kDumpSettings,
  kDumpSql,
  kDumpIcon,
  kDumpWindow,
  kExpect,
  kRefuse,
};

/// How an action is written. In `form`, a word in capitals is an argument:
/// TEXT (in double quotes), NUMBER, VERSION (as in 5.1), REST (everything up to
/// the end of the line), PAIRS (any number of key="value"), and any other (NAME,
/// WINDOW, CONTROL) a bare word. Words in small letters stand for themselves,
/// "a|b" is one of several, "[...]" may be left out.
struct ActionForm {
  ActionKind kind;
  std::string_view form;
};

/// All actions. Where several forms begin with the same word, the first one that fits counts.
[[nodiscard]] std::span<const ActionForm> ActionForms();

}  // namespace kestro::scenario
