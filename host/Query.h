// A query on a book's tables and views, put together part by part.
#pragma once

#include <string>

#include "platform/member_table.h"

namespace qva::embedded {

/// Every part but the conditions is checked to be a name or field, which raises Failure::WrongParameters;
/// whether the database knows it shows when the query is run.
class Query : public Described<Query> {
 public:
  static ClassBuilder Describe();

  /// Gives the query its book. One database holds all books, so the text is the same for each of them.
  /// Raises Failure::WrongParameters without a book, and what the book raises.
  void Init(ObjectPtr book);
  /// The table or view that the query reads, in place of one named before.
  void From(std::u16string table, std::u16string alias);
  /// One more table or view, with the condition that ties it to the others.
  void Join(std::u16string table, std::u16string alias, std::u16string condition);
  /// One more field of the result.
  void Select(std::u16string field);
  /// The query's text. Raises Failure::NotInitialised before Init, From and the first Select.
  std::u16string Sql() const;

 private:
  bool has_book_ = false;
  bool distinct_ = false;
  std::u16string from_;       ///< "table alias"
  std::u16string joins_;      ///< each " JOIN table alias ON condition"
  std::u16string fields_;     ///< with commas between them
  std::u16string condition_;  ///< none when it is empty
};

}  // namespace qva::embedded
