#!/usr/bin/perl
# Puts the messages of mailboxes in mbox form into a maildir, each into a file of its own in "cur":
#
#     mb2md.pl -s MAILBOX|DIRECTORY -R -d MAILDIR
#
# A directory is searched for mailboxes, with -R also below it. The messages of one that is called
# "INBOX", or is given itself, go into the maildir, those of another NAME into its folder ".NAME".
BEGIN { @INC = grep { $_ ne '/etc/perl' } @INC }  # root's alone, in the box
use strict;
use warnings;
use File::Find;
use Getopt::Std;

my %option;
getopts('s:Rd:', \%option) && defined $option{s} && defined $option{d} && !@ARGV
    or die "usage: mb2md.pl -s SOURCE [-R] -d MAILDIR\n";
my $count = 0;

sub make_maildir {
    my ($maildir) = @_;
    for my $directory ($maildir, map { "$maildir/$_" } qw(cur new tmp)) {
        -d $directory or mkdir $directory, 0700 or die "cannot make $directory: $!\n";
    }
}

sub finish_message {
    my ($message, $temporary, $final) = @_;
    close $message or die "cannot write $temporary: $!\n";
    rename $temporary, $final or die "cannot make $final: $!\n";
}

# A line that begins with "From " behind an empty line, or at the start, begins a message.
sub convert {
    my ($mailbox, $maildir) = @_;
    make_maildir($maildir);
    open my $in, '<', $mailbox or die "cannot open $mailbox: $!\n";
    my ($message, @names);
    my $last_is_empty = 1;
    while (my $line = <$in>) {
        if ($last_is_empty && $line =~ /^From /) {
            finish_message($message, @names) if $message;
            my $name = sprintf '%06d.mbox', ++$count;
            @names = ("$maildir/tmp/$name", "$maildir/cur/$name:2,S");
            open $message, '>', $names[0] or die "cannot make $names[0]: $!\n";
        } elsif ($message) {
            print {$message} $line =~ s/^>(>*From )/$1/r or die "cannot write $names[0]: $!\n";
        } else {
            die "$mailbox is no mailbox\n";
        }
        $last_is_empty = $line eq "\n";
    }
    finish_message($message, @names) if $message;
}

if (-d $option{s}) {
    my @mailboxes;
    find({no_chdir => 1, wanted => sub {
        $File::Find::prune = 1 if -d && !$option{R} && $_ ne $option{s};
        push @mailboxes, $_ if -f;
    }}, $option{s});
    make_maildir($option{d});
    for my $mailbox (sort @mailboxes) {
        my $folder = substr $mailbox, 1 + length $option{s};
        $folder =~ tr{/}{.};
        convert($mailbox, $folder eq 'INBOX' ? $option{d} : "$option{d}/.$folder");
    }
} else {
    convert($option{s}, $option{d});
}
