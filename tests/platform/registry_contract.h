// What Registry promises, as tests that every adapter passes. A Store is made for each test and brings the
// adapter:
// - Registry& registry(): the adapter.
// - std::u16string root(): the path below HKEY_CURRENT_USER of a key that is not there yet. What a
//   test leaves below it is gone with the store.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/registry.h"
#include "platform/text.h"

namespace qva {

template <class Store>
class RegistryContract : public testing::Test {
 protected:
  static constexpr std::uint32_t kAll =
      kKeyQueryValue | kKeySetValue | kKeyCreateSubKey | kKeyEnumerateSubKeys | kKeyNotify;
  /// What type and size hold before a call, by which one sees that it left them alone.
  static constexpr std::uint32_t kUntouched = 77;

  std::u16string At(std::u16string_view path) { return store.root() + u"\\" + std::u16string(path); }
  RegistryKey Create(std::u16string_view path = u"K", std::uint32_t access = kAll) {
    RegistryKey key = 0;
    EXPECT_EQ(registry.CreateKey(HKEY_CURRENT_USER_VALUE, At(path), access, {}, key), kRegistrySuccess)
        << ToUtf8(path);
    return key;
  }
  RegistryKey Open(std::u16string_view path, std::uint32_t access = kAll) {
    RegistryKey key = 0;
    EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, At(path), access, key), kRegistrySuccess)
        << ToUtf8(path);
    return key;
  }
  std::int32_t OpenStatus(std::u16string_view path) {
    RegistryKey key = kUntouched;
    const std::int32_t status = registry.OpenKey(HKEY_CURRENT_USER_VALUE, At(path), kAll, key);
    if (status != kRegistrySuccess) {
      EXPECT_EQ(key, kUntouched) << ToUtf8(path);
    }
    return status;
  }
  void Set(RegistryKey key, std::u16string_view name, std::uint32_t type, std::string_view data) {
    EXPECT_EQ(registry.SetValue(key, name, type, data), kRegistrySuccess) << ToUtf8(name);
  }
  /// Type and bytes of a value as the library reads it; no type and the status where it is refused.
  RegistryValue Value(RegistryKey key, std::u16string_view name) {
    std::uint32_t type = kUntouched;
    std::uint32_t size = kUntouched;
    std::int32_t status = registry.QueryValue(key, name, type, {}, size);
    if (status == kRegistrySuccess) {
      std::string data(size, '~');
      status = registry.QueryValue(key, name, type, data, size);
      if (status == kRegistrySuccess) return {type, data};
    }
    EXPECT_EQ(type, kUntouched);
    EXPECT_EQ(size, kUntouched);
    return {kUntouched, NumberOf(status)};
  }
  /// The same as it is stored.
  RegistryValue Stored(RegistryKey key, std::u16string_view name) {
    RegistryValue value{kUntouched, "untouched"};
    const std::int32_t status = registry.QueryStored(key, name, value);
    if (status == kRegistrySuccess) return value;
    EXPECT_EQ(value, (RegistryValue{kUntouched, "untouched"}));
    return {kUntouched, NumberOf(status)};
  }
  /// What Value and Stored answer where nothing is read.
  static RegistryValue Refused(std::int32_t status) { return {kUntouched, NumberOf(status)}; }
  static std::string NumberOf(std::int32_t status) { return "(" + std::to_string(status) + ")"; }

  Store store;
  Registry& registry = store.registry();
};

TYPED_TEST_SUITE_P(RegistryContract);

// Keys.

TYPED_TEST_P(RegistryContract, AKeyThatIsMissingIsNotOpened) {
  EXPECT_EQ(this->OpenStatus(u"K"), kRegistryFileNotFound);
  this->Create(u"K");
  EXPECT_EQ(this->OpenStatus(u"K"), kRegistrySuccess);
  EXPECT_EQ(this->OpenStatus(u"K\\Below"), kRegistryFileNotFound);
  EXPECT_EQ(this->OpenStatus(u"K2"), kRegistryFileNotFound);
}

TYPED_TEST_P(RegistryContract, AKeyIsCreatedWithItsParents) {
  this->Create(u"A\\B\\C");
  for (const auto* path : {u"A", u"A\\B", u"A\\B\\C"}) {
    EXPECT_EQ(this->OpenStatus(path), kRegistrySuccess) << ToUtf8(path);
  }
  EXPECT_EQ(this->OpenStatus(u"B"), kRegistryFileNotFound);
}

TYPED_TEST_P(RegistryContract, CreatingAKeyThatIsThereOpensIt) {
  this->Set(this->Create(), u"v", kRegSz, "old");
  EXPECT_EQ(this->Value(this->Create(), u"v"), (RegistryValue{kRegSz, std::string("old\0", 4)}));
}

TYPED_TEST_P(RegistryContract, KeysAndNamesIgnoreLetterCase) {
  const RegistryKey key = this->Create(u"Žiniaraščiai\\Ąčęėįšųū");
  this->Set(key, u"Ąžuolas", kRegSz, "1");
  const RegistryKey same = this->Open(u"žINIARAŠČIAI\\ĄČĘĖĮŠŲŪ");
  this->Set(same, u"ąŽUOLAS", kRegSz, "2");
  EXPECT_EQ(this->Value(key, u"ĄŽUOLAS").bytes, std::string("2\0", 2));
  EXPECT_EQ(this->registry.DeleteValue(same, u"ąžuolas"), kRegistrySuccess);
  EXPECT_EQ(this->Value(key, u"Ąžuolas"), this->Refused(kRegistryFileNotFound));
}

TYPED_TEST_P(RegistryContract, APathMayEndInABackslashAndHoldTwo) {
  this->Create(u"A\\");
  EXPECT_EQ(this->OpenStatus(u"A"), kRegistrySuccess);
  EXPECT_EQ(this->OpenStatus(u"A\\"), kRegistrySuccess);
  this->Set(this->Create(u"A\\\\B"), u"v", kRegSz, "1");
  EXPECT_EQ(this->Value(this->Open(u"A\\B"), u"v").bytes, std::string("1\0", 2));
}

TYPED_TEST_P(RegistryContract, PathsStartAtAnyOpenKey) {
  const RegistryKey parent = this->Create(u"A");
  RegistryKey child = 0;
  ASSERT_EQ(this->registry.CreateKey(parent, u"B\\C", this->kAll, {}, child), kRegistrySuccess);
  this->Set(child, u"v", kRegSz, "1");
  EXPECT_EQ(this->Value(this->Open(u"A\\B\\C"), u"v").bytes, std::string("1\0", 2));
  RegistryKey same = 0;
  ASSERT_EQ(this->registry.OpenKey(child, u"", kKeyQueryValue, same), kRegistrySuccess);
  EXPECT_EQ(this->Value(same, u"v").bytes, std::string("1\0", 2));
}

TYPED_TEST_P(RegistryContract, TheRightsOfAHandleConcernValuesAlone) {
  const RegistryKey reader = this->Create(u"A", kKeyQueryValue);
  RegistryKey below = 0;
  EXPECT_EQ(this->registry.CreateKey(reader, u"B", this->kAll, {}, below), kRegistrySuccess);
  EXPECT_EQ(this->registry.OpenKey(this->Open(u"A", kKeySetValue), u"B", this->kAll, below),
            kRegistrySuccess);
}

TYPED_TEST_P(RegistryContract, ValuesAreReadAndWrittenByRight) {
  this->Set(this->Create(), u"v", kRegSz, "old");
  const RegistryKey reader = this->Open(u"K", kKeyQueryValue);
  const RegistryKey writer = this->Open(u"K", kKeySetValue);
  EXPECT_EQ(this->Value(writer, u"v"), this->Refused(kRegistryAccessDenied));
  EXPECT_EQ(this->Stored(writer, u"v"), this->Refused(kRegistryAccessDenied));
  EXPECT_EQ(this->Value(writer, u"none"), this->Refused(kRegistryAccessDenied));
  EXPECT_EQ(this->registry.SetValue(reader, u"v", kRegSz, std::string_view("new")), kRegistryAccessDenied);
  EXPECT_EQ(this->registry.SetStored(reader, u"v", {kRegBinary, "new"}), kRegistryAccessDenied);
  EXPECT_EQ(this->registry.DeleteValue(reader, u"v"), kRegistryAccessDenied);
  EXPECT_EQ(this->registry.DeleteValue(reader, u"none"), kRegistryAccessDenied);
  EXPECT_EQ(this->Value(reader, u"v").bytes, std::string("old\0", 4));
  EXPECT_EQ(this->registry.SetStored(writer, u"v", {kRegBinary, "new"}), kRegistrySuccess);
  EXPECT_EQ(this->Stored(reader, u"v"), (RegistryValue{kRegBinary, "new"}));
  EXPECT_EQ(this->registry.DeleteValue(writer, u"v"), kRegistrySuccess);
}

TYPED_TEST_P(RegistryContract, OnlyOpenKeysWork) {
  const RegistryKey key = this->Create();
  EXPECT_EQ(this->registry.CloseKey(key), kRegistrySuccess);
  for (const RegistryKey closed : {key, RegistryKey{0}}) {
    RegistryKey other = this->kUntouched;
    EXPECT_EQ(this->registry.CloseKey(closed), kRegistryInvalidHandle);
    EXPECT_EQ(this->registry.OpenKey(closed, u"A", this->kAll, other), kRegistryInvalidHandle);
    EXPECT_EQ(this->registry.CreateKey(closed, u"A", this->kAll, {}, other), kRegistryInvalidHandle);
    EXPECT_EQ(other, this->kUntouched);
    EXPECT_EQ(this->Value(closed, u"v"), this->Refused(kRegistryInvalidHandle));
    EXPECT_EQ(this->Stored(closed, u"v"), this->Refused(kRegistryInvalidHandle));
    EXPECT_EQ(this->registry.SetValue(closed, u"v", kRegSz, {}), kRegistryInvalidHandle);
    EXPECT_EQ(this->registry.SetStored(closed, u"v", {}), kRegistryInvalidHandle);
    EXPECT_EQ(this->registry.DeleteValue(closed, u"v"), kRegistryInvalidHandle);
  }
}

TYPED_TEST_P(RegistryContract, APredefinedKeyStaysOpen) {
  EXPECT_EQ(this->registry.CloseKey(HKEY_CURRENT_USER_VALUE), kRegistrySuccess);
  this->Create();
}

TYPED_TEST_P(RegistryContract, EveryHandleOfAKeySeesTheSameValues) {
  const RegistryKey first = this->Create();
  const RegistryKey second = this->Open(u"K");
  EXPECT_NE(first, second);
  this->Set(first, u"v", kRegSz, "1");
  EXPECT_EQ(this->registry.CloseKey(first), kRegistrySuccess);
  EXPECT_EQ(this->Value(second, u"v").bytes, std::string("1\0", 2));
}

// Values.

TYPED_TEST_P(RegistryContract, AMissingValueTouchesNothing) {
  const RegistryKey key = this->Create();
  this->Set(key, u"v", kRegSz, "abc");
  EXPECT_EQ(this->Value(key, u"w"), this->Refused(kRegistryFileNotFound));
  EXPECT_EQ(this->Stored(key, u"w"), this->Refused(kRegistryFileNotFound));
  EXPECT_EQ(this->registry.DeleteValue(key, u"w"), kRegistryFileNotFound);
}

TYPED_TEST_P(RegistryContract, TheDefaultValueHasTheEmptyName) {
  const RegistryKey key = this->Create();
  this->Set(key, u"v", kRegSz, "named");
  EXPECT_EQ(this->Value(key, u""), this->Refused(kRegistryFileNotFound));
  this->Set(key, u"", kRegSz, "default");
  EXPECT_EQ(this->Value(key, u""), (RegistryValue{kRegSz, std::string("default\0", 8)}));
  EXPECT_EQ(this->registry.DeleteValue(key, u""), kRegistrySuccess);
  EXPECT_EQ(this->Value(key, u""), this->Refused(kRegistryFileNotFound));
  EXPECT_EQ(this->Value(key, u"v").bytes, std::string("named\0", 6));
}

TYPED_TEST_P(RegistryContract, DeletesAValueOnce) {
  const RegistryKey key = this->Create();
  this->Set(key, u"v", kRegSz, "1");
  this->Set(key, u"w", kRegSz, "2");
  EXPECT_EQ(this->registry.DeleteValue(key, u"v"), kRegistrySuccess);
  EXPECT_EQ(this->registry.DeleteValue(key, u"v"), kRegistryFileNotFound);
  EXPECT_EQ(this->Value(key, u"w").bytes, std::string("2\0", 2));
}

TYPED_TEST_P(RegistryContract, AnotherValueOfANameTakesItsPlace) {
  const RegistryKey key = this->Create();
  this->Set(key, u"v", kRegSz, "a longer text");
  this->Set(key, u"v", kRegBinary, "\x01");
  EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{kRegBinary, "\x01"}));
}

TYPED_TEST_P(RegistryContract, TypeAndSizeAreToldWithoutABuffer) {
  const RegistryKey key = this->Create();
  this->Set(key, u"v", kRegExpandSz, "%TEMP%");
  std::uint32_t type = this->kUntouched;
  std::uint32_t size = this->kUntouched;
  EXPECT_EQ(this->registry.QueryValue(key, u"v", type, {}, size), kRegistrySuccess);
  EXPECT_EQ(type, kRegExpandSz);
  EXPECT_EQ(size, 7u);
}

TYPED_TEST_P(RegistryContract, ABufferThatIsTooSmallIsLeftAlone) {
  const RegistryKey key = this->Create();
  for (const std::uint32_t stored_type : {kRegSz, kRegBinary}) {
    this->Set(key, u"v", stored_type, std::string_view("abc\0", 4));
    std::uint32_t type = this->kUntouched;
    std::uint32_t size = this->kUntouched;
    std::string data(3, '~');
    EXPECT_EQ(this->registry.QueryValue(key, u"v", type, data, size), kRegistryMoreData);
    EXPECT_EQ(data, "~~~");
    EXPECT_EQ(type, stored_type);
    EXPECT_EQ(size, 4u);
    data = "~~~~~";
    EXPECT_EQ(this->registry.QueryValue(key, u"v", type, data, size), kRegistrySuccess);
    EXPECT_EQ(data, std::string("abc\0~", 5));
    EXPECT_EQ(size, 4u);
  }
}

TYPED_TEST_P(RegistryContract, TextsGetTheTerminatingZeroThatTheyLack) {
  const RegistryKey key = this->Create();
  for (const std::uint32_t type : {kRegSz, kRegExpandSz, kRegMultiSz}) {
    const RegistryValue ansi{type, std::string("a\xFE\0", 3)};
    const RegistryValue stored{type, ToUtf16Bytes(std::u16string_view(u"až\0", 3))};
    this->Set(key, u"v", type, "a\xFE");
    EXPECT_EQ(this->Value(key, u"v"), ansi);
    EXPECT_EQ(this->Stored(key, u"v"), stored);
    this->Set(key, u"v", type, ansi.bytes);
    EXPECT_EQ(this->Value(key, u"v"), ansi) << "a second one";
    EXPECT_EQ(this->registry.SetStored(key, u"v", {type, ToUtf16Bytes(u"až")}), kRegistrySuccess);
    EXPECT_EQ(this->Stored(key, u"v"), stored);
    EXPECT_EQ(this->registry.SetStored(key, u"v", stored), kRegistrySuccess);
    EXPECT_EQ(this->Stored(key, u"v"), stored) << "a second one";
  }
}

TYPED_TEST_P(RegistryContract, AnEmptyTextGetsNone) {
  const RegistryKey key = this->Create();
  for (const std::uint32_t type : {kRegSz, kRegExpandSz, kRegMultiSz}) {
    this->Set(key, u"v", type, "");
    EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{type, ""}));
    EXPECT_EQ(this->Stored(key, u"v"), (RegistryValue{type, ""}));
    this->Set(key, u"v", type, std::string_view("\0", 1));
    EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{type, std::string(1, '\0')}));
    EXPECT_EQ(this->registry.SetStored(key, u"v", {type, ""}), kRegistrySuccess);
    EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{type, ""}));
  }
}

TYPED_TEST_P(RegistryContract, AListOfTextsIsText) {
  const RegistryKey key = this->Create();
  const std::string list("\xE0\xFE\0b\0\0", 6);
  this->Set(key, u"v", kRegMultiSz, list);
  EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{kRegMultiSz, list}));
  EXPECT_EQ(this->Stored(key, u"v"),
            (RegistryValue{kRegMultiSz, ToUtf16Bytes(std::u16string_view(u"ąž\0b\0\0", 6))}));
}

TYPED_TEST_P(RegistryContract, TextsMayHoldAnyCharacter) {
  const RegistryKey key = this->Create();
  const std::string text("\"C:\\x\"\r\n;\t\x01\x7F\0]\xFE\0", 16);
  this->Set(key, u"v", kRegSz, text);
  EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{kRegSz, text}));
}

TYPED_TEST_P(RegistryContract, WhatTheCodePageLacksIsAQuestionMarkInItAndStoredAsItIs) {
  const RegistryKey key = this->Create();
  const RegistryValue value{kRegSz, ToUtf16Bytes(std::u16string_view(u"ž漢\0", 3))};
  EXPECT_EQ(this->registry.SetStored(key, u"v", value), kRegistrySuccess);
  EXPECT_EQ(this->Stored(key, u"v"), value);
  EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{kRegSz, std::string("\xFE?\0", 3)}));
}

TYPED_TEST_P(RegistryContract, BytesOfEveryOtherTypeCrossUnchanged) {
  const RegistryKey key = this->Create();
  for (const std::uint32_t type : {0u, std::uint32_t{kRegBinary}, std::uint32_t{kRegDword}, 11u, 4711u}) {
    for (const std::string& bytes : {std::string("\x01\0\xFF\x80", 4), std::string("ab"), std::string()}) {
      this->Set(key, u"v", type, bytes);
      EXPECT_EQ(this->Value(key, u"v"), (RegistryValue{type, bytes}));
      EXPECT_EQ(this->Stored(key, u"v"), (RegistryValue{type, bytes}));
      EXPECT_EQ(this->registry.SetStored(key, u"w", {type, bytes}), kRegistrySuccess);
      EXPECT_EQ(this->Value(key, u"w"), (RegistryValue{type, bytes}));
    }
  }
}

TYPED_TEST_P(RegistryContract, NamesAndValuesMayBeLong) {
  const std::u16string path = std::u16string(100, u'k') + u"\\" + std::u16string(100, u'k');
  const RegistryKey key = this->Create(path);
  const std::u16string name(1000, u'n');
  const std::string bytes(70'000, '\x80');
  this->Set(key, name, kRegBinary, bytes);
  EXPECT_EQ(this->Value(this->Open(path), name), (RegistryValue{kRegBinary, bytes}));
  this->Set(key, u"text", kRegSz, std::string(5000, '\xFE'));
  EXPECT_EQ(this->Value(key, u"text").bytes, std::string(5000, '\xFE') + '\0');
}

REGISTER_TYPED_TEST_SUITE_P(RegistryContract, AKeyThatIsMissingIsNotOpened, AKeyIsCreatedWithItsParents,
                            CreatingAKeyThatIsThereOpensIt, KeysAndNamesIgnoreLetterCase,
                            APathMayEndInABackslashAndHoldTwo, PathsStartAtAnyOpenKey,
                            TheRightsOfAHandleConcernValuesAlone, ValuesAreReadAndWrittenByRight,
                            OnlyOpenKeysWork, APredefinedKeyStaysOpen, EveryHandleOfAKeySeesTheSameValues,
                            AMissingValueTouchesNothing, TheDefaultValueHasTheEmptyName, DeletesAValueOnce,
                            AnotherValueOfANameTakesItsPlace, TypeAndSizeAreToldWithoutABuffer,
                            ABufferThatIsTooSmallIsLeftAlone, TextsGetTheTerminatingZeroThatTheyLack,
                            AnEmptyTextGetsNone, AListOfTextsIsText, TextsMayHoldAnyCharacter,
                            WhatTheCodePageLacksIsAQuestionMarkInItAndStoredAsItIs,
                            BytesOfEveryOtherTypeCrossUnchanged, NamesAndValuesMayBeLong);

}  // namespace qva
