// Real automation servers of the system, driven through the seam.
#include <filesystem>

#include "platform/windows/ComObjectFactory.h"
#include "tests/files.h"
#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

class ScriptingTest : public NothingLeftTest {
 protected:
  ObjectPtr Create(std::u16string_view identifier) { return factory.Create(identifier); }

  ComObjectFactory factory;
};

TEST_F(ScriptingTest, CreatesByProgrammaticIdentifierInAnyLetterCase) {
  EXPECT_EQ(Create(u"Scripting.Dictionary")->TypeName(), u"IDictionary");
  EXPECT_TRUE(Create(u"SCRIPTING.dictionary"));
}

TEST_F(ScriptingTest, AClassThatIsNotThereIsError429) {
  for (const std::u16string_view identifier : {u"No.Such.Class", u"", u"Scripting"}) {
    EXPECT_EQ(RaisedBy([&] { Create(identifier); }), kCannotCreateObject);
  }
}

TEST_F(ScriptingTest, ADictionaryKeepsValuesOfEveryType) {
  const ObjectPtr dictionary = Create(u"Scripting.Dictionary");
  const std::pair<Value, Value> entries[] = {
      {u"Ąžuolas", std::int16_t{1}}, {std::int32_t{2}, u"dù"},    {u"date", Date{45000.5}}, {u"none", Null{}},
      {u"empty", Value()},           {u"money", Currency{12345}},
  };
  for (const auto& [key, item] : entries) Call(dictionary, u"Add", {key, item});
  EXPECT_EQ(Get(dictionary, u"Count").ToInt32(), 6);
  for (const auto& [key, item] : entries) {
    EXPECT_EQ(Get(dictionary, u"Item", {key}), item);
    EXPECT_EQ(Get(dictionary, u"", {key}), item) << "the default member";
  }
  EXPECT_EQ(Get(dictionary, u"Exists", {u"ąžuolas"}), Value(false));

  Arguments put{u"none", u"something"};
  dictionary->Invoke(Access::Put, u"item", put);
  EXPECT_EQ(Get(dictionary, u"Item", {u"none"}), Value(u"something"));

  const Value keys = Call(dictionary, u"Keys");
  EXPECT_EQ(keys.ToArray().elements.at(0), Value(u"Ąžuolas"));
  EXPECT_EQ(keys.ToArray().elements.size(), 6u);
}

TEST_F(ScriptingTest, ADictionaryGivesAnObjectBackAsTheSameCOMObject) {
  const ObjectPtr outer = Create(u"Scripting.Dictionary");
  const ObjectPtr inner = Create(u"Scripting.Dictionary");
  Call(outer, u"Add", {u"inner", inner});
  const ObjectPtr back = GetObject(outer, u"Item", {u"inner"});
  EXPECT_EQ(ToUnknown(back).Query<IUnknown>().get(), ToUnknown(inner).Query<IUnknown>().get());
  Call(back, u"Add", {u"key", true});
  EXPECT_EQ(Get(inner, u"Count").ToInt32(), 1);
}

TEST_F(ScriptingTest, ARaisedErrorKeepsItsNumber) {
  const ObjectPtr dictionary = Create(u"Scripting.Dictionary");
  Call(dictionary, u"Add", {u"key", 1.0});
  EXPECT_EQ(RaisedBy([&] { Call(dictionary, u"Add", {u"key", 2.0}); }), 457);
  EXPECT_EQ(RaisedBy([&] { Call(dictionary, u"NoSuchMember"); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Call(dictionary, u"Add", {u"key"}); }), kWrongArgumentCount);
}

TEST_F(ScriptingTest, DictionariesShareTheirNames) {
  Get(Create(u"Scripting.Dictionary"), u"Count");
  const std::uint64_t before = DispatchNames::LookupCount();
  for (int i = 0; i < 10; ++i) Get(Create(u"Scripting.Dictionary"), u"Count");
  EXPECT_EQ(DispatchNames::LookupCount(), before);
}

TEST_F(ScriptingTest, TheFileSystemObjectWritesAndReadsAFileWithLithuanianLetters) {
  const TemporaryFolder folder;
  const std::u16string path = (folder / L"Ataskaita ąčęėįšųūž.txt").u16string();
  const ObjectPtr files = Create(u"Scripting.FileSystemObject");
  const ObjectPtr writer = Call(files, u"CreateTextFile", Arguments{path}.Named(u"Unicode", true)).ToObject();
  Call(writer, u"WriteLine", {u"Žąsis"});
  Call(writer, u"Close");
  EXPECT_TRUE(std::filesystem::exists(path));

  const ObjectPtr reader =
      Call(files, u"OpenTextFile", {path, std::int16_t{1}, false, std::int16_t{-1}}).ToObject();
  EXPECT_EQ(Call(reader, u"ReadLine"), Value(u"Žąsis"));
  EXPECT_EQ(Get(reader, u"AtEndOfStream"), Value(true));
  Call(reader, u"Close");
  EXPECT_EQ(Call(files, u"FileExists", {path}), Value(true));
  Call(files, u"DeleteFile", {path});
  EXPECT_EQ(Call(files, u"FileExists", {path}), Value(false));
  EXPECT_EQ(RaisedBy([&] { Call(files, u"OpenTextFile", {path}); }), kFileNotFound);
}

}  // namespace
}  // namespace qva::windows
