// Memory that runs out: while one of these lives, its thread gets as many allocations by operator
// new as were granted, and std::bad_alloc after that.
#pragma once

namespace quillgate {

class FailingMemory {
 public:
  explicit FailingMemory(int granted);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
};

}  // namespace quillgate
