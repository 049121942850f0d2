#include "excelui/gExcelObject.h"

#include <functional>

#include "global/Globals.h"
#include "global/Helpers.h"
#include "global/StartUp.h"
#include "platform/failure_listener.h"
#include "platform/services.h"
#include "platform/settings.h"

namespace qva {
namespace {

constexpr std::int32_t kNoBookChosen = 16514;  ///< host message: the setting "P0" is empty
constexpr std::int32_t kBookNotOpened = 842;   ///< host message: book %0 cannot be opened

/// The reference itself, taken for the length of a call: what the call sets off in Excel may reset the
/// connection. Raises 91 when it is Nothing.
template <class T>
Ref<T> Held(const Ref<T>& reference) {
  if (!reference) throw AutomationError(kObjectNotSet);
  return reference;
}

/// Takes the step that was counted already; one that fails, for want of memory, does not count.
template <class Step>
void CountingBack(std::int16_t& counter, int step_back, Step step) {
  try {
    step();
  } catch (...) {
    Count(counter, step_back);
    throw;
  }
}

/// A global by its class, which is known here alone.
template <class T>
Ref<T> OfClass(const ObjectPtr& object) {
  return Ref<T>(static_cast<T*>(object.get()));
}

/// An error of the connection. Where the host's text is not to be had, the reason stands in its place: why
/// there is no book, if that is known, else why there is no text.
AutomationError ConnectionError(std::u16string_view no_book,
                                const std::function<std::u16string()>& description) {
  std::u16string text;
  try {
    text = description();
  } catch (const AutomationError& error) {
    text = no_book.empty() ? error.description() : no_book;
  }
  TellFailure(text);
  return AutomationError(kObjectErrorBase, u"InitConnectEX", std::move(text));
}

}  // namespace

ClassBuilder gExcelObject::Describe() {
  return ClassBuilder(u"gExcelObject", "Connects a report workbook to Excel and to the host's book")
      .Method<&gExcelObject::InitConnectEX>(
          u"InitConnectEX", {{u"App"}, {u"objWB"}, Optional(u"oAppBook")},
          "Connects to Excel and to the host's book; gives the connection count")
      .Get<&gExcelObject::oBook>(u"oBook", {}, "The host's book")
      .Get<&gExcelObject::oToolBars>(u"oToolBars", {}, "The report toolbars")
      .Get<&gExcelObject::oEnvironment>(u"oEnvironment", {}, "The report state of Excel")
      .Get<&gExcelObject::oMyPlant>(u"oMyPlant", {}, "The host's plant object")
      .Method<&gExcelObject::ResetConnectEX>(u"ResetConnectEX", {{u"intEventHandle"}},
                                             "Lets go of the book and of all objects but the application")
      .Method<&gExcelObject::ResetConnectOnError>(u"ResetConnectOnError", {}, "ResetConnectEX after an error")
      .Method<&gExcelObject::ExcelReportError>(u"ExcelReportError", {ErrorObject(u"ExcelErr")},
                                               "Reports the error of a failed macro")
      .Method<&gExcelObject::InitToolBars>(u"InitToolBars", {}, "Creates the toolbar collection on first use")
      .Method<&gExcelObject::ResetToolBars>(u"ResetToolBars", {},
                                            "Releases the toolbar collection on last use")
      .Method<&gExcelObject::cmdHelp>(u"cmdHelp", {}, "Shows the report help")
      .Method<&gExcelObject::InitEnvironment>(u"InitEnvironment", {}, "Takes a snapshot of the user's Excel")
      .Method<&gExcelObject::ResetEnvironment>(u"ResetEnvironment", {}, "Puts the latest snapshot back");
}

gExcelObject::~gExcelObject() {
  TheGlobals().application = {};
}

std::int16_t gExcelObject::InitConnectEX(excel::Application App, Value, host::Book oAppBook) {
  Globals& globals = TheGlobals();
  excel_ = ConnectedExcel(App);
  globals.application = std::move(App);
  if (oAppBook) globals.oBook = std::move(oAppBook);
  if (!globals.oBook) ConnectToHost();
  return connection_count_;
}

void gExcelObject::ConnectToHost() {
  const Services& services = GetServices();
  const std::u16string p0 = GetSetting(*services.registry, *services.locale, host::kSettingsApplication,
                                       host::kFormsSection, host::kBookSetting, u"");
  host::Book book;
  std::u16string no_book;
  try {
    book = host::CommonObjects::Create(*services.object_factory).CreateBook(p0);
  } catch (const AutomationError& error) {
    no_book = error.description();
  }
  if (p0.empty()) throw ConnectionError(no_book, [] { return HostText(kNoBookChosen); });
  if (!book) throw ConnectionError(no_book, [&] { return HostMessage(kBookNotOpened, p0); });

  TheClientTools().SetBook(book);
  std::int16_t count = connection_count_;
  Count(count, 1);
  const auto plant = host::Plant::Create(*services.object_factory);
  plant.Init(book);
  // Kept as a whole, once nothing can fail any more: with a book alone, the next call would be content.
  Globals& globals = TheGlobals();
  globals.oBook = std::move(book);
  globals.oMyPlant = plant;
  connection_count_ = count;
}

host::Book gExcelObject::oBook() const {
  return TheGlobals().oBook;
}
Ref<CToolbars> gExcelObject::oToolBars() const {
  return OfClass<CToolbars>(TheGlobals().oToolBars);
}
Ref<CEnvironment> gExcelObject::oEnvironment() const {
  return OfClass<CEnvironment>(TheGlobals().oEnvironment);
}
host::Plant gExcelObject::oMyPlant() const {
  return TheGlobals().oMyPlant;
}

void gExcelObject::ResetConnectEX(Value) {
  Globals& globals = TheGlobals();
  globals.oMyPlant = {};
  globals.oToolBars.reset();
  globals.oEnvironment.reset();
  excel_state_.reset();
  globals.oBook = {};
  connection_count_ = 0;
}

void gExcelObject::ResetConnectOnError() {
  ResetConnectEX({});
}

void gExcelObject::ExcelReportError(ObjectPtr ExcelErr) {
  std::u16string description;
  IgnoreFailures([&] { description = Get(ExcelErr, u"Description").ToText(); });
  IgnoreFailures([&] { TellFailure(description); });
  IgnoreFailures([&] { GetServices().message_box->Show(description, vbCritical | vbOKOnly, u""); });
  // A copy: an Excel that quits runs macros that may release the global object, and with it the application.
  // Without one the first call fails, too.
  const excel::Application application = TheGlobals().application;
  IgnoreFailures([&] {
    if (application.Visible()) {
      application.SetScreenUpdating(true);
    } else {
      application.Quit();
    }
  });
}

void gExcelObject::InitToolBars() {
  // Made before it is counted: one that could not be made is made by the next call.
  const Ref<CToolbars> made = toolbar_count_ == 0 ? MakeRef<CToolbars>(excel_) : Ref<CToolbars>();
  Count(toolbar_count_, 1);
  if (made) TheGlobals().oToolBars = made;
}

void gExcelObject::ResetToolBars() {
  Count(toolbar_count_, -1);
  if (toolbar_count_ == 0) TheGlobals().oToolBars.reset();
}

void gExcelObject::cmdHelp() {
  const Ref<CToolbar> toolbar = Held(oToolBars())->Item(1);
  const Ref<CCommandsEvent> events = Held(toolbar)->CmdEvent();
  std::u16string help_file;
  std::int32_t help_context = 0;
  Held(events)->cmdHelp(help_file, help_context);
}

void gExcelObject::InitEnvironment() {
  if (environment_count_ == 0) {
    // Made before they are counted, as above.
    const auto environment = MakeRef<CEnvironment>(excel_);
    excel_state_ = MakeRef<CExcelState>(excel_);
    TheGlobals().oEnvironment = environment;
  }
  Count(environment_count_, 1);
  const Ref<CExcelState> state = Held(excel_state_);
  CountingBack(environment_count_, -1, [&] { state->SaveExcelState(); });
}

void gExcelObject::ResetEnvironment() {
  Count(environment_count_, -1);
  const Ref<CExcelState> state = Held(excel_state_);
  CountingBack(environment_count_, 1, [&] { state->RestoreExcelState(); });
  if (environment_count_ == 0) {
    TheGlobals().oEnvironment.reset();
    excel_state_.reset();
  }
}

}  // namespace qva
