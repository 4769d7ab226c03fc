// Base of every dialog and property page: the messages of its dialog are dispatched to virtual
// functions. One map of the process finds the object of a dialog, from WM_INITDIALOG until the
// dialog or the object is destroyed. Created and used on the service main thread.
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

  // True once the program is to stop. Every prompt then counts as cancelled, whatever the system
  // returned for it.
  bool IsStopping() const { return ui_.stop.IsRaised(); }

  // Returns whether the page accepts the input; false keeps the sheet open on this page.
  virtual bool OnApply(HWND window);
  // The sheet is being closed without applying.
  virtual void OnCancel(HWND window);

  // Sends kRefreshTexts to every open dialog and page: the interface language has changed.
  static void RefreshAllTexts();

 protected:
  // The topic is shown for a control without a help text of its own; empty: none.
  DialogObject(const UiSurroundings& ui, std::wstring helpTopic);

  // Shows the dialog modally. Returns the result of EndDialog when the dialog has been closed, -1
  // when it could not be created, IDCANCEL when the program is to stop. The parent may be null.
  INT_PTR RunModal(UINT templateNumber, HWND parent);

  // An exception from one of the functions below is shown as an error; the message then counts as
  // not handled.

  // A control or a menu item sent WM_COMMAND. The code is the notification code, 0 for a clicked
  // button. True: handled.
  virtual bool OnCommand(int control, int code);
  // A common control sent WM_NOTIFY. True: handled, with the result 0 or that of SetResult.
  virtual bool OnNotify(const NMHDR& header);
  // Handles a message that none of the other functions handles; nonzero: handled.
  virtual INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  // The dialog was created; SetTexts follows. True: the system sets the initial focus.
  virtual bool OnInitDialog(HWND window);
  // Sets the texts of the controls in the interface language: when the dialog opens, and again for
  // every kRefreshTexts.
  virtual void SetTexts(HWND window);

  const MessageCatalogue& Catalogue() const { return ui_.catalogue; }

  // For SetTexts.
  void ShowTexts(std::span<const ControlText> texts) const;
  void ShowCaption(MessageId message) const;

  // Closes a modal dialog; RunModal returns the result.
  void End(INT_PTR result) const { ::EndDialog(window_, result); }
  // The same for the OK and Cancel buttons, with their identifier as the result; false for another
  // control.
  bool EndBy(int control) const;
  // Sets the result of the message that is being handled.
  void SetResult(LRESULT result) const { ::SetWindowLongPtrW(window_, DWLP_MSGRESULT, result); }

  // ShowMessageBox shows a message box owned by the dialog, with one of the MB_ICON styles. Ask
  // shows a question with Yes and No and returns whether the user chose Yes.
  void ShowMessageBox(MessageId message, UINT icon) const;
  bool Ask(MessageId message, MessageId caption = kMsgProductName) const;

  // Shows why the text of a field is refused; the field then has the focus with its text selected.
  void RefuseEntry(int field, const std::wstring& reason) const;
  void RefuseEntry(int field, MessageId reason) const {
    RefuseEntry(field, Catalogue().GetMessageText(reason));
  }

  // Reads the number in a field. Nullopt when it is out of range: the user has seen a message box,
  // and the field has the focus with its text selected.
  std::optional<std::uint32_t> ReadNumber(int field, const NumberRange& range) const;

  // Handles WM_INITDIALOG and enters the object into the map.
  INT_PTR Begin(HWND window) noexcept;
  bool InitOrShowFailure(HWND window);
  // Dispatches any other message; FALSE when the map has no object for the window.
  static INT_PTR Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  // Shows the exception that is being handled, unless this object already shows one.
  void ShowFailure() noexcept;

  // Calls OnCancel of every object that has a dialog, also of those in other sheets.
  static void CancelAll();

 private:
  // WM_NOTIFY and kRefreshTexts, which pages handle differently.
  virtual bool AnswerNotification(const NMHDR& header) { return OnNotify(header); }
  virtual void RefreshTexts() { SetTexts(window_); }

  static INT_PTR CALLBACK StaticProc(HWND window, UINT message, WPARAM wParam,
                                     LPARAM lParam) noexcept;
  INT_PTR Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void ShowHelp(const HELPINFO& request);
  void Detach();

  UiSurroundings ui_;
  std::wstring helpTopic_;
  HWND window_ = nullptr;
  bool showingFailure_ = false;
};

// Sent to a dialog or page after a change of the interface language: set the texts again.
inline constexpr UINT kRefreshTexts = WM_USER + 1;

}  // namespace quillgate
