#include "server/calc/ComponentFolder.h"

#include <dlfcn.h>

namespace qva::calc {

std::filesystem::path ComponentFolder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&ComponentFolder), &info) == 0 || !info.dli_fname) return {};
  return std::filesystem::path(info.dli_fname).parent_path();
}

}  // namespace qva::calc
