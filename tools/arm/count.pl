#!/usr/bin/perl
# Reads what the emulator logs with -d in_asm,exec,nochain,strace and prints the instructions between the marks that
# benchmarks/scenes.cpp sets: count.pl FRAMES. A block that has been translated is counted each time that it is executed.
use strict;
use warnings;
$| = 1;

my $frames = shift;
my ($address, $size, %untaken, %size_at, $sum, $counts);
while (<STDIN>) {
    if (/^Trace \d+: (0x[0-9a-f]+) \[[0-9a-f]+\/([0-9a-f]+)\//) {
        if (defined $address) {
            $untaken{$address} = $size;
            undef $address;
        }
        my $fresh = delete $untaken{hex $2};
        $size_at{$1} = $fresh if defined $fresh;
        next unless $counts;
        die "A block was executed that was not translated: $_" unless defined $size_at{$1};
        $sum += $size_at{$1};
    } elsif (/^0x([0-9a-f]+): /) {
        if (!defined $address) {
            $address = hex $1;
            $size = 0;
        }
        ++$size;
    } elsif (/^IN:/) {
        $untaken{$address} = $size if defined $address;
        undef $address;
    } elsif (/access\("count:begin"/) {
        $sum = 0;
        $counts = 1;
    } elsif (/access\("count:([a-z-]+)"/) {
        printf "%s %d\n", $1, $sum / $frames / 1000;
        $counts = 0;
    }
}
