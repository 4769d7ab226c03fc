// The message boxes of the program. The product name is the caption unless another one is given.
#pragma once

#include <windows.h>

#include <string>

#include "text/message_catalogue.h"

namespace quillgate {

// Shows a message box with one of the MB_ICON styles; returns when it has been closed. The owner
// may be null.
void ShowText(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text, UINT icon);
void ShowError(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text);
void ShowInformation(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text);

// Shows a question with Yes and No; returns whether the user chose Yes.
bool AskYesNo(HWND owner, const MessageCatalogue& catalogue, const std::wstring& question,
              MessageId caption = kMsgProductName);

// Call within a catch handler: shows the exception that is being handled as an error. The text of a
// database error is shown as it is.
void ShowCurrentException(HWND owner, const MessageCatalogue& catalogue) noexcept;

}  // namespace quillgate
