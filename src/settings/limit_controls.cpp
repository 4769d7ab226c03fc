#include "settings/limit_controls.h"

#include "frame/check_box.h"
#include "frame/combo_box.h"
#include "frame/number_field.h"

namespace quillgate {

void LimitControls::LimitLength() const {
  NumberField(page_, fields_.amount).LimitLength(NumberField::kMaximumLength);
}

void LimitControls::ListPeriods(const MessageCatalogue& catalogue) const {
  const ComboBox periods(page_, fields_.period);
  const int selected = periods.Selection();
  periods.Clear();
  for (const MessageId period : {kMsgDay, kMsgWeekPeriod, kMsgMonthPeriod})
    periods.Add(catalogue.GetMessageText(period));
  periods.Select(selected);
}

void LimitControls::Show(const User::Limit& limit) const {
  const LimitEntry entry = EntryOf(limit);
  CheckBox(page_, fields_.enabled).Check(entry.enabled);
  NumberField(page_, fields_.amount).SetText(entry.amount);
  ComboBox(page_, fields_.period).Select(entry.period);
}

LimitEntry LimitControls::Entry() const {
  return {CheckBox(page_, fields_.enabled).IsChecked(), NumberField(page_, fields_.amount).Text(),
          ComboBox(page_, fields_.period).Selection()};
}

void LimitControls::Enable(bool mayChange) const {
  const CheckBox enabled(page_, fields_.enabled);
  enabled.Enable(mayChange);
  for (const int control : {fields_.amount, fields_.period})
    Control(page_, control).Enable(mayChange && enabled.IsChecked());
}

bool LimitControls::IsChange(const LimitFields& fields, int control, int code) {
  if (control == fields.amount) return code == EN_CHANGE;
  if (control == fields.period) return code == CBN_SELCHANGE;
  return control == fields.enabled && code == BN_CLICKED;
}

}  // namespace quillgate
