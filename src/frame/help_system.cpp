#include "frame/help_system.h"

#include <htmlhelp.h>

#include <array>

namespace quillgate {
namespace {

// Registry key with the path of the help viewer library.
constexpr wchar_t kViewerKey[] =
    L"Software\\Classes\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr wchar_t kViewerFile[] = L"hhctrl.ocx";
constexpr WORD kHtmlHelpOrdinal = 15;

constexpr COLORREF kDefaultColour = static_cast<COLORREF>(-1);
constexpr RECT kDefaultMargins{-1, -1, -1, -1};

// Empty when no viewer is registered.
std::wstring RegisteredViewer() {
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kViewerKey, 0, KEY_READ, &opened) != ERROR_SUCCESS) {
    return {};
  }
  const RegistryKey key(opened);
  // One character more than is read, so that the text is always terminated.
  std::array<wchar_t, MAX_PATH + 1> path{};
  DWORD bytes = MAX_PATH * sizeof(wchar_t);
  DWORD type = REG_NONE;
  const LSTATUS status = ::RegQueryValueExW(key.Get(), nullptr, nullptr, &type,
                                            reinterpret_cast<LPBYTE>(path.data()), &bytes);
  return status == ERROR_SUCCESS && type == REG_SZ ? path.data() : std::wstring();
}

ModuleHandle LoadViewer() {
  const std::wstring registered = RegisteredViewer();
  ModuleHandle library;
  if (!registered.empty()) library.Reset(::LoadLibraryW(registered.c_str()));
  if (!library.IsValid()) library.Reset(::LoadLibraryW(kViewerFile));
  return library;
}

}  // namespace

HelpSystem::~HelpSystem() {
  if (htmlHelp_ != nullptr) htmlHelp_(nullptr, nullptr, HH_UNINITIALIZE, cookie_);
}

void HelpSystem::SetHelpFile(std::wstring name) {
  Prepare();
  file_ = std::move(name);
}

void HelpSystem::ShowTopic(const std::wstring& topic, const std::wstring& windowName) {
  std::wstring location = file_ + L"::/" + topic;
  if (!windowName.empty()) location += L">" + windowName;
  Call(location, HH_DISPLAY_TOPIC, 0);
}

void HelpSystem::ShowPopup(DWORD contextNumber) {
  HH_POPUP popup{};
  popup.cbStruct = sizeof(popup);
  popup.idString = contextNumber;
  ::GetCursorPos(&popup.pt);
  popup.clrForeground = kDefaultColour;
  popup.clrBackground = kDefaultColour;
  popup.rcMargins = kDefaultMargins;
  Call(file_ + L"::/popups.txt", HH_DISPLAY_TEXT_POPUP, reinterpret_cast<DWORD_PTR>(&popup));
}

void HelpSystem::Prepare() {
  if (prepared_) return;
  prepared_ = true;
  library_ = LoadViewer();
  if (!library_.IsValid()) return;
  htmlHelp_ = reinterpret_cast<ViewerFunction>(::GetProcAddress(
      library_.Get(), reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(kHtmlHelpOrdinal))));
  if (htmlHelp_ == nullptr) return;
  htmlHelp_(nullptr, nullptr, HH_INITIALIZE, reinterpret_cast<DWORD_PTR>(&cookie_));
}

void HelpSystem::Call(const std::wstring& location, UINT command, DWORD_PTR data) {
  Prepare();
  if (htmlHelp_ != nullptr) htmlHelp_(::GetDesktopWindow(), location.c_str(), command, data);
}

}  // namespace quillgate
