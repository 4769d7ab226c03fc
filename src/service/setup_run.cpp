#include "service/setup_run.h"

#include <cstdio>

#include "frame/help_system.h"
#include "frame/help_topics.h"
#include "wizard/setup_wizard.h"

namespace quillgate {
namespace {

constexpr wchar_t kNotShown[] =
    L"The setup wizard needs a desktop. To run it later, use the command \"qgserv SetupWizard\".";

using Configure = decltype(WizardSurroundings::configure);

// False when the wizard could not be shown.
bool Show(ProcessObjects& objects, Configure configure) {
  if (!HasDesktop()) return false;
  HelpSystem help;
  help.SetHelpFile(kHelpFileName);
  const UiSurroundings ui{objects.Catalogue(), help, objects.Stop()};
  return SetupWizard({ui, objects.GetDatabase(), objects.GetSettings(), std::move(configure)})
      .Run();
}

}  // namespace

// A service that runs takes over the configuration with its next cycle.
int RunSetupWizard(ProcessObjects& objects) {
  objects.ApplyLanguage();
  InitialiseControls();
  if (Show(objects, [](const std::function<bool()>& store) { return store(); })) return 0;
  std::fprintf(stderr, "%ls\n", kNotShown);
  return 1;
}

void RunSetupAtFirstStart(ProcessObjects& objects) noexcept {
  try {
    if (!objects.IsFirstStart() || objects.Stop().IsRaised()) return;
    const auto configure = [&](const std::function<bool()>& store) { return objects.SetUp(store); };
    if (!Show(objects, configure) && !objects.Stop().IsRaised()) {
      objects.Events().LogEvent(kNotShown);
    }
  } catch (...) {
    objects.Events().LogCurrentException();
  }
}

}  // namespace quillgate
