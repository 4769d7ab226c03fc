// What the help viewer understands of locations, markup, contents, popup texts and searches.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "platform/shell/help_contents.h"
#include "platform/shell/help_history.h"
#include "platform/shell/help_location.h"
#include "platform/shell/help_markup.h"
#include "platform/shell/help_popup_source.h"
#include "platform/shell/help_search.h"
#include "platform/testing/simulated_machine.h"

namespace platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(HelpLocations, NameAFileATopicAndAPlaceInIt) {
  const std::pair<const wchar_t*, std::optional<HelpLocation>> cases[] = {
      {L"a.chm", HelpLocation{L"a.chm", {}}},
      {L"a.chm::/", HelpLocation{L"a.chm", {}}},
      {L"a.chm::/html/b.html", HelpLocation{L"a.chm", {L"/html/b.html", L""}}},
      {L"a.chm::html\\b.html#c>main", HelpLocation{L"a.chm", {L"/html/b.html", L"c"}}},
      {L"\\opt\\a.chm>main", HelpLocation{L"\\opt\\a.chm", {}}},
      {L"a.chm::http://b/", std::nullopt},
      {L"::/b.html", std::nullopt},
      {L"", std::nullopt},
  };
  for (const auto& [text, location] : cases)
    EXPECT_EQ(ParseHelpLocation(text), location) << text;
}

TEST(HelpAddresses, StayInTheFileOrAreOutside) {
  const std::pair<const wchar_t*, std::optional<HelpTarget>> cases[] = {
      {L"b.html", HelpTarget{L"/html/b.html", L""}},
      {L"../b.png", HelpTarget{L"/b.png", L""}},
      {L"../../../b.png", HelpTarget{L"/b.png", L""}},
      {L"./c/../b.html?x=1#d", HelpTarget{L"/html/b.html", L"d"}},
      {L"/b.html", HelpTarget{L"/b.html", L""}},
      {L"#d", HelpTarget{L"/html/a.html", L"d"}},
      {L"b%C3%A5%20.html#%C3%A5", HelpTarget{L"/html/b\u00E5 .html", L"\u00E5"}},
      {L"b%.html", HelpTarget{L"/html/b%.html", L""}},
      {L"http://b/c.html", std::nullopt},
      {L"mailto:b@c", std::nullopt},
      {L"file:///etc/passwd", std::nullopt},
      {L"javascript:b()", std::nullopt},
      {L"//b/c.html", std::nullopt},
      {L"\\\\b\\c.html", std::nullopt},
      {L"other.chm::/b.html", std::nullopt},
  };
  for (const auto& [address, target] : cases)
    EXPECT_EQ(ResolveHelpAddress(L"/html/a.html", address), target) << address;
}

TEST(HelpFiles, AreBesideTheProgramInTheThreadsLanguageFirst) {
  const SimulatedMachine machine;
  const std::filesystem::path folder = machine.ProgramFolder();
  std::filesystem::create_directory(folder / "sv");
  std::ofstream(folder / "sv" / "a.chm");
  const std::tuple<const wchar_t*, LANGID, std::filesystem::path> cases[] = {
      {L"a.chm", LANGID{0x409}, folder / "a.chm"},
      {L"a.chm", LANGID{0x41D}, folder / "sv/a.chm"},
      {L"b.chm", LANGID{0x41D}, folder / "b.chm"},
      {L"\\opt\\a.chm", LANGID{0x41D}, "/opt/a.chm"},
  };
  for (const auto& [file, language, found] : cases)
    EXPECT_EQ(FindHelpFile(file, language), found) << file << language;
}

TEST(HelpMarkup, ATopicIsReadAsItsTitleAndItsWords) {
  const std::pair<const wchar_t*, TopicText> cases[] = {
      {L"<TITLE>A\n b</TITLE><p>C</p><p>d<br>e</p>", {L"A b", L"C d e"}},
      {L"<p class='x>y' id=z>wo<b>rd</b>s &amp;&#229;&#xE4;&ouml;&nbsp;&x; 3 < 4</p>",
       {L"", L"words &\u00E5\u00E4\u00F6 &x; 3 < 4"}},
      {L"a<!-- <p>b --> c<style>d</style><script>e</script><?f?>", {L"", L"a c"}},
      {L"a<p", {L"", L"a"}},
      {L"a<p x=\"", {L"", L"a"}},
      {L"a<!--", {L"", L"a"}},
      {L"&#1114112;&#;&", {L"", L"&#1114112;&#;&"}},
      {L"", {}},
  };
  for (const auto& [markup, topic] : cases)
    EXPECT_EQ(TextOfTopic(markup), topic) << markup;
}

std::wstring Entry(const wchar_t* name, const wchar_t* local) {
  return std::wstring(L"<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"") + name +
         L"\"><param name=\"Local\" value=\"" + local + L"\"></OBJECT>";
}

TEST(HelpContents, AreTheListsOfASiteMap) {
  const auto at = [](const wchar_t* path) { return HelpTarget{path, {}}; };
  const std::wstring map =
      L"<OBJECT type=\"text/site properties\"><param name=\"Name\" value=\"x\">"
      L"</OBJECT><UL>" +
      Entry(L"A &amp; B", L"a.html") + L"<UL><UL>" + Entry(L"C", L"sub\\c.html") + L"</UL></UL>" +
      Entry(L"", L"x.html") + Entry(L"D", L"http://d/") + L"</UL></UL></UL>" +
      Entry(L"E", L"e.html");
  EXPECT_THAT(
      ParseSiteMap(map, L"/toc.hhc"),
      ElementsAre(HelpEntry{L"A & B", at(L"/a.html"), 0}, HelpEntry{L"C", at(L"/sub/c.html"), 1},
                  HelpEntry{L"D", std::nullopt, 0}, HelpEntry{L"E", at(L"/e.html"), 0}));
}

TEST(HelpPopups, AreFoundByNumberWithTheirLinesJoined) {
  constexpr wchar_t kSource[] =
      L"before\r\n.topic 1\r\nOne\r\n two \r\n\r\n\r\nThree\r\n\r\n"
      L".topic 2147483649\nBig\n.topic 3\n.topic 4x\nNot four\n.topic 99999999999\nToo big";
  const std::pair<std::uint32_t, std::optional<std::wstring>> cases[] = {
      {1, L"One two\nThree"}, {0x80000001, L"Big"}, {2, std::nullopt},
      {3, std::nullopt},      {4, std::nullopt},    {0, std::nullopt},
  };
  for (const auto& [number, text] : cases)
    EXPECT_EQ(FindPopupText(kSource, number), text) << number;
}

TEST(HelpSearch, FindsTopicsThatContainEveryWordAndTellsWhatToSelect) {
  const std::vector<HelpTopic> topics = {{L"/a", L"Limits", L"A time limit and a download limit"},
                                         {L"/b", L"Hours", L"The limit of TIME"},
                                         {L"/c", L"\u00C5ngra", L"Nothing"}};
  const std::pair<const wchar_t*, std::vector<HelpResult>> cases[] = {
      {L"  Time  limit ", {{L"Limits", L"/a", L"time limit"}, {L"Hours", L"/b", L"time"}}},
      {L"download", {{L"Limits", L"/a", L"download"}}},
      {L"hours limit", {{L"Hours", L"/b", L"limit"}}},
      {L"\u00E5ng", {{L"\u00C5ngra", L"/c", L""}}},
      {L"time nothing", {}},
      {L" ", {}},
  };
  for (const auto& [words, results] : cases)
    EXPECT_EQ(SearchTopics(topics, words), results) << words;
}

TEST(HelpHistory, BackAndForwardFollowTheVisitsUntilThereIsANewOne) {
  HelpHistory history;
  history.GoBack();
  EXPECT_EQ(history.Current(), HelpTarget());
  // A letter is a visit, "<" and ">" are Back and Forward.
  std::string seen;
  for (const char step : std::string("abbc<<<>dd><>")) {
    if (step == '<') {
      history.GoBack();
    } else if (step == '>') {
      history.GoForward();
    } else {
      history.Visit({std::wstring(1, static_cast<wchar_t>(step)), {}});
    }
    seen += static_cast<char>(history.Current().path[0]);
  }
  EXPECT_EQ(seen, "abbcbaabdddbd");
  EXPECT_FALSE(history.CanGoForward());
  EXPECT_TRUE(history.CanGoBack());
}

}  // namespace
}  // namespace platform
