// A module in the embedded host's place that runs, within LibreOffice and on its windows, the tests of what
// forms, lists and message boxes promise. The user sits in another process: what is to be done with the next
// window goes into the file QVA_TEST_USER, as a line of its title, a text to type and keys to press, parted
// by tabs.
#include <cstdlib>

#include "platform/cannot_create.h"
#include "platform/filesystem/native_file.h"
#include "platform/member_table.h"
#include "platform/module.h"
#include "tests/platform/forms/form_contract.h"
#include "tests/platform/forms/list_chooser_contract.h"
#include "tests/platform/forms/message_box_contract.h"

namespace qva {
namespace {

void Tell(std::u16string_view title, std::u16string_view text, const std::string& keys) {
  AppendToFile(std::getenv("QVA_TEST_USER"), ToUtf8(title) + "\t" + ToUtf8(text) + "\t" + keys + "\n");
}

class CalcDesk {
 public:
  static bool IsThere() { return true; }
  static ui::FormFactory& factory() { return *GetServices().forms; }
  static void Show(ui::Form& form) {
    Tell(u"Bandymas", u"", "Return");
    form.ShowModal();
  }
  static void ShowGrid(ui::Form& form, std::u16string_view text) {
    Tell(u"Bandymas", text, text.empty() ? "F4" : "Return");
    form.ShowModal();
  }
};

class CalcBoxUser {
 public:
  static bool IsThere() { return true; }
  static void Press(std::u16string_view title, std::int32_t button) {
    std::string keys;
    for (std::int32_t i = 1; i < button; ++i) keys += "Tab ";
    Tell(title, u"", keys + "space");
  }
  static void Close(std::u16string_view title) { Tell(title, u"", "Escape"); }
  static MessageBox& box() { return *GetServices().message_box; }
};

class CalcListUser {
 public:
  static bool IsThere() { return true; }
  static void Pick(std::u16string_view code) { Tell(u"Sąrašas", code, "Return"); }
  static void Leave() { Tell(u"Sąrašas", u"", "Escape"); }
  static ListChooser& chooser() { return *GetServices().list_chooser; }
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(CalcWindows, FormContract, CalcDesk);
INSTANTIATE_TYPED_TEST_SUITE_P(CalcWindows, MessageBoxContract, CalcBoxUser);
INSTANTIATE_TYPED_TEST_SUITE_P(CalcWindows, ListChooserContract, CalcListUser);

namespace {

/// Writes down what becomes of each test.
class Listener : public testing::EmptyTestEventListener {
 public:
  explicit Listener(std::vector<Value>& lines) : lines_(lines) {}

  void OnTestPartResult(const testing::TestPartResult& part) override {
    if (part.failed()) lines_.push_back(FromUtf8(part.summary()));
  }
  void OnTestEnd(const testing::TestInfo& test) override {
    const std::string outcome = test.result()->Passed() ? "passed: " : "FAILED: ";
    lines_.push_back(FromUtf8(outcome + test.test_suite_name() + "." + test.name()));
  }

 private:
  std::vector<Value>& lines_;
};

class Contracts : public Described<Contracts> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Contracts", "Tests of what windows promise").Method<&Contracts::Run>(u"Run", {});
  }

 private:
  /// Runs all tests; the result has a line for each, behind those of what failed in it.
  Value Run() {
    std::vector<Value> lines;
    int count = 0;
    testing::InitGoogleMock(&count, static_cast<char**>(nullptr));
    testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
    delete listeners.Release(listeners.default_result_printer());
    listeners.Append(new Listener(lines));
    const int status = RUN_ALL_TESTS();
    lines.push_back(status == 0 ? u"all passed" : u"some failed");
    return Array::Of(std::move(lines));
  }
};

class Factory : public ObjectFactory {
 public:
  ObjectPtr Create(std::u16string_view programmatic_identifier) override {
    if (EqualIgnoringCase(programmatic_identifier, u"NVXCommonObjects.Contracts"))
      return MakeRef<Contracts>();
    throw CannotCreate(programmatic_identifier);
  }
};

}  // namespace
}  // namespace qva

extern "C" __attribute__((visibility("default"))) qva::ObjectFactory* QvaOpenModule(
    const qva::Services& services) {
  qva::InstallServices(services);
  static qva::Factory& factory = *new qva::Factory;
  return &factory;
}
