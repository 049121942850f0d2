#!/usr/bin/env perl
# Writes the examples of docs/guide.md and docs/gidas.md, as they stand there, so that an engine can run them, into a
# folder: what they need, and what they are to leave in cells (expected.txt: name, tab, cells).
#   tools/guide-examples.pl libreoffice <folder>   each as a spreadsheet of one empty sheet with the example in a module;
#                                                  driver.fods runs them all and leaves <name>.result
#   tools/guide-examples.pl vbscript <folder>      script.vbs for Windows' script host and the test bench's Excel, which
#                                                  leaves log.txt: name, tab, result
use strict;
use warnings;
use utf8;
use open qw(:std :encoding(UTF-8));
use File::Basename qw(dirname);
use FindBin qw($Bin);
use lib $Bin;
use FlatWorkbook;

my $root = dirname(dirname(__FILE__));
my ($engine, $folder) = @ARGV;
my %engines = (libreoffice => \&write_spreadsheets, vbscript => \&write_script);
my $write = $engines{$engine // ''};
die "usage: guide-examples.pl libreoffice|vbscript <folder>\n" unless $write && defined $folder;

# What the examples leave in cells with the sample company; nothing where only their going through counts.
my %expected = (
  gExcelObject => 'A1=MEDVILNE',
  CTools => 'A1=Balansas.xls A2=2024_05_ pelnas_ A3=Neatverta',
  CLockScreen => 'A1=Skaičiuojama',
  CRepPeriod => 'A3=Metai B3=2024',
  CDatePic => 'A1=2024-05-20',
  CReports => 'B1=398417265',
  CSaveForm => 'A1=C:\Ataskaitos\Archyvas\PVM\Deklaracija_PVM_FR0600_20240531.xls',
  CSetPath => 'A1=PATH papildytas',
  CToolbar => 'A9=8',
  CButtonProperties => 'A1=3',
  CToolbars => 'A9=Ataskaita(',
  CDefaultButtons => 'A9=2 B9=8',
  CCommandsEvent => 'A1=1 B1=Ataskaita',
  CEnvironment => 'A1=Ataskaitos būsena',
);

my (%examples, @names);
for my $guide (qw(guide gidas)) {
  my $text = contents("$root/docs/$guide.md");
  while ($text =~ /^```vb\n(Sub (?:Example|Pavyzdys)(\w+)\(\)\n.*?^End Sub\n)```$/msg) {
    my $name = "$guide-$2";
    die "no expectation for $name\n" unless exists $expected{$2};
    push @names, $name;
    $examples{$name} = $1;
  }
}
die "the guides show " . @names . " examples\n" unless @names == 2 * keys %expected;

# The Lithuanian one finds PATH as the English one left it.
write_file("$folder/expected.txt",
  join '', map { "$_\t" . ($_ eq 'gidas-CSetPath' ? '' : $expected{s/.*-//r}) . "\n" } @names);
# The companies differ in their account plans.
write_file("$folder/form.answers", join '', map {
  my $answers = "$root/tests/corpus/macros/guide_" . s/.*-//r . '.answers';
  -e $answers ? contents($answers) =~ s/= F1$/= PAGR/mr : ();
} @names);
$write->();

sub procedure_of { my ($procedure) = $examples{$_[0]} =~ /^Sub (\w+)/; return $procedure }

sub spreadsheet {
  my ($library, $module, $code) = @_;
  return workbook($library, 'Lapas1', $module => "Option VBASupport 1\n$code");
}

sub write_spreadsheets {
  write_file("$folder/$_.fods", spreadsheet('Standard', 'Module1', $examples{$_})) for @names;
  my $driver = <<'END';
Option Explicit

Public Sub Main()
    RunAll
End Sub

' One example in a document of its own; then what it left in the first sheet.
Private Sub RunOne(sName As String, sProcedure As String)
    Dim oDocument As Object, oSheet As Object, sResult As String, sText As String
    Dim aLoad(1) As New com.sun.star.beans.PropertyValue
    Dim nRow As Integer, nColumn As Integer, nFile As Integer
    aLoad(0).Name = "MacroExecutionMode"
    aLoad(0).Value = 4
    aLoad(1).Name = "FilterName"
    aLoad(1).Value = "OpenDocument Spreadsheet Flat XML"
    Set oDocument = StarDesktop.loadComponentFromURL(ConvertToUrl(Environ("QVA_TEST_FOLDER") & "/" & sName & ".fods"), "_blank", 0, aLoad())
    sResult = Outcome(oDocument, sProcedure)
    Set oSheet = oDocument.Sheets.getByIndex(0)
    For nRow = 0 To 8
        For nColumn = 0 To 12
            sText = oSheet.getCellByPosition(nColumn, nRow).String
            If oDocument.getNumberFormats().getByKey(oSheet.getCellByPosition(nColumn, nRow).NumberFormat).Type And 2 Then
                sText = Format(oSheet.getCellByPosition(nColumn, nRow).Value, "yyyy-mm-dd")
            End If
            If sText <> "" Then sResult = sResult & " " & Chr(65 + nColumn) & (nRow + 1) & "=" & sText
        Next
    Next
    oDocument.setModified(False)
    oDocument.close(False)
    DoEvents
    nFile = FreeFile
    Open Environ("QVA_TEST_FOLDER") & "/" & sName & ".result" For Output As #nFile
    Print #nFile, sResult
    Close #nFile
End Sub

Private Function Outcome(oDocument As Object, sProcedure As String) As String
    Dim oScript As Object
    On Error Resume Next
    Set oScript = oDocument.getScriptProvider().getScript("vnd.sun.star.script:Standard.Module1." & sProcedure & "?language=Basic&location=document")
    oScript.invoke(Array(), Array(), Array())
    Outcome = "no error"
    If Err.Number <> 0 Then Outcome = "error " & Err.Number & " " & Err.Description
End Function

Private Sub RunAll()
END
  $driver .= qq(    RunOne "$_", ") . procedure_of($_) . qq("\n) for @names;
  write_file("$folder/driver.fods", spreadsheet('VBAProject', 'Ataskaita', $driver . "End Sub\n"));
}

sub write_script {
  (my $log = "Z:$folder/log.txt") =~ tr{/}{\\};
  my $code = join "\n", map { $examples{$_} } @names;
  my $runs = join '', map { <<END } @names;
BeginExample "$_"
@{[procedure_of($_)]}
EndExample
END
  my $script = contents("$root/tests/com/demo/guide.vbs") =~ s/\@LOG\@/$log/r =~ s/^\@EXAMPLES\@$/$code/mr =~ s/^\@RUNS\@$/$runs/mr;
  open my $out, '|-', "'$root/tools/ascii-script.pl' '$folder/texts.txt' > '$folder/script.vbs'" or die "$!\n";
  print $out $script;
  close $out or die "ascii-script.pl failed\n";
}
