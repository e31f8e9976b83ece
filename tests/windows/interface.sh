#!/bin/sh
# What a Windows library needs and offers: interface.sh LIBRARY.dll prints it, with a file of the
# expected lines as second argument it fails if they differ. After a change that is meant:
# tests/windows/interface.sh build/windows/bin/TelvoDll.dll >tests/windows/TelvoDll.interface
set -eu

describe()
{
    x86_64-w64-mingw32-objdump -p "$1" | awk '
        /^Time\/Date\t/ { sub(/^Time\/Date\t+/, ""); print "time stamp  " $0 }
        /^\t+(HIGH_ENTROPY_VA|DYNAMIC_BASE|NX_COMPAT)$/ { print "flag        " $1 }
        /^\tDLL Name:/ { library = $3 }
        /^\t[0-9a-f]+\t +[0-9]+ +[^ ]+$/ { print "import      " library " " $3 }
        /^\[Ordinal\/Name Pointer\] Table/ { names = 1 }
        names && /^\t\[ *[0-9]+\] / { print "export      " $NF }
    ' | LC_ALL=C sort
}

if [ $# = 1 ]; then
    describe "$1"
else
    describe "$1" | diff "$2" -
fi
