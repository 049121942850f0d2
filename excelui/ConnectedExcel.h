// The Excel that an object works with.
#pragma once

#include "platform/excel.h"

namespace qva {

/// The application of the connection that an object belongs to. Excel has one for all workbooks; where each
/// workbook has an application of its own, with bars and keys of its own, a toolbar goes on with that of its
/// report when another report connects or lets go.
class ConnectedExcel {
 public:
  /// Of no connection yet: whatever is connected when it is asked.
  ConnectedExcel() = default;
  explicit ConnectedExcel(excel::Application application) : application_(std::move(application)) {}

  /// Belongs to what is connected now, unless it belongs to a connection already.
  void Hold();
  /// May be empty, when nothing is connected.
  excel::Application Application() const;

 private:
  excel::Application application_;
};

}  // namespace qva
