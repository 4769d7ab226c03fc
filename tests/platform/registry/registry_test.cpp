#include <windows.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/testing/simulated_machine.h"

namespace {

class RegistryTest : public ::testing::Test {
 protected:
  static HKEY Create(const wchar_t* path, REGSAM access = KEY_ALL_ACCESS) {
    HKEY key = nullptr;
    EXPECT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                access, nullptr, &key, nullptr),
              0);
    return key;
  }
  static LSTATUS Open(const wchar_t* path, HKEY* key, REGSAM access = KEY_READ) {
    return ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, access, key);
  }
  static LSTATUS SetText(HKEY key, const wchar_t* name, const std::wstring& text,
                         DWORD type = REG_SZ) {
    return ::RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(text.c_str()),
                            static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }
  static std::wstring Text(HKEY key, const wchar_t* name) {
    std::array<wchar_t, 256> text{};
    DWORD bytes = sizeof text;
    if (::RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()),
                           &bytes) != 0) {
      return L"(none)";
    }
    EXPECT_EQ(bytes % sizeof(wchar_t), 0u);
    return {text.data(), bytes / sizeof(wchar_t) - 1};
  }
  static std::vector<std::wstring> Subkeys(HKEY key) {
    std::vector<std::wstring> names;
    for (DWORD index = 0;; ++index) {
      wchar_t name[256];
      DWORD characters = 256;
      const LSTATUS status =
          ::RegEnumKeyExW(key, index, name, &characters, nullptr, nullptr, nullptr, nullptr);
      if (status == ERROR_NO_MORE_ITEMS) return names;
      EXPECT_EQ(status, 0);
      if (status != 0) return names;
      EXPECT_EQ(name[characters], L'\0');
      names.emplace_back(name, characters);
    }
  }

  platform::SimulatedMachine machine_;
};

TEST_F(RegistryTest, CreatingTellsNewFromExistingInAnyCase) {
  HKEY key = nullptr;
  DWORD disposition = 0;
  const auto create = [&](const wchar_t* path) {
    return ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                             KEY_WRITE, nullptr, &key, &disposition);
  };
  EXPECT_EQ(create(L"Software\\Maker\\Product"), 0);
  EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
  EXPECT_EQ(::RegCloseKey(key), 0);
  EXPECT_EQ(create(L"SOFTWARE\\maker"), 0);
  EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
  EXPECT_EQ(::RegCloseKey(key), 0);
  EXPECT_EQ(::RegCloseKey(key), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
}

TEST_F(RegistryTest, ValuesOfEveryTypeComeBackByteForByte) {
  const HKEY key = Create(L"Software\\Maker");
  struct Case {
    const wchar_t* name;
    DWORD type;
    std::vector<BYTE> data;
  };
  const auto bytes = [](std::wstring_view text) {
    const auto* first = reinterpret_cast<const BYTE*>(text.data());
    return std::vector<BYTE>(first, first + text.size() * sizeof(wchar_t));
  };
  using namespace std::string_view_literals;
  const std::vector<Case> cases = {
      {L"text", REG_SZ, bytes(L"C:\\a \"b\"\r\n\x01\u00e5\U0001F600]=\0"sv)},
      {L"no terminator", REG_SZ, bytes(L"abc")},
      {L"inner zero", REG_SZ, bytes(L"a\0b\0"sv)},
      {L"no character", REG_SZ, bytes(std::wstring{static_cast<wchar_t>(0xD800), L'\0'})},
      {L"odd size", REG_SZ, {1, 2, 3}},
      {L"nothing", REG_SZ, {}},
      {L"path", REG_EXPAND_SZ, bytes(L"%SystemRoot%\\x\0"sv)},
      {L"list", REG_MULTI_SZ, bytes(L"a\0b\0\0"sv)},
      {L"number", REG_DWORD, {0x78, 0x56, 0x34, 0x12}},
      {L"short number", REG_DWORD, {1, 2}},
      {L"bytes", REG_BINARY, {0, 255, 10, 34}},
      {L"", REG_SZ, bytes(L"default\0"sv)},
      {L"na\\me \"x\"\n=@", REG_NONE, {}},
      {L"@", REG_DWORD, {1, 0, 0, 0}},
  };
  for (const Case& each : cases) {
    ASSERT_EQ(::RegSetValueExW(key, each.name, 0, each.type, each.data.data(),
                               static_cast<DWORD>(each.data.size())),
              0);
  }
  // Another process reads what was written, not what this one remembers.
  const pid_t child = ::fork();
  if (child == 0) {
    HKEY own = nullptr;
    int wrong =
        ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Maker", 0, KEY_READ, &own) == 0 ? 0 : 1;
    // A change makes the child read the whole hive again.
    ::utimensat(AT_FDCWD, (machine_.Root() / "root/registry/machine.hive").c_str(), nullptr, 0);
    for (const Case& each : cases) {
      DWORD type = 99;
      std::array<BYTE, 256> data{};
      DWORD size = sizeof data;
      if (::RegQueryValueExW(own, each.name, nullptr, &type, data.data(), &size) != 0 ||
          type != each.type || size != each.data.size() ||
          !std::equal(each.data.begin(), each.data.end(), data.begin())) {
        ++wrong;
      }
    }
    ::_exit(wrong);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(::RegCloseKey(key), 0);
}

TEST_F(RegistryTest, SizesAreAskedForAndTooSmallBuffersAreNotTouched) {
  const HKEY key = Create(L"Software\\Maker");
  ASSERT_EQ(SetText(key, L"Name", L"abc"), 0);
  DWORD type = 0;
  DWORD bytes = 0;
  EXPECT_EQ(::RegQueryValueExW(key, L"NAME", nullptr, &type, nullptr, &bytes), 0);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_EQ(bytes, 4 * sizeof(wchar_t));
  BYTE data[4 * sizeof(wchar_t)] = {99};
  bytes = sizeof data - 1;
  EXPECT_EQ(::RegQueryValueExW(key, L"Name", nullptr, nullptr, data, &bytes),
            static_cast<LSTATUS>(ERROR_MORE_DATA));
  EXPECT_EQ(bytes, sizeof data);
  EXPECT_EQ(data[0], 99);
  EXPECT_EQ(::RegQueryValueExW(key, L"Name", nullptr, nullptr, data, nullptr),
            static_cast<LSTATUS>(ERROR_INVALID_PARAMETER));
  EXPECT_EQ(::RegQueryValueExW(key, L"Other", nullptr, nullptr, nullptr, nullptr),
            static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(::RegCloseKey(key), 0);
}

TEST_F(RegistryTest, SubkeysAreEnumeratedByNameInAnyCase) {
  for (const wchar_t* path : {L"Top\\zeta", L"Top\\Alpha", L"Top\\middle\\below"})
    ::RegCloseKey(Create(path));
  const HKEY key = Create(L"Top");
  EXPECT_EQ(Subkeys(key), (std::vector<std::wstring>{L"Alpha", L"middle", L"zeta"}));
  wchar_t name[5] = L"....";
  DWORD characters = 5;
  EXPECT_EQ(::RegEnumKeyExW(key, 1, name, &characters, nullptr, nullptr, nullptr, nullptr),
            static_cast<LSTATUS>(ERROR_MORE_DATA));
  EXPECT_EQ(name[0], L'.');
  EXPECT_EQ(::RegEnumKeyExW(key, 2, name, &characters, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(characters, 4u);
  EXPECT_EQ(::RegCloseKey(key), 0);
}

TEST_F(RegistryTest, AccessRightsOfTheHandleAreChecked) {
  ::RegCloseKey(Create(L"Software\\Maker"));
  constexpr auto kDenied = static_cast<LSTATUS>(ERROR_ACCESS_DENIED);
  HKEY reader = nullptr;
  HKEY writer = nullptr;
  HKEY created = nullptr;
  ASSERT_EQ(Open(L"Software\\Maker", &reader, KEY_READ), 0);
  ASSERT_EQ(Open(L"Software\\Maker", &writer, KEY_WRITE), 0);
  EXPECT_EQ(SetText(reader, L"Name", L"x"), kDenied);
  EXPECT_EQ(::RegDeleteValueW(reader, L"Name"), kDenied);
  EXPECT_EQ(::RegCreateKeyExW(reader, L"Sub", 0, nullptr, 0, KEY_READ, nullptr, &created, nullptr),
            kDenied);
  EXPECT_EQ(SetText(writer, L"Name", L"x"), 0);
  EXPECT_EQ(::RegQueryValueExW(writer, L"Name", nullptr, nullptr, nullptr, nullptr), kDenied);
  wchar_t name[8];
  DWORD characters = 8;
  EXPECT_EQ(::RegEnumKeyExW(writer, 0, name, &characters, nullptr, nullptr, nullptr, nullptr),
            kDenied);
  EXPECT_EQ(Text(reader, L"Name"), L"x");
  ::RegCloseKey(reader);
  ::RegCloseKey(writer);
}

TEST_F(RegistryTest, ADeletedKeyIsKnownAsDeletedThroughItsHandles) {
  const HKEY top = Create(L"Top");
  const HKEY key = Create(L"Top\\Sub");
  EXPECT_EQ(::RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"Top"), static_cast<LSTATUS>(ERROR_ACCESS_DENIED));
  EXPECT_EQ(::RegDeleteKeyW(top, L"SUB"), 0);
  EXPECT_EQ(::RegDeleteKeyW(top, L"Sub"), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
  constexpr auto kDeleted = static_cast<LSTATUS>(ERROR_KEY_DELETED);
  EXPECT_EQ(SetText(key, L"Name", L"x"), kDeleted);
  EXPECT_EQ(::RegQueryValueExW(key, L"Name", nullptr, nullptr, nullptr, nullptr), kDeleted);
  HKEY below = nullptr;
  EXPECT_EQ(::RegOpenKeyExW(key, L"Below", 0, KEY_READ, &below), kDeleted);
  EXPECT_EQ(::RegCreateKeyExW(key, L"Below", 0, nullptr, 0, KEY_READ, nullptr, &below, nullptr),
            kDeleted);
  EXPECT_TRUE(Subkeys(top).empty());
  ::RegCloseKey(top);
  ::RegCloseKey(key);
}

TEST_F(RegistryTest, AValueIsDeletedOnceAndReplacedInPlace) {
  const HKEY key = Create(L"Top");
  ASSERT_EQ(SetText(key, L"Name", L"one"), 0);
  ASSERT_EQ(SetText(key, L"NAME", L"two"), 0);
  EXPECT_EQ(Text(key, L"name"), L"two");
  EXPECT_EQ(::RegDeleteValueW(key, L"nAME"), 0);
  EXPECT_EQ(::RegDeleteValueW(key, L"Name"), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
  ::RegCloseKey(key);
}

TEST_F(RegistryTest, WrongArgumentsGetTheDocumentedErrors) {
  HKEY key = nullptr;
  constexpr auto kParameter = static_cast<LSTATUS>(ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Open(L"No\\Such", &key), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(Open(L"\\Top", &key), static_cast<LSTATUS>(ERROR_BAD_PATHNAME));
  EXPECT_EQ(Open(std::wstring(256, L'x').c_str(), &key), kParameter);
  EXPECT_EQ(Open(L"", nullptr), kParameter);
  EXPECT_EQ(::RegOpenKeyExW(nullptr, L"Top", 0, KEY_READ, &key),
            static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
  EXPECT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Top", 0, nullptr, 1, KEY_READ, nullptr, &key,
                              nullptr),
            kParameter);
  EXPECT_EQ(::RegCloseKey(HKEY_LOCAL_MACHINE), 0);
}

TEST_F(RegistryTest, TheNetworkCardsAreMadeFromTheMachinesInterfaces) {
  machine_.Interfaces().Set(
      {platform::SimulatedCard(2, L"eth0"), platform::SimulatedCard(3, L"wlan0")});
  HKEY cards = nullptr;
  ASSERT_EQ(Open(L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards", &cards), 0);
  EXPECT_EQ(Subkeys(cards), (std::vector<std::wstring>{L"1", L"2"}));
  HKEY card = nullptr;
  ASSERT_EQ(::RegOpenKeyExW(cards, L"2", 0, KEY_READ, &card), 0);
  EXPECT_EQ(Text(card, L"servicename"), L"wlan0");
  EXPECT_EQ(::RegDeleteKeyW(cards, L"2"), static_cast<LSTATUS>(ERROR_ACCESS_DENIED));

  machine_.Interfaces().Set({});
  EXPECT_TRUE(Subkeys(cards).empty());
  EXPECT_EQ(::RegQueryValueExW(card, L"ServiceName", nullptr, nullptr, nullptr, nullptr),
            static_cast<LSTATUS>(ERROR_KEY_DELETED));
  ::RegCloseKey(card);
  ::RegCloseKey(cards);
}

TEST_F(RegistryTest, KeysThatLeadToTheNetworkCardsTakeStoredNeighbours) {
  HKEY key = nullptr;
  ASSERT_EQ(Open(L"Software\\Microsoft", &key, KEY_ALL_ACCESS), 0);
  EXPECT_EQ(SetText(key, L"Name", L"kept"), 0);
  ::RegCloseKey(Create(L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\Notify"));
  EXPECT_EQ(Text(key, L"Name"), L"kept");
  EXPECT_EQ(Subkeys(key), (std::vector<std::wstring>{L"Windows NT"}));
  HKEY version = nullptr;
  ASSERT_EQ(::RegOpenKeyExW(key, L"Windows NT\\CurrentVersion", 0, KEY_READ, &version), 0);
  EXPECT_EQ(Subkeys(version), (std::vector<std::wstring>{L"NetworkCards", L"Winlogon"}));
  ::RegCloseKey(version);
  ::RegCloseKey(key);
}

}  // namespace
