// The user's program search path.
#pragma once

#include <string>

#include "platform/member_table.h"

namespace qva {

/// Puts the library's folder on the user's search path. Keeps nothing between calls.
class CSetPath : public Described<CSetPath> {
 public:
  static ClassBuilder Describe();

  /// Appends the folder "Varnholt" below the path that the host's general setting `PathKey` names to the
  /// user's PATH in the registry, and tells the user by host message 800. An empty or missing setting gives
  /// the folder "\Varnholt". Does nothing when the folder stands, in any letter case, on the process's search
  /// path or in the user's PATH already. Programs that start afterwards see the change; nobody is notified.
  /// Result: true when PATH was changed; failures of the registry are silent. Raises what the host's message
  /// raises, when PATH has been changed already.
  ///
  /// A search path of the process of more than 1023 characters is not looked into, on purpose. A user's PATH
  /// of more than 254 characters counts as empty (CWinRegistry::GetRegSetting) and is replaced. PATH becomes
  /// a plain text (REG_SZ), whatever it was. A PATH that is not read whole and exactly - such a long one, one
  /// of another type, one with letters outside the code page - is kept beside it first, as it was stored, as
  /// "PATH_before_QVA_Varnholt", or with "_2" and so on behind that where an older one stands; a PATH that
  /// can be neither read nor kept is not replaced.
  bool RegPath(std::u16string& PathKey);
};

}  // namespace qva
