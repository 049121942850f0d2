// The host books that a dialog works with, opened once each.
#pragma once

#include <string_view>
#include <vector>

#include "platform/host.h"

namespace qva {

class BookCache {
 public:
  /// The book of a code, compared exactly; opened on first use. The empty code gives no book. Raises what the
  /// host raises when it has no such book; a host that gives none without a word is asked again next time.
  host::Book Get(std::u16string_view code);

 private:
  std::vector<host::Book> books_;
};

}  // namespace qva
