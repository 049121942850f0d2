// What tests of the library's own text file share.
#pragma once

#include "platform/date.h"
#include "storage/CFile.h"
#include "tests/library_fixture.h"

namespace qva {

inline constexpr std::u16string_view kDateAndTime = u"2010.11.12 14:05:09";

/// One CFile for "C:\Log\x.txt".
class FileTest : public LibraryTest {
 protected:
  FileTest() {
    platform.files.SetFolder(u"C:\\Log");
    file.SetPath(u"C:\\Log");
    file.SetFileName(u"x.txt");
    platform.locale.short_date_pattern = u"yyyy.MM.dd";
    platform.clock.Set(*ParseDate(kDateAndTime, platform.locale));
  }

  std::string Content(std::u16string_view path = u"C:\\Log\\x.txt") {
    return platform.files.Content(path).value_or("(no file)");
  }
  void SetContent(std::string bytes) { platform.files.SetFile(u"C:\\Log\\x.txt", std::move(bytes)); }
  /// What a Unicode file holds behind its mark, in UTF-8.
  std::string Utf16Content() {
    const std::string bytes = Content();
    if (!bytes.starts_with("\xFF\xFE")) return "(no mark)";
    std::u16string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
      text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                    static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return ToUtf8(text);
  }

  std::u16string no_name;
  CFile file;
};

}  // namespace qva
