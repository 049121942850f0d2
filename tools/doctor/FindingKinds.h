// Everything that the doctor can find, with its words: the one table that judgement, reports and the page
// about installing share.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace qva::doctor {

enum class Language : std::uint8_t { English, Lithuanian };
inline constexpr std::size_t kLanguageCount = 2;

/// How bad it is; the exit status is the worst one's number.
enum class Level : std::uint8_t { Ok = 0, Warning = 1, Error = 2 };

/// One kind of finding. In its texts {name} stands for a value of the case.
struct FindingKind {
  std::string_view code;  ///< for who asks for help; never changes
  Level level;
  std::u16string_view cause[kLanguageCount];
  std::u16string_view action[kLanguageCount];  ///< what to do; empty when there is nothing to do
};

/// All kinds, in the order in which a report has them.
std::span<const FindingKind> FindingKinds();

/// The kind of a code, which must be one.
const FindingKind& KindOf(std::string_view code);

}  // namespace qva::doctor
