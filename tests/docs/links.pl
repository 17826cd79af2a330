#!/usr/bin/perl
# What the documents of a tree point to is there: links.pl TREE. Relative links with their headings, and what stands in
# backticks and begins with a folder of the tree; "*" is any name, and <...> stands for one.
use strict;
use warnings;
use open qw(:std :encoding(UTF-8));
use File::Basename qw(dirname);
use File::Find qw(find);
use File::Glob qw(bsd_glob);

chdir $ARGV[0] or die "$ARGV[0]: $!\n";
my $failed = 0;

sub complain {
    print STDERR "$_[0]\n";
    $failed = 1;
}

# The lines of a document without its code blocks.
sub prose {
    my ($file) = @_;
    my ($is_code, @lines);
    open my $stream, '<', $file or die "$file: $!\n";
    while (my $line = <$stream>) {
        if ($line =~ /^ *```/) { $is_code = !$is_code; next }
        push @lines, $line unless $is_code;
    }
    return @lines;
}

# As links name them.
my %headings;

sub headings {
    my ($file) = @_;
    return $headings{$file} //= do {
        my %names;
        for my $line (prose($file)) {
            chomp $line;
            next unless $line =~ /^#+ (.*)/;
            (my $name = lc $1) =~ tr/ /-/;
            $name =~ s/[^\w-]//g;
            $names{$name} = 1;
        }
        \%names;
    };
}

sub check_link {
    my ($document, $link) = @_;
    my ($file, $heading) = split /#/, $link, 2;
    $file = $file eq '' ? $document : dirname($document) . "/$file";
    if (!-e $file) {
        complain("$document links to $link, which is not there");
    } elsif (defined $heading && !headings($file)->{$heading}) {
        complain("$document links to $link, and there is no such heading");
    }
}

sub check_path {
    my ($document, $path) = @_;
    (my $pattern = $path) =~ s/<[^>]*>/*/g;
    complain("$document names $path, which is not there") unless bsd_glob($pattern, 0);
}

my @documents;
find({no_chdir => 1, wanted => sub {
    $File::Find::prune = 1 if m{/(build|\.git|node_modules)$};
    push @documents, s{^\./}{}r if /\.md$/;
}}, '.');
my $folders = join '|', map { quotemeta } grep { -d && $_ ne 'build' } bsd_glob('*', 0);
for my $document (sort @documents) {
    for my $line (prose($document)) {
        check_link($document, $1) while $line =~ /\]\(([^):]+)\)/g;
        next if $document eq 'CHANGELOG.md'; # what it names was there
        check_path($document, $1) while $line =~ /`((?:$folders)\/[^` ]*)`/g;
    }
}
exit $failed;
