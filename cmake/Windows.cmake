# The Windows in-process server. Everything is linked statically: the DLL imports nothing but the system's own.
add_compile_definitions(UNICODE _WIN32_WINNT=0x0601)
add_link_options(-static -static-libgcc -static-libstdc++)

# The adapters of the seam.
qva_sources(windows_sources platform/windows)
add_library(qva_windows STATIC ${windows_sources})
target_link_libraries(qva_windows PUBLIC qva_platform ole32 oleaut32 uuid advapi32 user32 gdi32)

# The adapters' tests: a console program that runs under Wine.
if(QVA_TESTS)
  set(googletest /usr/src/googletest)  # Debian's package of the sources
  add_library(qva_windows_gtest STATIC EXCLUDE_FROM_ALL ${googletest}/googletest/src/gtest-all.cc
                                       ${googletest}/googlemock/src/gmock-all.cc)
  target_include_directories(qva_windows_gtest SYSTEM PUBLIC ${googletest}/googletest/include
                                                             ${googletest}/googlemock/include)
  target_include_directories(qva_windows_gtest PRIVATE ${googletest}/googletest ${googletest}/googlemock)
  target_compile_options(qva_windows_gtest PRIVATE -w)

  file(GLOB windows_test_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/windows/*.cpp)
  add_executable(qva_windows_tests ${windows_test_sources})
  target_link_libraries(qva_windows_tests PRIVATE qva_windows qva_memory qva_windows_gtest)
endif()

# The server.
