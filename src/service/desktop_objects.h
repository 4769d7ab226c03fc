// What the process has where there is a desktop: the tray, the dialogs of a logon, help and GDI+.
// Made on the service main thread before its message loop, destroyed there after it. Meanwhile the
// process's indicator speaks through the tray, and logons ask in dialogs.
#pragma once

#include "frame/gdi_plus.h"
#include "frame/help_system.h"
#include "frame/ui_surroundings.h"
#include "ui/connection_sheet.h"
#include "ui/dialog_prompts.h"
#include "ui/tray_controller.h"

namespace quillgate {

class ProcessObjects;

// Whether anything can be shown to anybody.
bool HasDesktop();

class DesktopObjects {
 public:
  // The process's objects outlive this one. Throws std::runtime_error when there can be no tray.
  explicit DesktopObjects(ProcessObjects& objects);
  ~DesktopObjects();
  DesktopObjects(const DesktopObjects&) = delete;
  DesktopObjects& operator=(const DesktopObjects&) = delete;

 private:
  TrayOpeners MakeOpeners();

  ProcessObjects& objects_;
  HelpSystem help_;
  GdiPlus gdiPlus_;
  UiSurroundings ui_;
  DialogPrompts prompts_;
  ConnectionSheet connection_;
  TrayController tray_;
};

}  // namespace quillgate
