#include "tests/corpus/interpreter/ErrorObject.h"

namespace qva::corpus {

ClassBuilder ErrorObject::Describe() {
  return ClassBuilder(u"ErrObject", "")
      .Get<&ErrorObject::Number>(u"Number")
      .Get<&ErrorObject::Source>(u"Source")
      .Get<&ErrorObject::Text>(u"Description")
      .Method<&ErrorObject::Clear>(u"Clear")
      .Method<&ErrorObject::Raise>(u"Raise", {{u"Number"}, {u"Source"}, {u"Description"}});
}

void ErrorObject::Raise(std::int32_t number, std::u16string source, std::u16string description) {
  throw AutomationError(number, std::move(source), std::move(description));
}

void ErrorObject::Keep(std::int32_t number, std::u16string source, std::u16string description) {
  number_ = number;
  source_ = std::move(source);
  description_ = std::move(description);
}

}  // namespace qva::corpus
