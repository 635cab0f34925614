#pragma once

namespace Helmsway::Benchmarks {

/// Each tells the benchmark library of the benchmarks of one kind.
void RegisterReadBenchmarks();
void RegisterSaveBenchmarks();
void RegisterAddInBenchmarks();

}  // namespace Helmsway::Benchmarks
