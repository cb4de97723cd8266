#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet/bytes.h"

namespace kestro::jet {

/// Text in the file: UTF-16LE, or after the bytes FF FE a form with one byte a Latin-1 character.

/// Appends the text as UTF-8. Broken surrogate pairs become U+FFFD.
void AppendStoredText(ByteSpan stored, std::string& text);

/// A text where it lies. kLatin1: a byte a character. kMixed: parts of both, to be read by AppendStoredText.
struct StoredText {
  enum class Form { kLatin1, kUtf16, kMixed };
  Form form;
  ByteSpan bytes;
};
StoredText LookAtStoredText(ByteSpan stored);

/// Plain UTF-16LE only (names in definitions).
std::string DecodeUtf16(ByteSpan stored);

enum class TextForm { kPlain, kShortestAllowed };

/// Appends the stored form; returns the number of UTF-16 units. Throws kValue for bytes that are no UTF-8 and
/// for a text that starts with U+FEFF (it could not be told from the short form when read).
std::size_t AppendTextBytes(std::string_view text, TextForm form, std::vector<std::uint8_t>& stored);

}  // namespace kestro::jet
