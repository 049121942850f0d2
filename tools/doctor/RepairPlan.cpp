#include "tools/doctor/RepairPlan.h"

#include <algorithm>
#include <array>

#include "platform/text.h"

namespace qva::doctor {
namespace {

std::array<long long, 4> Numbers(std::u16string_view version) {
  std::array<long long, 4> numbers{};
  std::size_t part = 0;
  for (const char16_t c : version) {
    if (c == u'.') {
      if (++part == numbers.size()) break;
    } else if (IsDigit(c)) {
      numbers[part] = numbers[part] * 10 + (c - u'0');
    }
  }
  return numbers;
}

/// Plans for one bitness.
class Planner {
 public:
  explicit Planner(const BitnessFacts& facts) : facts_(facts) {}

  std::vector<RepairStep> Steps() const {
    std::vector<RepairStep> steps;
    const auto add = [&](RepairKind kind, std::u16string_view file) {
      steps.push_back({kind, facts_.bitness, std::u16string(file)});
    };
    for (const FileFacts& file : facts_.files) {
      if (file.zone >= FileFacts::kInternetZone) add(RepairKind::Unblock, file.path);
    }

    const HiveFacts user = facts_.InHive(Hive::User);
    const FileFacts* users = Serving(user);
    const FileFacts* machines = Serving(facts_.InHive(Hive::Machine));
    const FileFacts* beside = facts_.File(facts_.beside);
    if (beside && !Loads(*beside)) beside = nullptr;
    const FileFacts* served = users ? users : machines;

    const bool is_hiding = users && machines && IsNewer(machines->version, users->version);
    if ((user.present != 0 && !users) || is_hiding) {
      add(RepairKind::RemoveFromUser, u"");
      served = machines;
    }
    const bool is_old = beside && served && served == users && IsNewer(beside->version, served->version);
    if (beside && (!served || is_old)) add(RepairKind::RegisterForUser, beside->path);
    if (std::ranges::any_of(facts_.host_classes, &HostClass::is_behind_demo))
      add(RepairKind::RemoveDemo, u"");
    return steps;
  }

 private:
  bool Loads(const FileFacts& file) const {
    return file.is_there && file.machine == MachineOf(facts_.bitness) && file.load_code == 0;
  }

  /// The file of a registration that serves; null for one that does not.
  const FileFacts* Serving(const HiveFacts& hive) const {
    const bool is_whole = hive.present != 0 && hive.present >= hive.expected && hive.foreign == 0;
    if (!is_whole || hive.servers.size() != 1) return nullptr;
    const FileFacts* file = facts_.File(hive.servers.front());
    return file && Loads(*file) ? file : nullptr;
  }

  const BitnessFacts& facts_;
};

}  // namespace

std::vector<RepairStep> PlanRepair(const MachineFacts& facts) {
  std::vector<RepairStep> steps;
  for (const BitnessFacts& bitness : facts.bitnesses) {
    if (!bitness.is_complete) continue;
    for (RepairStep& step : Planner(bitness).Steps()) steps.push_back(std::move(step));
  }
  return steps;
}

bool IsNewer(std::u16string_view version, std::u16string_view other) {
  return Numbers(version) > Numbers(other);
}

}  // namespace qva::doctor
