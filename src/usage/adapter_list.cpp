#include "usage/adapter_list.h"

#include <windows.h>
#include <winreg.h>

#include <algorithm>
#include <array>
#include <optional>

#include "handles/handle.h"

namespace quillgate {
namespace {

constexpr wchar_t kCardsPath[] = L"Software\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";
constexpr wchar_t kUnknown[] = L"Unknown";

RegistryKey OpenKey(HKEY parent, const wchar_t* path) {
  HKEY key = nullptr;
  const LSTATUS status = ::RegOpenKeyExW(parent, path, 0, KEY_READ, &key);
  return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

// nullopt past the last card, or when the cards cannot be read.
std::optional<std::wstring> CardKeyName(DWORD index) {
  const RegistryKey cards = OpenKey(HKEY_LOCAL_MACHINE, kCardsPath);
  if (!cards.IsValid()) return std::nullopt;
  std::array<wchar_t, 16> name;
  DWORD length = name.size();
  const LSTATUS status =
      ::RegEnumKeyExW(cards.Get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
  if (status != ERROR_SUCCESS) return std::nullopt;
  return std::wstring(name.data(), length);
}

std::wstring ReadText(const RegistryKey& key, const wchar_t* name) {
  std::array<wchar_t, 256> text{};
  DWORD bytes = sizeof(text);
  DWORD type = REG_NONE;
  const LSTATUS status = ::RegQueryValueExW(key.Get(), name, nullptr, &type,
                                            reinterpret_cast<LPBYTE>(text.data()), &bytes);
  if (status != ERROR_SUCCESS || type != REG_SZ) return kUnknown;
  // The value may lack a terminator.
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(bytes / sizeof(wchar_t));
  return {text.begin(), std::find(text.begin(), end, L'\0')};
}

// Leaves the entry unchanged when the card's key cannot be opened.
void ReadCard(const std::wstring& keyName, AdapterEntry& entry) {
  const std::wstring path = std::wstring(kCardsPath) + L"\\" + keyName;
  const RegistryKey card = OpenKey(HKEY_LOCAL_MACHINE, path.c_str());
  if (!card.IsValid()) return;
  entry.serviceName = ReadText(card, L"ServiceName");
  entry.description = ReadText(card, L"Description");
}

}  // namespace

std::vector<AdapterEntry> ListInstalledAdapters() {
  std::vector<AdapterEntry> adapters;
  // Declared outside of the loop: deliberate, see docs/behaviour.md.
  AdapterEntry entry;
  for (DWORD index = 0;; ++index) {
    const auto keyName = CardKeyName(index);
    if (!keyName) return adapters;
    ReadCard(*keyName, entry);
    adapters.push_back(entry);
  }
}

std::wstring AdapterDescription(std::wstring_view serviceName) {
  const std::vector<AdapterEntry> adapters = ListInstalledAdapters();
  const auto found = std::ranges::find(adapters, serviceName, &AdapterEntry::serviceName);
  return found == adapters.end() ? std::wstring() : found->description;
}

std::unique_ptr<NetworkAdapter> ChooseAdapter(Settings& settings) {
  const std::vector<AdapterEntry> adapters = ListInstalledAdapters();
  const std::wstring chosen = settings.GetSetting(SettingKey::kAdapter, L"");
  auto found = std::ranges::find(adapters, chosen, &AdapterEntry::serviceName);
  if (adapters.empty()) return nullptr;
  if (found == adapters.end()) {
    found = adapters.begin();
    settings.SetSetting(SettingKey::kAdapter, found->serviceName);
  }
  return std::make_unique<NetworkAdapter>(found->serviceName);
}

}  // namespace quillgate
