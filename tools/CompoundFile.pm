# Compound files, the folders and files in one file that Windows calls OLE storages: written as [MS-CFB] has it, version 3.
package CompoundFile;
use strict;
use warnings;
use Encode qw(encode);
use Exporter qw(import);
our @EXPORT = qw(compound_file);

use constant {
  SECTOR => 512,
  SMALL_SECTOR => 64,
  SMALL_BELOW => 4096,    # streams below that length share the small sectors
  FREE => 0xFFFFFFFF,
  END_OF_CHAIN => 0xFFFFFFFE,
  OWN => 0xFFFFFFFD,      # a sector of the table itself
  NONE => 0xFFFFFFFF,
  STORAGE => 1, STREAM => 2, ROOT => 5,
  RED => 0, BLACK => 1,
};

# The bytes of a file that holds a tree of storages: { name => bytes of a stream, or the same again }.
sub compound_file {
  my ($tree) = @_;
  my @entries;
  _add_storage(\@entries, 'Root Entry', ROOT, $tree);

  my (@table, @small_table);
  my ($sectors, $small_sectors) = ('', '');
  my $store = sub { _store(\@table, \$sectors, SECTOR, $_[0]) };
  for my $entry (grep { $_->{type} == STREAM } @entries) {
    $entry->{size} = length $entry->{bytes};
    $entry->{start} = $entry->{size} >= SMALL_BELOW
      ? $store->($entry->{bytes})
      : _store(\@small_table, \$small_sectors, SMALL_SECTOR, $entry->{bytes});
  }
  $entries[0]{size} = length $small_sectors;
  $entries[0]{start} = $store->($small_sectors);
  my $small_table_sectors = _sectors(@small_table * 4, SECTOR);
  my $small_table_start = $store->(pack 'V*', _filled(\@small_table));
  my $directory_start = $store->(join '', map { _directory_entry($_) } _full_sector(@entries));

  # The table of sectors has entries for its own sectors, too.
  my $own = 1;
  $own++ while _sectors((@table + $own) * 4, SECTOR) > $own;
  die "too long for a compound file\n" if $own > 109;
  my @own = map { @table + $_ } 0 .. $own - 1;
  push @table, (OWN) x $own;
  my $header = pack 'a8 x16 v v v v v x6 V V V V V V V V V V109',
    "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 0x3E, 3, 0xFFFE, 9, 6,
    0, $own, $directory_start, 0, SMALL_BELOW, $small_table_start, $small_table_sectors, END_OF_CHAIN, 0,
    @own, (FREE) x (109 - $own);
  return $header . $sectors . pack 'V*', _filled(\@table);
}

sub _sectors { my ($length, $size) = @_; return int(($length + $size - 1) / $size) }

# Appends bytes to sectors of that size as one chain, and gives its first sector.
sub _store {
  my ($table, $sectors, $size, $bytes) = @_;
  my $count = _sectors(length $bytes, $size) or return END_OF_CHAIN;
  my $start = @$table;
  push @$table, map { $start + $_ } 1 .. $count - 1;
  push @$table, END_OF_CHAIN;
  $$sectors .= $bytes . "\0" x ($count * $size - length $bytes);
  return $start;
}

# A table whose last sector is full.
sub _filled {
  my ($table) = @_;
  return @$table, (FREE) x (-@$table % (SECTOR / 4));
}

# Adds a storage and all that is in it, and gives its number.
sub _add_storage {
  my ($entries, $name, $type, $tree) = @_;
  my $number = push(@$entries, { name => $name, type => $type, start => 0 }) - 1;
  my @children;
  for my $child (sort { length $a <=> length $b || uc $a cmp uc $b } keys %$tree) {
    my $content = $tree->{$child};
    push @children, ref $content
      ? _add_storage($entries, $child, STORAGE, $content)
      : push(@$entries, { name => $child, type => STREAM, bytes => $content }) - 1;
  }
  my $levels_below = 0;
  $levels_below++ while 2 ** ($levels_below + 1) <= @children;
  my $top = $entries->[$number]{child} = _add_siblings($entries, $levels_below, @children);
  $entries->[$top]{is_red} = 0 unless $top == NONE;
  return $number;
}

# Makes a tree of a storage's children, which come in their order; gives the number of the middle one. Where only the
# lowest of its levels is red, a tree in balance is a red-black one.
sub _add_siblings {
  my ($entries, $levels_below, @children) = @_;
  return NONE unless @children;
  my $middle = int(@children / 2);
  my $entry = $entries->[$children[$middle]];
  $entry->{left} = _add_siblings($entries, $levels_below - 1, @children[0 .. $middle - 1]);
  $entry->{right} = _add_siblings($entries, $levels_below - 1, @children[$middle + 1 .. $#children]);
  $entry->{is_red} = $levels_below == 0;
  return $children[$middle];
}

# Entries up to the end of a sector of the directory.
sub _full_sector { return @_, (undef) x (-@_ % 4) }

sub _directory_entry {
  my ($entry) = @_;
  return pack 'x68 V3 x48', NONE, NONE, NONE unless $entry;
  my $name = encode('UTF-16LE', $entry->{name}, Encode::FB_CROAK);
  die "the name $entry->{name} is too long\n" if length $name > 62;
  return pack 'a64 v C C V V V x16 x4 x16 V V x4', $name, length($name) + 2, $entry->{type},
    $entry->{is_red} ? RED : BLACK, $entry->{left} // NONE, $entry->{right} // NONE, $entry->{child} // NONE,
    $entry->{start}, $entry->{size} // 0;
}

1;
