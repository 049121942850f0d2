#!/usr/bin/env perl
# Runs clang-tidy (.clang-tidy) over all sources but those of tests and benchmarks, whose test library's macros it does not
# understand; the compiler's warnings hold these.
#   tools/tidy.pl <build folder>...   needs the compile_commands.json of each build, and the headers that it makes;
#                                     a source is checked as the first build that has it compiles it
# Prints the findings; exit status 1 when there are any. CLANG_TIDY names another program.
#
# The standard headers cost more than our own sources, so that many sources of one target are checked as one unit, with
# what any of them is compiled with. Sources whose own names would meet there stand in different units; where it happens
# still, the unit is checked by halves.
# What was found clean is not checked again, in any clone, until it, a header, the profile or the program changes.
use strict;
use warnings;
use Cwd qw(getcwd);
use Digest::SHA qw(sha256_hex);
use File::Basename qw(dirname);
use File::Path qw(make_path);
use JSON::PP qw(decode_json encode_json);
use List::Util qw(uniq);

chdir dirname(dirname(__FILE__)) or die "$!\n";
my $root = getcwd;
my %counts;
m{^([^/]+)/.*\.cpp$} and $counts{$1}++ for split /\n/, `git ls-files`;
my @left_out = qw(tests bench);
print "not checked: $counts{$_} sources of $_\n" for @left_out;
delete @counts{@left_out};
my $folders = join '|', sort keys %counts;
my $unit_size = 64;
my $work = "$root/build/lint";
# What was found clean, for all clones.
my $clean_ones = ($ENV{XDG_CACHE_HOME} || "$ENV{HOME}/.cache") . '/qva-varnholt/clang-tidy';
my $tidy = $ENV{CLANG_TIDY} // 'clang-tidy';
my $jobs = `nproc` + 0;
# Our objects may be in use until the process is gone, and a DLL's destructors run when it is unloaded: what lives as long
# as the module is a constant, or made on first use and never destroyed.
my @warnings = qw(-Wno-unknown-warning-option -Wexit-time-destructors -Wglobal-constructors -Wreserved-identifier);
@ARGV or die "usage: tidy.pl <build folder>...\n";

sub contents {
  my $file = shift;
  open my $in, '<:raw', $file or die "$file: $!\n";
  local $/;
  return <$in> // '';
}

sub put {
  my ($file, $text) = @_;
  open my $out, '>:raw', $file or die "$file: $!\n";
  print $out $text;
  close $out or die "$file: $!\n";
}

# clang's words for a cross-compiler: its target, and where its C++ library is.
my %cross;
sub cross_arguments {
  my $compiler = shift;
  return $cross{$compiler} //= do {
    my $target = `$compiler -dumpmachine`;
    chomp $target;
    my ($folders) = `$compiler -E -v -x c++ /dev/null 2>&1` =~ /search starts here:\n(.*?)End of search list/s;
    my @library = grep { m{/c\+\+} } split ' ', $folders;
    $target =~ /mingw/ ? [ "--target=$target", map { "-cxx-isystem$_" } @library ] : [];
  };
}

# The compiler of a command, and the arguments that clang needs: neither the build's output nor its precompiled headers.
sub arguments {
  my $entry = shift;
  my @words = map { s/\\"/"/gr } split ' ', $entry->{command};
  shift @words while $words[0] =~ m{/(ccache|cmake|env)$|^-E$|^env$|^\w+=};
  my $compiler = shift @words;
  my @kept;
  while (defined(my $word = shift @words)) {
    if ($word =~ /^-(o|c|include|MF|MT)$/) { shift @words }
    elsif ($word =~ /^-isystem$/) { push @kept, $word . shift @words }
    elsif ($word !~ /^-(Winvalid-pch|M?MD?$|D\w+_EXPORTS$|f|O|g\d?$)/) { push @kept, $word }
  }
  return ($compiler, @kept);
}

# What a source declares for itself alone: types, constants and functions of its nameless namespace, and a program's main.
sub own_names {
  my $text = shift;
  my %names;
  $names{main} = 1 if $text =~ /^int main\(/m;
  for ($text =~ /^namespace \{\n(.*?)^\}  \/\/ namespace$/msg) {
    $names{$_} = 1 for /^(?|(?:struct|class|enum class) (\w+)|using (\w+) =)/mg,
                       /^(?!using|namespace)[a-z].*?\b(\w+)(?:\[\w*\])?(?: = |\{|;)/mg, /^[A-Za-z].*?\b(\w+)\(/mg;
  }
  return \%names;
}

sub opens_namespace {
  return contents(shift->{file}) =~ /^using namespace/m;
}

# The commands of a build, one for each source: those that are compiled some at a time stand in a file that includes them.
sub commands {
  return map {
    my $entry = $_;
    $entry->{file} =~ m{/Unity/\w+\.cxx$}
      ? map { { %$entry, file => $_ } } contents($entry->{file}) =~ /^#include "(.*)"/mg
      : $entry
  } @{ decode_json(contents(shift . '/compile_commands.json')) };
}

# Units: each has "group", "arguments", "sources" and "names". The tools keep their names to themselves, away from the product.
my (%seen, @units);
for my $build (@ARGV) {
  my @entries = sort { $a->{file} cmp $b->{file} } commands($build);
  # Those that open a namespace to all that follows come last.
  for my $entry ((grep { !opens_namespace($_) } @entries), grep { opens_namespace($_) } @entries) {
    my ($source) = $entry->{file} =~ m{^\Q$root\E/((?:$folders)/.*\.cpp)$} or next;
    next if $seen{$source}++;
    my $names = own_names(contents($source));
    my ($compiler, @arguments) = arguments($entry);
    my $group = $compiler . ($source =~ m{^tools/} ? ' tools' : '');
    my ($unit) = grep {
      my $other = $_;
      $other->{group} eq $group && @{ $other->{sources} } < $unit_size && !grep { $other->{names}{$_} } keys %$names
    } @units;
    push @units, $unit = { group => $group, arguments => cross_arguments($compiler), sources => [], names => {} } unless $unit;
    $unit->{arguments} = [ uniq(@{ $unit->{arguments} }, @arguments) ];
    push @{ $unit->{sources} }, $source;
    $unit->{names}{$_} = 1 for keys %$names;
  }
}
my @missing = grep { m{^(?:$folders)/} && !$seen{$_} } split /\n/, `git ls-files '*.cpp'`;
print "in none of the builds: $_\n" for @missing;

# What a result depends on besides the unit's own sources.
my $common = sha256_hex(join "\0", `$tidy --version`, map { contents($_) } qw(.clang-tidy tools/tidy.pl),
                        grep { -e } split /\n/, `git ls-files --cached --others --exclude-standard '*.h'`);
make_path($work, $clean_ones);

# Runs clang-tidy over one source file; returns its output and whether it was content.
sub check {
  my ($file, $arguments) = @_;
  my $folder = "$work/" . sha256_hex($file);
  make_path($folder);
  put("$folder/compile_commands.json", encode_json([ { directory => $root, file => $file,
      arguments => [ 'clang++', @$arguments, @warnings, '-c', $file ] } ]));
  my $output = `$tidy --quiet -p $folder --header-filter='^$root/($folders)/' $file 2>/dev/null`;
  return ($output, $? == 0);
}

# The same over sources that may stand together.
sub check_together {
  my ($arguments, @sources) = @_;
  my $file = "$work/" . sha256_hex(join "\0", @sources) . '.cpp';
  put($file, join '', map { "#include \"$root/$_\"\n" } @sources);
  my ($output, $clean) = check($file, $arguments);
  return ($output, $clean) if @sources == 1 || $output !~ /\[clang-diagnostic-error/;
  printf "checked by halves: %d sources from %s on\n", scalar @sources, $sources[0];
  my @half = splice @sources, @sources / 2;
  my @results = map { [ check_together($arguments, @$_) ] } \@sources, \@half;
  return (join('', map { $_->[0] } @results), $results[0][1] && $results[1][1]);
}

# Checks one unit, and says what was found.
sub check_unit {
  my $unit = shift;
  my ($output, $clean) = check_together($unit->{arguments}, @{ $unit->{sources} });
  put("$clean_ones/$unit->{hash}", '') if $clean;
  print $output =~ s/^\Q$root\E\///mgr;
  return $clean;
}

for (@units) {
  my @arguments = map { s/\Q$root\E//gr } @{ $_->{arguments} };
  $_->{hash} = sha256_hex(join "\0", $common, @arguments, map { ($_, contents($_)) } @{ $_->{sources} });
}
# What no clone has asked for in a month is of the past.
unlink grep { -M > 30 } glob "$clean_ones/*";
utime undef, undef, grep { -e } map { "$clean_ones/$_->{hash}" } @units;
my @waiting = sort { @{ $b->{sources} } <=> @{ $a->{sources} } } grep { !-e "$clean_ones/$_->{hash}" } @units;
printf "%d sources in %d units, %d of them to be checked\n", scalar keys %seen, scalar @units, scalar @waiting;

my ($running, $found) = (0, scalar @missing);
$| = 1;
while (@waiting || $running) {
  if (@waiting && $running < $jobs) {
    my $unit = shift @waiting;
    defined(my $child = fork) or die "fork: $!\n";
    exit(check_unit($unit) ? 0 : 1) unless $child;
    $running++;
  } else {
    wait;
    $running--;
    $found++ if $?;
  }
}
exit($found ? 1 : 0);
