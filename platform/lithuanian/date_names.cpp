#include "platform/lithuanian/date_names.h"

#include <array>

namespace qva {

std::u16string LithuanianName(DateName name, int number) {
  static constexpr std::array<std::u16string_view, 12> kNames[] = {
      {u"sausis", u"vasaris", u"kovas", u"balandis", u"gegužė", u"birželis", u"liepa", u"rugpjūtis",
       u"rugsėjis", u"spalis", u"lapkritis", u"gruodis"},
      {u"sausio", u"vasario", u"kovo", u"balandžio", u"gegužės", u"birželio", u"liepos", u"rugpjūčio",
       u"rugsėjo", u"spalio", u"lapkričio", u"gruodžio"},
      {u"saus.", u"vas.", u"kov.", u"bal.", u"geg.", u"birž.", u"liep.", u"rugp.", u"rugs.", u"spal.",
       u"lapkr.", u"gruod."},
      {u"pirmadienis", u"antradienis", u"trečiadienis", u"ketvirtadienis", u"penktadienis", u"šeštadienis",
       u"sekmadienis"},
      {u"pr", u"an", u"tr", u"kt", u"pn", u"št", u"sk"},
      {u"priešpiet", u"popiet"}};
  return std::u16string(kNames[static_cast<std::size_t>(name)].at(static_cast<std::size_t>(number)));
}

}  // namespace qva
