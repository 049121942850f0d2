# The demo host: the embedded host (cmake/Host.cmake) as a COM server of its own, with SQLite inside. The library has
# nothing of it.
enable_language(C)
set(CMAKE_C_FLAGS_RELEASE ${CMAKE_CXX_FLAGS_RELEASE})

# SQLite's source is fetched once for all builds, and compiled as it comes.
set(sqlite ${CMAKE_SOURCE_DIR}/build/downloads/sqlite)
execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/sqlite.sh ${sqlite} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "The demo host needs SQLite's source, which could not be had (see above). "
                      "-DQVA_DEMO_HOST=OFF builds without it; packages need it.")
endif()
add_library(qva_sqlite STATIC ${sqlite}/sqlite3.c)
set_target_properties(qva_sqlite PROPERTIES UNITY_BUILD OFF COMPILE_OPTIONS "-w;-O1")
target_compile_definitions(qva_sqlite PRIVATE SQLITE_OMIT_LOAD_EXTENSION SQLITE_DEFAULT_MEMSTATUS=0)
target_include_directories(qva_sqlite SYSTEM PUBLIC ${sqlite})

qva_sources(demo_sources host host/windows server/demo)
list(FILTER demo_sources EXCLUDE REGEX "/host/module\\.cpp$")
add_library(QVA_DemoHost SHARED ${demo_sources} server/demo/QVA_DemoHost.def ${visual_styles})
qva_version(QVA_DemoHost "QVA_Varnholt demo host")
set_target_properties(QVA_DemoHost PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
target_link_libraries(QVA_DemoHost PRIVATE qva_com qva_sqlite)
target_link_options(QVA_DemoHost PRIVATE -Wl,--enable-stdcall-fixup,--gc-sections $<$<CONFIG:Release>:-s>)

# The server looks for its files in the folder "host" beside it.
foreach(file sample.sql QVAFormRes.txt)
  configure_file(host/${file} ${CMAKE_BINARY_DIR}/host/${file} COPYONLY)
endforeach()
