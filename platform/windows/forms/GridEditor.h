// The field that lies over a grid's cell while its text is edited.
#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// An edit control that stays hidden between its uses. It leaves what happens to the text to its owner.
class GridEditor {
 public:
  class Owner {
   public:
    /// A key was pressed in the open field; `alt` tells whether Alt was down. False gives it to the field.
    virtual bool EditorKey(UINT key, bool alt) = 0;
    /// The open field has lost the focus.
    virtual void EditorLeft() = 0;
    /// What one of these raised.
    virtual void Fail(std::exception_ptr failure) noexcept = 0;

   protected:
    ~Owner() = default;
  };

  GridEditor() = default;
  GridEditor(const GridEditor&) = delete;
  GridEditor& operator=(const GridEditor&) = delete;

  /// Makes the field, a child of the grid's window, which destroys it. The owner is borrowed for as long.
  /// False when there is no window to be had.
  bool Create(HWND grid, Owner& owner);

  HWND window() const { return window_; }
  bool is_open() const { return is_open_; }
  /// Shows the field with a text, all of which is selected, and gives it the focus. `area` and the padding to
  /// the left and right of the text are pixels of the grid.
  void Open(const RECT& area, int padding, std::u16string_view text);
  /// Hides the field. The focus goes to the grid, if the field has it.
  void Close();
  /// What stands in the field.
  std::u16string Text() const;
  /// Whether the user has changed the text.
  bool is_modified() const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                    DWORD_PTR data);
  /// True when the message needs nothing more.
  bool Handle(UINT message, WPARAM first);

  HWND window_ = nullptr;
  Owner* owner_ = nullptr;
  bool is_open_ = false;
};

}  // namespace qva::windows
