#include "global/CTools.h"

#include <utility>

#include "platform/forwarding.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Tools : public LibraryTest {
 protected:
  Tools() { Call(tools, u"Init", {application}); }

  /// Calls a member with a variable by reference, whose value then is in `variable`.
  Value CallWith(std::u16string_view member, Value& variable) {
    Arguments arguments{variable};
    const Value result = tools->Invoke(Access::Call, member, arguments);
    variable = arguments.positional[0];
    return result;
  }

  std::u16string NameOf(const Value& book) { return Get(book.ToObject(), u"Name").ToText(); }
  /// The names of the open workbooks.
  std::vector<std::u16string> OpenBooks() {
    std::vector<std::u16string> names;
    const ObjectPtr books = GetObject(excel, u"Workbooks");
    for (std::int32_t i = 1; i <= Get(books, u"Count").ToInt32(); ++i) {
      names.push_back(Get(GetObject(books, u"Item", {i}), u"Name").ToText());
    }
    return names;
  }
  void Open(std::u16string_view full_name) {
    excel->AddFile(full_name);
    Call(GetObject(excel, u"Workbooks"), u"Open", {full_name});
  }

  /// Starts the count, the trace and the failures anew.
  void StartOver(long failing_call = 0) {
    count.Reset();
    trace.Clear();
    failure.Reset(failing_call);
  }

  ObjectPtr tools = Create(u"CTools");
};

// --- Init

TEST_F(Tools, WorkOnTheApplicationThatTheyAreGiven) {
  const Ref<memory::Application> other = MakeRef<memory::Application>();
  Call(tools, u"Init", {ObjectPtr(other)});
  Call(tools, u"LockScreen", {true});
  EXPECT_EQ(Get(other, u"ScreenUpdating"), Value(false));
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
}

TEST_F(Tools, WorkOnTheLibrarysApplicationWhenTheyAreGivenNone) {
  const ObjectPtr global = Connected();
  tools = Create(u"CTools");
  Call(tools, u"Init", {Nothing()});
  Call(tools, u"LockScreen", {true});
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(false));
}

TEST_F(Tools, HaveNoApplicationBeforeInitAndWithoutAConnection) {
  for (const bool is_initialised : {false, true}) {
    tools = Create(u"CTools");
    if (is_initialised) Call(tools, u"Init", {Nothing()});
    EXPECT_EQ(RaisedBy([&] { Call(tools, u"LockScreen", {true}); }), kObjectNotSet);
    EXPECT_EQ(RaisedBy([&] { Call(tools, u"BookIsOpen", {u"Report"}); }), kObjectNotSet);
    EXPECT_EQ(RaisedBy([&] { Call(tools, u"FileExist", {u"C:\\", u"Report.xls"}); }), kObjectNotSet);
    EXPECT_TRUE(Call(tools, u"OpenBook", {u"C:\\", u"Report"}).IsNothing());
    Call(tools, u"SheetLock", {true, u"", u"Sheet1"});
  }
}

TEST_F(Tools, LetGoOfTheApplicationWhenTheyAreReleased) {
  const long before = application->ReferenceCount();
  tools.reset();
  EXPECT_EQ(application->ReferenceCount(), before - 1);
}

// --- CheckFileName

TEST_F(Tools, AddTheExtensionWhereItIsMissing) {
  const std::vector<std::pair<std::u16string, std::u16string>> names = {{u"Report", u"Report.xls"},
                                                                        {u"Report.xls", u"Report.xls"},
                                                                        {u"REPORT.XLS", u"REPORT.XLS"},
                                                                        {u"Report.XlS", u"Report.XlS"},
                                                                        {u"", u".xls"},
                                                                        {u"xls", u"xls.xls"},
                                                                        {u".xls", u".xls"},
                                                                        {u"Report.xlsx", u"Report.xlsx.xls"},
                                                                        {u"Report.xls ", u"Report.xls .xls"},
                                                                        {u"Ąžuolas", u"Ąžuolas.xls"}};
  for (const auto& [name, expected] : names) {
    Value variable = name;
    CallWith(u"CheckFileName", variable);
    EXPECT_EQ(variable, Value(expected));
  }
}

// --- BookIsOpen

TEST_F(Tools, FindAnOpenBookInAnyLetterCaseAndCompleteTheCallersName) {
  Open(u"C:\\Arch\\REPORT.XLS");
  Value name = u"Report";
  EXPECT_EQ(CallWith(u"BookIsOpen", name), Value(true));
  EXPECT_EQ(name, Value(u"Report.xls"));
}

TEST_F(Tools, FindNoBookThatIsNotOpen) {
  Value name = u"Report";
  EXPECT_EQ(CallWith(u"BookIsOpen", name), Value(false));
  EXPECT_EQ(name, Value(u"Report.xls"));
  Open(u"C:\\Arch\\Report2.xls");
  EXPECT_EQ(CallWith(u"BookIsOpen", name), Value(false));
}

TEST_F(Tools, DoNotFindABookThatWasNeverSaved) {
  excel->AddWorkbook();
  EXPECT_EQ(Call(tools, u"BookIsOpen", {u"Book1"}), Value(false)) << "its name has no extension";
}

TEST_F(Tools, StopAtTheFirstBookThatFits) {
  for (const auto* name : {u"C:\\A.xls", u"C:\\B.xls", u"C:\\C.xls"}) Open(name);
  StartOver();
  EXPECT_EQ(Call(tools, u"BookIsOpen", {u"b"}), Value(true));
  EXPECT_THAT(
      trace.lines(),
      ElementsAre("Application.Workbooks", "Application.Workbooks.Count -> 3",
                  "Application.Workbooks.Item(1)", "Application.Workbooks.Item(1).Name -> \"A.xls\"",
                  "Application.Workbooks.Item(2)", "Application.Workbooks.Item(2).Name -> \"B.xls\""));
  EXPECT_EQ(count.calls(), 6);
  StartOver();
  EXPECT_EQ(Call(tools, u"BookIsOpen", {u"d"}), Value(false));
  EXPECT_EQ(count.calls(), 2 + 2 * 3);
}

TEST_F(Tools, LetEveryErrorOfTheSearchForABookPass) {
  Open(u"C:\\A.xls");
  Open(u"C:\\B.xls");
  for (long n = 1; n <= 6; ++n) {
    StartOver(n);
    Value name = u"B";
    EXPECT_EQ(RaisedBy([&] {
                Arguments arguments{name};
                try {
                  tools->Invoke(Access::Call, u"BookIsOpen", arguments);
                } catch (...) {
                  name = arguments.positional[0];
                  throw;
                }
              }),
              kAutomationFailed)
        << "call " << n;
    EXPECT_EQ(name, Value(u"B.xls")) << "the name is complete before Excel is asked";
    EXPECT_EQ(count.calls(), n);
  }
  StartOver(7);
  EXPECT_EQ(Call(tools, u"BookIsOpen", {u"B"}), Value(true));
  EXPECT_FALSE(failure.has_failed());
}

// --- OpenBook

TEST_F(Tools, GiveAnOpenBookWhereverItsFileIs) {
  Open(u"C:\\Arch\\Report.xls");
  const Value book = Call(tools, u"OpenBook", {u"D:\\Kitur\\", u"report"});
  EXPECT_EQ(NameOf(book), u"Report.xls");
  EXPECT_EQ(OpenBooks().size(), 1u);
}

TEST_F(Tools, OpenABookThatIsNotOpenByThePathAsItStands) {
  excel->AddFile(u"C:\\Arch\\Report.xls");
  excel->AddFile(u"C:\\ArchReport.xls");
  EXPECT_EQ(Get(Call(tools, u"OpenBook", {u"C:\\Arch\\", u"Report"}).ToObject(), u"FullName"),
            Value(u"C:\\Arch\\Report.xls"));
  Call(GetObject(excel, u"ActiveWorkbook"), u"Close");
  EXPECT_EQ(Get(Call(tools, u"OpenBook", {u"C:\\Arch", u"Report"}).ToObject(), u"FullName"),
            Value(u"C:\\ArchReport.xls"));
}

TEST_F(Tools, GiveNothingForABookThatCannotBeOpened) {
  EXPECT_TRUE(Call(tools, u"OpenBook", {u"C:\\Nera\\", u"Report"}).IsNothing());
  EXPECT_THAT(OpenBooks(), IsEmpty());
}

TEST_F(Tools, LeaveTheCallersNameAloneWhenTheyOpenABook) {
  Arguments arguments{u"C:\\", u"Report"};
  tools->Invoke(Access::Call, u"OpenBook", arguments);
  EXPECT_EQ(arguments.positional[1], Value(u"Report"));
}

TEST_F(Tools, AskForTheOpenBooksOnceWhenTheyOpenOne) {
  Open(u"C:\\A.xls");
  excel->AddFile(u"C:\\Report.xls");
  StartOver();
  EXPECT_EQ(NameOf(Call(tools, u"OpenBook", {u"C:\\", u"Report"})), u"Report.xls");
  EXPECT_THAT(trace.lines(),
              ElementsAre("Application.Workbooks", "Application.Workbooks.Count -> 1",
                          "Application.Workbooks.Item(1)", "Application.Workbooks.Item(1).Name -> \"A.xls\"",
                          "Application.Workbooks.Open(\"C:\\Report.xls\")",
                          "Application.Workbooks.Open(\"C:\\Report.xls\").Name -> \"Report.xls\""));
  StartOver();
  EXPECT_FALSE(Call(tools, u"OpenBook", {u"C:\\", u"A"}).IsNothing());
  EXPECT_EQ(count.calls(), 4) << "the book that was found is not asked for again";
}

TEST_F(Tools, NeverRaiseWhenTheyOpenABook) {
  excel->AddFile(u"C:\\Report.xls");
  Open(u"C:\\A.xls");
  // Workbooks, Count, Item and Name of the open one, Open.
  for (long n = 1; n <= 5; ++n) {
    StartOver(n);
    EXPECT_TRUE(Call(tools, u"OpenBook", {u"C:\\", u"Report"}).IsNothing()) << "call " << n;
    EXPECT_TRUE(failure.has_failed());
    EXPECT_THAT(OpenBooks(), ElementsAre(u"A.xls"));
  }
  StartOver(6);
  EXPECT_FALSE(Call(tools, u"OpenBook", {u"C:\\", u"Report"}).IsNothing());
  EXPECT_FALSE(failure.has_failed());
}

TEST_F(Tools, OnlyLookForABookWhenExcelDoesNotTellWhatIsOpen) {
  Open(u"C:\\A.xls");
  for (long n = 2; n <= 4; ++n) {
    StartOver(n);
    EXPECT_EQ(NameOf(Call(tools, u"OpenBook", {u"C:\\", u"A"})), u"A.xls") << "call " << n;
    EXPECT_TRUE(failure.has_failed());
  }
}

// --- LockScreen

TEST_F(Tools, FreezeAndThawTheScreen) {
  Put(excel, u"StatusBar", u"Skaičiuojama");
  StartOver();
  Call(tools, u"LockScreen", {true});
  EXPECT_THAT(trace.lines(), ElementsAre("Application.ScreenUpdating = False", "Application.Cursor = 2"));
  StartOver();
  Call(tools, u"LockScreen", {false});
  EXPECT_THAT(trace.lines(), ElementsAre("Application.ScreenUpdating = True", "Application.Cursor = -4143",
                                         "Application.StatusBar = False"));
  EXPECT_EQ(Get(excel, u"StatusBar"), Value(false));
}

TEST_F(Tools, LockTheScreenOnlyOnceInTheirLife) {
  Call(tools, u"LockScreen", {true});
  Call(tools, u"LockScreen", {false});
  StartOver();
  Call(tools, u"LockScreen", {true});
  EXPECT_EQ(count.calls(), 0);
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
}

TEST_F(Tools, LockALockedScreenNoFurther) {
  Call(tools, u"LockScreen", {true});
  StartOver();
  Call(tools, u"LockScreen", {true});
  EXPECT_EQ(count.calls(), 0);
}

TEST_F(Tools, ThawTheScreenAtEveryUnlockAfterTheFirstLock) {
  Call(tools, u"LockScreen", {true});
  Call(tools, u"LockScreen", {false});
  Put(excel, u"ScreenUpdating", false);
  Call(tools, u"LockScreen", {false});
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
}

TEST_F(Tools, DoNotThawAScreenThatTheyNeverLocked) {
  Put(excel, u"ScreenUpdating", false);
  StartOver();
  Call(tools, u"LockScreen", {false});
  EXPECT_EQ(count.calls(), 0);
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(false));
}

TEST_F(Tools, EachLockTheScreenForThemselves) {
  const ObjectPtr others = Create(u"CTools");
  Call(others, u"Init", {application});
  Call(tools, u"LockScreen", {true});
  StartOver();
  Call(others, u"LockScreen", {false});
  EXPECT_EQ(count.calls(), 0);
  Call(others, u"LockScreen", {true});
  EXPECT_EQ(count.calls(), 2);
}

TEST_F(Tools, LetEveryErrorOfALockPassAndDoNotCountIt) {
  for (long n = 1; n <= 2; ++n) {
    StartOver(n);
    EXPECT_EQ(RaisedBy([&] { Call(tools, u"LockScreen", {true}); }), kAutomationFailed);
    EXPECT_EQ(count.calls(), n);
  }
  StartOver();
  Call(tools, u"LockScreen", {true});
  EXPECT_EQ(count.calls(), 2) << "the lock that failed was none";
}

TEST_F(Tools, LetEveryErrorOfAnUnlockPass) {
  Call(tools, u"LockScreen", {true});
  for (long n = 1; n <= 3; ++n) {
    StartOver(n);
    EXPECT_EQ(RaisedBy([&] { Call(tools, u"LockScreen", {false}); }), kAutomationFailed);
    EXPECT_EQ(count.calls(), n);
  }
}

// --- SheetLock

class ToolsOnASheet : public Tools {
 protected:
  ToolsOnASheet() : workbook(excel->AddWorkbook()), sheet(GetObject(excel, u"ActiveSheet")) { StartOver(); }

  bool IsProtected() { return Get(sheet, u"ProtectContents").ToBoolean(); }
  void Lock(bool status, std::u16string_view password, std::u16string_view name = u"Sheet1") {
    Call(tools, u"SheetLock", {status, password, name});
  }

  ObjectPtr workbook;
  ObjectPtr sheet;
};

TEST_F(ToolsOnASheet, ProtectItForTheUserAndLeaveItWritableForMacros) {
  Lock(true, u"slaptas");
  EXPECT_TRUE(IsProtected());
  Put(GetObject(sheet, u"Range", {u"A1"}), u"Value", 1);
  EXPECT_EQ(Get(GetObject(sheet, u"Range", {u"A1"}), u"Value"), Value(1.0));
  EXPECT_THAT(trace.lines(), ElementsAre("Application.Sheets", "Application.Sheets.Item(\"Sheet1\")",
                                         "Application.Sheets.Item(\"Sheet1\").Protect(\"slaptas\", "
                                         "UserInterfaceOnly:=True)"));
  EXPECT_EQ(count.calls(), 3);
}

TEST_F(ToolsOnASheet, TakeTheProtectionOffWithThePassword) {
  Lock(true, u"slaptas");
  StartOver();
  Lock(false, u"slaptas");
  EXPECT_FALSE(IsProtected());
  EXPECT_EQ(trace.lines().back(), "Application.Sheets.Item(\"Sheet1\").Unprotect(\"slaptas\")");
  EXPECT_EQ(count.calls(), 3);
}

TEST_F(ToolsOnASheet, LeaveTheProtectionWhenThePasswordIsWrong) {
  Lock(true, u"slaptas");
  Lock(false, u"SLAPTAS");
  EXPECT_TRUE(IsProtected());
}

TEST_F(ToolsOnASheet, ProtectWithoutAPasswordWhenItIsEmpty) {
  Lock(true, u"");
  Call(sheet, u"Unprotect");
  EXPECT_FALSE(IsProtected());
}

TEST_F(ToolsOnASheet, LeaveEverythingAsItIsForASheetThatIsMissing) {
  Lock(true, u"slaptas", u"Nera");
  Lock(false, u"slaptas", u"Nera");
  EXPECT_FALSE(IsProtected());
}

TEST_F(ToolsOnASheet, NeverRaiseWhenTheyProtectIt) {
  for (const bool status : {true, false}) {
    if (!status) Lock(true, u"slaptas");
    for (long n = 1; n <= 3; ++n) {
      StartOver(n);
      Lock(status, u"slaptas");
      EXPECT_EQ(count.calls(), n);
      EXPECT_EQ(IsProtected(), !status) << "call " << n;
    }
    StartOver(4);
    Lock(status, u"slaptas");
    EXPECT_FALSE(failure.has_failed());
    EXPECT_EQ(IsProtected(), status);
  }
}

// --- ConvertStr2Str

TEST_F(Tools, ReplaceTheCharactersThatAFileNameCannotHold) {
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"a/b.c:d", u"_"}), Value(u"a_b_c_d"));
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"\\/?*[].:", u"_"}), Value(u"________"));
}

TEST_F(Tools, KeepEveryOtherCharacter) {
  const auto* text = u"Pelnas (nuostoliai) \"2024\" <1>|;,-+~ ąčęėįšųūž😀";
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {text, u"_"}), Value(text));
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"", u"_"}), Value(u""));
}

TEST_F(Tools, ReplaceByAnyText) {
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"a.b:c", u""}), Value(u"abc"));
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"a.b:c", u" - "}), Value(u"a - b - c"));
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"a.b:c", u"."}), Value(u"a.b.c"));
}

TEST_F(Tools, ReplaceByAnUnderscoreWhenNothingIsSaid) {
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"a/b"}), Value(u"a_b"));
  EXPECT_EQ(Call(tools, u"ConvertStr2Str", {u"a/b", Missing()}), Value(u"a_b"));
}

// --- FileExist

TEST_F(Tools, FindAFileByExcelsOwnSearch) {
  excel->AddFile(u"C:\\Arch\\Report.xls");
  StartOver();
  EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch", u"Report.xls"}), Value(true));
  EXPECT_THAT(trace.lines(),
              ElementsAre("Application.FileSearch", "Application.FileSearch.LookIn = \"C:\\Arch\"",
                          "Application.FileSearch.FileName = \"Report.xls\"",
                          "Application.FileSearch.Execute() -> 1"));
  EXPECT_EQ(count.calls(), 4);
  EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch", u"Rep*.x?s"}), Value(true));
  EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch", u"Balansas.xls"}), Value(false));
  EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Nera", u"Report.xls"}), Value(false));
}

TEST_F(Tools, LetEveryErrorOfTheSearchForAFilePass) {
  excel->AddFile(u"C:\\Arch\\Report.xls");
  for (long n = 1; n <= 4; ++n) {
    StartOver(n);
    EXPECT_EQ(RaisedBy([&] { Call(tools, u"FileExist", {u"C:\\Arch", u"Report.xls"}); }), kAutomationFailed);
    EXPECT_EQ(count.calls(), n);
  }
}

TEST_F(Tools, SearchTheFolderThemselvesWhereExcelHasNoSearch) {
  platform.files.SetFile(u"C:\\Arch\\Ataskaita_Š.xls", "");
  platform.files.SetFolder(u"C:\\Arch\\2024.xls");
  excel->RemoveFileSearch();
  for (const auto* folder : {u"C:\\Arch", u"c:\\arch\\"}) {
    EXPECT_EQ(Call(tools, u"FileExist", {folder, u"Ataskaita_Š.xls"}), Value(true));
    EXPECT_EQ(Call(tools, u"FileExist", {folder, u"ATASKAITA_š.XLS"}), Value(true));
    EXPECT_EQ(Call(tools, u"FileExist", {folder, u"Ataskaita_?.x*"}), Value(true));
    EXPECT_EQ(Call(tools, u"FileExist", {folder, u"Ataskaita.xls"}), Value(false));
    EXPECT_EQ(Call(tools, u"FileExist", {folder, u"2024.xls"}), Value(false)) << "a folder is no file";
    EXPECT_EQ(Call(tools, u"FileExist", {folder, u"*.doc"}), Value(false));
  }
  EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Nera", u"*"}), Value(false));
  EXPECT_EQ(Call(tools, u"FileExist", {u"", u""}), Value(false));
  platform.files.SetFile(u"C:\\Ataskaita.xls", "");
  EXPECT_EQ(Call(tools, u"FileExist", {u"", u"Ataskaita.xls"}), Value(false)) << "no folder is not the root";
}

TEST_F(Tools, TakeTheSearchForMissingWhateverExcelCallsIt) {
  platform.files.SetFile(u"C:\\Arch\\Report.xls", "");
  for (const ErrorNumber number : {kUnsupportedMember, kUnsupportedAction}) {
    CallCount calls;
    CallFailure missing(1, AutomationError(number));
    Interceptor other({&calls, &missing});
    Call(tools, u"Init", {other.Wrap(excel, u"Application")});
    EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch", u"Report.xls"}), Value(true));
    EXPECT_EQ(calls.calls(), 1) << "Excel is asked once";
  }
}

TEST_F(Tools, LetAnErrorWithinExcelsSearchPassThatLooksAsIfItWereMissing) {
  platform.files.SetFile(u"C:\\Arch\\Report.xls", "");
  CallFailure failing(4, AutomationError(kUnsupportedAction));
  Interceptor other({&failing});
  Call(tools, u"Init", {other.Wrap(excel, u"Application")});
  EXPECT_EQ(RaisedBy([&] { Call(tools, u"FileExist", {u"C:\\Arch", u"Report.xls"}); }), kUnsupportedAction);
}

TEST_F(Tools, AskForTheOneFileWhereExcelHasNoSearch) {
  for (const auto* file : {u"C:\\Arch\\Ataskaita.xls", u"C:\\Arch\\Ataska~1.xls"}) {
    platform.files.SetFile(file, "");
  }
  platform.files.SetFolder(u"C:\\Arch\\2024.xls");
  platform.faults.files.Refuse(FaultyFiles::Operation::Find);  // a folder that may not be listed
  excel->RemoveFileSearch();
  for (const auto* name : {u"Ataskaita.xls", u"Ataska~1.xls"}) {
    EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch\\", name}), Value(true));
  }
  for (const auto* name : {u"Kita.xls", u"Kita~1.xls"}) {
    EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch", name}), Value(false));
  }
  EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch", u"2024.xls"}), Value(false)) << "a folder is no file";
  platform.faults.files.Refuse(FaultyFiles::Operation::Length, kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] {
              Call(tools, u"FileExist", {u"C:\\Arch", u"Ataskaita.xls"});
            }),
            kPathFileAccess)
      << "what cannot be known is not answered";
  for (const ErrorNumber missing : {kFileNotFound, kPathNotFound, kBadFileNameOrNumber}) {
    platform.faults.files.Refuse(FaultyFiles::Operation::Length, missing);
    EXPECT_EQ(Call(tools, u"FileExist", {u"C:\\Arch", u"Ataskaita.xls"}), Value(false)) << missing;
  }
}

TEST_F(Tools, AskForTheFileBehindOneSeparator) {
  class AskedFor : public ForwardingFiles {
   public:
    using ForwardingFiles::ForwardingFiles;
    double Length(std::u16string_view path) const override {
      paths.emplace_back(path);
      return ForwardingFiles::Length(path);
    }
    mutable std::vector<std::u16string> paths;
  } files(platform.files);
  Services services = GetServices();
  Files* const own = std::exchange(services.files, &files);
  InstallServices(services);
  excel->RemoveFileSearch();
  for (const auto* folder : {u"C:\\Arch", u"C:\\Arch\\", u"C:/Arch/"}) {
    Call(tools, u"FileExist", {folder, u"A.xls"});
  }
  EXPECT_THAT(files.paths, ElementsAre(u"C:\\Arch\\A.xls", u"C:\\Arch\\A.xls", u"C:/Arch/A.xls"));
  services.files = own;
  InstallServices(services);
}

}  // namespace
}  // namespace qva
