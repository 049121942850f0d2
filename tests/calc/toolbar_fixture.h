// A workbook with a toolbar's settings sheet, for tests in a real LibreOffice.
#pragma once

#include <filesystem>
#include <string>

#include "tests/calc/calc_fixture.h"

namespace qva {

/// A picture of 16 by 16 pixels, a red dot, as Base64.
inline constexpr char kDot[] =
    "iVBORw0KGgoAAAANSUhEUgAAABAAAAAQBAMAAADt3eJSAAAAElBMVEUAAAD/AAD/AAD/AAD/AAD/AADZchInAAAABXRSTlMAFnXX"
    "W9fjf+0AAABCSURBVAjXY2DAAhiVgxXBDNfQ0FAHIM0CpENDgAxRECNUgIFBFcxQYGAwBTMMGBjAdGgAkghcDVwX3By4yQi7IAAA"
    "nlIVczKnp5QAAAAASUVORK5CYII=";

class CalcToolbar : public CalcTest {
 protected:
  static std::string TextCell(const std::string& text) {
    if (text.empty()) return "<table:table-cell/>";
    return "<table:table-cell office:value-type=\"string\"><text:p>" + XmlText(text) +
           "</text:p></table:table-cell>";
  }
  static std::string NumberCell(int number) {
    return "<table:table-cell office:value-type=\"float\" office:value=\"" + std::to_string(number) + "\"/>";
  }
  static std::string FlagCell(bool on) {
    return std::string("<table:table-cell office:value-type=\"boolean\" office:boolean-value=\"") +
           (on ? "true" : "false") + "\"/>";
  }

  /// A workbook with the macros of tests/calc/macros/<macro>.bas, a sheet "Lapas" of 60 rows, and the
  /// settings sheet "Mygtukai" of a toolbar with four buttons, one of which is hidden and one of which has a
  /// picture.
  std::filesystem::path ToolbarWorkbook(const std::string& macro) {
    struct Button {
      int face;
      const char *caption, *picture, *tag, *key;
      bool visible, begins_group;
      const char* macro;
    };
    const Button buttons[] = {
        {210, "&Rikiuoti", "", "TagA", "^{F3}", true, false, "Rikiuoti"},
        {0, "Taškas", "Taškas", "TagB", "^{k}", true, false, "Taskas"},
        {59, "Nematomas", "", "TagC", "{F7}", false, false, "Slepti"},
        {19, "Baigti", "", "TagD", "{F4}", true, true, "Baigti"},
    };
    const char* const headers[] = {"ID",          "FaceID", "Captions", "Pictures",   "Tag",
                                   "TooltipText", "OnKey",  "Visible",  "BeginGroup", "OnAction"};
    std::string sheet = "<table:table-row>" + NumberCell(4) + TextCell("Ataskaita") + FlagCell(false) +
                        "</table:table-row><table:table-row>";
    std::string names;
    const auto name = [&](const std::string& what, const std::string& cell) {
      names += "<table:named-range table:name=\"" + what +
               "\" table:base-cell-address=\"$Mygtukai.$A$1\" table:cell-range-address=\"$Mygtukai." + cell +
               "\"/>";
    };
    name("nTotalButtons", "$A$1");
    name("sToolBarCaption", "$B$1");
    name("bMenuBar", "$C$1");
    char column = 'A';
    for (const char* header : headers) {
      sheet += TextCell(header);
      name(std::string("Button_") + header, std::string("$") + column++ + "$2");
    }
    sheet += "</table:table-row>";
    for (const Button& button : buttons) {
      sheet += "<table:table-row>" + NumberCell(1) + NumberCell(button.face) + TextCell(button.caption) +
               TextCell(button.picture) + TextCell(button.tag) + TextCell(button.caption) +
               TextCell(button.key) + FlagCell(button.visible) + FlagCell(button.begins_group) +
               TextCell(button.macro) + "</table:table-row>";
    }
    std::string rows;
    for (int row = 1; row <= 60; ++row) {
      rows += "<table:table-row>" + TextCell("Eilutė " + std::to_string(row)) + NumberCell(row) +
              "</table:table-row>";
    }
    const std::string picture =
        "<table:shapes><draw:frame draw:name=\"Taškas\" svg:width=\"0.5cm\" svg:height=\"0.5cm\" "
        "svg:x=\"9cm\" svg:y=\"9cm\"><draw:image><office:binary-data>" +
        std::string(kDot) + "</office:binary-data></draw:image></draw:frame></table:shapes>";
    return WriteWorkbook(macro, "VBAProject",
                         "<table:table table:name=\"Lapas\">" + rows +
                             "</table:table><table:table table:name=\"Mygtukai\">" + picture + sheet +
                             "</table:table><table:named-expressions>" + names +
                             "</table:named-expressions>");
  }
};

}  // namespace qva
