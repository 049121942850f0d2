// Want of memory, one allocation at a time.
#pragma once

namespace qva {

/// Lets the n-th `new` of a single object or buffer from now on fail with std::bad_alloc; the others work.
/// One at a time.
class OutOfMemory {
 public:
  explicit OutOfMemory(long at);
  ~OutOfMemory();
  OutOfMemory(const OutOfMemory&) = delete;
  OutOfMemory& operator=(const OutOfMemory&) = delete;

  bool has_failed() const;
};

}  // namespace qva
