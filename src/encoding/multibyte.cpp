#include "encoding/multibyte.h"

#include <windows.h>

#include <cstdint>
#include <cstring>

namespace quillgate {

std::wstring Widen(std::string_view narrow) {
  if (IsAscii(narrow)) return {narrow.begin(), narrow.end()};
  const int bytes = static_cast<int>(narrow.size());
  const int length = ::MultiByteToWideChar(CP_ACP, 0, narrow.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_ACP, 0, narrow.data(), bytes, wide.data(), length);
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  if (wide.empty()) return {};
  const int characters = static_cast<int>(wide.size());
  const int bytes =
      ::WideCharToMultiByte(CP_ACP, 0, wide.data(), characters, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  ::WideCharToMultiByte(CP_ACP, 0, wide.data(), characters, narrow.data(), bytes, nullptr, nullptr);
  return narrow;
}

bool IsAscii(std::string_view narrow) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080u;
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= narrow.size(); at += sizeof(std::uint64_t)) {
    std::uint64_t eight;
    std::memcpy(&eight, narrow.data() + at, sizeof(eight));
    if ((eight & kHighBits) != 0) return false;
  }
  for (; at < narrow.size(); ++at) {
    if (static_cast<unsigned char>(narrow[at]) >= 0x80) return false;
  }
  return true;
}

}  // namespace quillgate
