// Every text that the user sees, by number, in the interface language. The texts are the message
// table of the executable (English and Swedish, with the same numbers). The process has one
// catalogue, created by service/. Texts may be fetched on any thread.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <vector>

#include "text/message_ids.h"

namespace quillgate {

struct LanguageEntry {
  std::wstring nativeName;  // with a capital initial
  LANGID id;                // as in the message table
};
using LanguageList = std::vector<LanguageEntry>;

class MessageCatalogue {
 public:
  // Starts with the system's interface language and builds the list of languages.
  MessageCatalogue();

  // The text of a message. Its inserts follow in the order of their numbers, as unsigned values.
  // Empty when there is no such text; no error is reported.
  std::wstring GetMessageText(MessageId id, ...) const;

  // Applies to texts fetched afterwards and, on the calling thread, to what the system shows there,
  // such as help. The low 16 bits are used, with the default sublanguage; 0 means the user's
  // language.
  void SetInterfaceLanguage(DWORD id);
  LANGID InterfaceLanguageId() const { return languageId_; }

  LanguageList GetLanguageList() const { return languages_; }

 private:
  void BuildLanguageList();

  std::atomic<LANGID> languageId_;
  LanguageList languages_;
};

}  // namespace quillgate
