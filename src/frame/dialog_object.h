// Base of every dialog and property page: an object whose dialog's messages reach its virtual
// operations. One map of the process tells which object a dialog belongs to, from WM_INITDIALOG
// until the dialog or the object is gone. Made and used on the service main thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "frame/number_range.h"
#include "frame/ui_surroundings.h"

namespace quillgate {

// The message whose text a control shows.
struct ControlText {
  int control;
  MessageId message;
};

class DialogObject {
 public:
  virtual ~DialogObject();
  DialogObject(const DialogObject&) = delete;
  DialogObject& operator=(const DialogObject&) = delete;

  // Null while there is no dialog.
  HWND Window() const { return window_; }

  // From then on whatever was asked counts as cancelled, whatever the system answers for it.
  bool IsStopping() const { return ui_.stop.IsRaised(); }

  // Whether the page accepts what was entered; false keeps the sheet open on it.
  virtual bool OnApply(HWND window);
  // The sheet is being closed without applying.
  virtual void OnCancel(HWND window);

  // Has every open dialog and page fetch its texts again: the interface language has changed.
  static void RefreshAllTexts();

 protected:
  // The topic is the one shown for a control without a help text of its own; empty: none.
  DialogObject(const UiSurroundings& ui, std::wstring helpTopic);

  // Opens the dialog and returns what EndDialog was given, when it has been closed; -1 when there
  // is no dialog, IDCANCEL when the program is to stop. The parent may be null.
  INT_PTR RunModal(UINT templateNumber, HWND parent);

  // What is thrown by one of the operations below is shown as an error, and the message then counts
  // as not handled.

  // A control or its menu item was used (WM_COMMAND); the code is the control's, 0 for a button
  // that was clicked. True: handled.
  virtual bool OnCommand(int control, int code);
  // A common control notifies (WM_NOTIFY). True: handled, with the answer 0 or that of SetResult.
  virtual bool OnNotify(const NMHDR& header);
  // Answers a message that none of the other operations handles; nonzero: it was handled.
  virtual INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  // The dialog was made, its texts come next. True: the system chooses the control to begin with.
  virtual bool OnInitDialog(HWND window);
  // Puts the texts of the interface language into the controls: when the dialog opens, and again
  // whenever kRefreshTexts is sent.
  virtual void SetTexts(HWND window);

  const MessageCatalogue& Catalogue() const { return ui_.catalogue; }

  // For SetTexts.
  void ShowTexts(std::span<const ControlText> texts) const;
  void ShowCaption(MessageId message) const;

  // Closes a modal dialog; RunModal answers the result.
  void End(INT_PTR result) const { ::EndDialog(window_, result); }
  // The same for the OK and Cancel buttons, with themselves as the result; false for another
  // control.
  bool EndBy(int control) const;
  // What the message that is being handled answers.
  void SetResult(LRESULT result) const { ::SetWindowLongPtrW(window_, DWLP_MSGRESULT, result); }

  // A message box over the dialog with one of the MB_ICON styles, and a question with Yes and No;
  // whether the answer was Yes.
  void ShowMessageBox(MessageId message, UINT icon) const;
  bool Ask(MessageId message) const;

  // The number in a field. Nothing when it is out of range: the user was told so, and the field has
  // the focus with its text selected.
  std::optional<std::uint32_t> ReadNumber(int field, const NumberRange& range) const;

  // The dialog's first message: the object answers for the window from now on.
  INT_PTR Begin(HWND window) noexcept;
  bool InitOrShowFailure(HWND window);
  // Any other message; not handled when the window has no object.
  static INT_PTR Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  // Of the exception that is being handled, unless another one is being shown.
  void ShowFailure() noexcept;

  // Calls OnCancel of every object that has a dialog, of other sheets' too.
  static void CancelAll();

 private:
  // The two messages that pages answer in a way of their own.
  virtual bool AnswerNotification(const NMHDR& header) { return OnNotify(header); }
  virtual void RefreshTexts() { SetTexts(window_); }

  static INT_PTR CALLBACK StaticProc(HWND window, UINT message, WPARAM wParam,
                                     LPARAM lParam) noexcept;
  INT_PTR Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void ShowHelp(const HELPINFO& request);
  void Detach();

  UiSurroundings ui_;
  std::wstring helpTopic_;
  HWND window_ = nullptr;
  bool showingFailure_ = false;
};

// Sent to a dialog or page: fetch the texts again, for the interface language has changed.
inline constexpr UINT kRefreshTexts = WM_USER + 1;

}  // namespace quillgate
