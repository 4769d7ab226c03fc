// "#32770": a dialog, or a page inside one. It asks the dialog procedure first and does what the
// documentation of DefDlgProcW says with what is left. Owned by its window, on the window's thread.
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

// How a modal dialog ended, for its loop, which outlives the window.
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

  // What a new dialog has before its first message.
  void Equip(OwnedFont font, const DialogUnits& units, DLGPROC procedure);
  // The dialog's units of measure.
  const DialogUnits& Units() const { return units_; }
  // The button that Enter presses when no button has the keyboard; 0: none.
  void SetDefaultId(int id) { defaultId_ = id; }
  // Shared with the loop of a modal dialog.
  const std::shared_ptr<DialogOutcome>& Outcome() const { return outcome_; }
  void SetModal();
  // Called with +1 or -1 when a key asks for the next or the previous page of a sheet.
  void SetPageTurner(std::function<void(int)> turn) { turnPage_ = std::move(turn); }

  // Called with the context of every WM_ERASEBKGND that the procedure leaves to the dialog.
  void SetBackground(std::function<void(HDC)> paint) { paintBackground_ = std::move(paint); }

  void GiveFocus(HWND control);

  // A message for the dialog or a window in it; true when it was a key for the dialog itself.
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

// The control of a live dialog of the calling thread; null, with the last error, for anything else.
// The window keeps it alive.
struct FoundDialog {
  std::shared_ptr<Window> window;
  DialogControl* control = nullptr;
};
FoundDialog FindDialog(HWND handle);

}  // namespace platform
