# The Windows in-process server. Everything is linked statically: the DLL imports nothing but the system's own.
add_compile_definitions(UNICODE _WIN32_WINNT=0x0601)
add_link_options(-static -static-libgcc -static-libstdc++)

# The adapters of the seam.
qva_sources(windows_sources platform/windows platform/windows/forms platform/windows/services)
add_library(qva_windows STATIC ${windows_sources})
target_link_libraries(qva_windows PUBLIC qva_platform ole32 oleaut32 uuid advapi32 user32 gdi32)
# What each call of Excel goes through is worth its size.
set_source_files_properties(${CMAKE_SOURCE_DIR}/platform/windows/DispatchNames.cpp
                            ${CMAKE_SOURCE_DIR}/platform/windows/DispatchObject.cpp
                            PROPERTIES COMPILE_OPTIONS -O2 SKIP_UNITY_BUILD_INCLUSION ON)

# What asks Windows for the current look of its controls; part of each file that shows windows.
enable_language(RC)
include(cmake/Version.cmake)
set(visual_styles ${CMAKE_SOURCE_DIR}/platform/windows/forms/VisualStyles.rc)

# The benchmarks, which run under Wine, too.
if(QVA_BENCH)
  foreach(bench calls load)
    add_executable(qva_${bench}_bench ${CMAKE_SOURCE_DIR}/bench/windows/${bench}_bench.cpp)
    target_link_libraries(qva_${bench}_bench PRIVATE qva_windows)
  endforeach()
endif()

# The server.
# The type library: the IDL compiler makes it and the C++ header from the written contract.
find_program(WIDL widl REQUIRED)
set(wine_idl_folder /usr/include/wine/wine/windows)
set(wine_tlb_folder /usr/lib/x86_64-linux-gnu/wine/x86_64-windows)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(widl_bitness --win64)
  set(manifest_architecture amd64)
else()
  set(widl_bitness --win32)
  set(manifest_architecture x86)
endif()
set(idl ${CMAKE_SOURCE_DIR}/server/com/QVA_Varnholt.idl)
set(idl_output ${CMAKE_BINARY_DIR}/idl)
file(MAKE_DIRECTORY ${idl_output})
add_custom_command(
  OUTPUT ${idl_output}/QVA_Varnholt.tlb
  COMMAND ${WIDL} ${widl_bitness} -I ${wine_idl_folder} -L ${wine_tlb_folder} -t -o ${idl_output}/QVA_Varnholt.tlb ${idl}
  DEPENDS ${idl} VERBATIM)
add_custom_command(
  OUTPUT ${idl_output}/QVA_Varnholt_idl.h
  COMMAND ${WIDL} ${widl_bitness} -I ${wine_idl_folder} -L ${wine_tlb_folder} -h -o ${idl_output}/QVA_Varnholt_idl.h ${idl}
  DEPENDS ${idl} VERBATIM)
add_custom_command(
  OUTPUT ${idl_output}/QVA_Varnholt_faces.h
  COMMAND ${CMAKE_COMMAND} -DIDL=${idl} -DOUTPUT=${idl_output}/QVA_Varnholt_faces.h -P ${CMAKE_SOURCE_DIR}/cmake/Faces.cmake
  DEPENDS ${idl} ${CMAKE_SOURCE_DIR}/cmake/Faces.cmake VERBATIM)
add_custom_target(qva_idl DEPENDS ${idl_output}/QVA_Varnholt.tlb ${idl_output}/QVA_Varnholt_idl.h
                                  ${idl_output}/QVA_Varnholt_faces.h)

# What every COM server of the project is made of; each brings the faces of its own classes.
add_library(qva_com STATIC server/com/MemberIds.cpp server/com/ObjectCalls.cpp server/com/Registration.cpp
                           server/com/ServerEntries.cpp server/com/ServerErrors.cpp server/com/ServerModule.cpp)
target_link_libraries(qva_com PUBLIC qva_windows qva_library)

# A small file loads fast, and nothing here computes for long.
set(CMAKE_CXX_FLAGS_RELEASE "-Os -DNDEBUG -ffunction-sections -fdata-sections")

# The product.
add_library(QVA_Varnholt SHARED server/com/CallLog.cpp server/com/Exports.cpp server/com/LibraryRegistration.cpp
                                server/com/ServerClasses.cpp server/com/StandardLibrary.cpp server/com/QVA_Varnholt.def
                                server/com/QVA_Varnholt.rc ${visual_styles})
qva_version(QVA_Varnholt "QVA_Varnholt report library")
set_target_properties(QVA_Varnholt PROPERTIES PREFIX "" UNITY_BUILD OFF RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
set_source_files_properties(server/com/QVA_Varnholt.rc PROPERTIES OBJECT_DEPENDS ${idl_output}/QVA_Varnholt.tlb)
target_include_directories(QVA_Varnholt SYSTEM PRIVATE ${idl_output})
target_link_libraries(QVA_Varnholt PRIVATE qva_com)
target_link_options(QVA_Varnholt PRIVATE -Wl,--enable-stdcall-fixup,--gc-sections $<$<CONFIG:Release>:-s>)
add_dependencies(QVA_Varnholt qva_idl)

# The registration-free manifest, beside the library.
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/QVA_Varnholt.manifest
  COMMAND ${CMAKE_COMMAND} -DIDL=${idl} -DARCHITECTURE=${manifest_architecture}
          -DOUTPUT=${CMAKE_BINARY_DIR}/QVA_Varnholt.manifest -P ${CMAKE_SOURCE_DIR}/cmake/Manifest.cmake
  DEPENDS ${idl} ${CMAKE_SOURCE_DIR}/cmake/Manifest.cmake VERBATIM)
add_custom_target(qva_manifest ALL DEPENDS ${CMAKE_BINARY_DIR}/QVA_Varnholt.manifest)

option(QVA_DEMO_HOST "Build the demo host, for which SQLite's source is fetched" ON)
if(QVA_DEMO_HOST)
  include(cmake/DemoHost.cmake)
elseif(QVA_TESTS)
  message(FATAL_ERROR "The tests need the demo host: QVA_DEMO_HOST")
endif()

if(QVA_TESTS)
  include(cmake/WindowsTests.cmake)
endif()

include(cmake/Doctor.cmake)
