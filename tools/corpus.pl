#!/usr/bin/env perl
# Takes the macros of tests/corpus to the engines that need a script of their own, and compares the logs.
#   tools/corpus.pl vbscript <folder>           writes script.vbs and form.answers into the folder; running the
#                                               script writes log.txt there
#   tools/corpus.pl basic <folder>              writes corpus.fods, box.answers, form.answers and host/
#   tools/corpus.pl compare <engine> <log>      engine is com or libreoffice; the log may be UTF-8 or UTF-16.
#                                               Prints what differs and one line of result; exit status 1 when
#                                               anything differs that tests/corpus/divergences.txt does not
#                                               list, or the other way round
use strict;
use warnings;
use utf8;
use open qw(:std :encoding(UTF-8));
use File::Basename qw(basename dirname);
use File::Path qw(make_path);
use File::Temp qw(tempfile);
use FindBin qw($Bin);
use lib $Bin;
use FlatWorkbook;

my $root = dirname(dirname(__FILE__));
my $corpus = "$root/tests/corpus";
my @names = sort map { basename($_, '.macro') } glob "$corpus/macros/*.macro";
my ($command, @arguments) = @ARGV;
my %commands = (vbscript => \&write_vbscript, basic => \&write_basic, compare => \&compare);
my $run = $commands{$command // ''} // die "usage: corpus.pl vbscript|basic|compare …\n";
exit $run->(@arguments);

sub macro { return contents("$corpus/macros/$_[0].macro") }

# The dialogs of all macros, in their order.
sub form_answers { return join '', map { contents($_) } grep { -e } map { "$corpus/macros/$_.answers" } @names }

# Each macro is a procedure; another one around it meets the error that the macro does not ignore.
sub procedures {
  return join '', map { <<END } @_;
Sub Macro_$_
@{[macro($_)]}End Sub
Sub Run_$_
  On Error Resume Next
  BeginMacro "$_"
  Macro_$_
  EndMacro
End Sub
END
}

sub write_vbscript {
  my $folder = shift;
  (my $log = "Z:$folder/log.txt") =~ tr{/}{\\};
  (my $prelude = contents("$corpus/prelude.vbs")) =~ s/\@LOG\@/$log/;
  my $script = $prelude . procedures(@names) . join('', map { "Run_$_\n" } @names) . "EndCorpus\n";
  open my $out, '|-', "'$root/tools/ascii-script.pl' '$folder/texts.txt' > '$folder/script.vbs'" or die "$!\n";
  print $out $script;
  close $out or die "ascii-script.pl failed\n";
  write_file("$folder/form.answers", form_answers());
  return 0;
}

sub write_basic {
  my $folder = shift;
  my $main = "Option VBASupport 1\nSub Main\n" . join('', map { "  Run_$_\n" } @names) . "End Sub\n";
  my %modules = (Prelude => contents("$corpus/prelude.bas"), Ataskaita => $main);
  # The macros' workbook is not the one that holds them.
  $modules{"M_$_"} = "Option VBASupport 1\n" . procedures($_) =~ s/\bThisWorkbook\b/TheWorkbook()/gr for @names;
  write_file("$folder/corpus.fods", workbook('VBAProject', 'Lapas', %modules));
  # A box gets the answer that it gets in the golden log.
  my $answers = join '', map { boxes($_) } @names;
  write_file("$folder/box.answers", $answers);
  write_file("$folder/form.answers", form_answers());

  # The host of the twin: its texts and companies, in the files of the embedded host.
  make_path("$folder/host");
  my ($schema) = contents("$root/host/sample.sql") =~ /\A(.*?)^INSERT /ms or die "no schema in sample.sql\n";
  write_file("$folder/host/sample.sql", $schema . contents("$corpus/host.sql"));
  my $texts = join '', map { /^(\d+)\s/ ? text_of($1) : () } split /\n/, contents("$root/host/QVAFormRes.txt");
  write_file("$folder/host/QVAFormRes.txt", $texts);
  return 0;
}

sub boxes { return join '', map { "$_\n" } contents("$corpus/macros/$_[0].log") =~ /^.*: box ".*" -> (\d+)$/mg }

sub text_of {
  my $number = shift;
  my $parameter = $number =~ /^(800|814|819|842)$/ ? ': %0' : '';
  return "$number Tekstas $number$parameter\n";
}

# The listed divergences of an engine: macro => [difference, reason].
sub divergences {
  my $engine = shift;
  my ($file, %listed, $macro) = ("$corpus/divergences.txt");
  for (split /\n/, contents($file)) {
    if (/^== (\S+) (\S+)$/) {
      $macro = $1 eq $engine ? $2 : undef;
      next if !defined $macro;
      die "$file: $engine $macro stands twice\n" if $listed{$macro};
      $listed{$macro} = {difference => '', reason => ''};
    } elsif (defined $macro && /^[<>\d-]/) {
      $listed{$macro}{difference} .= "$_\n";
    } elsif (defined $macro) {
      $listed{$macro}{reason} .= $_;
    }
  }
  for (keys %listed) {
    die "$file: $engine $_ has no reason\n" unless $listed{$_}{reason} =~ /\w/;
    die "$file: there is no macro $_\n" unless -e "$corpus/macros/$_.macro";
  }
  return %listed;
}

sub difference {
  my @files = map { my ($out, $file) = tempfile(UNLINK => 1); binmode $out, ':utf8'; print $out $_; close $out; $file } @_;
  open my $diff, '-|', 'diff', @files or die "diff: $!\n";
  local $/;
  return <$diff> // '';
}

# An engine that cannot trace says so once for all lines of a trace.
sub without_traces {
  my ($golden, $actual) = @_;
  $golden =~ s/^(?:\Q$_\E: .*\n)+/$_: no trace\n/m for $actual =~ /^(.*): no trace$/mg;
  return $golden;
}

sub compare {
  my ($engine, $file) = @_;
  my %listed = divergences($engine);
  my %logs = (-e $file ? contents($file) : '') =~ /^== (\S+)\n(.*?)(?=^== |\z)/msg;
  my ($agree, $failed) = (0, 0);
  for my $name (@names) {
    my $actual = $logs{$name};
    my $golden = contents("$corpus/macros/$name.log");
    my $difference = defined $actual ? difference(without_traces($golden, $actual), $actual) : "it did not run\n";
    my $expected = $listed{$name} ? $listed{$name}{difference} : '';
    if ($difference eq $expected) {
      $agree += $difference eq '';
      next;
    }
    ++$failed;
    print "$name differs otherwise than divergences.txt tells:\n" if $listed{$name};
    print "== $engine $name\n$difference";
  }
  my $known = keys %listed;
  print "corpus, $engine: $agree macros agree, $known diverge as listed" . ($failed ? ", $failed FAILED" : '') . "\n";
  return $failed || !@names ? 1 : 0;
}
