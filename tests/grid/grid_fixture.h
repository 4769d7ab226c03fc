// A grid of 100 rows and 10 columns in a client area of 400 x 300 pixels, with the window system
// that writes down what it is asked. Cells are 50 wide and 21 high, as are the headings.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>

#include "grid/grid.h"
#include "recording_grid_system.h"

namespace quillgate {

class GridFixture : public testing::Test {
 protected:
  GridFixture() {
    slot_.cols = 10;
    slot_.savedWidth = 400;
    slot_.savedHeight = 300;
  }

  // What was asked so far and begins with one of these, in order; all of it is forgotten.
  std::string Take(std::initializer_list<const char*> beginnings = {""}) {
    std::string found;
    for (const std::string& call : std::exchange(system_.calls, {})) {
      if (std::ranges::any_of(beginnings, [&](auto* each) { return call.starts_with(each); }))
        found += (found.empty() ? "" : "; ") + call;
    }
    return found;
  }
  // What is asked of all that begins so, by one act after the other.
  struct Step {
    const char* what;
    std::function<void()> act;
    std::string asked;
  };
  void ExpectAsked(std::initializer_list<const char*> beginnings,
                   std::initializer_list<Step> steps) {
    for (const Step& each : steps) {
      Take();
      each.act();
      EXPECT_EQ(Take(beginnings), each.asked) << each.what;
    }
  }
  // The parent, or the window, does so whenever it is asked what begins with that.
  void When(const std::string& beginning, std::function<void(Grid& grid)> act) {
    system_.onCall = [=, this](const std::string& call) {
      if (!call.starts_with(beginning)) return;
      Grid grid(slot_, system_);
      act(grid);
    };
  }

  void PutCursor(GridCell cell) {
    slot_.cursorRow = cell.row;
    slot_.cursorCol = cell.col;
  }
  void PutHome(GridCell cell) {
    slot_.homeRow = cell.row;
    slot_.homeCol = cell.col;
  }
  GridCell Home() const { return {slot_.homeRow, slot_.homeCol}; }

  RecordingGridSystem system_;
  GridSlot slot_;
  Grid grid_{slot_, system_};
};

}  // namespace quillgate
