// A dialog box template as its statement describes it, and its binary form, DLGTEMPLATEEX.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/tools/rescomp/byte_writer.h"

namespace rescomp {

// A text, or a number: the ordinal of a resource, or the atom of a class of the system's.
using TextOrNumber = std::variant<std::u16string, std::uint16_t>;

// In dialog units, relative to the dialog's client area.
struct TemplateRect {
  std::int16_t x = 0;
  std::int16_t y = 0;
  std::int16_t width = 0;
  std::int16_t height = 0;
};

struct DialogItem {
  std::uint32_t helpId = 0;
  std::uint32_t exStyle = 0;
  std::uint32_t style = 0;
  TemplateRect rect;
  std::uint32_t id = 0;
  TextOrNumber windowClass;
  TextOrNumber text;
};

struct DialogFont {
  std::uint16_t points = 0;
  std::uint16_t weight = 0;
  std::uint8_t italic = 0;
  std::uint8_t charset = 1;  // DEFAULT_CHARSET
  std::u16string face;
};

struct DialogTemplate {
  std::uint32_t helpId = 0;
  std::uint32_t exStyle = 0;
  std::uint32_t style = 0;
  TemplateRect rect;
  std::u16string caption;
  std::optional<DialogFont> font;  // given exactly when the style holds DS_SETFONT
  std::vector<DialogItem> items;
};

Bytes EncodeDialogTemplate(const DialogTemplate& dialog);

}  // namespace rescomp
