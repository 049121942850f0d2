// How long the library takes from not being loaded to its first object, and how great its file is.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"

namespace qva::windows {
namespace {

constexpr int kRounds = 20;

void Require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "load_bench: %s\n", what);
  std::exit(1);
}

/// The class that a workbook creates first, as the library's own description names it.
CLSID FirstClass(const wchar_t* file) {
  ComPtr<ITypeLib> library;
  Require(SUCCEEDED(library.Obtain([&](ITypeLib** lib) { return LoadTypeLibEx(file, REGKIND_NONE, lib); })),
          "no type library");
  wchar_t name[] = L"gExcelObject";
  ComPtr<ITypeInfo> type;
  MEMBERID member = 0;
  USHORT count = 1;
  Require(SUCCEEDED(type.Obtain(
              [&](ITypeInfo** info) { return library->FindName(name, 0, info, &member, &count); })) &&
              type,
          "no class gExcelObject");
  TYPEATTR* attributes = nullptr;
  Require(SUCCEEDED(type->GetTypeAttr(&attributes)), "no attributes");
  const CLSID id = attributes->guid;
  type->ReleaseTypeAttr(attributes);
  return id;
}

/// Milliseconds for loading the library and creating an object; both are gone afterwards.
double LoadAndCreate(const wchar_t* file, const CLSID& class_id) {
  LARGE_INTEGER frequency;
  LARGE_INTEGER start;
  LARGE_INTEGER end;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  HMODULE module = LoadLibraryW(file);
  Require(module, "the library cannot be loaded");
  const auto get_class_object = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  Require(get_class_object, "no DllGetClassObject");
  {
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> object;
    factory.Obtain([&](IClassFactory** received) {
      return get_class_object(class_id, IID_IClassFactory, reinterpret_cast<void**>(received));
    });
    Require(static_cast<bool>(factory), "no class factory");
    object.Obtain([&](IDispatch** received) {
      return factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(received));
    });
    QueryPerformanceCounter(&end);
    Require(static_cast<bool>(object), "no object");
  }
  const auto can_unload = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
  Require(can_unload && can_unload() == S_OK, "the library cannot be unloaded");
  FreeLibrary(module);
  return static_cast<double>(end.QuadPart - start.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart);
}

int Run(const char* argument) {
  const std::filesystem::path file = std::filesystem::absolute(argument);
  const CLSID class_id = FirstClass(file.c_str());
  const double first = LoadAndCreate(file.c_str(), class_id);
  double best = first;
  for (int i = 0; i < kRounds; ++i) best = std::min(best, LoadAndCreate(file.c_str(), class_id));
  std::printf("QVA_Varnholt.dll: %llu bytes\n",
              static_cast<unsigned long long>(std::filesystem::file_size(file)));
  std::printf("Loading it and creating the first object: %.2f ms the first time, %.2f ms at best\n", first,
              best);
  return 0;
}

}  // namespace
}  // namespace qva::windows

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: load_bench <QVA_Varnholt.dll>\n");
    return 2;
  }
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  const int result = qva::windows::Run(arguments[1]);
  CoUninitialize();
  return result;
}
