# The embedded host: a module of its own, loaded at run time and never linked into the library.
find_package(SQLite3 REQUIRED)

qva_sources(host_sources host)
list(FILTER host_sources EXCLUDE REGEX "/module\\.cpp$")
add_library(qva_host_objects STATIC ${host_sources})
target_link_libraries(qva_host_objects PUBLIC qva_platform SQLite::SQLite3)

if(EXISTS ${CMAKE_SOURCE_DIR}/host/module.cpp)
  add_library(qva_host MODULE host/module.cpp)
  target_link_libraries(qva_host PRIVATE qva_host_objects)
endif()
