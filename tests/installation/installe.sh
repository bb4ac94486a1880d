#!/usr/bin/env bash
# Installs the build into a temporary prefix, then builds and runs, against that tree only, the
# example host three ways: C++ with CMake's find_package, C++ with pkg-config, and C with the C
# interface. Usage: installe.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1 source=$2
prefixe=$(mktemp -d)
trap 'rm -rf "$prefixe"' EXIT
cmake --install "$build" --prefix "$prefixe/installe" > /dev/null
cible=$prefixe/installe
export LD_LIBRARY_PATH=$cible/lib
document=$prefixe/doc.tex
printf '\\begin{document}\nUn \\textbf{caf\\'"'"'e} chaud.\n\\end{document}\n' > "$document"
attendu='latex:  Un café chaud.  first word at [17,19)'

echo "== find_package"
cmake -S "$source/examples/consumer" -B "$prefixe/cmake" -DCMAKE_PREFIX_PATH="$cible" > /dev/null
cmake --build "$prefixe/cmake" > /dev/null
sortie=$("$prefixe/cmake/consommateur" "$document" | tr -d '\n')
[ "$sortie" = "$attendu" ] || { echo "find_package: got '$sortie'"; exit 1; }

echo "== pkg-config"
export PKG_CONFIG_PATH=$cible/lib/pkgconfig
g++ -std=c++20 "$source/examples/consumer/consommateur.cpp" -o "$prefixe/pc" $(pkg-config --cflags --libs filtres)
sortie=$("$prefixe/pc" "$document" | tr -d '\n')
[ "$sortie" = "$attendu" ] || { echo "pkg-config: got '$sortie'"; exit 1; }

echo "== C"
gcc -std=c11 -Wall -Wextra -pedantic -Werror "$source/examples/consumer/consommateur.c" -o "$prefixe/c" \
    $(pkg-config --cflags --libs filtres)
sortie=$("$prefixe/c" markdown '*Bonjour* le `code`')
[ "$sortie" = "$(printf 'markdown: Bonjour le code\n[0,7) 1\n[11,15) 16')" ] || { echo "C: got '$sortie'"; exit 1; }

echo "== Python module"
module=$(find "$cible" -name 'filtres*.so' -path '*dist-packages*')
[ -n "$module" ] || { echo "no Python module installed"; exit 1; }
sortie=$(env -u LD_LIBRARY_PATH PYTHONPATH=$(dirname "$module") /usr/bin/python3 -c \
  'import filtres; print(filtres.convert("a *b*", format="markdown").text)')
[ "$sortie" = "a b" ] || { echo "Python: got '$sortie'"; exit 1; }

echo "== command and man page"
"$cible/bin/filtres" --format latex "$document" | grep -q 'Un café' 
[ -f "$cible/share/man/man1/filtres.1" ]
echo "installation: 5 passed, 0 failed"
