#include "tests/com/bench/Control.h"

#include <new>
#include <stdexcept>

#include "platform/forms/form_list_chooser.h"
#include "platform/memory/excel/Application.h"
#include "platform/services.h"
#include "platform/text.h"
#include "platform/windows/ComObjectFactory.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/WindowsMessageBox.h"
#include "tests/com/bench/Bench.h"
#include "tests/com/bench/Onlooker.h"
#include "tests/windows/handle_counts.h"

namespace qva::bench {
namespace {

std::u16string Joined(const std::vector<std::u16string>& texts, std::u16string_view separator) {
  std::u16string result;
  for (const std::u16string& text : texts) {
    if (&text != &texts.front()) result += separator;
    result += text;
  }
  return result;
}

}  // namespace

ClassBuilder Control::Describe() {
  return ClassBuilder(u"Control", "Looks behind the bench's stand-ins and sets them up")
      .Get<&Control::LiveObjects>(u"LiveObjects")
      .Get<&Control::Lookups>(u"Lookups")
      .Get<&Control::RepeatedLookups>(u"RepeatedLookups")
      .Method<&Control::ClearLookups>(u"ClearLookups")
      .Get<&Control::Trace>(u"Trace")
      .Method<&Control::ClearTrace>(u"ClearTrace")
      .Method<&Control::FailCall>(u"FailCall", {{u"number"}})
      .Method<&Control::BeBusy>(u"BeBusy", {{u"on"}})
      .Get<&Control::TurnedAway>(u"TurnedAway")
      .Method<&Control::NewExcel>(u"NewExcel")
      .Method<&Control::NewObject>(u"NewObject", {{u"programmatic_identifier"}})
      .Method<&Control::MacrosRun>(u"MacrosRun", {{u"excel"}})
      .Method<&Control::RemoveBook>(u"RemoveBook", {{u"code"}})
      .Method<&Control::SetText>(u"SetText", {{u"number"}, {u"text"}})
      .Get<&Control::BooksSet>(u"BooksSet")
      .Get<&Control::PlantsMade>(u"PlantsMade")
      .Get<&Control::Boxes>(u"Boxes")
      .Method<&Control::Answer>(u"Answer", {{u"button"}})
      .Get<&Control::HasWindows>(u"HasWindows")
      .Method<&Control::ShowWindows>(u"ShowWindows")
      .Method<&Control::Watch>(u"Watch", {{u"file"}, {u"scene"}})
      .Method<&Control::CloseWindows>(u"CloseWindows", {{u"on"}})
      .Method<&Control::EditMeanwhile>(u"EditMeanwhile", {{u"object"}})
      .Get<&Control::ErrorMeanwhile>(u"ErrorMeanwhile")
      .Get<&Control::SystemObjects>(u"SystemObjects")
      .Method<&Control::LibraryIsUnused>(u"LibraryIsUnused")
      .Method<&Control::Reset>(u"Reset")
      .Method<&Control::Increment>(u"Increment", {{u"number"}})
      .Method<&Control::Divide>(u"Divide", {{u"number"}, {u"divisor"}, {u"quotient"}, {u"remainder"}})
      .Method<&Control::Throw>(u"Throw", {{u"what"}})
      .Method<&Control::CallAlpha>(u"CallAlpha", {{u"object"}});
}

std::int32_t Control::LiveObjects() const {
  return static_cast<std::int32_t>(LiveCount());
}

std::int32_t Control::Lookups() const {
  std::int32_t count = 0;
  for (const auto& [asked, times] : TheBench().lookups) count += times;
  return count;
}

std::u16string Control::RepeatedLookups() const {
  std::vector<std::u16string> repeated;
  for (const auto& [asked, times] : TheBench().lookups) {
    if (times > 1) repeated.push_back(asked);
  }
  return Joined(repeated, u",");
}

void Control::ClearLookups() {
  TheBench().lookups.clear();
}

std::u16string Control::Trace() const {
  return FromUtf8(TheBench().trace.Text());
}

void Control::ClearTrace() {
  TheBench().trace.Clear();
}

void Control::FailCall(std::int32_t number) {
  TheBench().failure.Reset(number);
}

void Control::BeBusy(bool on) {
  TheBench().is_busy = on;
}

std::int32_t Control::TurnedAway() const {
  return TheBench().turned_away;
}

ObjectPtr Control::NewExcel() {
  return TheBench().NewExcel();
}

ObjectPtr Control::NewObject(std::u16string programmatic_identifier) {
  return windows::ComObjectFactory().Create(programmatic_identifier);
}

std::u16string Control::MacrosRun(ObjectPtr excel) const {
  const ObjectPtr object = Unwrap(excel);
  const auto* application = dynamic_cast<const memory::Application*>(object.get());
  if (!application) throw AutomationError(kTypeMismatch);
  return Joined(application->MacrosRun(), u",");
}

void Control::RemoveBook(std::u16string code) {
  TheBench().host.books.erase(code);
}

void Control::SetText(std::int32_t number, std::u16string text) {
  TheBench().host.texts[number] = std::move(text);
}

std::u16string Control::BooksSet() const {
  return Joined(TheBench().host.books_set, u",");
}

std::u16string Control::PlantsMade() const {
  return Joined(TheBench().host.plants_made, u",");
}

std::u16string Control::Boxes() const {
  std::vector<std::u16string> texts;
  for (const MemoryMessageBox::Shown& box : TheBench().platform.message_box.boxes())
    texts.push_back(box.text);
  return Joined(texts, u"\n");
}

void Control::Answer(std::int32_t button) {
  TheBench().platform.message_box.Answer(button);
}

bool Control::HasWindows() const {
  HWND window = CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  return window && DestroyWindow(window);
}

void Control::ShowWindows() {
  // Never destroyed, like the bench.
  static windows::WindowsMessageBox& message_box = *new windows::WindowsMessageBox(*GetServices().clock);
  static windows::NativeForms& forms = *new windows::NativeForms;
  static FormListChooser& list_chooser = *new FormListChooser(forms);
  TheBench().host.message_box = &message_box;
  TheBench().host.list_chooser = &list_chooser;
}

void Control::Watch(std::u16string file, std::u16string scene) {
  TheOnlooker().Watch(std::move(file), std::move(scene));
}

void Control::CloseWindows(bool on) {
  TheOnlooker().CloseWindows(on);
}

void Control::EditMeanwhile(ObjectPtr object) {
  TheOnlooker().EditMeanwhile(std::move(object));
}

std::int32_t Control::ErrorMeanwhile() const {
  return TheOnlooker().error_meanwhile();
}

std::int32_t Control::SystemObjects() const {
  const windows::HandleCounts counts;
  return static_cast<std::int32_t>(counts.graphics + counts.windows) + counts.graphics_handles +
         counts.window_handles;
}

bool Control::LibraryIsUnused() const {
  using CanUnloadNow = HRESULT STDAPICALLTYPE();
  HMODULE library = GetModuleHandleW(L"QVA_Varnholt.dll");
  if (!library) throw AutomationError(kInvalidProcedureCall);
  auto* can_unload =
      reinterpret_cast<CanUnloadNow*>(reinterpret_cast<void*>(GetProcAddress(library, "DllCanUnloadNow")));
  return can_unload && can_unload() == S_OK;
}

void Control::Reset() {
  TheBench().Reset();
}

void Control::Increment(std::int32_t& number) {
  ++number;
}

void Control::Divide(std::int32_t number, std::int32_t divisor, std::int32_t& quotient,
                     std::int32_t& remainder) {
  remainder = number;
  if (divisor == 0) throw AutomationError(kInvalidProcedureCall);
  quotient = number / divisor;
  remainder = number % divisor;
}

void Control::Throw(std::u16string what) {
  if (what == u"bad_alloc") throw std::bad_alloc();
  if (what == u"logic_error") throw std::logic_error("an exception of the language's own library");
  throw 7;
}

void Control::CallAlpha(ObjectPtr object) {
  Call(object, u"Alpha", {1, 2, 3});
}

}  // namespace qva::bench
