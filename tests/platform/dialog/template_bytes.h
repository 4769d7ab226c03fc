// Dialog templates for tests, byte for byte as they lie in a program, under numbers of their own.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>
#include <vector>

struct TemplatePlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

class TemplateBytes {
 public:
  // Font 8 "MS Shell Dlg"; without DS_SETFONT in the style there is none.
  TemplateBytes(DWORD style, TemplatePlace place, std::u16string_view title, DWORD helpId = 0);

  TemplateBytes& Item(std::u16string_view className, int id, DWORD style, TemplatePlace place,
                      std::u16string_view text, DWORD helpId = 0);
  // The class by its number; the text is one, or a resource's number.
  TemplateBytes& Item(WORD classNumber, int id, DWORD style, TemplatePlace place,
                      std::u16string_view text);

  const std::vector<std::byte>& Bytes() const { return bytes_; }

 private:
  void Put8(unsigned value);
  void Put16(unsigned value);
  void Put32(DWORD value);
  void PutPlace(const TemplatePlace& place);
  void PutText(std::u16string_view text);
  void BeginItem(int id, DWORD style, const TemplatePlace& place, DWORD helpId);
  void EndItem(std::u16string_view text);

  std::vector<std::byte> bytes_;
};

// Adds the template to the program's resources, under a new number, and returns that.
LPCWSTR AddTemplate(const TemplateBytes& bytes);
LPCWSTR AddTemplate(std::vector<std::byte> bytes);
// The same number in several languages.
LPCWSTR AddTemplates(const std::vector<std::pair<LANGID, TemplateBytes>>& templates);
