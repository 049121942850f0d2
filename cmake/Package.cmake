# The Debian package, which CPack makes of the install rules here: the runner with all that it needs. tools/package.sh has
# the files made first that are in no build (target package-files).
set(made ${CMAKE_BINARY_DIR}/package)
# Not right below lib: CPack takes folders there for places of shared libraries, and has ldconfig called.
set(modules lib/qva-varnholt/modules)
set(data share/qva-varnholt)
set(documents share/doc/qva-varnholt)

# "host", "samples" and the help stand beside the modules, in a build and in an installation.
file(MAKE_DIRECTORY ${made}/beside)
foreach(folder host samples FReport)
  file(CREATE_LINK ../../../${data}/${folder} ${made}/beside/${folder} SYMBOLIC)
endforeach()
file(CREATE_LINK ../../qva-varnholt/FReport ${made}/guide SYMBOLIC)
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/samples ${CMAKE_BINARY_DIR}/samples SYMBOLIC)

add_custom_target(
  package-files
  COMMAND tools/help.sh $<TARGET_FILE:guide> ${made}
  COMMAND sh -c "gzip -9n < packaging/debian/changelog > ${made}/changelog.gz"
  COMMAND sh -c "help2man --no-info --section 1 --locale C.UTF-8 --name 'run report workbooks in LibreOffice' \
--include packaging/debian/report-runner.h2m $<TARGET_FILE:report-runner> | gzip -9n > ${made}/report-runner.1.gz"
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
  DEPENDS report-runner guide
  COMMENT "Making help, manual page and list of changes"
  VERBATIM)

install(TARGETS report-runner RUNTIME DESTINATION bin)
install(TARGETS qva_calc qva_host LIBRARY DESTINATION ${modules} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
install(DIRECTORY ${made}/beside/ DESTINATION ${modules})
install(FILES host/sample.sql host/QVAFormRes.txt DESTINATION ${data}/host)
install(DIRECTORY samples/ DESTINATION ${data}/samples FILES_MATCHING PATTERN *.fods PATTERN *.answers PATTERN *.bas)
install(DIRECTORY ${made}/FReport DESTINATION ${data})
foreach(document gidas guide diegimas installation klaida-429 error-429 libreoffice host-interface batch)
  install(FILES docs/${document}.md DESTINATION ${documents})
endforeach()
install(DIRECTORY docs/images DESTINATION ${documents})
install(FILES ${made}/guide ${made}/changelog.gz DESTINATION ${documents})
install(FILES packaging/oxt/rights-en.txt DESTINATION ${documents} RENAME copyright)
install(FILES ${made}/report-runner.1.gz DESTINATION share/man/man1)
install(FILES packaging/debian/completion.bash DESTINATION share/bash-completion/completions RENAME report-runner)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qva-varnholt)
set(CPACK_PACKAGE_VENDOR QVA_Varnholt)
set(CPACK_PACKAGE_CONTACT "QVA_Varnholt <qva-varnholt@example.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "runner of financial-report workbooks in LibreOffice")
set(CPACK_PACKAGE_DESCRIPTION
    "report-runner opens a report workbook in LibreOffice, runs its macros with the
automation library that they are written for, and leaves the finished report,
what it printed, and pictures of it in a folder. It makes new report workbooks
from a template, too. A sample company stands in for the accounting system.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
# LibreOffice's own libraries stand in its folder; it loads them before ours.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${LIBREOFFICE_DIR}/program)
set(CPACK_DEBIAN_PACKAGE_DEPENDS libreoffice-calc)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS poppler-utils)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
