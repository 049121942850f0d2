#include "host/ConditionBuilder.h"

#include "host/HostError.h"
#include "host/SqlText.h"

namespace qva::embedded {

ClassBuilder ConditionBuilder::Describe() {
  return ClassBuilder(u"ConditionBuilder", "Makes the text of conditions")
      .Method<&ConditionBuilder::Equal>(u"Equal", {{u"Field"}, {u"Value"}}, "A field equals a value")
      .Method<&ConditionBuilder::And>(u"And", {{u"First"}, {u"Second"}}, "Both conditions are met")
      .Method<&ConditionBuilder::In>(u"In", {{u"Field"}, {u"SubQuery"}},
                                     "A field is among the results of a sub-query");
}

std::u16string ConditionBuilder::Equal(std::u16string field, Value value) const {
  CheckField(field, u"ConditionBuilder.Equal");
  return field + u" = " + SqlLiteral(value, u"ConditionBuilder.Equal");
}

std::u16string ConditionBuilder::And(std::u16string first, std::u16string second) const {
  CheckPart(first, u"ConditionBuilder.And");
  CheckPart(second, u"ConditionBuilder.And");
  return first + u" AND " + second;
}

std::u16string ConditionBuilder::In(std::u16string field, std::u16string sub_query) const {
  CheckField(field, u"ConditionBuilder.In");
  // Parentheses added to those that are there would make SQL take the first row of the result alone.
  if (!sub_query.starts_with(u'(') || !sub_query.ends_with(u')')) {
    throw HostError(Failure::WrongParameters, kCommonLibrary,
                    u"ConditionBuilder.In needs a sub-query in parentheses");
  }
  return field + u" IN " + sub_query;
}

}  // namespace qva::embedded
