#!/bin/sh
# dispatch.cgi - what the web server starts: tells the chart program where everything is, then becomes it.
# The directories end with "/" because the program puts file names straight behind them.
here=$(cd "$(dirname "$0")" && pwd)
export QUILLBROOK_HOME="${QUILLBROOK_HOME:-${here%cgi}}"
export QUILLBROOK_OUT="${QUILLBROOK_OUT:-${here%cgi}out/}"
export PERL_HOME="${PERL_HOME:-/usr/bin/perl}"
exec "${QBCHART:-${here%cgi}../build/release/qbchart}"
