#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Fails if the shared library exports a symbol that is not meant for its users.
#
#   check-symbols.sh <nm> <libcorvane.so>
#
# Meant are the members of Corvane and of four classes of Corvane::Internal. What the templates and
# inline functions of the standard library and of Qt leave behind (weak or unique symbols) is
# nobody's interface and is let through.
set -euo pipefail
nm=$1
library=$2
inner_classes='SCLNamePool|SCLGrammarPool|SCLElementType|SCLErrorHandler'

# One line a symbol: its kind, and its qualified name without template arguments, parameters and
# the words that the demangler puts before a name.
symbols=$("$nm" --dynamic --defined-only --demangle "$library" | sed -E '
    s/^[0-9a-f]+ //
    s/operator(<<=?|>>=?|<=|>=|<|>|->\*?)/operator_/g
    s/operator (new|delete)/operator_\1/g
    s/\(anonymous namespace\)/anonymous_namespace/g
    :nested
    s/<[^<>]*>//g
    t nested
    s/ (vtable|VTT|typeinfo name|typeinfo|guard variable|construction vtable) for / /
    s/ (non-virtual|virtual) thunk to / /
    s/\(.*//
    s/^(.) .* ([^ ]+)$/\1 \2/')

if ! grep -q ' Corvane::SCLElement::' <<<"$symbols"; then
    echo "No symbol of Corvane::SCLElement is exported by $library"
    exit 1
fi

inner=$(grep ' Corvane::Internal::' <<<"$symbols" |
    grep -vE " Corvane::Internal::($inner_classes)(::|\$)" || true)
foreign=$(grep -E '^[^VWuvw] ' <<<"$symbols" |
    grep -vE ' (Corvane::.*|__bss_start|_edata|_end)$' || true) # the last three are the linker's own
if [ -n "$inner$foreign" ]; then
    echo "Exported but not meant to be:"
    printf '%s\n' "$inner" "$foreign"
    exit 1
fi
echo "$(wc -l <<<"$symbols") exported symbols, all meant to be"
