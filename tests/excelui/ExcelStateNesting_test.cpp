// Snapshots within snapshots, with random changes of settings between them.
#include <random>

#include "tests/excelui/excel_state_test.h"

namespace qva {
namespace {

/// What saving and restoring mean, written down a second time: on plain values, without an Excel.
class Model {
 public:
  explicit Model(Settings first) : now(std::move(first)) {}

  void Set(const std::string& name, const Value& value) { now[name] = value; }
  void SetBarEnabled(const std::string& bar, bool enabled) {
    if (!enabled && now["bar " + bar + " visible"] == Value(true)) hidden_while_disabled.insert(bar);
    now["bar " + bar + " enabled"] = enabled;
    now["bar " + bar + " visible"] = enabled && hidden_while_disabled.erase(bar) > 0
                                         ? Value(true)
                                         : Value(enabled && now["bar " + bar + " visible"] == Value(true));
  }
  void SetBarVisible(const std::string& bar, bool visible) {
    hidden_while_disabled.erase(bar);
    now["bar " + bar + " visible"] = visible;
  }

  void Save() { saved.push_back(now); }
  void Restore() {
    const Settings top = saved.back();
    saved.pop_back();
    for (const auto& [name, value] : top) {
      if (name.starts_with("bar ") || kNotPutBack.contains(name)) continue;
      now[name] = value;
    }
    now["Caption"] = u"Microsoft Excel";
    for (const auto& [name, value] : top) {
      if (!name.starts_with("bar ") || !name.ends_with(" enabled")) continue;
      const std::string bar = name.substr(4, name.size() - 12);
      SetBarEnabled(bar, value.ToBoolean());
      SetBarVisible(bar, top.at("bar " + bar + " visible").ToBoolean());
    }
  }

  Settings now;
  std::vector<Settings> saved;
  std::set<std::string> hidden_while_disabled;  ///< bars that enabling shows again
};

class RandomStates : public ExcelState, public testing::WithParamInterface<unsigned> {};

TEST_P(RandomStates, AnyNestingOfSavesAndRestoresGivesBackWhatTheModelSays) {
  std::mt19937 random(GetParam());
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  const std::vector<std::u16string> bars = {u"Worksheet Menu Bar", u"Standard", u"Formatting",
                                            u"Ataskaita",          u"Kita",     u"Tuščia"};
  constexpr std::size_t kDeepest = 50;
  TheGlobals().application = excel::Application(excel);  // without observers, for speed
  Model model(Now());
  const auto change = [&] {
    if (below(4) > 0) {
      const TestSetting& setting = TestSettings()[below(TestSettings().size())];
      const Value& value = setting.values[below(2)];
      Write(setting, value);
      model.Set(ToUtf8(setting.name), value);
      return;
    }
    const std::u16string& bar = bars[below(bars.size())];
    if (below(2) > 0) {
      const bool enabled = below(2) > 0;
      Put(Bar(bar), u"Enabled", enabled);
      model.SetBarEnabled(ToUtf8(bar), enabled);
    } else if (Get(Bar(bar), u"Enabled").ToBoolean()) {
      const bool visible = below(2) > 0;
      Put(Bar(bar), u"Visible", visible);
      model.SetBarVisible(ToUtf8(bar), visible);
    }
  };
  const auto restore = [&] {
    state->RestoreExcelState();
    model.Restore();
  };
  std::size_t deepest = 0;
  for (int step = 0; step < 300; ++step) {
    for (std::size_t changes = below(6); changes > 0; --changes) change();
    // Deep nestings come first, then the way out of them.
    const bool saves = model.saved.size() < kDeepest && below(10) < (step < 150 ? 7u : 3u);
    if (saves) {
      state->SaveExcelState();
      model.Save();
    } else if (!model.saved.empty()) {
      restore();
    }
    deepest = std::max(deepest, model.saved.size());
    ASSERT_EQ(static_cast<std::size_t>(state->depth()), model.saved.size());
    ASSERT_EQ(Now(), model.now) << "step " << step;
  }
  EXPECT_GT(deepest, 20u);
  while (!model.saved.empty()) {
    change();
    restore();
    ASSERT_EQ(Now(), model.now);
  }
  EXPECT_EQ(state->depth(), 0);
}

TEST_F(ExcelState, FiftySavesAndRestoresGiveBackFiftyStatesInReverse) {
  std::mt19937 random(50);
  std::vector<Settings> states;
  for (int i = 0; i < 50; ++i) {
    for (const TestSetting& setting : TestSettings()) Write(setting, setting.values[random() % 2]);
    for (const auto* bar : {u"Standard", u"Formatting", u"Kita"})
      Put(Bar(bar), u"Enabled", random() % 2 == 0);
    states.push_back(Now());
    state->SaveExcelState();
  }
  EXPECT_EQ(state->depth(), 50);
  for (; !states.empty(); states.pop_back()) {
    state->RestoreExcelState();
    const Settings now = Now();
    EXPECT_EQ(now, PutBack(states.back(), now)) << states.size();
  }
  EXPECT_EQ(state->depth(), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomStates, testing::Range(1u, 11u));

}  // namespace
}  // namespace qva
