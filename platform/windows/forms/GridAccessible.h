// What a screen reader is told of a grid, and what it does for its user there.
#pragma once

#include <oleacc.h>

#include <exception>
#include <string_view>

#include "platform/forms/grid_state.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Counted.h"
#include "platform/windows/forms/GridLayout.h"

namespace qva::windows {

/// The grid's side.
class AccessibleGrid {
 public:
  virtual HWND window() const = 0;
  virtual const GridState& state() const = 0;
  virtual const GridLayout& layout() const = 0;
  /// Makes a cell that there is the current one, and brings it into sight. What is being edited is stored.
  virtual void GoTo(GridCell cell) = 0;
  /// What a click on the current cell does: presses its button, turns its mark over or edits its text.
  virtual void Activate() = 0;
  /// Stores a text in the current cell, as one that was typed. False when it takes none.
  virtual bool Enter(std::u16string_view text) = 0;
  /// What one of these raised.
  virtual void Fail(std::exception_ptr failure) noexcept = 0;

 protected:
  ~AccessibleGrid() = default;
};

/// A table, whose name is the window's text, with its cells as simple children, numbered from 1 line by line:
///   name         the column's caption
///   description  line and number of lines
///   value        what stands in the cell; of a mark nothing, its state tells it
///   state        whether it is the current one, out of sight, only read
/// Outlives its grid; then it answers CO_E_OBJNOTCONNECTED. An unknown child is E_INVALIDARG, what fails is
/// E_FAIL and the grid's, too. May be called in the window's thread alone, as any accessible object.
class GridAccessible : public Counted<IAccessible> {
 public:
  explicit GridAccessible(AccessibleGrid& grid) : grid_(&grid) {}
  /// The grid goes.
  void Disconnect() { grid_ = nullptr; }

  /// The answer to WM_GETOBJECT for the window's client area.
  LRESULT AnswerGetObject(WPARAM flags);
  /// Tells who listens that something happened (EVENT_OBJECT_FOCUS and the like): to the current cell, or to
  /// the grid as a whole.
  void TellOfCell(DWORD event) const;
  void TellOfGrid(DWORD event) const;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override;
  // Automation clients reach these members by their interface alone.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override;

  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
  HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* key) override;
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
  HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                        VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  HRESULT STDMETHODCALLTYPE accHitTest(LONG left, LONG top, VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override;
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

 private:
  template <class Body>
  HRESULT Answer(Body&& body) noexcept;
  template <class Body>
  HRESULT AnswerFor(const VARIANT& child, Body&& body) noexcept;

  std::size_t columns() const { return grid_->state().columns().size(); }
  std::size_t cells() const { return grid_->state().lines() * columns(); }
  LONG IdOf(GridCell cell) const { return static_cast<LONG>(cell.line * columns() + cell.column + 1); }
  /// The id of the current cell; the grid's own where there is none.
  LONG CurrentId() const {
    return grid_->state().CurrentColumn() ? IdOf(grid_->state().current()) : CHILDID_SELF;
  }

  AccessibleGrid* grid_;
};

}  // namespace qva::windows
