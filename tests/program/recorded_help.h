// A help viewer that is installed while this lives and writes down what it is asked for: "begin",
// "topic PLACE", "popup NUMBER in PLACE", "end". One at a time.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <htmlhelp.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/kernel/modules.h"

namespace quillgate {

class RecordedHelp {
 public:
  explicit RecordedHelp(const wchar_t* library = L"hhctrl.ocx") : library_(library) {
    TakeLog();
    platform::RegisterBuiltInModule(library, {{"#15", reinterpret_cast<FARPROC>(Record)}});
  }
  ~RecordedHelp() { platform::UnregisterBuiltInModule(library_); }
  RecordedHelp(const RecordedHelp&) = delete;
  RecordedHelp& operator=(const RecordedHelp&) = delete;

  static std::vector<std::wstring> TakeLog() { return std::exchange(log, {}); }

 private:
  static constexpr DWORD_PTR kCookie = 77;

  static HWND WINAPI Record(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data) {
    if (command == HH_INITIALIZE) {
      *reinterpret_cast<DWORD_PTR*>(data) = kCookie;
      log.push_back(L"begin");
    } else if (command == HH_DISPLAY_TOPIC) {
      log.push_back(std::wstring(L"topic ") + file);
      EXPECT_EQ(caller, ::GetDesktopWindow());
    } else if (command == HH_DISPLAY_TEXT_POPUP) {
      const auto& popup = *reinterpret_cast<const HH_POPUP*>(data);
      log.push_back(L"popup " + std::to_wstring(popup.idString) + L" in " + file);
      // The look is the viewer's own.
      EXPECT_EQ(popup.cbStruct, static_cast<int>(sizeof(popup)));
      EXPECT_EQ(popup.pszText, nullptr);
      EXPECT_EQ(popup.clrForeground, static_cast<COLORREF>(-1));
      EXPECT_EQ(popup.clrBackground, static_cast<COLORREF>(-1));
      EXPECT_EQ(popup.rcMargins.left, -1);
      EXPECT_EQ(popup.rcMargins.bottom, -1);
    } else {
      log.push_back(L"end");
      EXPECT_EQ(command, static_cast<UINT>(HH_UNINITIALIZE));
      EXPECT_EQ(data, kCookie);
    }
    return nullptr;
  }

  static inline std::vector<std::wstring> log;
  const wchar_t* const library_;
};

}  // namespace quillgate
