#!/usr/bin/env perl
# Renders a sample report as a script for Windows' script host, on the test bench's Excel: its sheets, formulas and
# names, and its macros as they stand, but for what VBScript does not have - types, error handlers, files, named
# arguments, arrays from 1.
#   tools/sample-script.pl [--excel <functions>] <sample> <folder> [<macro> <changes>]
# Writes script.vbs, texts.txt, form.answers and list.answers into the folder. Running the script writes log.txt there, or the
# file that it is told: the report's log, "==", and the rows of its printed area, as tests/calc/figures holds them. The sample
# is one of samples/, or the path of a workbook with its answers file beside it. The macro is Main unless another one is named;
# then a file of statements changes the sheets before it runs. It takes another Excel by the functions StartExcel and CloseExcel
# of a file, and then prints nothing and leaves the PATH alone.
use strict;
use warnings;
use utf8;
use open qw(:std :encoding(UTF-8));
use File::Basename qw(dirname);
use FindBin qw($Bin);
use lib $Bin;
use FlatWorkbook;

my $excel;
(undef, $excel) = splice @ARGV, 0, 2 if @ARGV && $ARGV[0] eq '--excel';
@ARGV == 2 || @ARGV == 4 or die "usage: sample-script.pl [--excel <functions>] <sample> <folder> [<macro> <changes>]\n";
my ($sample, $folder, $macro, $changes) = @ARGV;
my $root = dirname($Bin);
$sample = $sample =~ m{/} ? $sample =~ s/\.fods$//r : "$root/samples/$sample";
my $book = contents("$sample.fods");

sub plain { my $text = shift; return $text =~ s/&lt;/</gr =~ s/&gt;/>/gr =~ s/&quot;/"/gr =~ s/&apos;/'/gr =~ s/&amp;/&/gr }
sub literal { my $text = shift; return '"' . $text =~ s/"/""/gr . '"' }

# --- The workbook --------------------------------------------------------------------------------------------

my %style;
while ($book =~ m{<style:style style:name="([^"]+)" style:family="table-cell"([^>]*)>}g) {
  my ($name, $rest) = ($1, $2);
  $style{$name} = { $rest =~ /parent-style-name="([^"]+)"/ ? (parent => $1) : (),
                    $rest =~ /data-style-name="([^"]+)"/ ? (data => $1) : () };
}
my %is_text_style = map { $_ => 1 } $book =~ m{<number:text-style style:name="([^"]+)"}g;
sub is_text {
  for (my $name = shift; defined $name; $name = $style{$name}{parent}) {
    return $is_text_style{ $style{$name}{data} } if $style{$name}{data};
  }
  return 0;
}

sub column { my $n = shift; return ($n > 26 ? chr(64 + int(($n - 1) / 26)) : '') . chr(65 + ($n - 1) % 26) }

# "of:==SUMIF([$Sheet.$A$4:.$A$103];…)" as Excel writes it.
sub formula {
  my $text = plain(shift) =~ s/^of:=//r;
  $text =~ s{\[(?:\$?([^.\]]*))\.([^\]:]+)(?::\.([^\]]+))?\]}{ ($1 ? "$1!" : '') . $2 . (defined $3 ? ":$3" : '') }ge;
  return $text =~ s/;/,/gr;
}

my $setup = '';
while ($book =~ m{<table:table table:name="([^"]+)".*?>(.*?)</table:table>}gs) {
  my ($sheet, $content) = ($1, $2);
  $setup .= 'Set sheet = AddSheet(' . literal($sheet) . ")\n";
  my $number = 1;
  while ($content =~ m{<table:table-column([^>]*)/>}g) {
    my $attributes = $1;
    my $repeated = $attributes =~ /columns-repeated="(\d+)"/ ? $1 : 1;
    if ($attributes =~ /default-cell-style-name="([^"]+)"/ && is_text($1)) {
      $setup .= sprintf qq(sheet.Range("%s1:%s200").NumberFormat = "\@"\n), column($number), column($number + $repeated - 1);
    }
    $number += $repeated;
  }
  $setup .= "AddShape sheet, \"$1\"\n" while $content =~ m{<draw:frame draw:name="([^"]+)"}g;
  my $row = 1;
  while ($content =~ m{<table:table-row([^>]*)>(.*?)</table:table-row>}gs) {
    my ($attributes, $cells) = ($1, $2);
    my $column = 1;
    while ($cells =~ m{<table:(covered-)?table-cell([^>]*?)(?:/>|>(.*?)</table:table-cell>)}gs) {
      my ($cell, $text) = ($2, $3 // '');
      my $repeated = $cell =~ /columns-repeated="(\d+)"/ ? $1 : 1;
      my $address = column($column) . $row;
      my ($name) = $cell =~ /table:style-name="([^"]+)"/;
      my $range = qq(sheet.Range("$address"));
      $setup .= qq($range.NumberFormat = "\@"\n) if is_text($name);
      my $value = $cell =~ /table:formula="([^"]+)"/ ? literal(formula($1))
        : $cell =~ /office:value="([^"]+)"/ ? $1
        : $cell =~ /office:boolean-value="([^"]+)"/ ? ucfirst $1
        : $cell =~ /office:date-value="(\d+)-0?(\d+)-0?(\d+)"/ ? "DateSerial($1, $2, $3)"
        : $text =~ /<text:p>/ ? literal(plain($text =~ s{</text:p>\s*<text:p>}{}gr =~ s/<[^>]*>//gr)) : undef;
      # An apostrophe keeps a text one.
      $value =~ s/^"(?=[^=])/"'/ if defined $value && !is_text($name) && $cell =~ /value-type="string"/;
      $setup .= "$range.Value = $value\n" if defined $value;
      $column += $repeated;
    }
    $row += $attributes =~ /rows-repeated="(\d+)"/ ? $1 : 1;
  }
}
while ($book =~ m{<table:named-range table:name="([^"]+)"[^>]*cell-range-address="\$([^.]+)\.([^":]+)(?::\.([^"]+))?"}g) {
  my ($name, $sheet, $address) = ($1, $2, defined $4 ? "$3:$4" : $3);
  $setup .= 'ThisWorkbook.Worksheets(' . literal($sheet) . qq[).Range("$address").Name = "$name"\n];
}

# The name of the macros' project is that of the report.
$setup .= "ThisWorkbook.VBProject.Name = \"$1\"\n" if $book =~ /<ooo:library-embedded ooo:name="([^"]+)"/;

# --- The macros ----------------------------------------------------------------------------------------------

# The parameters of a member of the library, for calls that name their arguments.
my $idl = contents("$root/server/com/QVA_Varnholt.idl");
sub by_position {
  my ($member, $arguments) = @_;
  my ($declaration) = $idl =~ /HRESULT \Q$member\E\((.*?)\);/s or die "$member is no member\n";
  $declaration =~ s/\[[^\]]*\]//g;
  my %given = $arguments =~ /(\w+):=([^,]+(?:\([^)]*\))?)/g;
  my @values = map { delete $given{$_} // '' } $declaration =~ /(\w+)(?=,|$)/g;
  die "$member has no argument " . join(', ', %given) . "\n" if %given;
  pop @values while @values && $values[-1] eq '';
  return join ', ', @values;
}

my %initial = (Object => 'Set %s = Nothing', String => '%s = ""', Boolean => '%s = False', Date => '%s = CDate(0)',
               map { $_ => '%s = 0' } qw(Integer Long Double));
my %from_one;
sub declarations {
  my ($indent, $list) = @_;
  my (@names, @values);
  for (split /,\s*(?![^(]*\))/, $list) {
    my ($name, $bounds, $type) = /^(\w+)(\([^)]*\))? As (\w+)$/ or die "what is $_\n";
    $from_one{$name} = 1 if defined $bounds;
    # Wine's script engine fails on an array that is declared without bounds and made by ReDim.
    push @names, $name . (defined $bounds && $bounds ne '()' ? $bounds =~ s/1 To //gr : '');
    push @values, sprintf $initial{$type}, $name if !defined $bounds && $initial{$type};
  }
  return join "\n", $indent . 'Dim ' . join(', ', @names), map { $indent . $_ } @values;
}

sub vbscript {
  my $code = shift;
  $code =~ s/ _\n\s*/ /g;
  $code =~ s/^((?:[^"'\n]|"[^"\n]*")*)'.*$/$1/mg;
  $code =~ s/[ \t]+$//mg;
  $code =~ s/^(?:Option|Attribute) .*\n//mg;
  # The log is the script's, and nobody looks into the folder of the workbook.
  $code =~ s/^(?:Public|Private) Sub (?:PradetiZurnala|Zingsnis|Aprasas)\(.*?^End Sub\n//msg;
  # Of a single statement the handler stays, of all others the script is the one.
  $code =~ s/^( *)On Error GoTo (\w+)\n( *\S.*\n) *Exit Sub\n\2:\n(.*\n)(?=End)/$1On Error Resume Next\n$3$1If Err.Number <> 0 Then\n$1Err.Clear\n$4$1End If\n/mg;
  $code =~ s/^ *On Error GoTo (\w+)\n(.*?)\n *Exit (?:Sub|Function)\n\1:\n.*?(?=^End)/$2\n/msg;
  # The twin has no widths of columns, and hides nothing.
  $code =~ s/^.*\.Entire(?:Row|Column)\..*\n//mg;
  $code =~ s/^( *)(?:Public|Private|Dim) (?!Const|Sub|Function)(.*)$/declarations($1, $2)/mge;
  $code =~ s/^(?:Public|Private) Const /Const /mg;
  $code =~ s/^(?:Public|Private) (Sub|Function) (\w+)\((.*?)\)(?: As \w+)?$/"$1 $2(" . $3 =~ s{\(\)| As \w+}{}gr . ")"/mge;
  $code =~ s/ReDim (\w+)\((.*)\)$/"ReDim $1(" . $2 =~ s{1 To }{}gr . ')'/mge;
  $code =~ s/\.Value = (\w+)$/$from_one{$1} ? ".Value = FromOne($1)" : $&/mge;
  $code =~ s/\.(\w+) (\w+:=.*)$/".$1 " . by_position($1, $2)/mge;
  $code =~ s/(?<![.\w])(?=Active(?:Window|Sheet)\b)/Application./g;
  $code =~ s/(?<== )(Split\(.*\))\((.*)\)$/Element($1, $2)/mg;
  $code =~ s/\bRound\(/RoundTo(/g;
  $code =~ s/\bUCase\(/Upper(/g;
  $code =~ s/\bMsgBox\b/WScript.Echo/g;
  return $code;
}

my $macros = contents("$root/samples/QvaReport.bas");
while ($book =~ m{<ooo:module ooo:name="(\w+)"[^>]*><ooo:source-code[^>]*>(.*?)</ooo:source-code>}gs) {
  $macros .= plain($2) if $1 ne 'QvaReport';
}

# --- The script ----------------------------------------------------------------------------------------------

my $start = $excel ? contents($excel) : <<END;
Function StartExcel(path)
  Set StartExcel = CreateObject("QVA_TestBench.Control").NewExcel
End Function
Sub CloseExcel()
End Sub
END
$macros =~ s/^.*\.(?:Spauzd [^,]*, True\b|RegPath\().*\n//mg if $excel;
my $script = contents("$root/tests/com/demo/sample.vbs");
$setup .= contents($changes) if defined $changes;
$macro //= 'Main';
$script =~ s/\@MACRO\@/$macro/;
$script =~ s/^\@EXCEL\@\n/$start/m;
$script =~ s/^\@SHEETS\@$/$setup/m;
$script =~ s/^\@MACROS\@$/vbscript($macros)/me;
open my $out, '|-', "'$root/tools/ascii-script.pl' '$folder/texts.txt' > '$folder/script.vbs'" or die "$!\n";
print $out $script;
close $out or die "ascii-script.pl failed\n";

# The demo host shows its lists itself.
my $answers = contents("$sample.answers");
write_file("$folder/list.answers", join '', $answers =~ /^list.*\n/mg);
write_file("$folder/form.answers", $answers =~ s/^list.*\n//mgr);
