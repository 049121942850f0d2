// Excel's constants under Excel's own names, as far as they are used.
#pragma once

#include <cstdint>

namespace qva {

/// Range.End
enum XlDirection : std::int32_t { xlUp = -4162, xlDown = -4121, xlToLeft = -4159, xlToRight = -4161 };

/// Application.Cursor
enum XlMousePointer : std::int32_t { xlDefault = -4143, xlNorthwestArrow = 1, xlWait = 2, xlIBeam = 3 };

/// Application.Calculation
enum XlCalculation : std::int32_t {
  xlCalculationAutomatic = -4105,
  xlCalculationManual = -4135,
  xlCalculationSemiautomatic = 2
};

/// Application.ReferenceStyle
enum XlReferenceStyle : std::int32_t { xlA1 = 1, xlR1C1 = -4150 };

/// Application.DisplayCommentIndicator
enum XlCommentDisplayMode : std::int32_t {
  xlNoIndicator = 0,
  xlCommentIndicatorOnly = -1,
  xlCommentAndIndicator = 1
};

/// Window.WindowState
enum XlWindowState : std::int32_t { xlMaximized = -4137, xlMinimized = -4140, xlNormal = -4143 };

/// Worksheet.Visible
enum XlSheetVisibility : std::int32_t { xlSheetVisible = -1, xlSheetHidden = 0, xlSheetVeryHidden = 2 };

/// Font.ColorIndex and Interior.ColorIndex beside the palette's 1 to 56
enum XlColorIndex : std::int32_t { xlColorIndexAutomatic = -4105, xlColorIndexNone = -4142 };

/// CommandBars.Add and CommandBar.Position
enum MsoBarPosition : std::int32_t {
  msoBarLeft = 0,
  msoBarTop = 1,
  msoBarRight = 2,
  msoBarBottom = 3,
  msoBarFloating = 4
};

/// CommandBar.Protection: what the user, and macros with him, may not change; added up
enum MsoBarProtection : std::int32_t {
  msoBarNoProtection = 0,
  msoBarNoCustomize = 1,
  msoBarNoMove = 4,
  msoBarNoChangeVisible = 8
};

/// CommandBarControls.Add
enum MsoControlType : std::int32_t {
  msoControlButton = 1,
  msoControlEdit = 2,
  msoControlDropdown = 3,
  msoControlComboBox = 4,
  msoControlPopup = 10
};

/// CommandBarButton.Style
enum MsoButtonStyle : std::int32_t {
  msoButtonAutomatic = 0,
  msoButtonIcon = 1,
  msoButtonCaption = 2,
  msoButtonIconAndCaption = 3
};

/// CommandBarButton.State
enum MsoButtonState : std::int32_t { msoButtonUp = 0, msoButtonDown = -1, msoButtonMixed = 2 };

/// The numbers of error values in cells (CVErr)
enum XlCVError : std::int32_t {
  xlErrNull = 2000,
  xlErrDiv0 = 2007,
  xlErrValue = 2015,
  xlErrRef = 2023,
  xlErrName = 2029,
  xlErrNum = 2036,
  xlErrNA = 2042
};

}  // namespace qva
