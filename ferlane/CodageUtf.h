// UTF-8 and UTF-16 conversions of the core layer. Decoding is either lenient (an invalid
// sequence becomes U+FFFD) or strict (the byte offset of the first invalid sequence is told).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Lenient decoding: every maximal invalid subsequence becomes one U+FFFD.
std::u16string DecodeUtf8(std::string_view octets);
// Strict check: the offset of the first byte that starts an invalid sequence (overlong forms,
// encoded surrogates and values above U+10FFFF are invalid), or nothing when all is valid.
std::optional<size_t> TrouveErreurUtf8(std::string_view octets);
// Strict decoding: `texte` receives the decoded units and nothing is returned when all is
// valid; else the offset TrouveErreurUtf8 gives, and `texte` holds an unspecified prefix.
std::optional<size_t> DecodeUtf8Strict(std::string_view octets, std::u16string& texte);
// An unpaired surrogate is written as U+FFFD.
std::string EncodeUtf8(std::u16string_view texte);
// The same, appended to `octets`. A text cut into pieces comes out as a whole would when no
// piece ends between the two units of a surrogate pair.
void AjouteUtf8(std::u16string_view texte, std::string& octets);

// Appends a code point (a surrogate pair above U+FFFF).
void AjouteCodePoint(std::u16string& texte, char32_t codePoint);

// The three kinds of UTF-16 unit, the one place they are spelt.
inline bool EstSubstitut(char32_t c) {
  return c >= 0xD800 && c <= 0xDFFF;
}
inline bool EstHautSubstitut(char32_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
inline bool EstBasSubstitut(char32_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}
// The code point at `position`, moving `position` past it. An unpaired surrogate is returned as
// itself (one unit).
char32_t LitCodePoint(std::u16string_view texte, size_t& position);
