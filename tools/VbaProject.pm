# A workbook's project of VBA macros as Excel stores it, written by [MS-OVBA]: source text alone, which Excel compiles when it
# opens the workbook.
package VbaProject;
use strict;
use warnings;
use utf8;
use CompoundFile;
use Digest::MD5 qw(md5);
use Encode qw(encode);
use Exporter qw(import);
our @EXPORT = qw(vba_project);

use constant CODE_PAGE => 1257;    # Baltic
use constant {
  WORKBOOK_CLASS => '00020819-0000-0000-C000-000000000046',
  WORKSHEET_CLASS => '00020820-0000-0000-C000-000000000046',
};
my @REFERENCES = (
  stdole => '*\G{00020430-0000-0000-C000-000000000046}#2.0#0#C:\Windows\System32\stdole2.tlb#OLE Automation',
  Office => '*\G{2DF8D04C-5BFA-101B-BDE5-00AA0044DE52}#2.0#0#'
    . 'C:\Program Files\Common Files\Microsoft Shared\OFFICE16\MSO.DLL#Microsoft Office 16.0 Object Library',
);

# The bytes of the project, a compound file: of its name, the code names of workbook and sheets in their order, and its
# modules as [name, source].
sub vba_project {
  my ($project, $documents, $modules) = @_;
  my @modules = (
    map({ { name => $documents->[$_], is_document => 1, code => _document_head($_ ? WORKSHEET_CLASS : WORKBOOK_CLASS) } }
      0 .. $#$documents),
    map({ { name => $_->[0], code => $_->[1] } } @$modules));
  my %streams = (dir => _compressed(_directory($project, @modules)),
    _VBA_PROJECT => pack('v v C v', 0x61CC, 0xFFFF, 0, 0));    # no compiled code
  for my $module (@modules) {
    die "two modules $module->{name}\n" if $streams{$module->{name}};
    my $source = qq(Attribute VB_Name = "$module->{name}"\n$module->{code}) =~ s/\n/\r\n/gr;
    $streams{$module->{name}} = _compressed(_ansi($source));
  }
  return compound_file({ VBA => \%streams, PROJECT => _project($project, @modules), PROJECTwm => _names(@modules) });
}

sub _ansi { return encode('cp' . CODE_PAGE, $_[0], sub { die sprintf "no U+%04X in code page %d\n", $_[0], CODE_PAGE }) }
sub _unicode { return encode('UTF-16LE', $_[0]) }

sub _document_head {
  my ($class) = @_;
  return <<END;
Attribute VB_Base = "0{$class}"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = True
Attribute VB_TemplateDerived = False
Attribute VB_Customizable = True
END
}

# ---- The stream "dir" (2.3.4.2)

sub _record { my ($id, $content) = @_; return pack 'v V/a', $id, $content }

# A text in the project's code page and in Unicode.
sub _text { my ($id, $unicode_id, $text) = @_; return _record($id, _ansi($text)) . _record($unicode_id, _unicode($text)) }

sub _directory {
  my ($project, @modules) = @_;
  my $dir = _record(0x0001, pack 'V', 1)          # 32-bit Windows
    . _record(0x0002, pack 'V', 0x0409)           # language of the project, and of its calls
    . _record(0x0014, pack 'V', 0x0409)
    . _record(0x0003, pack 'v', CODE_PAGE)
    . _record(0x0004, _ansi($project))
    . _text(0x0005, 0x0040, '')                   # description
    . _text(0x0006, 0x003D, '')                   # help file, twice as it is, not in Unicode
    . _record(0x0007, pack 'V', 0)                # its page
    . _record(0x0008, pack 'V', 0)                # flags
    . pack('v V V v', 0x0009, 4, 1, 1)            # version; its second half is not counted
    . _text(0x000C, 0x003C, '');                  # constants
  for (my $i = 0; $i < @REFERENCES; $i += 2) {
    $dir .= _text(0x0016, 0x003E, $REFERENCES[$i])
      . _record(0x000D, pack 'V/a V v', _ansi($REFERENCES[$i + 1]), 0, 0);
  }
  $dir .= _record(0x000F, pack 'v', scalar @modules) . _record(0x0013, pack 'v', 0xFFFF);
  for my $module (@modules) {
    $dir .= _text(0x0019, 0x0047, $module->{name})
      . _text(0x001A, 0x0032, $module->{name})    # its stream
      . _text(0x001C, 0x0048, '')                 # description
      . _record(0x0031, pack 'V', 0)              # where the source begins in the stream
      . _record(0x001E, pack 'V', 0)              # help page
      . _record(0x002C, pack 'v', 0xFFFF)
      . _record($module->{is_document} ? 0x0022 : 0x0021, '')
      . _record(0x002B, '');
  }
  return $dir . _record(0x0010, '');
}

# ---- The streams "PROJECT" (2.3.1) and "PROJECTwm" (2.3.3)

sub _project {
  my ($project, @modules) = @_;
  my $id = sprintf '{%08X-%04X-%04X-%04X-%04X%08X}', unpack 'N n n n n N', md5(encode('UTF-8', $project));
  my $text = qq(ID="$id"\n)
    . join('', map { $_->{is_document} ? "Document=$_->{name}/&H00000000\n" : "Module=$_->{name}\n" } @modules)
    . qq(Name="$project"\nHelpContextID="0"\nVersionCompatible32="393222000"\n)
    . 'CMG="' . _encrypted($id, pack 'V', 0) . qq("\n)     # not protected
    . 'DPB="' . _encrypted($id, "\0") . qq("\n)            # no password
    . 'GC="' . _encrypted($id, "\xFF") . qq("\n)           # visible
    . "\n[Host Extender Info]\n&H00000001={3832D640-CF90-11CF-8E43-00A0C911005A};VBE;&H00000000\n"
    . "\n[Workspace]\n" . join('', map { "$_->{name}=0, 0, 0, 0, C\n" } @modules);
  return _ansi($text =~ s/\n/\r\n/gr);
}

sub _names {
  return join('', map { _ansi($_->{name}) . "\0" . _unicode($_->{name}) . "\0\0" } @_) . "\0\0";
}

# Data in the project's cipher (2.4.3), which hides nothing: the key is the project's ID. Where the format wants chance, the
# same bytes come each time, so that a workbook does not differ from one build to the next.
sub _encrypted {
  my ($id, $data) = @_;
  my $seed = 0x5A;
  my $key = unpack '%8C*', $id;
  my @bytes = ($seed, $seed ^ 2, $seed ^ $key);
  my $plain = $key;
  for my $byte ((0x7F) x (($seed & 6) / 2), unpack 'C*', pack 'V/a', $data) {
    push @bytes, $byte ^ (($bytes[-2] + $plain) & 0xFF);
    $plain = $byte;
  }
  return join '', map { sprintf '%02X', $_ } @bytes;
}

# ---- Compression (2.4.1)

sub _compressed {
  my ($bytes) = @_;
  my $container = "\x01";
  for (my $start = 0; $start < length $bytes; $start += 4096) {
    my $chunk = _compressed_chunk(substr $bytes, $start, 4096);
    die "a chunk does not compress\n" if length $chunk > 4096;
    $container .= pack('v', 0xB000 | length($chunk) - 1) . $chunk;
  }
  return $container;
}

# Eight tokens follow a byte that tells which of them are copies; a copy repeats what stands before, any other is a byte.
sub _compressed_chunk {
  my ($chunk) = @_;
  my ($compressed, $flags, $tokens, $count) = ('', 0, '', 0);
  for (my $at = 0; $at < length $chunk;) {
    my $length_bits = 12;
    $length_bits-- while 2 ** (16 - $length_bits) < $at;
    my $limit = (1 << $length_bits) + 2;
    $limit = length($chunk) - $at if $limit > length($chunk) - $at;
    my ($length, $from) = (2, -1);
    while ($at && $length < $limit) {
      my $found = rindex $chunk, substr($chunk, $at, $length + 1), $at - 1;
      last if $found < 0;
      ($length, $from) = ($length + 1, $found);
    }
    if ($from >= 0) {
      $tokens .= pack 'v', $at - $from - 1 << $length_bits | $length - 3;
      $flags |= 1 << $count;
      $at += $length;
    } else {
      $tokens .= substr $chunk, $at++, 1;
    }
    if (++$count == 8 || $at >= length $chunk) {
      $compressed .= chr($flags) . $tokens;
      ($flags, $tokens, $count) = (0, '', 0);
    }
  }
  return $compressed;
}

1;
