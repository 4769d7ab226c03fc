#include <windows.h>

#include <bcrypt.h>

#include <stdexcept>

#include "accounts/password_digest.h"
#include "handles/handle.h"

namespace quillgate {
namespace {

struct AlgorithmTrait {
  using Type = BCRYPT_ALG_HANDLE;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::BCryptCloseAlgorithmProvider(handle, 0); }
};

struct HashTrait {
  using Type = BCRYPT_HASH_HANDLE;
  static Type Invalid() { return nullptr; }
  static void Close(Type handle) { ::BCryptDestroyHash(handle); }
};

void Require(NTSTATUS status) {
  if (status < 0) throw std::runtime_error("MD5 is not available");
}

}  // namespace

std::array<unsigned char, 16> Md5(std::string_view bytes) {
  BCRYPT_ALG_HANDLE openedAlgorithm = nullptr;
  Require(::BCryptOpenAlgorithmProvider(&openedAlgorithm, BCRYPT_MD5_ALGORITHM, nullptr, 0));
  const UniqueHandle<AlgorithmTrait> algorithm(openedAlgorithm);
  BCRYPT_HASH_HANDLE openedHash = nullptr;
  Require(::BCryptCreateHash(algorithm.Get(), &openedHash, nullptr, 0, nullptr, 0, 0));
  const UniqueHandle<HashTrait> hash(openedHash);

  // The function does not write through the pointer, although it is not declared const.
  auto* const data = reinterpret_cast<PUCHAR>(const_cast<char*>(bytes.data()));
  Require(::BCryptHashData(hash.Get(), data, static_cast<ULONG>(bytes.size()), 0));
  std::array<unsigned char, 16> digest{};
  Require(::BCryptFinishHash(hash.Get(), digest.data(), static_cast<ULONG>(digest.size()), 0));
  return digest;
}

}  // namespace quillgate
