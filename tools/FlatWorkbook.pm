# What the scripts share that write spreadsheets with macros as flat files.
package FlatWorkbook;
use strict;
use warnings;
use utf8;
use Exporter qw(import);
our @EXPORT = qw(contents write_file xml workbook project modules);

# A file's text, which is UTF-8 or marked UTF-16, with lines ended as here.
sub contents {
  my $file = shift;
  open my $in, '<:raw', $file or die "$file: $!\n";
  local $/;
  my $bytes = <$in> // '';
  utf8::decode($bytes) unless $bytes =~ s/^\xff\xfe// && do {
    require Encode;
    $bytes = Encode::decode('UTF-16LE', $bytes);
    1;
  };
  $bytes =~ s/\r\n/\n/g;
  return $bytes;
}

sub write_file {
  my ($file, $text) = @_;
  open my $out, '>:encoding(UTF-8)', $file or die "$file: $!\n";
  print $out $text;
  close $out or die "$file: $!\n";
}

sub xml { return $_[0] =~ s/&/&amp;/gr =~ s/</&lt;/gr =~ s/>/&gt;/gr }

sub _text { return $_[0] =~ s/&lt;/</gr =~ s/&gt;/>/gr =~ s/&quot;/"/gr =~ s/&apos;/'/gr =~ s/&amp;/&/gr }

# The name of a workbook's project of macros: that of its first library.
sub project { return $_[0] =~ /<ooo:library-embedded ooo:name="([^"]*)"/ ? _text($1) : die "no library of macros\n" }

# A workbook's modules as [name, source as VBA has it], in their order.
sub modules {
  my ($text) = @_;
  my @modules;
  while ($text =~ m{<ooo:module ooo:name="([^"]*)"[^>]*><ooo:source-code[^>]*>(.*?)</ooo:source-code>}gs) {
    push @modules, [_text($1), _text($2) =~ s/^Option VBASupport 1\n//r];
  }
  return @modules;
}

# A spreadsheet of one empty sheet with one library of macros: workbook(library, sheet, module => code, …).
sub workbook {
  my ($library, $sheet, %modules) = @_;
  my $modules = join '', map {
    qq(   <ooo:module ooo:name="$_"><ooo:source-code>) . xml($modules{$_}) . "</ooo:source-code></ooo:module>\n"
  } sort keys %modules;
  return <<END;
<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0"
 xmlns:ooo="http://openoffice.org/2004/office" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
 <office:scripts><office:script script:language="ooo:Basic"><ooo:libraries>
  <ooo:library-embedded ooo:name="$library">
$modules  </ooo:library-embedded>
 </ooo:libraries></office:script></office:scripts>
 <office:body><office:spreadsheet>
  <table:table table:name="$sheet"><table:table-row><table:table-cell/></table:table-row></table:table>
 </office:spreadsheet></office:body>
</office:document>
END
}

1;
