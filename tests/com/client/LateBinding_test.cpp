// The IDispatch way in, with every shape of argument.
#include <algorithm>

#include "platform/error.h"
#include "tests/com/client/client.h"
#include "tests/windows/windows_test.h"

namespace qva::com {
namespace {

class LateBinding : public ServerTest {
 protected:
  LateBinding() : list_(New<_CButtonProperties>(CLSID_CButtonProperties).Query<IDispatch>()) {}

  DISPID Id(const wchar_t* name) const { return IdOf(*list_, name); }
  Answer Call(const wchar_t* name, std::vector<VARIANT> arguments = {}) const {
    return Invoke(*list_, Id(name), kCall, std::move(arguments));
  }

  ComPtr<IDispatch> list_;
};

TEST_F(LateBinding, FindsMembersInAnyLetterCase) {
  EXPECT_EQ(Id(L"TotalButtons"), 1);
  EXPECT_EQ(Id(L"TOTALBUTTONS"), 1);
  EXPECT_EQ(Id(L"totalbuttons"), 1);
  EXPECT_EQ(Id(L"sBCaption"), 4);
  EXPECT_EQ(Id(L"TotalButton"), DISPID_UNKNOWN);
}

TEST_F(LateBinding, FindsTheNamesOfArguments) {
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  wchar_t member[] = L"initconnectex";
  wchar_t third[] = L"OAPPBOOK";
  wchar_t first[] = L"App";
  wchar_t* names[] = {member, third, first};
  DISPID ids[3] = {};
  EXPECT_EQ(global->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  EXPECT_EQ(ids[0], 1);
  EXPECT_EQ(ids[1], 2);
  EXPECT_EQ(ids[2], 0);

  wchar_t unknown[] = L"nobody";
  names[1] = unknown;
  EXPECT_EQ(global->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[0], 1);
  EXPECT_EQ(ids[1], DISPID_UNKNOWN);
}

TEST_F(LateBinding, TakesNamedArgumentsInAnyOrder) {
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  const auto excel = NewRegistered(L"QVA_TestBench.Excel");
  const Answer answer = Invoke(
      *global, 1, kCall, {ObjectArgument(excel.get()), Number(0), ObjectArgument(excel.get())}, {2, 1, 0});
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_EQ(answer.value, Value(std::int16_t{0}));
  EXPECT_EQ(Invoke(*global, 1, kCall, {Number(0), ObjectArgument(excel.get())}, {7}).code,
            DISP_E_PARAMNOTFOUND);
}

TEST_F(LateBinding, ReadsPropertiesByMethodCallToo) {
  EXPECT_EQ(Call(L"Add", {Number(3)}).code, S_OK);
  for (const WORD flags : {WORD{DISPATCH_METHOD}, WORD{DISPATCH_PROPERTYGET}, kCall}) {
    const Answer answer = Invoke(*list_, Id(L"TotalButtons"), flags);
    EXPECT_EQ(answer.code, S_OK);
    EXPECT_EQ(answer.value, Value(std::uint8_t{3}));
  }
}

TEST_F(LateBinding, PutsAnIndexedProperty) {
  Call(L"Add", {Number(1)});
  const Bstr text(u"Žyma");
  const Answer put =
      Invoke(*list_, Id(L"sBTag"), DISPATCH_PROPERTYPUT, {Text(text), Number(1)}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(put.code, S_OK);
  EXPECT_EQ(Call(L"sBTag", {Number(1)}).value, Value(u"Žyma"));
}

TEST_F(LateBinding, ConvertsArgumentsByAutomationsRules) {
  const Bstr three(u"3");
  EXPECT_EQ(Call(L"Add", {Text(three)}).code, S_OK);
  VARIANT half{};
  half.vt = VT_R8;
  half.dblVal = 0.5;  // rounds to even
  EXPECT_EQ(Call(L"Add", {half}).code, S_OK);
  EXPECT_EQ(Call(L"TotalButtons").value, Value(std::uint8_t{3}));
}

TEST_F(LateBinding, ReadsArgumentsByReferenceOfEveryShape) {
  LONG number = 1;
  VARIANT inner = ReferenceTo(VT_I4, &number);
  VARIANT outer = ReferenceTo(VT_VARIANT, &inner);
  VARIANT outermost = ReferenceTo(VT_VARIANT, &outer);
  BYTE byte = 1;
  for (const VARIANT& argument :
       {ReferenceTo(VT_I4, &number), outer, outermost, ReferenceTo(VT_UI1, &byte)}) {
    EXPECT_EQ(Call(L"Add", {argument}).code, S_OK);
  }
  EXPECT_EQ(Call(L"TotalButtons").value, Value(std::uint8_t{4}));
  EXPECT_EQ(number, 1);
}

TEST_F(LateBinding, AnswersAnUnknownMember) {
  EXPECT_EQ(Invoke(*list_, 9999, kCall).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(*list_, DISPID_VALUE, kCall).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(*list_, Id(L"TotalButtons"), DISPATCH_PROPERTYPUT, {Number(1)}, {DISPID_PROPERTYPUT}).code,
            DISP_E_MEMBERNOTFOUND);
}

TEST_F(LateBinding, AnswersAWrongNumberOfArguments) {
  EXPECT_EQ(Call(L"Add").code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Call(L"Add", {Number(1), Number(2)}).code, DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBinding, TellsWhichArgumentDidNotConvert) {
  Call(L"Add", {Number(1)});
  const Bstr text(u"trys");
  const Answer only = Call(L"Add", {Text(text)});
  EXPECT_EQ(only.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(only.argument, 0u);

  // The list runs from last to first: the new value stands before the index.
  const Answer index =
      Invoke(*list_, Id(L"nBID"), DISPATCH_PROPERTYPUT, {Number(5), Text(text)}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(index.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(index.argument, 1u);
  const Answer value =
      Invoke(*list_, Id(L"nBID"), DISPATCH_PROPERTYPUT, {Text(text), Number(1)}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(value.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(value.argument, 0u);

  const auto toolbar = New<_CToolbar>(CLSID_CToolbar);
  const Answer first = Invoke(*toolbar, IdOf(*toolbar, L"SetAction"), kCall, {Text(text), Text(text)});
  EXPECT_EQ(first.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(first.argument, 1u);
  // By name: ids of arguments are their places in the member.
  const Answer named =
      Invoke(*toolbar, IdOf(*toolbar, L"SetAction"), kCall, {Text(text), Text(text)}, {1, 0});
  EXPECT_EQ(named.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(named.argument, 1u);
}

TEST_F(LateBinding, TellsWhichArgumentIsOfATypeWithoutAValue) {
  VARIANT record{};
  record.vt = VT_RECORD;
  const auto toolbar = New<_CToolbar>(CLSID_CToolbar);
  const DISPID id = IdOf(*toolbar, L"SetAction");
  for (const UINT place : {0u, 1u}) {
    std::vector<VARIANT> arguments(2, Number(1));
    arguments[place] = record;
    for (const std::vector<DISPID>& named : {std::vector<DISPID>{}, std::vector<DISPID>{1, 0}}) {
      const Answer answer = Invoke(*toolbar, id, kCall, arguments, named);
      EXPECT_EQ(answer.code, DISP_E_TYPEMISMATCH);
      EXPECT_EQ(answer.argument, place);
    }
  }
}

TEST_F(LateBinding, RefusesAListOfArgumentsThatContradictsItself) {
  VARIANT one = Number(1);
  DISPID names[] = {0, 1};
  for (DISPPARAMS list :
       {DISPPARAMS{&one, names, 1, 2}, DISPPARAMS{nullptr, nullptr, 1, 0}, DISPPARAMS{&one, nullptr, 1, 1}}) {
    EXPECT_EQ(list_->Invoke(Id(L"Add"), IID_NULL, 0, kCall, &list, nullptr, nullptr, nullptr), E_INVALIDARG);
  }
  EXPECT_EQ(Call(L"TotalButtons").value, Value(std::uint8_t{0}));
}

TEST_F(LateBinding, TellsOfAnArgumentOutOfRange) {
  const Answer answer = Call(L"Add", {Number(256)});
  EXPECT_EQ(answer.code, DISP_E_OVERFLOW);
  EXPECT_EQ(answer.argument, 0u);
}

TEST_F(LateBinding, TellsOfADateThatNoCalendarHas) {
  const auto picker = New<_CDatePic>(CLSID_CDatePic);
  const auto form = New<_CSaveForm>(CLSID_CSaveForm);
  const Bstr text(u"x");
  for (DATE date : kNoDates) {
    VARIANT variant{};
    variant.vt = VT_DATE;
    variant.date = date;
    VARIANT number{};
    number.vt = VT_R8;
    number.dblVal = date;
    for (const VARIANT& argument : {variant, number, ReferenceTo(VT_DATE, &date)}) {
      const Answer shown = Invoke(*picker, IdOf(*picker, L"Show"), kCall, {argument});
      EXPECT_EQ(shown.code, DISP_E_OVERFLOW) << date;
      const Answer named = Invoke(*form, IdOf(*form, L"FileName"), kCall,
                                  {argument, Text(text), Text(text), Text(text), ObjectArgument(nullptr)});
      EXPECT_EQ(named.code, DISP_E_OVERFLOW) << date;
      EXPECT_EQ(named.argument, 0u) << "the last one stands first";
    }
  }
}

TEST_F(LateBinding, TellsOfAnArgumentThatMayNotBeLeftOut) {
  const Answer answer = Call(L"Add", {LeftOut()});
  EXPECT_EQ(answer.code, DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(answer.argument, 0u);
}

TEST_F(LateBinding, ReportsAMembersErrorWithNumberSourceAndText) {
  const Answer answer = Call(L"sBCaption", {Number(1)});
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.error_code, ErrorResult(kSubscriptOutOfRange));
  EXPECT_EQ(answer.source, u"QVA_Varnholt");
  EXPECT_EQ(answer.description, u"Subscript out of range");
}

TEST_F(LateBinding, ReportsAMembersErrorToACallerWithoutEXCEPINFO) {
  DISPPARAMS none{};
  VARIANT index = Number(1);
  DISPPARAMS one{&index, nullptr, 1, 0};
  EXPECT_EQ(list_->Invoke(Id(L"sBCaption"), IID_NULL, 0, kCall, &one, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(list_->Invoke(Id(L"Add"), IID_NULL, 0, kCall, &none, nullptr, nullptr, nullptr),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(list_->Invoke(Id(L"Add"), IID_NULL, 0, kCall, nullptr, nullptr, nullptr, nullptr), E_INVALIDARG);
}

TEST_F(LateBinding, SetsAnObjectByReferenceWhereTheCallerLeavesItOpen) {
  const auto toolbar = New<_CToolbar>(CLSID_CToolbar);
  const auto events = New<_CCommandsEvent>(CLSID_CCommandsEvent);
  const DISPID id = IdOf(*toolbar, L"CmdEvent");
  for (const WORD flags :
       {WORD{DISPATCH_PROPERTYPUTREF}, WORD{DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF}}) {
    EXPECT_EQ(Invoke(*toolbar, id, flags, {ObjectArgument(events.get())}, {DISPID_PROPERTYPUT}).code, S_OK);
    ComPtr<_CCommandsEvent> read;
    read.Obtain([&](_CCommandsEvent** received) { return toolbar->get_CmdEvent(received); });
    EXPECT_EQ(read.get(), events.get());
    EXPECT_EQ(toolbar->putref_CmdEvent(nullptr), S_OK);
  }
  EXPECT_EQ(
      Invoke(*toolbar, id, DISPATCH_PROPERTYPUT, {ObjectArgument(events.get())}, {DISPID_PROPERTYPUT}).code,
      DISP_E_MEMBERNOTFOUND);
}

/// The bench's control has a member that changes its argument; the calls take the same way as the library's.
class ByReference : public ServerTest {
 protected:
  Answer Increment(VARIANT argument) {
    return Invoke(*control_, IdOf(*control_, L"Increment"), kCall, {argument});
  }

  ComPtr<IDispatch> control_ = NewRegistered(L"QVA_TestBench.Control");
};

TEST_F(ByReference, WritesBackInTheVariablesOwnType) {
  LONG whole = 41;
  EXPECT_EQ(Increment(ReferenceTo(VT_I4, &whole)).code, S_OK);
  EXPECT_EQ(whole, 42);
  SHORT small = 41;
  EXPECT_EQ(Increment(ReferenceTo(VT_I2, &small)).code, S_OK);
  EXPECT_EQ(small, 42);
  BYTE byte = 41;
  EXPECT_EQ(Increment(ReferenceTo(VT_UI1, &byte)).code, S_OK);
  EXPECT_EQ(byte, 42);
  double number = 41;
  EXPECT_EQ(Increment(ReferenceTo(VT_R8, &number)).code, S_OK);
  EXPECT_EQ(number, 42);
  BSTR text = Bstr(u"41").Detach();
  EXPECT_EQ(Increment(ReferenceTo(VT_BSTR, &text)).code, S_OK);
  EXPECT_EQ(Bstr::Adopt(text).Text(), u"42");
}

TEST_F(ByReference, GivesAVariantVariableTheResultsType) {
  VARIANT variable = Number(41);
  EXPECT_EQ(Increment(ReferenceTo(VT_VARIANT, &variable)).code, S_OK);
  EXPECT_EQ(variable.vt, VT_I4);
  EXPECT_EQ(variable.lVal, 42);
}

TEST_F(ByReference, FollowsAReferenceInAVariantVariable) {
  LONG whole = 41;
  VARIANT variable = ReferenceTo(VT_I4, &whole);
  EXPECT_EQ(Increment(ReferenceTo(VT_VARIANT, &variable)).code, S_OK);
  EXPECT_EQ(variable.vt, VT_I4 | VT_BYREF);
  EXPECT_EQ(whole, 42);
}

TEST_F(ByReference, TellsWhenTheVariableCannotHoldTheResult) {
  BYTE byte = 255;
  const Answer answer = Increment(ReferenceTo(VT_UI1, &byte));
  EXPECT_NE(answer.code, S_OK);
  EXPECT_EQ(byte, 255);
}

TEST_F(ByReference, LeavesAVariableThatTheMemberLeavesAlone) {
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  const auto excel = NewRegistered(L"QVA_TestBench.Excel");
  const auto host = NewRegistered(L"NVXCommonObjects.CommonObjects");
  const Bstr code(u"MEDVILNE");
  const Answer book = Invoke(*host, IdOf(*host, L"CreateBook"), kCall, {Text(code)});
  const ComPtr<IDispatch> own_book = windows::ToDispatch(book.value.ToObject());
  short count = 0;
  ASSERT_EQ(global->InitConnectEX(excel.get(), LeftOut(), own_book.get(), &count), S_OK);

  // A Long by reference, for which a text that reads as a number will do.
  const auto reports = New<_CReports>(CLSID_CReports);
  const Bstr text(u"17");
  VARIANT variable = Text(text);
  wchar_t member[] = L"FillAttr";
  wchar_t argument[] = L"ID";
  wchar_t* names[] = {member, argument};
  DISPID ids[2] = {};
  ASSERT_EQ(reports->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
  EXPECT_EQ(Invoke(*reports, ids[0], kCall, {ReferenceTo(VT_VARIANT, &variable)}, {ids[1]}).code, S_OK);
  EXPECT_EQ(variable.vt, VT_BSTR);
  EXPECT_EQ(variable.bstrVal, text.get());
}

/// Arguments of the control's Divide by their ids, with the variables that they refer to.
class NamedByReference : public ByReference {
 protected:
  /// Each argument is given by name, but for the first `positional` ones.
  Answer Divide(const std::vector<DISPID>& named, std::size_t positional = 0) {
    const VARIANT all[] = {Number(17), ReferenceTo(VT_I2, &divisor_), ReferenceTo(VT_I4, &quotient_),
                           ReferenceTo(VT_VARIANT, &remainder_)};
    quotient_ = 0;
    remainder_ = Number(0);
    std::vector<VARIANT> arguments;
    for (const DISPID id : named) arguments.push_back(all[id]);
    while (positional > 0) arguments.push_back(all[--positional]);
    return Invoke(*control_, IdOf(*control_, L"Divide"), kCall, arguments, named);
  }

  SHORT divisor_ = 5;
  LONG quotient_ = 0;
  VARIANT remainder_ = {};
};

TEST_F(NamedByReference, GetsItsOwnResultInAnyOrder) {
  for (std::size_t positional = 0; positional < 4; ++positional) {
    std::vector<DISPID> named;
    for (std::size_t id = positional; id < 4; ++id) named.push_back(static_cast<DISPID>(id));
    do {
      SCOPED_TRACE(testing::PrintToString(named));
      EXPECT_EQ(Divide(named, positional).code, S_OK);
      EXPECT_EQ(quotient_, 3);
      EXPECT_EQ(remainder_.vt, VT_I4);
      EXPECT_EQ(remainder_.lVal, 2);
      EXPECT_EQ(divisor_, 5);
    } while (std::ranges::next_permutation(named).found);
  }
}

TEST_F(NamedByReference, GetsWhatAMemberThatFailsLeavesInIt) {
  divisor_ = 0;
  EXPECT_EQ(Divide({3, 2, 1}, 1).error_code, ErrorResult(kInvalidProcedureCall));
  EXPECT_EQ(quotient_, 0);
  EXPECT_EQ(remainder_.lVal, 17);
}

TEST_F(NamedByReference, ComesBackFromTheLibrary) {
  const auto tools = New<_CTools>(CLSID_CTools);
  wchar_t member[] = L"CheckFileName";
  wchar_t argument[] = L"filename";
  wchar_t* names[] = {member, argument};
  DISPID ids[2] = {};
  ASSERT_EQ(tools->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
  BSTR text = Bstr(u"Balansas").Detach();
  EXPECT_EQ(Invoke(*tools, ids[0], kCall, {ReferenceTo(VT_BSTR, &text)}, {ids[1]}).code, S_OK);
  EXPECT_EQ(Bstr::Adopt(text).Text(), u"Balansas.xls");
}

TEST_F(ByReference, TakesAPlainValueAndForgetsTheResult) {
  EXPECT_EQ(Increment(Number(41)).code, S_OK);
}

/// An error inside a member, which another object's refusal of the member's own call may be.
class ErrorInside : public ByReference {
 protected:
  /// An object whose Alpha refuses the last of its arguments.
  static ComPtr<windows::TestDispatch> Refusing(HRESULT code) {
    auto object = windows::NewDispatch();
    object->names = {u"Alpha", u"ScreenUpdating"};
    object->invoke = [code](const windows::InvokeCall& call) {
      *call.argument = 0;
      return code;
    };
    return object;
  }
};

TEST_F(ErrorInside, IsNotMistakenForARefusalOfTheCall) {
  const auto tools = New<_CTools>(CLSID_CTools);
  for (const auto& [code, number] : {std::pair<HRESULT, int>{DISP_E_TYPEMISMATCH, kTypeMismatch},
                                     {DISP_E_OVERFLOW, kOverflow},
                                     {DISP_E_MEMBERNOTFOUND, kUnsupportedMember},
                                     {DISP_E_BADPARAMCOUNT, kWrongArgumentCount}}) {
    const auto excel = Refusing(code);
    ASSERT_EQ(tools->Init(excel.get()), S_OK);
    const Answer answer = Invoke(*tools, IdOf(*tools, L"LockScreen"), kCall, {Number(-1)});
    EXPECT_EQ(answer.code, DISP_E_EXCEPTION) << number;
    EXPECT_EQ(answer.error_code, ErrorResult(number));
    EXPECT_EQ(answer.source, u"QVA_Varnholt");
    EXPECT_EQ(answer.description, StandardDescription(number));
    EXPECT_EQ(answer.argument, 99u);
  }
}

// The third argument of the member's own call; the member itself has one, which the caller names.
TEST_F(ErrorInside, TellsNoArgument) {
  const auto object = Refusing(DISP_E_TYPEMISMATCH);
  const Answer answer =
      Invoke(*control_, IdOf(*control_, L"CallAlpha"), kCall, {ObjectArgument(object.get())}, {0});
  EXPECT_EQ(object->calls, 1);
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.error_code, ErrorResult(kTypeMismatch));
  EXPECT_EQ(answer.argument, 99u);
}

/// What is no automation error stops at the boundary.
class Boundary : public ByReference {
 protected:
  Answer Throw(std::u16string_view what) {
    const Bstr text(what);
    return Invoke(*control_, IdOf(*control_, L"Throw"), kCall, {Text(text)});
  }
};

TEST_F(Boundary, ReportsALackOfMemoryAs7) {
  const Answer answer = Throw(u"bad_alloc");
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.error_code, ErrorResult(kOutOfMemory));
  EXPECT_EQ(answer.description, u"Out of memory");
}

TEST_F(Boundary, ReportsAnyOtherExceptionAs51) {
  for (const std::u16string_view what : {u"logic_error", u"number"}) {
    const Answer answer = Throw(what);
    EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
    EXPECT_EQ(answer.error_code, ErrorResult(kInternalError));
    EXPECT_EQ(answer.source, u"QVA_Varnholt");
    EXPECT_EQ(answer.description, u"Internal error");
  }
}

}  // namespace
}  // namespace qva::com
