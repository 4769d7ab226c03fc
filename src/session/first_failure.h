// Runs several pieces of work, each regardless of the others' failures, and rethrows the first
// failure. Used by one thread.
#pragma once

#include <exception>

namespace quillgate {

class FirstFailure {
 public:
  template <class Work>
  void Run(Work&& work) {
    try {
      work();
    } catch (...) {
      Note();
    }
  }
  // Stores the exception that is being handled, if it is the first.
  void Note() {
    if (!failure_) failure_ = std::current_exception();
  }

  bool HasFailed() const { return failure_ != nullptr; }
  // Throws the first failure; returns when there is none.
  void Rethrow() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  std::exception_ptr failure_;
};

}  // namespace quillgate
