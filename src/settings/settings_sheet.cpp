#include "settings/settings_sheet.h"

#include "frame/property_sheet.h"
#include "settings/advanced_page.h"
#include "settings/general_page.h"
#include "settings/users_page.h"

namespace quillgate {

void SettingsSheet::Open(SessionLog& session) {
  if (!surroundings_.logon.IsLoggedOn()) return;
  SheetState state(surroundings_.logon);
  GeneralPage general(surroundings_, session, state);
  UsersPage users(surroundings_, session, state);
  AdvancedPage advanced(surroundings_, session, state);
  PropertySheet sheet(surroundings_.catalogue, kMsgSettings, PropertySheet::Apply::kWithButton);
  const bool isForAdministrator = state.IsForAdministrator();
  if (isForAdministrator) sheet.Add(general);
  sheet.Add(users);
  if (isForAdministrator) sheet.Add(advanced);
  sheet.Run();
}

}  // namespace quillgate
