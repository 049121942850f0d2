#include "tools/doctor/Report.h"

#include <algorithm>
#include <stdexcept>

#include "tests/doctor/doctor_test.h"
#include "tests/source_text.h"
#include "tests/test_paths.h"

namespace qva::doctor {
namespace {

using testing::HasSubstr;
using testing::Not;

const ReportHead kHead{u"1.0.0", u"2026-01-31 12:00"};

MachineFacts Broken() {
  MachineFacts machine = GoodMachine();
  machine.book_setting = u"<b>\"R&D\"</b>";
  machine.bitnesses[0].book = {.is_asked = true, .error = 5, .text = u"nėra"};
  machine.bitnesses[0].files[0].zone = 3;
  return machine;
}

TEST(TextReport, TellsEachFindingWithWhatToDo) {
  const std::string text = ToUtf8(TextReport(kHead, Judge(Broken(), &NoWords), Language::English));
  EXPECT_THAT(text,
              HasSubstr("Check of QVA_Varnholt 1.0.0, 2026-01-31 12:00\n\nThis computer\n[ok] Windows "));
  EXPECT_THAT(text, HasSubstr("\n\n64-bit Excel\n[ok] Registered for all users: "));
  EXPECT_THAT(text,
              HasSubstr("\n[ERROR] The book <b>\"R&D\"</b> of the setting \"P0\" does not open: nėra (5). "
                        "(book-does-not-open)\n    What to do: Start "));
  EXPECT_THAT(text, HasSubstr("\nerrors: 1, warnings: 1\n"));
}

TEST(TextReport, SpeaksLithuanian) {
  const std::string text = ToUtf8(TextReport(kHead, Judge(Broken(), &NoWords), Language::Lithuanian));
  EXPECT_THAT(text, HasSubstr("\n[KLAIDA] Nuostatos „P0“ knyga "));
  EXPECT_THAT(text, HasSubstr("\n    Ką daryti: Šio naudotojo vardu "));
  EXPECT_THAT(text, HasSubstr("\nklaidų: 1, įspėjimų: 1\n"));
  EXPECT_THAT(text, Not(HasSubstr("WARNING")));
}

TEST(HtmlReport, EscapesWhateverTheMachineSays) {
  const MachineFacts machine = Broken();
  const std::string page = HtmlReport(kHead, Judge(machine, &NoWords), machine, Language::English);
  EXPECT_THAT(page, HasSubstr("The book &lt;b&gt;&quot;R&amp;D&quot;&lt;/b&gt; of"));
  EXPECT_THAT(page, Not(HasSubstr("<b>\"")));
  EXPECT_THAT(page, HasSubstr("P0\t&lt;b&gt;"));
}

TEST(HtmlReport, ClosesWhatItOpensAndNeedsNoOtherFile) {
  const MachineFacts machine = Broken();
  const std::string page = HtmlReport(kHead, Judge(machine, &NoWords), machine, Language::Lithuanian);
  const auto count = [&](std::string_view what) {
    int found = 0;
    for (std::size_t at = page.find(what); at != page.npos; at = page.find(what, at + 1)) ++found;
    return found;
  };
  for (const char* element : {"table", "tr", "td", "p", "code", "h1", "h2", "pre", "body", "html", "title"}) {
    const std::string name(element);
    EXPECT_EQ(count("<" + name + ">") + count("<" + name + " "), count("</" + name + ">")) << name;
    EXPECT_GT(count("</" + name + ">"), 0) << name;
  }
  EXPECT_EQ(count("<html lang=\"lt\">"), 1);
  EXPECT_EQ(count("charset=\"utf-8\""), 1);
  for (const char* reference : {"src=", "href=", "url(", "@import", "<script"})
    EXPECT_EQ(count(reference), 0);
}

TEST(FindingsTable, HasALineForEachKind) {
  const std::string table = FindingsTable(Language::English);
  EXPECT_EQ(std::ranges::count(table, '\n'), static_cast<long>(FindingKinds().size() + 2));
  EXPECT_THAT(table, HasSubstr("\n| `no-book`, ERROR | No book is chosen: "));
  EXPECT_THAT(table, HasSubstr("The registered file *file* is not there"));
  EXPECT_THAT(table, Not(HasSubstr("{")));
}

TEST(FindingsTable, StandsInThePageAboutInstalling) {
  const std::string page = SourceText("docs/installation.md");
  EXPECT_EQ(page, WithFindingsTable(page)) << "make docs writes it anew";
}

TEST(FindingsTable, TakesThePlaceOfAnEarlierOne) {
  const std::string page =
      WithFindingsTable("a\n<!-- findings -->\nEarlier words\n<!-- end of findings -->\nb\n");
  EXPECT_TRUE(page.starts_with("a\n<!-- findings -->\n\n| | "));
  EXPECT_TRUE(page.ends_with("|\n\n<!-- end of findings -->\nb\n"));
  EXPECT_THAT(page, Not(HasSubstr("Earlier words")));
  EXPECT_THROW(WithFindingsTable("a"), std::runtime_error);
}

}  // namespace
}  // namespace qva::doctor
