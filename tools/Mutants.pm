package Mutants;
# The mutants of a C++ source: what it would be with one token, or one statement, changed. Works on tokens alone; whether
# a mutant compiles is for the compiler to say. Relies on the house's formatting: binary operators have a blank on
# either side, the brackets of templates have not.
use strict;
use warnings;
use Exporter qw(import);
our @EXPORT = qw(parsed mutants_of statements_of);

my %exchanged = ('==' => ['!='], '!=' => ['=='], '<' => [ '<=', '>=' ], '<=' => [ '<', '>' ], '>' => [ '>=', '<=' ],
                 '>=' => [ '>', '<' ], '&&' => ['||'], '||' => ['&&'], '+' => ['-'], '-' => ['+'], '*' => ['/'],
                 '/' => ['*'], '%' => ['*'], '|' => ['&'], '+=' => ['-='], '-=' => ['+='], 'true' => ['false'],
                 'false' => ['true'], 'break' => ['continue'], 'continue' => ['break']);

# Functions that do the same with their arguments exchanged.
my $symmetric = qr/\b(?:EqualIgnoringCase|std::(?:min|max)(?:<[\w:]+>)?)$/;

# The tokens of a text, each with "text", "at" and "kind"; neither blanks nor comments nor directives.
sub tokens {
  my $text = shift;
  my @tokens;
  pos($text) = 0;
  while (pos($text) < length $text) {
    my $at = pos $text;
    next if $text =~ m{\G(?:\s+|//[^\n]*|/\*.*?\*/)}sgc;
    next if $text =~ m{\G\#(?:\\\n|[^\n])*}gc;
    my $kind =
      $text =~ m{\G(?:u8|[uUL])?(?:R"\((?:.*?)\)"|"(?:\\.|[^"\\])*")}sgc ? 'string'
      : $text =~ m{\G(?:u8|[uUL])?'(?:\\.|[^'\\])+'}gc                  ? 'character'
      : $text =~ m{\G\.?\d(?:[\w.]|'\d)*}gc                              ? 'number'
      : $text =~ m{\G\w+}gc                                              ? 'word'
      : $text =~ m{\G(?:<=>|<<=|>>=|\.\.\.|->\*|::|->|\+\+|--|<<|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=)}gc ? 'operator'
      : $text =~ m{\G.}sgc                                               ? 'operator' : die;
    push @tokens, { text => substr($text, $at, pos($text) - $at), at => $at, kind => $kind };
  }
  return @tokens;
}

# Constants of the file's own, each with the one of the same kind that takes its place: of one enumeration, or of the
# same type and shape.
sub own_constants {
  my $text = shift;
  my %groups;
  while ($text =~ /^\s*(?:inline )?constexpr ([\w:<>]+) (k[A-Z]\w*)( =|\{)/mg) { push @{ $groups{$1} }, $2 }
  while ($text =~ /\benum (?:class )?(\w*)[^{;]*\{([^}]*)\}/g) {
    my ($name, $body) = ($1, $2);
    $body =~ s{//[^\n]*}{}g;
    push @{ $groups{"enum $name"} }, $body =~ /\b([kA-Z]\w*)\b\s*(?==|,|$)/mg;
  }
  my %next;
  for my $group (values %groups) {
    $next{ $group->[$_] } = $group->[ ($_ + 1) % @$group ] for 0 .. $#$group;
    delete $next{ $group->[0] } if @$group == 1;
  }
  return \%next;
}

sub other_number {
  my $number = shift;
  return '0' . substr($number, 1) if $number =~ /^1(?!\w*[.x\d])/;
  return sprintf('0x%X%s', hex($1) + 1, $2) if $number =~ /^0x([0-9a-fA-F']+)([uUlL]*)$/;
  return ($1 =~ s/'//gr) + 1 . $2 if $number =~ /^([\d']+)(.*)$/s;
  return;
}

# A text's structure: its tokens, the stretches of text between two of them, for each bracket its partner, which braces hold
# statements, and for each token in how many of those it is.
sub parsed {
  my $text = shift;
  my @t = tokens($text);
  my $source = sub { my ($from, $to) = @_; substr $text, $t[$from]{at}, $t[$to]{at} + length($t[$to]{text}) - $t[$from]{at} };
  my (%partner, @open, @in_statements);
  my %holds_statements;
  for my $i (0 .. $#t) {
    my $token = $t[$i]{text};
    $in_statements[$i] = grep { $holds_statements{$_} } @open;
    if ($t[$i]{kind} eq 'operator' && $token =~ /^[(\[{]$/) {
      if ($token eq '{') {
        my $before = $i ? $t[ $i - 1 ]{text} : '';
        my $inside = $in_statements[$i] && $holds_statements{ $open[-1] };
        my $returns = $i > 2 && $source->(($i > 12 ? $i - 12 : 0), $i - 1) =~ /\) (?:const )?(?:noexcept )?-> [\w:<>&* ]+$/;
        $holds_statements{$i} = 1
          if $before =~ /^(?:\)|else|do|try|const|noexcept|override|mutable|\])$/ || $returns
          || ($inside && $before =~ /^[;{}:]$/) || ($i > 3 && !$in_statements[$i] && $source->(0, $i - 1) =~ /\)\s*:\s[^;{}]*(?:\{[^;{}]*\}[^;{}]*)*\}$/);
      }
      push @open, $i;
    } elsif ($t[$i]{kind} eq 'operator' && $token =~ /^[)\]}]$/) {
      my $from = pop @open;
      @partner{ $from, $i } = ($i, $from);
    }
  }
  return { text => $text, tokens => \@t, source => $source, partner => \%partner, holds_statements => \%holds_statements,
           in_statements => \@in_statements };
}

# The statements of a text that end in a semicolon, without what they depend on (if, for, ...), block by block: of each its
# block, its first token and the semicolon.
sub statements_of {
  my $parsed = shift;
  my ($t, $partner, $holds_statements) = @$parsed{qw(tokens partner holds_statements)};
  my @t = @$t;
  my @statements;
  for my $block (sort { $a <=> $b } keys %$holds_statements) {
    my $from = $block + 1;
    for (my $i = $from; $i < $partner->{$block}; ++$i) {
      my $word = $t[$i]{text};
      if ($word =~ /^[(\[]$/ || ($word eq '{' && !$holds_statements->{$i})) {
        $i = $partner->{$i};
      } elsif ($word eq '{') {
        $i = $partner->{$i};
        $from = $i + 1 if $t[ $i + 1 ]{text} !~ /^[;,).(]$/;
      } elsif ($word eq ':' && $t[$from]{text} =~ /^(?:case|default|public|private)$/) {
        $from = $i + 1;
      } elsif ($word eq ';') {
        while ($from < $i && $t[$from]{text} =~ /^(?:if|for|while|else|do)$/) {
          $from++ if $t[$from]{text} eq 'if' && $t[ $from + 1 ]{text} eq 'constexpr';
          $from = $t[ $from + 1 ]{text} eq '(' ? $partner->{ $from + 1 } + 1 : $from + 1;
        }
        push @statements, [ $block, $from, $i ] if $from < $i;
        $from = $i + 1;
      }
    }
  }
  return @statements;
}

# The mutants of a text, in their order: each with "at", "length" and "by", what stands there instead.
sub mutants_of {
  my $text = shift;
  my $parsed = parsed($text);
  my ($source, $partner, $in_statements) = @$parsed{qw(source partner in_statements)};
  my @t = @{ $parsed->{tokens} };
  my $constants = own_constants($text);
  my @mutants;
  my $change = sub {
    my ($from, $to, $by) = @_;  # the first token and the last
    my $at = $t[$from]{at};
    push @mutants, { at => $at, length => $t[$to]{at} + length($t[$to]{text}) - $at, by => $by };
  };
  my $is_binary = sub {
    my $token = $t[ $_[0] ];
    my $end = $token->{at} + length $token->{text};
    return substr($text, $token->{at} - 1, 1) =~ /\s/ && substr($text, $end, 1) =~ /\s/;
  };

  # Whether a stretch holds a token that is changed by itself.
  my $is_plain = sub {
    my ($from, $to) = @_;
    return !grep { ($exchanged{ $t[$_]{text} } && ($t[$_]{kind} eq 'word' || $is_binary->($_))) || $t[$_]{text} eq '!' } $from .. $to;
  };
  my $negate = sub {
    my ($from, $to) = @_;
    return if $from > $to || $source->($from, $to) =~ /;| = /;
    $change->($from, $to, '!(' . $source->($from, $to) . ')') if $is_plain->($from, $to);
  };

  my $left_alone = 0;  # up to which token
  for my $i (0 .. $#t) {
    my ($word, $kind) = @{ $t[$i] }{qw(text kind)};
    # Room that is kept for what comes shows in nothing else.
    $left_alone = $partner->{ $i + 1 } if $word =~ /^(?:static_assert|reserve)$/ && $t[ $i + 1 ]{text} eq '(';
    # The members' tables, which the guide gives letter by letter.
    $left_alone = $partner->{ $i + 3 } if $word eq 'Describe' && ($t[ $i + 3 ]{text} // '') eq '{';
    next if $i < $left_alone;
    if ($kind eq 'number') {
      my $other = other_number($word);
      $change->($i, $i, $other) if defined $other;
    } elsif ($kind eq 'string') {
      $change->($i, $i, $word =~ s/"\)?$/~$&/r) unless $i && $t[ $i - 1 ]{text} eq 'extern';
    } elsif ($kind eq 'character') {
      $change->($i, $i, $word =~ s/'.*'$/$word =~ m{~} ? q('^') : q('~')/ser);
    } elsif ($kind eq 'word' && $constants->{$word} && substr($text, $t[$i]{at} + length $word) !~ /^(?: = |\{|\.npos|,? *\/\/\/<|,?\n *k?[A-Z]\w* = )/) {
      $change->($i, $i, $constants->{$word});
    } elsif ($word eq '!') {
      $change->($i, $i, '');
    } elsif ($word =~ /^\+=?$/ && grep { $t[$_]{kind} eq 'string' } $i - 1, $i + 1) {
      # Texts are not subtracted.
    } elsif ($exchanged{$word} && ($kind eq 'word' || $is_binary->($i))) {
      $change->($i, $i, $_) for @{ $exchanged{$word} };
    } elsif ($word =~ /^(?:if|while)$/ && $t[ $i + 1 ]{text} eq '(') {
      $negate->($i + 2, $partner->{ $i + 1 } - 1);
    } elsif ($word eq '?') {
      my $from = $i;
      while ($from > 0) {
        my $before = $t[ $from - 1 ]{text};
        last if $before =~ /^(?:[({\[,;=?:]|return|\+=|<<|\+|&&|\|\|)$/;
        $from = $before =~ /^[)\]}]$/ ? $partner->{ $from - 1 } : $from - 1;
      }
      $negate->($from, $i - 1);
    } elsif ($word =~ /^(?:\+\+|--)$/) {
      $change->($i, $i, $word eq '++' ? '--' : '++');
    }

    # Two arguments of a call.
    if ($word eq '(' && $in_statements->[$i] && $i && $t[ $i - 1 ]{text} =~ /^(?:\w+|>)$/
        && $t[ $i - 1 ]{text} !~ /^(?:if|for|while|switch|catch|return)$/
        && $source->(($i > 8 ? $i - 8 : 0), $i - 1) !~ $symmetric) {
      my @arguments = ([ $i + 1 ]);
      for (my $j = $i + 1; $j < $partner->{$i}; ++$j) {
        if ($t[$j]{text} =~ /^[(\[{]$/) { $j = $partner->{$j} }
        elsif ($t[$j]{text} eq ',') {
          $arguments[-1][1] = $j - 1;
          push @arguments, [ $j + 1 ];
        }
      }
      $arguments[-1][1] = $partner->{$i} - 1;
      for (1 .. $#arguments) {
        my ($left, $right) = @arguments[ $_ - 1, $_ ];
        my ($one, $other) = ($source->(@$left), $source->(@$right));
        $change->($left->[0], $right->[1], "$other, $one") if $one ne $other;
      }
    }
  }

  for (statements_of($parsed)) {
    my ($block, $from, $i) = @$_;
    next if $block > 2 && $t[ $block - 3 ]{text} eq 'Describe';
    my $statement = $source->($from, $i);
    if ($statement =~ /^return (.*);$/s) {
      $change->($from + 1, $i - 1, '{}') if $1 !~ /^(?:\{\}|true|false|nullptr|0|[\w:.]+\(\))$/ && $is_plain->($from + 1, $i - 1);
    } elsif ($statement !~ /^(?:using|static_assert|struct|enum|break|continue)\b|^\w+\.reserve\(/) {
      # What is declared and used cannot go.
      my ($name) = $statement =~ /^(?:(?:static|const|constexpr) )*[\w:]+(?:<.*?>)?(?:::\w+)?[&*]* (\w+)(?: = |\{|\(|;)/s;
      my $is_used = $name && $statement !~ /^(?:throw|delete|co_return) / && substr($text, $t[$i]{at}) =~ /\b\Q$name\E\b/;
      $change->($from, $i, ';') unless $is_used || $statement =~ /^(?:const )?auto&? \[/;
    }
  }
  return sort { $a->{at} <=> $b->{at} || $a->{length} <=> $b->{length} } @mutants;
}

1;
