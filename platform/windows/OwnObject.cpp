#include "platform/windows/OwnObject.h"

#include "platform/error.h"

namespace qva::windows {
namespace {

const char this_module = 0;
WrapOwnObject installed_wrapper = nullptr;

}  // namespace

const void* ThisModule() {
  return &this_module;
}

HRESULT AnswerOwnObject(OwnObjectQuestion* question, Object& object) {
  if (!question) return E_POINTER;
  if (question->module == ThisModule()) question->object = &object;
  return S_OK;
}

ObjectPtr UnwrapOwnObject(IDispatch& dispatch) {
  const auto own = ComPtr<IDispatch>(&dispatch).Query<OwnObject>();
  if (!own) return {};
  OwnObjectQuestion question{.module = ThisModule()};
  if (FAILED(own->Unwrap(&question))) return {};
  return ObjectPtr(question.object);
}

void InstallOwnObjectWrapper(WrapOwnObject wrap) {
  installed_wrapper = wrap;
}

ComPtr<IDispatch> WrapObject(const ObjectPtr& object) {
  if (!installed_wrapper) throw AutomationError(kInternalError);
  return ComPtr<IDispatch>::Adopt(installed_wrapper(object));
}

}  // namespace qva::windows
