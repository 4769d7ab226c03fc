#include "platform/registry/hive_text.h"

#include <winreg.h>

#include <charconv>
#include <cstring>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr std::string_view kFirstLine = "registry 1";
constexpr std::string_view kLastWord = "end ";
constexpr std::string_view kHexDigits = "0123456789abcdef";

void AppendHexByte(std::string& out, unsigned byte) {
  out += kHexDigits[byte >> 4];
  out += kHexDigits[byte & 0xF];
}

std::string Quoted(std::wstring_view text) {
  std::string out = "\"";
  for (const char each : Utf8(text)) {
    const auto byte = static_cast<unsigned char>(each);
    if (byte < 0x20 || byte == 0x7F) {
      out += "\\x";
      AppendHexByte(out, byte);
    } else {
      if (each == '"' || each == '\\') out += '\\';
      out += each;
    }
  }
  return out + '"';
}

// The text of a string value. Nothing when the value cannot be written as text: it must consist of
// valid characters and end with its only null.
std::optional<std::wstring> TextOf(const HiveValue& value) {
  const std::size_t units = value.data.size() / sizeof(wchar_t);
  if (units == 0 || units * sizeof(wchar_t) != value.data.size()) return std::nullopt;
  std::wstring text(units, L'\0');
  std::memcpy(text.data(), value.data.data(), value.data.size());
  if (text.find(L'\0') != units - 1) return std::nullopt;
  text.pop_back();
  if (Wide(Utf8(text)) != text) return std::nullopt;
  return text;
}

std::string HexBytes(const HiveValue& value) {
  std::string out = "hex(" + std::to_string(value.type) + "):";
  for (std::size_t i = 0; i < value.data.size(); ++i) {
    if (i != 0) out += ',';
    AppendHexByte(out, value.data[i]);
  }
  return out;
}

std::string DwordText(const HiveValue& value) {
  std::string out = "dword:";
  for (std::size_t i = sizeof(DWORD); i-- > 0;)
    AppendHexByte(out, value.data[i]);
  return out;
}

std::string DataText(const HiveValue& value) {
  if (value.type == REG_DWORD && value.data.size() == sizeof(DWORD)) return DwordText(value);
  if (value.type == REG_SZ || value.type == REG_EXPAND_SZ) {
    const std::optional<std::wstring> text = TextOf(value);
    if (text) return (value.type == REG_SZ ? "" : "expand:") + Quoted(*text);
  }
  return HexBytes(value);
}

void WriteKey(const HiveKey& key, const std::string& path, std::string& out, std::size_t& lines) {
  if (!path.empty()) {
    out += '[' + path + "]\n";
    ++lines;
  }
  for (const HiveValue& value : key.values) {
    out += (value.name.empty() ? "@" : Quoted(value.name)) + '=' + DataText(value) + '\n';
    ++lines;
  }
  for (const HiveKey& child : key.keys)
    WriteKey(child, path.empty() ? Utf8(child.name) : path + '\\' + Utf8(child.name), out, lines);
}

int HexDigit(char digit) {
  const std::size_t value = kHexDigits.find(digit);
  return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

std::optional<unsigned> TakeHexByte(std::string_view& text) {
  if (text.size() < 2) return std::nullopt;
  const int high = HexDigit(text[0]);
  const int low = HexDigit(text[1]);
  if (high < 0 || low < 0) return std::nullopt;
  text.remove_prefix(2);
  return static_cast<unsigned>(high * 16 + low);
}

bool TakeWord(std::string_view& text, std::string_view word) {
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  return true;
}

std::optional<std::wstring> TakeQuoted(std::string_view& text) {
  if (!TakeWord(text, "\"")) return std::nullopt;
  std::string out;
  while (!text.empty()) {
    const char letter = text.front();
    text.remove_prefix(1);
    if (letter == '"') return Wide(out);
    if (letter != '\\') {
      out += letter;
    } else if (TakeWord(text, "x")) {
      const std::optional<unsigned> byte = TakeHexByte(text);
      if (!byte) return std::nullopt;
      out += static_cast<char>(*byte);
    } else if (text.starts_with('"') || text.starts_with('\\')) {
      out += text.front();
      text.remove_prefix(1);
    } else {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

bool ReadString(std::string_view text, HiveValue& value) {
  const std::optional<std::wstring> read = TakeQuoted(text);
  if (!read || !text.empty()) return false;
  value.data.resize((read->size() + 1) * sizeof(wchar_t));
  std::memcpy(value.data.data(), read->c_str(), value.data.size());
  return true;
}

bool ReadDword(std::string_view text, HiveValue& value) {
  value.data.resize(sizeof(DWORD));
  for (std::size_t i = sizeof(DWORD); i-- > 0;) {
    const std::optional<unsigned> byte = TakeHexByte(text);
    if (!byte) return false;
    value.data[i] = static_cast<BYTE>(*byte);
  }
  return text.empty();
}

// Reads what follows "hex(": "3):01,ff".
bool ReadHex(std::string_view text, HiveValue& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value.type);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  if (!TakeWord(text, "):")) return false;
  while (!text.empty()) {
    if (!value.data.empty() && !TakeWord(text, ",")) return false;
    const std::optional<unsigned> byte = TakeHexByte(text);
    if (!byte) return false;
    value.data.push_back(static_cast<BYTE>(*byte));
  }
  return true;
}

bool ReadData(std::string_view text, HiveValue& value) {
  if (TakeWord(text, "hex(")) return ReadHex(text, value);
  if (TakeWord(text, "dword:")) {
    value.type = REG_DWORD;
    return ReadDword(text, value);
  }
  value.type = TakeWord(text, "expand:") ? REG_EXPAND_SZ : REG_SZ;
  return ReadString(text, value);
}

std::optional<HiveValue> ReadValue(std::string_view line) {
  HiveValue value;
  if (!TakeWord(line, "@")) {
    std::optional<std::wstring> name = TakeQuoted(line);
    if (!name || name->empty() || !IsValueName(*name)) return std::nullopt;
    value.name = std::move(*name);
  }
  if (!TakeWord(line, "=") || !ReadData(line, value)) return std::nullopt;
  return value;
}

std::optional<KeyPath> ReadPath(std::string_view line) {
  if (!TakeWord(line, "[") || !line.ends_with(']')) return std::nullopt;
  line.remove_suffix(1);
  KeyPath path;
  for (;;) {
    const std::size_t end = line.find('\\');
    std::wstring name = Wide(line.substr(0, end));
    if (!IsKeyName(name) || path.size() == kMaximumKeyDepth) return std::nullopt;
    path.push_back(std::move(name));
    if (end == std::string_view::npos) return path;
    line.remove_prefix(end + 1);
  }
}

class HiveReader {
 public:
  bool ReadLine(std::string_view line) {
    return line.starts_with('[') ? AddKey(line) : AddValue(line);
  }
  HiveKey TakeRoot() { return std::move(root_); }

 private:
  bool AddKey(std::string_view line) {
    std::optional<KeyPath> path = ReadPath(line);
    if (!path) return false;
    KeyPath above(path->begin(), path->end() - 1);
    if (root_.FindPath(above) == nullptr || root_.FindPath(*path) != nullptr) return false;
    current_ = &root_.MakePath(*path);
    return true;
  }

  bool AddValue(std::string_view line) {
    std::optional<HiveValue> value = ReadValue(line);
    if (!value || current_->FindValue(value->name) != nullptr) return false;
    current_->values.push_back(std::move(*value));
    return true;
  }

  HiveKey root_;
  // Valid until the next key line, which changes the tree.
  HiveKey* current_ = &root_;
};

// Takes one line without its line break; nothing when the line break is missing.
std::optional<std::string_view> TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end + 1);
  return line;
}

}  // namespace

std::string WriteHive(const HiveKey& root) {
  std::string out = std::string(kFirstLine) + '\n';
  std::size_t lines = 0;
  WriteKey(root, {}, out, lines);
  return out + std::string(kLastWord) + std::to_string(lines) + '\n';
}

std::optional<HiveKey> ReadHive(std::string_view text) {
  const bool wellFormed = Utf8(Wide(text)) == text;
  if (!wellFormed || TakeLine(text) != kFirstLine) return std::nullopt;
  HiveReader reader;
  std::size_t lines = 0;
  for (std::optional<std::string_view> line = TakeLine(text); line; line = TakeLine(text)) {
    if (line->starts_with(kLastWord)) {
      const bool whole = line->substr(kLastWord.size()) == std::to_string(lines) && text.empty();
      return whole ? std::optional(reader.TakeRoot()) : std::nullopt;
    }
    if (!reader.ReadLine(*line)) return std::nullopt;
    ++lines;
  }
  return std::nullopt;
}

}  // namespace platform
