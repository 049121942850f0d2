package Schemata;
# Many mutants of a C++ source in one text, of which the program chooses one as it runs: what a mutant changes stands beside
# the source's own, behind a question for its number (bool IsMutant(int)). A place is a stretch of the source that such a
# question can replace, with a form that says how:
#   statement  { if (IsMutant(17)) { mutant's } else { own } }, for whole statements other than declarations, for bodies
#   value      (IsMutant(17) ? (mutant's) : (own)), for expressions
#   condition  the same as bool, whatever the two types are
#   step       the same as void
#   object     (IsMutant(17) ? T{mutant's} : T{own}), for what initialises an object by arguments in brackets
#   constant   nothing by itself: a constexpr object that is a const one, since one of the places inside asks
#   entry      the begin of a function, which asks for the number of its file
# All is named for the compiler by #line: "mutant-17" is the file of the mutant's own text, "place-17-18" that of the rest of
# a place with two mutants, so that an error tells what cannot stand there.
use strict;
use warnings;
use Exporter qw(import);
use Mutants qw(parsed statements_of);
our @EXPORT = qw(find_places of_function_at with_choices);

my $declarator = qr/(?<specifiers>(?:(?:static|const|constexpr|inline|mutable)\ )*)
                    (?!(?:return|throw|delete|co_return|goto|else|case|using|new|struct|class|enum|template|friend|namespace)\b)
                    (?<type>(?:(?:unsigned|long|short)\ )*[\w:]+(?:<.*?>)?(?:::\w+)?[&*]*)\ (?<name>\w+)(?<array>(?:\[[^\]]*\])*)/sx;
my $expression = qr/[*(!]|\+\+|--|(?:return|throw|delete|break|continue|co_return)\b
                    |[\w:]+(?:<[^;=]*?>)?(?:\.|->|\(|\[|\{|\ (?:[-+*\/|&^%]|<<|>>)?=\ |\ <<\ |\+\+|--|;)/sx;

# What stands around the mutant's and the source's own; before an object's, its type.
my %around = (statement => [ '{', '}' ], value => [ '(', ')' ], condition => [ 'static_cast<bool>(', ')' ],
              step => [ 'static_cast<void>(', ')' ]);

# The places of a source, with "form", "at" and "end"; an object's with its type and whether " = " is to come before, that
# of what is initialised once with "is_static", a constant's with where it is declared. Notes in $parsed which braces are "scopes".
sub places_of {
  my $parsed = shift;
  my ($text, $partner, $holds_statements, $source) = @$parsed{qw(text partner holds_statements source)};
  my @t = @{ $parsed->{tokens} };
  my @places;
  my $add = sub {
    my ($form, $at, $end, %more) = @_;
    push @places, { form => $form, at => $at, end => $end, %more } if $at < $end;
  };
  my $end_of = sub { my $i = shift; return $t[$i]{at} + length $t[$i]{text} };

  # What stands behind the name in a declaration; whether it was one.
  my $declaration = sub {
    my ($from, $to, $scope) = @_;  # without the semicolon; "namespace", "class" or that of a function
    $scope //= '';
    my $stretch = $source->($from, $to);
    my ($at, $end) = ($t[$from]{at}, $end_of->($to));
    if ($stretch =~ /^(?:const )?auto&{0,2} \[[^\]]*\] = (?!\{)/) {
      $add->('value', $at + $+[0], $end);
      return 1;
    }
    return 0 unless $stretch =~ /^$declarator(?<equals>\ =\s+)?(?<opening>[{(]|(?<=\s)|$)/sx;
    my %part = %+;
    my %more = (is_static => scalar($part{specifiers} =~ /static/), type => $part{type}, is_assigned => !$part{equals});
    my $behind = $at + $+[0] - length $part{opening};
    if ($part{equals} && $part{opening} ne '{') {
      $add->('value', $behind, $end, %more);
    } elsif ($part{opening} && !($scope && $part{opening} eq '(') && $part{type} !~ /[&*]$|^auto$/ && !$part{array}) {
      $add->('object', $behind, $end, %more);
    }
    $add->('constant', $at, $end, scope => $scope) if $part{specifiers} =~ /constexpr/;
    return 1;
  };

  # Bodies, but for a switch's, whose labels must stay with it.
  for my $block (keys %$holds_statements) {
    my $before = $block - 1;
    $before = $partner->{$before} - 1 if $t[$before]{text} eq ')';
    $add->('statement', $end_of->($block), $t[ $partner->{$block} ]{at}) unless $t[$before]{text} eq 'switch';
  }
  for (statements_of($parsed)) {
    my ($block, $from, $i) = @$_;
    next if $t[$from]{text} =~ /^(?:using|static_assert|struct|class|enum|union|template)$/ || $declaration->($from, $i - 1);
    $add->('statement', $t[$from]{at}, $end_of->($i)) if $source->($from, $i) =~ /^$expression/;
  }

  # What stands in the brackets of if, while, switch and for.
  for my $i (0 .. $#t) {
    next unless $t[$i]{text} =~ /^(?:if|while|switch|for)$/ && $t[ $i + 1 ]{text} eq '(';
    my ($from, $to) = ($i + 2, $partner->{ $i + 1 } - 1);
    my @parts = ([ $from, $to ]);
    my $colon;
    for (my $j = $from; $j <= $to; ++$j) {
      if ($t[$j]{text} =~ /^[(\[{]$/) { $j = $partner->{$j} }
      elsif ($t[$j]{text} eq ':') { $colon //= $j }
      elsif ($t[$j]{text} eq ';') {
        $parts[-1][1] = $j - 1;
        push @parts, [ $j + 1, $to ];
      }
    }
    my @forms = $t[$i]{text} eq 'for' ? qw(step condition step) : (('step') x $#parts, $t[$i]{text} eq 'switch' ? 'value' : 'condition');
    if ($t[$i]{text} eq 'for' && @parts == 1) {
      $add->('value', $t[ $colon + 1 ]{at}, $end_of->($to)) if $t[ $colon + 1 ]{text} ne '{';
      next;
    }
    for (0 .. $#parts) {
      my ($first, $last) = @{ $parts[$_] };
      next if $first > $last || ($source->($first, $last) =~ / = |\{/ && $declaration->($first, $last));
      $add->($forms[$_], $t[$first]{at}, $end_of->($last));
    }
  }

  # Declarations outside of functions.
  my $scan;
  $scan = sub {
    my ($from, $to, $scope) = @_;
    my $begin = $from;
    for (my $i = $from; $i <= $to; ++$i) {
      my $word = $t[$i]{text};
      if ($word =~ /^[(\[]$/) {
        $i = $partner->{$i};
      } elsif ($word eq '{') {
        my $head = $begin < $i ? $source->($begin, $i - 1) : '';
        my $is_scope = !$holds_statements->{$i} && $head =~ /^(?:inline )?namespace\b|\b(?:class|struct)\b/ && $head !~ / = /;
        $parsed->{scopes}{$i} = 1 if $is_scope || $head =~ /\benum\b/;
        push @places, { form => 'entry', at => $end_of->($i), end => $end_of->($i) } if $holds_statements->{$i} && $head !~ /\bconstexpr\b/;
        if ($is_scope) {
          $scan->($i + 1, $partner->{$i} - 1, $head =~ /namespace/ ? 'namespace' : 'class');
        }
        $begin = $partner->{$i} + 1 if $is_scope || $holds_statements->{$i} || $head =~ /\benum\b/;
        $i = $partner->{$i};
      } elsif ($word eq ':' && $t[$begin]{text} =~ /^(?:public|protected|private)$/) {
        $begin = $i + 1;
      } elsif ($word eq ';') {
        $declaration->($begin, $i - 1, $scope) if $begin < $i;
        $begin = $i + 1;
      }
    }
  };
  $scan->(0, $#t, 'namespace');
  return @places;
}

# The one of several things in brackets, such as an argument, that holds a mutant.
sub item_of {
  my ($parsed, $mutant) = @_;
  my ($partner, $holds_statements, $scopes) = @$parsed{qw(partner holds_statements scopes)};
  my @t = @{ $parsed->{tokens} };
  my ($at, $end) = ($mutant->{at}, $mutant->{at} + $mutant->{length});
  my ($open) = grep { $t[$_]{at} < $at && $partner->{$_} > $_ && $t[ $partner->{$_} ]{at} >= $end } sort { $b <=> $a } keys %$partner;
  return if !defined $open || $holds_statements->{$open} || $scopes->{$open} || $t[ $open - 1 ]{text} =~ /^(?:if|for|while|switch)$/;
  my $from = $open + 1;
  for (my $i = $from; $i <= $partner->{$open}; ++$i) {
    if ($t[$i]{text} =~ /^[(\[{]$/) {
      $i = $partner->{$i};
    } elsif ($i == $partner->{$open} || $t[$i]{text} eq ',') {
      if ($t[$from]{at} <= $at && $t[$i]{at} >= $end) {
        # Without what is named: a field, or a parameter that has a default.
        my $begin = $t[$from]{at};
        my $item = substr $parsed->{text}, $begin, $t[$i]{at} - $begin;
        $begin += $+[0] if $item =~ /^[^({"]* =\s+/;
        return if $begin > $at || $item =~ /^\{|^(?:const )?[\w:]+(?:<.*>)?[&*]* \w+$/s;
        return { form => 'value', at => $begin, end => $t[ $i - 1 ]{at} + length $t[ $i - 1 ]{text} };
      }
      $from = $i + 1;
    }
  }
  return;
}

# Gives each of a source's mutants its "places", in the order in which they are to be tried: the smallest that holds it
# first. Where that is a long one with many mutants, each of which repeats it, the single item goes before. What is asked
# only once in a program "is_static"; what only the functions of its file can use "is_own".
sub find_places {
  my ($parsed, @mutants) = @_;
  my @all = @{ $parsed->{places} = [ places_of($parsed) ] };
  my @places = sort { $a->{end} - $a->{at} <=> $b->{end} - $b->{at} } grep { $_->{form} !~ /^(?:constant|entry)$/ } @all;
  my @bodies = grep { $_->{form} eq 'statement' } @places;
  my @constants = grep { $_->{form} eq 'constant' && $_->{scope} eq 'namespace' } @all;
  my (%items, %held);
  for my $mutant (@mutants) {
    my ($at, $end) = ($mutant->{at}, $mutant->{at} + $mutant->{length});
    $mutant->{places} = [ grep { $_->{at} <= $at && $_->{end} >= $end } @places ];
    $mutant->{is_own} = grep { $_->{at} <= $at && $_->{end} >= $end } @bodies, @constants;
    $mutant->{is_static} = grep { $_->{is_static} } @{ $mutant->{places} };
    $held{ $mutant->{places}[0] }++ if @{ $mutant->{places} };
  }
  for my $mutant (@mutants) {
    my ($first, @others) = @{ $mutant->{places} };
    my $item = item_of($parsed, $mutant);
    $item = $items{"$item->{at} $item->{end}"} //= $item if $item;
    my $is_long = $first && ($first->{end} - $first->{at}) * $held{$first} > 20_000;
    $mutant->{places} = [ grep { $_ } $is_long ? ($item, $first) : ($first, $item), @others ];
    # A function that ends without a result is none, and the compiler would not say for which mutant.
    my $behind = substr $parsed->{text}, $mutant->{at} + $mutant->{length};
    $mutant->{places} = [] if $mutant->{by} eq ';' && substr($parsed->{text}, $mutant->{at}) =~ /^throw\b/ && $behind =~ /^\s*\}/;
  }
}

# Those of the mutants that are in the function of a line.
sub of_function_at {
  my ($parsed, $line, @mutants) = @_;
  my $at = 0;
  $at = 1 + index $parsed->{text}, "\n", $at for 2 .. $line;
  my $end = index $parsed->{text}, "\n", $at;
  my ($partner, $tokens) = @$parsed{qw(partner tokens)};
  my ($function) = grep { $tokens->[ $_->[0] ]{at} < $end && $tokens->[ $_->[1] ]{at} >= $at }
    map { [ $_, $partner->{$_} ] } sort { $a <=> $b } keys %{ $parsed->{holds_statements} } or return;
  return grep { $tokens->[ $function->[0] ]{at} <= $_->{at} && $_->{at} <= $tokens->[ $function->[1] ]{at} } @mutants;
}

# The text with those of the mutants that have places; each has its "number", and so has the file.
sub with_choices {
  my ($parsed, $file, $file_number, @mutants) = @_;
  my $text = $parsed->{text};
  my (%of, %place);
  for (@mutants) {
    my $place = $_->{places}[0] or next;
    $place{$place} = $place;
    push @{ $of{$place} }, $_;
  }
  for my $constant (grep { $_->{form} eq 'constant' } @{ $parsed->{places} }) {
    my @inside = grep { $constant->{at} <= $_->{at} && $_->{end} <= $constant->{end} } values %place or next;
    push @{ $of{$constant} }, sort { $a->{number} <=> $b->{number} } map { @{ $of{$_} } } @inside;
    $place{$constant} = $constant;
  }
  my @entries = grep { $_->{form} eq 'entry' } @{ $parsed->{places} };
  my @places = sort { $a->{at} <=> $b->{at} || $b->{end} <=> $a->{end} || ($a->{form} eq 'constant' ? -1 : 1) } values %place, @entries;

  my $as_file = sub {
    my ($name, $at) = @_;
    return "\n#line " . (1 + substr($text, 0, $at) =~ tr/\n//) . " \"$name\"\n";
  };
  my $own;
  $own = sub {
    my ($name, $at, $end) = @_;
    my $result = $as_file->($name, $at);
    while (@places && $places[0]{at} < $end) {
      my $place = shift @places;
      my $form = $place->{form};
      $result .= substr $text, $at, $place->{at} - $at;
      if ($form eq 'entry') {
        $result .= "IsMutant($file_number);";
        $at = $place->{at};
        next;
      }
      my @held = @{ $of{$place} };
      my $inner_name = join '-', 'place', map { $_->{number} } @held;
      my $own_text = $own->($inner_name, $place->{at}, $place->{end});
      if ($form eq 'constant') {
        $own_text =~ s/\bconstexpr\b/const/;
        $result .= $place->{scope} eq 'class' ? "inline $own_text" : $own_text;
      } else {
        my ($begin, $finish) = @{ $around{$form} // [ $place->{type}, '' ] };
        $result .= ($form eq 'object' && $place->{is_assigned} ? ' = ' : '') . ($form eq 'statement' ? '{' : '(');
        for (@held) {
          my ($number, $from, $to) = ($_->{number}, $_->{at}, $_->{at} + $_->{length});
          my $mutated = substr($text, $place->{at}, $from - $place->{at}) . $_->{by} . substr $text, $to, $place->{end} - $to;
          my $here = $as_file->("place-$number", $from);
          $result .= join '', $here, sprintf($form eq 'statement' ? 'if (%s) ' : '%s ? ', "IsMutant($number)"), $begin,
            $as_file->("mutant-$number", $place->{at}), $mutated, $here, $finish, $form eq 'statement' ? ' else ' : ' : ';
        }
        $result .= $as_file->($inner_name, $place->{at}) . $begin . $own_text . $finish . ($form eq 'statement' ? '}' : ')');
      }
      $result .= $as_file->($name, $at = $place->{end});
    }
    return $result . substr $text, $at, $end - $at;
  };
  return $own->($file, 0, length $text);
}

1;
