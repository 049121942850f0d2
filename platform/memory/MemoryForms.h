// Forms of the twin: a function is their user.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/forms/memory_form.h"
#include "platform/list_chooser.h"

namespace qva {

class MemoryForms : public ui::FormFactory {
 public:
  std::unique_ptr<ui::Form> Create(const ui::FormDescription& description) override {
    ++created;
    return std::make_unique<MemoryForm>(description, user);
  }

  MemoryForm::User user;  ///< of all forms created from now on; without one each is closed at once
  int created = 0;
};

class MemoryListChooser : public ListChooser {
 public:
  std::optional<std::size_t> Choose(const ChoiceList& list, std::u16string_view selected) override {
    shown.push_back(list);
    return user ? user(list, selected) : std::nullopt;
  }

  std::function<std::optional<std::size_t>(const ChoiceList& list, std::u16string_view selected)> user;
  std::vector<ChoiceList> shown;
};

}  // namespace qva
