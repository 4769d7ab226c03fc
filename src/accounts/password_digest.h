// Passwords are stored as the MD5 digest (RFC 1321) of their multibyte form, never in plain text.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quillgate {

// The digest of any bytes. The only function that the build takes from a cryptographic library.
// Throws std::runtime_error when the library fails.
std::array<unsigned char, 16> Md5(std::string_view bytes);

// 32 upper-case hexadecimal digits of the digest of the password's multibyte form. The form is
// truncated after the last whole character that fits in `limitBytes`: what the system's own
// conversion leaves in a buffer of that size. A password that is too long never counts as blank.
std::wstring PasswordDigest(std::wstring_view password, std::size_t limitBytes);

}  // namespace quillgate
