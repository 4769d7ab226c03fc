#include "accounts/password_digest.h"

#include <windows.h>

#include <stdexcept>

namespace quillgate {
namespace {

// Of a text that is not empty.
int MultibyteLength(std::wstring_view text) {
  const int length = ::WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                           nullptr, 0, nullptr, nullptr);
  if (length <= 0) throw std::runtime_error("the text has no multibyte form");
  return length;
}

std::string MultibyteForm(std::wstring_view text, int limitBytes) {
  // Every character takes a byte at least.
  text = text.substr(0, static_cast<std::size_t>(limitBytes));
  while (!text.empty() && MultibyteLength(text) > limitBytes)
    text.remove_suffix(1);
  if (text.empty()) return {};
  std::string bytes(static_cast<std::size_t>(MultibyteLength(text)), '\0');
  ::WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                        static_cast<int>(bytes.size()), nullptr, nullptr);
  return bytes;
}

}  // namespace

std::wstring PasswordDigest(std::wstring_view password, int limitBytes) {
  static constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
  std::wstring text;
  for (const unsigned char byte : Md5(MultibyteForm(password, limitBytes))) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0x0F];
  }
  return text;
}

}  // namespace quillgate
