#!/bin/sh
# Succeeds if a shared library ($1) exports exactly the functions that a header ($2) declares.
set -eu

declared=$(grep -o '\bexp[A-Z][A-Za-z0-9]*(' "$2" | tr -d '(' | sort -u)
exported=$(nm --dynamic --defined-only "$1" | awk '{print $3}' | sort)
if [ "$declared" != "$exported" ]; then
    printf '%s\n' "$declared" >declared.txt
    printf '%s\n' "$exported" >exported.txt
    diff declared.txt exported.txt || true
    exit 1
fi
test "$(printf '%s\n' "$exported" | wc -l)" -eq 118
