#include "period/frmReportPeriod.h"

namespace qva {

ui::FormDescription ReportPeriodLayout() {
  using enum ui::ControlKind;
  ui::FormDescription form;
  form.name = u"frmReportPeriod";
  form.caption = u"Ataskaitinio periodo nustatymai";
  form.width = 640;
  form.height = 400;
  form.resizable = true;
  // The numbers are those of the host's text resources; users know the captions with them.
  form.pages = {u"#1626 Pagrindiniai parametrai", u"#14058 Papilduomi parametrai"};
  form.default_button = u"btOk";
  form.cancel_button = u"btCancel";
  form.controls = {
      {TabControl, u"STab", u"", {8, 8, 624, 348}, u"", 0},

      {Label, u"Label1", u"Sąskaitų planas : ", {16, 39, 130, 17}, u"STab", 0},
      {ComboBox, u"cbAccPlan", u"", {150, 36, 456, 23}, u"STab", 0},
      {Label, u"Label2", u"Metai : ", {16, 79, 130, 17}, u"STab", 0},
      {TextBox, u"txtYear", u"", {150, 76, 70, 23}, u"STab", 0},
      {Label, u"Label4", u"Ketvertis : ", {16, 109, 130, 17}, u"STab", 0},
      {TextBox, u"txtQuater", u"", {150, 106, 70, 23}, u"STab", 0},
      {Label, u"Label3", u"Mėnuo : ", {16, 139, 130, 17}, u"STab", 0},
      {TextBox, u"txtMonth", u"", {150, 136, 70, 23}, u"STab", 0},

      {Frame, u"Frame2", u" Ataskaitos periodiškūmas ", {396, 68, 210, 168}, u"STab", 0},
      {OptionButton, u"optYear", u"Metinės", {16, 20, 180, 20}, u"Frame2", 0},
      {OptionButton, u"optQuarter", u"Ketvirčio", {16, 44, 180, 20}, u"Frame2", 0},
      {OptionButton, u"optMonth", u"Mėnesio", {16, 68, 180, 20}, u"Frame2", 0},
      {OptionButton, u"optHalfYearOwn", u"I  pusmečio", {16, 92, 180, 20}, u"Frame2", 0},
      {OptionButton, u"optHalfYearTwo", u"II pusmečio", {16, 116, 180, 20}, u"Frame2", 0},
      {OptionButton, u"optUser", u"Nustatytas", {16, 140, 180, 20}, u"Frame2", 0},

      {Label, u"Label8", u"Praeitas ataskaitinis periodas : ", {16, 180, 360, 17}, u"STab", 0},
      {Label, u"Label6", u"Nuo : ", {32, 205, 50, 17}, u"STab", 0},
      {DatePicker, u"edPrevBegDate", u"", {84, 202, 110, 23}, u"STab", 0},
      {Label, u"Label7", u"iki : ", {212, 205, 40, 17}, u"STab", 0},
      {DatePicker, u"edPrevEndDate", u"", {254, 202, 110, 23}, u"STab", 0},
      {Label, u"Label9", u"Einamasis ataskaitinis periodas : ", {16, 240, 360, 17}, u"STab", 0},
      {Label, u"Label11", u"Nuo : ", {32, 265, 50, 17}, u"STab", 0},
      {DatePicker, u"edCurrBegDate", u"", {84, 262, 110, 23}, u"STab", 0},
      {Label, u"Label10", u"iki : ", {212, 265, 40, 17}, u"STab", 0},
      {DatePicker, u"edCurrEndDate", u"", {254, 262, 110, 23}, u"STab", 0},
      {TextBox, u"Text1", u"Ataskaitos už nurodytą laikotarpį", {16, 304, 590, 23}, u"STab", 0, true},

      {Grid, u"SpecGrid", u"", {16, 36, 590, 260}, u"STab", 1},
      {Button, u"btSpecDelete", u"DelRec", {16, 306, 90, 27}, u"STab", 1},

      {Button, u"btOk", u"OK", {448, 364, 88, 28}, u"", 0},
      {Button, u"btCancel", u"Cancel", {544, 364, 88, 28}, u"", 0},
  };
  return form;
}

}  // namespace qva
