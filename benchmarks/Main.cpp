#include <benchmark/benchmark.h>

#include "benchmarks/Benchmarks.h"

int main(int argc, char** argv) {
  using namespace Helmsway::Benchmarks;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RegisterReadBenchmarks();
  RegisterSaveBenchmarks();
  RegisterAddInBenchmarks();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
