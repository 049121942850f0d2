#include "host/Query.h"

#include "host/Book.h"
#include "host/HostError.h"
#include "host/SqlText.h"

namespace qva::embedded {

ClassBuilder Query::Describe() {
  return ClassBuilder(u"Query", "A query on a book's tables and views")
      .Method<&Query::Init>(u"Init", {{u"Book"}}, "Gives the query its book")
      .Method<&Query::From>(u"From", {{u"Table"}, {u"Alias"}}, "The table that the query reads")
      .Method<&Query::Join>(u"Join", {{u"Table"}, {u"Alias"}, {u"Condition"}}, "One more table")
      .Method<&Query::Select>(u"Select", {{u"Field"}}, "One more field of the result")
      .Property<&Query::distinct_>(u"Distinct", "Whether equal rows of the result count once")
      .Property<&Query::condition_>(u"Condition", "The condition that rows must meet, empty for none")
      .Get<&Query::Sql>(u"Sql", {}, "The query's text");
}

void Query::Init(ObjectPtr book) {
  CodeOfBook(book, kCommonLibrary, u"Query.Init");
  has_book_ = true;
}

void Query::From(std::u16string table, std::u16string alias) {
  CheckName(table, u"Query.From");
  CheckName(alias, u"Query.From");
  from_ = table + u" " + alias;
}

void Query::Join(std::u16string table, std::u16string alias, std::u16string condition) {
  CheckName(table, u"Query.Join");
  CheckName(alias, u"Query.Join");
  CheckPart(condition, u"Query.Join");
  joins_ += u" JOIN " + table + u" " + alias + u" ON " + condition;
}

void Query::Select(std::u16string field) {
  CheckField(field, u"Query.Select");
  fields_ += (fields_.empty() ? u"" : u", ") + field;
}

std::u16string Query::Sql() const {
  if (!has_book_ || from_.empty() || fields_.empty()) {
    throw HostError(Failure::NotInitialised, kCommonLibrary,
                    u"Query.Sql was read before Query.Init, Query.From and Query.Select");
  }
  std::u16string sql =
      u"SELECT " + std::u16string(distinct_ ? u"DISTINCT " : u"") + fields_ + u" FROM " + from_ + joins_;
  if (!condition_.empty()) sql += u" WHERE " + condition_;
  return sql;
}

}  // namespace qva::embedded
