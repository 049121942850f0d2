#!/usr/bin/perl
# Puts samples/QvaReport.bas into the sample workbooks as their module of that name:
#   tools/embed-module.pl samples/QvaReport.bas samples/*.fods
# LibreOffice's Basic wants to be told that a module is VBA; the VBA editor's own first line is nothing to it.
use strict;
use warnings;
use utf8;
use FindBin qw($Bin);
use lib $Bin;
use FlatWorkbook;

@ARGV >= 2 or die "usage: $0 <module.bas> <workbook.fods>...\n";
my ($module, @workbooks) = @ARGV;

my $code = contents($module);
$code =~ s/^Attribute VB_Name = "(\w+)"\n// or die "$module: no module's name\n";
my $name = $1;
$code = xml("Option VBASupport 1\n$code");
for my $workbook (@workbooks) {
  my $text = contents($workbook);
  $text =~ s{(<ooo:module ooo:name="$name"><ooo:source-code>).*?(</ooo:source-code>)}{$1$code$2}s
    or die "$workbook: no module $name\n";
  write_file($workbook, $text);
}
