#!/bin/sh
# Builds docs/ as a site, without the network: index.html in the folder given. Any warning is an error.
#   usage: scripts/docs.sh FOLDER
set -eu

folder=$1
source=$(dirname "$0")/../docs
rm -rf "$folder"
mkdir -p "$folder"
# Debian's, whatever other Python there is.
/usr/bin/python3 -m sphinx -q -n -W --keep-going -d "$folder/doctrees" "$source" "$folder/html"
rm -r "$folder/doctrees"
cp "$folder/html/README.html" "$folder/html/index.html"
