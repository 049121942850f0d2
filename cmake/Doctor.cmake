# The doctor: a console program that tells why the library does or does not serve on a machine. It knows the
# classes of library and demo host, and their registration, from their own sources.
qva_sources(doctor_program_sources tools/doctor/windows)
add_executable(qva-doctor ${doctor_program_sources} server/com/LibraryRegistration.cpp server/com/ServerClasses.cpp
                          server/demo/HostClasses.cpp)
qva_version(qva-doctor "QVA_Varnholt doctor")
set_target_properties(qva-doctor PROPERTIES UNITY_BUILD OFF RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
set_source_files_properties(tools/doctor/windows/MachineReader.cpp PROPERTIES
                            COMPILE_DEFINITIONS "QVA_DOCTOR_VERSION=u\"${PROJECT_VERSION}\"")
target_include_directories(qva-doctor SYSTEM PRIVATE ${idl_output})
target_link_libraries(qva-doctor PRIVATE qva_doctor qva_com version shell32)
target_link_options(qva-doctor PRIVATE -Wl,--gc-sections $<$<CONFIG:Release>:-s>)
add_dependencies(qva-doctor qva_idl)
