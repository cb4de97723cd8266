#include "scenario/recording_dialling.h"

#include "base/runtime_error.h"
#include "scenario/quoting.h"

namespace kestro::scenario {
namespace {

class RecordingDialCom final : public ports::DiallingObject {
 public:
  RecordingDialCom(Transcript& transcript, bool works) : transcript_(transcript), works_(works) {}

  std::int32_t Dial(std::string_view number) override {
    transcript_.Add("dial " + Quoted(number));
    if (!works_) throw base::RuntimeError(base::kAutomationError, "The dialling object failed");
    return 0;
  }

 private:
  Transcript& transcript_;
  bool works_;
};

}  // namespace

DialObject DialObjectOfWord(std::string_view word) {
  if (word == "missing") return DialObject::kMissing;
  if (word == "desktop") return DialObject::kDesktop;
  return word == "fails" ? DialObject::kFails : DialObject::kWorks;
}

std::unique_ptr<ports::DiallingObject> RecordingDialling::CreateDialCom() {
  if (behaviour_ == DialObject::kMissing) {
    throw base::RuntimeError(base::kCannotCreateObject, "The dialling object cannot be created");
  }
  return std::make_unique<RecordingDialCom>(transcript_, behaviour_ != DialObject::kFails);
}

}  // namespace kestro::scenario
