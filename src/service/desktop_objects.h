// The objects that the process has only where there is a desktop: the tray, the dialogs of a logon,
// help and GDI+. Created on the service main thread, before its message loop or in it, destroyed
// there after it. While they exist, the indicator of the process forwards to the tray, and the
// prompts of a logon are dialogs.
#pragma once

#include "frame/gdi_plus.h"
#include "frame/help_system.h"
#include "frame/ui_surroundings.h"
#include "settings/settings_sheet.h"
#include "stats/statistics_sheet.h"
#include "ui/connection_sheet.h"
#include "ui/dialog_prompts.h"
#include "ui/tray_controller.h"

namespace quillgate {

class ProcessObjects;

// Whether the process can show windows.
bool HasDesktop();
// Registers the common controls that dialogs and pages use.
void InitialiseControls();

class DesktopObjects {
 public:
  // `objects` must outlive this object. Throws std::runtime_error when the tray cannot be created.
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
  SettingsSheet settings_;
  StatisticsSheet statistics_;
  TrayController tray_;
};

}  // namespace quillgate
