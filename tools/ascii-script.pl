#!/usr/bin/env perl
# Makes a script that Wine's script engine can read: it knows ASCII alone. Reads a script (UTF-8) and writes it
# with each literal beyond ASCII replaced by U(<number>), which takes it from a file of texts; @TEXTS@ in the
# script becomes that file's path as Windows programs see it. A script's own function U reads the file: UTF-16,
# one text a line.
#   tools/ascii-script.pl <file of texts> < script > ASCII script
use strict;
use warnings;
use open qw(:std :encoding(UTF-8));

my $file = shift // die "usage: ascii-script.pl <file of texts>\n";
(my $path = "Z:$file") =~ tr{/}{\\};
my @texts;
while (<STDIN>) {
  s/"((?:[^"]|"")*)"/ my $text = $1; $text =~ m{[^\x00-\x7f]} ? literal($text) : qq("$text") /ge unless /^\s*'/;
  s/\@TEXTS\@/$path/;
  print;
}
open my $out, '>:raw:encoding(UTF-16LE)', $file or die "$file: $!\n";
print $out "\x{feff}", map { "$_\n" } @texts, '';
close $out or die "$file: $!\n";

sub literal {
  my $text = shift;
  $text =~ s/""/"/g;
  push @texts, $text;
  return "U($#texts)";
}
