// Dialog templates as plain data, and the reader of their compiled form: DLGTEMPLATEEX with its
// DLGITEMTEMPLATEEX records, as Win32 documents them. Numbers are little-endian, text is UTF-16,
// and each record begins at a multiple of four bytes. Any thread.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

struct DialogFont {
  int points = 8;
  int weight = 0;  // as LOGFONTW has it
  bool italic = false;
  std::wstring face;
};

// Bounds are in dialog units.
struct DialogItem {
  DWORD helpId = 0;
  DWORD exStyle = 0;
  DWORD style = 0;
  RECT place{};
  DWORD id = 0;
  std::wstring className;
  // For a resource's number (an icon of a static) the text is 0xFFFF followed by the number.
  // Controls get it in this form as their name.
  std::wstring text;
};

struct DialogTemplate {
  DWORD helpId = 0;
  DWORD exStyle = 0;
  DWORD style = 0;
  RECT place{};
  std::wstring title;
  std::optional<DialogFont> font;  // nothing without DS_SETFONT
  std::vector<DialogItem> items;
};

// Nothing, with a log line, when the bytes are truncated, have the older form DLGTEMPLATE, or name
// a menu, a window class or creation data, none of which is supported.
std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes);

}  // namespace platform
