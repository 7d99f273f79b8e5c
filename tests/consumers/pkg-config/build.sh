#!/bin/sh
# A project that finds the installed library with pkg-config: build.sh SOURCES FOLDER
set -eu
${CC:-cc} "$1/host.c" -o "$2/c_host" $(pkg-config --cflags --libs lumivex)
${CXX:-c++} -std=c++20 "$1/host.cpp" -o "$2/cxx_host" $(pkg-config --cflags --libs lumivex)
