#include "platform/dialog/template_bytes.h"

#include <deque>

#include "platform/kernel/resources.h"

namespace {

constexpr std::uint16_t kDialogType = 5;  // RT_DIALOG
constexpr std::size_t kItemCountAt = 16;

std::uint16_t NewNumber() {
  static std::uint16_t last = 100;
  return ++last;
}

// Resources live as long as the process.
void Register(std::uint16_t number, LANGID language, std::vector<std::byte> bytes) {
  static auto& kept = *new std::deque<std::vector<std::byte>>;
  kept.push_back(std::move(bytes));
  const platform::Resource resource = {kDialogType, number, language, kept.back()};
  platform::RegisterResources({&resource, 1});
}

}  // namespace

TemplateBytes::TemplateBytes(DWORD style, TemplatePlace place, std::u16string_view title,
                             DWORD helpId) {
  Put16(1);
  Put16(0xFFFF);
  Put32(helpId);
  Put32(0);  // extended style
  Put32(style);
  Put16(0);  // items
  PutPlace(place);
  PutText(u"");  // menu
  PutText(u"");  // class
  PutText(title);
  if ((style & DS_SETFONT) == 0) return;
  Put16(8);
  Put16(400);
  Put8(0);
  Put8(1);
  PutText(u"MS Shell Dlg");
}

TemplateBytes& TemplateBytes::Item(std::u16string_view className, int id, DWORD style,
                                   TemplatePlace place, std::u16string_view text, DWORD helpId) {
  BeginItem(id, style, place, helpId);
  PutText(className);
  EndItem(text);
  return *this;
}

TemplateBytes& TemplateBytes::Item(WORD classNumber, int id, DWORD style, TemplatePlace place,
                                   std::u16string_view text) {
  BeginItem(id, style, place, 0);
  Put16(0xFFFF);
  Put16(classNumber);
  EndItem(text);
  return *this;
}

void TemplateBytes::BeginItem(int id, DWORD style, const TemplatePlace& place, DWORD helpId) {
  while (bytes_.size() % 4 != 0)
    Put8(0);
  Put32(helpId);
  Put32(0);
  Put32(style);
  PutPlace(place);
  Put32(static_cast<DWORD>(id));
}

void TemplateBytes::EndItem(std::u16string_view text) {
  PutText(text);
  Put16(0);  // creation data
  bytes_[kItemCountAt] =
      std::byte{static_cast<unsigned char>(std::to_integer<unsigned>(bytes_[kItemCountAt]) + 1)};
}

void TemplateBytes::Put8(unsigned value) {
  bytes_.push_back(std::byte{static_cast<unsigned char>(value)});
}

void TemplateBytes::Put16(unsigned value) {
  Put8(value & 0xFF);
  Put8((value >> 8) & 0xFF);
}

void TemplateBytes::Put32(DWORD value) {
  Put16(value & 0xFFFF);
  Put16(value >> 16);
}

void TemplateBytes::PutPlace(const TemplatePlace& place) {
  for (const int each : {place.x, place.y, place.width, place.height})
    Put16(static_cast<unsigned>(each));
}

void TemplateBytes::PutText(std::u16string_view text) {
  for (const char16_t unit : text)
    Put16(unit);
  Put16(0);
}

LPCWSTR AddTemplate(const TemplateBytes& bytes) {
  return AddTemplate(bytes.Bytes());
}

LPCWSTR AddTemplate(std::vector<std::byte> bytes) {
  const std::uint16_t number = NewNumber();
  Register(number, 0, std::move(bytes));
  return MAKEINTRESOURCEW(number);
}

LPCWSTR AddTemplates(const std::vector<std::pair<LANGID, TemplateBytes>>& templates) {
  const std::uint16_t number = NewNumber();
  for (const auto& [language, bytes] : templates)
    Register(number, language, bytes.Bytes());
  return MAKEINTRESOURCEW(number);
}
