#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <optional>
#include <string_view>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"

// MultiByteToWideChar and WideCharToMultiByte convert every database value, and nearly all of that
// is ASCII. So runs of ASCII are copied eight characters at a time.
namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::size_t kChunk = 8;

bool IsAscii(char byte) {
  return (static_cast<unsigned char>(byte) & 0x80) == 0;
}

bool IsAscii(wchar_t letter) {
  return static_cast<std::uint32_t>(letter) < 0x80;
}

bool IsAsciiChunk(const char* text) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text, sizeof bytes);
  return (bytes & 0x8080808080808080u) == 0;
}

bool IsAsciiChunk(const wchar_t* wide) {
  std::uint32_t all = 0;
  for (std::size_t i = 0; i < kChunk; ++i)
    all |= static_cast<std::uint32_t>(wide[i]);
  return all < 0x80;
}

// The target of wide characters. Without a buffer they are only counted.
struct WideSink {
  LPWSTR out;
  std::size_t capacity;
  std::size_t count = 0;

  bool Put(wchar_t letter) {
    if (out != nullptr) {
      if (count == capacity) return false;
      out[count] = letter;
    }
    ++count;
    return true;
  }
  bool PutChunk(const char* text) {
    if (out != nullptr) {
      if (capacity - count < kChunk) return false;
      for (std::size_t i = 0; i < kChunk; ++i)
        out[count + i] = static_cast<wchar_t>(static_cast<unsigned char>(text[i]));
    }
    count += kChunk;
    return true;
  }
};

struct ByteSink {
  LPSTR out;
  std::size_t capacity;
  std::size_t count = 0;

  bool Put(wchar_t letter) {
    if (IsAscii(letter)) return PutByte(static_cast<char>(letter));
    char bytes[platform::kMaximumUtf8Bytes];
    const std::size_t size = platform::EncodeUtf8(letter, bytes);
    if (out != nullptr) {
      if (capacity - count < size) return false;
      std::memcpy(out + count, bytes, size);
    }
    count += size;
    return true;
  }
  bool PutByte(char byte) {
    if (out != nullptr) {
      if (count == capacity) return false;
      out[count] = byte;
    }
    ++count;
    return true;
  }
  bool PutChunk(const wchar_t* wide) {
    if (out != nullptr) {
      if (capacity - count < kChunk) return false;
      for (std::size_t i = 0; i < kChunk; ++i)
        out[count + i] = static_cast<char>(wide[i]);
    }
    count += kChunk;
    return true;
  }
};

DWORD Widen(std::string_view text, bool strict, WideSink& sink) {
  std::size_t at = 0;
  while (at < text.size()) {
    if (text.size() - at >= kChunk && IsAsciiChunk(text.data() + at) &&
        sink.PutChunk(text.data() + at)) {
      at += kChunk;
      continue;
    }
    if (IsAscii(text[at])) {
      if (!sink.Put(static_cast<wchar_t>(text[at]))) return ERROR_INSUFFICIENT_BUFFER;
      ++at;
      continue;
    }
    const std::size_t start = at;
    const wchar_t letter = platform::DecodeUtf8(text, at);
    // A genuine U+FFFD in the text takes three bytes.
    if (strict && letter == kReplacement && at - start == 1) return ERROR_NO_UNICODE_TRANSLATION;
    if (!sink.Put(letter)) return ERROR_INSUFFICIENT_BUFFER;
  }
  return NO_ERROR;
}

DWORD Narrow(std::wstring_view wide, ByteSink& sink) {
  std::size_t at = 0;
  while (at < wide.size()) {
    if (wide.size() - at >= kChunk && IsAsciiChunk(wide.data() + at) &&
        sink.PutChunk(wide.data() + at)) {
      at += kChunk;
      continue;
    }
    if (!sink.Put(wide[at])) return ERROR_INSUFFICIENT_BUFFER;
    ++at;
  }
  return NO_ERROR;
}

// The argument checks of both directions.
DWORD CheckArguments(UINT codePage, DWORD flags, DWORD supportedFlags, const void* from,
                     int fromSize, const void* to, int toSize) {
  if (codePage != CP_ACP && codePage != CP_UTF8) {
    platform::LogLine("only the process's code page, UTF-8, can be converted");
    return ERROR_INVALID_PARAMETER;
  }
  if ((flags & ~supportedFlags) != 0) return ERROR_INVALID_FLAGS;
  const bool badSource = from == nullptr || fromSize == 0 || fromSize < -1;
  const bool badTarget = toSize < 0 || (toSize > 0 && to == nullptr) || (toSize > 0 && from == to);
  return badSource || badTarget ? ERROR_INVALID_PARAMETER : NO_ERROR;
}

int Finish(DWORD error, std::size_t count) {
  if (error == NO_ERROR) return static_cast<int>(count);
  ::SetLastError(error);
  return 0;
}

}  // namespace

extern "C" {

int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCCH text, int bytes, LPWSTR wide,
                               int wideCharacters) try {
  DWORD error =
      CheckArguments(codePage, flags, MB_ERR_INVALID_CHARS, text, bytes, wide, wideCharacters);
  if (error != NO_ERROR) return Finish(error, 0);
  const std::size_t length = bytes < 0 ? std::strlen(text) + 1 : static_cast<std::size_t>(bytes);
  WideSink sink{wideCharacters == 0 ? nullptr : wide, static_cast<std::size_t>(wideCharacters)};
  error = Widen({text, length}, (flags & MB_ERR_INVALID_CHARS) != 0, sink);
  return Finish(error, sink.count);
} catch (...) {
  return platform::FailedCall(0);
}

int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWCH wide, int wideCharacters,
                               LPSTR text, int bytes, LPCCH defaultCharacter,
                               LPBOOL usedDefaultCharacter) try {
  DWORD error = CheckArguments(codePage, flags, 0, wide, wideCharacters, text, bytes);
  // UTF-8 can encode every character, so default characters are not permitted.
  if (defaultCharacter != nullptr || usedDefaultCharacter != nullptr)
    error = ERROR_INVALID_PARAMETER;
  if (error != NO_ERROR) return Finish(error, 0);
  const std::size_t length =
      wideCharacters < 0 ? std::wcslen(wide) + 1 : static_cast<std::size_t>(wideCharacters);
  ByteSink sink{bytes == 0 ? nullptr : text, static_cast<std::size_t>(bytes)};
  error = Narrow({wide, length}, sink);
  return Finish(error, sink.count);
} catch (...) {
  return platform::FailedCall(0);
}

}  // extern "C"
