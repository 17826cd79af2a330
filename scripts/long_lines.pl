# Usage: perl long_lines.pl WIDEST FILE...: prints the lines that are longer. Left out is data of tests: literals
# between the marks of clang-format, and texts that are compared, each of which is one line.
use strict;
use warnings;
use open qw(:std :encoding(UTF-8));

my $widest = shift;
my $failed = 0;
my $between_marks = 0;
while (<>) {
    chomp;
    $between_marks = 1 if m{// clang-format off};
    $between_marks = 0 if m{// clang-format on};
    my $is_data = ($between_marks && $ARGV =~ m{^tests/}) || /^\s+(equal|contains) /;
    if (length > $widest && !$is_data) {
        print "$ARGV:$.: $_\n";
        $failed = 1;
    }
    if (eof) {
        $between_marks = 0;
        close ARGV;
    }
}
exit $failed;
