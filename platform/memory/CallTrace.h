// Writes down every call, one readable line each, in the order in which the calls began.
#pragma once

#include <string>
#include <vector>

#include "platform/memory/CallObserver.h"

namespace qva {

/// The lines, in UTF-8:
///   CreateObject("NVXCommonObjects.CommonObjects")        a creation
///   Application.ScreenUpdating = False                    a put
///   Set Item.Value = CommonObjects                        a put by reference
///   Application.Visible -> True                           a get, or a method, with its plain result
///   Application.ActiveWindow                              … with an object as its result
///   Application.ActiveWindow -> Nothing                   … with a null reference
///   Application.Quit()                                    a method without result
///   Application.Range("A9") ! 1004 No such range          … that failed
/// A member that late binding cannot tell is written as a method when it was called, as a property when it
/// was read. Arguments are written as in a macro, an object by the path it came from, a named one as
/// Name:=value.
class CallTrace : public CallObserver {
 public:
  void Starting(const HostCall& call) override;
  void Returned(const HostCall& call, const Value& result) override;
  void Failed(const HostCall& call, const AutomationError& error) override;

  const std::vector<std::string>& lines() const { return lines_; }
  /// All lines, each ended by a line feed.
  std::string Text() const;
  void Clear();

 private:
  void Finish(std::u16string_view ending);

  std::vector<std::string> lines_;
  std::vector<std::size_t> open_;  // lines of calls that have not returned, the innermost last
};

}  // namespace qva
