// The benchmark program's entry point; every other file in bench/ only registers benchmarks.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
