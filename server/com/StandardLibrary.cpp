// Parts of the C++ library that the DLL replaces by smaller ones of its own. What they report - through an
// error output, through the texts of standard exceptions - nobody can see in Excel: whatever is no automation
// error becomes "Internal error" at the border. The library's own would bring its demangler and a second kind
// of strings into the DLL, a tenth of it.
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <new>

namespace __gnu_cxx {

/// What happens when an exception meets a noexcept boundary.
void __verbose_terminate_handler();
void __verbose_terminate_handler() {
  std::abort();
}

}  // namespace __gnu_cxx

// The functions by which the library's headers throw. The linker takes these instead of the archive's, as
// long as all that are used are here; otherwise it says that they are defined twice.
namespace std {

void __throw_bad_alloc() {
  throw bad_alloc();
}
void __throw_bad_array_new_length() {
  throw bad_array_new_length();
}
void __throw_bad_function_call() {
  throw exception();
}
void __throw_logic_error(const char*) {
  throw exception();
}
void __throw_invalid_argument(const char*) {
  throw exception();
}
void __throw_length_error(const char*) {
  throw exception();
}
void __throw_out_of_range(const char*) {
  throw exception();
}
void __throw_out_of_range_fmt(const char*, ...) {
  throw exception();
}

}  // namespace std
