// Texts in XML.
#pragma once

#include <string>

namespace qva {

/// As the content of an element, or of an attribute in double quotation marks.
inline std::string XmlText(const std::string& text) {
  std::string out;
  for (const char c : text)
    out += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
  return out;
}

}  // namespace qva
