#include "accounts/password_digest.h"

#include <gtest/gtest.h>

#include <string>

#include "accounts/user.h"

namespace quillgate {
namespace {

TEST(PasswordDigest, TheDigestsAreThoseOfRfc1321) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"", L"D41D8CD98F00B204E9800998ECF8427E"},
      {L"abc", L"900150983CD24FB0D6963F7D28E17F72"},
      {L"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
       L"57EDF4A22BE3C955AC49DA2E2107B67A"},
      {L"\u00e5\u00e4\u00f6", L"118A1637A7233CE6E62AA296975B27B4"},
  };
  for (const auto& [text, digest] : cases)
    EXPECT_EQ(PasswordDigest(text, 255), digest) << text;
}

TEST(PasswordDigest, ALongPasswordIsCutAtTheLimitAndNotTakenForABlankOne) {
  const std::wstring a254(254, L'a');
  const struct {
    std::wstring text;
    std::size_t limit;
    const wchar_t* digest;
  } cases[] = {
      {a254 + L"a", 255, L"46BC249A5A8FC5D622CF12C42C463AE0"},
      {a254 + L"aa", 255, L"46BC249A5A8FC5D622CF12C42C463AE0"},
      {a254 + L"aa", 256, L"81109EEC5AA1A284FB5327B10E9C16B9"},
      {std::wstring(511, L'a'), 256, L"81109EEC5AA1A284FB5327B10E9C16B9"},
      // Half a character is none.
      {a254 + L"\u00e5", 255, L"DFDE09457E2017E31D4ECFAEA010DB8F"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(PasswordDigest(each.text, each.limit), each.digest) << each.text.size();
}

TEST(PasswordDigest, APasswordIsAcceptedOnlyAsItWasSet) {
  User user(L"Anna");
  EXPECT_TRUE(user.CheckPassword(L""));
  user.SetPassword(L"secret");
  EXPECT_EQ(user.StoredDigest(), L"5EBE2294ECD0E0F08EAB7690D2A6EE69");
  EXPECT_TRUE(user.CheckPassword(L"secret"));
  EXPECT_FALSE(user.CheckPassword(L"Secret"));
  EXPECT_FALSE(user.CheckPassword(L""));
}

TEST(PasswordDigest, AUserMadeForLoadingAcceptsNoPassword) {
  EXPECT_FALSE(User().CheckPassword(L""));
}

TEST(PasswordDigest, APasswordOf255BytesIsAcceptedALongerOneNeverIs) {
  User user(L"Anna");
  user.SetPassword(std::wstring(255, L'a'));
  EXPECT_TRUE(user.CheckPassword(std::wstring(255, L'a')));
  user.SetPassword(std::wstring(256, L'a'));
  EXPECT_FALSE(user.CheckPassword(std::wstring(256, L'a')));
  EXPECT_FALSE(user.CheckPassword(L""));
}

}  // namespace
}  // namespace quillgate
