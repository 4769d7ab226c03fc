#include "platform/dialog/dialog_template.h"

#include <array>
#include <stdexcept>
#include <string>

#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr std::uint16_t kExtendedVersion = 1;
constexpr std::uint16_t kExtendedSignature = 0xFFFF;
// Marks, in place of a text, that a number follows.
constexpr std::uint16_t kNumberFollows = 0xFFFF;
constexpr std::uint16_t kFirstClassNumber = 0x80;
constexpr std::array<const wchar_t*, 6> kNumberedClasses = {L"Button",  L"Edit",      L"Static",
                                                            L"ListBox", L"ScrollBar", L"ComboBox"};

struct TemplateError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

bool IsHighSurrogate(std::uint16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(std::uint16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

class TemplateReader {
 public:
  explicit TemplateReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  std::uint8_t Read8() {
    if (next_ >= bytes_.size()) throw TemplateError("cut off");
    return std::to_integer<std::uint8_t>(bytes_[next_++]);
  }
  std::uint16_t Read16() {
    const std::uint16_t low = Read8();
    return static_cast<std::uint16_t>(low | (Read8() << 8));
  }
  DWORD Read32() {
    const DWORD low = Read16();
    return low | (static_cast<DWORD>(Read16()) << 16);
  }
  void AlignTo4() { next_ = (next_ + 3) & ~std::size_t{3}; }

  // Reads position and size; returns them as a rectangle.
  RECT ReadBounds() {
    const LONG x = static_cast<SHORT>(Read16());
    const LONG y = static_cast<SHORT>(Read16());
    const LONG width = static_cast<SHORT>(Read16());
    const LONG height = static_cast<SHORT>(Read16());
    return {x, y, x + width, y + height};
  }

  // Reads a null-terminated text, or a number in the form of DialogItem::text.
  std::wstring ReadTextOrNumber() {
    std::uint16_t unit = Read16();
    if (unit == kNumberFollows) return {static_cast<wchar_t>(unit), static_cast<wchar_t>(Read16())};
    std::wstring text;
    for (; unit != 0; unit = Read16())
      text += ReadLetter(unit);
    return text;
  }

 private:
  wchar_t ReadLetter(std::uint16_t unit) {
    if (!IsHighSurrogate(unit)) return static_cast<wchar_t>(unit);
    const std::uint16_t second = Read16();
    if (!IsLowSurrogate(second)) throw TemplateError("text that is not UTF-16");
    return static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (second - 0xDC00));
  }

  std::span<const std::byte> bytes_;
  std::size_t next_ = 0;
};

bool IsNumber(const std::wstring& text) {
  return text.size() == 2 && text[0] == static_cast<wchar_t>(kNumberFollows);
}

std::wstring ReadClassName(TemplateReader& reader) {
  std::wstring name = reader.ReadTextOrNumber();
  if (!IsNumber(name)) return name;
  const auto index = static_cast<std::size_t>(name[1]) - kFirstClassNumber;
  if (index >= kNumberedClasses.size()) throw TemplateError("an unknown class number");
  return kNumberedClasses[index];
}

DialogItem ReadItem(TemplateReader& reader) {
  reader.AlignTo4();
  DialogItem item;
  item.helpId = reader.Read32();
  item.exStyle = reader.Read32();
  item.style = reader.Read32();
  item.place = reader.ReadBounds();
  item.id = reader.Read32();
  item.className = ReadClassName(reader);
  item.text = reader.ReadTextOrNumber();
  if (reader.Read16() != 0) throw TemplateError("creation data: not supported");
  return item;
}

DialogFont ReadFont(TemplateReader& reader) {
  DialogFont font;
  font.points = reader.Read16();
  font.weight = reader.Read16();
  font.italic = reader.Read8() != 0;
  reader.Read8();  // the character set, which Unicode text does not need
  font.face = reader.ReadTextOrNumber();
  return font;
}

DialogTemplate Read(TemplateReader& reader) {
  if (reader.Read16() != kExtendedVersion || reader.Read16() != kExtendedSignature)
    throw TemplateError("not an extended template");
  DialogTemplate dialogTemplate;
  dialogTemplate.helpId = reader.Read32();
  dialogTemplate.exStyle = reader.Read32();
  dialogTemplate.style = reader.Read32();
  const int items = reader.Read16();
  dialogTemplate.place = reader.ReadBounds();
  if (!reader.ReadTextOrNumber().empty()) throw TemplateError("a menu: not supported");
  if (!reader.ReadTextOrNumber().empty()) throw TemplateError("a window class: not supported");
  dialogTemplate.title = reader.ReadTextOrNumber();
  if ((dialogTemplate.style & DS_SETFONT) != 0) dialogTemplate.font = ReadFont(reader);
  for (int i = 0; i < items; ++i)
    dialogTemplate.items.push_back(ReadItem(reader));
  return dialogTemplate;
}

}  // namespace

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes) {
  TemplateReader reader(bytes);
  try {
    return Read(reader);
  } catch (const TemplateError& error) {
    LogLine(std::string("dialog template: ") + error.what());
    return std::nullopt;
  }
}

}  // namespace platform
