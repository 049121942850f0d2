#!/usr/bin/env perl
# Does to a new workbook what the tutorial says: its procedure goes into the module, and driver.fods, a spreadsheet whose
# macro Ataskaita.Main changes the sheet, is written beside the answers.
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

my $page = contents($root . '/docs/guide/' . ($language eq 'gidas' ? 'lt/' : '') . 'tutorial.md');
my ($procedure) = $page =~ /^```vb\n(Private Sub RasytiTurini\(\)\n.*?^End Sub\n)```$/ms or die "no procedure\n";
my ($answers) = $page =~ /^```\n(\[frmReportPeriod\]\n.*?)```$/ms or die "no answers\n";
write_file("$folder/tutorial.answers", $answers);

my $text = contents($workbook);
$text =~ s/^Private Sub RasytiTurini\(\)\n.*?^End Sub\n/xml($procedure)/mse or die "no RasytiTurini in $workbook\n";
write_file($workbook, $text);

# By hand this is what section 2 says, step by step.
my $driver = <<'END';
Option VBASupport 1
Public Sub Main()
    Dim oDocument As Object, oSheet As Object, oRows As Object, oNames As Object
    Dim aLoad(1) As New com.sun.star.beans.PropertyValue, aStore(0) As New com.sun.star.beans.PropertyValue
    aLoad(0).Name = "MacroExecutionMode"
    aLoad(0).Value = 0
    aLoad(1).Name = "FilterName"
    aLoad(1).Value = "OpenDocument Spreadsheet Flat XML"
    aStore(0).Name = "FilterName"
    aStore(0).Value = "OpenDocument Spreadsheet Flat XML"
    Set oDocument = StarDesktop.loadComponentFromURL(ConvertToUrl(Environ("QVA_TEST_WORKBOOK")), "_blank", 0, aLoad())
    Set oSheet = oDocument.Sheets.getByName("Ataskaita")
    Set oRows = oSheet.Rows
    oRows.insertByIndex(10, 90)
    oSheet.getCellRangeByName("C101").Formula = "=SUM(C10:C100)"
    Dim i
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
    oDocument.storeToURL(ConvertToUrl(Environ("QVA_TEST_WORKBOOK")), aStore())
    oDocument.close(False)
End Sub

Private Sub CopyTo(oSheet, sTo, sFrom)
    oSheet.copyRange(oSheet.getCellRangeByName(sTo).CellAddress, oSheet.getCellRangeByName(sFrom).RangeAddress)
End Sub
END
write_file("$folder/driver.fods", workbook('VBAProject', 'Lapas1', Ataskaita => $driver));
