// The host's client tools and their session.
#pragma once

#include "platform/member_table.h"

namespace qva::embedded {

/// What the client tools work on.
class Session : public Described<Session> {
 public:
  static ClassBuilder Describe();

  /// Makes the book the one to work on; Nothing takes the present one away.
  void SetBook(ObjectPtr book) { book_ = std::move(book); }
  /// The book worked on, Nothing before the first SetBook.
  ObjectPtr Book() const { return book_; }

 private:
  ObjectPtr book_;
};

class ClientTools : public Described<ClientTools> {
 public:
  static ClassBuilder Describe();

  /// The one session of these client tools.
  Ref<embedded::Session> Session() const { return session_; }

 private:
  Ref<embedded::Session> session_ = MakeRef<embedded::Session>();
};

}  // namespace qva::embedded
