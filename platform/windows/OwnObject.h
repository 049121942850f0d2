// How objects of the library are known again when they come back from a COM caller, and how they go out.
#pragma once

#include "platform/object.h"
#include "platform/windows/ComPtr.h"

namespace qva::windows {

/// What an OwnObject is asked, and its answer.
struct OwnObjectQuestion {
  /// Never read. An object that says yes to every interface is asked here by a call to its first member after
  /// IUnknown's; for the automation interface that member writes a count, and this is where it does no harm.
  ULONG_PTR scratch = 0;
  const void* module = nullptr;  ///< who asks: ThisModule() of the asking module
  Object* object = nullptr;      ///< the answer, without a reference; null: an object of another module
};

/// Answered by the COM objects that a server of this library makes around its objects.
struct OwnObject : public IUnknown {
  /// Puts the object that the COM object stands for into the answer when the asker is the module that made
  /// it: two modules that are built from the same sources do not share objects. Result: S_OK.
  virtual HRESULT STDMETHODCALLTYPE Unwrap(OwnObjectQuestion* question) = 0;
};

/// An address that no other module of the process has.
const void* ThisModule();

/// An OwnObject's whole answer for the object that it stands for.
HRESULT AnswerOwnObject(OwnObjectQuestion* question, Object& object);

/// The library's object that a COM object stands for; none when it is an object of someone else.
ObjectPtr UnwrapOwnObject(IDispatch& dispatch);

/// Makes or finds the COM object for an object of the library; the reference belongs to the caller. While the
/// COM object lives, the same object gives the same COM object. May throw AutomationError and std::bad_alloc.
using WrapOwnObject = IDispatch* (*)(const ObjectPtr& object);

/// Sets what wraps this module's objects from now on. The server does this before it hands out the first one.
void InstallOwnObjectWrapper(WrapOwnObject wrap);

/// The COM object for an object of the library, by the installed function. Raises 51 (Internal error) when no
/// server has installed one.
ComPtr<IDispatch> WrapObject(const ObjectPtr& object);

}  // namespace qva::windows

// {B21F5D0C-5A3E-4F0B-8C64-6F0D5A1E97C3}, so that __uuidof knows it.
__CRT_UUID_DECL(qva::windows::OwnObject, 0xb21f5d0c, 0x5a3e, 0x4f0b, 0x8c, 0x64, 0x6f, 0x0d, 0x5a, 0x1e, 0x97,
                0xc3)
