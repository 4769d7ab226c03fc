#include "platform/registry/registry_key.h"

namespace {

TEST(Registry, CreatingTellsNewFromExistingInAnyCase) {
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
  EXPECT_FALSE(::CloseHandle(key)) << "keys have a closing call of their own";
  ExpectStatuses({{"close", ::RegCloseKey(key), NO_ERROR},
                  {"close again", ::RegCloseKey(key), ERROR_INVALID_HANDLE}});
}

TEST(Registry, SizesAreAskedForAndTooSmallBuffersAreNotTouched) {
  const Key key(L"Software\\Maker");
  ASSERT_EQ(key.SetText(L"Name", L"abc"), 0);
  DWORD type = 0;
  DWORD bytes = 0;
  EXPECT_EQ(::RegQueryValueExW(key.Get(), L"NAME", nullptr, &type, nullptr, &bytes), 0);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_EQ(bytes, 4 * sizeof(wchar_t));
  BYTE data[4 * sizeof(wchar_t)] = {99};
  bytes = sizeof data - 1;
  const auto query = [&](DWORD* size) {
    return ::RegQueryValueExW(key.Get(), L"Name", nullptr, nullptr, data, size);
  };
  ExpectStatuses({{"one byte short", query(&bytes), ERROR_MORE_DATA},
                  {"no size", query(nullptr), ERROR_INVALID_PARAMETER}});
  EXPECT_EQ(bytes, sizeof data);
  EXPECT_EQ(data[0], 99);
}

TEST(Registry, SubkeysAreEnumeratedByNameInAnyCase) {
  for (const wchar_t* path : {L"Top\\zeta", L"Top\\Alpha", L"Top\\middle\\below"})
    Key{path};
  const Key key(L"Top");
  EXPECT_EQ(key.Subkeys(), (std::vector<std::wstring>{L"Alpha", L"middle", L"zeta"}));
  wchar_t name[5] = L"....";
  DWORD characters = 5;
  ExpectStatuses({{"middle", key.Subkey(1, name, characters), ERROR_MORE_DATA}});
  EXPECT_STREQ(name, L"....");
  ExpectStatuses({{"zeta", key.Subkey(2, name, characters), NO_ERROR},
                  {"past the last", key.Subkey(3, name, characters), ERROR_NO_MORE_ITEMS}});
  EXPECT_STREQ(name, L"zeta");
  EXPECT_EQ(characters, 4u);
}

TEST(Registry, AccessRightsOfTheHandleAreChecked) {
  const Key made(L"Software\\Maker");
  const Key reader(L"Software\\Maker", KEY_READ);
  const Key writer(L"Software\\Maker", KEY_WRITE);
  wchar_t name[8];
  DWORD characters = 8;
  ExpectStatuses({
      {"set", reader.SetText(L"Name", L"x"), ERROR_ACCESS_DENIED},
      {"delete", ::RegDeleteValueW(reader.Get(), L"Name"), ERROR_ACCESS_DENIED},
      {"create", Key(L"Sub", KEY_READ, reader.Get()).Status(), ERROR_ACCESS_DENIED},
      {"set by the writer", writer.SetText(L"Name", L"x"), NO_ERROR},
      {"query", writer.Find(L"Name"), ERROR_ACCESS_DENIED},
      {"enumerate", writer.Subkey(0, name, characters), ERROR_ACCESS_DENIED},
  });
  EXPECT_EQ(reader.Text(L"Name"), L"x");
}

TEST(Registry, ADeletedKeyIsKnownAsDeletedThroughItsHandles) {
  const Key top(L"Top");
  const Key key(L"Top\\Sub");
  ExpectStatuses({
      {"with a subkey", ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"Top"), ERROR_ACCESS_DENIED},
      {"delete", ::RegDeleteKeyW(top.Get(), L"SUB"), NO_ERROR},
      {"delete again", ::RegDeleteKeyW(top.Get(), L"Sub"), ERROR_FILE_NOT_FOUND},
      {"set", key.SetText(L"Name", L"x"), ERROR_KEY_DELETED},
      {"query", key.Find(L"Name"), ERROR_KEY_DELETED},
      {"open", OpenStatus(L"Below", key.Get()), ERROR_KEY_DELETED},
      {"create", Key(L"Below", KEY_READ, key.Get()).Status(), ERROR_KEY_DELETED},
  });
  EXPECT_TRUE(top.Subkeys().empty());
}

TEST(Registry, AValueIsDeletedOnceAndReplacedInPlace) {
  const Key key(L"Top");
  ASSERT_EQ(key.SetText(L"Name", L"one"), 0);
  ASSERT_EQ(key.SetText(L"NAME", L"two"), 0);
  EXPECT_EQ(key.Text(L"name"), L"two");
  ExpectStatuses({
      {"delete", ::RegDeleteValueW(key.Get(), L"nAME"), NO_ERROR},
      {"delete again", ::RegDeleteValueW(key.Get(), L"Name"), ERROR_FILE_NOT_FOUND},
      {"query", key.Find(L"Name"), ERROR_FILE_NOT_FOUND},
  });
}

TEST(Registry, InvalidPathsAndHandlesGetTheirStatus) {
  const Key top(L"Top");
  ExpectStatuses({
      {"missing", OpenStatus(L"No\\Such"), ERROR_FILE_NOT_FOUND},
      {"backslash first", OpenStatus(L"\\Top"), ERROR_BAD_PATHNAME},
      {"name of 256", OpenStatus(std::wstring(256, L'x').c_str()), ERROR_INVALID_PARAMETER},
      {"no result", ::RegOpenKeyExW(top.Get(), L"", 0, KEY_READ, nullptr), ERROR_INVALID_PARAMETER},
      {"no key", OpenStatus(L"Top", nullptr), ERROR_INVALID_HANDLE},
      {"no path", OpenStatus(nullptr, top.Get()), NO_ERROR},
      {"close the root", ::RegCloseKey(HKEY_LOCAL_MACHINE), NO_ERROR},
  });
}

}  // namespace
