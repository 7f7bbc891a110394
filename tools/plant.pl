#!/usr/bin/env perl
# Plants faults, one at a time, into C++ sources and tells which of them the tests catch.
#
#   tools/plant.pl [-n COUNT] [-s SEED] [-j JOBS] [-x REGEX] [-b BUILD] FILE_OR_FOLDER...
#   tools/plant.pl [-x REGEX] [-b BUILD] -r LOG
#
# A fault is a dropped call, a turned condition, a shifted bound or a mirror image (left for right, width for height, x
# for y). They are spread over the folders in proportion to lines of code; the same seed gives the same faults. -r plants
# again what survived according to the output of an earlier run.
#
# Sources and the build folder, build/dev or that of -b with everything built, stay untouched: a fault costs one object
# and one library beside them, which the tests are made to load. The tests of the folder with the same name run first, then
# the others by the time that they take, until one fails; -x leaves tests out. A fault that does not compile does not
# count, nor does one in a header that more than six sources include. What tests have compiled into themselves stays as it
# is.
use strict;
use warnings;
use Cwd qw(abs_path);
use File::Basename qw(basename dirname);
use File::Find qw(find);
use File::Path qw(make_path remove_tree);
use Getopt::Std qw(getopts);
use JSON::PP qw(decode_json);
use Time::HiRes qw(time);

my %opt = (n => 20, s => 1, j => 1, b => 'build/dev', x => 'tst_bus_session');
getopts('n:s:j:x:b:r:', \%opt) and (@ARGV or $opt{r})
    or die "usage: plant.pl [-n COUNT] [-s SEED] [-j JOBS] [-x REGEX] [-b BUILD] FILE...\n       plant.pl -r LOG\n";
my $build = abs_path($opt{b});
my ($top) = slurp("$build/CMakeCache.txt") =~ /^CMAKE_HOME_DIRECTORY:INTERNAL=(.*)$/m;
chdir $top;
my $work = "$build/plant/$$";
make_path($work);
my $log = "$work/log";

sub run { my ($command) = @_; return system("($command) > $log 2>&1") == 0 }

sub slurp { my ($file) = @_; local (@ARGV, $/) = $file; return scalar <> }

sub spew { my ($file, $text) = @_; open my $out, '>', $file or die "$file: $!\n"; print $out $text; close $out }

# Pairs of tokens that are taken for each other; words match within identifiers such as setLeft or leftMargin.
my @tokens = ([' < ', ' <= '], [' > ', ' >= '], [' == ', ' != '], [' && ', ' || '], [' + ', ' - '], [' * ', ' / '],
              ['true', 'false'], ['.x()', '.y()'], ['AxisX', 'AxisY'], ['axisX', 'axisY'], ['+=', '-=']);
my @words = ([qw(left right)], [qw(top bottom)], [qw(width height)], [qw(horizontal vertical)], [qw(min max)],
             [qw(first last)], [qw(begin end)]);
for my $pair (@words) {
    my ($a, $b) = @$pair;
    push @tokens, [$a, $b], [ucfirst $a, ucfirst $b];
}

# All faults of one line, each the line as it would read with it.
sub faults
{
    my ($line, $is_header) = @_;
    return () if $line =~ m{^\s*(//|\*|/\*|#|case |default:|namespace|using|static_assert|Q_)};
    (my $code = $line) =~ s{//.*}{};
    # Another name of what is declared would not compile.
    return () if $code =~ /^\w[^={]*$/;
    my $declared = '';
    if ($is_header) {
        return () if $code =~ /^ *(?!return|emit)[\w:]+[\w:<>, *&]* [*&]?\w+\([^{]*\)[ \w]*;$/;
        ($declared) = $code =~ /^( *(?!return|emit)[\w:]+[\w:<>, *&]* [*&]?[\w:]+\([^{]*\)[ \w]*\{|)/;
    }
    my @found;
    push @found, $line =~ s/\S.*/;/r if $code =~ /^\s+(emit |[\w.>:-]+(\(|\[))[^=]*\);\s*$/;
    push @found, $line =~ s/\bif \((.*)\)/if (!($1))/r if $code =~ /\bif \(.*\)\s*\{?$/;
    push @found, $line =~ s{\b(\d)\b(?![.\w])}{$1 + 1}er if $code =~ /[^"\w.]\d\b(?![.\w"])/ && $code !~ /"/;
    for my $pair (@tokens) {
        for my $way ([@$pair], [reverse @$pair]) {
            my ($from, $to) = @$way;
            my $at = -1;
            while (($at = index($code, $from, $at + 1)) >= 0) {
                next if substr($code, 0, $at) =~ tr/"// % 2 || $at < length $declared;
                substr(my $changed = $line, $at, length $from) = $to;
                push @found, $changed;
            }
        }
    }
    return grep { $_ ne $line } @found;
}

sub shuffled
{
    my @list = @_;
    for my $i (reverse 1 .. $#list) {
        my $j = int rand($i + 1);
        @list[$i, $j] = @list[$j, $i];
    }
    return @list;
}

# Per folder its lines of code and, in random order, one random fault of each line that can have one.
sub folders
{
    my @files;
    find({ no_chdir => 1, wanted => sub { push @files, $_ if /\.(cpp|h)$/ } }, @_);
    my %folders;
    for my $file (sort @files) {
        my $folder = $folders{dirname($file)} //= { code => 0, faults => [], drawn => 0 };
        my @lines = split /(?<=\n)/, slurp($file);
        my $comment = 0;
        for my $i (0 .. $#lines) {
            $comment = 1 if $lines[$i] =~ m{/\*};
            if (!$comment && $lines[$i] !~ m{^\s*(//|$)}) {
                $folder->{code}++;
                my @found = faults($lines[$i], $file =~ /h$/);
                push @{ $folder->{faults} }, [$file, $i, $lines[$i], $found[rand @found]] if @found;
            }
            $comment = 0 if $lines[$i] =~ m{\*/};
        }
    }
    $folders{$_}{faults} = [shuffled(@{ $folders{$_}{faults} })] for sort keys %folders;
    return %folders;
}

# What survived according to LOG, where the lines read the same today.
sub survivors
{
    my ($from) = @_;
    my @found;
    my @texts = slurp($from) =~ /^SURVIVED (\S+):(\d+)\n    - (.*)\n    \+ (.*)\n/mg;
    while (my ($file, $number, $before, $after) = splice @texts, 0, 4) {
        my @lines = split /(?<=\n)/, slurp($file);
        my ($index) = sort { abs($a + 1 - $number) <=> abs($b + 1 - $number) }
            grep { $lines[$_] =~ /^\s*\Q$before\E\s*$/ } 0 .. $#lines;
        defined $index or warn("$file:$number reads otherwise\n"), next;
        push @found, [$file, $index, $lines[$index], $lines[$index] =~ s/\Q$before\E/$after/r];
    }
    return @found;
}


# How each source is compiled, each library linked, and what each object is made from.
my (%compile, %object, %links);
for my $entry (@{ decode_json(slurp("$build/compile_commands.json")) }) {
    (my $file = $entry->{file}) =~ s{^\Q$top\E/}{};
    my ($object) = $entry->{command} =~ / -o (\S+)/;
    next if $file !~ /^(src|kit)/;
    $object{$file} = $object;
    $compile{$file} = $entry->{command} =~ s/ -W\S*//gr;
}
my @libraries = map { basename($_) } glob "$build/lib/*.so.*.*";
for my $line (split /\n/, `ninja -C $build -t commands`) {
    my ($target) = $line =~ m{^: && .* -o (?:bin|lib)/(\S+)} or next;
    $links{$target} = $line;
}
my %depends; # sources of a header
{
    my ($source, %of);
    %of = reverse %object;
    for my $line (split /\n/, `ninja -C $build -t deps`) {
        if ($line =~ /^(\S+): #deps/) { $source = $of{$1} }
        elsif ($source && $line =~ m{^\s+(?:\Q$top\E/)((?:src|kit)/\S+\.h)$}) { push @{ $depends{$1} }, $source }
    }
}

my %tests;
for my $test (@{ decode_json(scalar `ctest --test-dir $build --show-only=json-v1`)->{tests} }) {
    next if $test->{name} !~ /^(qml_)?tst_/ || $test->{name} =~ /^($opt{x})$/;
    next unless $test->{command}; # not built
    my %property = map { $_->{name} => $_->{value} } @{ $test->{properties} };
    $tests{ $test->{name} } = {
        name => $test->{name},
        program => $test->{command}[0],
        arguments => join(' ', map { "'$_'" } @{ $test->{command} }[1 .. $#{ $test->{command} }]),
        environment => join(' ', map { "'$_'" } @{ $property{ENVIRONMENT} // [] }),
        folder => $property{WORKING_DIRECTORY},
        refused => join('|', @{ $property{FAIL_REGULAR_EXPRESSION} // [] }),
    };
}

# A test that hangs or takes all memory counts as failed; neither is to hold up the others.
sub passes
{
    my ($test, $libraries) = @_;
    my $program = $test->{program};
    my $linked = "$libraries/" . basename($program);
    $program = $linked if -x $linked;
    my $passed = run("ulimit -v 16000000; cd $test->{folder} && exec timeout 60 env LD_LIBRARY_PATH=$libraries "
        . "$test->{environment} $program $test->{arguments}");
    return $passed && !($test->{refused} && slurp($log) =~ /$test->{refused}/);
}

# The tests of the folder of FILE: src/view/zoom has tests/zoom, src/view/frame has tests/view,
# kit/data has tests/kit/data.
sub in_order
{
    my ($file) = @_;
    my @all = sort { $a->{seconds} <=> $b->{seconds} || $a->{name} cmp $b->{name} } values %tests;
    for (my $folder = dirname($file); $folder ne 'src' && $folder ne 'kit' && $folder ne '.'; $folder = dirname($folder)) {
        my $tests = "$build/tests/" . ($folder =~ s{^src/(?:.*/)?}{}r);
        my @near = grep { $_->{folder} eq $tests } @all or next;
        return (@near, grep { $_->{folder} ne $tests } @all);
    }
    return @all;
}

sub object_with
{
    my ($source, $folder, $file) = @_;
    my $object = "$folder/" . ($source =~ tr{/}{_}r) . '.o';
    my $command = $compile{$source} =~ s/ -o \S+/ -o $object/r;
    $command =~ s{ -c \S+}{ -c $folder/$file} if $source eq $file;
    $command =~ s{ -I}{ -w -I$folder/src -I$folder -I};
    return run("cd $build && $command") ? $object : undef;
}

# Links what holds one of the objects: a library, and each program that has an archive without the library.
sub linked_with
{
    my ($folder, %objects) = @_;
    for my $target (keys %links) {
        my $line = $links{$target};
        my $is_library = grep { $_ eq $target } @libraries;
        my $new = '';
        for my $source (keys %objects) {
            next if $line =~ s{ \Q$object{$source}\E}{ $objects{$source}};
            my ($archive) = $object{$source} =~ m{^(src/\w*)CMakeFiles/(\w+)\.dir} or next;
            $new .= " $objects{$source}" if $line =~ m{ src/lib$2\.a} && ($is_library || $line !~ /libgraph_charts/);
        }
        next if $line eq $links{$target} && !$new;
        next if !$is_library && !($new && -x "$build/bin/$target");
        my $soname = $line =~ /-soname,(\S+)/ ? $1 : $target;
        $line =~ s{ -o \S+}{$new -o $folder/$soname};
        return 0 unless run("cd $build && $line");
    }
    return 1;
}

# Tests that fail do so twice, so that a busy machine does not count as one.
sub verdict
{
    my ($fault, $folder) = @_;
    my ($file, $index, $before, $after) = @$fault;
    remove_tree($folder);
    make_path("$folder/" . dirname($file));
    my @lines = split /(?<=\n)/, slurp($file);
    $lines[$index] = $after;
    spew("$folder/$file", join '', @lines);
    my @sources = $file =~ /\.h$/ ? @{ $depends{$file} // [] } : ($file);
    my $verdict = 'INVALID';
    my $caught_by = '';
    my %objects;
    if (@sources && @sources <= 6 && !grep { !defined($objects{$_} = object_with($_, $folder, $file)) } @sources) {
        if (linked_with($folder, %objects)) {
            for my $candidate (in_order($file)) {
                next if passes($candidate, $folder) || passes($candidate, $folder);
                $caught_by = " ($candidate->{name})";
                last;
            }
            $verdict = $caught_by ? 'CAUGHT' : 'SURVIVED';
        }
    }
    s/^\s+|\s+$//g for $before, $after;
    syswrite STDOUT, sprintf "%s %s:%d%s\n    - %s\n    + %s\n", $verdict, $file, $index + 1, $caught_by, $before, $after;
    return $verdict;
}

# How long each test takes; what fails without a fault is left out.
for my $name (sort keys %tests) {
    my $start = time;
    if (passes($tests{$name}, $work)) {
        $tests{$name}{seconds} = time - $start;
    } else {
        warn "$name fails without a fault\n";
        delete $tests{$name};
    }
}

srand $opt{s};
my @again = $opt{r} ? survivors($opt{r}) : ();
my %folders = folders(@ARGV);
my @workers;
for my $job (0 .. $opt{j} - 1) {
    my $worker = fork // die "fork: $!\n";
    push @workers, $worker and next if $worker;
    my $folder = "$work/$job";
    $log = "$work/log$job";
    my %count = (CAUGHT => 0, SURVIVED => 0, INVALID => 0);
    my $part = sub { my @list = @_; return map { $list[$_] } grep { $_ % $opt{j} == $job } 0 .. $#list };
    $count{verdict($_, $folder)}++ for $part->(@again);
    @{ $_->{faults} } = $part->(@{ $_->{faults} }) for values %folders;
    while (%folders && $count{CAUGHT} + $count{SURVIVED} < $opt{n} / $opt{j}) {
        # The folder that is furthest behind its share.
        my ($name) = sort { $folders{$a}{drawn} / $folders{$a}{code} <=> $folders{$b}{drawn} / $folders{$b}{code} || $a cmp $b }
            grep { @{ $folders{$_}{faults} } } keys %folders or last;
        my $result = verdict(shift @{ $folders{$name}{faults} }, $folder);
        $count{$result}++;
        $folders{$name}{drawn}++ if $result ne 'INVALID';
    }
    syswrite STDOUT, sprintf "%d of %d planted faults caught; %d more did not compile\n", $count{CAUGHT},
        $count{CAUGHT} + $count{SURVIVED}, $count{INVALID};
    exit;
}
waitpid $_, 0 for @workers;
