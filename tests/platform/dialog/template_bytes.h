// Dialog templates for tests, byte for byte as they lie in a program, under numbers of their own.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

inline constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT | DS_CENTER;
inline constexpr DWORD kItem = WS_CHILD | WS_VISIBLE;
inline constexpr DWORD kStop = kItem | WS_TABSTOP;

// The class "Button" by its number.
inline constexpr std::u16string_view kButton = u"\xFFFF\x0080";

struct TemplateBounds {
  int x, y, width, height;
};

using ResourceBytes = std::vector<std::byte>;

class TemplateBytes {
 public:
  // With DS_SETFONT in the style; the font is 8 "MS Shell Dlg".
  TemplateBytes(DWORD style, const TemplateBounds& place, std::u16string_view title) {
    words_ = {1, 0xFFFF};
    Put(0);  // number of the help text
    Put(0);  // extended style
    Put(style);
    words_.push_back(0);  // items
    PutPlace(place);
    PutText(u"");  // menu
    PutText(u"");  // class
    PutText(title);
    words_.insert(words_.end(), {8, 400, 0x100});  // points, weight, any set of characters
    PutText(u"MS Shell Dlg");
  }

  TemplateBytes& Item(std::u16string_view className, int id, DWORD style,
                      const TemplateBounds& place, std::u16string_view text, DWORD helpId = 0) {
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

  ResourceBytes Bytes() const {
    const auto bytes = std::as_bytes(std::span(words_));
    return {bytes.begin(), bytes.end()};
  }

 private:
  static constexpr std::size_t kItemCountAt = 8;

  void Put(DWORD value) { words_.insert(words_.end(), {LOWORD(value), HIWORD(value)}); }
  void PutPlace(const TemplateBounds& place) {
    for (const int each : {place.x, place.y, place.width, place.height})
      words_.push_back(static_cast<WORD>(each));
  }
  // Or a number, which follows 0xFFFF.
  void PutText(std::u16string_view text) {
    words_.insert(words_.end(), text.begin(), text.end());
    if (text.empty() || text.front() != 0xFFFF) words_.push_back(0);
  }

  std::vector<WORD> words_;
};

// Adds templates to the program's resources, one for each language, under a new number, and
// returns that.
LPCWSTR AddTemplates(const std::vector<std::pair<LANGID, ResourceBytes>>& templates);
inline LPCWSTR AddTemplate(const ResourceBytes& bytes) {
  return AddTemplates({{LANGID{0}, bytes}});
}
inline LPCWSTR AddTemplate(const TemplateBytes& bytes) {
  return AddTemplate(bytes.Bytes());
}
