#!/usr/bin/env perl
# Makes mutants of the library's sources (tools/Mutants.pm) and runs the tests on each; what survives, no test holds.
#   tools/mutants.sh [<option>...] [<file or folder>...]   without one, the whole library
#     --since <commit>     only in lines that differ from a commit: --since HEAD is for what is at hand
#     --sample <n>         that many of them by chance; --seed <n> tells other ones
#     --jobs <n>           workers; 1.5 is one that works and one that rests half of the time
#     --accepted           those of the list of accepted ones, which are otherwise not run
#     --anew               forgets the results kept for these files
#     --list               prints the mutants and runs none
#     --alone              compiles each by itself, which shows that those in one program are the same mutants
#     --with <command>     what builds and tests them, in the copy of the sources, in the place of our own ways; its
#                          status is 125 when a mutant does not compile, and not 0 when it is killed
# The front doors need --with: a mutant of theirs is built into their module and called by LibreOffice or under Wine, which
# takes minutes, so that a sample must do. For one:
#   tools/mutants.sh --sample 10 --with 'cmake --preset debug -DQVA_TESTS=ON && cmake --build --preset debug --target
#     qva_calc_tests || exit 125; build/debug/tests/qva_calc_tests --gtest_fail_fast' server/calc
#   tools/mutants.sh --sample 10 --with 'cmake --preset windows-x64 -DQVA_TESTS=ON && cmake --build --preset windows-x64
#     || exit 125; tools/test-windows.sh 64-bit' server/com
# Prints survivors as they are found, then a table; exit status 1 when there are any outside the list, or entries in
# the list that no mutant answers to.
#
# All is done in a copy under build/mutants, which has a build without sanitizers. The mutants stand beside each other in
# one program, which chooses one of them as it starts (tools/Schemata.pm), so that all are compiled and linked together;
# the few that cannot stand there have a program of their own. Only tests that come to the mutant's place are run; those of
# the source's folder come first, since most mutants do not get beyond them. Results are kept: what was killed, or did not compile, is not run
# again until its file changes, and what survived until any test or source changes.
#
# tests/accepted-mutants.txt has the survivors that need no test: the file, the line with "-" as it is and with "+" as the
# mutant has it, and the reason.
use strict;
use warnings;
use Cwd qw(getcwd);
use Digest::SHA qw(sha256_hex);
use Encode qw(encode_utf8);
use Fcntl qw(:flock);
use File::Basename qw(dirname);
use File::Compare qw(compare);
use File::Copy qw(copy);
use File::Path qw(make_path remove_tree);
use FindBin qw($Bin);
use Getopt::Long qw(GetOptions);
use JSON::PP qw(decode_json);
use POSIX qw(ceil);
use List::Util qw(max shuffle sum);
use Time::HiRes qw(sleep time);
use lib $Bin;
use FlatWorkbook qw(contents write_file);
use Mutants;
use Schemata;

chdir dirname($Bin) or die "$!\n";
binmode $_, ':encoding(UTF-8)' for *STDOUT, *STDERR;
$| = 1;
my @library = qw(storage reports period excelui global server);
my ($since, $sample, $with);
my ($seed, $jobs, $only_accepted, $anew, $only_list, $alone) = (1, 1, 0, 0, 0, 0);
GetOptions('since=s' => \$since, 'sample=i' => \$sample, 'seed=i' => \$seed, 'jobs=f' => \$jobs, 'accepted' => \$only_accepted,
           'anew' => \$anew, 'list' => \$only_list, 'alone' => \$alone, 'with=s' => \$with) or die "usage: see the head of $0\n";
my $work = getcwd . '/build/mutants';
my ($tree, $build, $objects, $together) = map { "$work/$_" } qw(tree build objects together);
make_path($objects);
my $most_mutants = 20_000;

# --- The mutants ------------------------------------------------------------------------------------------------

sub on_one_line { return shift =~ s/\s+/ /gr =~ s/^ | $//gr }

my @files = map { s{/$}{}r } @ARGV ? @ARGV : @library;
@files = grep { /\.(?:cpp|h)$/ } map { -d $_ ? <$_/*> : $_ } @files;
die "$0: the front doors need --with\n" if !$with && grep { m{^server/.*/} } @files;

# The lines of a file that differ from the commit, as a hash; nothing where all lines count.
sub changed_lines {
  my $file = shift;
  return unless defined $since;
  my %lines;
  for (split /\n/, `git diff -U0 '$since' -- '$file'`) {
    next unless /^\@\@ -\S+ \+(\d+)(?:,(\d+))? /;
    $lines{$_} = 1 for $1 .. $1 + ($2 // 1) - 1;
  }
  return \%lines;
}

my @mutants;
my %text_of = map { $_ => contents($_) } @files;
my %parsed_of = map { $_ => parsed($text_of{$_}) } @files;
for my $file (@files) {
  my $text = $text_of{$file};
  my $lines = changed_lines($file);
  for my $mutant (mutants_of($text)) {
    my ($at, $end) = ($mutant->{at}, $mutant->{at} + $mutant->{length});
    my $line = 1 + (substr($text, 0, $at) =~ tr/\n//);
    next if $lines && !grep { $lines->{$_} } $line .. $line + (substr($text, $at, $mutant->{length}) =~ tr/\n//);
    my $from = rindex($text, "\n", $at - 1) + 1;
    my $to = index $text, "\n", $end;
    my $mutated = substr($text, 0, $at) . $mutant->{by} . substr($text, $end);
    push @mutants, { %$mutant, file => $file, line => $line, text => $mutated, was => on_one_line(substr $text, $from, $to - $from),
                     is => on_one_line(substr($text, $from, $at - $from) . $mutant->{by} . substr($text, $end, $to - $end)),
                     key => sha256_hex(encode_utf8("$file\0$mutated")) };
  }
}

# The list of accepted ones.
my %accepted;
for (split /\n{2,}/, contents('tests/accepted-mutants.txt')) {
  next if /\A#/;
  my ($file, $was, $is, $reason) = /\A(\S+)\n- (.*)\n\+ (.*)\n  (\S.*)\z/s or die "tests/accepted-mutants.txt: no entry:\n$_\n";
  $accepted{"$file\n$was\n$is"} = 0;
}
for (@mutants) {
  my $name = "$_->{file}\n$_->{was}\n$_->{is}";
  $_->{accepted} = exists $accepted{$name};
  $accepted{$name}++ if $_->{accepted};
}
my %is_whole = map { $_ => 1 } defined $since ? () : @files;
my @stale = grep { !$accepted{$_} && $is_whole{ (split /\n/)[0] } } sort keys %accepted;

@mutants = grep { $_->{accepted} } @mutants if $only_accepted;
if ($sample && $sample < @mutants) {
  srand $seed;
  my @chosen = sort { $a <=> $b } (shuffle(0 .. $#mutants))[ 0 .. $sample - 1 ];
  @mutants = @mutants[@chosen];
}
sub difference { my $mutant = shift; return "$mutant->{file}:$mutant->{line}\n- $mutant->{was}\n+ $mutant->{is}\n" }
if ($only_list) {
  print map { difference($_), "\n" } @mutants;
  exit 0;
}

# --- The copy and its build -------------------------------------------------------------------------------------

sub run { system(@_) == 0 or die "failed: @_\n" }

# Brings the copy up to date; a file that is the same keeps its time of change.
my $everything = Digest::SHA->new(256);
my %is_there;
for my $file (split /\0/, `git ls-files -z --cached --others --exclude-standard`) {
  next unless -f $file;
  my $copy = "$tree/$file";
  $is_there{$copy} = 1;
  $everything->add($file)->addfile($file) if $file =~ m{^(?:tests|platform|host|@{[join '|', @library]})/};
  next if -e $copy && compare($file, $copy) == 0;
  make_path(dirname($copy));
  copy($file, $copy) or die "$copy: $!\n";
  chmod +(stat $file)[2] & 07777, $copy;
}
my $state_of_all = substr $everything->hexdigest, 0, 16;
for (split /\0/, `find '$tree' -type f -not -path '$tree/build/*' -print0`) { unlink $_ unless $is_there{$_} }

# What the compiler needs for any of the library's sources, but for what is in and out.
my ($compile, $link, @sources);
sub object_of { return "$objects/" . (shift =~ s{/}{.}gr) . '.o' }

# Whether a file was made after all that it was made from.
sub is_fresh {
  my $made = shift;
  my $time = (stat $made)[9] or return 0;
  return !grep { !-e || (stat)[9] > $time } split ' ', contents("$made.d") =~ s/^.*?:|\\\n//gr;
}

sub build_base {
  # Its own kind of build: neither sanitizers nor symbols.
  run(qw(cmake -G Ninja -DCMAKE_BUILD_TYPE=None -DQVA_TESTS=ON -DQVA_CALC=OFF -S), $tree, '-B', $build, '--log-level=WARNING');
  # What stands in the tests' place: tests of the seam and of the hosts alone do not reach the library, and the library's
  # objects are ours.
  my @left_out = map { quotemeta s{^\Q$build\E/}{}r . '.o' } grep { contents($_) !~ m{"\Q$tree\E/(?!tests/(?:platform|host|doctor)/)} }
    <$build/tests/CMakeFiles/qva_tests.dir/Unity/*.cxx>;
  my $left_out = join '|', 'libqva_library\.a', @left_out;
  run(qw(ninja --quiet -C), $build, '-j', max(1, int $jobs),
      grep { /\.(?:o|a|so)$/ && !m{^/|qva_library} && !/^(?:$left_out)$/ } split /\n/, `ninja -C $build -t inputs qva_tests`);
  my ($entry) = grep { $_->{file} =~ m{/qva_library\.dir/} } @{ decode_json(contents("$build/compile_commands.json")) };
  my @words = split ' ', $entry->{command};
  shift @words while $words[0] !~ m{c\+\+|g\+\+|clang};
  $compile = join ' ', map { $_ eq '-Werror' ? () : $_ } grep { !/^-(?:o|c)$|\.(?:o|cxx)$/ } @words;
  # What does not give a result is no program. The folder of a mutated header comes before our own.
  $compile .= ' -w -Werror=return-type';
  @sources = grep { !m{^server/.*/} } map { substr $_, 1 + length $tree } map { <$tree/$_/*.cpp> } @library;

  my $precompiled = "$objects/seam.h";
  my $included = join '', map { '#include "' . substr($_, 1 + length $tree) . "\"\n" } <$tree/platform/*.h>;
  $included .= <<'END';
extern int chosen_mutant;
extern bool mutants_reached[];
inline bool IsMutant(int number) {
  mutants_reached[number] = true;
  return number == chosen_mutant;
}
END
  write_file($precompiled, $included) unless -e $precompiled && contents($precompiled) eq $included;
  unless (is_fresh("$precompiled.gch")) {
    run("$compile -x c++-header -MMD -MF $precompiled.gch.d -o $precompiled.gch $precompiled");
  }
  $compile .= " -include $precompiled";
  for my $source (@sources) {
    my $object = object_of($source);
    run("$compile -MMD -MF $object.d -c -o $object $tree/$source")
      unless is_fresh($object) && (stat $object)[9] >= (stat "$precompiled.gch")[9];
  }
  write_file("$objects/chosen.cpp", <<"END");
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

int chosen_mutant = 0;
bool mutants_reached[$most_mutants + 1];

// Before anything else is initialised.
__attribute__((constructor(101))) static void Choose() {
  if (const char* number = std::getenv("QVA_MUTANT")) chosen_mutant = std::atoi(number);
}

// Writes which mutants were asked for before the tests and in each.
struct Reached : testing::EmptyTestEventListener {
  explicit Reached(const char* path) : file(path) {}
  void OnTestProgramStart(const testing::UnitTest&) override { Write(""); }
  void OnTestEnd(const testing::TestInfo& test) override {
    Write(std::string(test.test_suite_name()) + "." + test.name());
  }
  void Write(const std::string& name) {
    file << name << '\t';
    for (int number = 0; number <= $most_mutants; ++number) {
      if (std::exchange(mutants_reached[number], false)) file << number << ' ';
    }
    file << std::endl;
  }
  std::ofstream file;
};
const bool is_listening = [] {
  const char* path = std::getenv("QVA_REACHED");
  if (path) testing::UnitTest::GetInstance()->listeners().Append(new Reached(path));
  return path != nullptr;
}();
END
  run("$compile -c -o $objects/chosen.o $objects/chosen.cpp");
  my ($command) = (split /\n/, `ninja -C $build -t commands qva_tests`)[-1] =~ /&& (.*?) && :/ or die "no command links the tests\n";
  # Our objects come first, so that theirs are the inline functions of headers.
  ($link = $command) =~ s{-o \S+ +}{};
  $link =~ s{(?<=\s)(?:$left_out)(?=\s)}{}g;
}

# The sources that a file is part of.
sub sources_with {
  my $file = shift;
  return $file =~ /\.cpp$/ ? $file : grep { contents(object_of($_) . '.d') =~ m{\Q$tree/$file\E\b} } @sources;
}

# Compiles all functions that stand in some headers: what only tests call is in no source's object, and theirs has no mutant.
sub compile_headers {
  my ($folder, @headers) = @_;
  my @classes = map { contents("$tree/$_") =~ /^(?:class|struct) (\w+)[^;]*?\{/mg } @headers;
  write_file("$folder/headers.cpp", join '', "#include <type_traits>\n", (map { "#include \"$_\"\n" } @headers), <<'END',
template <class T>
void* Make() {
  if constexpr (std::is_default_constructible_v<T>) return new T;
  return nullptr;
}
namespace qva {
[[gnu::used]] void* (*const makers[])() = {
END
    (map { "&Make<$_>,\n" } @classes), "nullptr};\n}\n");
  return limited(120, "$compile -fkeep-inline-functions -iquote $folder/include -c -o $folder/headers.o $folder/headers.cpp", "$folder/headers.log") == 0;
}

# --- Many mutants in one program --------------------------------------------------------------------------------

# What a compiler's errors are about: whether mutants are wrong by themselves, or their places cannot hold them; and which,
# by their numbers. An error stands in one of them, or its notes name it; else it is about all in the function. Since one
# error leads to others, the surest kind is told alone; who is wrong is certain where nothing else is.
sub refused {
  my ($messages, $mutants) = @_;
  my (@errors, @before);
  for (split /^/, $messages) {
    if (/ error: /) {
      push @errors, { line => $_, all => join('', @before, $_) };
      @before = ();
    } elsif (@errors && / note: |^ /) {
      $errors[-1]{all} .= $_;
    } else {
      push @before, $_;
    }
  }
  my %refused;
  for my $error (@errors) {
    my ($file, $line, $message) = $error->{line} =~ /^([^:]+):(\d+):\d+: (.*)/ or next;
    my @named = $error->{all} =~ /\b(place(?:-\d+)+|mutant-\d+)(?=:)/g;
    # What was made to ask is no constant any more; its own place is only in the notes.
    my ($constant) = $message =~ /constant expression|constexpr|captured/ ? grep { /place/ && $_ ne $file } @named : ();
    my ($user) = $error->{all} =~ /^(mutant-\d+):.* required from here$/m;
    my ($name) = $constant // $user // (grep { /^(?:place|mutant)-/ } $file, @named);
    my @numbers = ($name // '') =~ /\d+/g;
    my $kind = $constant ? 'constant' : !$name ? 'function' : $name =~ /mutant/ && $message !~ /inconsistent types/ ? 'wrong' : 'place';
    if ($kind eq 'function' || $message =~ /return-type/) {
      $kind = 'function';
      $file = $mutants->[ $numbers[0] - 1 ]{file} if @numbers;
      my @inside = of_function_at($parsed_of{$file} // next, $line, grep { $_->{file} eq $file } @$mutants);
      my @dropped = grep { $_->{by} eq ';' } @inside;
      @numbers = map { $_->{number} } $message =~ /return-type/ && @dropped ? @dropped : @inside;
    }
    @{ $refused{$kind} }{ grep { @{ $mutants->[ $_ - 1 ]{places} } } @numbers } = ();
  }
  my ($kind) = grep { %{ $refused{$_} // {} } } qw(constant place function wrong) or return;
  return ($kind eq 'wrong', keys %{ $refused{$kind} });
}

# The numbers that the functions of a file ask for.
my %entry_of;

# Compiles the sources with as many of the mutants as can stand in them, and links them. Those have "places" then; of the
# others, some are "wrong" by themselves and do not compile, the rest are to be compiled each by itself.
sub build_together {
  my @candidates = @_;
  die "more than $most_mutants mutants\n" if @candidates + @files > $most_mutants;
  my $place = "$together/include";
  remove_tree($together);
  make_path($together);
  my (%of, %object);
  $candidates[$_]{number} = $_ + 1 for 0 .. $#candidates;
  push @{ $of{ $_->{file} } }, $_ for @candidates;
  find_places($parsed_of{$_}, @{ $of{$_} }) for keys %of;
  @entry_of{ keys %of } = @candidates + 1 .. @candidates + keys %of;
  my @changed = sort keys %of;
  my %to_compile;
  while (@changed) {
    for my $file (@changed) {
      make_path(dirname("$place/$file"));
      write_file("$place/$file", with_choices($parsed_of{$file}, $file, $entry_of{$file}, @{ $of{$file} }));
      $to_compile{$_} = 1 for sources_with($file);
    }
    my (%misplaced, %wrong);
    for my $source (sort keys %to_compile) {
      my $log = "$together/messages.log";
      $object{$source} = "$together/" . ($source =~ s{/}{.}gr) . '.o';
      my $from = $of{$source} ? "$place/$source" : "$tree/$source";
      if (system("LC_ALL=C $compile -fmax-errors=0 -fno-diagnostics-show-caret -iquote $place -c -o $object{$source} $from 2> $log") == 0) {
        delete $to_compile{$source};
        next;
      }
      my ($is_wrong, @numbers) = refused(contents($log), \@candidates) or die "$source does not compile with its mutants: $log\n";
      @{ $is_wrong ? \%wrong : \%misplaced }{@numbers} = ();
    }
    shift @{ $candidates[ $_ - 1 ]{places} } for keys %misplaced;
    @{ $candidates[ $_ - 1 ] }{qw(wrong places)} = (1, []) for keys %wrong;
    my %changed = map { $candidates[ $_ - 1 ]{file} => 1 } keys %misplaced, keys %wrong;
    @changed = sort keys %changed;
  }
  my @headers = grep { /\.h$/ } sort keys %of;
  compile_headers($together, @headers) or die contents("$together/headers.log") if @headers;
  link_and_name($together, \%object) or die contents("$together/link.log");
  my $count = grep { @{ $_->{places} } } @candidates;
  my $wrong = grep { $_->{wrong} } @candidates;
  printf "%d of them in one program, %d do not compile, %d by themselves\n", $count, $wrong, @candidates - $count - $wrong
    if @candidates;
}

# --- One mutant -------------------------------------------------------------------------------------------------

# Runs a command with limits; its status.
sub limited {
  my ($seconds, $command, $log) = @_;
  $log //= '/dev/null';
  # An endless loop ends by the processor's time, one that allocates by its memory, and what waits by the clock, which must
  # leave time for others on a busy machine.
  my $limits = "ulimit -c 0; ulimit -t $seconds; ulimit -v 8000000;";
  my $status = system('bash', '-c', "cd '$work' && $limits exec timeout --kill-after=5 " . 200 * $seconds . " $command > $log 2>&1 < /dev/null");
  # Who stops this program stops the tests, which tells nothing of the mutant.
  exit 1 if ($status & 127) == 15 || $status >> 8 == 143;
  return $status;
}

sub link_and_name {
  my ($folder, $replaced) = @_;  # object for source
  my @linked = ((grep { -e } "$folder/headers.o"), map { $replaced->{$_} // object_of($_) } @sources);
  return system("cd $build && " . ($link =~ s{^(\S+)}{$1 -fuse-ld=lld -Wl,--threads=1 -o $folder/qva_tests $objects/chosen.o @linked}r) . " > $folder/link.log 2>&1") == 0;
}

# The suites of a folder of sources.
sub suites_of {
  my $folder = shift;
  my %suites;
  for my $test (<$tree/tests/$folder/*.cpp>, $folder eq 'server' ? "$tree/tests/public_members_test.cpp" : ()) {
    $suites{$_} = 1 for contents($test) =~ /^TEST(?:_F|_P)?\((\w+),/mg;
  }
  return sort keys %suites;
}

# The tests with the seconds that each takes, and for each mutant those that come to its place. What is asked for once, as
# the program begins or in one test for all, concerns the tests that come to the file, or all.
my (%seconds_of, %tests_of);

# In which order the tests are run on a mutant: those of its folder, all others, and at last the few that take most of the
# time. Each stage has its tests and a limit in seconds.
my %is_own;
sub stages_of {
  my $mutant = shift;
  my $folder = dirname($mutant->{file});
  $is_own{$folder} //= do {
    my $suites = join '|', suites_of($folder);
    +{ map { $_ => 1 } grep { m{^(?:\w+/)?(?:$suites)\.} } keys %seconds_of };
  };
  my $number = @{ $mutant->{places} // [] } && !$mutant->{is_static} ? $mutant->{number} : 0;
  $number = $mutant->{is_own} && $mutant->{file} =~ /\.cpp$/ ? $entry_of{ $mutant->{file} } : 0 if !$number || $tests_of{$number}{''};
  my @tests = keys %{ $number && !$tests_of{$number}{''} ? $tests_of{$number} // {} : \%seconds_of };
  my $all = sum(values %seconds_of);
  # What one test alone comes to may be made by the first that needs it, once for all.
  my @stages = @tests == 1 ? [@tests] : ();
  my $before = @stages;
  for my $test ($before ? keys %seconds_of : @tests) {
    my $seconds = $seconds_of{$test};
    my $stage = $seconds > $all / 200 ? 3 : $seconds > $all / 2000 ? 2 : !$is_own{$folder}{$test};
    push @{ $stages[ $before + $stage ] }, $test;
  }
  return map { [ $_, 3 + int 4 * sum(@seconds_of{@$_}) ] } grep { $_ } @stages;
}

sub run_tests {
  my ($folder, $program, $filter, $limit, $log) = @_;
  local $ENV{TMPDIR} = "$folder/tmp";
  make_path($ENV{TMPDIR});
  write_file("$folder/flags", "--gtest_fail_fast\n--gtest_filter=$filter\n");
  my $status = limited($limit, "$program/qva_tests --gtest_flagfile=$folder/flags", $log);
  remove_tree($ENV{TMPDIR});
  return $status == 0;
}

# The tests with none of the mutants: they must pass, and their time says how much one may take.
sub measure {
  my ($log, $reached) = map { "$together/$_" } qw(tests.log reached.tsv);
  local $ENV{QVA_REACHED} = $reached;
  my $before = (times)[2] + (times)[3];
  run_tests($together, $together, '*', 600, $log) or die "The tests do not pass as they are: $log\n";
  my $seconds = (times)[2] + (times)[3] - $before;
  %seconds_of = contents($log) =~ /^\[       OK \] (\S+?)(?:, where .*)? \((\d+) ms\)$/mg;
  my $all = sum(values %seconds_of);
  $_ *= $seconds / $all for values %seconds_of;
  for (split /\n/, contents($reached)) {
    my ($test, $numbers) = split /\t/;
    $tests_of{$_}{$test} = 1 for split / /, $numbers // '';
  }
}

# What becomes of a mutant in a program.
sub fate {
  my ($mutant, $folder, $program) = @_;
  for (stages_of($mutant)) {
    my ($tests, $limit) = @$_;
    return 'killed' unless run_tests($folder, $program, join(':', @$tests), $limit);
  }
  return 'survived';
}

sub outcome {
  my ($mutant, $folder) = @_;
  my $file = $mutant->{file};
  if ($with) {
    write_file("$tree/$file", $mutant->{text});
    my $status = system('bash', '-c', "cd '$tree' && { $with; } > '$work/with.log' 2>&1 < /dev/null") >> 8;
    write_file("$tree/$file", $text_of{$file});
    return $status == 0 ? 'survived' : $status == 125 ? 'not compiled' : 'killed';
  }
  if (@{ $mutant->{places} // [] }) {
    local $ENV{QVA_MUTANT} = $mutant->{number};
    return fate($mutant, $folder, $together);
  }
  return 'not compiled' if $mutant->{wrong};
  my $place = "$folder/include";
  remove_tree($place);
  make_path(dirname("$place/$file"));
  write_file("$place/$file", $mutant->{text});
  my %replaced;
  for my $source (sources_with($file)) {
    $replaced{$source} = "$folder/" . ($source =~ s{/}{.}gr) . '.o';
    my $from = $source eq $file ? "$place/$file" : "$tree/$source";
    my $options = $source eq $file ? '' : "-iquote $place";
    return 'not compiled' if limited(60, "$compile $options -c -o $replaced{$source} $from") != 0;
  }
  unlink "$folder/headers.o";
  return 'not compiled' if $file =~ /\.h$/ && !compile_headers($folder, $file);
  link_and_name($folder, \%replaced) or return 'not compiled';
  return fate($mutant, $folder, $folder);
}

# --- All of them ------------------------------------------------------------------------------------------------

my $results = "$work/results.tsv";
my %known;
sub read_results {
  return unless -e $results;
  for (split /\n/, contents($results)) {
    my ($key, $outcome, $state) = split /\t/;
    $known{$key} = $outcome if $outcome ne 'survived' || $state eq $state_of_all;
  }
}
read_results();
delete @known{ map { $_->{key} } @mutants } if $anew || $with || $only_accepted;
my @waiting = grep { !$known{ $_->{key} } && ($only_accepted || !$_->{accepted}) } @mutants;
printf "%d mutants, %d of them to be run\n", scalar @mutants, scalar @waiting;

if (@waiting) {
  unless ($with) {
    build_base();
    build_together($alone ? () : @waiting);
    measure();
  }
  # Who is free takes the next number; all of them fit into the pipe.
  pipe my $numbers, my $queue or die "pipe: $!\n";
  fcntl $queue, 1031, 1 << 20;  # F_SETPIPE_SZ
  syswrite $queue, pack 'N*', 0 .. $#waiting;
  close $queue;
  my @workers;
  for my $worker (1 .. ($with ? 1 : ceil($jobs))) {
    my $rest = $worker > $jobs ? 1 / ($jobs - int $jobs) - 1 : 0;
    defined(my $child = fork) or die "fork: $!\n";
    push @workers, $child;
    next if $child;
    my $folder = "$work/worker$worker";
    make_path($folder);
    open my $out, '>>', $results or die "$results: $!\n";
    while (sysread($numbers, my $number, 4)) {
      my $mutant = $waiting[ unpack 'N', $number ];
      my $begin = time;
      my $outcome = outcome($mutant, $folder);
      flock $out, LOCK_EX;
      syswrite $out, join("\t", $mutant->{key}, $outcome, $state_of_all, sprintf('%.1f', time - $begin), "$mutant->{file}:$mutant->{line}") . "\n";
      flock $out, LOCK_UN;
      print "\n" . difference($mutant) if $outcome eq 'survived';
      sleep $rest * (time - $begin) if $rest;
    }
    exit 0;
  }
  $SIG{INT} = $SIG{TERM} = sub { kill 'TERM', @workers; exit 1 };
  waitpid $_, 0 for @workers;
  read_results();
}

my (%count, $survivors);
for my $mutant (@mutants) {
  my $outcome = $known{ $mutant->{key} } // ($mutant->{accepted} ? 'accepted' : 'not run');
  $outcome = 'accepted' if $mutant->{accepted} && $outcome eq 'survived';
  $survivors++ if $outcome eq 'survived';
  $count{ dirname($mutant->{file}) }{$_}++ for 'made', $outcome;
}
my @columns = ('made', 'not compiled', 'killed', 'survived', 'accepted', 'not run');
printf "\n%-12s" . ' %12s' x @columns . "\n", 'folder', @columns;
printf "%-12s" . ' %12d' x @columns . "\n", $_, map { $_ // 0 } @{ $count{$_} }{@columns} for sort keys %count;
print "\nNo mutant is any more:\n", map { s/^(.*)\n(.*)\n(.*)$/$1\n- $2\n+ $3\n/r } @stale if @stale;
exit($survivors || @stale ? 1 : 0);
