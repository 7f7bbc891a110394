#!/usr/bin/env perl
# Plants faults, one at a time, into C++ sources and tells which of them the tests catch.
#
#   tools/plant.pl [-n COUNT] [-s SEED] [-j JOBS] [-t CTEST_REGEX] FILE_OR_FOLDER...
#
# Works on a copy of the tree in build/plant, so that the sources stay untouched. A fault is a dropped call, a turned
# condition, a shifted bound or a mirror image (left for right, width for height, x for y). The tests of the folder
# with the same name run first, then all others until one fails; -t gives the only tests to run instead.
use strict;
use warnings;
use File::Basename qw(basename dirname);
use File::Find qw(find);
use Getopt::Std qw(getopts);

my %opt = (n => 20, s => 1, j => 2);
getopts('n:s:j:t:', \%opt) and @ARGV or die "usage: plant.pl [-n COUNT] [-s SEED] [-j JOBS] [-t REGEX] FILE...\n";
chomp(my $top = `git rev-parse --show-toplevel`);
my ($tree, $build) = ("$top/build/plant/tree", "$top/build/plant/build");

sub run { my ($command, $log) = @_; return system("$command > $log 2>&1") == 0 }

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
    my ($line) = @_;
    return () if $line =~ m{^\s*(//|\*|/\*|#|case |default:|namespace|using|static_assert|Q_|\w+::\w+\(.*\)$)};
    (my $code = $line) =~ s{//.*}{};
    my @found;
    push @found, $line =~ s/\S.*/;/r if $code =~ /^\s+(emit |[\w.>:-]+(\(|\[))[^=]*\);\s*$/;
    push @found, $line =~ s/\bif \((.*)\)/if (!($1))/r if $code =~ /\bif \(.*\)\s*\{?$/;
    push @found, $line =~ s{\b(\d)\b(?![.\w])}{$1 + 1}er if $code =~ /[^"\w.]\d\b(?![.\w"])/ && $code !~ /"/;
    for my $pair (@tokens) {
        for my $way ([@$pair], [reverse @$pair]) {
            my ($from, $to) = @$way;
            my $at = -1;
            while (($at = index($code, $from, $at + 1)) >= 0) {
                next if substr($code, 0, $at) =~ tr/"// % 2;
                substr(my $changed = $line, $at, length $from) = $to;
                push @found, $changed;
            }
        }
    }
    return grep { $_ ne $line } @found;
}

my @files;
find({ no_chdir => 1, wanted => sub { push @files, $_ if /\.(cpp|h)$/ } }, @ARGV);
my @planted;
for my $file (sort @files) {
    my @lines = split /(?<=\n)/, slurp($file);
    my $comment = 0;
    for my $i (0 .. $#lines) {
        $comment = 1 if $lines[$i] =~ m{/\*};
        push @planted, map { [$file, $i, $_] } faults($lines[$i]) unless $comment;
        $comment = 0 if $lines[$i] =~ m{\*/};
    }
}
srand $opt{s};
for my $i (reverse 1 .. $#planted) {
    my $j = int rand($i + 1);
    @planted[$i, $j] = @planted[$j, $i];
}

system("mkdir -p $tree && rm -rf $tree && mkdir -p $tree && git ls-files -z | xargs -0 cp --parents -t $tree") == 0 or die "copy\n";
my $fast = '-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O0 -DGRAPH_WERROR=OFF'
         . (-x '/usr/bin/ld.lld' ? ' -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld -DCMAKE_MODULE_LINKER_FLAGS=-fuse-ld=lld' : '');
my $log = "$top/build/plant/log";
run("cmake --preset dev -S $tree -B $build $fast", $log) && run("cmake --build $build -j $opt{j}", $log)
    or die "the tree does not build: $log\n";

# Tests must pass and end soon; a fault that makes one hang counts as caught.
my $ctest = "cd $build && ctest -j $opt{j} --timeout 200 --stop-on-failure -E '^(reference|tst_module|layers|clang.*)\$'";
$ctest .= " -R '$opt{t}'" if defined $opt{t};
run($ctest, $log) or die "the tests fail without a fault: $log\n";

sub folder_tests
{
    my ($file) = @_;
    my $folder = basename(dirname($file));
    my $list = `cd $build/tests/$folder 2>/dev/null && ctest -N 2>/dev/null`;
    return join '|', map { "^$_\$" } $list =~ /Test +#\d+: (\S+)/g;
}

my %count = (caught => 0, survived => 0, invalid => 0);
while ($count{caught} + $count{survived} < $opt{n} and my $fault = shift @planted) {
    my ($file, $index, $changed) = @$fault;
    my $original = slurp("$tree/$file");
    my @lines = split /(?<=\n)/, $original;
    my $before = $lines[$index];
    $lines[$index] = $changed;
    spew("$tree/$file", join '', @lines);
    my $verdict = 'invalid';
    if (run("cmake --build $build -j $opt{j}", $log)) {
        my $near = defined $opt{t} ? '' : folder_tests($file);
        $verdict = ($near && !run("$ctest -R '$near'", $log)) || !run($ctest, $log) ? 'caught' : 'survived';
    }
    spew("$tree/$file", $original);
    $count{$verdict}++;
    next if $verdict eq 'invalid';
    my ($test) = slurp($log) =~ /^\s*\d+ - (\S+) \(/m;
    s/^\s+|\s+$//g for $before, $changed;
    printf "%s %s:%d%s\n    - %s\n    + %s\n", uc $verdict, $file, $index + 1,
        $verdict eq 'caught' && $test ? " ($test)" : '', $before, $changed;
}
my $all = $count{caught} + $count{survived};
printf "%d of %d planted faults caught; %d more did not compile\n", $count{caught}, $all, $count{invalid};
