#!/usr/bin/env perl
# Takes the macros of tests/corpus to the engines that need a script of their own, and compares the logs.
#   tools/corpus.pl vbscript <folder>           writes script.vbs and form.answers into the folder; running the
#                                               script writes log.txt there
#   tools/corpus.pl basic <folder>              writes corpus.fods, box.answers, form.answers and host/; with the
#                                               facts that the acceptance kit asks of Excel
#   tools/corpus.pl acceptance <folder>         writes what the acceptance kit for machines with Excel consists of, the
#                                               samples' macros included
#   tools/corpus.pl compare <engine> <log> [<release>]
#                                               engine is com or libreoffice; the log may be UTF-8 or UTF-16.
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
my $kit = "$root/packaging/windows/acceptance";
# The facts that LibreOffice is asked for: those of cells and of saving. docs/libreoffice.md tells of the rest.
my @libreoffice_facts = map { "excel_$_" } qw(amounts_and_dates areas arrays calculation merged_cells saving texts_alone
                                              typed_texts values);
my @names = sort map { basename($_, '.macro') } glob "$corpus/macros/*.macro";
my ($command, @arguments) = @ARGV;
my %commands = (vbscript => \&write_vbscript, basic => \&write_basic, acceptance => \&write_acceptance,
                compare => \&compare);
my $run = $commands{$command // ''} // die "usage: corpus.pl vbscript|basic|acceptance|compare …\n";
exit $run->(@arguments);

sub macro { return contents("$corpus/macros/$_[0].macro") }

# The dialogs of macros, in their order.
sub form_answers { return join '', map { contents($_) } grep { -e } map { "$corpus/macros/$_.answers" } @_ }

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
  write_file("$folder/form.answers", form_answers(@names));
  return 0;
}

sub write_basic {
  my $folder = shift;
  my ($facts) = facts(contents("$kit/facts.txt"));
  my $main = "Option VBASupport 1\nSub Main\n" . join('', map { "  Run_$_\n" } @names, @libreoffice_facts) . "End Sub\n";
  my %modules = (Prelude => contents("$corpus/prelude.bas"), Ataskaita => $main);
  # Only the log shows Windows' own paths.
  $modules{"M_$_"} = "Option VBASupport 1\n" . $facts->{$_} =~ s/(?<!")("C:\\[^"]*")(?!")/OwnPath($1)/gr for @libreoffice_facts;
  # The macros' workbook is not the one that holds them.
  $modules{"M_$_"} = "Option VBASupport 1\n" . procedures($_) =~ s/\bThisWorkbook\b/TheWorkbook()/gr for @names;
  write_file("$folder/corpus.fods", workbook('VBAProject', 'Lapas', %modules));
  # A box gets the answer that it gets in the golden log.
  my $answers = join '', map { boxes($_) } @names;
  write_file("$folder/box.answers", $answers);
  write_file("$folder/form.answers", form_answers(@names));

  write_host("$folder/host");
  return 0;
}

# The host of the twin: its texts and companies, in the files of the embedded host.
sub write_host {
  my $folder = shift;
  make_path($folder);
  my ($schema) = contents("$root/host/sample.sql") =~ /\A(.*?)^INSERT /ms or die "no schema in sample.sql\n";
  write_file("$folder/sample.sql", $schema . contents("$corpus/host.sql"));
  my $texts = join '', map { /^(\d+)\s/ ? text_of($1) : () } split /\n/, contents("$root/host/QVAFormRes.txt");
  write_file("$folder/QVAFormRes.txt", $texts);
}

# On a user's machine the folders have names of the same length that nobody uses.
sub kit_paths { return $_[0] =~ s/C:\\Ataskaitos/C:\\QVA_Macros/gr =~ s/C:\\Corpus\b(?!\.)/C:\\QVA_Xl/gr }

sub write_acceptance {
  my $folder = shift;
  make_path($folder);
  my %left_out = map { /^(\w+)\s+(.*)/ ? ($1, $2) : () } split /\n/, contents("$kit/left_out.txt");
  -e "$corpus/macros/$_.macro" or die "left_out.txt: there is no macro $_\n" for keys %left_out;
  my @run = grep { !$left_out{$_} } @names;
  # All samples that have figures.
  my @samples = sort map { basename($_, '.txt') } glob "$root/tests/calc/figures/*.txt";

  # Without what the bench alone has, and what changes more of the user's than the kit puts back.
  my $prelude = contents("$corpus/prelude.vbs");
  $prelude =~ s/^(?:Sub|Function) (?:$_)\(.*?^End (?:Sub|Function)\n//ms or die "prelude.vbs has no $_\n"
    for qw(SetUserPath UserPath LogNewBoxes OwnBoxes EndCorpus);
  $prelude =~ s/^  SetUserPath ""\n//m or die "prelude.vbs sets no path\n";
  $prelude =~ s/^  excel\.ActiveWorkbook\.SaveAs .*\n//m or die "prelude.vbs saves no workbook\n";
  $prelude =~ s/^Set files = .*//ms or die "prelude.vbs has no end\n";
  my ($facts, %expected_facts) = facts(contents("$kit/facts.txt"));
  my @facts = sort keys %$facts;
  my $run = join '', (map { "  Run_$_\n" } @run, @facts), map { qq(  RunSample "$_"\n) } @samples;
  my $excel = contents("$kit/excel.vbs");
  my ($version) = contents("$root/CMakeLists.txt") =~ /^project\(QVA_Varnholt VERSION ([0-9.]+) /m;
  my $left_out = join ', ', map { qq("$_: $left_out{$_}") } sort keys %left_out;
  my $frame = contents("$kit/acceptance.vbs") =~ s/^\@RUN\@\n/$run/mr =~ s/^\@EXCEL\@\n/$excel/mr =~ s/\@LEFT_OUT\@/$left_out/r =~ s/\@VERSION\@/$version/r;
  # The frame ends with what runs; procedures may stand before it.
  $frame =~ s/^(?=Dim work, )/procedures(@run) . join('', map { $facts->{$_} } @facts)/me;
  my $script = kit_paths($prelude . $frame);
  open my $out, '|-', "'$root/tools/ascii-script.pl' '$folder/texts.txt' > '$folder/acceptance.vbs'" or die "$!\n";
  print $out $script;
  close $out or die "ascii-script.pl failed\n";

  my %listed = divergences('excel');
  my $expected = '';
  for my $name (@run) {
    my $golden = contents("$corpus/macros/$name.log");
    # Calls into Excel are told to nobody.
    $golden = without_traces($golden, join '', map { "$_: no trace\n" } macro($name) =~ /^\s*LogTrace "(.*)"/mg);
    $golden = with_difference($golden, $listed{$name}{difference}) if $listed{$name};
    $expected .= "== $name\n$golden";
  }
  $expected .= "== $_\n$expected_facts{$_}" for @facts;
  $expected .= "== sample_$_\nIšsaugota\nBaigta\nGrąžinta\n" . contents("$root/tests/calc/figures/$_.txt") for @samples;
  open my $log, '>:raw:encoding(UTF-16LE)', "$folder/expected.txt" or die "expected.txt: $!\n";
  print $log "\x{feff}", kit_paths($expected);
  close $log or die "expected.txt: $!\n";

  write_file("$folder/box.answers", join '', map { boxes($_) } @run);
  my $answers = form_answers(@run);
  write_file("$folder/list.answers", join '', $answers =~ /^list.*\n/mg);
  write_file("$folder/form.answers", $answers =~ s/^list.*\n//mgr);
  write_host("$folder/host");
  write_file("$folder/host/sample.sql", kit_paths(contents("$folder/host/sample.sql")));
  for my $sample (@samples) {
    make_path("$folder/samples/$sample");
    system("$root/tools/sample-script.pl", "--excel", "$kit/excel.vbs", $sample, "$folder/samples/$sample") == 0 or die "no $sample\n";
    write_file("$folder/samples/$sample/script.vbs", kit_paths(contents("$folder/samples/$sample/script.vbs")));
  }
  make_path("$folder/samples/host");
  write_file("$folder/samples/host/$_", kit_paths(contents("$root/host/$_"))) for qw(sample.sql QVAFormRes.txt);
  write_file("$folder/acceptance.cmd", contents("$kit/acceptance.cmd") =~ s/\n/\r\n/gr);
  write_file("$folder/samples/sample.cmd", contents("$kit/sample.cmd") =~ s/\n/\r\n/gr);
  return 0;
}

# Facts of Excel as procedures, and what each is to log, both by name. The file's own comment tells its form.
sub facts {
  my ($name, %code, %expected, %lines);
  for (split /\n/, shift) {
    next if /^\s*(?:#|$)/;
    if (/^== (\w+)$/) {
      $name = "excel_$1";
      $expected{$name} = '';
    } elsif (/^([?!]) (.*\S)\s+=> (.*)$/) {
      my ($kind, $what, $result) = ($1, $2, $3);
      my $text = '"' . $what =~ s/"/""/gr . '"';
      push @{$lines{$name}}, $kind eq '?' ? "result = Empty\nresult = $what\nLogFact $text, result" : "$what\nLogStatement $text";
      $expected{$name} .= "$what => $result\n";
    } else {
      push @{$lines{$name}}, $_;
    }
  }
  for my $fact (keys %expected) {
    my $body = join '', map { "$_\n" } @{$lines{$fact}};
    $code{$fact} = <<END;
Sub Macro_$fact
Dim app, book, sheet, other, item, result
On Error Resume Next
Set app = TheApplication()
Set book = TheWorkbook()
Set sheet = TheSheet(1)
Set other = TheSheet(2)
${body}End Sub
Sub Run_$fact
  On Error Resume Next
  BeginMacro "$fact"
  Macro_$fact
  EndMacro
End Sub
END
  }
  return (\%code, %expected);
}

# A text with a difference that diff told, in it.
sub with_difference {
  my ($text, $difference) = @_;
  my @lines = split /^/m, $text;
  while ($difference =~ /^(\d+)(?:,(\d+))?([acd])\d+(?:,\d+)?\n((?:[<>-].*\n)*)/mg) {
    my ($first, $last, $kind, $body) = ($1, $2 // $1, $3, $4);
    my @new = map { "$_\n" } $body =~ /^> (.*)$/mg;
    # Removed lines stay as empty ones, so that later places are where they were.
    if ($kind ne 'a') { $lines[$_ - 1] = '' for $first .. $last }
    $lines[$first - 1] .= join '', @new;
  }
  return join '', @lines;
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
  my (undef, %fact_logs) = facts(contents("$kit/facts.txt"));
  for (keys %listed) {
    die "$file: $engine $_ has no reason\n" unless $listed{$_}{reason} =~ /\w/;
    die "$file: there is no macro $_\n" unless -e "$corpus/macros/$_.macro" || exists $fact_logs{$_};
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
  my ($engine, $file, $release) = @_;
  # What is listed of a release comes before what is listed of all.
  my %listed = (divergences($engine), $release ? divergences("$engine-$release") : ());
  my %logs = (-e $file ? contents($file) : '') =~ /^== (\S+)\n(.*?)(?=^== |\z)/msg;
  my ($agree, $failed) = (0, 0);
  my (undef, %fact_logs) = facts(contents("$kit/facts.txt"));
  for my $name (@names, $engine eq 'libreoffice' ? @libreoffice_facts : ()) {
    my $actual = $logs{$name};
    my $golden = $fact_logs{$name} // contents("$corpus/macros/$name.log");
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
