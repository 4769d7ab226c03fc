#include "wizard/wizard_path.h"

#include "resources/resource.h"

namespace quillgate {
namespace {

unsigned PageAfterSystem(LogonSystem system) {
  switch (system) {
    case LogonSystem::kQuillgate:
      return IDD_SETUP_ADMINISTRATOR;
    case LogonSystem::kWindows:
      return IDD_SETUP_USERS;
    case LogonSystem::kNone:
      break;
  }
  return IDD_SETUP_OVERRIDE;
}

unsigned LastPageBeforeCompletion(const WizardChoices& choices) {
  const bool hasUsers = !choices.isSimple && choices.system != LogonSystem::kNone;
  return hasUsers ? IDD_SETUP_USERS : IDD_SETUP_RESTRICTIONS;
}

}  // namespace

std::optional<unsigned> NextPage(unsigned page, const WizardChoices& choices) {
  switch (page) {
    case IDD_SETUP_WELCOME:
      return IDD_SETUP_TYPE;
    case IDD_SETUP_TYPE:
      return choices.isSimple ? IDD_SETUP_OVERRIDE : IDD_SETUP_SYSTEM;
    case IDD_SETUP_SYSTEM:
      return PageAfterSystem(choices.system);
    case IDD_SETUP_OVERRIDE:
      return IDD_SETUP_RESTRICTIONS;
    case IDD_SETUP_ADMINISTRATOR:
      return IDD_SETUP_USERS;
    case IDD_SETUP_RESTRICTIONS:
    case IDD_SETUP_USERS:
      return IDD_SETUP_COMPLETION;
    default:
      return {};
  }
}

std::optional<unsigned> PreviousPage(unsigned page, const WizardChoices& choices) {
  switch (page) {
    case IDD_SETUP_TYPE:
      return IDD_SETUP_WELCOME;
    case IDD_SETUP_SYSTEM:
      return IDD_SETUP_TYPE;
    case IDD_SETUP_OVERRIDE:
      return choices.isSimple ? IDD_SETUP_TYPE : IDD_SETUP_SYSTEM;
    case IDD_SETUP_RESTRICTIONS:
      return IDD_SETUP_OVERRIDE;
    case IDD_SETUP_ADMINISTRATOR:
      return IDD_SETUP_SYSTEM;
    case IDD_SETUP_USERS:
      return choices.system == LogonSystem::kQuillgate ? IDD_SETUP_ADMINISTRATOR : IDD_SETUP_SYSTEM;
    case IDD_SETUP_COMPLETION:
      return LastPageBeforeCompletion(choices);
    default:
      return {};
  }
}

}  // namespace quillgate
