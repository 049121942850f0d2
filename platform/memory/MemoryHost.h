// An in-memory stand-in of the host system's components (platform/host.h) for tests: settable data, no
// database.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/automation.h"
#include "platform/list_chooser.h"
#include "platform/services.h"

namespace qva {

/// What the components answer with. Shared by all of them; the test owns it and changes it as it likes.
struct MemoryHost {
  struct Address {
    std::u16string full_text;
    std::map<std::u16string, std::u16string> contacts;  ///< by kind
  };
  struct Company {
    std::u16string code, vat_code, name;
    std::map<std::u16string, Address> addresses;       ///< by kind
    std::map<std::u16string, std::u16string> persons;  ///< by role
  };

  struct AccountSet {
    std::u16string code, name;
    bool is_budget = false;
  };
  struct Document {
    std::int32_t id = 0;
    std::u16string book_code, type, code;
    Date date;
  };

  std::map<std::u16string, Company> books;             ///< by book code; CreateBook knows these alone
  std::map<std::u16string, std::u16string> path_keys;  ///< folder by key
  std::map<std::u16string, std::vector<AccountSet>> account_sets;  ///< by book code
  bool refuses_tables = false;  ///< tables raise, whatever they are asked for
  std::vector<Document> documents;
  std::map<std::int32_t, std::u16string> texts;  ///< message texts by number
  MessageBox* message_box = nullptr;             ///< shows the messages of the message object
  ListChooser* list_chooser = nullptr;           ///< shows the documents to select from

  // What the library did to the components.
  std::vector<std::u16string> books_set;    ///< codes of the books handed to the client tools
  std::vector<std::u16string> plants_made;  ///< codes of the books that plants were initialised with
  std::vector<std::u16string>
      selection_conditions;         ///< of the document selections, which do not execute them
  std::u16string resource_library;  ///< the name that the message resource was initialised with

  /// A host of one book, "MEDVILNE", with every attribute set and a text for each number that the library
  /// uses.
  static MemoryHost Sample();

  /// A new component by its programmatic identifier; null for any other identifier. The host must outlive it.
  ObjectPtr Create(std::u16string_view programmatic_identifier);
};

}  // namespace qva
