// The global object: what a report workbook creates first and connects through.
#pragma once

#include <cstdint>

#include "excelui/CEnvironment.h"
#include "excelui/CExcelState.h"
#include "excelui/CToolbars.h"
#include "excelui/ConnectedExcel.h"
#include "platform/excel.h"
#include "platform/host.h"
#include "platform/member_table.h"

namespace qva {

/// Binds the library to the running Excel and to the host's open book, and owns the library-wide globals
/// (global/Globals.h), which all instances share. An instance holds only its use counters, the snapshots of
/// the user's Excel, and the application that it connected last: what it makes goes on with that one.
class gExcelObject : public Described<gExcelObject> {
 public:
  static ClassBuilder Describe();

  ~gExcelObject() override;

  /// Connects to Excel and to the host's book. `objWB` is accepted and not used. When `oAppBook` is not
  /// Nothing it becomes the host book; when there is no book even then, the one that the host setting "P0"
  /// names is opened. Result: how often this instance opened a book itself. Raises kObjectErrorBase with the
  /// source "InitConnectEX" when "P0" is empty (host message 16514) or the book cannot be opened (host
  /// message 842); the application stays connected then, the book stays Nothing. Where the host's texts are
  /// not to be had either, the description tells why there is no book, or else why there are no texts. A book
  /// that was opened is kept together with its plant or not at all: what the host's client tools and plant
  /// raise is raised, and the next call begins anew.
  std::int16_t InitConnectEX(excel::Application App, Value objWB, host::Book oAppBook);

  host::Book oBook() const;
  Ref<CToolbars> oToolBars() const;
  Ref<CEnvironment> oEnvironment() const;
  host::Plant oMyPlant() const;

  /// Lets go of everything but the application, and sets the connection count to 0. The toolbar and
  /// environment counts stay as they are, on purpose: a later InitToolBars makes a new collection only when
  /// its count passes through 1 again. `intEventHandle` is not used.
  void ResetConnectEX(Value intEventHandle);

  /// ResetConnectEX for the error handlers of macros.
  void ResetConnectOnError();

  /// The workbooks' last resort: shows the error's description, then gives a visible Excel its screen back
  /// and shuts an invisible one down. Each step is tried, also when memory is short. Never raises.
  void ExcelReportError(ObjectPtr ExcelErr);

  /// Counts up; the first one makes the toolbar collection. Raises 6 (Overflow) past 32 767.
  void InitToolBars();
  /// Counts down; the last one releases the collection. Raises 6 (Overflow) below −32 768.
  void ResetToolBars();

  /// Shows the report help of toolbar 1. Raises 91 when there is no such toolbar.
  void cmdHelp();

  /// Counts up; the first one makes the environment object. Each one takes a snapshot of the user's Excel.
  /// Raises 6 (Overflow) past 32 767.
  void InitEnvironment();
  /// Counts down; each one puts the latest snapshot back, and at 0 the environment object goes.
  /// Raises 6 (Overflow) below −32 768, and 91 when there are no snapshots.
  void ResetEnvironment();

 private:
  /// Opens the book that the host setting "P0" names, and hands it to the host's own tools.
  void ConnectToHost();

  ConnectedExcel excel_;
  Ref<CExcelState> excel_state_;
  std::int16_t connection_count_ = 0;
  std::int16_t toolbar_count_ = 0;
  std::int16_t environment_count_ = 0;
};

}  // namespace qva
