#include "core/dialling.h"

#include "base/runtime_error.h"
#include "base/text.h"

namespace kestro::core {
namespace {

/// C0, DEL, C1, and the two separators that end a line as well.
bool IsControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 ||
         character == 0x2029;
}

bool HoldsControlCharacter(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    if (IsControl(base::NextCharacter(text, position))) return true;
  }
  return false;
}

}  // namespace

std::int32_t Dialling::Dial(std::string_view number) {
  // A stored number may come from an imported file. A line break or a zero byte in it must not reach
  // another program, which could take it for the end of the number or for a command of its own.
  if (HoldsControlCharacter(number)) {
    throw base::RuntimeError(base::kInvalidProcedureCall, "The number holds a control character");
  }
  return objects_.CreateDialCom()->Dial(number);
}

}  // namespace kestro::core
