# The tests of the Windows adapters and of the server: console programs that run under Wine.
# Most of the time goes into what all of them include; who changes one of them waits for it in the tests for Linux.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 16)

# As in tests/CMakeLists.txt.
add_compile_options(-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)

set(googletest /usr/src/googletest)  # Debian's package of the sources
add_library(qva_windows_gtest STATIC ${googletest}/googletest/src/gtest-all.cc
                                     ${googletest}/googlemock/src/gmock-all.cc)
target_include_directories(qva_windows_gtest SYSTEM PUBLIC ${googletest}/googletest/include
                                                           ${googletest}/googlemock/include)
target_include_directories(qva_windows_gtest PRIVATE ${googletest}/googletest ${googletest}/googlemock)
target_compile_options(qva_windows_gtest PRIVATE -w -Og)

# Tests, and what they alone use, are compiled as often as they are run.
foreach(stand_in qva_commandbars qva_memory)
  target_compile_options(${stand_in} PRIVATE -Og)
endforeach()

# The adapters. What cannot differ by bitness runs in 64 bits alone: the seam's own tests, which run here, too, but
# those that need Linux' files, and the windows, for which Wine's 32-bit side has no display.
file(GLOB windows_test_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/windows/*.cpp)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  qva_sources(seam_test_sources tests/platform tests/platform/filesystem tests/platform/forms tests/platform/lithuanian
              tests/platform/memory tests/platform/recordset tests/server)
  list(FILTER seam_test_sources EXCLUDE REGEX "unattended_")
  list(APPEND windows_test_sources ${seam_test_sources})
else()
  list(FILTER windows_test_sources EXCLUDE REGEX "/(accessibility|(form|grid|list_chooser)_[a-z_]*)_test\\.cpp$")
endif()
add_executable(qva_windows_tests ${windows_test_sources} ${visual_styles})
target_link_libraries(qva_windows_tests PRIVATE qva_library qva_windows qva_memory qva_windows_gtest oleacc)
target_compile_options(qva_windows_tests PRIVATE -Og)
# No header of our own is precompiled: see tests/CMakeLists.txt.
target_precompile_headers(qva_windows_tests PRIVATE <gmock/gmock.h> <gtest/gtest.h> <functional> <map> <sstream>
                          <unordered_map> <variant>)

# The test bench: the in-memory Excel and host as automation objects, and the clients that drive the library.
qva_sources(bench_sources tests/com/bench)
add_library(QVA_TestBench SHARED ${bench_sources} tests/com/bench/QVA_TestBench.def ${visual_styles})
target_compile_options(QVA_TestBench PRIVATE -Og)
set_target_properties(QVA_TestBench PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
target_link_libraries(QVA_TestBench PRIVATE qva_com qva_memory)
target_link_options(QVA_TestBench PRIVATE -Wl,--enable-stdcall-fixup)

qva_sources(com_client_sources tests/com/client)
add_executable(qva_com_tests ${com_client_sources})
# It defines the identifiers that the other sources' headers declare.
set_source_files_properties(tests/com/client/main.cpp PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
target_include_directories(qva_com_tests SYSTEM PRIVATE ${idl_output})
target_link_libraries(qva_com_tests PRIVATE qva_windows qva_library qva_windows_gtest psapi)
target_compile_options(qva_com_tests PRIVATE -Og)
target_precompile_headers(qva_com_tests REUSE_FROM qva_windows_tests)
add_dependencies(qva_com_tests qva_idl QVA_Varnholt QVA_TestBench QVA_DemoHost)
