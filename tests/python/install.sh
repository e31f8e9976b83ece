#!/bin/sh
# Builds the Python packages and installs each wheel into an environment of its own, which has the
# system's packages besides and needs no network.
#   usage: install.sh FOLDER LIBRARY
set -eu

folder=$1
library=$2
python=/usr/bin/python3

install()
{
    $python -m venv --clear --without-pip --system-site-packages "$folder/$1"
    $python -m pip --quiet --python "$folder/$1/bin/python" install --no-index --no-deps "$2"
}

"$(dirname "$0")/../../scripts/python-package.sh" "$folder/packages" "$library"
install venv "$folder"/packages/*-any.whl
install carrying "$folder"/packages/*-linux_*.whl
