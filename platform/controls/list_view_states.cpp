// Focus, selection and check boxes of a list view, and the notifications of their changes.
#include <algorithm>
#include <utility>

#include "platform/controls/list_view.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr DWORD kExtendedStyles = LVS_EX_GRIDLINES | LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT;
constexpr UINT kRowStates = LVIS_FOCUSED | LVIS_SELECTED;

}  // namespace

void ListView::OnSelected(const RowRanges& rows) {
  NoteUserChange();
  states_.selected = rows;
  if (Peer() != nullptr) Peer()->RowsChanged();
}

void ListView::OnFocusMoved(int row) {
  NoteUserChange();
  states_.focused = row;
}

void ListView::OnCheckClicked(int row) {
  if (!items_.HasRow(row)) return;
  const UINT before = items_.Row(row).stateImage;
  const UINT after = before == kChecked ? kUnchecked : kChecked;
  items_.Row(row).stateImage = after;
  if (Peer() != nullptr) Peer()->RowsChanged();
  NotifyLater(LVN_ITEMCHANGED, StateNotification(row, before, after));
}

LRESULT ListView::NextItem(int after, UINT flags) const {
  if ((flags & ~(LVNI_FOCUSED | LVNI_SELECTED)) != 0) {
    return Refuse("list view: directions", LVM_GETNEXTITEM, -1);
  }
  if ((flags & LVNI_FOCUSED) != 0) {
    // The flags have the values of the state bits.
    const int row = states_.focused;
    return row > after && (states_.Of(row) & flags) == flags ? row : -1;
  }
  if ((flags & LVNI_SELECTED) != 0) return states_.selected.Next(after);
  const int next = std::max(after, -1) + 1;
  return HasRow(next) ? next : -1;
}

LRESULT ListView::SetItemState(int row, const LVITEMW* given) {
  if (given == nullptr) return FALSE;
  const UINT mask = given->stateMask & (kRowStates | LVIS_STATEIMAGEMASK);
  if (IsOwnerData() && (mask & LVIS_STATEIMAGEMASK) != 0) {
    return Refuse("list view: state images of the program's rows", LVM_SETITEMSTATE, FALSE);
  }
  if (row == -1) return ChangeAllStates(given->state, mask);
  if (!HasRow(row)) return FALSE;
  ChangeState(row, given->state, mask);
  return TRUE;
}

void ListView::ChangeState(int row, UINT state, UINT mask) {
  const UINT taken = state & mask & (IsSingleSelection() ? kRowStates : LVIS_FOCUSED);
  const int losers[] = {(taken & LVIS_FOCUSED) != 0 ? states_.focused : -1,
                        (taken & LVIS_SELECTED) != 0 ? states_.selected.Next(-1) : -1};
  for (const int other : losers) {
    if (other != row) ChangeOwnState(other, 0, taken);
  }
  ChangeOwnState(row, state, mask);
}

void ListView::ChangeOwnState(int row, UINT state, UINT mask) {
  // The program may have removed the row, or the control, when it was notified of a change before.
  if (!Self().IsLive() || !HasRow(row)) return;
  const UINT before = State(row);
  states_.Set(row, state, mask);
  if ((mask & LVIS_STATEIMAGEMASK) != 0) {
    items_.Row(row).stateImage = state & LVIS_STATEIMAGEMASK;
  }
  const UINT after = State(row);
  if (before == after) return;
  if (Peer() != nullptr) Peer()->StatesChanged();
  NotifyState(row, before, after);
}

LRESULT ListView::ChangeAllStates(UINT state, UINT mask) {
  // Not all rows can have the focus or, with LVS_SINGLESEL, be selected.
  const UINT impossible = IsSingleSelection() ? kRowStates : LVIS_FOCUSED;
  if ((state & mask & impossible) != 0) return FALSE;
  const RowStates before = states_;
  if ((mask & LVIS_FOCUSED) != 0) states_.focused = -1;
  if ((mask & LVIS_SELECTED) != 0) states_.selected = {};
  if ((state & mask & LVIS_SELECTED) != 0 && RowCount() > 0) {
    states_.selected.Add({0, RowCount() - 1});
  }
  if (Peer() != nullptr) Peer()->StatesChanged();
  NotifyChangesSince(before);
  if ((mask & LVIS_STATEIMAGEMASK) != 0) ChangeStateImages(state & LVIS_STATEIMAGEMASK);
  return TRUE;
}

void ListView::ChangeStateImages(UINT image) {
  for (int row = 0; Self().IsLive() && row < RowCount(); ++row)
    ChangeOwnState(row, image, LVIS_STATEIMAGEMASK);
}

LRESULT ListView::SetExtendedStyle(DWORD mask, DWORD style) {
  const DWORD before = extendedStyle_;
  if (mask == 0) mask = ~DWORD{0};
  const DWORD known = IsOwnerData() ? kExtendedStyles & ~LVS_EX_CHECKBOXES : kExtendedStyles;
  if ((style & mask & ~known) != 0) LogLine("list view: an extended style is ignored");
  extendedStyle_ = ((before & ~mask) | (style & mask)) & known;
  if (Peer() != nullptr) Peer()->SetExtendedStyle(extendedStyle_);
  if (((before ^ extendedStyle_) & LVS_EX_CHECKBOXES) == 0) return before;
  ChangeStateImages(HasCheckBoxes() ? kUnchecked : 0);
  return before;
}

void ListView::NoteUserChange() {
  if (unsent_.has_value()) return;
  unsent_ = states_;
  Later<ListView>([](ListView& self) { self.NotifyUserChanges(); });
}

void ListView::NotifyUserChanges() {
  if (!unsent_.has_value()) return;
  const RowStates before = *std::exchange(unsent_, std::nullopt);
  NotifyChangesSince(before);
}

// The rows that lose or get the focus come first.
void ListView::NotifyChangesSince(const RowStates& before) {
  // The program may change the states while it is notified.
  const RowStates after = states_;
  RowRanges lost = before.selected.Without(after.selected);
  RowRanges gained = after.selected.Without(before.selected);
  if (before.focused != after.focused) {
    for (const int row : {before.focused, after.focused}) {
      if (row < 0) continue;
      lost.Remove({row, row});
      gained.Remove({row, row});
      NotifyState(row, before.Of(row), after.Of(row));
    }
  }
  NotifySelection(lost, false);
  NotifySelection(gained, true);
}

void ListView::NotifySelection(const RowRanges& rows, bool selected) {
  if (IsOwnerData()) return NotifyOwner(rows, selected);
  const UINT before = selected ? 0 : LVIS_SELECTED;
  for (const RowRange& range : rows.All()) {
    for (int row = range.first; row <= range.last; ++row)
      NotifyState(row, before, before ^ LVIS_SELECTED);
  }
}

void ListView::NotifyOwner(const RowRanges& rows, bool selected) {
  const UINT before = selected ? 0 : LVIS_SELECTED;
  const UINT after = before ^ LVIS_SELECTED;
  const int remaining = selected ? RowCount() - states_.selected.Count() : states_.selected.Count();
  if (rows.Count() > 1 && remaining == 0) return NotifyState(-1, before, after);
  for (const RowRange& range : rows.All()) {
    if (!Self().IsLive()) return;
    if (range.first == range.last) {
      NotifyState(range.first, before, after);
    } else {
      NMLVODSTATECHANGE notification{{}, range.first, range.last, after, before};
      Notify(LVN_ODSTATECHANGED, notification);
    }
  }
}

void ListView::NotifyState(int row, UINT before, UINT after) {
  if (!Self().IsLive() || (row != -1 && !HasRow(row))) return;
  NMLISTVIEW notification = StateNotification(row, before, after);
  Notify(LVN_ITEMCHANGED, notification);
}

NMLISTVIEW ListView::StateNotification(int row, UINT before, UINT after) const {
  // The state image is one number, so all its bits are notified when one has changed.
  UINT notified = before ^ after;
  if ((notified & LVIS_STATEIMAGEMASK) != 0) notified |= LVIS_STATEIMAGEMASK;
  NMLISTVIEW notification = NotificationOf(row);
  notification.uNewState = after & notified;
  notification.uOldState = before & notified;
  notification.uChanged = LVIF_STATE;
  return notification;
}

}  // namespace platform
