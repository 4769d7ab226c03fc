// The program's message boxes: all have its name as caption.
#pragma once

#include <windows.h>

#include <string>

#include "text/message_catalogue.h"

namespace quillgate {

// With one of the MB_ICON styles; returns when it has been closed. The owner may be null.
void ShowText(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text, UINT icon);
void ShowError(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text);
void ShowInformation(HWND owner, const MessageCatalogue& catalogue, const std::wstring& text);

// A question with Yes and No: whether the answer was Yes.
bool AskYesNo(HWND owner, const MessageCatalogue& catalogue, const std::wstring& question);

// Within a handler: the exception that is being handled, as an error for people. What the database
// says is told as it stands.
void ShowCurrentException(HWND owner, const MessageCatalogue& catalogue) noexcept;

}  // namespace quillgate
