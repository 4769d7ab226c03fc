#include "accounts/password_digest.h"

#include "encoding/multibyte.h"

namespace quillgate {
namespace {

std::string MultibyteForm(std::wstring_view text, std::size_t limitBytes) {
  // Every character takes at least one byte.
  text = text.substr(0, limitBytes);
  std::string bytes = Narrow(text);
  while (bytes.size() > limitBytes) {
    text.remove_suffix(1);
    bytes = Narrow(text);
  }
  return bytes;
}

}  // namespace

std::wstring PasswordDigest(std::wstring_view password, std::size_t limitBytes) {
  static constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
  std::wstring text;
  for (const unsigned char byte : Md5(MultibyteForm(password, limitBytes))) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0x0F];
  }
  return text;
}

}  // namespace quillgate
