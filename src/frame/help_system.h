// The help of the program: topics of a compiled HTML help file, and short popup texts for single
// controls. The help viewer is a control of the system that is loaded on the first use. If it
// cannot be loaded, every request is ignored; the results of the viewer are ignored too. The
// process has one HelpSystem, created by service/. Used on the service main thread.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "handles/handle.h"

namespace quillgate {

class HelpSystem {
 public:
  HelpSystem() = default;
  // Uninitialises the viewer if it was loaded.
  ~HelpSystem();
  HelpSystem(const HelpSystem&) = delete;
  HelpSystem& operator=(const HelpSystem&) = delete;

  // Sets the name of the help file. Without a folder, the viewer searches for the file.
  void SetHelpFile(std::wstring name);

  // Shows a topic, such as "html/index.html". An empty window name is the default window of the
  // viewer.
  void ShowTopic(const std::wstring& topic, const std::wstring& windowName = {});

  // Shows the popup text of this number (see HelpPopupNumber) at the mouse cursor.
  void ShowPopup(DWORD contextNumber);

 private:
  using ViewerFunction = HWND(WINAPI*)(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data);

  // Loads and initialises the viewer on the first call.
  void Prepare();
  void Call(const std::wstring& location, UINT command, DWORD_PTR data);

  std::wstring file_;
  bool prepared_ = false;
  ModuleHandle library_;
  ViewerFunction htmlHelp_ = nullptr;
  DWORD_PTR cookie_ = 0;
};

}  // namespace quillgate
