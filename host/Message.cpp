#include "host/Message.h"

#include "host/HostError.h"

namespace qva::embedded {

ClassBuilder Message::Describe() {
  return ClassBuilder(u"Message", "Messages to the user")
      .Method<&Message::Show>(u"Show", {{u"Text"}, {u"Title"}, {u"Captions"}},
                              "Shows a text with one button for each caption");
}

std::int32_t Message::Show(std::u16string text, std::u16string title, Value captions) const {
  std::vector<std::u16string> buttons;
  for (const Value& caption : captions.ToArray().elements) buttons.push_back(caption.ToText());
  if (buttons.empty()) {
    throw HostError(Failure::WrongParameters, kMessageLibrary, u"Message.Show needs a caption");
  }
  return message_box_.Ask(text, title, buttons);
}

}  // namespace qva::embedded
