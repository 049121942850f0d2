# Warnings are errors everywhere; a warning that must stand is silenced at its place, with the reason.
add_compile_options(-Wall -Wextra -Wpedantic -Werror)
# The tables name only what differs from the defaults; the rest is initialised by the members themselves.
add_compile_options(-Wno-missing-field-initializers)
# GCC 12 sees overlapping copies in plain assignments to std::u16string (its bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Sources that are compiled together look like headers to the compiler, and so do the classes that each keeps for itself.
  add_compile_options(-Wno-subobject-linkage)
endif()

# Versions from 13 on take the reference that a builder of a member table gives for one into the builder.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 13)
  add_compile_options(-Wno-dangling-reference)
endif()
