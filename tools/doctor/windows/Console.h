// The console that the doctor talks to.
#pragma once

#include <string>
#include <string_view>

#include "tools/doctor/FindingKinds.h"

namespace qva::doctor {

/// Writes a text: to a console in Unicode, to a file or another program in UTF-8.
void Write(std::u16string_view text);

/// Waits for Enter where the console was opened for this program alone, as by a double click, so that its
/// window does not close unread.
void WaitForReader(Language language);

/// The user's language: Lithuanian where Windows speaks it, else English.
Language UsersLanguage();

/// Windows' words for a code, without the end of the line.
std::u16string SystemWords(std::uint32_t code);

}  // namespace qva::doctor
