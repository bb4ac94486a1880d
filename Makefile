# Front door of the project: `make demo` and `make test` are all a new user needs.
# Every build goes through CMake; the targets below only pick the build folder and options.

PAQUETS     := cmake g++ make pkg-config libicu-dev libgtest-dev libgmock-dev \
               libbenchmark-dev libcli11-dev nlohmann-json3-dev libhunspell-dev hunspell-en-us \
               pybind11-dev python3-dev python3-pytest python3-distributed
PAQUETS_FUZZ := clang libclang-rt-14-dev
# What `make quality` compares the command with; never needed to build or test.
PAQUETS_QUALITE := hunspell hunspell-en-us aspell aspell-en pandoc
PAQUETS_COUVERTURE := gcovr
PAQUETS_FORMAT := clang-format
# The tools `make bench-peers` times filtres against, and what it times with.
PAQUETS_BENCH := hyperfine time texlive-binaries lynx libmd4c-dev gcc python3
JOBS        ?= $(shell nproc 2>/dev/null || echo 2)
SUDO        := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

PREFIX      ?= /usr/local

.PHONY: install all deps deps-fuzz deps-bench deps-quality quality coverage build build-asan test test-asan \
        test-tsan demo bench bench-peers bench-hostile fuzz clean format format-check

all: build

# Installs only what is missing, so it is quiet and quick on a machine that has everything.
deps:
	@manque=$$(for p in $(PAQUETS); do \
	    dpkg-query -W -f='$${Status}\n' $$p 2>/dev/null | grep -q 'install ok installed' || echo $$p; \
	  done); \
	if [ -n "$$manque" ]; then \
	  echo "Installing:" $$manque; \
	  $(SUDO) apt-get update -qq && $(SUDO) env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq $$manque; \
	fi

deps-fuzz:
	@$(MAKE) --no-print-directory deps PAQUETS="$(PAQUETS_FUZZ)"

deps-quality:
	@$(MAKE) --no-print-directory deps PAQUETS="$(PAQUETS_QUALITE)"

# Flags per 1000 prose words through hunspell, against the peers' own filters, on the corpus.
quality: build deps-quality
	scripts/qualite.py

# Line and branch coverage of the library and the command by the whole test suite.
coverage: deps
	@$(MAKE) --no-print-directory deps PAQUETS="$(PAQUETS_COUVERTURE)"
	cmake -S . -B build-coverage -DCMAKE_BUILD_TYPE=Debug -DFILTRES_COUVERTURE=ON
	cmake --build build-coverage -j $(JOBS)
	find build-coverage -name '*.gcda' -delete
	cd build-coverage && ctest -j $(JOBS) > /dev/null || true
	gcovr -r . build-coverage --filter '(ferlane|framework|filters|latex|markdown|html|subtitles|cli)/' \
	      --exclude-throw-branches --exclude-unreachable-branches --print-summary -o build-coverage/couverture.txt

# The written style (.clang-format) of every C and C++ source but the generated table.
SOURCES_FORMATEES = $(shell git ls-files '*.cpp' '*.h' '*.c' | grep -v '^html/ReferencesHTML5.h$$')
format-check:
	@$(MAKE) --no-print-directory deps PAQUETS="$(PAQUETS_FORMAT)"
	clang-format --dry-run --Werror $(SOURCES_FORMATEES)

format:
	@$(MAKE) --no-print-directory deps PAQUETS="$(PAQUETS_FORMAT)"
	@clang-format -i $(SOURCES_FORMATEES)

deps-bench:
	@$(MAKE) --no-print-directory deps PAQUETS="$(PAQUETS_BENCH)"

build: deps
	cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build build -j $(JOBS)

# Installs the command, the libraries, the headers, the CMake and pkg-config packages, the man
# page and the Python module under PREFIX.
install: build
	cmake --install build --prefix "$(PREFIX)"

build-asan: deps
	cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DFILTRES_SANITISEURS=address,undefined
	cmake --build build-asan -j $(JOBS)

test: build build-asan
	cd build && ctest --output-on-failure -j $(JOBS)
	cd build-asan && ctest --output-on-failure -j $(JOBS) -LE lent

test-asan: build-asan
	cd build-asan && ctest --output-on-failure -j $(JOBS)

test-tsan: deps
	cmake -S . -B build-tsan -DCMAKE_BUILD_TYPE=Debug -DFILTRES_SANITISEURS=thread
	cmake --build build-tsan -j $(JOBS)
	cd build-tsan && ctest --output-on-failure -j $(JOBS) -L parallele

# Each example goes through `filtres`; a file NAME.args beside it holds the options it needs.
demo: build
	@for f in examples/*; do \
	  case "$$f" in *.args) continue;; esac; \
	  [ -f "$$f" ] || continue; \
	  options=$$( [ -f "$$f.args" ] && cat "$$f.args" ); \
	  echo "=== $$f (detected: $$(build/filtres detect "$$f"))$${options:+, options: $$options}"; \
	  eval build/filtres $$options '"$$f"' || exit 1; \
	  echo; \
	done

bench: build
	build/bench/filtres_bench --benchmark_counters_tabular=true

# Whole process against whole process, on the big files of the corpus: filtres and the tool a
# user would otherwise run on each format (RUNS=N for more or fewer runs a command).
RUNS ?= 10
bench-peers: build deps-bench
	python3 scripts/bench_peers.py --filtres build/filtres --runs $(RUNS)

# Peak memory and time on hostile documents (dense or unclosed markup) at 2 and 16 MB.
bench-hostile: build deps-bench
	python3 scripts/pics_hostiles.py --filtres build/filtres

fuzz: deps deps-fuzz
	cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
	      -DCMAKE_C_COMPILER=clang -DFILTRES_FUZZ=ON
	cmake --build build-fuzz -j $(JOBS)
	@echo "Fuzzers are in build-fuzz/fuzz/ (run one with its corpus folder, e.g. fuzz/corpus/<name>)."

clean:
	rm -rf build build-asan build-tsan build-fuzz build-coverage
