// Lets the user select one of a book's documents.
#pragma once

#include <memory>
#include <optional>

#include "host/HostStore.h"
#include "platform/list_chooser.h"
#include "platform/member_table.h"

namespace qva::embedded {

class DocumentSelection : public Described<DocumentSelection> {
 public:
  static ClassBuilder Describe();
  /// Borrows the list chooser that shows the documents; without one Open refuses.
  DocumentSelection(std::shared_ptr<HostStore> store, ListChooser* list_chooser)
      : store_(std::move(store)), list_chooser_(list_chooser) {}

  /// Gives the selection its book. Raises Failure::WrongParameters without a book, Failure::UnknownBook for
  /// one that the host does not know, and what HostStore::Open raises; the object is then as before.
  void Init(ObjectPtr book);
  /// Shows the book's documents of a type, of the days from first to last and meeting the condition, an
  /// expression of the database's SQL on the fields of THDocument, until the user picks one or leaves the
  /// list. Result: the document's number IDC, 0 when the user left. A document selected before is forgotten,
  /// also when this raises: Failure::NotInitialised, Failure::NoListChooser, Failure::WrongCondition.
  std::int32_t Open(std::u16string document_type, Date from, Date to, std::u16string condition);
  /// A field of the selected document. Raises 9 for a field that THDocument lacks, and when no document is
  /// selected.
  Value Field(std::u16string name) const;

 private:
  std::shared_ptr<HostStore> store_;
  ListChooser* list_chooser_;
  std::shared_ptr<const HostDatabase> database_;
  std::u16string book_code_;
  std::optional<Record> document_;
};

}  // namespace qva::embedded
