#include "grid/cell_store.h"

#include <gtest/gtest.h>

#include <iterator>
#include <new>
#include <random>

#include "failing_memory.h"

namespace quillgate {
namespace {

CellRecord Record(std::wstring text) {
  return {false, CellType::kText, std::move(text)};
}

std::wstring TextAt(const CellStore& store, GridCell cell) {
  const CellRecord* record = store.Find(cell);
  return record == nullptr ? L"(none)" : record->text;
}

// Row, column: the order that is asked of the store.
using Model = std::map<std::pair<std::int32_t, std::int32_t>, std::wstring>;

void ExpectSame(const CellStore& store, const Model& model) {
  ASSERT_EQ(store.Size(), model.size());
  for (const auto& [key, text] : model)
    ASSERT_EQ(TextAt(store, {key.first, key.second}), text);
  ASSERT_EQ(store.LastRow(),
            model.empty() ? std::nullopt : std::optional(std::prev(model.end())->first.first));
}

TEST(CellStore, CellsStoredAndRemovedInAnyOrderAreFoundAsAMapFindsThem) {
  std::mt19937 random(7);
  CellStore store;
  Model model;
  for (int step = 0; step < 4000; ++step) {
    const GridCell cell{static_cast<std::int32_t>(random() % 12) - 3,
                        static_cast<std::int32_t>(random() % 12) - 3};
    if (random() % 3 == 0) {
      EXPECT_EQ(store.Remove(cell), model.erase({cell.row, cell.col}) == 1);
    } else {
      const std::wstring text = std::to_wstring(step);
      store.Store(cell, Record(text));
      model[{cell.row, cell.col}] = text;
    }
    if (step % 100 == 0) ExpectSame(store, model);
  }
  ExpectSame(store, model);
  for (const auto& [key, text] : Model(model)) {
    EXPECT_TRUE(store.Remove({key.first, key.second}));
    model.erase(key);
  }
  ExpectSame(store, model);
}

TEST(CellStore, TheCellsAroundOneThatIsStoredAreNotFound) {
  CellStore store;
  store.Store({5, 5}, Record(L"here"));
  for (const GridCell cell : {GridCell{5, 4}, {5, 6}, {4, 5}, {6, 5}, {-5, 5}, {5, -5}})
    EXPECT_EQ(TextAt(store, cell), L"(none)") << cell.row << "," << cell.col;
}

TEST(CellStore, ALastRowThatLosesItsOnlyCellIsNotTheLastRowAnyLonger) {
  CellStore store;
  store.Store({3, 1}, Record(L""));
  store.Store({9, 1}, Record(L""));
  store.Remove({9, 1});
  EXPECT_EQ(store.LastRow(), 3);
  store.Clear();
  EXPECT_EQ(store.LastRow(), std::nullopt);
  EXPECT_EQ(store.Size(), 0u);
}

// Each allocation that storing makes fails once.
TEST(CellStore, StoringWithoutMemoryChangesNothing) {
  const std::wstring longText(40, L'x');
  for (const GridCell cell : {GridCell{1, 2}, {2, 1}}) {  // a known row and a new one
    int granted = 0;
    for (bool hasFailed = true; hasFailed; ++granted) {
      CellStore store;
      store.Store({1, 1}, Record(longText));
      CellRecord record = Record(L"new");
      try {
        const FailingMemory memory(granted);
        store.Store(cell, std::move(record));
        hasFailed = false;
      } catch (const std::bad_alloc&) {
        ExpectSame(store, {{{1, 1}, longText}});
      }
      if (!hasFailed) ExpectSame(store, {{{1, 1}, longText}, {{cell.row, cell.col}, L"new"}});
    }
    EXPECT_GT(granted, 1) << "nothing has failed";
  }
}

struct TypeCase {
  const wchar_t* text;
  CellType type;
};

class CellTypeTest : public testing::TestWithParam<TypeCase> {};

TEST_P(CellTypeTest, ATextHasTheTypeThatItsCharactersGive) {
  EXPECT_EQ(TypeOf(GetParam().text), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(
    CheckBoxesAndGraphics, CellTypeTest,
    testing::Values(TypeCase{L"TRUE", CellType::kTrue}, TypeCase{L"true", CellType::kTrue},
                    TypeCase{L"tRuE", CellType::kTrue}, TypeCase{L"False", CellType::kFalse},
                    TypeCase{L"TRUE ", CellType::kText}, TypeCase{L"TRU", CellType::kText},
                    TypeCase{L"~7", CellType::kGraphic}, TypeCase{L"~", CellType::kGraphic},
                    TypeCase{L"~TRUE", CellType::kGraphic}, TypeCase{L" ~7", CellType::kText}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, CellTypeTest,
    testing::Values(TypeCase{L"12.5", CellType::kNumber}, TypeCase{L"-5", CellType::kNumber},
                    TypeCase{L"+5", CellType::kNumber}, TypeCase{L"5.", CellType::kNumber},
                    TypeCase{L".5", CellType::kNumber}, TypeCase{L"1,5", CellType::kNumber},
                    TypeCase{L"08:00", CellType::kNumber}, TypeCase{L"50%", CellType::kNumber},
                    TypeCase{L"\u20AC5", CellType::kNumber},
                    TypeCase{L"5\u00B0", CellType::kNumber},
                    TypeCase{L"2\u00D73", CellType::kNumber}));

INSTANTIATE_TEST_SUITE_P(
    Texts, CellTypeTest,
    testing::Values(TypeCase{L"", CellType::kText}, TypeCase{L"-", CellType::kText},
                    TypeCase{L"+", CellType::kText}, TypeCase{L".", CellType::kText},
                    TypeCase{L"1.2.3", CellType::kText}, TypeCase{L"5-", CellType::kText},
                    TypeCase{L"1+1", CellType::kText}, TypeCase{L"--5", CellType::kText},
                    TypeCase{L"5 5", CellType::kText}, TypeCase{L" 5", CellType::kText},
                    TypeCase{L"5 ", CellType::kText}, TypeCase{L"5a", CellType::kText},
                    TypeCase{L"5z", CellType::kText}, TypeCase{L"5\u00C0", CellType::kText},
                    TypeCase{L"Z5", CellType::kText}, TypeCase{L"5\u00E5", CellType::kText},
                    TypeCase{L"5\u0416", CellType::kText}, TypeCase{L"5\u6642", CellType::kText},
                    TypeCase{L"\u20AC", CellType::kText}));

}  // namespace
}  // namespace quillgate
