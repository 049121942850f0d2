#include "platform/memory/Interceptor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/ado.h"
#include "platform/member_table.h"
#include "platform/memory/CallCount.h"
#include "platform/memory/CallFailure.h"
#include "platform/memory/CallTrace.h"
#include "tests/platform/core_test.h"
#include "tests/platform/forms/form_contract.h"
#include "tests/platform/forms/memory_desk.h"
#include "tests/platform/object_factory_contract.h"

namespace qva {
namespace {

struct InterceptedSystem {
  static constexpr std::u16string_view kKnown = ado::kRecordset;
  ObjectFactory& factory() { return intercepted; }

  MemoryObjectFactory memory;
  Interceptor interceptor{};
  InterceptedFactory intercepted{interceptor, memory};
};

struct InterceptedDesk : MemoryDesk {
  ui::FormFactory& factory() { return intercepted; }

  Interceptor interceptor{};
  InterceptedForms intercepted{interceptor, memory};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(InterceptedFactory, ObjectFactoryContract, InterceptedSystem);
INSTANTIATE_TYPED_TEST_SUITE_P(InterceptedForms, FormContract, InterceptedDesk);

namespace {

using testing::ElementsAre;

/// A host object of every shape of call.
class Node : public Described<Node> {
 public:
  static ClassBuilder Describe();

  ObjectPtr child;
  Value seen;  ///< the last argument of Take
  int value = 0;

 private:
  std::int32_t Number() { return value; }
  void SetNumber(std::int32_t v) { value = v; }
  ObjectPtr Child() { return child; }
  void SetChild(const ObjectPtr& c) { child = c; }
  Value Take(const Value& argument) {
    seen = argument;
    return argument;
  }
  void Give(Value& target) { target = child; }
  Value Children() { return Array::Of({child, 7}); }
  void Fail(std::int32_t& changed) {
    changed = 9;
    throw AutomationError(1004, u"Node", u"Refused");
  }
  void Nothing(const Value&, const Value&) {}
};

ClassBuilder Node::Describe() {
  return ClassBuilder(u"Node", "")
      .Property<&Node::Number, &Node::SetNumber>(u"Number")
      .Get<&Node::Child>(u"Child")
      .PutRef<&Node::SetChild>(u"Child")
      .Method<&Node::Take>(u"Take", {{u"Argument"}})
      .Method<&Node::Give>(u"Give", {{u"Target"}})
      .Get<&Node::Children>(u"Children")
      .Method<&Node::Fail>(u"Fail", {{u"Changed"}})
      .Method<&Node::Nothing>(u"Nothing", {Optional(u"First"), Optional(u"Second")})
      .Default(u"Number");
}

class InterceptorTest : public CoreTest {
 protected:
  InterceptorTest() { node->child = MakeRef<Node>(); }

  Ref<Node> node = MakeRef<Node>();
  CallTrace trace;
  CallCount count;
  CallFailure failure{0, AutomationError(1004, u"Test", u"Chosen")};
  Interceptor interceptor{&trace, &count, &failure};
  ObjectPtr root = interceptor.Wrap(node, u"Root");
};

TEST_F(InterceptorTest, BehavesAsTheObject) {
  Put(root, u"number", 5);
  EXPECT_EQ(Get(root, u"Number"), Value(5));
  EXPECT_EQ(node->value, 5);
  EXPECT_EQ(Value(root).ToInt32(), 5) << "the default member";
  EXPECT_EQ(root->TypeName(), u"Node");
  EXPECT_EQ(RaisedBy([&] { Get(root, u"Missing"); }), kUnsupportedMember);
}

TEST_F(InterceptorTest, WrapsResultsAndGivesTheSameWrapperForTheSameObject) {
  const ObjectPtr child = GetObject(root, u"Child");
  EXPECT_FALSE(child == node->child);
  EXPECT_TRUE(Unwrap(child) == node->child);
  EXPECT_TRUE(GetObject(root, u"Child") == child);
  EXPECT_TRUE(interceptor.Wrap(node, u"Other") == root);
  EXPECT_TRUE(interceptor.Wrap(root, u"Other") == root);
  EXPECT_TRUE(interceptor.Wrap(nullptr, u"Nothing") == nullptr);
}

TEST_F(InterceptorTest, WrapsWhatComesBackByReference) {
  Arguments arguments{Value()};
  root->Invoke(Access::Call, u"Give", arguments);
  const ObjectPtr given = arguments.positional[0].ToObject();
  EXPECT_TRUE(Unwrap(given) == node->child);
  EXPECT_FALSE(given == node->child);
}

TEST_F(InterceptorTest, WrapsNamedArgumentsThatComeBackByReference) {
  Arguments arguments;
  arguments.Named(u"Target", Value());
  root->Invoke(Access::Call, u"Give", arguments);
  const ObjectPtr given = arguments.named[0].value.ToObject();
  EXPECT_TRUE(Unwrap(given) == node->child);
  EXPECT_FALSE(given == node->child);
}

TEST_F(InterceptorTest, WrapsObjectsInArrays) {
  const Value children = Get(root, u"Children");
  EXPECT_TRUE(Unwrap(children.ToArray().elements[0].ToObject()) == node->child);
  EXPECT_FALSE(children.ToArray().elements[0].ToObject() == node->child);
  EXPECT_EQ(children.ToArray().elements[1], Value(7));
}

TEST_F(InterceptorTest, PassesTheObjectsBehindWrappers) {
  const ObjectPtr child = GetObject(root, u"Child");
  EXPECT_TRUE(Call(root, u"Take", {child}).ToObject() == child) << "and wraps it on the way back";
  EXPECT_EQ(node->seen, Value(node->child));
  Call(root, u"Take", {Array::Of({child, 1})});
  EXPECT_EQ(node->seen.ToArray().elements[0], Value(node->child));
  Call(root, u"Take", Arguments().Named(u"Argument", child));
  EXPECT_EQ(node->seen, Value(node->child));
  PutRef(root, u"Child", root);
  EXPECT_TRUE(node->child == node);
  node->child.reset();  // the circle
}

TEST_F(InterceptorTest, LeavesTheCallersArgumentsAloneThatTheCallDidNotChange) {
  const ObjectPtr child = GetObject(root, u"Child");
  Arguments arguments{child};
  root->Invoke(Access::Call, u"Take", arguments);
  EXPECT_TRUE(arguments.positional[0].ToObject() == child);
}

TEST_F(InterceptorTest, GivesBackWhatAFailedCallChanged) {
  Arguments arguments{1};
  EXPECT_EQ(RaisedBy([&] { root->Invoke(Access::Call, u"Fail", arguments); }), 1004);
  EXPECT_EQ(arguments.positional[0], Value(9));
}

TEST_F(InterceptorTest, TracesEachCallInOneLine) {
  Put(root, u"Number", 5);
  Get(root, u"Number");
  GetObject(root, u"Child");
  Call(root, u"Nothing");
  Call(root, u"Nothing", {u"a \"b\"", true});
  Call(root, u"Nothing", Arguments{1.5}.Named(u"Second", Date{45455}));
  Call(root, u"Take", {2});
  EXPECT_THAT(trace.lines(), ElementsAre("Root.Number = 5", "Root.Number -> 5", "Root.Child",
                                         "Root.Nothing()", "Root.Nothing(\"a \"\"b\"\"\", True)",
                                         "Root.Nothing(1.5, Second:=#2024-06-12#)", "Root.Take(2) -> 2"));
  EXPECT_TRUE(trace.Text().starts_with("Root.Number = 5\nRoot.Number -> 5\n"));
  trace.Clear();
  EXPECT_TRUE(trace.lines().empty());
}

TEST_F(InterceptorTest, TracesThePathsOfObjects) {
  const ObjectPtr child = GetObject(root, u"Child");
  Put(child, u"Number", 1);
  GetObject(child, u"Child");
  PutRef(root, u"Child", child);
  Call(root, u"Nothing", {Array::Of({child}), ObjectPtr(node->child)});
  const ObjectPtr taken = Call(root, u"Take", {MakeRef<Node>()}).ToObject();
  Get(taken, u"");
  EXPECT_THAT(trace.lines(),
              ElementsAre("Root.Child", "Root.Child.Number = 1", "Root.Child.Child -> Nothing",
                          "Set Root.Child = Root.Child", "Root.Nothing(Array(Root.Child), <Node>)",
                          "Root.Take(<Node>)", "Root.Take(<Node>) -> 0"));
}

TEST_F(InterceptorTest, TracesFailuresWithNumberAndText) {
  EXPECT_EQ(RaisedBy([&] { Call(root, u"Fail", {1}); }), 1004);
  EXPECT_THAT(trace.lines(), ElementsAre("Root.Fail(1) ! 1004 Refused"));
}

TEST_F(InterceptorTest, TracesOnlyTheFirstElementsOfALongArray) {
  Call(root, u"Nothing", {Array::Of(std::vector<Value>(1000, 1))});
  EXPECT_TRUE(trace.lines()[0].ends_with(", 1, … of 1000))")) << trace.lines()[0];
  EXPECT_LT(trace.lines()[0].size(), 100u);
}

TEST_F(InterceptorTest, ShortensPathsThatGrowWithoutEnd) {
  ObjectPtr object = root;
  const Ref<Node> first = node;
  std::vector<Ref<Node>> chain;
  for (int i = 0; i < 60; ++i) {
    chain.push_back(MakeRef<Node>());
    (i == 0 ? first : chain[static_cast<std::size_t>(i) - 1])->child = chain.back();
  }
  std::size_t longest = 0;
  for (int i = 0; i < 60; ++i) {
    object = GetObject(object, u"Child");
    longest = std::max(longest, trace.lines().back().size());
  }
  EXPECT_LT(longest, 200u);
}

TEST_F(InterceptorTest, CountsCallsAndFailedOnes) {
  Get(root, u"Number");
  RaisedBy([&] { Call(root, u"Fail", {1}); });
  Get(GetObject(root, u"Child"), u"Number");
  EXPECT_EQ(count.calls(), 4);
  count.Reset();
  EXPECT_EQ(count.calls(), 0);
}

TEST_F(InterceptorTest, FailsTheChosenCallOnceWithoutMakingIt) {
  failure.Reset(2);
  Put(root, u"Number", 1);
  EXPECT_FALSE(failure.has_failed());
  EXPECT_EQ(RaisedBy([&] { Put(root, u"Number", 2); }), 1004);
  EXPECT_TRUE(failure.has_failed());
  EXPECT_EQ(node->value, 1);
  Put(root, u"Number", 3);
  EXPECT_EQ(node->value, 3);
  EXPECT_THAT(trace.lines(),
              ElementsAre("Root.Number = 1", "Root.Number = 2 ! 1004 Chosen", "Root.Number = 3"));
  EXPECT_EQ(count.calls(), 3);
}

TEST_F(InterceptorTest, FailsEveryCallFromTheChosenOneOn) {
  CallFailure for_ever(2, AutomationError(5, u"Test", u"Gone"), CallFailure::Repeat::ForEver);
  Interceptor failing({&for_ever});
  const ObjectPtr object = failing.Wrap(node, u"Node");
  Get(object, u"Number");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(RaisedBy([&] { Get(object, u"Number"); }), 5);
}

TEST_F(InterceptorTest, ShowsARefusedCallToObserversThatStandBehindTheRefusingOne) {
  CallFailure first(1, AutomationError(5, u"Test", u"Gone"));
  CallTrace second;
  Interceptor failing({&first, &second});
  RaisedBy([&] { Get(failing.Wrap(node, u"Node"), u"Number"); });
  EXPECT_THAT(second.lines(), ElementsAre("Node.Number ! 5 Gone"));
}

TEST_F(InterceptorTest, MayStandAroundAnother) {
  CallTrace outer_trace;
  Interceptor outer({&outer_trace});
  const ObjectPtr object = outer.Wrap(root, u"Outer");
  const ObjectPtr child = GetObject(object, u"Child");
  Call(object, u"Take", {child});
  EXPECT_EQ(node->seen, Value(node->child));
  EXPECT_THAT(trace.lines(), ElementsAre("Root.Child", "Root.Take(Root.Child)"));
  EXPECT_THAT(outer_trace.lines(), ElementsAre("Outer.Child", "Outer.Take(Outer.Child)"));
}

TEST_F(InterceptorTest, WorksOnUnobservedWhenItIsGone) {
  CallTrace short_lived_trace;
  ObjectPtr object;
  {
    Interceptor short_lived({&short_lived_trace});
    object = short_lived.Wrap(node, u"Node");
  }
  Put(object, u"Number", 8);
  EXPECT_EQ(Get(GetObject(object, u"Child"), u"Number"), Value(0));
  EXPECT_EQ(node->value, 8);
  EXPECT_TRUE(short_lived_trace.lines().empty());
}

TEST_F(InterceptorTest, LetsWrappersAndObjectsGo) {
  const long before = Object::LiveCount();
  for (int i = 0; i < 3; ++i) {
    const ObjectPtr child = GetObject(root, u"Child");
    Call(root, u"Take", {MakeRef<Node>()});
    node->seen = Value();
    Get(root, u"Children");
  }
  EXPECT_EQ(Object::LiveCount(), before);
}

TEST_F(InterceptorTest, KeepsTheObjectOfAWrapperAlive) {
  ObjectPtr child = GetObject(root, u"Child");
  node->child.reset();
  EXPECT_EQ(Get(child, u"Number"), Value(0));
}

TEST_F(InterceptorTest, WrapsAndCountsWhatAFactoryMakes) {
  platform.object_factory.Register<Node>(u"Library.Node");
  InterceptedFactory factory(interceptor, platform.object_factory);
  Put(factory.Create(u"Library.Node"), u"Number", 1);
  EXPECT_EQ(RaisedBy([&] { factory.Create(u"Library.Other"); }), kCannotCreateObject);
  EXPECT_THAT(trace.lines(),
              ElementsAre("CreateObject(\"Library.Node\")", "Node.Number = 1",
                          "CreateObject(\"Library.Other\") ! 429 Library.Other: no such class"));
  EXPECT_EQ(count.calls(), 3);
  failure.Reset(1);
  EXPECT_EQ(RaisedBy([&] { factory.Create(u"Library.Node"); }), 1004);
}

}  // namespace
}  // namespace qva
