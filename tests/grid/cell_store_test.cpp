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
  const auto number = [&] { return static_cast<std::int32_t>(random() % 12) - 3; };
  CellStore store;
  Model model;
  for (int step = 0; step < 4000; ++step) {
    const GridCell cell{number(), number()};
    const auto known = model.find({cell.row, cell.col});
    ASSERT_EQ(TextAt(store, cell), known == model.end() ? L"(none)" : known->second);
    // More and more are removed.
    if (static_cast<int>(random() % 4000) < step) {
      EXPECT_EQ(store.Remove(cell), model.erase({cell.row, cell.col}) == 1);
    } else {
      const std::wstring text = std::to_wstring(step);
      store.Store(cell, Record(text));
      model[{cell.row, cell.col}] = text;
    }
    if (step % 100 == 0) ExpectSame(store, model);
  }
  ExpectSame(store, model);
  store.Clear();
  ExpectSame(store, {});
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
        grantedAllocations = granted;
        store.Store(cell, std::move(record));
        hasFailed = false;
      } catch (const std::bad_alloc&) {
        ExpectSame(store, {{{1, 1}, longText}});
      }
      grantedAllocations.reset();
      if (!hasFailed) ExpectSame(store, {{{1, 1}, longText}, {{cell.row, cell.col}, L"new"}});
    }
    EXPECT_GT(granted, 1) << "nothing has failed";
  }
}

TEST(CellType, ATextHasTheTypeThatItsCharactersGive) {
  const std::pair<CellType, std::vector<const wchar_t*>> cases[] = {
      {CellType::kTrue, {L"TRUE", L"true", L"tRuE"}},
      {CellType::kFalse, {L"False"}},
      {CellType::kGraphic, {L"~7", L"~", L"~TRUE"}},
      {CellType::kNumber,
       {L"12.5", L"-5", L"+5", L"5.", L".5", L"1,5", L"08:00", L"50%", L"\u20AC5", L"5\u00B0",
        L"2\u00D73"}},
      {CellType::kText,
       {L"",        L"-",       L"+",      L".",     L"1.2.3", L"5-",      L"1+1", L"--5",
        L"5 5",     L" 5",      L"5 ",     L"5a",    L"5z",    L"5\u00C0", L"Z5",  L"5\u00E5",
        L"5\u0416", L"5\u6642", L"\u20AC", L"TRUE ", L"TRU",   L" ~7"}}};
  for (const auto& [type, texts] : cases) {
    for (const wchar_t* text : texts)
      EXPECT_EQ(TypeOf(text), type) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace quillgate
