// Dialog templates for tests, byte for byte as they lie in a program, under numbers of their own.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

inline constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT | DS_CENTER;
inline constexpr DWORD kItem = WS_CHILD | WS_VISIBLE;
inline constexpr DWORD kStop = kItem | WS_TABSTOP;

// The class "Button" by its number.
inline constexpr std::u16string_view kButton = u"\xFFFF\x0080";

struct TemplateBounds {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

class TemplateBytes {
 public:
  // Font 8 "MS Shell Dlg"; without DS_SETFONT in the style there is none.
  TemplateBytes(DWORD style, TemplateBounds place, std::u16string_view title, DWORD helpId = 0);

  TemplateBytes& Item(std::u16string_view className, int id, DWORD style, TemplateBounds place,
                      std::u16string_view text, DWORD helpId = 0);

  std::vector<std::byte> Bytes() const;

 private:
  void Put(DWORD value);
  void PutPlace(const TemplateBounds& place);
  void PutText(std::u16string_view text);

  std::vector<WORD> words_;
};

// Adds templates to the program's resources, one for each language, under a new number, and
// returns that.
using ResourceBytes = std::vector<std::byte>;
LPCWSTR AddTemplates(const std::vector<std::pair<LANGID, ResourceBytes>>& templates);
inline LPCWSTR AddTemplate(const ResourceBytes& bytes) {
  return AddTemplates({{LANGID{0}, bytes}});
}
inline LPCWSTR AddTemplate(const TemplateBytes& bytes) {
  return AddTemplate(bytes.Bytes());
}
