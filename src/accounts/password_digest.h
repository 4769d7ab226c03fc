// Passwords are kept as the MD5 digest (RFC 1321) of their multibyte form, never as themselves.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quillgate {

// Of any bytes. The one function that the build takes from a cryptographic library. Throws
// std::runtime_error when the library refuses.
std::array<unsigned char, 16> Md5(std::string_view bytes);

// 32 upper-case hexadecimal digits of the digest of the password's multibyte form, cut after the
// last whole character that fits in `limitBytes`: what the system's own conversion leaves in a
// buffer of that size. Too long a password never counts as a blank one.
std::wstring PasswordDigest(std::wstring_view password, std::size_t limitBytes);

}  // namespace quillgate
