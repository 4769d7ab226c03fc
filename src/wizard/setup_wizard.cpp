#include "wizard/setup_wizard.h"

#include "frame/property_sheet.h"
#include "resources/resource.h"
#include "wizard/administrator_page.h"
#include "wizard/completion_page.h"
#include "wizard/override_page.h"
#include "wizard/restrictions_page.h"
#include "wizard/system_page.h"
#include "wizard/type_page.h"
#include "wizard/user_setup_page.h"
#include "wizard/welcome_page.h"

namespace quillgate {

bool SetupWizard::Run() {
  WizardState state(surroundings_.database);
  WelcomePage welcome(surroundings_, state);
  TypePage type(surroundings_, state);
  OverridePage overridePassword(surroundings_, state);
  RestrictionsPage restrictions(surroundings_, state);
  SystemPage system(surroundings_, state);
  AdministratorPage administrator(surroundings_, state);
  UserSetupPage users(surroundings_, state);
  CompletionPage completion(surroundings_, state);
  PropertySheet sheet(surroundings_.ui.catalogue, kMsgSetupWizard,
                      PropertySheet::WizardBitmaps{IDB_WIZARD_WATERMARK, IDB_WIZARD_HEADER});
  PropertyPage* const pages[] = {&welcome,       &type,  &overridePassword, &restrictions, &system,
                                 &administrator, &users, &completion};
  for (PropertyPage* page : pages)
    sheet.Add(*page);
  return sheet.Run();
}

}  // namespace quillgate
