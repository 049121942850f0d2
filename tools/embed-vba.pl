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

# Puts a text into one part, at a place that must be there.
sub insert {
  my ($part, $place, $insertion) = @_;
  my $content = contents("$folder/$part");
  $content =~ s/$place/$insertion/ or die "$workbook: $part has no $place\n";
  write_file("$folder/$part", $content);
}

my $book = contents("$folder/xl/workbook.xml");
my $relations = contents("$folder/xl/_rels/workbook.xml.rels");
my @documents = ('ThisWorkbook');
insert('xl/workbook.xml', qr/<workbookPr\K\b/, qq( codeName="$documents[0]"));
for my $id ($book =~ /<sheet [^>]*\br:id="([^"]*)"/g) {
  my ($relation) = $relations =~ /(<Relationship [^>]*\bId="$id"[^>]*>)/ or die "$workbook: no sheet $id\n";
  my ($sheet) = $relation =~ /\bTarget="([^"]*)"/;
  push @documents, 'Lapas' . @documents;
  insert("xl/$sheet", qr/<sheetPr\K\b/, qq( codeName="$documents[-1]"));
}
insert('xl/_rels/workbook.xml.rels', qr{(?=</Relationships>)},
  '<Relationship Id="rIdVba" Type="http://schemas.microsoft.com/office/2006/relationships/vbaProject" Target="vbaProject.bin"/>');
insert('[Content_Types].xml', qr{(?=</Types>)},
  '<Override PartName="/xl/vbaProject.bin" ContentType="application/vnd.ms-office.vbaProject"/>');

open my $out, '>:raw', "$folder/xl/vbaProject.bin" or die "$folder/xl/vbaProject.bin: $!\n";
print $out vba_project(project($text), \@documents, \@modules);
close $out or die "$folder/xl/vbaProject.bin: $!\n";
