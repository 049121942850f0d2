// Want of memory, from one allocation on.
#pragma once

namespace qva {

/// Lets the n-th `new` of a single object or buffer from now on fail with std::bad_alloc: that one alone, or
/// every later one, too. One at a time.
class OutOfMemory {
 public:
  enum class Repeat { Once, ForEver };

  explicit OutOfMemory(long at, Repeat repeat = Repeat::Once);
  ~OutOfMemory();
  OutOfMemory(const OutOfMemory&) = delete;
  OutOfMemory& operator=(const OutOfMemory&) = delete;

  bool has_failed() const;

  /// What is allocated between the two neither counts nor fails: it stands for another process's work. They
  /// nest.
  static void Pause();
  static void Resume();
};

}  // namespace qva
