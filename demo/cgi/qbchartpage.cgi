#!/usr/bin/perl
# qbchartpage.cgi - the page script: the chart program starts it last, with the base name of the report files, the
# settings file and the GIF's name, and its output is what the browser gets.
use strict;
use warnings;

my ($nameBase, $setFile, $gifName) = @ARGV;
die "usage: qbchartpage.cgi NAMEBASE SETFILE GIF\n" unless defined $gifName;

# Names came in with a form: nothing of them may become markup.
sub entities
{
    my ($text) = @_;
    my %names = ('&' => '&amp;', '<' => '&lt;', '>' => '&gt;', '"' => '&quot;');
    $text =~ s/([&<>"])/$names{$1}/g;
    return $text;
}

my ($title, $gif, $settings) = map { entities($_) } ($nameBase, $gifName, $setFile);
print <<"PAGE";
Content-type: text/html

<!DOCTYPE html>
<html><head><title>$title</title></head>
<body>
<p><img src="/gifs/$gif" alt="Chart of $title"></p>
<p>Settings: $settings</p>
</body></html>
PAGE
