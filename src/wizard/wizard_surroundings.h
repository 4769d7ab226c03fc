// What the setup wizard and its pages work with. All of it outlives the wizard.
#pragma once

#include <functional>

#include "frame/ui_surroundings.h"
#include "storage/settings.h"

namespace quillgate {

struct WizardSurroundings {
  const UiSurroundings& ui;
  Database& database;
  Settings& settings;
  // Calls `store`, which writes the configuration, and lets the program go on with it. False when
  // `store` returns false; nothing has changed then.
  std::function<bool(const std::function<bool()>& store)> configure;
};

}  // namespace quillgate
