// Every text that a person sees, by number, in the interface language. The texts are the message
// table of the executable (English and Swedish, the same numbers in both). The process has one
// catalogue, made by service/. Texts may be fetched on any thread.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <vector>

#include "text/message_ids.h"

namespace quillgate {

struct LanguageEntry {
  std::wstring nativeName;  // with a capital initial
  LANGID id;                // as the catalogue carries it
};
using LanguageList = std::vector<LanguageEntry>;

class MessageCatalogue {
 public:
  // Starts in the system's interface language and builds the list of languages.
  MessageCatalogue();

  // The text of a message with its inserts, which follow in the order of their numbers as unsigned
  // values. Empty when there is no such text; nothing is reported.
  std::wstring GetMessageText(MessageId id, ...) const;

  // Takes effect for texts fetched afterwards. The low 16 bits count, with the default sublanguage;
  // 0 means the user's own language.
  void SetInterfaceLanguage(DWORD id);
  LANGID InterfaceLanguageId() const { return languageId_; }

  LanguageList GetLanguageList() const { return languages_; }

 private:
  void BuildLanguageList();

  std::atomic<LANGID> languageId_;
  LanguageList languages_;
};

}  // namespace quillgate
