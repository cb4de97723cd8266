#include "jet/text_key.h"

#include <array>
#include <cstdint>
#include <optional>

#include "jet/utf.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kMostCharacters = 255;
constexpr std::uint8_t kNoAccent = 0x02;

struct Weight {
  std::uint16_t primary = 0;   // one byte, or two when above 0xFF
  std::uint8_t accent = 0;     // 0: none
  std::uint8_t ignorable = 0;  // not 0: has no primary weight
  bool two_letters = false;    // the primary weights of two letters
};

using Weights = std::array<Weight, 256>;

constexpr std::array<std::uint8_t, 26> kLetters{0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53, 0x55, 0x57, 0x59,
                                                0x5B, 0x5C, 0x5E, 0x60, 0x62, 0x64, 0x66, 0x68, 0x69,
                                                0x6B, 0x6D, 0x6F, 0x71, 0x73, 0x75, 0x76, 0x78};

constexpr std::uint8_t Letter(char letter) { return kLetters[static_cast<std::size_t>(letter - 'a')]; }

struct Pair {
  std::uint8_t character;
  std::uint16_t weight;
};

constexpr Pair kOthers[] = {
    {' ', 0x07},    {'!', 0x09},    {'"', 0x0A},    {'#', 0x0C},    {'$', 0x0E},    {'%', 0x10},
    {'&', 0x12},    {'(', 0x14},    {')', 0x16},    {'*', 0x18},    {'+', 0x2C},    {',', 0x1A},
    {'.', 0x1C},    {'/', 0x1E},    {':', 0x20},    {';', 0x22},    {'<', 0x2E},    {'=', 0x30},
    {'>', 0x32},    {'?', 0x24},    {'@', 0x26},    {'[', 0x27},    {'\\', 0x29},   {']', 0x2A},
    {'^', 0x2B02},  {'_', 0x2B03},  {'`', 0x2B07},  {'{', 0x2B09},  {'|', 0x2B0B},  {'}', 0x2B0D},
    {'~', 0x2B0F},  {0xA0, 0x0802}, {0xA1, 0x2B10}, {0xA2, 0x34A6}, {0xA3, 0x34A7}, {0xA4, 0x34A8},
    {0xA5, 0x34A9}, {0xA6, 0x2B11}, {0xA7, 0x34AA}, {0xA8, 0x2B12}, {0xA9, 0x34AB}, {0xAB, 0x3305},
    {0xAC, 0x34AC}, {0xAE, 0x34AD}, {0xAF, 0x2B13}, {0xB0, 0x34AE}, {0xB1, 0x3304}, {0xB4, 0x2B14},
    {0xB5, 0x34AF}, {0xB6, 0x34B0}, {0xB7, 0x34B1}, {0xB8, 0x2B15}, {0xBB, 0x3307}, {0xBC, 0x3712},
    {0xBD, 0x3716}, {0xBE, 0x371A}, {0xBF, 0x2B16}, {0xD7, 0x3309}, {0xF7, 0x330A},
};

struct Accented {
  std::uint8_t character;  // the lower-case one
  char letter;
  std::uint8_t accent;
};

constexpr std::uint8_t kGrave = 0x0F;
constexpr std::uint8_t kAcute = 0x0E;
constexpr std::uint8_t kCircumflex = 0x12;
constexpr std::uint8_t kTilde = 0x19;
constexpr std::uint8_t kDiaeresis = 0x13;
constexpr std::uint8_t kRing = 0x1A;
constexpr std::uint8_t kCedilla = 0x1C;
constexpr std::uint8_t kStroke = 0x21;
constexpr std::uint8_t kEth = 0x68;
constexpr std::uint8_t kOrdinal = 0x03;

constexpr Accented kAccented[] = {
    {0xE0, 'a', kGrave},     {0xE1, 'a', kAcute},      {0xE2, 'a', kCircumflex}, {0xE3, 'a', kTilde},
    {0xE4, 'a', kDiaeresis}, {0xE5, 'a', kRing},       {0xE7, 'c', kCedilla},    {0xE8, 'e', kGrave},
    {0xE9, 'e', kAcute},     {0xEA, 'e', kCircumflex}, {0xEB, 'e', kDiaeresis},  {0xEC, 'i', kGrave},
    {0xED, 'i', kAcute},     {0xEE, 'i', kCircumflex}, {0xEF, 'i', kDiaeresis},  {0xF0, 'd', kEth},
    {0xF1, 'n', kTilde},     {0xF2, 'o', kGrave},      {0xF3, 'o', kAcute},      {0xF4, 'o', kCircumflex},
    {0xF5, 'o', kTilde},     {0xF6, 'o', kDiaeresis},  {0xF8, 'o', kStroke},     {0xF9, 'u', kGrave},
    {0xFA, 'u', kAcute},     {0xFB, 'u', kCircumflex}, {0xFC, 'u', kDiaeresis},  {0xFD, 'y', kAcute},
};

constexpr void SetBoth(Weights& weights, std::size_t lower, Weight weight) {
  weights[lower] = weight;
  weights[lower - 0x20] = weight;
}

constexpr Weight TwoLetters(char first, char second) {
  const int both = (Letter(first) << 8) | Letter(second);
  return {static_cast<std::uint16_t>(both), 0, 0, true};
}

constexpr void SetControls(Weights& weights) {
  const auto ignorable = [&](std::size_t first, std::size_t last, std::size_t code) {
    for (std::size_t i = first; i <= last; ++i) {
      weights[i].ignorable = static_cast<std::uint8_t>(code + i - first);
    }
  };
  ignorable(0x01, 0x08, 0x03);
  ignorable(0x0E, 0x1F, 0x0B);
  ignorable(0x7F, 0x7F, 0x1D);
  ignorable(0x80, 0x9F, 0x1E);
  ignorable('\'', '\'', 0x80);
  ignorable('-', '-', 0x82);
  ignorable(0xAD, 0xAD, 0x83);
  for (std::size_t i = 0x09; i <= 0x0D; ++i) weights[i].primary = static_cast<std::uint16_t>(0x0803 + i - 9);
}

constexpr Weights MakeWeights() {
  Weights weights{};
  for (const Pair& pair : kOthers) weights[pair.character].primary = pair.weight;
  for (std::size_t d = 0; d < 10; ++d) weights['0' + d].primary = static_cast<std::uint16_t>(0x36 + 2 * d);
  for (std::size_t i = 0; i < 26; ++i) SetBoth(weights, 'a' + i, {kLetters[i]});
  for (const Accented& accented : kAccented) {
    SetBoth(weights, accented.character, {Letter(accented.letter), accented.accent});
  }
  weights[0xFF] = {Letter('y'), kDiaeresis};
  weights[0xAA] = {Letter('a'), kOrdinal};
  weights[0xBA] = {Letter('o'), kOrdinal};
  weights[0xB9].primary = weights['1'].primary;
  weights[0xB2].primary = weights['2'].primary;
  weights[0xB3].primary = weights['3'].primary;
  weights[0xDF] = TwoLetters('s', 's');
  SetBoth(weights, 0xE6, TwoLetters('a', 'e'));
  SetBoth(weights, 0xFE, TwoLetters('t', 'h'));
  SetControls(weights);
  return weights;
}

constexpr Weights kWeights = MakeWeights();

// The parts behind the primary weights, collected while these are appended.
struct Rest {
  std::array<std::uint8_t, kMostCharacters> accents{};
  std::size_t characters = 0;  // with a primary weight
  std::size_t accented = 0;    // up to the last one with an accent
  std::array<std::uint8_t, 4 * kMostCharacters> ignorables{};
  std::size_t ignorable_bytes = 0;
  bool two_letters = false;

  void Ignore(std::uint8_t code) {
    const auto word = static_cast<std::uint16_t>(0x8007 + 4 * characters);
    for (const int byte : {word >> 8, word & 0xFF, 0x06, static_cast<int>(code)}) {
      ignorables[ignorable_bytes++] = static_cast<std::uint8_t>(byte);
    }
  }
  void Count(const Weight& weight) {
    two_letters = two_letters || weight.two_letters;
    accents[characters++] = weight.accent == 0 ? kNoAccent : weight.accent;
    if (weight.accent != 0) accented = characters;
  }
};

bool AppendCharacter(char32_t character, IndexKey& key, Rest& rest) {
  if (character > 0xFF) return false;
  if (character == 0) return true;
  const Weight& weight = kWeights[character];
  if (weight.ignorable != 0) {
    rest.Ignore(weight.ignorable);
    return true;
  }
  rest.Count(weight);
  if (weight.primary > 0xFF && !key.Append(static_cast<std::uint8_t>(weight.primary >> 8))) return false;
  return key.Append(static_cast<std::uint8_t>(weight.primary & 0xFF));
}

bool AppendRest(const Rest& rest, IndexKey& key) {
  // How accents are counted behind a character of two weights is not known.
  if (rest.two_letters && (rest.accented > 0 || rest.ignorable_bytes > 0)) return false;
  bool fits = key.Append(0x01) && key.Append(ByteSpan(rest.accents).first(rest.accented));
  if (rest.ignorable_bytes > 0) {
    fits = fits && key.Append(0x01) && key.Append(0x01) && key.Append(0x01) &&
           key.Append(ByteSpan(rest.ignorables).first(rest.ignorable_bytes));
  }
  return fits && key.Append(0x00);
}

}  // namespace

bool AppendTextKey(std::string_view text, IndexKey& key) {
  Rest rest;
  std::array<char32_t, kMostCharacters> characters{};
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size() && count < kMostCharacters;) {
    const std::optional<char32_t> character = NextUtf8(text, at);
    if (!character) return false;
    characters[count++] = *character;
  }
  while (count > 0 && characters[count - 1] == ' ') --count;
  for (std::size_t i = 0; i < count; ++i) {
    if (!AppendCharacter(characters[i], key, rest)) return false;
  }
  return AppendRest(rest, key);
}

}  // namespace kestro::jet
