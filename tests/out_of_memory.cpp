#include "tests/out_of_memory.h"

#include <dlfcn.h>

#include <cstddef>
#include <new>

namespace {

thread_local long countdown = 0;  ///< allocations until the one that fails, that one included; 0 for none
thread_local bool fails_for_ever = false;
thread_local bool failed = false;
thread_local int pauses = 0;

}  // namespace

/// Stands before the allocator of the C++ library, or of the sanitizer, which goes on doing the work.
void* operator new(std::size_t size) {
  if (countdown > 0 && pauses == 0) {
    if (countdown == 1) failed = true;
    if (countdown > 1 || !fails_for_ever) --countdown;
    if (failed) throw std::bad_alloc();
  }
  static void* const original = dlsym(RTLD_NEXT, "_Znwm");
  return reinterpret_cast<void* (*)(std::size_t)>(original)(size);
}

namespace qva {

OutOfMemory::OutOfMemory(long at, Repeat repeat) {
  failed = false;
  fails_for_ever = repeat == Repeat::ForEver;
  countdown = at;
}

OutOfMemory::~OutOfMemory() {
  countdown = 0;
}

bool OutOfMemory::has_failed() const {
  return failed;
}

void OutOfMemory::Pause() {
  ++pauses;
}

void OutOfMemory::Resume() {
  --pauses;
}

}  // namespace qva
