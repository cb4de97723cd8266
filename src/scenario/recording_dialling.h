#pragma once

#include "ports/dialling_object.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// How the dialling object of a scenario behaves.
enum class DialObject { kMissing, kFails, kWorks, kDesktop };

/// Writes down every number that the dialling object is given, also one with
/// which it then fails.
class RecordingDialling final : public ports::DiallingObjects {
 public:
  explicit RecordingDialling(Transcript& transcript) : transcript_(transcript) {}

  void SetDialObject(DialObject behaviour) { behaviour_ = behaviour; }

  [[nodiscard]] std::unique_ptr<ports::DiallingObject> CreateDialCom() override;
  [[nodiscard]] bool HandsToDesktop() override { return behaviour_ == DialObject::kDesktop; }

 private:
  Transcript& transcript_;
  DialObject behaviour_ = DialObject::kWorks;
};

/// The behaviour of a script's word: missing, fails, works or desktop.
[[nodiscard]] DialObject DialObjectOfWord(std::string_view word);

}  // namespace kestro::scenario
