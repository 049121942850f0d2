// Preloaded into a batch: its LibreOffices have so much memory from the beginning; the copies that they make
// of themselves for jobs do not.
#include <errno.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstring>

namespace {

constexpr std::size_t kBytes = std::size_t{1200} * 1024 * 1024;

__attribute__((constructor)) void TakeMemory() {
  if (std::strcmp(program_invocation_short_name, "soffice.bin") != 0) return;
  void* const memory =
      mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
  if (memory != MAP_FAILED) madvise(memory, kBytes, MADV_DONTFORK);
}

}  // namespace
