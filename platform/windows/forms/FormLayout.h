// Where the controls of a form stand when it has a certain size.
#pragma once

#include <functional>
#include <vector>

#include "platform/controls.h"
#include "platform/forms/form_resizer.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/UiScale.h"

namespace qva::windows {

class FormLayout {
 public:
  /// The description is borrowed. Raises 51 when it contradicts itself.
  explicit FormLayout(const ui::FormDescription& description);

  /// As ui::Form::StartResizer.
  void StartResizer(int width, int height,
                    const std::function<FormResizer::Mode(std::u16string_view name)>& mode) {
    resizer_.Start(width, height, mode);
  }

  /// The controls' places within a form of this inner size, in pixels of the display.
  std::vector<RECT> Places(SIZE inner, UiScale scale) const;

 private:
  const ui::FormDescription& description_;
  std::vector<std::size_t> parents_;  ///< of each control its parent's number, its own when it has none
  FormResizer resizer_{description_};
};

}  // namespace qva::windows
