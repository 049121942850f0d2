// What a screen reader finds in the windows in LibreOffice, by LibreOffice's own way to ask for it.
#include <algorithm>

#include "tests/calc/windows_fixture.h"

namespace qva {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

class CalcAccess : public CalcWindows {
 protected:
  /// What the window on top tells of itself now, a line for each object.
  std::vector<std::string> Told(const Desktop::Window& window) {
    const std::size_t before = Lines().size();
    desktop.Keys(window, {"F9"});
    desktop.WaitFor("what the window tells", [&] {
      const std::vector<std::string> lines = Lines();
      return lines.size() > before && lines.back() == ".";
    });
    std::vector<std::string> told = Lines();
    told.erase(told.begin(), told.begin() + static_cast<std::ptrdiff_t>(before));
    told.pop_back();
    return told;
  }
};

TEST_F(CalcAccess, EachControlAndEachCellIsTold) {
  StartShown("shown_access");
  const Desktop::Window period = desktop.WaitForWindow(kPeriod);
  EXPECT_THAT(
      Told(period),
      ElementsAre("dialog 'Ataskaitinio periodo nustatymai'", "  tabs ''",
                  "    tab '#1626 Pagrindiniai parametrai' selected",
                  "    tab '#14058 Papilduomi parametrai'", "  label 'Sąskaitų planas : '",
                  "  combo box 'Sąskaitų planas : ' = 'BIUDZ – Biudžeto sąskaitų planas' focused",
                  "  label 'Metai : '", "  text 'Metai : ' = '2023'", "  label 'Ketvertis : '",
                  "  text 'Ketvertis : ' = ''", "  label 'Mėnuo : '", "  text 'Mėnuo : ' = ''",
                  "  group ' Ataskaitos periodiškūmas '", "  option 'Metinės' checked",
                  "  option 'Ketvirčio'", "  option 'Mėnesio'", "  option 'I  pusmečio'",
                  "  option 'II pusmečio'", "  option 'Nustatytas'",
                  "  label 'Praeitas ataskaitinis periodas : '", "  label 'Nuo : '",
                  "  text 'Nuo : ' = '2022-01' disabled", "  panel ''", "  label 'iki : '",
                  "  text 'iki : ' = '2022-12'", "  panel ''", "  label 'Einamasis ataskaitinis periodas : '",
                  "  label 'Nuo : '", "  text 'Nuo : ' = '2023-01' disabled", "  panel ''",
                  "  label 'iki : '", "  text 'iki : ' = '2023-12' disabled", "  panel ''",
                  "  label 'Ataskaita sudaroma už einamąjį laikotarpį ir lyginama su praeitu laikotarpiu.'",
                  "  button 'OK'", "  button 'Cancel'"));

  desktop.Keys(period, {"ctrl+Next", "Tab"});
  desktop.Type(period, "MEDVILNE");
  desktop.Keys(period, {"Tab"});
  EXPECT_THAT(
      Told(period),
      ElementsAre(
          "dialog 'Ataskaitinio periodo nustatymai'", "  tabs ''", "    tab '#1626 Pagrindiniai parametrai'",
          "    tab '#14058 Papilduomi parametrai' selected", "  panel ''", "    button 'Atverti sąrašą (F4)'",
          "    label 'Knyga'", "    text 'Knyga, 1 / 2' = 'MEDVILNE'", "    text 'Knyga, 2 / 2' = ''",
          "    label 'Sąskaitų planas'", "    text 'Sąskaitų planas, 1 / 2' = '' focused",
          "    text 'Sąskaitų planas, 2 / 2' = ''", "    label 'Biudžeto'", "    check box 'Biudžeto, 1 / 2'",
          "    label 'Einamojo laikotarpio biudžetas'",
          "    text 'Einamojo laikotarpio biudžetas, 1 / 2' = ''",
          "    text 'Einamojo laikotarpio biudžetas, 2 / 2' = ''",
          "    label 'Praeito laikotarpio biudžetas'", "    text 'Praeito laikotarpio biudžetas, 1 / 2' = ''",
          "    text 'Praeito laikotarpio biudžetas, 2 / 2' = ''", "  button 'DelRec'", "  button 'OK'",
          "  button 'Cancel'"));

  // What comes by the clipboard, as by a screen reader, is taken as typed.
  desktop.Keys(period, {"shift+Tab", "ctrl+a", "ctrl+c", "Down", "ctrl+v", "Return"});
  EXPECT_THAT(Told(period), IsSupersetOf({"    text 'Knyga, 1 / 3' = 'MEDVILNE'",
                                          "    text 'Knyga, 2 / 3' = 'MEDVILNE' focused"}));

  desktop.Keys(period, {"Tab", "F4"});
  const Desktop::Window sets = desktop.WaitForWindow("planas$");
  desktop.Keys(sets, {"Tab", "Down"});
  EXPECT_THAT(Told(sets),
              ElementsAre("dialog 'Sąskaitų planas'", "  label 'Ieškoti:'", "  text 'Ieškoti:' = ''",
                          "  panel ''", "    label 'Kodas'", "    text 'Kodas, 1 / 4' = 'BIUDZ' read-only",
                          "    text 'Kodas, 2 / 4' = 'GAMYBA' focused read-only",
                          "    text 'Kodas, 3 / 4' = 'O'BRIEN' read-only",
                          "    text 'Kodas, 4 / 4' = 'PAGR' read-only", "    label 'Pavadinimas'",
                          "    text 'Pavadinimas, 1 / 4' = 'Biudžeto sąskaitų planas' read-only",
                          "    text 'Pavadinimas, 2 / 4' = 'Gamybos padalinio biudžetas' read-only",
                          "    text 'Pavadinimas, 3 / 4' = 'Padalinio „O'Brien“ biudžetas' read-only",
                          "    text 'Pavadinimas, 4 / 4' = 'Pagrindinis sąskaitų planas' read-only",
                          "  button 'OK'", "  button 'Atšaukti'"));
  Leave(sets, "Escape");
  Leave(period, "Escape");

  const Desktop::Window date = desktop.WaitForWindow(kDate);
  desktop.Keys(date, {"Up"});
  const std::vector<std::string> days = Told(date);
  EXPECT_THAT(days, AllOf(Contains("    label '2024 m. vasaris'"),
                          Contains("    text 'Kt' = '22' focused read-only")));
  EXPECT_EQ(
      std::ranges::count_if(days, [](const std::string& line) { return line.starts_with("    text "); }), 42);
  EXPECT_THAT(days, Not(Contains(HasSubstr("nowhere"))));
  Leave(date, "Escape");
  EXPECT_EQ(Finish().exit_status, 0);
}

}  // namespace
}  // namespace qva
