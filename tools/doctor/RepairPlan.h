// What can be put right for the user without anybody's rights, decided from facts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/doctor/Facts.h"

namespace qva::doctor {

enum class RepairKind : std::uint8_t {
  Unblock,          ///< takes the mark of a downloaded file from the library and what lies with it
  RemoveFromUser,   ///< removes the user's registration
  RegisterForUser,  ///< registers the library for the user
  RemoveDemo        ///< switches the demo host off
};

struct RepairStep {
  RepairKind kind = RepairKind::Unblock;
  Bitness bitness = Bitness::x64;
  std::u16string file;  ///< the library; of removals nothing
};

/// The steps in their order, for each bitness that was checked to its end. A registration that serves stays;
/// the library beside the doctor is registered where none serves the user, or where it is newer than the
/// user's. A registration of the user's that does not serve is removed, and one that hides a newer one of the
/// machine's. So is a demo host that stands before another host.
std::vector<RepairStep> PlanRepair(const MachineFacts& facts);

/// Whether a version, as "1.2.3.4", is newer than another one. One that is not told is older than any.
bool IsNewer(std::u16string_view version, std::u16string_view other);

}  // namespace qva::doctor
