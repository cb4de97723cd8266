#include "adapters/posix/tel_uri.h"

namespace kestro::adapters {

void AppendPercentEncoded(std::string& uri, char byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto value = static_cast<unsigned char>(byte);
  uri.append(1, '%').append(1, kDigits[value >> 4U]).append(1, kDigits[value & 15U]);
}

std::string TelUri(std::string_view number) {
  constexpr std::string_view kKept = "0123456789+*";
  constexpr std::string_view kDropped = " -./()[]{}";
  std::string uri = "tel:";
  for (const char character : number) {
    if (kKept.find(character) != std::string_view::npos) {
      uri.push_back(character);
    } else if (kDropped.find(character) == std::string_view::npos) {
      AppendPercentEncoded(uri, character);
    }
  }
  return uri;
}

}  // namespace kestro::adapters
