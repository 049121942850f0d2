#include "period/frmReportPeriod.h"

#include <algorithm>
#include <array>

#include "global/Helpers.h"
#include "global/StartUp.h"
#include "period/BookCache.h"
#include "period/CodesAndNames.h"
#include "platform/date.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

// Host messages.
constexpr std::int32_t kNoAccountPlan = 810;
constexpr std::int32_t kWrongPeriod = 811;
constexpr std::int32_t kPeriodNote = 828;
constexpr std::int32_t kNoPeriodKind = 836;

struct KindOption {
  PeriodKind kind;
  std::u16string_view option;
};
constexpr std::array<KindOption, 6> kOptions = {{{PeriodKind::Year, u"optYear"},
                                                 {PeriodKind::Quarter, u"optQuarter"},
                                                 {PeriodKind::Month, u"optMonth"},
                                                 {PeriodKind::FirstHalfYear, u"optHalfYearOwn"},
                                                 {PeriodKind::SecondHalfYear, u"optHalfYearTwo"},
                                                 {PeriodKind::User, u"optUser"}}};

/// The date in another year; 29 February becomes the 28th where the year has none.
Date InYear(Date date, int year) {
  const DateParts parts = PartsOf(date);
  const int last_day = PartsOf(LastOfMonth(DateFromParts(year, parts.month, 1))).day;
  return DateFromParts(year, parts.month, std::min(parts.day, last_day));
}

Date DayBefore(Date date) {
  return {date.serial - 1};
}

}  // namespace

struct frmReportPeriod::Showing {
  Showing(const host::SettingsCollection& settings, const host::Book& passed_book)
      : settings(settings), book(books.Get(passed_book.BookCode())), grid(books, [this](bool current) {
          // The pickers show months alone; their days are whatever they were.
          const auto months = [this](std::u16string_view begin, std::u16string_view end) {
            return DateRange{FirstOfMonth(ui::Get<ui::DatePicker>(*form, begin).Value()),
                             LastOfMonth(ui::Get<ui::DatePicker>(*form, end).Value())};
          };
          return current ? months(u"edCurrBegDate", u"edCurrEndDate")
                         : months(u"edPrevBegDate", u"edPrevEndDate");
        }) {}

  host::SettingsItem Setting(std::u16string_view name) const { return settings.Item(name); }

  host::SettingsCollection settings;
  std::optional<std::vector<std::u16string>> account_plans;  ///< their codes; nothing when not to be read
  BookCache books;
  host::Book book;  ///< the current one
  host::DocumentSelection document_selection;
  AccountSetGrid grid;
  std::unique_ptr<ui::Form> form;
  std::unique_ptr<HostForm> m_oForm;
  std::int16_t months_back = 0;  ///< of the last previous-period computation
  bool is_busy = false;  ///< the dialog itself changes controls; their changes are not answered meanwhile
};

frmReportPeriod::frmReportPeriod() = default;
frmReportPeriod::~frmReportPeriod() = default;

bool frmReportPeriod::Run(const host::SettingsCollection& settings, const host::Book& book) {
  struct EndShowing {
    std::unique_ptr<Showing>& showing;
    ~EndShowing() { showing.reset(); }
  } const end{showing_};

  showing_ = std::make_unique<Showing>(settings, book);
  const Services& services = GetServices();
  const ui::FormDescription layout = ReportPeriodLayout();
  showing_->form = services.forms->Create(layout);
  ui::Form& form = *showing_->form;
  showing_->m_oForm = std::make_unique<HostForm>(form, ui::Get<ui::Button>(form, u"btOk"),
                                                 ui::Get<ui::Button>(form, u"btCancel"), layout.caption);
  showing_->m_oForm->before_show = [this] { m_oForm_BeforeShow(); };
  showing_->m_oForm->ok_click = [this](bool& verdict, std::u16string& message) {
    m_oForm_btOKClick(verdict, message);
  };
  ConnectEvents();
  showing_->document_selection = host::DocumentSelection::Create(*services.object_factory);
  showing_->document_selection.Init(showing_->book);

  if (!showing_->m_oForm->ShowModal()) return false;
  WriteBack();
  return true;
}

void frmReportPeriod::ConnectEvents() {
  for (const KindOption& option : kOptions) {
    Option(option.option).on_click = [this, name = option.option] { OptionClicked(name); };
  }
  for (const std::u16string_view name : {u"txtYear", u"txtQuater", u"txtMonth"}) {
    Box(name).on_change = [this, name] { ControlChanged(name); };
  }
  for (const std::u16string_view name : {u"edCurrBegDate", u"edPrevEndDate"}) {
    Picker(name).on_change = [this, name] { ControlChanged(name); };
  }
  ui::Get<ui::Button>(*showing_->form, u"btSpecDelete").on_click = [this] {
    showing_->grid.btSpecDelete_Click();
  };
}

// --- Filling -----------------------------------------------------------------------------------------------

void frmReportPeriod::m_oForm_BeforeShow() {
  // The combo box takes codes without its list, too.
  IgnoreErrors([&] { FillAccountPlans(); });
  IgnoreErrors([&] { FillControls(); });
}

void frmReportPeriod::FillAccountPlans() {
  std::vector<ui::ComboBox::Item> items;
  std::vector<std::u16string> codes;
  for (auto& [code, name] : CodesAndNames(showing_->book.Table(host::kAccountSetTable))) {
    codes.push_back(code);
    items.push_back({std::move(code), std::move(name)});
  }
  AccountPlan().SetItems(std::move(items));
  showing_->account_plans = std::move(codes);
}

void frmReportPeriod::FillControls() {
  Showing& s = *showing_;
  AccountPlan().SetValue(s.Setting(u"Plan").Value().ToText());
  Box(u"txtYear").SetText(s.Setting(u"Year").Value().ToText());
  Box(u"txtQuater").SetText(s.Setting(u"Quarter").Value().ToText());
  Box(u"txtMonth").SetText(s.Setting(u"Month").Value().ToText());

  const std::u16string format = u"yyyy" + GetDateSeparator(true) + u"MM";
  const auto fill = [&](std::u16string_view picker, std::u16string_view setting) {
    Picker(picker).SetFormat(format);
    Picker(picker).SetValue(s.Setting(setting).Value().ToDate());
  };
  fill(u"edPrevBegDate", u"LastPerBeg");
  fill(u"edPrevEndDate", u"LastPerEnd");
  fill(u"edCurrBegDate", u"CurrPerBeg");
  fill(u"edCurrEndDate", u"CurrPerEnd");

  Box(u"txtYear").SetMaxLength(4);
  Box(u"txtQuater").SetMaxLength(1);
  Box(u"txtMonth").SetMaxLength(2);

  const std::int32_t kind = s.Setting(u"RepPeriodType").Value().ToInt32();
  const auto option = std::ranges::find(kOptions, static_cast<PeriodKind>(kind), &KindOption::kind);
  Option(option == kOptions.end() ? u"optYear" : option->option).Select();

  for (const std::u16string_view name : {u"edCurrBegDate", u"edPrevBegDate"}) {
    Picker(name).SetValue(FirstOfMonth(Picker(name).Value()));
  }
  for (const std::u16string_view name : {u"edCurrEndDate", u"edPrevEndDate"}) {
    Picker(name).SetValue(LastOfMonth(Picker(name).Value()));
  }

  Box(u"Text1").SetText(HostText(kPeriodNote));
  s.grid.Prepare(ui::Get<ui::Grid>(*s.form, u"SpecGrid"), s.book,
                 ado::Recordset(s.Setting(u"BudgetRS").Value().ToObject()));
  s.form->StartResizer(s.form->Width(), s.form->Height(),
                       [](std::u16string_view name) -> std::optional<ui::ResizeMode> {
                         if (name == u"Frame2") return ui::ResizeMode::MoveWithWidth;
                         if (name == u"Text1") return ui::ResizeMode::StretchWithWidth;
                         return {};
                       });
}

void frmReportPeriod::ApplyEnabling() {
  const bool user = Option(u"optUser").Selected();
  for (const std::u16string_view name : {u"txtYear", u"txtQuater", u"txtMonth"}) Box(name).SetEnabled(!user);
  // edPrevEndDate is not among them: the user may move the period of comparison with every kind.
  for (const std::u16string_view name : {u"edCurrBegDate", u"edCurrEndDate", u"edPrevBegDate"}) {
    Picker(name).SetEnabled(user);
  }
}

// --- Recomputation -----------------------------------------------------------------------------------------

PeriodKind frmReportPeriod::SelectedKind() const {
  PeriodKind selected = PeriodKind::None;
  for (const KindOption& option : kOptions) {
    if (Option(option.option).Selected()) selected = option.kind;
  }
  return selected;
}

void frmReportPeriod::OptionClicked(std::u16string_view name) {
  ControlChanged(name);
  IgnoreErrors([&] { ApplyEnabling(); });
}

void frmReportPeriod::ControlChanged(std::u16string_view name) {
  IgnoreErrors([&] {
    if (!showing_->form->Visible() || showing_->is_busy) return;
    showing_->is_busy = true;
    Recompute(name);
    // After a failure it stays set, and the dialog leaves the controls to the user: intended.
    showing_->is_busy = false;
  });
}

void frmReportPeriod::Recompute(std::u16string_view name) {
  if (name == u"txtYear") {
    const std::u16string text = Box(u"txtYear").Text();
    if (text.size() != 4) return;
    const int year = Number(u"txtYear");
    if (year < 100) throw AutomationError(kInvalidPropertyValue);  // no date picker takes such a year
    for (const std::u16string_view picker : {u"edCurrBegDate", u"edCurrEndDate"}) {
      Picker(picker).SetValue(InYear(Picker(picker).Value(), year));
    }
    Picker(u"edPrevEndDate").SetValue(DayBefore(Picker(u"edCurrBegDate").Value()));
    // Whichever kind is selected: a new year is compared with twelve months.
    ShowPreviousPeriod(-12);
  } else if (name == u"txtQuater") {
    Option(u"optQuarter").Select();
    Recompute(u"optQuarter");
  } else if (name == u"txtMonth") {
    Option(u"optMonth").Select();
    Recompute(u"optMonth");
  } else if (name == u"edCurrBegDate") {
    if (!Option(u"optUser").Selected()) return;
    const DateParts begin = PartsOf(Picker(u"edCurrBegDate").Value());
    Box(u"txtYear").SetText(NumberText(begin.year));
    Box(u"txtQuater").SetText(NumberText((begin.month - 1) / 3 + 1));
    Box(u"txtMonth").SetText(NumberText(begin.month));
  } else if (name == u"edPrevEndDate") {
    if (!Option(u"optUser").Selected()) ShowPreviousPeriod(showing_->months_back);
  } else {
    const auto option = std::ranges::find(kOptions, name, &KindOption::option);
    if (option->kind == PeriodKind::User) return;
    const CurrentPeriod period =
        CurrentPeriodOf(option->kind, Number(u"txtYear"), Number(u"txtQuater"), Number(u"txtMonth"));
    Picker(u"edCurrBegDate").SetValue(period.begin);
    Picker(u"edCurrEndDate").SetValue(period.end);
    Picker(u"edPrevEndDate").SetValue(DayBefore(Picker(u"edCurrBegDate").Value()));
    ShowPreviousPeriod(period.months_back);
  }
}

void frmReportPeriod::ShowPreviousPeriod(std::int16_t months_back) {
  showing_->months_back = months_back;
  Picker(u"edPrevBegDate").SetValue(PreviousBegin(Picker(u"edPrevEndDate").Value(), months_back));
}

// --- Confirmation ------------------------------------------------------------------------------------------

void frmReportPeriod::m_oForm_btOKClick(bool& verdict, std::u16string& message) {
  const bool went_through = IgnoreErrors([&] {
    std::u16string_view focus;
    const std::int32_t refusal = Refusal(focus);
    verdict = refusal == 0;
    message.clear();
    if (verdict) return;
    message = HostText(refusal);
    if (!focus.empty()) showing_->form->Find(focus)->SetFocus();
  });
  if (!went_through) verdict = false;  // what was not checked must not pass
}

/// The number of the host message that tells what is wrong, 0 when nothing is, and the control to correct it
/// in.
std::int32_t frmReportPeriod::Refusal(std::u16string_view& focus) const {
  const auto selected = [this](std::u16string_view option) { return Option(option).Selected(); };
  if (AccountPlanCode().empty()) {
    focus = u"cbAccPlan";
    return kNoAccountPlan;
  }
  // True exactly when none is selected, since at most one of a group is.
  if (((((selected(u"optYear") == selected(u"optQuarter")) == selected(u"optMonth")) ==
        selected(u"optHalfYearOwn")) == selected(u"optHalfYearTwo")) == selected(u"optUser")) {
    return kNoPeriodKind;
  }
  const std::u16string year = Box(u"txtYear").Text();
  // Both at once, on purpose: a year of two digits passes, and so do any four characters.
  if (Trim(year).size() != 4 && LeadingNumber(year) == 0) {
    focus = u"txtYear";
    return kWrongPeriod;
  }
  if (selected(u"optQuarter")) {
    const int quarter = Number(u"txtQuater");
    // The fourth quarter cannot be confirmed as a quarter: intended.
    if (quarter > 3 || quarter < 1) {
      focus = u"txtQuater";
      return kWrongPeriod;
    }
  }
  if (selected(u"optMonth")) {
    const int month = Number(u"txtMonth");
    if (month > 12 || month < 1) {
      focus = u"txtMonth";
      return kWrongPeriod;
    }
  }
  const Date current_begin = Picker(u"edCurrBegDate").Value();
  const bool current_is_wrong = current_begin > Picker(u"edCurrEndDate").Value();
  const Date previous_begin = Picker(u"edPrevBegDate").Value();
  if (current_is_wrong || previous_begin > Picker(u"edPrevEndDate").Value() ||
      current_begin < previous_begin) {
    focus = current_is_wrong ? u"edCurrBegDate" : u"edPrevBegDate";
    return kWrongPeriod;
  }
  return 0;
}

void frmReportPeriod::WriteBack() {
  Showing& s = *showing_;
  const std::u16string plan = AccountPlanCode();
  s.Setting(u"Plan").SetValue(plan);
  s.Setting(u"Year").SetValue(LeadingNumber(Box(u"txtYear").Text()));
  s.Setting(u"Quarter").SetValue(LeadingNumber(Box(u"txtQuater").Text()));
  s.Setting(u"Month").SetValue(LeadingNumber(Box(u"txtMonth").Text()));
  s.Setting(u"RepPeriodType").SetValue(static_cast<std::int32_t>(SelectedKind()));
  s.Setting(u"LastPerBeg").SetValue(FirstOfMonth(Picker(u"edPrevBegDate").Value()));
  s.Setting(u"LastPerEnd").SetValue(LastOfMonth(Picker(u"edPrevEndDate").Value()));
  s.Setting(u"CurrPerBeg").SetValue(FirstOfMonth(Picker(u"edCurrBegDate").Value()));
  s.Setting(u"CurrPerEnd").SetValue(LastOfMonth(Picker(u"edCurrEndDate").Value()));

  Value is_budget = false;
  const auto read_flag = [&] {
    const host::Table plans = s.book.Table(host::kAccountSetTable);
    if (plans.Seek(plan)) is_budget = plans.Field(host::kIsBudgetField);
  };
  // A host that could not list its plans may not find one either; the text passes all the same.
  if (s.account_plans) {
    read_flag();
  } else {
    IgnoreErrors(read_flag);
  }
  s.Setting(u"IsBudgetPlan").SetValue(is_budget);

  const ado::Recordset budgets(s.Setting(u"BudgetRS").Value().ToObject());
  s.grid.WriteBack(budgets);
  s.Setting(u"BudgetCount").SetValue(budgets.RecordCount());
}

// --- Controls ----------------------------------------------------------------------------------------------

ui::TextBox& frmReportPeriod::Box(std::u16string_view name) const {
  return ui::Get<ui::TextBox>(*showing_->form, name);
}
ui::DatePicker& frmReportPeriod::Picker(std::u16string_view name) const {
  return ui::Get<ui::DatePicker>(*showing_->form, name);
}
ui::OptionButton& frmReportPeriod::Option(std::u16string_view name) const {
  return ui::Get<ui::OptionButton>(*showing_->form, name);
}
ui::ComboBox& frmReportPeriod::AccountPlan() const {
  return ui::Get<ui::ComboBox>(*showing_->form, u"cbAccPlan");
}
std::u16string frmReportPeriod::AccountPlanCode() const {
  std::u16string text = AccountPlan().Value();
  const auto& codes = showing_->account_plans;
  if (!codes || std::ranges::find(*codes, text) != codes->end()) return text;
  const auto own =
      std::ranges::find_if(*codes, [&](const std::u16string& code) { return EqualIgnoringCase(code, text); });
  return own == codes->end() ? std::u16string() : *own;
}
/// The numeric value of a text box as a whole number.
int frmReportPeriod::Number(std::u16string_view box) const {
  return Value(LeadingNumber(Box(box).Text())).ToInt32();
}

}  // namespace qva
