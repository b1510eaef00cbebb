#pragma once
// Text inside a tape is Windows-1252 bytes. It is kept as bytes everywhere in
// the engine and decoded only where a person reads it.

#include <string>
#include <string_view>

namespace cintal {

// Every byte has a meaning: the five bytes that Windows-1252 leaves unassigned
// (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the C1 controls of the same value, so
// that decoding and encoding back gives the same bytes.
std::string Cp1252ToUtf8(std::string_view bytes);

// Characters without a byte become "?". Invalid UTF-8 sequences become "?" too.
std::string Utf8ToCp1252(std::string_view utf8);

} // namespace cintal
