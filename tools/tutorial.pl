#!/usr/bin/env perl
# Does to a new workbook what the tutorial says: its procedures go into the module, with those that the reference shows, and
# driver.fods, a spreadsheet whose macro Ataskaita.Main changes the sheets, is written beside the answers; changes.vbs is the
# same for the test bench's Excel. metams.fods is the template for whole years alone; pirma.fods is the workbook as it is run
# first, with the content alone, for which Ataskaita.Plesti of driver.fods widens the sheet. The macro Ataskaita.Visos runs what
# the guide runs one by one, on the report of a quarter and then of the year, as visos.answers answers.
#   tutorial.pl <language: guide or gidas> <new workbook> <folder>
use strict;
use warnings;
use utf8;
use open qw(:std :encoding(UTF-8));
use File::Basename qw(dirname);
use FindBin qw($Bin);
use lib $Bin;
use FlatWorkbook;

my ($language, $workbook, $folder) = @ARGV;
die "usage: tutorial.pl guide|gidas <new workbook> <folder>\n" unless defined $folder;
my $root = dirname(dirname(__FILE__));

my $page = contents("$root/docs/$language.md");
my ($answers) = $page =~ /^```\n(\[frmReportPeriod\]\noptYear\ntxtYear = \d+\nbtOk\n)```$/ms or die "no answers\n";
write_file("$folder/tutorial.answers", $answers);
write_file("$folder/visos.answers", "[frmReportPeriod]\noptYear\ntxtYear = 2025\ntxtQuater = 2\noptQuarter\nbtOk\n$answers");

# Each piece of code is pasted somewhere: the classes' examples into workbooks of their own (guide-examples.pl), all others
# here.
my (%procedures, $printing, $refusal);
for my $code ($page =~ /^```vb\n(.*?)^```$/msg) {
  next if $code =~ /^Sub (?:Example|Pavyzdys)/;
  if ($code =~ /^(?:Public|Private) Sub (\w+)/) { $procedures{$1} = $code }
  elsif ($code =~ /^    oAtaskaita\.Spauzd .*\n\z/) { $printing = $code }
  elsif ($code =~ /^    If Sritis\("RepType"\)/) { $refusal = $code }
  else { die "nothing is done with this code:\n$code" }
}
my $turinys = delete $procedures{RasytiTurini} or die "no RasytiTurini\n";
my $names = join ' ', sort keys %procedures;
die "not these procedures: $names\n" if $names ne 'Bandymas IplaukosBanke RasytiPinigus RodytiPinigus SaskaituPlanas';

my $text = contents($workbook);

# The template with the content.
my $first = $text;
$first =~ s/^Private Sub RasytiTurini\(\)\n.*?^End Sub\n/xml($turinys)/mse or die "no RasytiTurini in $workbook\n";
write_file("$folder/pirma.fods", $first);

# The template as a report for whole years alone.
my $yearly = $text;
$yearly =~ s/(^    If oLaikotarpis\.Edit .*\n)/$1 . xml($refusal)/me or die "no period in $workbook\n";
write_file("$folder/metams.fods", $yearly);

$turinys =~ s/(?=^End Sub\n)/    RasytiPinigus\n/m;
$text =~ s/^Private Sub RasytiTurini\(\)\n.*?^End Sub\n/xml($turinys)/mse or die "no RasytiTurini in $workbook\n";
$text =~ s/(^    oAtaskaita\.Spauzd .*, True\n)/$1 . xml($printing)/me or die "nothing is printed in $workbook\n";
my $pasted = join "\n", (map { $procedures{$_} } sort keys %procedures), <<'END';
Public Sub Visos()
    Bandymas
    KeistiLaikotarpi
    SaskaituPlanas
    IplaukosBanke
End Sub
END
$text =~ s/(?=^' ---- Mygtukai)/xml("$pasted\n")/me or die "no buttons in $workbook\n";
write_file($workbook, $text);

# By hand this is what sections 2, 6 and 7 say, step by step.
my $driver = <<'END';
Option VBASupport 1
Public Sub Main()
    Dim oDocument As Object
    Set oDocument = Opened()
    WidenSheet oDocument
    AddSheetAndButton oDocument
    Store oDocument
End Sub

Public Sub Plesti()
    Dim oDocument As Object
    Set oDocument = Opened()
    WidenSheet oDocument
    Store oDocument
End Sub

Private Function Opened() As Object
    Dim aLoad(1) As New com.sun.star.beans.PropertyValue
    aLoad(0).Name = "MacroExecutionMode"
    aLoad(0).Value = 0
    aLoad(1).Name = "FilterName"
    aLoad(1).Value = "OpenDocument Spreadsheet Flat XML"
    Set Opened = StarDesktop.loadComponentFromURL(ConvertToUrl(Environ("QVA_TEST_WORKBOOK")), "_blank", 0, aLoad())
End Function

Private Sub Store(oDocument)
    Dim aStore(0) As New com.sun.star.beans.PropertyValue
    aStore(0).Name = "FilterName"
    aStore(0).Value = "OpenDocument Spreadsheet Flat XML"
    oDocument.storeToURL(ConvertToUrl(Environ("QVA_TEST_WORKBOOK")), aStore())
    oDocument.close(False)
End Sub

Private Sub WidenSheet(oDocument)
    Dim oSheet As Object, oRows As Object, oNames As Object, i
    Set oSheet = oDocument.Sheets.getByName("Ataskaita")
    Set oRows = oSheet.Rows
    oRows.insertByIndex(10, 90)
    oSheet.getCellRangeByName("C101").Formula = "=SUM(C10:C100)"
    For i = 11 To 100
        CopyTo oSheet, "A" & i, "A10"
        CopyTo oSheet, "B" & i, "B10"
        CopyTo oSheet, "C" & i, "C10"
    Next
    For i = 9 To 101
        CopyTo oSheet, "D" & i, "C" & i
    Next
    oSheet.Columns.getByName("D").Width = oSheet.Columns.getByName("C").Width
    oSheet.Columns.getByName("B").Width = 9000
    oSheet.getCellRangeByName("C9").String = "Debetas, EUR"
    oSheet.getCellRangeByName("D9").String = "Kreditas, EUR"
    Set oNames = oDocument.NamedRanges
    oNames.getByName("Skaiciai").Content = "$Ataskaita.$C$101:$D$101"
    oNames.getByName("SumosEilute").Content = "$Ataskaita.$A$101:$D$101"
    oNames.getByName("Print").Content = "$Ataskaita.$A$1:$D$102"
    For Each i In Array(1, 2, 5, 6, 7)
        oSheet.getCellRangeByName("A" & i & ":C" & i).merge(False)
        oSheet.getCellRangeByName("A" & i & ":D" & i).merge(True)
    Next
End Sub

Private Sub AddSheetAndButton(oDocument)
    Dim oSheet As Object, oNames As Object
    Set oNames = oDocument.NamedRanges
    oDocument.Sheets.insertNewByName("Pinigai", 1)
    Set oSheet = oDocument.Sheets.getByName("Pinigai")
    oSheet.getCellRangeByName("A1:E1").setDataArray(Array(Array("Data", "Debetas", "Kreditas", "Įrašas", "Suma, EUR")))
    oSheet.Columns.getByName("D").Width = 7000
    SetFormat oDocument, oSheet.getCellRangeByName("A2:A11"), "YYYY-MM-DD"
    SetFormat oDocument, oSheet.getCellRangeByName("E2:E12"), "# ##0,00"
    oSheet.setPrintAreas(Array(oSheet.getCellRangeByName("A1:E12").RangeAddress))
    oNames.addNewByName("PiniguEilutes", "$Pinigai.$A$2:$E$11", oSheet.getCellByPosition(0, 0).CellAddress, 0)
    oNames.addNewByName("PiniguSuma", "$Pinigai.$A$12:$E$12", oSheet.getCellByPosition(0, 0).CellAddress, 0)
    Set oSheet = oDocument.Sheets.getByName("Nustatymai")
    ' True stays True in the copy of a cell.
    oSheet.copyRange(oSheet.getCellRangeByName("A11").CellAddress, oSheet.getCellRangeByName("A10:J10").RangeAddress)
    oSheet.getCellRangeByName("A11:G11").setDataArray(Array(Array(1, 59, "Pinigai", "", "TagPinigai", "Rodyti pinigų lapą", "^{g}")))
    oSheet.getCellRangeByName("J11").String = "RodytiPinigus"
    oSheet.getCellRangeByName("C2").Value = 5
End Sub

Private Sub SetFormat(oDocument, oCells, sFormat)
    Dim oFormats As Object, aLocale As New com.sun.star.lang.Locale, nKey As Long
    aLocale.Language = "lt"
    aLocale.Country = "LT"
    Set oFormats = oDocument.getNumberFormats()
    nKey = oFormats.queryKey(sFormat, aLocale, False)
    If nKey = -1 Then nKey = oFormats.addNew(sFormat, aLocale)
    oCells.NumberFormat = nKey
End Sub

Private Sub CopyTo(oSheet, sTo, sFrom)
    oSheet.copyRange(oSheet.getCellRangeByName(sTo).CellAddress, oSheet.getCellRangeByName(sFrom).RangeAddress)
End Sub
END
write_file("$folder/driver.fods", workbook('VBAProject', 'Lapas1', Ataskaita => $driver));

write_file("$folder/changes.vbs", <<'END');
Set sheet = ThisWorkbook.Worksheets("Ataskaita")
sheet.Range("A11:C11").ClearContents
sheet.Range("A1:D102").Name = "Print"
sheet.Range("A101:D101").Name = "SumosEilute"
sheet.Range("C101:D101").Name = "Skaiciai"
sheet.Range("B101").Value = "IŠ VISO"
sheet.Range("C101").Formula = "=SUM(C10:C100)"
sheet.Range("D101").Formula = "=SUM(D10:D100)"
sheet.Range("C9").Value = "Debetas, EUR"
sheet.Range("D9").Value = "Kreditas, EUR"
Set sheet = AddSheet("Pinigai")
sheet.Range("A2:E11").Name = "PiniguEilutes"
sheet.Range("A12:E12").Name = "PiniguSuma"
sheet.PageSetup.PrintArea = "A1:E12"
Set sheet = ThisWorkbook.Worksheets("Nustatymai")
sheet.Range("C2").Value = 5
sheet.Range("A11").Value = 1
sheet.Range("B11").Value = 59
sheet.Range("C11").Value = "Pinigai"
sheet.Range("E11").Value = "TagPinigai"
sheet.Range("F11").Value = "Rodyti pinigų lapą"
sheet.Range("G11").Value = "^{g}"
sheet.Range("H11").Value = True
sheet.Range("I11").Value = True
sheet.Range("J11").Value = "RodytiPinigus"
END
