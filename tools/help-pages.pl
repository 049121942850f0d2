#!/usr/bin/env perl
# Finishes the pages of the help: links, look and, for a browser, the contents on each page; with --chm the same in
# Windows' Baltic code page, with project, contents and index of a Windows help file.
#   help-pages.pl [--chm] <folder of Markdown> <folder of HTML> <output folder>
use strict;
use warnings;
use utf8;
use Encode qw(encode FB_XMLCREF);

my $is_chm = @ARGV && $ARGV[0] eq '--chm' ? shift : '';
my ($markdown, $html, $output) = @ARGV;
die "usage: help-pages.pl [--chm] <folder of Markdown> <folder of HTML> <output folder>\n" unless defined $output;

sub contents {
  open my $in, '<:encoding(UTF-8)', $_[0] or die "$_[0]: $!\n";
  local $/;
  return <$in>;
}
sub write_file {
  my ($name, $text) = @_;
  open my $out, '>:raw', "$output/$name" or die "$name: $!\n";
  print $out $is_chm ? encode('cp1257', $text, FB_XMLCREF) : encode('UTF-8', $text);
  close $out or die "$name: $!\n";
}

# The order of the guide: what the first page does not order stands as its classes do.
my @order = qw(index tutorial gExcelObject CTools CLockScreen CRepPeriod CDatePic CReports CSaveForm CSetPath CToolbar
  CButtonProperties CToolbars CDefaultButtons CCommandsEvent CEnvironment reference klaida-429);
my %there = map { s{.*/}{}r =~ s/\.md$//r => 1 } glob "$markdown/*.md";
my @pages = grep { delete $there{$_} } @order;
die "no place for @{[keys %there]}\n" if %there;
my %titles = map { $_ => contents("$markdown/$_.md") =~ /^# (.*)/ ? $1 : die "$_ has no title\n" } @pages;

my $style = <<'END';
body { font: 10pt Verdana, "DejaVu Sans", sans-serif; margin: 0 1.5em 2em; max-width: 60em; line-height: 1.4 }
h1 { font-size: 17pt } h2 { font-size: 13pt } h3 { font-size: 11pt }
table { border-collapse: collapse } td, th { border: 1px solid #bbb; padding: 3px 7px; text-align: left; vertical-align: top }
th { background: #eee } code, pre { font: 9.5pt Consolas, "DejaVu Sans Mono", monospace }
pre { background: #f5f5f5; border: 1px solid #ddd; padding: 8px; overflow: auto } td code { word-wrap: break-word }
img { border: 0 } .contents { border-bottom: 1px solid #bbb; padding: 8px 0; font-size: 9pt }
END
my $charset = $is_chm ? 'windows-1257' : 'UTF-8';
for my $page (@pages) {
  my $body = contents("$html/$page.html");
  $body =~ s/<!--.*?-->\s*//gs;
  $body =~ s{href="([\w-]+)\.md"}{exists $titles{$1} or die "$page links to $1\n"; qq(href="$1.html")}ge;
  my $contents = $is_chm ? '' : '<div class="contents">' .
    join(' · ', map { $_ eq $page ? "<b>$titles{$_}</b>" : qq(<a href="$_.html">$titles{$_}</a>) } @pages) . "</div>\n";
  write_file("$page.html", <<END);
<!DOCTYPE html>
<html lang="lt">
<head><meta http-equiv="Content-Type" content="text/html; charset=$charset"><title>$titles{$page}</title>
<style>
$style</style></head>
<body>
$contents$body
</body>
</html>
END
}
exit unless $is_chm;

my $title = 'QVA_Varnholt: ' . lcfirst $titles{index};
my @images = map { s{^\Q$output\E/}{}r } glob "$output/images/*";
write_file('FReport.hhp', <<END =~ s/\n/\r\n/gr);
[OPTIONS]
Compatibility=1.1 or later
Compiled file=FReport.chm
Contents file=FReport.hhc
Index file=FReport.hhk
Default topic=index.html
Display compile progress=No
Full-text search=Yes
Language=0x427 Lithuanian
Title=$title

[FILES]
@{[join "\n", (map { "$_.html" } @pages), @images]}
END

sub sitemap {
  my $items = join '', map { my ($name, $file) = @$_; <<END } @_;
<LI><OBJECT type="text/sitemap"><param name="Name" value="$name"><param name="Local" value="$file"></OBJECT>
END
  return qq(<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">\n<HTML><HEAD></HEAD><BODY>\n<UL>\n$items</UL>\n</BODY></HTML>\n);
}
write_file('FReport.hhc', sitemap(map { [$titles{$_}, "$_.html"] } @pages));
# In the index every member, too.
my @index = map { [$titles{$_}, "$_.html"] } @pages;
for my $page (grep { /^[gC][A-Z]/ } @pages) {
  push @index, map { ["$_ ($page)", "$page.html"] } contents("$markdown/$page.md") =~ /^\| `(\w+)[( ][^`]*` \|/mg;
}
write_file('FReport.hhk', sitemap(sort { lc $a->[0] cmp lc $b->[0] } @index));
