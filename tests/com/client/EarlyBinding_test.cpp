// The vtable way in.
#include <cstring>

#include "platform/error.h"
#include "platform/text.h"
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

class EarlyBinding : public ServerTest {};

TEST_F(EarlyBinding, ReadsWhatItWrote) {
  const auto list = New<_CButtonProperties>(CLSID_CButtonProperties);
  ASSERT_TRUE(list);
  ASSERT_EQ(list->Add(2), S_OK);
  unsigned char total = 0;
  EXPECT_EQ(list->get_TotalButtons(&total), S_OK);
  EXPECT_EQ(total, 2);

  const Bstr caption(u"Spausdinti ąčęėįšųūž");
  EXPECT_EQ(list->put_sBCaption(2, caption.get()), S_OK);
  Bstr read;
  EXPECT_EQ(list->get_sBCaption(2, read.Receive()), S_OK);
  EXPECT_EQ(read.Text(), caption.Text());

  EXPECT_EQ(list->put_nBID(1, 2521), S_OK);
  LONG id = 0;
  EXPECT_EQ(list->get_nBID(1, &id), S_OK);
  EXPECT_EQ(id, 2521);

  EXPECT_EQ(list->put_bBVisible(1, VARIANT_TRUE), S_OK);
  VARIANT_BOOL is_visible = VARIANT_FALSE;
  EXPECT_EQ(list->get_bBVisible(1, &is_visible), S_OK);
  EXPECT_EQ(is_visible, VARIANT_TRUE);
}

TEST_F(EarlyBinding, AnswersAFailedCallWithItsErrorAndLeavesTheVariable) {
  const auto picker = New<_CDatePic>(CLSID_CDatePic);
  DATE date = 45455;
  VARIANT_BOOL confirmed = VARIANT_TRUE;
  const HRESULT code = picker->Show(&date, &confirmed);  // nobody answers forms here
  EXPECT_TRUE(code == ErrorResult(kInvalidProcedureCall)) << std::hex << code;
  EXPECT_EQ(confirmed, VARIANT_FALSE);
  EXPECT_EQ(date, 45455);
  EXPECT_EQ(TakeErrorObject().description, u"There are no answers for the form frmDatePic in nobody.answers");
}

TEST_F(EarlyBinding, RefusesDatesThatNoCalendarHas) {
  const auto picker = New<_CDatePic>(CLSID_CDatePic);
  const auto form = New<_CSaveForm>(CLSID_CSaveForm);
  const Bstr text(u"x");
  for (const DATE date : kNoDates) {
    DATE variable = date;
    VARIANT_BOOL confirmed = VARIANT_TRUE;
    EXPECT_EQ(picker->Show(&variable, &confirmed), ErrorResult(kOverflow)) << date;
    EXPECT_EQ(std::memcmp(&variable, &date, sizeof date), 0) << date;
    Bstr name;
    EXPECT_EQ(form->FileName(nullptr, text.get(), text.get(), text.get(), date, name.Receive()),
              ErrorResult(kOverflow))
        << date;
    EXPECT_EQ(TakeErrorObject().description, u"Overflow");
  }
}

TEST_F(EarlyBinding, TakesTheNullTextAsTheEmptyText) {
  const auto list = New<_CButtonProperties>(CLSID_CButtonProperties);
  list->Add(1);
  EXPECT_EQ(list->put_sBTag(1, nullptr), S_OK);
  BSTR tag = nullptr;
  EXPECT_EQ(list->get_sBTag(1, &tag), S_OK);
  EXPECT_EQ(Bstr::Adopt(tag).Text(), u"");
}

TEST_F(EarlyBinding, ReportsAnErrorWithNumberSourceAndText) {
  const auto list = New<_CButtonProperties>(CLSID_CButtonProperties);
  BSTR text = reinterpret_cast<BSTR>(1);
  EXPECT_EQ(list->get_sBCaption(1, &text), ErrorResult(kSubscriptOutOfRange));
  EXPECT_EQ(text, nullptr);
  const ErrorObject error = TakeErrorObject();
  EXPECT_EQ(error.source, u"QVA_Varnholt");
  EXPECT_EQ(error.description, u"Subscript out of range");
}

TEST_F(EarlyBinding, SaysThatItsInterfaceHasErrorObjects) {
  const auto list = New<_CButtonProperties>(CLSID_CButtonProperties);
  const auto support = list.Query<ISupportErrorInfo>();
  ASSERT_TRUE(support);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_CButtonProperties)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_CTools)), S_FALSE);
}

TEST_F(EarlyBinding, RefusesToWriteTheResultNowhere) {
  const auto list = New<_CButtonProperties>(CLSID_CButtonProperties);
  EXPECT_EQ(list->get_TotalButtons(nullptr), E_POINTER);
}

TEST_F(EarlyBinding, RefusesAReferenceToNothing) {
  const auto tools = New<_CTools>(CLSID_CTools);
  VARIANT_BOOL is_open = VARIANT_TRUE;
  EXPECT_EQ(tools->BookIsOpen(nullptr, &is_open), E_POINTER);
  EXPECT_EQ(is_open, VARIANT_FALSE);
}

TEST_F(EarlyBinding, HandsTheSameObjectBackUnderTheSameIdentity) {
  const auto toolbar = New<_CToolbar>(CLSID_CToolbar);
  const auto events = New<_CCommandsEvent>(CLSID_CCommandsEvent);
  ASSERT_EQ(toolbar->putref_CmdEvent(events.get()), S_OK);
  ComPtr<_CCommandsEvent> read;
  EXPECT_EQ(read.Obtain([&](_CCommandsEvent** received) { return toolbar->get_CmdEvent(received); }), S_OK);
  EXPECT_EQ(read.get(), events.get());
}

TEST_F(EarlyBinding, RefusesAnObjectOfAnotherClass) {
  const auto toolbar = New<_CToolbar>(CLSID_CToolbar);
  const auto other = New<_CTools>(CLSID_CTools);
  EXPECT_EQ(toolbar->putref_CmdEvent(reinterpret_cast<_CCommandsEvent*>(other.get())),
            ErrorResult(kTypeMismatch));
}

TEST_F(EarlyBinding, TakesNothingForAnObject) {
  const auto toolbar = New<_CToolbar>(CLSID_CToolbar);
  EXPECT_EQ(toolbar->putref_CmdEvent(nullptr), S_OK);
  ComPtr<_CCommandsEvent> read;
  EXPECT_EQ(read.Obtain([&](_CCommandsEvent** received) { return toolbar->get_CmdEvent(received); }), S_OK);
  EXPECT_FALSE(read);
}

TEST_F(EarlyBinding, ConnectsToExcelAndToTheHost) {
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  const auto excel = NewRegistered(L"QVA_TestBench.Excel");
  const auto host = NewRegistered(L"NVXCommonObjects.CommonObjects");
  ASSERT_TRUE(global && excel && host);
  const Bstr code(u"MEDVILNE");
  const Answer book = Invoke(*host, IdOf(*host, L"CreateBook"), kCall, {Text(code)});
  ASSERT_EQ(book.code, S_OK);
  const ComPtr<IDispatch> own_book = windows::ToDispatch(book.value.ToObject());

  short count = -1;
  ASSERT_EQ(global->InitConnectEX(excel.get(), LeftOut(), own_book.get(), &count), S_OK);
  EXPECT_EQ(count, 0) << "a given book is not a connection of the library's own";
  ComPtr<IDispatch> read;
  EXPECT_EQ(read.Obtain([&](IDispatch** received) { return global->get_oBook(received); }), S_OK);
  EXPECT_EQ(read.get(), own_book.get()) << "a foreign object goes out as it came in";
  EXPECT_EQ(global->InitToolBars(), S_OK);
  ComPtr<_CToolbars> toolbars;
  EXPECT_EQ(toolbars.Obtain([&](_CToolbars** received) { return global->get_oToolBars(received); }), S_OK);
  ASSERT_TRUE(toolbars);
  LONG number = -1;
  EXPECT_EQ(toolbars->get_Count(&number), S_OK);
  EXPECT_EQ(number, 0);
}

}  // namespace
}  // namespace qva::com
