#include "platform/dialog/template_bytes.h"

#include <span>

namespace {

constexpr WORD kNumberFollows = 0xFFFF;
constexpr std::size_t kItemCountAt = 8;

}  // namespace

TemplateBytes::TemplateBytes(DWORD style, TemplateBounds place, std::u16string_view title,
                             DWORD helpId) {
  words_ = {1, 0xFFFF};
  Put(helpId);
  Put(0);  // extended style
  Put(style);
  words_.push_back(0);  // items
  PutPlace(place);
  PutText(u"");  // menu
  PutText(u"");  // class
  PutText(title);
  if ((style & DS_SETFONT) == 0) return;
  words_.insert(words_.end(), {8, 400, 0x100});  // points, weight, any set of characters
  PutText(u"MS Shell Dlg");
}

TemplateBytes& TemplateBytes::Item(std::u16string_view className, int id, DWORD style,
                                   TemplateBounds place, std::u16string_view text, DWORD helpId) {
  words_.resize(words_.size() + words_.size() % 2);
  Put(helpId);
  Put(0);
  Put(style);
  PutPlace(place);
  Put(static_cast<DWORD>(id));
  PutText(className);
  PutText(text);
  words_.push_back(0);  // creation data
  ++words_[kItemCountAt];
  return *this;
}

std::vector<std::byte> TemplateBytes::Bytes() const {
  const auto bytes = std::as_bytes(std::span(words_));
  return {bytes.begin(), bytes.end()};
}

void TemplateBytes::Put(DWORD value) {
  words_.push_back(LOWORD(value));
  words_.push_back(HIWORD(value));
}

void TemplateBytes::PutPlace(const TemplateBounds& place) {
  for (const int each : {place.x, place.y, place.width, place.height})
    words_.push_back(static_cast<WORD>(each));
}

void TemplateBytes::PutText(std::u16string_view text) {
  words_.insert(words_.end(), text.begin(), text.end());
  if (text.empty() || text.front() != kNumberFollows) words_.push_back(0);
}
