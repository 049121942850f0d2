// Texts, arrays and error information: nothing of them is left after a call.
#include <atomic>

#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

/// Counts the blocks of COM's allocator, from which texts, arrays and their elements come.
class BlockCount : public IMallocSpy {
 public:
  /// Blocks allocated since the first call and not yet freed.
  static long Now() {
    // Stays for the rest of the process: the system keeps freed texts for later, and frees them through it.
    static const BlockCount* const count = [] {
      auto* created = new BlockCount;
      CoRegisterMallocSpy(created);
      return created;
    }();
    return count->count_;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** result) override {
    *result = static_cast<IMallocSpy*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
  void* STDMETHODCALLTYPE PostAlloc(void* block) override {
    ++count_;
    return block;
  }
  void* STDMETHODCALLTYPE PreFree(void* block, BOOL is_counted) override {
    if (block && is_counted) --count_;
    return block;
  }
  void STDMETHODCALLTYPE PostFree(BOOL) override {}
  SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** passed, BOOL) override {
    *passed = block;
    return size;
  }
  void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override { return block; }
  void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
  SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
  void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
  int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int actual) override { return actual; }
  void STDMETHODCALLTYPE PreHeapMinimize() override {}
  void STDMETHODCALLTYPE PostHeapMinimize() override {}

 private:
  virtual ~BlockCount() = default;

  std::atomic<long> count_{0};
};

class MemoryTest : public NothingLeftTest {
 protected:
  /// Runs a step many times. The system keeps a few freed texts for later, hence the first rounds do not
  /// count.
  template <class Step>
  void ExpectNoGrowth(Step&& step) {
    for (int i = 0; i < 100; ++i) step();
    const long before = BlockCount::Now();
    for (int i = 0; i < 1000; ++i) step();
    EXPECT_LT(BlockCount::Now() - before, 100);
  }
};

const std::u16string kText(300, u'ž');

TEST_F(MemoryTest, TheWatchSeesALeak) {
  const long before = BlockCount::Now();
  std::vector<Bstr> kept;
  for (int i = 0; i < 1000; ++i) kept.emplace_back(kText);
  EXPECT_GE(BlockCount::Now() - before, 900);
}

TEST_F(MemoryTest, ValuesGoOutAndComeInWithoutALeak) {
  const Value value = Array::Of({kText, Array::Of({kText, Date{1}}), std::int16_t{1}});
  BSTR variable = Bstr(kText).Detach();
  ExpectNoGrowth([&] {
    EXPECT_EQ(FromVariant(*ToVariant(value)).ToArray().elements[0], Value(kText));
    StoreByReference(VariantOf(VT_BYREF | VT_BSTR, [&](VARIANT& v) { v.pbstrVal = &variable; }), kText);
  });
  SysFreeString(variable);
}

TEST_F(MemoryTest, CallsAndTheirErrorsLeaveNothing) {
  const auto dispatch = NewDispatch();
  const ObjectPtr object = ObjectOver(dispatch);
  dispatch->invoke = [](const InvokeCall& call) {
    if (call.id == 1) {
      *call.result = ToVariant(Array::Of({kText, kText})).Detach();
      return S_OK;
    }
    call.info->scode = E_FAIL;
    call.info->bstrSource = Bstr(kText).Detach();
    call.info->bstrDescription = Bstr(kText).Detach();
    call.info->bstrHelpFile = Bstr(kText).Detach();
    return DISP_E_EXCEPTION;
  };
  ExpectNoGrowth([&] {
    EXPECT_TRUE(Call(object, u"Alpha", {kText, Array::Of({kText})}).Is(Value::Type::Array));
    EXPECT_EQ(RaisedBy([&] { Call(object, u"Beta", {kText}); }), E_FAIL);
  });
}

TEST_F(MemoryTest, AnArrayThatIsRefusedHalfwayLeavesNothing) {
  SAFEARRAY* variable = SafeArrayCreateVector(VT_BSTR, 0, 1);
  ExpectNoGrowth([&] {
    const VARIANT reference =
        VariantOf(VT_BYREF | VT_ARRAY | VT_BSTR, [&](VARIANT& v) { v.pparray = &variable; });
    EXPECT_EQ(RaisedBy([&] { StoreByReference(reference, Array::Of({kText, Null{}})); }), kInvalidUseOfNull);
  });
  SafeArrayDestroy(variable);
}

}  // namespace
}  // namespace qva::windows
