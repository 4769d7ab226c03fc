// A grid of 100 rows and 10 columns in a client area of 400 x 300 pixels, with the window system
// that writes down what it is asked.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "grid/grid.h"
#include "recording_grid_system.h"

namespace quillgate {

class GridFixture : public testing::Test {
 protected:
  GridFixture() {
    slot_.controlId = 7;
    slot_.cols = 10;
    slot_.savedWidth = 400;
    slot_.savedHeight = 300;
  }

  // What was asked so far and begins with one of these, in order; all of it is forgotten.
  std::vector<std::string> Take(const std::vector<std::string>& beginnings) {
    std::vector<std::string> found;
    for (const std::string& call : system_.Take()) {
      if (std::any_of(beginnings.begin(), beginnings.end(),
                      [&](const std::string& beginning) { return call.starts_with(beginning); }))
        found.push_back(call);
    }
    return found;
  }
  std::vector<std::string> TakeNotifications() { return Take({"Notify "}); }

  RecordingGridSystem system_;
  GridSlot slot_;
  Grid grid_{slot_, system_};
};

}  // namespace quillgate
