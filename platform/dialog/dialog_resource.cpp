#include "platform/dialog/dialog_resource.h"

#include <algorithm>

#include "platform/kernel/locale_source.h"
#include "platform/kernel/log.h"
#include "platform/kernel/resources.h"

namespace platform {
namespace {

constexpr std::uint16_t kDialogType = 5;  // RT_DIALOG

bool IsOfExecutable(HINSTANCE instance) {
  return instance == nullptr || instance == ::GetModuleHandleW(nullptr);
}

// In the documented order: the user's language, its default sublanguage, its neutral sublanguage,
// neutral, any.
LANGID BestOf(const std::vector<LANGID>& languages) {
  const LANGID user = ThreadLanguage();
  const LANGID primary = PRIMARYLANGID(user);
  for (const LANGID wanted :
       {user, MAKELANGID(primary, SUBLANG_DEFAULT), MAKELANGID(primary, SUBLANG_NEUTRAL),
        MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL)}) {
    if (std::ranges::count(languages, wanted) > 0) return wanted;
  }
  return languages.front();
}

}  // namespace

std::optional<DialogTemplate> FindDialogTemplate(HINSTANCE instance, LPCWSTR name) {
  if (!IS_INTRESOURCE(name)) {
    LogLine("dialog template: resources have numbers only");
    ::SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return std::nullopt;
  }
  const auto number = static_cast<std::uint16_t>(reinterpret_cast<ULONG_PTR>(name));
  const std::vector<LANGID> languages =
      IsOfExecutable(instance) ? ResourceLanguages(kDialogType, number) : std::vector<LANGID>();
  if (languages.empty()) {
    LogLine("dialog template " + std::to_string(number) + ": there is no such resource");
    ::SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return std::nullopt;
  }
  auto found = ReadDialogTemplate(FindResourceBytes(kDialogType, number, BestOf(languages)));
  if (!found.has_value()) ::SetLastError(ERROR_INVALID_PARAMETER);
  return found;
}

}  // namespace platform
