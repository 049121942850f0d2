#!/usr/bin/perl
# Puts a flat workbook's macros, as a project of VBA, into what LibreOffice made of it for Excel: an .xlsm file's parts in a
# folder. Workbook and sheets get code names, by which the project's document modules belong to them.
#   tools/embed-vba.pl <workbook.fods> <folder>
use strict;
use warnings;
use utf8;
use FindBin qw($Bin);
use lib $Bin;
use FlatWorkbook;
use VbaProject;

@ARGV == 2 or die "usage: $0 <workbook.fods> <folder>\n";
my ($workbook, $folder) = @ARGV;
my $text = contents($workbook);
my @modules = modules($text) or die "$workbook: no macros\n";

# Changes one part; each change must find its place.
sub change {
  my ($part, @changes) = @_;
  my $content = contents("$folder/$part");
  for my $change (@changes) {
    my ($place, $replacement) = @$change;
    $content =~ s/$place/$replacement->()/e or die "$workbook: $part has no $place\n";
  }
  write_file("$folder/$part", $content);
}
# Puts a code name into an element's first tag.
sub code_name { my ($name) = @_; return sub { qq(<$1 codeName="$name") } }

my $book = contents("$folder/xl/workbook.xml");
my $relations = contents("$folder/xl/_rels/workbook.xml.rels");
my @documents = ('ThisWorkbook');
for my $id ($book =~ /<sheet [^>]*\br:id="([^"]*)"/g) {
  my ($relation) = $relations =~ /(<Relationship [^>]*\bId="$id"[^>]*>)/ or die "$workbook: no sheet $id\n";
  my ($sheet) = $relation =~ /\bTarget="([^"]*)"/;
  push @documents, 'Lapas' . @documents;
  change("xl/$sheet", [qr/<(sheetPr)\b/, code_name($documents[-1])]);
}
change('xl/workbook.xml', [qr/<(workbookPr)\b/, code_name('ThisWorkbook')]);
change('xl/_rels/workbook.xml.rels', [qr{(?=</Relationships>)}, sub {
  '<Relationship Id="rIdVba" Type="http://schemas.microsoft.com/office/2006/relationships/vbaProject" Target="vbaProject.bin"/>'
}]);
change('[Content_Types].xml', [qr{(?=</Types>)}, sub {
  '<Override PartName="/xl/vbaProject.bin" ContentType="application/vnd.ms-office.vbaProject"/>'
}]);

open my $out, '>:raw', "$folder/xl/vbaProject.bin" or die "$folder/xl/vbaProject.bin: $!\n";
print $out vba_project(project($text), \@documents, \@modules);
close $out or die "$folder/xl/vbaProject.bin: $!\n";
