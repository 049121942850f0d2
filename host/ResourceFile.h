// The file format of a resource library: the host's texts by number.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace qva::embedded {

/// Texts by their number.
using ResourceTexts = std::map<std::int32_t, std::u16string>;

/// Reads a resource library. Its file is UTF-8, with or without a byte order mark, with LF or CR LF, and has
/// one text in each line: a number from 1 to 2147483647 in decimal digits, blanks or tabs, and the text to
/// the line's end without the blanks and tabs there. In a text \n is a new line and \\ a backslash. Lines
/// that are blank or begin with "#" do not count.
/// Raises Failure::MalformedResource with `library` and the number of the first line that breaks the format:
/// no number, a number too large or used before, no text, another escape, or bytes that are not UTF-8.
ResourceTexts ParseResource(std::string_view bytes, std::u16string_view library);

}  // namespace qva::embedded
