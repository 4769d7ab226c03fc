#include <openssl/evp.h>

#include <stdexcept>

#include "accounts/password_digest.h"

namespace quillgate {

std::array<unsigned char, 16> Md5(std::string_view bytes) {
  std::array<unsigned char, 16> digest{};
  unsigned int length = 0;
  // A library that is restricted to approved digests has no MD5.
  if (::EVP_Digest(bytes.data(), bytes.size(), digest.data(), &length, ::EVP_md5(), nullptr) != 1 ||
      length != digest.size()) {
    throw std::runtime_error("MD5 is not available");
  }
  return digest;
}

}  // namespace quillgate
