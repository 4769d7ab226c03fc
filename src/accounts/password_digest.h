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

// 32 upper-case hexadecimal digits of the password's first `limitBytes` multibyte bytes; a password
// that does not fit counts as empty, as the system's own conversion has it.
std::wstring PasswordDigest(std::wstring_view password, int limitBytes);

}  // namespace quillgate
