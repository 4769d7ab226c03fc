// The sheet "Settings": general, users, advanced. Who is no administrator sees the users page
// alone, with himself. Modal; created and opened on the service main thread. Closes by itself when
// the user it was opened for is logged off.
#pragma once

#include "settings/settings_surroundings.h"

namespace quillgate {

class SettingsSheet {
 public:
  explicit SettingsSheet(const SettingsSurroundings& surroundings) : surroundings_(surroundings) {}

  // Shows the sheet for the user who is logged on and returns when it has been closed. Nothing is
  // shown when nobody is.
  void Open(SessionLog& session);

 private:
  SettingsSurroundings surroundings_;
};

}  // namespace quillgate
