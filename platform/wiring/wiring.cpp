// Functions that a family of the layer calls and declares, but whose implementation needs families
// above it.
#include "platform/controls/control_classes.h"
#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/gdiplus_objects.h"
#include "platform/kernel/log.h"
#include "platform/kernel/modules.h"
#include "platform/net/network_cards.h"
#include "platform/shell/help_popup.h"
#include "platform/shell/help_viewer.h"
#include "platform/shell/help_window.h"
#include "platform/shell/notification_area.h"
#include "platform/user/desktop.h"
#include "platform/user/modal_loop.h"
#include "platform/user/session_notification.h"
#include "platform/user/window_list.h"

namespace platform {

std::map<std::wstring, ExportTable> LayerModules() {
  return {{L"gdiplus.dll", GdiplusExports()},
          {L"hhctrl.ocx", HelpViewerExports()},
          {L"wtsapi32.dll", SessionNotificationExports()}};
}

std::vector<SystemClass> SystemClasses() {
  const std::span<const SystemClass> controls = ControlClasses();
  std::vector<SystemClass> classes(controls.begin(), controls.end());
  classes.push_back({kHelpWindowClass, MakeHelpWindow});
  classes.push_back({kHelpPopupClass, MakeHelpPopup});
  return classes;
}

std::vector<std::pair<std::wstring_view, KeyProvider>> DefaultKeyProviders() {
  return {{kNetworkCardsPath, NetworkCardKeys}};
}

bool WithGraphics(const std::function<void(GraphicsBackend&)>& work) {
  if (RunOnWindowThread([&] { work(Desktop().Graphics()); })) return true;
  LogLine("drawing: there is no desktop");
  ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  return false;
}

bool WithRunningGraphics(const std::function<void(GraphicsBackend&)>& work) {
  return CallWindowThread([&] { work(Desktop().Graphics()); });
}

void OnWindowEnded(HWND window) {
  ForgetNotificationIconsOf(window);
  ForgetSessionNotifications(window);
}

}  // namespace platform
