#include "platform/shell/help_viewer.h"

#include <windows.h>
#include <htmlhelp.h>

#include <atomic>
#include <string>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/log.h"
#include "platform/shell/help_book.h"
#include "platform/shell/help_popup.h"
#include "platform/shell/help_popup_source.h"
#include "platform/shell/help_window.h"
#include "platform/user/modal_loop.h"

namespace platform {
namespace {

constexpr DWORD kCookie = 1;
constexpr COLORREF kDefaultColour = static_cast<COLORREF>(-1);

// There is at most one of each. A window that has been closed leaves a stale handle.
std::atomic<HWND> viewer = nullptr;
std::atomic<HWND> popup = nullptr;

HWND Refuse(const std::string& reason) {
  LogLine("HtmlHelpW: " + reason);
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return nullptr;
}

// Runs the work where windows can be shown; false, with a line in the log, where there is no such
// place.
bool OnDesktop(const std::function<void()>& work) {
  if (RunOnWindowThread(work)) return true;
  LogLine("HtmlHelpW: there is no desktop to show help on");
  ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  return false;
}

// The book that a location names, in the language of the calling thread.
std::shared_ptr<const HelpBook> BookOf(const HelpLocation& location) {
  return OpenHelpBook(FindHelpFile(location.file, ThreadLanguage()));
}

std::optional<HelpLocation> LocationIn(LPCWSTR text) {
  return text != nullptr ? ParseHelpLocation(text) : std::nullopt;
}

// The window of the viewer, and the control in it; both null when it cannot be created.
std::shared_ptr<Window> ViewerWindow() {
  if (auto open = Resolve<Window>(HandleKind::kWindow, viewer)) return open;
  const RECT bounds = NextHelpWindowBounds();
  viewer = ::CreateWindowExW(0, kHelpWindowClass, L"", WS_CAPTION | WS_SYSMENU, bounds.left,
                             bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top,
                             nullptr, nullptr, nullptr, nullptr);
  return Resolve<Window>(HandleKind::kWindow, viewer);
}

HWND DisplayTopic(LPCWSTR file, DWORD_PTR topic) {
  const auto location = LocationIn(file);
  if (!location.has_value() || topic != 0) return Refuse("no file, or a topic apart from its name");
  const auto book = BookOf(*location);
  if (book == nullptr) return nullptr;
  HWND shown = nullptr;
  OnDesktop([&, language = ThreadLanguage()] {
    const auto window = ViewerWindow();
    if (window == nullptr) return;
    auto& control = static_cast<HelpWindow&>(*window->SystemControl());
    // Shown first: the place of an anchor depends on the size of the window.
    ::ShowWindow(window->Handle(), SW_SHOW);
    ::SetForegroundWindow(window->Handle());
    if (control.ShowTopic(book, location->target, language)) shown = window->Handle();
  });
  return shown;
}

std::optional<COLORREF> ColourOf(COLORREF colour) {
  return colour != kDefaultColour ? std::optional(colour) : std::nullopt;
}

void Close(const std::atomic<HWND>& window) {
  if (Resolve<Window>(HandleKind::kWindow, window) != nullptr) ::DestroyWindow(window);
}

HWND ShowPopup(const HH_POPUP& request, const std::wstring& text) {
  Close(popup);
  popup = ::CreateWindowExW(0, kHelpPopupClass, text.c_str(), WS_POPUP, request.pt.x, request.pt.y,
                            0, 0, nullptr, nullptr, nullptr, nullptr);
  const auto window = Resolve<Window>(HandleKind::kWindow, popup);
  if (window == nullptr || window->Peer() == nullptr) return nullptr;
  static_cast<HelpPopupPeer&>(*window->Peer())
      .SetLook({request.pt, ColourOf(request.clrForeground), ColourOf(request.clrBackground),
                request.rcMargins});
  ::ShowWindow(window->Handle(), SW_SHOWNOACTIVATE);
  return window->Handle();
}

bool IsSupported(const HH_POPUP* request) {
  return request != nullptr && request->cbStruct == sizeof(HH_POPUP) && request->idString != 0 &&
         request->pszFont == nullptr;
}

HWND DisplayPopup(LPCWSTR file, const HH_POPUP* request) {
  const auto location = LocationIn(file);
  if (!location.has_value() || !IsSupported(request)) {
    return Refuse("a popup without a file, or with a text or font of the caller");
  }
  const auto book = BookOf(*location);
  if (book == nullptr) return nullptr;
  const std::string* source = book->file.Find(location->target.path);
  const auto text =
      source != nullptr ? FindPopupText(HelpTextOf(*source), request->idString) : std::nullopt;
  if (!text.has_value()) {
    LogLine("HtmlHelpW: no popup text " + std::to_string(request->idString) + " in " + Utf8(file));
    return nullptr;
  }
  HWND shown = nullptr;
  OnDesktop([&] { shown = ShowPopup(*request, *text); });
  return shown;
}

void CloseAll() {
  CallWindowThread([] {
    Close(popup);
    Close(viewer);
  });
}

HWND WINAPI HtmlHelpW(HWND /*caller*/, LPCWSTR file, UINT command, DWORD_PTR data) try {
  switch (command) {
    case HH_DISPLAY_TOPIC:
      return DisplayTopic(file, data);
    case HH_DISPLAY_TEXT_POPUP:
      return DisplayPopup(file, reinterpret_cast<const HH_POPUP*>(data));
    case HH_INITIALIZE:
      if (data != 0) *reinterpret_cast<DWORD*>(data) = kCookie;
      return nullptr;
    case HH_UNINITIALIZE:
      CloseAll();
      return nullptr;
    default:
      return Refuse("unsupported command " + std::to_string(command));
  }
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

}  // namespace

ExportTable HelpViewerExports() {
  const auto entry = reinterpret_cast<FARPROC>(HtmlHelpW);
  return {{"HtmlHelpW", entry}, {"#15", entry}};
}

}  // namespace platform
