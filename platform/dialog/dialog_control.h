// "#32770": a dialog, or a page inside one. Calls the dialog procedure first; messages that the
// procedure leaves are handled as documented for DefDlgProcW. Owned by its window, on the window's
// thread.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>

#include "platform/dialog/dialog_peers.h"
#include "platform/dialog/dialog_template.h"
#include "platform/dialog/dialog_units.h"
#include "platform/gdi/owned_object.h"
#include "platform/user/control.h"
#include "platform/user/window.h"

namespace platform {

// The result of a modal dialog. Shared with the modal loop, which outlives the window.
struct DialogOutcome {
  bool ended = false;
  INT_PTR result = 0;
};

class DialogControl final : public Control, private DialogEvents {
 public:
  explicit DialogControl(Window& window) : window_(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  LONG_PTR* Extra(int index) override;

  // Sets up a new dialog. Called before its first dialog message.
  void Equip(OwnedFont font, const DialogUnits& units, DLGPROC procedure);
  // The dialog units of the dialog's font.
  const DialogUnits& Units() const { return units_; }
  // The button that Enter presses when no button has the focus; 0: none.
  void SetDefaultId(int id) { defaultId_ = id; }
  // Shared with the modal loop of the dialog.
  const std::shared_ptr<DialogOutcome>& Outcome() const { return outcome_; }
  void SetModal();
  // Sets a function that is called with +1 or -1 when a key requests the next or the previous page
  // of a sheet.
  void SetPageTurner(std::function<void(int)> turn) { turnPage_ = std::move(turn); }

  // Sets a function that paints the background at every WM_ERASEBKGND that the dialog procedure
  // does not handle.
  void SetBackground(std::function<void(HDC)> paint) { paintBackground_ = std::move(paint); }

  void GiveFocus(HWND control);

  // Handles a message for the dialog or a window in it. True when the message was a key that the
  // dialog used.
  bool TakeKeyMessage(MSG& message);

 private:
  bool OnDialogKey(DialogKey key, HWND focus) override;
  void OnFocusMoved(HWND focus) override;

  INT_PTR AskProcedure(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> AnswerByDefault(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT AnswerDefaultId() const;
  void ChangeDefaultId(int id);
  void MoveFocusByMessage(WPARAM wParam, LPARAM lParam);
  void RequestCancel();

  bool TakeKey(DialogKey key, HWND focus, LRESULT code);
  bool TurnPage(int step);
  bool MoveByTab(HWND focus, bool forward);
  bool MoveInGroup(HWND focus, bool forward);
  void FocusByKey(Window& control, bool forward);

  Window& window_;
  OwnedFont font_;  // of the dialog and of its controls
  DialogUnits units_;
  LONG_PTR messageResult_ = 0;
  LONG_PTR procedure_ = 0;
  LONG_PTR userData_ = 0;
  int defaultId_ = 0;
  std::shared_ptr<DialogOutcome> outcome_ = std::make_shared<DialogOutcome>();
  std::function<void(int)> turnPage_;
  std::function<void(HDC)> paintBackground_;
};

std::unique_ptr<Control> MakeDialogControl(Window& window);

// The window and the control of a live dialog of the calling thread; both null, with the last error
// set, for any other handle. The window keeps the control alive.
struct FoundDialog {
  std::shared_ptr<Window> window;
  DialogControl* control = nullptr;
};
FoundDialog FindDialog(HWND handle);

}  // namespace platform
