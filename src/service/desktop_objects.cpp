#include "service/desktop_objects.h"

#include <windows.h>

#include <commctrl.h>

#include "frame/help_topics.h"
#include "service/process_objects.h"
#include "service/service_installation.h"
#include "ui/about_dialog.h"

namespace quillgate {

bool HasDesktop() {
  return ::GetSystemMetrics(SM_CXSCREEN) != 0;
}

void InitialiseControls() {
  const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES |
                                                            ICC_TAB_CLASSES | ICC_UPDOWN_CLASS |
                                                            ICC_DATE_CLASSES};
  ::InitCommonControlsEx(&controls);
}

DesktopObjects::DesktopObjects(ProcessObjects& objects)
    : objects_(objects),
      ui_{objects.Catalogue(), help_, objects.Stop()},
      prompts_(ui_, objects.GetSettings(), gdiPlus_, objects.Indicator()),
      connection_(
          {ui_, objects.GetSettings(), objects.GetDatabase(), objects.Calendar(), objects.Logon()}),
      settings_({ui_, objects.Catalogue(), objects.GetDatabase(), objects.GetSettings(),
                 objects.Calendar(), objects.Logon(), objects.Identity(), objects}),
      statistics_({ui_, objects.GetDatabase(), objects.Calendar()}),
      tray_({objects.Catalogue(), objects.GetSettings(), objects.Logon(), objects.Logons(), help_,
             objects.Stop(), MakeOpeners()}) {
  help_.SetHelpFile(kHelpFileName);
  gdiPlus_.Start();
  objects_.Indicator().RelayTo(tray_);
  objects_.Logon().SetPrompts(&prompts_);
}

DesktopObjects::~DesktopObjects() {
  gdiPlus_.Shutdown();
  objects_.Logon().SetPrompts(nullptr);
  objects_.Indicator().RelayWithoutTray();
}

TrayOpeners DesktopObjects::MakeOpeners() {
  TrayOpeners openers;
  openers.connection = [this] { connection_.Open(objects_.Session()); };
  openers.settings = [this] { settings_.Open(objects_.Session()); };
  openers.statistics = [this] { statistics_.Open(objects_.Logon().Names()); };
  openers.about = [this] { AboutDialog(ui_).Run(); };
  openers.stopService = StopOwnService;
  return openers;
}

}  // namespace quillgate
