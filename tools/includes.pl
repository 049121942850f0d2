#!/usr/bin/env perl
# Which folder includes which: holds all #include "..." of the product against the table below.
#   tools/includes.pl    prints what differs; exit status 1 when something does
use strict;
use warnings;
use File::Basename qw(dirname);

chdir dirname(dirname(__FILE__)) or die "$!\n";

# A line names a folder and what it may include besides itself, all of which stands above it: so there is no circle.
my (%allowed, %used, $found);
while (<DATA>) {
  my ($folder, @others) = split;
  for (grep { !$allowed{$_} } @others) { $found = 1; print "the table: $folder stands before $_\n" }
  $allowed{$folder} = { map { $_ => 1 } @others };
}

# Tests and benchmarks include what they try.
for my $source (grep { m{/.*\.(h|cpp)$} && !m{^(tests|bench)/} } split /\n/, `git ls-files`) {
  my $folder = dirname($source);
  if (!$allowed{$folder}) { $allowed{$folder} = {}; $found = 1; print "the table: $folder has no line\n" }
  open my $in, '<', $source or die "$source: $!\n";
  while (<$in>) {
    my ($header) = /^#include "(.*)"/ or next;
    my $other = dirname($header);
    next if $other eq $folder || $other eq '.';
    $used{$folder}{$other} = 1;
    next if $allowed{$folder}{$other};
    $found = 1;
    print "$source:$.: $folder does not include $other\n";
  }
}
for my $folder (sort keys %allowed) {
  for (grep { !$used{$folder}{$_} } sort keys %{ $allowed{$folder} }) { $found = 1; print "the table: $folder needs no $_\n" }
}
exit($found ? 1 : 0);
__DATA__
platform
platform/filesystem     platform
platform/forms          platform platform/filesystem
platform/lithuanian     platform
platform/recordset      platform
platform/commandbars    platform
platform/memory         platform platform/filesystem platform/forms platform/lithuanian platform/recordset
platform/memory/excel   platform platform/commandbars
platform/posix          platform platform/filesystem platform/forms platform/lithuanian platform/recordset
platform/calc           platform platform/posix
platform/calc/forms     platform platform/filesystem platform/forms platform/lithuanian platform/calc
platform/calc/toolbars  platform platform/commandbars platform/calc
platform/windows        platform platform/filesystem platform/recordset
platform/windows/forms  platform platform/forms platform/windows
platform/windows/services  platform platform/forms platform/windows platform/windows/forms
global                  platform
period                  platform global
storage                 platform global
reports                 platform global period storage
excelui                 platform global
host                    platform platform/filesystem
host/posix              platform/filesystem platform/posix host
host/windows            platform platform/windows host
server                  platform platform/filesystem global period storage reports excelui
server/calc             platform platform/filesystem platform/posix platform/calc platform/calc/forms platform/calc/toolbars period storage host server
server/com              platform platform/windows platform/windows/services global server
server/demo             platform platform/filesystem platform/windows platform/windows/services host server/com
tools/doctor            platform
tools/doctor/windows    platform platform/filesystem platform/windows platform/windows/services storage server server/com server/demo tools/doctor
tools/guide             platform server tools/doctor
tools/report-runner     platform platform/filesystem platform/posix host server server/calc
