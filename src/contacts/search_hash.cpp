#include "contacts/search_hash.h"

namespace kestro::contacts {

std::int32_t SearchHash(std::string_view search_phone) {
  if (search_phone.empty()) return 0;
  std::uint32_t hash = 2'166'136'261U;
  for (const char byte : search_phone) hash = (hash ^ static_cast<unsigned char>(byte)) * 16'777'619U;
  return hash == 0 ? 1 : static_cast<std::int32_t>(hash);
}

}  // namespace kestro::contacts
