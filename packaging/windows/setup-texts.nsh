; What the setup program says, in both languages. $R5 is a bitness, $3 regsvr32's exit code, $4 the reason in words.
!macro Text name english lithuanian
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_LITHUANIAN} "${lithuanian}"
!macroend
!define Text '!insertmacro Text'
!define NEW_LINE "$\r$\n"

${Text} SetupCaption "QVA_Varnholt ${VERSION} Setup" "QVA_Varnholt ${VERSION} diegimas"
${Text} RemovalCaption "Remove QVA_Varnholt" "QVA_Varnholt šalinimas"
${Text} ReallyStop "Stop without installing QVA_Varnholt?" "Nutraukti ir QVA_Varnholt neįdiegti?"
${Text} FolderTitle "Where to" "Diegimo vieta"
${Text} FolderText "QVA_Varnholt is installed in this folder. Choose another one if you like." \
  "QVA_Varnholt bus įdiegta šiame aplanke. Jei norite, pasirinkite kitą."
${Text} Installing "Installing" "Diegiama"
${Text} RemovalTitle "Remove QVA_Varnholt" "QVA_Varnholt šalinimas"
${Text} RemovalText "QVA_Varnholt is removed from this folder. Your reports, settings and own files stay." \
  "QVA_Varnholt bus pašalinta iš šio aplanko. Jūsų ataskaitos, nuostatos ir Jūsų failai lieka."
${Text} Removing "Removing" "Šalinama"
${Text} Stopped "Stopped" "Nutraukta"
${Text} StoppedWhy "The last line tells why." "Priežastis – paskutinėje eilutėje."

${Text} WillInstall "This installs QVA_Varnholt ${VERSION}, the library of the report workbooks, for 64-bit and 32-bit Excel." \
  "Bus įdiegta QVA_Varnholt ${VERSION} – ataskaitų darbaknygių biblioteka 64 ir 32 bitų programai „Excel“."
${Text} WillRepair "QVA_Varnholt ${VERSION} is installed already. This installs it anew." \
  "QVA_Varnholt ${VERSION} jau įdiegta. Ji bus įdiegta iš naujo."
${Text} WillReplace "This installs QVA_Varnholt ${VERSION} in place of $OldVersion." \
  "Vietoj QVA_Varnholt $OldVersion bus įdiegta ${VERSION}."
${Text} ForUser "It is for you alone and needs no administrator's rights. Excel may stay open." \
  "Ji diegiama tik Jums, administratoriaus teisių nereikia. „Excel“ galima palikti atvertą."
${Text} ForAll "It is for all users of this computer. Excel may stay open." \
  "Ji diegiama visiems šio kompiuterio naudotojams. „Excel“ galima palikti atvertą."
${Text} Installed "Macros find it from now on.${NEW_LINE}${NEW_LINE}The documentation and the samples are in the folder$\r$\n$Folder." \
  "Makrokomandos ją jau randa.${NEW_LINE}${NEW_LINE}Dokumentacija ir pavyzdžiai yra aplanke$\r$\n$Folder."
${Text} InUse "${NEW_LINE}${NEW_LINE}A program that is open goes on with the earlier version until it is closed. You need not restart the computer." \
  "${NEW_LINE}${NEW_LINE}Dabar atverta programa naudoja ankstesnę versiją, kol bus užverta. Kompiuterio paleisti iš naujo nereikia."
${Text} InUseLine "A program holds files of the earlier version. They are removed by the next setup or at the next logon." \
  "Programa naudoja ankstesnės versijos failus. Juos pašalins kitas diegimas arba kitas prisijungimas prie „Windows“."

${Text} Copying "Copying files to $Folder" "Kopijuojami failai į $Folder"
${Text} Registering "Registering the $R5-bit library" "Registruojama $R5 bitų biblioteka"
${Text} Unregistering "Unregistering the $R5-bit library" "Naikinama $R5 bitų bibliotekos registracija"
${Text} PuttingBack "Putting back what was there before" "Grąžinama tai, kas buvo anksčiau"
${Text} Done "QVA_Varnholt ${VERSION} is installed" "QVA_Varnholt ${VERSION} įdiegta"
${Text} Removed "QVA_Varnholt is removed" "QVA_Varnholt pašalinta"

${Text} Busy "Another setup of QVA_Varnholt is running. Wait until it has ended." \
  "Jau vykdomas kitas QVA_Varnholt diegimas. Palaukite, kol jis baigsis."
${Text} UnknownOption "The option $R1 is unknown. There are /S, /AllUsers, /AllowDowngrade, /Demo, /Log=file and, last, /D=folder." \
  "Nežinomas parametras $R1. Galimi: /S, /AllUsers, /AllowDowngrade, /Demo, /Log=failas ir paskutinis /D=aplankas."
${Text} NoDemo "This setup has no demo host." "Šiame diegime nėra bandomosios apskaitos sistemos."
${Text} NoLog "The log cannot be written: $R1" "Nepavyko rašyti žurnalo: $R1"
${Text} NoRights "For all users QVA_Varnholt is installed and removed by an administrator. Start this program as administrator, or without /AllUsers." \
  "Visiems naudotojams QVA_Varnholt diegia ir šalina administratorius. Paleiskite šią programą administratoriaus teisėmis arba be /AllUsers."
${Text} Newer "QVA_Varnholt $OldVersion is installed, which is newer than ${VERSION}. Remove it first, or start setup with /AllowDowngrade." \
  "Įdiegta QVA_Varnholt $OldVersion yra naujesnė už ${VERSION}. Pirma pašalinkite ją arba paleiskite diegimą su /AllowDowngrade."
${Text} NoFiles "Files could not be written to $INSTDIR. Nothing was changed. Choose another folder, or see that the disk has room and that you may write there." \
  "Nepavyko įrašyti failų į $INSTDIR. Niekas nepakeista. Pasirinkite kitą aplanką arba patikrinkite, ar diske yra vietos ir ar galite ten rašyti."

${Text} NotRegistered "The $R5-bit library could not be registered, and everything is as it was before. $4" \
  "Nepavyko užregistruoti $R5 bitų bibliotekos, viskas palikta kaip buvo. $4"
${Text} NotUnregistered "The registration of the $R5-bit library could not be removed. $4 Should this come again, install QVA_Varnholt once more, then remove it." \
  "Nepavyko panaikinti $R5 bitų bibliotekos registracijos. $4 Jei tai kartosis, įdiekite QVA_Varnholt iš naujo ir tada pašalinkite."
${Text} NotWritten "The registry refused:" "Registras neleido:"
${Text} NotLoaded "Windows could not load it (regsvr32: 3). Mostly a virus scanner holds it back, or the setup program is damaged: have the folder allowed, or fetch the program anew." \
  "„Windows“ negalėjo jos įkelti (regsvr32: 3). Dažniausiai ją sulaiko antivirusinė programa arba diegimo programa sugadinta: leiskite šį aplanką arba parsisiųskite programą iš naujo."
${Text} RegsvrFailed "regsvr32 ended with $3." "regsvr32 baigė kodu $3."
!ifdef DEMO
${Text} DemoTitle "What to install" "Ką įdiegti"
${Text} DemoText "With the sample company reports can be tried without the accounting system." \
  "Su bandomąja įmone ataskaitas galima išbandyti be apskaitos sistemos."
${Text} DemoName "Sample company without the accounting system" "Bandomoji įmonė be apskaitos sistemos"
${Text} DemoRegistering "Registering the demo host" "Registruojama bandomoji apskaitos sistema"
${Text} DemoFailed "QVA_Varnholt is installed, but not its demo host: $R5 bits, regsvr32 ended with $3. Where the accounting system itself is registered, it stays." \
  "QVA_Varnholt įdiegta, bet be bandomosios apskaitos sistemos: $R5 bitai, regsvr32 baigė kodu $3. Jei registruota tikroji apskaitos sistema, ji ir lieka."
!endif
