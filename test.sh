#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Tavenor developers
# SPDX-License-Identifier: MIT
# Builds and tests the program, plain and under the sanitizers; fails at the first failing step.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"

# The tests need no screen, and texts beyond ASCII on every machine.
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen

build_and_test() {
    local preset=$1
    echo "== $preset"
    # Nobody debugs what was built only to be tested once.
    cmake --preset "$preset" ${CI:+-DCMAKE_CXX_FLAGS_DEBUG=-g1}
    cmake --build --preset "$preset"
    ctest --preset "$preset" --output-on-failure --no-tests=error -j2
}

groups=(build test)
if [ -n "${CI-}" ]; then
    groups+=(format)
fi
scripts/install-dependencies "${groups[@]}"

scripts/check-layers
# Who only wants to know whether the program works needs no layout tool.
if [ -n "${CI-}" ] || scripts/format --find >/dev/null 2>&1; then
    scripts/format --check
fi
build_and_test development
build_and_test sanitizers
