// The automation object by which test scripts look behind the bench's stand-ins and set them up.
#pragma once

#include <cstdint>
#include <string>

#include "platform/member_table.h"

namespace qva::bench {

class Control : public Described<Control> {
 public:
  static ClassBuilder Describe();

  /// Objects of the bench that are alive, in-memory Excel and host included; this one too.
  std::int32_t LiveObjects() const;
  /// How often callers asked any object of the bench for the ids of names.
  std::int32_t Lookups() const;
  /// Those that asked for the same of the same type more than once, by commas; both since ClearLookups.
  std::u16string RepeatedLookups() const;
  void ClearLookups();
  /// Every call that reached Excel or the host since the last ClearTrace, a line each.
  std::u16string Trace() const;
  void ClearTrace();
  /// Lets one call to Excel or the host fail with Excel's 1004 "Refused": the next one is number 1.
  void FailCall(std::int32_t number);

  /// While on, every call to Excel or the host is turned away as by a server that is busy.
  void BeBusy(bool on);
  /// How many were, since Reset.
  std::int32_t TurnedAway() const;

  /// An Excel with one open workbook.
  ObjectPtr NewExcel();

  /// An object of a class by its programmatic identifier. Wine's script engine keeps the class factory of
  /// each object that a script creates itself, and with it the class's library in use.
  ObjectPtr NewObject(std::u16string programmatic_identifier);

  /// The macros that keys and controls of an Excel ran, by commas.
  std::u16string MacrosRun(ObjectPtr excel) const;

  void RemoveBook(std::u16string code);
  void SetText(std::int32_t number, std::u16string text);
  /// The codes of the books that client tools were given, and of those that plants were made for, by commas.
  std::u16string BooksSet() const;
  std::u16string PlantsMade() const;

  /// Texts of the host's message boxes, by line feeds; the next box without an answer gets this one.
  std::u16string Boxes() const;
  void Answer(std::int32_t button);

  /// Whether this process can have windows. One whose Wine took more than 10 seconds to make its desktop
  /// cannot.
  bool HasWindows() const;
  /// From now on until Reset the user sees the host's boxes and lists as windows.
  void ShowWindows();
  /// Writes into a file what the user has in front of him, as Onlooker does, beginning with `scene`.
  void Watch(std::u16string file, std::u16string scene);
  /// Closes every window by Escape as soon as it is there, until it is called again with False.
  void CloseWindows(bool on);
  /// Asks an object for a dialog by its member "Edit" once more while the next window is in front.
  void EditMeanwhile(ObjectPtr object);
  /// The number of the error that it met then; 0 for none, −1 before.
  std::int32_t ErrorMeanwhile() const;
  /// How many of the system's graphics and window objects this process uses, but for a constant.
  std::int32_t SystemObjects() const;

  /// Whether the library's file, which must be loaded, says that nothing of it is in use any more. It lets go
  /// of what it holds itself, the host's tools among it.
  bool LibraryIsUnused() const;

  /// A new first state of host, message boxes and trace.
  void Reset();

  /// Adds one: shows how an argument by reference travels.
  void Increment(std::int32_t& number);
  /// Divides the number by the divisor: shows how several arguments by reference travel. Raises 5 where the
  /// divisor is 0, with the whole number as the remainder.
  void Divide(std::int32_t number, std::int32_t divisor, std::int32_t& quotient, std::int32_t& remainder);
  /// Throws what no member should: std::bad_alloc for "bad_alloc", std::logic_error for "logic_error", else a
  /// number.
  [[noreturn]] void Throw(std::u16string what);
  /// Calls the member "Alpha" of another server's object with three arguments.
  void CallAlpha(ObjectPtr object);
};

}  // namespace qva::bench
