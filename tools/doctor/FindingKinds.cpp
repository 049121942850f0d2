#include "tools/doctor/FindingKinds.h"

#include <algorithm>

#include "platform/error.h"

namespace qva::doctor {
namespace {

constexpr FindingKind kKinds[] = {
    // --- Windows -----------------------------------------------------------------------------------------
    {"windows", Level::Ok, {u"Windows {version}, {bitness}.", u"Windows {version}, {bitness}."}, {u"", u""}},
    {"elevated",
     Level::Warning,
     {u"This check runs as administrator: like an Excel that runs so, it sees what is registered for all "
      u"users alone.",
      u"Tikrinama administratoriaus teisėmis: kaip ir taip paleista „Excel“, programa mato tik tai, kas "
      u"užregistruota visiems naudotojams."},
     {u"Run it once more without administrator rights, as Excel is started.",
      u"Paleiskite dar kartą be administratoriaus teisių, taip, kaip paleidžiama „Excel“."}},
    {"code-page",
     Level::Ok,
     {u"The ANSI code page is {page}; it has the Lithuanian letters.",
      u"ANSI koduotė yra {page}; lietuviškos raidės joje yra."},
     {u"", u""}},
    {"code-page-other",
     Level::Warning,
     {u"The ANSI code page is {page}: Lithuanian letters become question marks in text files and settings.",
      u"ANSI koduotė yra {page}: tekstiniuose failuose ir nuostatose lietuviškos raidės virsta klaustukais."},
     {u"Set \"Language for non-Unicode programs\" to Lithuanian (Control Panel, Region, Administrative) and "
      u"start Windows anew.",
      u"Valdymo skydo skyriuje „Regionas“, „Administravimas“ kalbą ne „Unicode“ programoms nustatykite "
      u"lietuvių ir paleiskite „Windows“ iš naujo."}},
    {"call-log",
     Level::Ok,
     {u"The log of calls is on: {file}.", u"Kvietimų žurnalas įjungtas: {file}."},
     {u"Switch it off with \"qva-doctor log off\" when it has served.",
      u"Kai nebereikės, išjunkite: „qva-doctor log off“."}},
    {"no-book",
     Level::Error,
     {u"No book is chosen: the setting \"P0\" is empty, and InitConnectEX fails.",
      u"Knyga nepasirinkta: nuostata „P0“ tuščia, ir „InitConnectEX“ nepavyksta."},
     {u"Start the accounting system as this user and choose a book.",
      u"Šio naudotojo vardu paleiskite apskaitos sistemą ir pasirinkite knygą."}},

    // --- Excel -------------------------------------------------------------------------------------------
    {"excel",
     Level::Ok,
     {u"Excel {version}, {bitness}: {file}.", u"„Excel“ {version}, {bitness}: {file}."},
     {u"", u""}},
    {"excel-missing",
     Level::Warning,
     {u"Windows knows of no Excel.", u"„Windows“ nežino jokios „Excel“."},
     {u"Install Excel, or repair it (Apps & features, Microsoft Office, Modify).",
      u"Įdiekite „Excel“ arba ją pataisykite („Programos ir funkcijos“, „Microsoft Office“, „Keisti“)."}},
    {"excel-file-missing",
     Level::Warning,
     {u"Windows names the Excel {file}, which is not there.",
      u"„Windows“ nurodo „Excel“ {file}, kurios nėra."},
     {u"Repair Excel (Apps & features, Microsoft Office, Modify).",
      u"Pataisykite „Excel“ („Programos ir funkcijos“, „Microsoft Office“, „Keisti“)."}},
    {"excel-both",
     Level::Warning,
     {u"A 64-bit and a 32-bit Excel are installed; both are checked below.",
      u"Įdiegtos ir 64 bitų, ir 32 bitų „Excel“; toliau tikrinamos abi."},
     {u"Remove the one that is not used, so that reports do not depend on which one opens them.",
      u"Nenaudojamą pašalinkite, kad ataskaitos nepriklausytų nuo to, kuri jas atidaro."}},
    {"macros",
     Level::Ok,
     {u"Excel {version} runs macros, or asks first.", u"„Excel“ {version} makrokomandas vykdo arba klausia."},
     {u"", u""}},
    {"macros-signed-only",
     Level::Warning,
     {u"Excel {version} runs signed macros alone{policy}.",
      u"„Excel“ {version} vykdo tik pasirašytas makrokomandas{policy}."},
     {u"Put the reports into a trusted location, or sign their macros (File, Options, Trust Center, Trust "
      u"Center Settings).",
      u"Laikykite ataskaitas patikimoje vietoje arba pasirašykite jų makrokomandas (Failas, Parinktys, "
      u"Patikimumo centras, Patikimumo centro parametrai)."}},
    {"macros-off",
     Level::Error,
     {u"Excel {version} runs no macros and does not ask{policy}.",
      u"„Excel“ {version} makrokomandų nevykdo ir neklausia{policy}."},
     {u"Choose \"Disable VBA macros with notification\", or put the reports into a trusted location (File, "
      u"Options, Trust Center, Trust Center Settings, Macro Settings). What the administrator has set, only "
      u"he can change.",
      u"Pasirinkite „Išjungti VBA makrokomandas su pranešimu“ arba laikykite ataskaitas patikimoje vietoje "
      u"(Failas, Parinktys, Patikimumo centras, Patikimumo centro parametrai, Makrokomandų parametrai). Ką "
      u"nustatė administratorius, gali pakeisti tik jis."}},
    {"project-access",
     Level::Ok,
     {u"Excel {version} lets macros see VBA projects, as SaveDoc needs.",
      u"„Excel“ {version} leidžia makrokomandoms matyti VBA projektus, kaip reikia „SaveDoc“."},
     {u"", u""}},
    {"project-access-off",
     Level::Error,
     {u"Excel {version} does not let macros see VBA projects{policy}: SaveDoc fails with error 1004.",
      u"„Excel“ {version} neleidžia makrokomandoms matyti VBA projektų{policy}: „SaveDoc“ baigiasi 1004 "
      u"klaida."},
     {u"Tick \"Trust access to the VBA project object model\" (File, Options, Trust Center, Trust Center "
      u"Settings, Macro Settings). What the administrator has set, only he can change.",
      u"Pažymėkite „Patikėti prieigą prie VBA projekto objektų modelio“ (Failas, Parinktys, Patikimumo "
      u"centras, Patikimumo centro parametrai, Makrokomandų parametrai). Ką nustatė administratorius, gali "
      u"pakeisti tik jis."}},

    // --- The parts of the check --------------------------------------------------------------------------
    {"part-not-run",
     Level::Warning,
     {u"What {bitness} programs meet was not checked: {reason}.",
      u"Nepatikrinta, ką mato {bitness} programos: {reason}."},
     {u"Unpack the whole package again; its folders x64 and x86 belong together.",
      u"Išskleiskite visą paketą iš naujo; jo aplankai „x64“ ir „x86“ priklauso vienas kitam."}},
    {"part-stopped",
     Level::Error,
     {u"The check stopped in the middle of: {step}. A macro that does the same takes Excel down or waits for "
      u"ever.",
      u"Tikrinimas nutrūko darant: {step}. Tą patį daranti makrokomanda nutrauktų „Excel“ arba lauktų be "
      u"galo."},
     {u"Start the accounting system once by itself and answer what it asks; if that does not help, repair "
      u"what is named here.",
      u"Paleiskite apskaitos sistemą atskirai ir atsakykite, ko ji klausia; jei nepadeda, pataisykite tai, "
      u"kas čia nurodyta."}},

    // --- Registration ------------------------------------------------------------------------------------
    {"registered",
     Level::Ok,
     {u"Registered for {scope}: {file}, version {version}.",
      u"Užregistruota {scope}: {file}, versija {version}."},
     {u"", u""}},
    {"not-needed",
     Level::Ok,
     {u"Not registered; no Excel of this bitness was found.",
      u"Neužregistruota; tokių bitų „Excel“ nerasta."},
     {u"", u""}},
    {"not-registered",
     Level::Error,
     {u"The library is not registered: CreateObject fails with error 429{result}.",
      u"Biblioteka neužregistruota: „CreateObject“ baigiasi 429 klaida{result}."},
     {u"Run \"qva-doctor repair\" from the unpacked package, or the setup program.",
      u"Iš išskleisto paketo paleiskite „qva-doctor repair“ arba paleiskite diegimo programą."}},
    {"registered-for-other",
     Level::Error,
     {u"The library is registered for {other} programs alone: in the {bitness} Excel CreateObject fails with "
      u"error 429{result}.",
      u"Biblioteka užregistruota tik {other} programoms: {bitness} „Excel“ programoje „CreateObject“ "
      u"baigiasi 429 klaida{result}."},
     {u"Run \"qva-doctor repair\" from the unpacked package, or the setup program; both register both "
      u"libraries.",
      u"Iš išskleisto paketo paleiskite „qva-doctor repair“ arba paleiskite diegimo programą; jos "
      u"registruoja "
      u"abi bibliotekas."}},
    {"user-not-seen",
     Level::Error,
     {u"The library is registered for the current user alone; a program that runs as administrator does not "
      u"see that.",
      u"Biblioteka užregistruota tik dabartiniam naudotojui; administratoriaus teisėmis veikianti programa "
      u"to "
      u"nemato."},
     {u"Start Excel without administrator rights, or register the library for all users.",
      u"Paleiskite „Excel“ be administratoriaus teisių arba užregistruokite biblioteką visiems "
      u"naudotojams."}},
    {"registration-incomplete",
     Level::Error,
     {u"Of the registration for {scope} {missing} of {all} entries are missing.",
      u"Registracijoje {scope} trūksta {missing} iš {all} įrašų."},
     {u"Run \"qva-doctor repair\", or register the library anew.",
      u"Paleiskite „qva-doctor repair“ arba užregistruokite biblioteką iš naujo."}},
    {"registration-foreign",
     Level::Error,
     {u"In the registration for {scope} {count} names lead to classes that are not the library's.",
      u"Registracijoje {scope} {count} vardai veda į klases, kurios ne šios bibliotekos."},
     {u"Remove the other program that took the names, then run \"qva-doctor repair\".",
      u"Pašalinkite vardus užėmusią programą, tada paleiskite „qva-doctor repair“."}},
    {"registration-mixed",
     Level::Error,
     {u"In the registration for {scope} the classes name different files: {files}.",
      u"Registracijoje {scope} klasės nurodo skirtingus failus: {files}."},
     {u"Run \"qva-doctor repair\", or register the library anew.",
      u"Paleiskite „qva-doctor repair“ arba užregistruokite biblioteką iš naujo."}},
    {"two-registrations",
     Level::Ok,
     {u"Registered for the current user and for all users, in the same version; the user's comes first.",
      u"Užregistruota ir dabartiniam naudotojui, ir visiems, ta pati versija; pirma imama naudotojo."},
     {u"", u""}},
    {"two-versions",
     Level::Warning,
     {u"Two versions are registered: {version} for the current user ({file}) and {other} for all users "
      u"({other_file}). The user's comes first, but an Excel that runs as administrator takes the other one.",
      u"Užregistruotos dvi versijos: {version} dabartiniam naudotojui ({file}) ir {other} visiems "
      u"({other_file}). Pirma imama naudotojo, bet administratoriaus teisėmis veikianti „Excel“ ima kitą."},
     {u"Remove the older one; \"qva-doctor repair\" removes the user's where that is the older one.",
      u"Pašalinkite senesnę; jei senesnė naudotojo, ją pašalina „qva-doctor repair“."}},
    {"outdated",
     Level::Warning,
     {u"Registered is version {version}; with this program lies {other}.",
      u"Užregistruota versija {version}; su šia programa yra {other}."},
     {u"Run \"qva-doctor repair\" to take the newer one, or the newer setup program.",
      u"Kad būtų imama naujesnė, paleiskite „qva-doctor repair“ arba naujesnę diegimo programą."}},

    // --- The registered file -----------------------------------------------------------------------------
    {"file-missing",
     Level::Error,
     {u"The registered file {file} is not there; its folder is. It was deleted, renamed, or taken away by a "
      u"virus scanner.",
      u"Užregistruoto failo {file} nėra, nors aplankas yra. Jis ištrintas, pervardytas arba jį pašalino "
      u"antivirusinė programa."},
     {u"Run \"qva-doctor repair\" from the unpacked package, or the setup program.",
      u"Iš išskleisto paketo paleiskite „qva-doctor repair“ arba paleiskite diegimo programą."}},
    {"folder-missing",
     Level::Error,
     {u"The registration names {file}, and there is no such folder: it was moved, deleted, or its drive is "
      u"not connected.",
      u"Registracija nurodo {file}, o tokio aplanko nėra: jis perkeltas, ištrintas arba neprijungtas jo "
      u"diskas."},
     {u"Run \"qva-doctor repair\" from the folder where the package lies now.",
      u"Paleiskite „qva-doctor repair“ iš aplanko, kuriame paketas yra dabar."}},
    {"wrong-bitness",
     Level::Error,
     {u"The library {file}, registered for {bitness} programs, is {other}.",
      u"Biblioteka {file}, užregistruota {bitness} programoms, yra {other}."},
     {u"Register the library of the folder x64 with the 64-bit regsvr32 and that of x86 with the 32-bit one; "
      u"\"qva-doctor repair\" does.",
      u"Aplanko „x64“ biblioteką registruokite 64 bitų, „x86“ – 32 bitų „regsvr32“; taip daro „qva-doctor "
      u"repair“."}},
    {"file-damaged",
     Level::Error,
     {u"The file {file} is damaged: it is no Windows library.",
      u"Failas {file} sugadintas: tai ne „Windows“ biblioteka."},
     {u"Unpack the package again.", u"Išskleiskite paketą iš naujo."}},
    {"file-does-not-load",
     Level::Error,
     {u"The library {file} does not load: {reason} ({code}).",
      u"Biblioteka {file} neįkeliama: {reason} ({code})."},
     {u"Unpack the package again. If it still does not load, the reason is outside of it: rights to the "
      u"file, "
      u"a virus scanner, or a rule about allowed programs.",
      u"Išskleiskite paketą iš naujo. Jei vis tiek neįkeliama, priežastis kitur: teisės į failą, "
      u"antivirusinė "
      u"programa arba leidžiamų programų taisyklė."}},
    {"blocked",
     Level::Warning,
     {u"Windows has marked {file} as a file from the internet; it may be blocked.",
      u"„Windows“ pažymėjo {file} kaip failą iš interneto; jis gali būti blokuojamas."},
     {u"Run \"qva-doctor repair\", or Properties, Unblock. Who unblocks the zip before unpacking it has no "
      u"marked files.",
      u"Paleiskite „qva-doctor repair“ arba Ypatybės, Atblokuoti. Jei zip atblokuojamas prieš išskleidžiant, "
      u"pažymėtų failų nebūna."}},
    {"creates",
     Level::Ok,
     {u"CreateObject reaches all {count} classes.", u"„CreateObject“ pasiekia visas {count} klases."},
     {u"", u""}},
    {"does-not-create",
     Level::Error,
     {u"CreateObject(\"{class}\") fails: {reason} ({code}){others}.",
      u"CreateObject(\"{class}\") nepavyksta: {reason} ({code}){others}."},
     {u"Put right what is said above about the registration and its file.",
      u"Pataisykite, kas aukščiau pasakyta apie registraciją ir jos failą."}},
    {"needs-host",
     Level::Error,
     {u"CreateObject(\"{class}\") fails with error 429{others}: the class of the accounting system that it "
      u"needs "
      u"is not to be had.",
      u"CreateObject(\"{class}\") baigiasi 429 klaida{others}: nėra apskaitos sistemos klasės, kurios "
      u"reikia."},
     {u"Put right what is said below about the accounting system.",
      u"Pataisykite, kas toliau pasakyta apie apskaitos sistemą."}},

    // --- The accounting system ---------------------------------------------------------------------------
    {"host",
     Level::Ok,
     {u"The accounting system's classes are registered and load: {file}.",
      u"Apskaitos sistemos klasės užregistruotos ir įkeliamos: {file}."},
     {u"", u""}},
    {"host-demo",
     Level::Ok,
     {u"The demo host stands in for the accounting system: {file}.",
      u"Apskaitos sistemai atstoja bandomoji sistema: {file}."},
     {u"Switch it off with \"qva-doctor demo off\" when it has served.",
      u"Kai nebereikės, išjunkite: „qva-doctor demo off“."}},
    {"demo-left",
     Level::Warning,
     {u"The demo host is still registered for the current user. It hands on to the accounting system, which "
      u"was "
      u"installed for all users since.",
      u"Dabartiniam naudotojui tebėra užregistruota bandomoji sistema. Ji kreipiasi į apskaitos sistemą, "
      u"kuri "
      u"vėliau įdiegta visiems naudotojams."},
     {u"Run \"qva-doctor repair\", or \"qva-doctor demo off\".",
      u"Paleiskite „qva-doctor repair“ arba „qva-doctor demo off“."}},
    {"host-missing",
     Level::Error,
     {u"The accounting system is not registered: InitConnectEX fails.",
      u"Apskaitos sistema neužregistruota: „InitConnectEX“ nepavyksta."},
     {u"Install the accounting system's client on this machine. To try the library without it: \"qva-doctor "
      u"demo on\".",
      u"Šiame kompiuteryje įdiekite apskaitos sistemos kliento programą. Išbandyti be jos: „qva-doctor demo "
      u"on“."}},
    {"host-for-other",
     Level::Error,
     {u"The accounting system is registered for {other} programs alone: in a {bitness} Excel InitConnectEX "
      u"fails.",
      u"Apskaitos sistema užregistruota tik {other} programoms: {bitness} „Excel“ programoje „InitConnectEX“ "
      u"nepavyksta."},
     {u"Install Excel in the accounting system's bitness, or the accounting system's client in Excel's.",
      u"Įdiekite tiek bitų „Excel“, kiek turi apskaitos sistema, arba tiek bitų apskaitos sistemos kliento "
      u"programą, kiek turi „Excel“."}},
    {"host-incomplete",
     Level::Error,
     {u"Of the accounting system's classes these are not registered: {classes}.",
      u"Neužregistruotos šios apskaitos sistemos klasės: {classes}."},
     {u"Repair the accounting system's installation. If it names its classes otherwise, the library must be "
      u"built for it (docs/host-interface.md).",
      u"Pataisykite apskaitos sistemos diegimą. Jei jos klasės vadinasi kitaip, biblioteką jai reikia "
      u"surinkti "
      u"(docs/host-interface.md)."}},
    {"host-does-not-load",
     Level::Error,
     {u"The accounting system's class {class} does not load: {reason} ({code}), {file}{others}.",
      u"Apskaitos sistemos klasė {class} neįkeliama: {reason} ({code}), {file}{others}."},
     {u"Repair the accounting system's installation.", u"Pataisykite apskaitos sistemos diegimą."}},
    {"book",
     Level::Ok,
     {u"The current book is {book}, and it opens.", u"Dabartinė knyga yra {book}, ji atidaroma."},
     {u"", u""}},
    {"book-not-tried",
     Level::Ok,
     {u"The current book is {book}; without the accounting system it was not tried.",
      u"Dabartinė knyga yra {book}; be apskaitos sistemos nebandyta."},
     {u"", u""}},
    {"book-does-not-open",
     Level::Error,
     {u"The book {book} of the setting \"P0\" does not open: {reason} ({code}).",
      u"Nuostatos „P0“ knyga {book} neatidaroma: {reason} ({code})."},
     {u"Start the accounting system as this user and choose a book that opens.",
      u"Šio naudotojo vardu paleiskite apskaitos sistemą ir pasirinkite knygą, kuri atidaroma."}},

    // --- The archive -------------------------------------------------------------------------------------
    {"archive",
     Level::Ok,
     {u"The reports archive can be written: {folder}.", u"Ataskaitų archyvą galima rašyti: {folder}."},
     {u"", u""}},
    {"archive-unknown",
     Level::Warning,
     {u"The accounting system does not tell the archive's folder: {reason} ({code}).",
      u"Apskaitos sistema nepasako archyvo aplanko: {reason} ({code})."},
     {u"Start the accounting system as this user, choose a book, and check again.",
      u"Šio naudotojo vardu paleiskite apskaitos sistemą, pasirinkite knygą ir tikrinkite dar kartą."}},
    {"archive-none",
     Level::Error,
     {u"The accounting system has no folder for the reports archive: SaveDoc fails.",
      u"Apskaitos sistemoje ataskaitų archyvo aplankas nenurodytas: „SaveDoc“ nepavyksta."},
     {u"Set the folder of the path key \"BookRepSave\" in the accounting system.",
      u"Apskaitos sistemoje nurodykite kelio rakto „BookRepSave“ aplanką."}},
    {"archive-missing",
     Level::Error,
     {u"The reports archive {folder} is not there: SaveDoc fails.",
      u"Ataskaitų archyvo {folder} nėra: „SaveDoc“ nepavyksta."},
     {u"Connect the drive or make the folder, or set another folder in the accounting system.",
      u"Prijunkite diską arba sukurkite aplanką, arba apskaitos sistemoje nurodykite kitą aplanką."}},
    {"archive-read-only",
     Level::Error,
     {u"The reports archive {folder} cannot be written: {reason} ({code}).",
      u"Ataskaitų archyvo {folder} negalima rašyti: {reason} ({code})."},
     {u"Get the right to write there, or set another folder in the accounting system.",
      u"Gaukite teisę ten rašyti arba apskaitos sistemoje nurodykite kitą aplanką."}},
};

}  // namespace

std::span<const FindingKind> FindingKinds() {
  return kKinds;
}

const FindingKind& KindOf(std::string_view code) {
  const auto* found = std::ranges::find(kKinds, code, &FindingKind::code);
  if (found == std::end(kKinds)) throw AutomationError(kInternalError);
  return *found;
}

}  // namespace qva::doctor
