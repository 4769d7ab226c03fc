#include "platform/tools/rescomp/control_statement.h"

#include <array>
#include <limits>
#include <string_view>

namespace rescomp {

namespace {

constexpr std::uint16_t kButton = 0x80;
constexpr std::uint16_t kEdit = 0x81;
constexpr std::uint16_t kStatic = 0x82;
constexpr std::uint16_t kListBox = 0x83;
constexpr std::uint16_t kScrollBar = 0x84;
constexpr std::uint16_t kComboBox = 0x85;

// Window styles that the keywords imply.
constexpr std::uint32_t kChild = 0x50000000;  // WS_CHILD | WS_VISIBLE
constexpr std::uint32_t kTabStop = 0x00010000;
constexpr std::uint32_t kGroup = 0x00020000;
constexpr std::uint32_t kBorder = 0x00800000;

enum class Caption { kText, kNone };

struct ControlKeyword {
  std::string_view word;
  std::uint16_t windowClass;
  std::uint32_t style;
  std::uint32_t unlessStyled;  // more of it, when the statement gives no style
  Caption caption = Caption::kText;
};

constexpr std::array kKeywords = {
    ControlKeyword{"LTEXT", kStatic, 0, kGroup},
    ControlKeyword{"CTEXT", kStatic, 1, kGroup},
    ControlKeyword{"RTEXT", kStatic, 2, kGroup},
    ControlKeyword{"ICON", kStatic, 3, 0},
    ControlKeyword{"PUSHBUTTON", kButton, kTabStop, 0},
    ControlKeyword{"DEFPUSHBUTTON", kButton, kTabStop | 1, 0},
    ControlKeyword{"CHECKBOX", kButton, kTabStop | 2, 0},
    ControlKeyword{"AUTOCHECKBOX", kButton, kTabStop | 3, 0},
    ControlKeyword{"RADIOBUTTON", kButton, 4, kTabStop},
    ControlKeyword{"GROUPBOX", kButton, 7, 0},
    ControlKeyword{"AUTORADIOBUTTON", kButton, 9, kTabStop},
    ControlKeyword{"EDITTEXT", kEdit, kBorder | kTabStop, 0, Caption::kNone},
    ControlKeyword{"COMBOBOX", kComboBox, 0, kTabStop | 1, Caption::kNone},
};

struct ClassName {
  std::string_view name;
  std::uint16_t atom;
};
constexpr std::array kClassNames = {
    ClassName{"Button", kButton},       ClassName{"Edit", kEdit},
    ClassName{"Static", kStatic},       ClassName{"ListBox", kListBox},
    ClassName{"ScrollBar", kScrollBar}, ClassName{"ComboBox", kComboBox},
};

TextOrNumber ReadTextOrNumber(TokenStream& tokens) {
  if (tokens.Peek().kind == TokenKind::kString) return tokens.WideString();
  return tokens.Number16();
}

TextOrNumber ReadClass(TokenStream& tokens) {
  if (tokens.Peek().kind != TokenKind::kString) return tokens.Number16();
  for (const ClassName& known : kClassNames) {
    if (EqualKeywords(tokens.Peek().text, known.name)) {
      tokens.Take();
      return known.atom;
    }
  }
  return tokens.WideString();
}

// text, id, class, style, x, y, width, height [, exStyle [, helpId]]
DialogItem ReadGeneralControl(TokenStream& tokens) {
  DialogItem item;
  item.text = ReadTextOrNumber(tokens);
  tokens.Expect(",");
  item.id = tokens.Number();
  tokens.Expect(",");
  item.windowClass = ReadClass(tokens);
  tokens.Expect(",");
  item.style = ReadStyle(tokens, kChild);
  tokens.Expect(",");
  item.rect = ReadRect(tokens);
  if (tokens.Accept(",")) item.exStyle = ReadStyle(tokens, 0);
  if (tokens.Accept(",")) item.helpId = tokens.Number();
  return item;
}

// [text,] id, x, y, width, height [, style [, exStyle [, helpId]]]
DialogItem ReadKeywordControl(TokenStream& tokens, const ControlKeyword& keyword) {
  DialogItem item;
  item.windowClass = keyword.windowClass;
  if (keyword.caption == Caption::kText) {
    item.text = ReadTextOrNumber(tokens);
    tokens.Expect(",");
  }
  item.id = tokens.Number();
  tokens.Expect(",");
  item.rect = ReadRect(tokens);
  const bool styled = tokens.Accept(",");
  const std::uint32_t style = kChild | keyword.style;
  item.style = styled ? ReadStyle(tokens, style) : style | keyword.unlessStyled;
  if (tokens.Accept(",")) item.exStyle = ReadStyle(tokens, 0);
  if (tokens.Accept(",")) item.helpId = tokens.Number();
  return item;
}

std::int16_t ReadCoordinate(TokenStream& tokens) {
  const Token first = tokens.Peek();
  const auto value = static_cast<std::int32_t>(tokens.Number());
  using Limits = std::numeric_limits<std::int16_t>;
  if (value < Limits::min() || value > Limits::max()) {
    throw SourceError(first.place, "the coordinate must fit in 16 bits");
  }
  return static_cast<std::int16_t>(value);
}

}  // namespace

TemplateRect ReadRect(TokenStream& tokens) {
  TemplateRect rect;
  rect.x = ReadCoordinate(tokens);
  tokens.Expect(",");
  rect.y = ReadCoordinate(tokens);
  tokens.Expect(",");
  rect.width = ReadCoordinate(tokens);
  tokens.Expect(",");
  rect.height = ReadCoordinate(tokens);
  return rect;
}

std::uint32_t ReadStyle(TokenStream& tokens, std::uint32_t style) {
  do {
    const bool taken = tokens.Accept("NOT");
    const std::uint32_t bits = tokens.Operand();
    style = taken ? style & ~bits : style | bits;
  } while (tokens.Accept("|"));
  return style;
}

DialogItem ReadControlStatement(TokenStream& tokens) {
  if (tokens.Accept("CONTROL")) return ReadGeneralControl(tokens);
  for (const ControlKeyword& keyword : kKeywords) {
    if (tokens.Accept(keyword.word)) return ReadKeywordControl(tokens, keyword);
  }
  tokens.Fail("'" + tokens.Peek().text + "' is not a control");
}

}  // namespace rescomp
