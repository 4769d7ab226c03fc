#include "platform/tools/rescomp/dialog_template.h"

namespace rescomp {

namespace {

constexpr std::uint16_t kTemplateVersion = 1;
constexpr std::uint16_t kExtendedTemplate = 0xFFFF;
constexpr std::uint16_t kNumberFollows = 0xFFFF;

void PutTextOrNumber(ByteWriter& out, const TextOrNumber& value) {
  if (const auto* number = std::get_if<std::uint16_t>(&value)) {
    out.Put16(kNumberFollows);
    out.Put16(*number);
  } else {
    out.PutText(std::get<std::u16string>(value));
  }
}

void PutRect(ByteWriter& out, const TemplateRect& rect) {
  for (const std::int16_t each : {rect.x, rect.y, rect.width, rect.height})
    out.Put16(static_cast<std::uint16_t>(each));
}

void PutFont(ByteWriter& out, const DialogFont& font) {
  out.Put16(font.points);
  out.Put16(font.weight);
  out.Put16(static_cast<std::uint16_t>(font.italic | (font.charset << 8)));
  out.PutText(font.face);
}

void PutItem(ByteWriter& out, const DialogItem& item) {
  out.AlignTo4();
  out.Put32(item.helpId);
  out.Put32(item.exStyle);
  out.Put32(item.style);
  PutRect(out, item.rect);
  out.Put32(item.id);
  PutTextOrNumber(out, item.windowClass);
  PutTextOrNumber(out, item.text);
  out.Put16(0);  // length of the creation data
}

}  // namespace

Bytes EncodeDialogTemplate(const DialogTemplate& dialog) {
  ByteWriter out;
  out.Put16(kTemplateVersion);
  out.Put16(kExtendedTemplate);
  out.Put32(dialog.helpId);
  out.Put32(dialog.exStyle);
  out.Put32(dialog.style);
  out.Put16(static_cast<std::uint16_t>(dialog.items.size()));
  PutRect(out, dialog.rect);
  out.PutText({});  // no menu
  out.PutText({});  // the class of dialogs
  out.PutText(dialog.caption);
  if (dialog.font) PutFont(out, *dialog.font);
  for (const DialogItem& item : dialog.items)
    PutItem(out, item);
  return out.Take();
}

}  // namespace rescomp
