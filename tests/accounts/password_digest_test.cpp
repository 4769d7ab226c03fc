#include "accounts/password_digest.h"

#include <gtest/gtest.h>

#include <string>

#include "accounts/user.h"

namespace quillgate {
namespace {

const std::wstring kA254(254, L'a');
const std::wstring kA255(255, L'a');
const std::wstring kA256(256, L'a');

TEST(PasswordDigest, IsThatOfTheBytesUpToTheLimit) {
  const std::tuple<std::wstring, std::size_t, const wchar_t*> cases[] = {
      {L"", 255, L"D41D8CD98F00B204E9800998ECF8427E"},
      {L"12345678901234567890123456789012345678901234567890123456789012345678901234567890", 255,
       L"57EDF4A22BE3C955AC49DA2E2107B67A"},
      {L"\u00e5\u00e4\u00f6", 255, L"118A1637A7233CE6E62AA296975B27B4"},
      {kA255, 255, L"46BC249A5A8FC5D622CF12C42C463AE0"},
      {kA256, 255, L"46BC249A5A8FC5D622CF12C42C463AE0"},
      {kA256, 256, L"81109EEC5AA1A284FB5327B10E9C16B9"},
      {kA256 + kA255, 256, L"81109EEC5AA1A284FB5327B10E9C16B9"},
      // Half a character is none.
      {kA254 + L"\u00e5", 255, L"DFDE09457E2017E31D4ECFAEA010DB8F"},
  };
  for (const auto& [text, limit, digest] : cases)
    EXPECT_EQ(PasswordDigest(text, limit), digest) << text << limit;
}

TEST(PasswordDigest, APasswordOfUpTo255BytesIsAcceptedOnlyAsItWasSet) {
  const std::tuple<std::wstring, std::wstring, bool> cases[] = {
      {L"", L"", true},        {L"secret", L"secret", true}, {L"secret", L"Secret", false},
      {L"secret", L"", false}, {kA255, kA255, true},         {kA256, kA256, false},
      {kA256, L"", false},
  };
  for (const auto& [set, tried, accepted] : cases) {
    User user(L"Anna");
    user.SetPassword(set);
    EXPECT_EQ(user.CheckPassword(tried), accepted) << set << " " << tried;
  }
  EXPECT_FALSE(User().CheckPassword(L"")) << "a user made for loading";
}

}  // namespace
}  // namespace quillgate
