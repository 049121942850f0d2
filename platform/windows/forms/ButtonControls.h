// Controls that are pressed, and those that stand around others.
#pragma once

#include "platform/windows/forms/NativeControl.h"

namespace qva::windows {

class NativeLabel : public NativeControl, public ui::Label {
 public:
  NativeLabel(FormWindow& form, const ui::ControlDescription& description);
  std::u16string Caption() const override;
  void SetCaption(std::u16string_view caption) override;
  bool IsTabStop() const override { return false; }
};

class NativeFrame : public NativeControl {
 public:
  NativeFrame(FormWindow& form, const ui::ControlDescription& description);
  bool IsTabStop() const override { return false; }

 private:
  LRESULT Handle(UINT message, WPARAM first, LPARAM second) override;
};

class NativeButton : public NativeControl, public ui::Button {
 public:
  NativeButton(FormWindow& form, const ui::ControlDescription& description);
  void OnCommand(WORD code) override;
};

class NativeOptionButton : public NativeControl, public ui::OptionButton {
 public:
  NativeOptionButton(FormWindow& form, const ui::ControlDescription& description);
  bool Selected() const override { return Send(BM_GETCHECK) == BST_CHECKED; }
  void Select() override;
  void OnCommand(WORD code) override;
  /// The selected one of its group, or the first one.
  bool IsTabStop() const override;
};

class NativeTabControl : public NativeControl, public ui::TabControl {
 public:
  NativeTabControl(FormWindow& form, const ui::ControlDescription& description);
  int Page() const override;
  void SetPage(int page) override;
  void OnNotify(const NMHDR& notice) override;
};

}  // namespace qva::windows
