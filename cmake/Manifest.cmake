# Writes the registration-free manifest: -DIDL=… -DARCHITECTURE=… -DOUTPUT=… -P Manifest.cmake
# The IDL is the one source of the identifiers.
file(READ ${IDL} text)
# Brackets and semicolons mean something else in CMake's lists.
string(REPLACE "[" "<" text "${text}")
string(REPLACE "]" ">" text "${text}")
string(REPLACE ";" " " text "${text}")
string(REGEX MATCH "uuid\\(([-0-9A-F]+)\\),[^>]*>\n*library ([A-Za-z_]+)" unused "${text}")
set(library_id ${CMAKE_MATCH_1})
set(library ${CMAKE_MATCH_2})

# The assembly's version is that of the interfaces, which stay as they are in newer versions of the library.
string(APPEND manifest "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
  "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
  "  <assemblyIdentity type=\"win32\" name=\"${library}\" version=\"1.0.0.0\" processorArchitecture=\"${ARCHITECTURE}\"/>\n"
  "  <file name=\"${library}.dll\">\n"
  "    <typelib tlbid=\"{${library_id}}\" version=\"1.0\" helpdir=\"\"/>\n")
string(REGEX MATCHALL "uuid\\([-0-9A-F]+\\),[^>]*>\n *coclass [A-Za-z_]+" classes "${text}")
foreach(class IN LISTS classes)
  string(REGEX MATCH "uuid\\(([-0-9A-F]+)\\).*coclass ([A-Za-z_]+)" unused "${class}")
  string(APPEND manifest "    <comClass clsid=\"{${CMAKE_MATCH_1}}\" progid=\"${library}.${CMAKE_MATCH_2}\""
    " threadingModel=\"Apartment\" tlbid=\"{${library_id}}\"/>\n")
endforeach()
string(APPEND manifest "  </file>\n")
string(REGEX MATCHALL "uuid\\([-0-9A-F]+\\), dual[^>]*>\n *interface [A-Za-z_]+" interfaces "${text}")
foreach(interface IN LISTS interfaces)
  string(REGEX MATCH "uuid\\(([-0-9A-F]+)\\).*interface ([A-Za-z_]+)" unused "${interface}")
  string(APPEND manifest "  <comInterfaceExternalProxyStub name=\"${CMAKE_MATCH_2}\" iid=\"{${CMAKE_MATCH_1}}\""
    " tlbid=\"{${library_id}}\"\n"
    "      proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\"/>\n")
endforeach()
string(APPEND manifest "</assembly>\n")
file(WRITE ${OUTPUT} "${manifest}")
