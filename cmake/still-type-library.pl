#!/usr/bin/perl
# Takes the time of compilation out of a type library that widl has written: it stands there as a number and as text, and
# would make two builds of one source differ. Fails where it is not found, so that another widl cannot bring it back
# unnoticed.
#
# usage: still-type-library.pl FILE
use strict;
use warnings;

my ($name) = @ARGV or die "usage: $0 FILE\n";
open my $file, '+<:raw', $name or die "$name: $!\n";
my $bytes = do { local $/; <$file> };

my $written = qr/Created by WIDL version [\d.]+ at /a;
my $day = qr/\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}/a;
# The text, filled up to a multiple of four bytes, and behind it the number, filled up too.
my $found = $bytes =~ s/$written\K$day(\nW{0,3}\x13\0).{4}(?=WW\x13\0)/Thu Jan  1 00:00:00 1970$1\0\0\0\0/s;
die "$name: the time of its compilation is not where it is looked for\n" unless $found;
seek $file, 0, 0 or die "$name: $!\n";
print $file $bytes or die "$name: $!\n";
close $file or die "$name: $!\n";
