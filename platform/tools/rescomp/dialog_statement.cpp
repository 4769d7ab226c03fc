#include "platform/tools/rescomp/dialog_statement.h"

#include <limits>

#include "platform/tools/rescomp/control_statement.h"

namespace rescomp {

namespace {

constexpr std::uint32_t kStyleCaption = 0x00C00000;
constexpr std::uint32_t kStyleSetFont = 0x40;
// WS_POPUP | WS_BORDER | WS_SYSMENU, unless STYLE says otherwise.
constexpr std::uint32_t kDefaultStyle = 0x80880000;

std::uint8_t ReadByte(TokenStream& tokens) {
  const std::uint32_t value = tokens.Number();
  if (value > std::numeric_limits<std::uint8_t>::max()) {
    tokens.Fail("the number must fit in 8 bits");
  }
  return static_cast<std::uint8_t>(value);
}

// points, "face" [, weight [, italic [, charset]]]
DialogFont ReadFont(TokenStream& tokens) {
  DialogFont font;
  font.points = tokens.Number16();
  tokens.Expect(",");
  font.face = tokens.WideString();
  if (tokens.Accept(",")) font.weight = tokens.Number16();
  if (tokens.Accept(",")) font.italic = ReadByte(tokens);
  if (tokens.Accept(",")) font.charset = ReadByte(tokens);
  return font;
}

// What stands before BEGIN, in any order.
void ReadOptions(TokenStream& tokens, DialogTemplate& dialog) {
  bool captioned = false;
  while (!tokens.AcceptBegin()) {
    if (tokens.Accept("CAPTION")) {
      dialog.caption = tokens.WideString();
      captioned = true;
    } else if (tokens.Accept("STYLE")) {
      dialog.style = ReadStyle(tokens, 0);
    } else if (tokens.Accept("EXSTYLE")) {
      dialog.exStyle = ReadStyle(tokens, 0);
    } else if (tokens.Accept("FONT")) {
      dialog.font = ReadFont(tokens);
    } else {
      tokens.Fail("'" + tokens.Peek().text + "' is not known in a dialog");
    }
  }
  if (captioned) dialog.style |= kStyleCaption;
  dialog.style = dialog.font ? dialog.style | kStyleSetFont : dialog.style & ~kStyleSetFont;
}

}  // namespace

DialogTemplate ReadDialogStatement(TokenStream& tokens) {
  DialogTemplate dialog;
  dialog.style = kDefaultStyle;
  dialog.rect = ReadRect(tokens);
  if (tokens.Accept(",")) dialog.helpId = tokens.Number();
  ReadOptions(tokens, dialog);
  while (!tokens.AcceptEnd())
    dialog.items.push_back(ReadControlStatement(tokens));
  return dialog;
}

}  // namespace rescomp
