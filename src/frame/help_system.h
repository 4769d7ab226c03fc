// The program's help: whole topics of a compiled HTML help file, and short texts beside single
// controls. The help viewer is a control of the system's that is loaded on the first use; without
// it every request does nothing, and whatever it answers is ignored. The process has one
// HelpSystem, made by service/. Used on the service main thread.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "handles/handle.h"

namespace quillgate {

class HelpSystem {
 public:
  HelpSystem() = default;
  // Ends what the first use began.
  ~HelpSystem();
  HelpSystem(const HelpSystem&) = delete;
  HelpSystem& operator=(const HelpSystem&) = delete;

  // The help file's name, without a folder if the viewer is to look for it.
  void SetHelpFile(std::wstring name);

  // Shows a topic, such as "html/index.html". An empty window name stands for the viewer's default
  // window.
  void ShowTopic(const std::wstring& topic, const std::wstring& windowName = {});

  // Shows the text of that number (see HelpPopupNumber) at the mouse cursor.
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
