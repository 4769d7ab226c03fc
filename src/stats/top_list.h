// The rankings of users over the whole log. Plain values without windows. Any thread.
#pragma once

#include <string>

#include "storage/db_row.h"
#include "usage/usage_total.h"

namespace quillgate {

// The statement that selects the five users with the largest totals, and these.
std::wstring TopListStatement(UsageMeasure measure);

// Two texts with a line for each user, each line ended by "\n".
struct Ranking {
  std::wstring names;   // with the rank, as in "1. Anna"
  std::wstring values;  // the totals in the user's formats
};

// The rows of the statement above, in the order in which they are ranked.
Ranking RankingOf(const DbRows& rows, UsageMeasure measure);

}  // namespace quillgate
