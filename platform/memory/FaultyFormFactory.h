// A form factory that fails on demand, and whose forms do, over any other.
#pragma once

#include "platform/forwarding.h"

namespace qva {

/// Builds every form until it is told to refuse; then the target is not asked for one. Its forms are shown
/// until it is told to refuse that, whenever they were built; then they stay hidden. They must not outlive
/// it.
class FaultyFormFactory : public ui::ForwardingFormFactory {
 public:
  using ForwardingFormFactory::ForwardingFormFactory;

  /// From now on creation raises the error; Allow lets it work again, and showing as well.
  void Refuse(ErrorNumber error = kOutOfMemory) { refusal_ = error; }
  /// The same for ShowModal.
  void RefuseShowing(ErrorNumber error = kInternalError) { showing_refusal_ = error; }
  void Allow() {
    refusal_.reset();
    showing_refusal_.reset();
  }

  std::unique_ptr<ui::Form> Create(const ui::FormDescription& description) override {
    if (refusal_) throw AutomationError(*refusal_);
    return std::make_unique<FaultyForm>(ForwardingFormFactory::Create(description), *this);
  }

 private:
  class FaultyForm : public ui::ForwardingForm {
   public:
    FaultyForm(std::unique_ptr<ui::Form> form, const FaultyFormFactory& factory)
        : ForwardingForm(std::move(form)), factory_(factory) {}

    void ShowModal() override {
      if (factory_.showing_refusal_) throw AutomationError(*factory_.showing_refusal_);
      ForwardingForm::ShowModal();
    }

   private:
    const FaultyFormFactory& factory_;
  };

  std::optional<ErrorNumber> refusal_, showing_refusal_;
};

}  // namespace qva
