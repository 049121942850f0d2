// What happens when an exception meets a noexcept boundary: the end, without the C++ library's account of it.
// That account would bring its demangler into the DLL, for an error output that Excel does not have.
#include <cstdlib>

namespace __gnu_cxx {

void __verbose_terminate_handler();
void __verbose_terminate_handler() {
  std::abort();
}

}  // namespace __gnu_cxx
