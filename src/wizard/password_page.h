// Base of the setup wizard's pages on which a password is entered twice.
#pragma once

#include <optional>
#include <string>

#include "wizard/setup_page.h"

namespace quillgate {

class PasswordPage : public SetupPage {
 protected:
  // The identifiers of the two edits.
  struct Fields {
    int password;
    int confirmation;
  };

  PasswordPage(const WizardSurroundings& surroundings, WizardState& state, unsigned number,
               Header header, Fields fields);

  bool OnInitDialog(HWND window) override;

  // At most 32 characters. Nullopt when the two differ, which the user is told, and when the user
  // does not want to go on without a password.
  std::optional<std::wstring> ReadPassword() const;

 private:
  const Fields fields_;
};

}  // namespace quillgate
