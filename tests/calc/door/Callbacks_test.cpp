// What LibreOffice calls of ours lets nothing out, whatever fails behind it, and hides no error.
#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/document/XDocumentEventBroadcaster.hpp>
#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/XAutomationInvocation.hpp>
#include <com/sun/star/uno/DeploymentException.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/implbase3.hxx>

#include "platform/calc/EventLoop.h"
#include "platform/calc/Screen.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/toolbars/DocumentBars.h"
#include "platform/failure_listener.h"
#include "platform/member_table.h"
#include "platform/memory/MemoryPlatform.h"
#include "server/calc/MenuJob.h"
#include "server/calc/ObjectFactoryService.h"
#include "server/calc/PublishedObject.h"
#include "server/calc/ReportJob.h"
#include "tests/out_of_memory.h"

namespace qva::calc {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

/// A LibreOffice that has an event loop and no other service.
class LoopOnly : public cppu::WeakImplHelper3<css::uno::XComponentContext, css::lang::XMultiComponentFactory,
                                              css::awt::XRequestCallback> {
 public:
  bool is_short_of_memory = false;
  std::vector<Reference<css::awt::XCallback>> waiting;

  Any SAL_CALL getValueByName(const OUString&) override { return {}; }
  Reference<css::lang::XMultiComponentFactory> SAL_CALL getServiceManager() override { return this; }
  Reference<css::uno::XInterface> SAL_CALL
  createInstanceWithContext(const OUString& name, const Reference<css::uno::XComponentContext>&) override {
    if (is_short_of_memory) throw std::bad_alloc();
    if (name != "com.sun.star.awt.AsyncCallback") throw css::uno::DeploymentException();
    return static_cast<css::awt::XRequestCallback*>(this);
  }
  Reference<css::uno::XInterface> SAL_CALL
  createInstanceWithArgumentsAndContext(const OUString& name, const Sequence<Any>&,
                                        const Reference<css::uno::XComponentContext>& context) override {
    return createInstanceWithContext(name, context);
  }
  Sequence<OUString> SAL_CALL getAvailableServiceNames() override { return {}; }
  void SAL_CALL addCallback(const Reference<css::awt::XCallback>& callback, const Any&) override {
    waiting.push_back(callback);
  }
};

/// A document without windows.
class Windowless
    : public cppu::WeakImplHelper2<css::frame::XModel2, css::document::XDocumentEventBroadcaster> {
 public:
  bool is_short_of_memory = false;
  Reference<css::lang::XEventListener> listener;
  Reference<css::document::XDocumentEventListener> event_listener;

  OUString SAL_CALL getURL() override {
    if (is_short_of_memory) throw std::bad_alloc();
    return "file:///tmp/a.ods";
  }
  void SAL_CALL addEventListener(const Reference<css::lang::XEventListener>& added) override {
    listener = added;
  }
  void SAL_CALL
  addDocumentEventListener(const Reference<css::document::XDocumentEventListener>& added) override {
    event_listener = added;
  }

  sal_Bool SAL_CALL attachResource(const OUString&, const Sequence<css::beans::PropertyValue>&) override {
    return false;
  }
  Sequence<css::beans::PropertyValue> SAL_CALL getArgs() override { return {}; }
  void SAL_CALL connectController(const Reference<css::frame::XController>&) override {}
  void SAL_CALL disconnectController(const Reference<css::frame::XController>&) override {}
  void SAL_CALL lockControllers() override {}
  void SAL_CALL unlockControllers() override {}
  sal_Bool SAL_CALL hasControllersLocked() override { return false; }
  Reference<css::frame::XController> SAL_CALL getCurrentController() override { return {}; }
  void SAL_CALL setCurrentController(const Reference<css::frame::XController>&) override {}
  Reference<css::uno::XInterface> SAL_CALL getCurrentSelection() override { return {}; }
  Reference<css::container::XEnumeration> SAL_CALL getControllers() override { return {}; }
  Sequence<OUString> SAL_CALL getAvailableViewControllerNames() override { return {}; }
  Reference<css::frame::XController2> SAL_CALL
  createDefaultViewController(const Reference<css::frame::XFrame>&) override {
    return {};
  }
  Reference<css::frame::XController2> SAL_CALL
  createViewController(const OUString&, const Sequence<css::beans::PropertyValue>&,
                       const Reference<css::frame::XFrame>&) override {
    return {};
  }
  void SAL_CALL setArgs(const Sequence<css::beans::PropertyValue>&) override {}
  void SAL_CALL dispose() override {}
  void SAL_CALL removeEventListener(const Reference<css::lang::XEventListener>&) override {}
  void SAL_CALL
  removeDocumentEventListener(const Reference<css::document::XDocumentEventListener>&) override {}
  void SAL_CALL notifyDocumentEvent(const OUString&, const Reference<css::frame::XController2>&,
                                    const Any&) override {}
};

class FailingTarget : public CommandTarget {
 public:
  void Execute(const OUString&, const Reference<css::frame::XFrame>&) override { throw std::bad_alloc(); }
  CommandState StateOf(const OUString&) override { throw AutomationError(kInternalError); }
};

/// What LibreOffice has that fails, whatever it is asked.
class FailingPeer : public cppu::WeakImplHelper2<css::frame::XDispatchProvider, css::frame::XStatusListener> {
 public:
  bool is_short_of_memory = false;

  Any SAL_CALL queryInterface(const css::uno::Type& type) override {
    if (is_short_of_memory) throw std::bad_alloc();
    return WeakImplHelper2::queryInterface(type);
  }
  Reference<css::frame::XDispatch> SAL_CALL queryDispatch(const css::util::URL&, const OUString&,
                                                          sal_Int32) override {
    throw std::bad_alloc();
  }
  Sequence<Reference<css::frame::XDispatch>> SAL_CALL
  queryDispatches(const Sequence<css::frame::DispatchDescriptor>&) override {
    throw std::bad_alloc();
  }
  void SAL_CALL statusChanged(const css::frame::FeatureStateEvent&) override { throw std::bad_alloc(); }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}
};

/// A member that changes its argument to what Basic has no array for, and fails.
class BlockMaker : public Described<BlockMaker> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"BlockMaker", "Makes blocks").Method<&BlockMaker::Make>(u"Make", {{u"Block"}});
  }

 private:
  void Make(Value& block) {
    Array made;
    made.dimensions.resize(3, {0, 1});
    made.elements.resize(1);
    block = made;
    throw AutomationError(kApplicationDefined, u"BlockMaker", u"Refused");
  }
};

class Callbacks : public testing::Test {
 protected:
  Callbacks() {
    factory();  // takes the services of the machine, which are not to be used
    InstallServices(platform_.services());
    InstallConversion(office.get(), &PublishedObject::Of);
  }
  ~Callbacks() override {
    office->waiting.clear();  // they know the office
    ListenForFailures(nullptr);
    InstallServices({});
  }

  ObjectFactoryService& factory() {
    static auto& made = *new rtl::Reference<ObjectFactoryService>(new ObjectFactoryService(office.get()));
    return *made;
  }

  /// Calls something until none of its allocations fails any more. What LibreOffice itself allocates must not
  /// be among them: it loses what it had.
  template <class Calls>
  static void WithEachAllocationFailing(Calls calls) {
    calls();  // what is allocated once is there
    for (long n = 1;; ++n) {
      SCOPED_TRACE(n);
      const OutOfMemory memory(n);
      EXPECT_NO_THROW(calls());
      if (!memory.has_failed()) break;
    }
  }

  rtl::Reference<LoopOnly> office{new LoopOnly};

 private:
  MemoryPlatform platform_;
};

TEST_F(Callbacks, EndWhatFailsInTheEventLoop) {
  Post([] { throw std::bad_alloc(); });
  Post([] { throw css::uno::RuntimeException(); });
  ASSERT_EQ(office->waiting.size(), 2u);
  for (const auto& callback : office->waiting) EXPECT_NO_THROW(callback->notify({}));
}

TEST_F(Callbacks, EndWhatFailsInACommand) {
  const auto target = std::make_shared<FailingTarget>();
  const rtl::Reference<BarCommands> commands(new BarCommands(target));
  EXPECT_NO_THROW(commands->dispatch({}, {}));
  const rtl::Reference<FailingPeer> peer(new FailingPeer);
  EXPECT_NO_THROW(commands->addStatusListener(peer.get(), {}));
  peer->is_short_of_memory = true;
  EXPECT_NO_THROW(commands->removeStatusListener(rtl::Reference<FailingPeer>(new FailingPeer).get(), {}));
}

/// Leaves as soon as it is told anything; nobody else holds it then.
class LeavingListener : public cppu::WeakImplHelper1<css::frame::XStatusListener> {
 public:
  explicit LeavingListener(BarCommands& commands) : commands_(commands) {}
  void SAL_CALL statusChanged(const css::frame::FeatureStateEvent& event) override {
    commands_.removeStatusListener(this, event.FeatureURL);
    holder.clear();
    told += by_one_;  // which must be there yet
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

  static inline Reference<css::frame::XStatusListener> holder;
  static inline int told = 0;

 private:
  BarCommands& commands_;
  int by_one_ = 1;
};

TEST_F(Callbacks, TellAListenerToTheEndThatLeavesMeanwhile) {
  const rtl::Reference<BarCommands> commands(new BarCommands({}));
  LeavingListener::told = 0;
  LeavingListener::holder.set(new LeavingListener(*commands));
  commands->addStatusListener(LeavingListener::holder, {});
  EXPECT_EQ(LeavingListener::told, 1);
  commands->Broadcast();
  EXPECT_EQ(LeavingListener::told, 1) << "it has left";
}

TEST_F(Callbacks, AnswerForAsManyCommandsAsWereAskedForWhateverFails) {
  const rtl::Reference<BarCommands> commands(new BarCommands({}));
  const rtl::Reference<FailingPeer> peer(new FailingPeer);
  commands->setSlaveDispatchProvider(peer.get());
  Sequence<css::frame::DispatchDescriptor> requests(2);
  requests.getArray()[0].FeatureURL.Complete = OUString(BarCommands::kProtocol) + "1";
  Sequence<Reference<css::frame::XDispatch>> found;
  EXPECT_NO_THROW(found = commands->queryDispatches(requests));
  ASSERT_EQ(found.getLength(), 2);
  EXPECT_TRUE(found[0].is());
  EXPECT_FALSE(found[1].is());
  Reference<css::frame::XDispatch> foreign = found[0];
  EXPECT_NO_THROW(foreign = commands->queryDispatch(requests[1].FeatureURL, "", 0));
  EXPECT_FALSE(foreign.is());
}

TEST_F(Callbacks, EndWhatFailsWhileBarsAreShown) {
  const rtl::Reference<Windowless> document(new Windowless);
  const auto bars = std::make_shared<DocumentBars>(document.get());
  bars->CommandBarsChanged();
  ASSERT_EQ(office->waiting.size(), 1u);
  document->is_short_of_memory = true;
  EXPECT_NO_THROW(office->waiting[0]->notify({}));
}

TEST_F(Callbacks, EndWhatFailsAtAWindowMoreAndAtTheDocumentsEnd) {
  const rtl::Reference<Windowless> document(new Windowless);
  const auto bars = std::make_shared<DocumentBars>(document.get());
  bars->Watch();
  css::document::DocumentEvent event;
  event.EventName = "OnViewCreated";
  office->is_short_of_memory = true;
  EXPECT_NO_THROW(document->event_listener->documentEventOccured(event));
  office->is_short_of_memory = false;
  document->event_listener->documentEventOccured(event);
  EXPECT_EQ(office->waiting.size(), 1u) << "the next window shows the bars";
  WithEachAllocationFailing([&] { document->listener->disposing({}); });
}

TEST_F(Callbacks, LeaveAScreenOffRatherThanRaiseFromItsEnd) {
  Arguments arguments;
  arguments.positional = {false};
  ObjectPtr application = MakeRef<UnoObject>(Any());
  EXPECT_THROW(SetScreenUpdating(application, arguments), css::uno::Exception);
  office->is_short_of_memory = true;
  application = {};
}

TEST_F(Callbacks, TellTheMembersErrorWhereItsArgumentCannotGoBack) {
  const Reference<css::script::XAutomationInvocation> object(PublishedObject::Of(MakeRef<BlockMaker>()),
                                                             css::uno::UNO_QUERY_THROW);
  Sequence<sal_Int16> changed;
  Sequence<Any> values;
  try {
    object->invoke("Make", SequenceOf({Any(sal_Int32{1})}), changed, values);
    FAIL() << "raises nothing";
  } catch (const css::script::BasicErrorException& error) {
    EXPECT_EQ(error.ErrorCode, kApplicationDefined);
  }
}

TEST_F(Callbacks, EndWhatFailsInAMenuCommand) {
  const rtl::Reference<MenuJob> job(new MenuJob(office.get()));
  office->is_short_of_memory = true;
  WithEachAllocationFailing([&] { job->trigger("guide"); });
}

TEST_F(Callbacks, EndWhatFailsInAReportJob) {
  const rtl::Reference<ReportJob> job(new ReportJob(office.get()));
  office->is_short_of_memory = true;
  WithEachAllocationFailing([&] { job->trigger(""); });
}

TEST_F(Callbacks, NameNoServicesWhereThereIsNoMemoryForTheirNames) {
  EXPECT_FALSE(factory().getAvailableServiceNames().getLength() == 0);
  WithEachAllocationFailing([&] { factory().getAvailableServiceNames(); });
}

}  // namespace
}  // namespace qva::calc
