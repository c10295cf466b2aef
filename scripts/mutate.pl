#!/usr/bin/perl
# Tries whether the native tests notice when the core is wrong: changes one place of it at a time, builds, runs the tests.
#
# usage: scripts/mutate.pl SOURCE-TREE WORK-FOLDER COUNT [SEED]
#
# WORK-FOLDER gets a copy of the tree and a build folder of its own; both are used again. The same seed makes the same
# changes, in the same order, as long as the sources are the same: a longer run goes on where a shorter one ended. What
# was found out about a change is kept in WORK-FOLDER/results and not tried again. A change that does not compile, or
# leaves the compiled code as it was, counts neither way. Survivors are listed with file, line and change.
use strict;
use warnings;
use IO::Handle;

my ($tree, $work, $count, $seed) = @ARGV;
die "usage: scripts/mutate.pl SOURCE-TREE WORK-FOLDER COUNT [SEED]\n" unless $count;
$seed = 20011104 unless defined $seed;

# A generator of our own: perl's differs from version to version.
my $state = $seed;
sub random_below {
    my ($end) = @_;
    $state = ($state * 1103515245 + 12345) % 2147483648;
    return int($state / 65536) % $end;
}

# What may be wrong: pattern, and what takes its place ($1 is what was found).
my @kinds = (
    ['==', qr/ (==) /, ' != '], ['!=', qr/ (!=) /, ' == '],
    ['<',  qr/ (<) (?=[^<>]*[;)&|?])/, ' <= '], ['<=', qr/ (<=) /, ' < '],
    ['>',  qr/ (>) (?=[^<>]*[;)&|?])/, ' >= '], ['>=', qr/ (>=) /, ' > '],
    ['&&', qr/ (&&) /, ' || '], ['||', qr/ (\|\|) /, ' && '],
    ['+',  qr/ (\+) /, ' - '], ['-', qr/(?<=[\w)\]]) (-) /, ' + '], ['*', qr/(?<=[\w)]) (\*) (?=[\w(])/, ' + '],
    ['true', qr/\b(true)\b/, 'false'], ['false', qr/\b(false)\b/, 'true'],
    ['not', qr/(?<=\(|\s)(!)(?=[\w(])/, ''],
    ['number', qr/(?<![\w.'])([0-9]{1,5})(?![\w.'x])/, undef],
    ['if', qr/\bif \(()(?!constexpr)(?=[^;]*\)[^;]*;?\s*$|.*\{\s*$)/, undef],
    ['call', qr/^(\s+[\w.:>()*-]+\(.*\);)\s*$/, ';'],
    ['assign', qr/^(\s+[\w.>\[\]()*-]+ = .*;)\s*$/, ';'],
    ['min', qr/\bstd::(min)\b/, 'std::max'], ['max', qr/\bstd::(max)\b/, 'std::min'],
);

sub slurp { my ($file) = @_; open my $in, '<', $file or die "$file: $!\n"; local $/; return <$in> }
sub spill { my ($file, $text) = @_; open my $out, '>', $file or die "$file: $!\n"; print $out $text; close $out }

my @files = sort map { glob "$tree/src/$_/*.cpp" } qw(platform common setcontrol showcontrol pages);
@files = grep { !/ResourceStrings\.cpp$|BuiltInServices\.cpp$/ } @files;    # tables of texts
my @places;
for my $file (@files) {
    my @lines = split /^/, slurp($file);
    for my $n (0 .. $#lines) {
        my $line = $lines[$n];
        next if $line =~ m{^\s*(//|#|\*)} || $line =~ /static_assert|^namespace|^using|^template|constexpr std::u16string/;
        $line =~ s{\s//.*$}{};
        for my $kind (@kinds) {
            my ($name, $pattern) = @$kind;
            my $text = $line;
            while ($text =~ /$pattern/g) {
                push @places, [$file, $n, $name, $-[0], $+[0]];
                last if $name eq 'call' || $name eq 'assign' || $name eq 'if';
            }
        }
    }
}

sub changed {
    my ($line, $place) = @_;
    my (undef, undef, $name, $from, $to) = @$place;
    my ($kind) = grep { $_->[0] eq $name } @kinds;
    my $found = substr $line, $from, $to - $from;
    if ($name eq 'number') { substr($line, $from, $to - $from) = $found + 1 }
    elsif ($name eq 'if') { $line =~ s/\bif \((.*)\)(\s*\{\s*|\s+[^()]*(?:\(.*\))?;\s*)$/if (!($1))$2/ or return undef }
    elsif ($name eq 'call' || $name eq 'assign') { $line =~ s/^(\s*).*;(\s*)$/$1;$2/s }
    else { substr($line, $from, $to - $from) = $kind->[2] }
    return $line;
}

# Every kind as likely as it is frequent, each place once.
for my $i (reverse 1 .. $#places) { my $j = random_below($i + 1); @places[$i, $j] = @places[$j, $i] }

sub run { return system('/bin/bash', '-c', $_[0]) }
mkdir $work;
run("rm -rf '$work/tree' && mkdir -p '$work/tree' && cd '$tree' && tar cf - --exclude=./build --exclude=./.git . | tar xf - -C '$work/tree'") == 0
    or die "cannot copy\n";
my $build = "$work/build";
my $configure = "cmake -G Ninja -S '$work/tree' -B '$build' -DCMAKE_CXX_FLAGS=-O0";
run("$configure >'$work/log' 2>&1 && ninja -C '$build' core_tests >>'$work/log' 2>&1") == 0 or die "see $work/log\n";
my $limit = 'timeout -k 5 120';
my $program = "$limit '$build/core_tests' --gtest_brief=1 --gtest_fail_fast";
# The tests that take long come last: most changes are noticed without them.
my $tests = "cd '$work' && { $program --gtest_filter=-DateTruth* && $program --gtest_filter=DateTruth*; } >'$work/log' 2>&1";
run($tests) == 0 or die "the tests fail without any change: see $work/log\n";

my %known;
if (open my $in, '<', "$work/results") { while (<$in>) { chomp; my ($what, $key) = split /\t/, $_, 2; $known{$key} = $what } }
open my $results, '>>', "$work/results";
$results->autoflush(1);
my %sum = (caught => 0, survived => 0);
my @survivors;
for my $place (@places) {
    last if $sum{caught} + $sum{survived} >= $count;
    my ($file, $n, $name) = @$place;
    my $copy = $file;
    $copy =~ s{^\Q$tree\E}{$work/tree};
    my $whole = slurp($file);
    my @lines = split /^/, $whole;
    my $new = changed($lines[$n], $place);
    next if !defined $new || $new eq $lines[$n];
    (my $short = $file) =~ s{^\Q$tree/\E}{};
    my ($before, $after) = map { my $t = $_; $t =~ s/^\s+|\s+$//g; $t } $lines[$n], $new;
    my $key = "$short:" . ($n + 1) . ": $name: $before -> $after";
    my $what = $known{$key};
    if (!$what) {
        $lines[$n] = $new;
        (my $object = $copy) =~ s{.*/src/}{$build/src/CMakeFiles/kiv_core.dir/};
        my $hash = "objdump -d '$object.o' | tail -n +4 | sha256sum";
        my $was = `$hash`;
        spill($copy, join '', @lines);
        if (run("ninja -C '$build' core_tests >'$work/log' 2>&1") != 0) { $what = 'unbuilt' }
        elsif (`$hash` eq $was) { $what = 'same' }
        else { $what = run($tests) == 0 ? 'survived' : 'caught' }
        spill($copy, $whole);
        run("ninja -C '$build' kiv_core >/dev/null 2>&1");
        print $results "$what\t$key\n";
    }
    next if $what eq 'unbuilt' || $what eq 'same';
    $sum{$what}++;
    push @survivors, $key if $what eq 'survived';
    print "$what: $key\n";
}
my $all = $sum{caught} + $sum{survived};
print "survivors:\n", map({ "    $_\n" } @survivors);
printf "%d of %d changes were caught, %.1f %%\n", $sum{caught}, $all, $all ? 100 * $sum{caught} / $all : 0;
