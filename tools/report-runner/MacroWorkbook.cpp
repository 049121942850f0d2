#include "tools/report-runner/MacroWorkbook.h"

#include "server/calc/Xml.h"
#include "server/calc/entry_macro.h"

namespace qva {

std::string WorkbookWithMain(std::string_view lines) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0"
 xmlns:ooo="http://openoffice.org/2004/office" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
 <office:scripts><office:script script:language="ooo:Basic"><ooo:libraries>
  <ooo:library-embedded ooo:name="Ataskaitos"><ooo:module ooo:name=")" +
         std::string(kEntryModule) + R"("><ooo:source-code>)" +
         XmlText("Option VBASupport 1\nSub Main()\n" + std::string(lines) + "End Sub\n") +
         R"(</ooo:source-code></ooo:module></ooo:library-embedded>
 </ooo:libraries></office:script></office:scripts>
 <office:body><office:spreadsheet><table:table table:name="Lapas"/></office:spreadsheet></office:body>
</office:document>
)";
}

}  // namespace qva
