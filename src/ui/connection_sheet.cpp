#include "ui/connection_sheet.h"

#include "frame/property_sheet.h"
#include "ui/connection_details_page.h"
#include "ui/connection_general_page.h"

namespace quillgate {

void ConnectionSheet::Open(const SessionLog& session) {
  ConnectionGeneralPage general(surroundings_, session, rates_);
  ConnectionDetailsPage details(surroundings_.ui, surroundings_.settings);
  PropertySheet sheet(surroundings_.ui.catalogue, kMsgConnectionInformation,
                      PropertySheet::Apply::kWithoutButton);
  sheet.Add(general);
  sheet.Add(details);
  sheet.Run();
}

}  // namespace quillgate
