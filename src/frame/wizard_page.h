// Base of the pages of a wizard: a property page that decides where Back and Next lead, and checks
// the input before the wizard leaves it. Created and used on the thread that runs the wizard.
#pragma once

#include <optional>

#include "frame/property_page.h"

namespace quillgate {

class WizardPage : public PropertyPage {
 protected:
  // Texts of the band above an interior page.
  struct Header {
    MessageId title;
    MessageId subtitle;
  };

  // `title` is the title of the wizard window. Without a header the page is an exterior page, which
  // shows the watermark.
  WizardPage(const UiSurroundings& ui, UINT templateNumber, MessageId title,
             std::optional<Header> header, std::wstring helpTopic);

  // The enabled buttons while the page is shown: PSWIZB_BACK, PSWIZB_NEXT, PSWIZB_FINISH.
  virtual DWORD Buttons() const;
  // Return the template number of the page to go to; nullopt stays on this page, and so does an
  // exception.
  virtual std::optional<UINT> OnBack();
  virtual std::optional<UINT> OnNext();
  // Returns whether the wizard may close. An exception keeps it open.
  virtual bool OnFinish();
  // The page is about to be shown, for the first time or again.
  virtual void OnSetActive();

 private:
  using Handler = std::optional<UINT> (WizardPage::*)();

  void Complete(PROPSHEETPAGEW& page) final;
  bool AnswerNotification(const NMHDR& header) final;
  LRESULT TargetOf(Handler handler) noexcept;
  bool Finishes() noexcept;

  std::optional<Header> header_;
  // Buffers of the texts that the PROPSHEETPAGE structure points to.
  std::wstring headerTitle_;
  std::wstring headerSubtitle_;
};

}  // namespace quillgate
