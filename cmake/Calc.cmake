# The LibreOffice component: the library behind the service that Basic's CreateObject asks, and the client of
# LibreOffice's own Excel object model.
set(LIBREOFFICE_DIR /usr/lib/libreoffice CACHE PATH "LibreOffice's installation folder")
set(uno_sdk ${LIBREOFFICE_DIR}/sdk)
set(uno_types ${LIBREOFFICE_DIR}/program/types.rdb ${LIBREOFFICE_DIR}/program/types/offapi.rdb)
set(uno_vba_types ${LIBREOFFICE_DIR}/program/types/oovbaapi.rdb)
if(NOT EXISTS ${uno_sdk}/bin/cppumaker OR NOT EXISTS ${uno_vba_types})
  message(FATAL_ERROR "LibreOffice's development files are missing: install libreoffice-dev and libreoffice-calc")
endif()

# Headers of the UNO interfaces, made once per build folder.
set(uno_headers ${CMAKE_BINARY_DIR}/uno-headers)
list(TRANSFORM uno_types PREPEND -X OUTPUT_VARIABLE uno_extra_types)
add_custom_command(
  OUTPUT ${uno_headers}/made
  COMMAND ${uno_sdk}/bin/cppumaker -Gc -O${uno_headers} ${uno_types}
  COMMAND ${uno_sdk}/bin/cppumaker -Gc -O${uno_headers} -Tooo.vba.XErrObject ${uno_vba_types} ${uno_extra_types}
  COMMAND ${CMAKE_COMMAND} -E touch ${uno_headers}/made
  DEPENDS ${uno_types} ${uno_vba_types}
  COMMENT "Making the headers of LibreOffice's interfaces")
add_custom_target(qva_uno_headers DEPENDS ${uno_headers}/made)

qva_sources(calc_sources platform/calc platform/calc/forms platform/calc/toolbars server/calc)
list(FILTER calc_sources EXCLUDE REGEX "/component\\.cpp$")
add_library(qva_calc_objects OBJECT ${calc_sources})
add_dependencies(qva_calc_objects qva_uno_headers)
target_include_directories(qva_calc_objects SYSTEM PUBLIC ${uno_headers} /usr/include/libreoffice)
target_compile_definitions(qva_calc_objects PUBLIC LINUX UNX CPPU_ENV=gcc3
                                            PRIVATE QVA_HOST_MODULE_NAME="$<TARGET_FILE_NAME:qva_host>")
target_link_directories(qva_calc_objects PUBLIC ${uno_sdk}/lib)
target_link_libraries(qva_calc_objects PUBLIC qva_library qva_posix qva_commandbars uno_cppuhelpergcc3 uno_cppu uno_sal
                                              uno_salhelpergcc3)

add_library(qva_calc MODULE server/calc/component.cpp)
target_link_libraries(qva_calc PRIVATE qva_calc_objects)
set_target_properties(qva_calc PROPERTIES BUILD_RPATH ${LIBREOFFICE_DIR}/program)
target_link_options(qva_calc PRIVATE -Wl,-z,defs)

# The report runner, which starts LibreOffice with the component.
add_executable(report-runner tools/report-runner/main.cpp)
target_link_libraries(report-runner PRIVATE qva_report_runner)
target_compile_definitions(report-runner PRIVATE QVA_VERSION="${PROJECT_VERSION}")
set_target_properties(report-runner PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tools)
