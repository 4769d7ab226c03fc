#include "platform/tools/rescomp/dialog_statement.h"

#include <gmock/gmock.h>

#include "platform/resources/script_fixture.h"

namespace rescomp {
namespace {

using DialogScript = ScriptFixture;

DialogTemplate Read(const std::string& statement) {
  TokenStream tokens(ReadTokens(statement, "script.i"));
  return ReadDialogStatement(tokens);
}

DialogItem ReadItem(const std::string& control) {
  return Read("0, 0, 9, 9\n{ " + control + " }").items.at(0);
}

TEST_F(DialogScript, ATemplateIsItsHeaderAndItsItemsAtMultiplesOfFour) {
  const auto resources = Compile(
      "7 DIALOGEX 1, -2, 300, 4, 5\nEXSTYLE 6\nSTYLE 0x80000000\nCAPTION \"\xC3\xA5\"\n"
      "FONT 8, \"F\", 700, 1, 2\nBEGIN LTEXT \"t\", -1, 1, 2, 3, 4, 0, 9, 0x807C0001 END\n");
  ASSERT_EQ(resources.size(), 1u);
  EXPECT_EQ(resources[0].type, 5);
  const Bytes expected = {1,    0,    0xFF, 0xFF, 5,    0,    0,    0,             // help
                          6,    0,    0,    0,    0x40, 0,    0xC0, 0x80,          // styles
                          1,    0,    1,    0,    0xFE, 0xFF, 44,   1,    4,   0,  // items, rect
                          0,    0,    0,    0,    0xE5, 0,    0,    0,             // caption
                          8,    0,    0xBC, 2,    1,    2,    'F',  0,    0,   0,  // font
                          1,    0,    0x7C, 0x80, 9,    0,    0,    0,    0,   0, 0, 0x50, 1, 0,
                          2,    0,    3,    0,    4,    0,  // rect
                          0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x82, 0,    't', 0, 0, 0,    0, 0};
  EXPECT_EQ(resources[0].data, expected);
}

TEST_F(DialogScript, TheStyleTellsOfCaptionAndFontWhateverTheirOrder) {
  EXPECT_EQ(Read("0,0,9,9\n{ }").style, 0x80880000);
  EXPECT_EQ(Read("0,0,9,9\nCAPTION \"a\"\n{ }").style, 0x80C80000);
  EXPECT_EQ(Read("0,0,9,9\nCAPTION \"a\"\nSTYLE 0x40000000\n{ }").style, 0x40C00000u);
  EXPECT_EQ(Read("0,0,9,9\nFONT 8, \"F\"\nSTYLE 0x40000000\n{ }").style, 0x40000040u);
  EXPECT_EQ(Read("0,0,9,9\nSTYLE 0x40000040\n{ }").style, 0x40000000u);
}

TEST_F(DialogScript, EachKeywordHasItsClassAndStyle) {
  const struct {
    const char* control;
    std::uint16_t windowClass;
    std::uint32_t style;
  } kCases[] = {
      {"LTEXT \"\", 1, 0, 0, 1, 1", 0x82, 0x50020000},
      {"CTEXT \"\", 1, 0, 0, 1, 1", 0x82, 0x50020001},
      {"RTEXT \"\", 1, 0, 0, 1, 1", 0x82, 0x50020002},
      {"RTEXT \"\", 1, 0, 0, 1, 1, 0x80", 0x82, 0x50000082},
      {"ICON 3, 1, 0, 0, 1, 1", 0x82, 0x50000003},
      {"PUSHBUTTON \"\", 1, 0, 0, 1, 1", 0x80, 0x50010000},
      {"PUSHBUTTON \"\", 1, 0, 0, 1, 1, NOT 0x10000000 | 8", 0x80, 0x40010008},
      {"DEFPUSHBUTTON \"\", 1, 0, 0, 1, 1", 0x80, 0x50010001},
      {"CHECKBOX \"\", 1, 0, 0, 1, 1", 0x80, 0x50010002},
      {"AUTOCHECKBOX \"\", 1, 0, 0, 1, 1", 0x80, 0x50010003},
      {"RADIOBUTTON \"\", 1, 0, 0, 1, 1", 0x80, 0x50010004},
      {"GROUPBOX \"\", 1, 0, 0, 1, 1", 0x80, 0x50000007},
      {"AUTORADIOBUTTON \"\", 1, 0, 0, 1, 1", 0x80, 0x50010009},
      {"AUTORADIOBUTTON \"\", 1, 0, 0, 1, 1, (0x20000 | 0x8000)", 0x80, 0x50028009},
      {"EDITTEXT 1, 0, 0, 1, 1", 0x81, 0x50810000},
      {"EDITTEXT 1, 0, 0, 1, 1, 0x20 | NOT 0x800000", 0x81, 0x50010020},
      {"COMBOBOX 1, 0, 0, 1, 1", 0x85, 0x50010001},
      {"COMBOBOX 1, 0, 0, 1, 1, 3", 0x85, 0x50000003},
      {"CONTROL \"\", 1, \"button\", 0x10000, 0, 0, 1, 1", 0x80, 0x50010000},
      {"CONTROL \"\", 1, 0x83, 0, 0, 0, 1, 1", 0x83, 0x50000000},
  };
  for (const auto& each : kCases) {
    const DialogItem item = ReadItem(each.control);
    EXPECT_EQ(item.windowClass, TextOrNumber(each.windowClass)) << each.control;
    EXPECT_EQ(item.style, each.style) << each.control;
    EXPECT_EQ(item.id, 1u) << each.control;
    EXPECT_EQ(item.rect.width, 1) << each.control;
  }
}

TEST_F(DialogScript, AGeneralControlKeepsItsClassAndTellsItsNumbersInOrder) {
  const DialogItem item =
      ReadItem("CONTROL 70, 1, \"SysListView32\", 1, 2, 3, 4, 5, 0x200, 0x80000000 + 6");
  EXPECT_EQ(item.text, TextOrNumber(std::uint16_t{70}));
  EXPECT_EQ(item.windowClass, TextOrNumber(u"SysListView32"));
  EXPECT_EQ(item.rect.height, 5);
  EXPECT_EQ(item.exStyle, 0x200u);
  EXPECT_EQ(item.helpId, 0x80000006);
}

TEST_F(DialogScript, MistakesInsideADialogAreToldWithTheirLine) {
  const struct {
    const char* script;
    const char* error;
  } kCases[] = {
      {"1 DIALOGEX 0, 0, 1\n", "',' is expected"},
      {"1 DIALOGEX 0, 0, 40000, 1\n", "script.i:1: the coordinate must fit in 16 bits"},
      {"1 DIALOGEX 0, 0, 1, 1\nMENU 3\n", "script.i:2: 'MENU' is not known in a dialog"},
      {"1 DIALOGEX 0, 0, 1, 1\nSTYLE WS_UNDECLARED\n", "a number is expected before 'WS_UND"},
      {"1 DIALOGEX 0, 0, 1, 1\nFONT 8, \"F\", 400, 300\n", "must fit in 8 bits"},
      {"1 DIALOGEX 0, 0, 1, 1\n{\nPUSHBOX \"\", 1\n}\n", "script.i:3: 'PUSHBOX' is not a control"},
      {"1 DIALOGEX 0, 0, 1, 1\n{\nEDITTEXT 1, 0, 0, 1, 1\n", "'' is not a control"},
      {"1 DIALOGEX 0, 0, 1, 1\n{\nEDITTEXT \"\", 1, 0, 0, 1, 1\n}\n", "a number is expected"},
  };
  for (const auto& each : kCases)
    ExpectMistake(each.script, each.error);
}

}  // namespace
}  // namespace rescomp
