// A form factory that fails on demand, over any other.
#pragma once

#include "platform/forwarding.h"

namespace qva {

/// Builds every form until it is told to refuse; then the target is not asked for one.
class FaultyFormFactory : public ui::ForwardingFormFactory {
 public:
  using ForwardingFormFactory::ForwardingFormFactory;

  /// From now on creation raises the error; Allow lets it work again.
  void Refuse(ErrorNumber error = kOutOfMemory) { refusal_ = error; }
  void Allow() { refusal_.reset(); }

  std::unique_ptr<ui::Form> Create(const ui::FormDescription& description) override {
    if (refusal_) throw AutomationError(*refusal_);
    return ForwardingFormFactory::Create(description);
  }

 private:
  std::optional<ErrorNumber> refusal_;
};

}  // namespace qva
