# The embedded host: a module of its own, loaded at run time and never linked into the library.
find_package(SQLite3 REQUIRED)

qva_sources(host_sources host host/posix)
list(FILTER host_sources EXCLUDE REGEX "/module\\.cpp$")
add_library(qva_host_objects STATIC ${host_sources})
target_link_libraries(qva_host_objects PUBLIC qva_platform SQLite::SQLite3)

add_library(qva_host MODULE host/module.cpp)
target_link_libraries(qva_host PRIVATE qva_host_objects)

# The module looks for its files in the folder "host" beside it.
foreach(file sample.sql QVAFormRes.txt)
  configure_file(host/${file} ${CMAKE_BINARY_DIR}/host/${file} COPYONLY)
endforeach()
