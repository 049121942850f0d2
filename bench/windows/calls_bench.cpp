// What a call through the automation client costs, measured on one object of the system beside the other ways
// of calling it: by a number that is known, by name each time, and through the vtable, as its type library
// describes it.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>

#include "platform/windows/Bstr.h"
#include "platform/windows/ComObjectFactory.h"
#include "platform/windows/DispatchLocale.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/services/WindowsPlatform.h"

namespace qva::windows {
namespace {

constexpr int kCalls = 2000;
constexpr int kRounds = 100;

/// Nanoseconds of one call of each: the best of several rounds, in which they take turns, so that other
/// processes do not count.
template <std::size_t count>
std::array<double, count> Measure(const std::array<std::function<void()>, count>& calls) {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  std::array<double, count> best;
  best.fill(std::numeric_limits<double>::infinity());
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t n = 0; n < count; ++n) {
      LARGE_INTEGER start;
      LARGE_INTEGER end;
      QueryPerformanceCounter(&start);
      for (int i = 0; i < kCalls; ++i) calls[n]();
      QueryPerformanceCounter(&end);
      const double one = static_cast<double>(end.QuadPart - start.QuadPart) * 1e9 /
                         static_cast<double>(frequency.QuadPart) / kCalls;
      best[n] = std::min(best[n], one);
    }
  }
  return best;
}

void Require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "calls_bench: %s\n", what);
  std::exit(1);
}

/// Where the vtable has the function that reads a property; the type library of a dual interface tells.
std::size_t VtablePlaceOfGetter(IDispatch& object, std::u16string_view property) {
  ComPtr<ITypeInfo> late;
  Require(SUCCEEDED(late.Obtain([&](ITypeInfo** type) { return object.GetTypeInfo(0, 0, type); })),
          "no type info");
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> early;
  Require(
      SUCCEEDED(late->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
          SUCCEEDED(early.Obtain([&](ITypeInfo** type) { return late->GetRefTypeInfo(reference, type); })),
      "the interface is not dual");
  for (UINT i = 0;; ++i) {
    FUNCDESC* function = nullptr;
    Require(SUCCEEDED(early->GetFuncDesc(i, &function)), "no such property");
    BSTR name = nullptr;
    UINT count = 0;
    early->GetNames(function->memid, &name, 1, &count);
    const bool is_getter = function->invkind == INVOKE_PROPERTYGET && Bstr::Adopt(name).Text() == property;
    const auto place = static_cast<std::size_t>(function->oVft) / sizeof(void*);
    early->ReleaseFuncDesc(function);
    if (is_getter) return place;
  }
}

int Run() {
  const ObjectPtr object = ComObjectFactory().Create(u"Scripting.Dictionary");
  const ComPtr<IDispatch> dispatch = ToDispatch(object);
  LONG total = 0;

  const auto number_of_count = [&] {
    wchar_t name[] = L"Count";
    LPOLESTR names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    dispatch->GetIDsOfNames(IID_NULL, names, 1, kDispatchLocale, &id);
    return id;
  };
  const auto read = [&](DISPID id) {
    DISPPARAMS none{};
    Variant result;
    dispatch->Invoke(id, IID_NULL, kDispatchLocale, DISPATCH_PROPERTYGET, &none, result.get(), nullptr,
                     nullptr);
    total += result->lVal;
  };
  const std::size_t place = VtablePlaceOfGetter(*dispatch, u"Count");
  using Getter = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, LONG*);
  const auto [cached, by_number, by_name, direct] = Measure<4>({
      [&] { total += Get(object, u"Count").ToInt32(); },
      [&, id = number_of_count()] { read(id); },
      [&] { read(number_of_count()); },
      [&] {
        const auto getter = (*reinterpret_cast<Getter**>(dispatch.get()))[place];
        LONG count = 0;
        getter(dispatch.get(), &count);
        total += count;
      },
  });
  Require(total == 0, "an empty dictionary has entries");

  std::printf("Reading a property of one object, nanoseconds for each call\n");
  std::printf("  through the client, names resolved once  %8.0f\n", cached);
  std::printf("  by a number that is known                %8.0f\n", by_number);
  std::printf("  by name each time                        %8.0f\n", by_name);
  std::printf("  through the vtable                       %8.0f\n", direct);
  std::printf(
      "The client takes %.2f times the vtable call, %.2f times the call by number, %.2f times the one by "
      "name.\n",
      cached / direct, cached / by_number, cached / by_name);
  return 0;
}

}  // namespace
}  // namespace qva::windows

int main() {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  qva::windows::InstallPlatform();
  const int result = qva::windows::Run();
  CoUninitialize();
  return result;
}
