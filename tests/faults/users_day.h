#pragma once

#include "faults/failing_world.h"

namespace kestro::faults {

/// What a user does with the program from its start to its end: everything that
/// reaches for something outside. Goes on as well as it can when something fails.
class UsersDay {
 public:
  explicit UsersDay(FailingWorld& world);

  /// The first start, entries, calls, tools; to the point where the program would be left.
  void First(FaultPlan& plan);
  /// A later start and a call, without any entry.
  void Later(FaultPlan& plan);
  /// Leaves the program.
  void Leave();

  /// A call from a number that First has entered: offered, taken, ended.
  void KnownCall();

 private:
  void EnterContact();
  void EnterLines();
  void UseList();
  void UseTools();
  void ChangeSettings();
  void TransferredCall();
  void OtherCalls();
  void ImportContacts();
  void UseModal(forms::Form& window);
  void StoreTooEarly(forms::Form& window);
  void FillIn(forms::Form& window);
  [[nodiscard]] bool HasLine(forms::Form& settings);

  void Click(std::string_view window, std::string_view control);
  void Type(std::string_view window, std::string_view control, std::string_view text);
  void ClickIn(forms::Form& window, std::string_view control);
  [[nodiscard]] forms::FrontEndDriver& driver() { return world_.session().front_end.Driver(); }
  [[nodiscard]] forms::Form& Window(std::string_view name) { return *world_.application().FindForm(name); }

  FailingWorld& world_;
  bool deleting_ = false;  // the telephone line is deleted again
};

}  // namespace kestro::faults
