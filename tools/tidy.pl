#!/usr/bin/env perl
# Runs clang-tidy (.clang-tidy) over the library, the seam, the hosts and the front doors.
#   tools/tidy.pl <build folder>...   needs the compile_commands.json of each build, and the headers that it makes;
#                                     a source is checked as the first build that has it compiles it
# Prints the findings; exit status 1 when there are any. CLANG_TIDY names another program.
#
# The standard headers cost more than our own sources, so that many sources are checked as one unit. Sources whose
# own names would meet there stand in different units; where it happens still, each of the unit is checked alone.
# What was found clean is not checked again, in any clone, until it, a header, the profile or the program changes.
use strict;
use warnings;
use Cwd qw(getcwd);
use Digest::SHA qw(sha256_hex);
use File::Basename qw(dirname);
use File::Path qw(make_path);
use JSON::PP qw(decode_json encode_json);

chdir dirname(dirname(__FILE__)) or die "$!\n";
my $root = getcwd;
my $folders = 'global|period|reports|storage|excelui|platform|host|server|tools';
my $unit_size = 48;
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

# The arguments of a compile command that clang needs: neither the build's output nor its precompiled headers.
sub arguments {
  my $entry = shift;
  my @words = map { s/\\"/"/gr } split ' ', $entry->{command};
  shift @words while $words[0] =~ m{/(ccache|cmake|env)$|^-E$|^env$|^\w+=};
  my $compiler = shift @words;
  my @kept = @{ cross_arguments($compiler) };
  while (defined(my $word = shift @words)) {
    if ($word =~ /^-(o|c|include|MF|MT)$/) { shift @words }
    elsif ($word !~ /^-(Winvalid-pch|M?MD?$|D\w+_EXPORTS$|f|O|g\d?$)/) { push @kept, $word }
  }
  return join "\n", @kept;
}

# What a source declares for itself alone: types, constants and functions of its nameless namespace.
sub own_names {
  my %names;
  for (shift =~ /^namespace \{\n(.*?)^\}  \/\/ namespace$/msg) {
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

# Units: each has "arguments", "sources" and "names".
my (%seen, @units);
for my $build (@ARGV) {
  my @entries = sort { $a->{file} cmp $b->{file} } commands($build);
  # Those that open a namespace to all that follows come last.
  for my $entry ((grep { !opens_namespace($_) } @entries), grep { opens_namespace($_) } @entries) {
    my ($source) = $entry->{file} =~ m{^\Q$root\E/((?:$folders)/.*\.cpp)$} or next;
    next if $seen{$source}++;
    my $names = own_names(contents($source));
    my $arguments = arguments($entry);
    my ($unit) = grep {
      my $other = $_;
      $other->{arguments} eq $arguments && @{ $other->{sources} } < $unit_size && !grep { $other->{names}{$_} } keys %$names
    } @units;
    push @units, $unit = { arguments => $arguments, sources => [], names => {} } unless $unit;
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
      arguments => [ 'clang++', split(/\n/, $arguments), @warnings, '-c', $file ] } ]));
  my $output = `$tidy --quiet -p $folder --header-filter='^$root/($folders)/' $file 2>/dev/null`;
  return ($output, $? == 0);
}

# Checks one unit, and says what was found.
sub check_unit {
  my $unit = shift;
  my $file = "$work/$unit->{hash}.cpp";
  put($file, join '', map { "#include \"$root/$_\"\n" } @{ $unit->{sources} });
  my ($output, $clean) = check($file, $unit->{arguments});
  if (!$clean && $output =~ /\[clang-diagnostic-error/) {
    ($output, $clean) = ('', 1);
    for (@{ $unit->{sources} }) {
      my ($one, $content) = check("$root/$_", $unit->{arguments});
      $output .= $one;
      $clean &&= $content;
    }
  }
  put("$clean_ones/$unit->{hash}", '') if $clean;
  print $output =~ s/^\Q$root\E\///mgr;
  return $clean;
}

for (@units) {
  my $arguments = $_->{arguments} =~ s/\Q$root\E//gr;
  $_->{hash} = sha256_hex(join "\0", $common, $arguments, map { ($_, contents($_)) } @{ $_->{sources} });
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
