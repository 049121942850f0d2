#include "platform/member_table.h"

#include <stdexcept>

#include "tests/platform/core_test.h"

namespace qva {
namespace {

class Part : public Described<Part> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Part", "").Property<&Part::name>(u"Name").Default(u"Name");
  }
  std::u16string name;
};

/// A collection: its default member takes an index.
class Parts : public Described<Parts> {
 public:
  Ref<Part> Item(const Value& index) const {
    auto part = MakeRef<Part>();
    part->name = u"part " + index.ToText();
    return part;
  }
  static ClassBuilder Describe() {
    return ClassBuilder(u"Parts", "").Get<&Parts::Item>(u"Item", {{u"Index"}}).Default(u"Item");
  }
};

/// Another component's collection, which finds fault with an argument that nobody gave.
class ForeignParts : public Object {
 public:
  Value Invoke(Access, std::u16string_view, Arguments&) override {
    throw AutomationError(kTypeMismatch).OfCall(7);
  }
  std::u16string TypeName() const override { return u"ForeignParts"; }
};

/// One member of every kind that a table can describe.
class OneOfEach : public Described<OneOfEach> {
 public:
  std::u16string Join(const std::u16string& first, std::int32_t second, const Value& third) {
    return first + u"/" + Value(second).ToText() + u"/" + DescribeValue(third);
  }

  // One optional argument of every type.
  std::u16string Zeros(bool a, std::uint8_t b, std::int16_t c, std::int32_t d, double e, Currency f, Date g,
                       const std::u16string& h, const ObjectPtr& i, const Value& j) {
    return DescribeValue(Array::Of({a, b, c, d, e, f, g, h, i, j}));
  }
  std::u16string Defaults(std::int32_t number, const std::u16string& text, const Value& any) {
    return DescribeValue(Array::Of({number, text, any}));
  }

  void Double(std::int32_t& number) { number *= 2; }
  bool Change(std::u16string& text, Value& any, ObjectPtr& object) {
    text += u"!";
    any = u"changed";
    object = ObjectPtr();
    return true;
  }
  void ChangeAndFail(std::int32_t& number) {
    number = 99;
    throw AutomationError(kObjectErrorBase + 1, u"OneOfEach", u"Failed");
  }
  void ChangeAndBreak(std::int32_t& number) {
    number = 99;
    throw std::runtime_error("broken");
  }

  void CallJoin(const ObjectPtr& other) { Call(other, u"Join", {u"a", u"two", 3}); }

  double Size() const { return 2.5; }
  std::u16string Cell(std::int32_t row, std::int32_t column) const { return cells + NumberText(row, column); }
  void PutCell(std::int32_t row, std::int32_t column, const std::u16string& text) {
    cells = NumberText(row, column) + u"=" + text;
  }
  void PutLabel(std::int32_t index, const std::u16string& text) { label = text + DescribeValue(index); }
  void SetOwner(const ObjectPtr& owner) { cells = owner ? owner->TypeName() : u"nobody"; }

  Ref<Parts> GetParts() const { return parts; }
  ObjectPtr GetForeignParts() const { return MakeRef<ForeignParts>(); }
  std::u16string NameOf(const Ref<Part>& part) const { return part ? part->name : u"nothing"; }
  void Rename(Ref<Part>& part) {
    part = MakeRef<Part>();
    part->name = u"renamed";
  }

  static std::u16string NumberText(std::int32_t row, std::int32_t column) {
    return qva::NumberText(row) + u":" + qva::NumberText(column);
  }

  static ClassBuilder Describe() {
    return ClassBuilder(u"OneOfEach", "A class for tests")
        .Method<&OneOfEach::Join>(u"Join", {{u"First"}, {u"Second"}, {u"Third"}}, "Joins")
        .Method<&OneOfEach::Zeros>(
            u"Zeros", {Optional(u"a"), Optional(u"b"), Optional(u"c"), Optional(u"d"), Optional(u"e"),
                       Optional(u"f"), Optional(u"g"), Optional(u"h"), Optional(u"i"), Optional(u"j")})
        .Method<&OneOfEach::Defaults>(
            u"Defaults", {Optional(u"Number", 7), Optional(u"Text", u"seven"), Optional(u"Any", true)})
        .Method<&OneOfEach::Double>(u"Double", {{u"Number"}})
        .Method<&OneOfEach::Change>(u"Change", {{u"Text"}, {u"Any"}, ErrorObject(u"Object")})
        .Method<&OneOfEach::ChangeAndFail>(u"ChangeAndFail", {{u"Number"}})
        .Method<&OneOfEach::ChangeAndBreak>(u"ChangeAndBreak", {{u"Number"}})
        .Method<&OneOfEach::CallJoin>(u"CallJoin", {{u"Other"}})
        .Get<&OneOfEach::Size>(u"Size")
        .Property<&OneOfEach::Cell, &OneOfEach::PutCell>(u"Cell", {{u"Row"}, {u"Column"}})
        .Put<&OneOfEach::PutLabel>(u"Label", {Optional(u"Index", 5)})
        .PutRef<&OneOfEach::SetOwner>(u"Owner")
        .Get<&OneOfEach::GetParts>(u"Parts")
        .Get<&OneOfEach::GetForeignParts>(u"ForeignParts")
        .Method<&OneOfEach::NameOf>(u"NameOf", {{u"Part"}})
        .Method<&OneOfEach::Rename>(u"Rename", {{u"Part"}})
        .Property<&OneOfEach::title>(u"Title")
        .Property<&OneOfEach::count>(u"Count")
        .Default(u"Title");
  }

  std::u16string title = u"untitled";
  std::int16_t count = 0;
  std::u16string cells;
  std::u16string label;
  Ref<Parts> parts = MakeRef<Parts>();
};

class MemberTableTest : public CoreTest {
 protected:
  ~MemberTableTest() override { sample.reset(); }

  std::int32_t CallError(std::u16string_view member, const Arguments& arguments) {
    return RaisedBy([&] { Call(sample, member, arguments); });
  }

  /// Invokes a method and leaves its by-reference results in `arguments`.
  Value Invoke(std::u16string_view member, Arguments& arguments) {
    return sample->Invoke(Access::Call, member, arguments);
  }

  Ref<OneOfEach> sample = MakeRef<OneOfEach>();
};

TEST_F(MemberTableTest, PlacesPositionalArguments) {
  EXPECT_EQ(Call(sample, u"Join", {u"a", 2, true}), Value(u"a/2/True"));
}

TEST_F(MemberTableTest, FindsMembersInAnyLetterCase) {
  EXPECT_EQ(Call(sample, u"JOIN", {u"a", 2, 3}), Value(u"a/2/3"));
  EXPECT_EQ(Get(sample, u"title"), Value(u"untitled"));
}

TEST_F(MemberTableTest, PlacesNamedArgumentsInAnyOrderAndLetterCase) {
  EXPECT_EQ(Call(sample, u"Join", Arguments{}.Named(u"THIRD", 3).Named(u"first", u"a").Named(u"Second", 2)),
            Value(u"a/2/3"));
  EXPECT_EQ(Call(sample, u"Join", Arguments{u"a"}.Named(u"third", 3).Named(u"second", 2)), Value(u"a/2/3"));
}

TEST_F(MemberTableTest, UnknownArgumentNamesRaise448) {
  EXPECT_EQ(CallError(u"Join", Arguments{u"a", 2}.Named(u"Fourth", 3)), kNamedArgumentNotFound);
}

TEST_F(MemberTableTest, ArgumentsGivenTwiceRaise450) {
  EXPECT_EQ(CallError(u"Join", Arguments{u"a", 2}.Named(u"First", 3)), kWrongArgumentCount);
  EXPECT_EQ(CallError(u"Join", Arguments{u"a"}.Named(u"Second", 3).Named(u"SECOND", 3)), kWrongArgumentCount);
}

TEST_F(MemberTableTest, TooManyAndTooFewArgumentsRaise450) {
  EXPECT_EQ(CallError(u"Join", {u"a", 2, 3, 4}), kWrongArgumentCount);
  EXPECT_EQ(CallError(u"Join", {u"a", 2}), kWrongArgumentCount);
  EXPECT_EQ(CallError(u"Join", Arguments{u"a"}.Named(u"Third", 3)), kWrongArgumentCount);
  EXPECT_EQ(CallError(u"Size", {1}), kWrongArgumentCount);
}

TEST_F(MemberTableTest, ExplicitMissingForARequiredArgumentRaises449) {
  const AutomationError error = ErrorOf([&] { Call(sample, u"Join", {u"a", Missing{}, 3}); }).value();
  EXPECT_EQ(error.number(), kArgumentNotOptional);
  EXPECT_EQ(error.argument(), 1);
}

TEST_F(MemberTableTest, ExplicitMissingReachesAParameterOfAnyType) {
  EXPECT_EQ(Call(sample, u"Join", {u"a", 2, Missing{}}), Value(u"a/2/Missing"));
}

TEST_F(MemberTableTest, OmittedOptionalArgumentsAreTheZeroOfTheirType) {
  const Value zeros(u"Array(False, 0, 0, 0, 0, 0@, #1899-12-30#, \"\", Nothing, Missing)");
  EXPECT_EQ(Call(sample, u"Zeros"), zeros);
  EXPECT_EQ(Call(sample, u"Zeros", std::vector<Value>(10, Missing{})), zeros);
  EXPECT_EQ(Call(sample, u"Zeros", Arguments{}.Named(u"d", 4)),
            Value(u"Array(False, 0, 0, 4, 0, 0@, #1899-12-30#, \"\", Nothing, Missing)"));
}

TEST_F(MemberTableTest, OmittedOptionalArgumentsAreTheTablesDefaults) {
  EXPECT_EQ(Call(sample, u"Defaults"), Value(u"Array(7, \"seven\", True)"));
  EXPECT_EQ(Call(sample, u"Defaults", {Missing{}, u"x"}), Value(u"Array(7, \"x\", True)"));
  EXPECT_EQ(Call(sample, u"Defaults", {1, u"x", Missing{}}), Value(u"Array(1, \"x\", True)"));
}

TEST_F(MemberTableTest, ArgumentsAreConvertedAndErrorsNameTheArgument) {
  EXPECT_EQ(Call(sample, u"Join", {5, u"2,5", 3}), Value(u"5/2/3"));
  const AutomationError mismatch = ErrorOf([&] { Call(sample, u"Join", {u"a", u"two", 3}); }).value();
  EXPECT_EQ(mismatch.number(), kTypeMismatch);
  EXPECT_EQ(mismatch.argument(), 1);
  const AutomationError overflow = ErrorOf([&] { Call(sample, u"Join", {u"a", 1e10, 3}); }).value();
  EXPECT_EQ(overflow.number(), kOverflow);
  EXPECT_EQ(overflow.argument(), 1);
  const AutomationError named =
      ErrorOf([&] {
        Call(sample, u"Join", Arguments{}.Named(u"Third", 3).Named(u"Second", u"x").Named(u"First", 1));
      }).value();
  EXPECT_EQ(named.argument(), 1);
  const AutomationError null = ErrorOf([&] { Call(sample, u"Join", {Null{}, 2, 3}); }).value();
  EXPECT_EQ(null.number(), kInvalidUseOfNull);
  EXPECT_EQ(null.argument(), 0);
}

TEST_F(MemberTableTest, ErrorsOfTheMemberItselfNameNoArgument) {
  EXPECT_EQ(ErrorOf([&] { Call(sample, u"ChangeAndFail", {1}); }).value().argument(), -1);
}

TEST_F(MemberTableTest, OnlyARefusedCallsErrorIsOfTheCall) {
  for (const auto& error : {ErrorOf([&] { Call(sample, u"Nobody"); }),
                            ErrorOf([&] { Call(sample, u"Join", {u"a"}); }), ErrorOf([&] {
                              Call(sample, u"Join", {u"a", Missing{}, 3});
                            }),
                            ErrorOf([&] {
                              Call(sample, u"Join", {u"a", u"two", 3});
                            }),
                            ErrorOf([&] { Call(sample, u"Join", Arguments{}.Named(u"x", 3)); })}) {
    EXPECT_TRUE(error.value().is_of_call()) << error->number();
  }
  // The member calls another one with arguments that do not fit: its own error, about none of its own.
  const AutomationError error = ErrorOf([&] { Call(sample, u"CallJoin", {sample}); }).value();
  EXPECT_EQ(error.number(), kTypeMismatch);
  EXPECT_FALSE(error.is_of_call());
  EXPECT_EQ(error.argument(), -1);
}

TEST_F(MemberTableTest, AForeignCollectionsErrorIsNotAboutTheArgumentsOfThePropertyThatGaveIt) {
  const AutomationError error = ErrorOf([&] { Get(sample, u"ForeignParts", {1}); }).value();
  EXPECT_EQ(error.number(), kTypeMismatch);
  EXPECT_FALSE(error.is_of_call());
  EXPECT_EQ(error.argument(), -1);
}

TEST_F(MemberTableTest, StoresByReferenceArgumentsBack) {
  Arguments arguments{u"21"};
  Invoke(u"Double", arguments);
  EXPECT_EQ(arguments.positional[0], Value(42));

  Arguments mixed = Arguments{u"a"}.Named(u"Object", sample).Named(u"Any", 1);
  EXPECT_EQ(Invoke(u"Change", mixed), Value(true));
  EXPECT_EQ(mixed.positional[0], Value(u"a!"));
  EXPECT_TRUE(mixed.named[0].value.IsNothing());
  EXPECT_EQ(mixed.named[1].value, Value(u"changed"));
}

TEST_F(MemberTableTest, LeavesByValueArgumentsAlone) {
  Arguments arguments{u"1", u"2", u"3"};
  Invoke(u"Join", arguments);
  EXPECT_EQ(arguments.positional, (std::vector<Value>{u"1", u"2", u"3"}));
}

TEST_F(MemberTableTest, StoresByReferenceArgumentsBackWhenTheMemberRaises) {
  Arguments arguments{1};
  EXPECT_EQ(RaisedBy([&] { Invoke(u"ChangeAndFail", arguments); }), kObjectErrorBase + 1);
  EXPECT_EQ(arguments.positional[0], Value(99));
  Arguments others{1};
  EXPECT_THROW(Invoke(u"ChangeAndBreak", others), std::runtime_error);
  EXPECT_EQ(others.positional[0], Value(99));
}

TEST_F(MemberTableTest, LeavesByReferenceArgumentsAloneWhenAnotherOneDoesNotConvert) {
  Arguments arguments{u"a", 1, u"no object"};
  EXPECT_EQ(RaisedBy([&] { Invoke(u"Change", arguments); }), kTypeMismatch);
  EXPECT_EQ(arguments.positional, (std::vector<Value>{u"a", 1, u"no object"}));
}

TEST_F(MemberTableTest, UnknownMembersRaise438) {
  EXPECT_EQ(CallError(u"Nowhere", {}), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Get(sample, u"Nowhere"); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Put(sample, u"Nowhere", 1); }), kUnsupportedMember);
}

TEST_F(MemberTableTest, NullReferencesRaise91) {
  EXPECT_EQ(RaisedBy([] { Get(nullptr, u"Title"); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([] { Put(nullptr, u"Title", 1); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([] { PutRef(nullptr, u"Title", 1); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([] { Call(nullptr, u"Title"); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([] { GetObject(nullptr, u"Title"); }), kObjectNotSet);
}

TEST_F(MemberTableTest, PropertiesAndMethodsAnswerBothGetAndCall) {
  EXPECT_EQ(Get(sample, u"Size"), Value(2.5));
  EXPECT_EQ(Call(sample, u"Size"), Value(2.5));
  EXPECT_EQ(Get(sample, u"Join", {u"a", 1, 2}), Value(u"a/1/2"));
}

TEST_F(MemberTableTest, PropertiesOverDataReadAndWriteThem) {
  Put(sample, u"Count", u"12");
  EXPECT_EQ(sample->count, 12);
  EXPECT_EQ(Get(sample, u"Count"), Value(std::int16_t{12}));
  const AutomationError error = ErrorOf([&] { Put(sample, u"Count", 40000); }).value();
  EXPECT_EQ(error.number(), kOverflow);
  EXPECT_EQ(error.argument(), 0);
  EXPECT_EQ(sample->count, 12);
}

TEST_F(MemberTableTest, TheEmptyNameIsTheDefaultMember) {
  Put(sample, u"", u"new title");
  EXPECT_EQ(Get(sample, u""), Value(u"new title"));
  EXPECT_EQ(Value(sample).ToText(), u"new title");
  class Plain : public Described<Plain> {
   public:
    static ClassBuilder Describe() { return ClassBuilder(u"Plain", ""); }
  };
  EXPECT_EQ(RaisedBy([] { Get(MakeRef<Plain>(), u""); }), kUnsupportedMember);
}

TEST_F(MemberTableTest, ArgumentsOfAPropertyWithoutParametersGoToTheObjectThatItGives) {
  EXPECT_EQ(Value(GetObject(sample, u"Parts", {3})).ToText(), u"part 3");
  EXPECT_EQ(Value(GetObject(sample, u"Parts", Arguments{}.Named(u"index", u"a"))).ToText(), u"part a");
  EXPECT_EQ(GetObject(sample, u"Parts")->TypeName(), u"Parts");
  sample->parts.reset();
  EXPECT_EQ(RaisedBy([&] { Get(sample, u"Parts", {3}); }), kObjectNotSet);
}

TEST_F(MemberTableTest, ReadOnlyPropertiesRefuseAPut) {
  EXPECT_EQ(RaisedBy([&] { Put(sample, u"Size", 1); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { PutRef(sample, u"Parts", sample); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Put(sample, u"Join", 1); }), kUnsupportedMember);
}

TEST_F(MemberTableTest, WriteOnlyPropertiesRefuseAGet) {
  EXPECT_EQ(RaisedBy([&] { Get(sample, u"Owner"); }), kUnsupportedMember);
}

TEST_F(MemberTableTest, PutsTakeTheirParametersBeforeTheNewValue) {
  Arguments arguments{1, 2, u"x"};
  sample->Invoke(Access::Put, u"Cell", arguments);
  EXPECT_EQ(sample->cells, u"1:2=x");
  EXPECT_EQ(Get(sample, u"Cell", {3, 4}), Value(u"1:2=x3:4"));

  Arguments named = Arguments{u"y"}.Named(u"Column", 6).Named(u"Row", 5);
  sample->Invoke(Access::Put, u"Cell", named);
  EXPECT_EQ(sample->cells, u"5:6=y");

  Arguments too_few{1, u"x"};
  EXPECT_EQ(RaisedBy([&] { sample->Invoke(Access::Put, u"Cell", too_few); }), kWrongArgumentCount);
}

TEST_F(MemberTableTest, PutsPassOverOptionalParameters) {
  Put(sample, u"Label", u"x");
  EXPECT_EQ(sample->label, u"x5");
  Arguments arguments{1, u"y"};
  sample->Invoke(Access::Put, u"Label", arguments);
  EXPECT_EQ(sample->label, u"y1");
}

TEST_F(MemberTableTest, PutRefIsAKindOfItsOwn) {
  PutRef(sample, u"Owner", sample);
  EXPECT_EQ(sample->cells, u"OneOfEach");
  PutRef(sample, u"Owner", ObjectPtr());
  EXPECT_EQ(sample->cells, u"nobody");
  EXPECT_EQ(RaisedBy([&] { Put(sample, u"Owner", sample); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { PutRef(sample, u"Owner", 1); }), kTypeMismatch);
}

TEST_F(MemberTableTest, ObjectsOfAClassTakeThatClassAndNothing) {
  auto part = MakeRef<Part>();
  part->name = u"a part";
  EXPECT_EQ(Call(sample, u"NameOf", {part}), Value(u"a part"));
  EXPECT_EQ(Call(sample, u"NameOf", {ObjectPtr()}), Value(u"nothing"));
  const AutomationError other_class = ErrorOf([&] { Call(sample, u"NameOf", {sample}); }).value();
  EXPECT_EQ(other_class.number(), kTypeMismatch);
  EXPECT_EQ(other_class.argument(), 0);
  EXPECT_EQ(CallError(u"NameOf", {u"a part"}), kTypeMismatch);

  Arguments arguments{part};
  Invoke(u"Rename", arguments);
  EXPECT_EQ(arguments.positional[0].ToText(), u"renamed");
  EXPECT_EQ(part->name, u"a part");
}

TEST_F(MemberTableTest, DescribesEveryMemberFromItsSignature) {
  const ClassDescription& description = OneOfEach::Description();
  EXPECT_EQ(description.name(), u"OneOfEach");
  EXPECT_EQ(description.help(), "A class for tests");
  EXPECT_EQ(description.default_member(), u"Title");
  EXPECT_TRUE(description.HasName(u"TITLE"));
  EXPECT_FALSE(description.HasName(u"Titles"));

  const Member* join = description.Find(Access::Call, u"join");
  ASSERT_NE(join, nullptr);
  EXPECT_EQ(join->name, u"Join");
  EXPECT_EQ(join->kind, MemberKind::Method);
  EXPECT_EQ(join->help, "Joins");
  EXPECT_EQ(join->result, ParameterType::Text);
  ASSERT_EQ(join->parameters.size(), 3u);
  EXPECT_EQ(join->parameters[1].type, ParameterType::Int32);
  EXPECT_FALSE(join->parameters[1].by_reference);
  EXPECT_EQ(join->parameters[2].type, ParameterType::Any);

  const Member* rename = description.Find(Access::Call, u"Rename");
  ASSERT_NE(rename, nullptr);
  EXPECT_EQ(rename->result, ParameterType::None);
  EXPECT_TRUE(rename->parameters[0].by_reference);
  EXPECT_EQ(rename->parameters[0].type, ParameterType::Object);
  EXPECT_EQ(rename->parameters[0].object_class, u"Part");

  const Member* change = description.Find(Access::Call, u"Change");
  ASSERT_NE(change, nullptr);
  EXPECT_FALSE(change->parameters[1].is_error);
  EXPECT_TRUE(change->parameters[2].is_error);
  EXPECT_FALSE(change->parameters[2].optional);

  const Member* parts = description.Find(Access::Get, u"Parts");
  ASSERT_NE(parts, nullptr);
  EXPECT_EQ(parts->result_class, u"Parts");

  const Member* put = description.Find(Access::Put, u"Cell");
  ASSERT_NE(put, nullptr);
  EXPECT_EQ(put->kind, MemberKind::Put);
  EXPECT_EQ(put->parameters.back().name, u"value");
  EXPECT_EQ(put->parameters.back().type, ParameterType::Text);
}

TEST_F(MemberTableTest, TableAndSignatureMustAgreeInTheNumberOfParameters) {
  EXPECT_THROW(ClassBuilder(u"Wrong", "").Method<&OneOfEach::Join>(u"Join", {{u"First"}}), AutomationError);
}

}  // namespace
}  // namespace qva
