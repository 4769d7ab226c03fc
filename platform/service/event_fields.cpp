#include "platform/service/event_fields.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>

namespace platform {
namespace {

std::string_view FirstLine(std::string_view text) {
  return text.substr(0, text.find('\n'));
}

std::string_view KindOf(std::string_view text) {
  const std::string_view line = FirstLine(text);
  for (std::size_t at = 0; at < line.size(); ++at) {
    const bool endsWord = at + 1 == line.size() || line[at + 1] == ' ';
    if (line[at] == ':' || (line[at] == '.' && endsWord)) return line.substr(0, at);
  }
  return line;
}

// FNV-1a.
std::uint64_t Hash(std::string_view text, std::uint64_t hash) {
  constexpr std::uint64_t kPrime = 0x100000001B3;
  for (const char letter : text)
    hash = (hash ^ static_cast<unsigned char>(letter)) * kPrime;
  return hash;
}

// "Bytes sent" becomes "EVENT_BYTES_SENT"; empty when there is another letter in it.
std::string FieldName(std::string_view name) {
  std::string field = "EVENT_";
  for (const char letter : name) {
    const int byte = static_cast<unsigned char>(letter);
    if (std::isalnum(byte) == 0 && letter != ' ') return {};
    field += letter == ' ' ? '_' : static_cast<char>(std::toupper(byte));
  }
  return name.empty() ? std::string() : field;
}

}  // namespace

std::string EventKindId(std::string_view text) {
  constexpr std::uint64_t kBasis = 0xCBF29CE484222325;
  const std::string_view kind = KindOf(text);
  std::uint64_t high = Hash(kind, kBasis);
  std::uint64_t low = Hash(kind, high);
  // Marked as an identifier of a format of one's own.
  high = (high & ~std::uint64_t{0xF000}) | 0x8000;
  low = (low & ~(std::uint64_t{3} << 62)) | (std::uint64_t{2} << 62);
  std::array<char, 33> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx%016llx",
                static_cast<unsigned long long>(high), static_cast<unsigned long long>(low));
  return digits.data();
}

std::vector<std::pair<std::string, std::string>> EventData(std::string_view text) {
  std::vector<std::pair<std::string, std::string>> data;
  text.remove_prefix(std::min(FirstLine(text).size() + 1, text.size()));
  while (!text.empty()) {
    const std::string_view line = FirstLine(text);
    const std::size_t colon = line.find(": ");
    std::string field = colon == std::string_view::npos ? "" : FieldName(line.substr(0, colon));
    if (!field.empty()) data.emplace_back(std::move(field), line.substr(colon + 2));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
  return data;
}

}  // namespace platform
