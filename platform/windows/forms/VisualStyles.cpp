#include "platform/windows/forms/VisualStyles.h"

#include "platform/windows/forms/WindowClass.h"

namespace qva::windows {

VisualStyles::VisualStyles() {
  ACTCTXW description{};
  description.cbSize = sizeof description;
  description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  description.hModule = OwnModule();
  description.lpResourceName = MAKEINTRESOURCEW(2);  // where a library keeps the manifest of its own needs
  context_ = CreateActCtxW(&description);
  if (context_ != INVALID_HANDLE_VALUE) ActivateActCtx(context_, &cookie_);
}

VisualStyles::~VisualStyles() {
  if (cookie_) DeactivateActCtx(0, cookie_);
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

}  // namespace qva::windows
