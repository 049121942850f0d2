// The library's windows in LibreOffice, where somebody can see them.
#pragma once

#include "platform/controls.h"
#include "platform/list_chooser.h"
#include "platform/message_box.h"
#include "platform/services.h"

namespace qva::calc {

/// Shows forms, lists and message boxes in windows of LibreOffice. They are answered unattended where nobody
/// sits: when LibreOffice has no screen; forms and lists also when the environment variable
/// QVA_VARNHOLT_FORM_ANSWERS names a file, message boxes when QVA_VARNHOLT_ANSWERS or
/// QVA_VARNHOLT_MESSAGE_LOG does.
class CalcWindows : public ui::FormFactory, public ListChooser, public MessageBox {
 public:
  /// Takes the unattended services from `services` and puts itself there. They are borrowed.
  explicit CalcWindows(Services& services);

  std::unique_ptr<ui::Form> Create(const ui::FormDescription& description) override;
  std::optional<std::size_t> Choose(const ChoiceList& list, std::u16string_view selected) override;
  std::int32_t Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override;
  std::int32_t Ask(std::u16string_view text, std::u16string_view title,
                   std::span<const std::u16string> captions) override;

 private:
  ui::FormFactory& unattended_forms_;
  ListChooser& unattended_lists_;
  MessageBox& unattended_boxes_;
};

}  // namespace qva::calc
