#include "platform/kernel/resources.h"

#include <windows.h>

#include <algorithm>

#include "platform/kernel/api_result.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

// Filled by constructors of static objects in other files, so created at first use.
std::vector<Resource>& AllResources() {
  static std::vector<Resource>& resources = *new std::vector<Resource>;
  return resources;
}

DWORD MissingResourceError(std::uint16_t type) {
  const bool hasType = std::ranges::count(AllResources(), type, &Resource::type) > 0;
  return hasType ? ERROR_RESOURCE_NAME_NOT_FOUND : ERROR_RESOURCE_TYPE_NOT_FOUND;
}

}  // namespace

void RegisterResources(std::span<const Resource> resources) {
  AllResources().insert(AllResources().end(), resources.begin(), resources.end());
}

std::vector<LANGID> ResourceLanguages(std::uint16_t type, std::uint16_t name) {
  std::vector<LANGID> languages;
  for (const Resource& each : AllResources()) {
    if (each.type == type && each.name == name) languages.push_back(each.language);
  }
  return languages;
}

std::span<const std::byte> FindResourceBytes(std::uint16_t type, std::uint16_t name,
                                             LANGID language) {
  for (const Resource& each : AllResources()) {
    if (each.type == type && each.name == name && each.language == language) return each.data;
  }
  return {};
}

std::span<const std::byte> FindResourceBytes(std::uint16_t type, std::uint16_t name) {
  const std::vector<LANGID> languages = ResourceLanguages(type, name);
  if (languages.empty()) {
    ::SetLastError(MissingResourceError(type));
    return {};
  }
  constexpr LANGID kPrimaryMask = 0x3FF;
  const LANGID ofInterface = ThreadLanguage();
  for (const LANGID wanted :
       {LANGID{0}, ofInterface, static_cast<LANGID>(ofInterface & kPrimaryMask)}) {
    if (std::ranges::count(languages, wanted) > 0) return FindResourceBytes(type, name, wanted);
  }
  return FindResourceBytes(type, name, languages.front());
}

}  // namespace platform

extern "C" BOOL WINAPI EnumResourceLanguagesW(HMODULE module, LPCWSTR type, LPCWSTR name,
                                              ENUMRESLANGPROCW callback, LONG_PTR parameter) try {
  if (callback == nullptr || !IS_INTRESOURCE(type) || !IS_INTRESOURCE(name)) {
    if (callback != nullptr)
      platform::LogLine("EnumResourceLanguagesW: resources have numbers only");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const auto typeNumber = static_cast<std::uint16_t>(reinterpret_cast<ULONG_PTR>(type));
  const auto nameNumber = static_cast<std::uint16_t>(reinterpret_cast<ULONG_PTR>(name));
  // Only the executable carries resources.
  const bool own = module == nullptr || module == ::GetModuleHandleW(nullptr);
  const std::vector<LANGID> languages =
      own ? platform::ResourceLanguages(typeNumber, nameNumber) : std::vector<LANGID>();
  if (languages.empty()) {
    ::SetLastError(own ? platform::MissingResourceError(typeNumber)
                       : ERROR_RESOURCE_DATA_NOT_FOUND);
    return FALSE;
  }
  for (const LANGID language : languages) {
    if (!callback(module, type, name, language, parameter)) {
      ::SetLastError(ERROR_RESOURCE_ENUM_USER_STOP);
      return FALSE;
    }
  }
  return TRUE;
} catch (...) {
  return platform::FailedCall(FALSE);
}
