#!/usr/bin/env bash
# Compares the library's dynamic symbol table with the functions the public
# headers declare: a declared function missing from the library, or any other
# defined symbol in it, fails.
set -euo pipefail
lib=$1 include=$2
declared=$(cat "$include"/kelm.h "$include"/kelm/*.h | grep -v "^#" | tr '\n' ' ' |
           grep -oE 'KELM_API[^;(]*\(' | sed -E 's/.*[ *]([A-Za-z_0-9]+)\($/\1/' | sort -u)
exported=$(nm -D --defined-only "$lib" | awk '{print $3}' | sort -u)
missing=$(comm -23 <(echo "$declared") <(echo "$exported"))
leaked=$(comm -13 <(echo "$declared") <(echo "$exported"))
[ -z "$missing" ] || { echo "declared but not exported:"; echo "$missing"; }
[ -z "$leaked" ] || { echo "exported but not declared:"; echo "$leaked"; }
echo "$(echo "$declared" | wc -l) declared, $(echo "$exported" | wc -l) exported"
[ -z "$missing$leaked" ]
