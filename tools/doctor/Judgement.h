// What facts mean: findings for the user, and what can be put right for him.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "tools/doctor/Facts.h"
#include "tools/doctor/FindingKinds.h"

namespace qva::doctor {

/// A text in each language.
struct Words {
  std::array<std::u16string, kLanguageCount> in;

  Words(std::u16string_view text) : in{std::u16string(text), std::u16string(text)} {}
  Words(const std::u16string& text) : Words(std::u16string_view(text)) {}
  Words(const char16_t* text) : Words(std::u16string_view(text)) {}
  Words(std::u16string_view english, std::u16string_view lithuanian)
      : in{std::u16string(english), std::u16string(lithuanian)} {}
};

/// One finding of a case.
struct Finding {
  const FindingKind* kind = nullptr;
  Level level = Level::Ok;
  int bitness = 0;  ///< 64 or 32; 0 when it is about neither
  std::map<std::u16string, Words, std::less<>> values;

  std::u16string Cause(Language language) const;
  /// Empty when there is nothing to do.
  std::u16string Action(Language language) const;
};

/// Gives Windows' words for a code: of a HRESULT, or of an error of Windows itself.
using CodeWords = std::u16string (*)(std::uint32_t code);

/// The findings, in the order of a report. What is wrong for programs of a bitness that no Excel has is a
/// warning at most; without any Excel both bitnesses of Windows count.
std::vector<Finding> Judge(const MachineFacts& facts, CodeWords system_words);

/// The worst level; Ok when there are none.
Level Worst(const std::vector<Finding>& findings);

/// The library of the demo host, which lies beside the library.
inline constexpr std::u16string_view kDemoHostFile = u"QVA_DemoHost.dll";

/// "64-bit", "32-bit".
Words BitnessWords(Bitness bitness);
inline Bitness Other(Bitness bitness) {
  return bitness == Bitness::x64 ? Bitness::x86 : Bitness::x64;
}
/// Why a part of the doctor has nothing to tell.
Words EndedAtOnce();
/// A code as people look it up: "0x80040154", or in decimal digits when it is a small one.
std::u16string CodeText(std::uint32_t code);

}  // namespace qva::doctor
