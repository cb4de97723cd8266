#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "adapters/win32/file_handle.h"

namespace kestro::test {

/// What the icon's messages come under.
inline constexpr UINT kIconMessage = 512;

/// Asks again and again until the condition holds; false after ten seconds.
bool Eventually(const std::function<bool()>& condition);

/// The shipped program with the stand-in for the telephony library, as another
/// process. It is ended with the object, by force if need be.
class RunningProgram {
 public:
  /// `script` goes to the stand-in before the first line function.
  explicit RunningProgram(const std::string& script = {}, const std::wstring& arguments = {});
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  /// The stand-in's reply; empty while it does not listen.
  std::string Ask(const std::string& request) const;
  /// The line is open.
  [[nodiscard]] bool Monitors() const;
  /// Every line function called since the last time.
  std::string Journal() const { return Ask("journal"); }

  [[nodiscard]] bool Runs() const;
  /// The exit status, once the program has ended; waits for at most ten seconds.
  [[nodiscard]] std::optional<DWORD> ExitStatus() const;

  /// A visible window of the program with that caption, waited for; null when none comes.
  [[nodiscard]] HWND AwaitWindow(const std::wstring& caption) const;
  [[nodiscard]] HWND FindVisible(const std::wstring& caption) const;
  /// The window at which the icon, other programs and the session reach the program.
  [[nodiscard]] HWND Listener() const;
  /// The text of the message box that is open; waited for.
  [[nodiscard]] std::wstring AwaitBox() const;
  /// Presses that button in it (IDYES, IDNO), otherwise its first one, and waits until it is gone.
  void AnswerBox(int button = 0) const;
  /// No message box is open once everything that has arrived so far is handled. Needs the stand-in.
  [[nodiscard]] bool SaysNothing() const;
  /// Chooses the entry of the icon's menu that has this access key.
  void ChooseFromIcon(wchar_t access_key) const;

 private:
  [[nodiscard]] HWND FindBox() const { return FindVisibleOfClass(L"#32770"); }
  [[nodiscard]] HWND FindVisibleOfClass(const std::wstring& window_class) const;
  [[nodiscard]] HWND FindWindowWhere(const std::function<bool(HWND)>& suits) const;

  std::uint16_t port_;
  DWORD id_ = 0;
  adapters::Handle process_;
};

/// The first window below `parent` of that class (and with that text, unless it is empty).
[[nodiscard]] HWND ChildOf(HWND parent, const std::wstring& window_class, const std::wstring& text = {});
[[nodiscard]] std::wstring TextOf(HWND window);

}  // namespace kestro::test
