# What makes a mistake in memory harder to use, in every release build for Linux: stack protectors, checked calls
# of the C library, and relocations that are resolved at the start and read-only from then on.
# tools/check-modules.sh holds the modules against it.
if(NOT WIN32 AND CMAKE_BUILD_TYPE STREQUAL "Release")
  add_compile_options(-fstack-protector-strong)
  # Some compilers define it themselves.
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
