#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "forms/controls.h"
#include "forms/form_host.h"

namespace kestro::forms {

/// Why a window is asked to close.
enum UnloadMode : int {
  kControlMenu = 0,  // the user, from the window's own close button or menu
  kFromCode = 1,
  kSessionEnding = 2,
  kTaskManager = 3,
};

enum class WindowState { kNormal = 0, kMinimized = 1, kMaximized = 2 };

/// A window as data: its controls, its place, its state, and the handlers of a
/// derived class. Positions and sizes are in twips (1/1440 inch).
///
/// Life: constructed with the application, loaded at its first use (Form_Load),
/// shown and hidden any number of times, unloaded at the end or when closed.
class Form {
 public:
  Form(FormHost& host, std::string_view name, int width, int height);
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form();

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] const std::string& caption() const { return caption_; }
  void SetCaption(std::string_view caption);
  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  [[nodiscard]] int left() const { return left_; }
  [[nodiscard]] int top() const { return top_; }
  /// False until the program has placed the window; the front end then chooses.
  [[nodiscard]] bool placed() const { return placed_; }
  void MoveTo(int left, int top);
  [[nodiscard]] bool loaded() const { return loaded_; }
  [[nodiscard]] bool visible() const { return visible_; }
  [[nodiscard]] WindowState window_state() const { return window_state_; }
  void SetWindowState(WindowState state);
  /// Valid while loaded, 0 otherwise.
  [[nodiscard]] WindowHandle handle() const { return handle_; }
  [[nodiscard]] FormHost& host() const { return host_; }

  [[nodiscard]] Container& body() { return body_; }
  [[nodiscard]] const Container& body() const { return body_; }
  [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
  [[nodiscard]] Control* FindControl(std::string_view name, std::optional<int> index = {}) const;

  void Load();
  void Show();
  void Hide();
  /// Returns when the window has been hidden or unloaded. Raises 5 when it is modal already.
  void ShowModal(Form* owner = nullptr);
  [[nodiscard]] bool modal() const { return modal_; }
  /// Asks the window to close and unloads it unless its handler cancels; true
  /// when it is unloaded afterwards.
  bool RequestUnload(int mode);

  /// Keys of the window that no menu entry carries ("Ctrl+F", as ParseKey reads
  /// it), added before the window is loaded.
  struct Shortcut {
    std::string key;
    Handler handler;
  };
  void AddShortcut(std::string_view key, Handler handler) {
    shortcuts_.push_back({std::string(key), std::move(handler)});
  }
  [[nodiscard]] const std::vector<Shortcut>& shortcuts() const { return shortcuts_; }

  // --- from the front end ---
  void ControlChanged(Control& control);
  void FocusControl(Control& control);
  void UserChangedWindowState(WindowState state);
  void Activated() { Form_Activate(); }

 protected:
  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_Resize() {}
  virtual void Form_QueryUnload(bool& cancel, int unload_mode);
  virtual void Form_Unload() {}

 private:
  class Body final : public Container {
   public:
    [[nodiscard]] bool Reachable() const override { return true; }
  };
  friend class Control;
  friend class MenuArray;
  void Register(Control& control) { controls_.push_back(&control); }
  void Unregister(Control& control);
  void RegisterBehind(Control& control, const Control& predecessor);

  FormHost& host_;
  std::string name_;
  std::string caption_;
  int width_;
  int height_;
  int left_ = 0;
  int top_ = 0;
  WindowHandle handle_ = 0;
  WindowState window_state_ = WindowState::kNormal;
  bool placed_ = false;
  bool loaded_ = false;
  bool visible_ = false;
  bool modal_ = false;
  Body body_;
  std::vector<Control*> controls_;
  std::vector<Shortcut> shortcuts_;
};

}  // namespace kestro::forms
