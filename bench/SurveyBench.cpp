#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "survey/Survey.h"
#include "sync/SyncModel.h"

namespace kelvara::bench {
namespace {

/// A site in which every antenna hears every other three times, with noise and some wrong pairs.
sync::SyncModel NoisySite(int antennas) {
  std::mt19937 generator(1);
  sync::SyncModel model;
  std::vector<double> delays;
  for (int antenna = 0; antenna < antennas; ++antenna) {
    model.FindOrAddAa(static_cast<std::int16_t>(antenna), 3, 90);
    delays.push_back(static_cast<double>(generator() % 4000) / 100.0);
  }
  for (int from = 0; from < antennas; ++from) {
    for (int to = 0; to < antennas; ++to) {
      const double error = (from + to) % 17 == 3 ? (from < to ? 12.0 : -12.0) : 0.0;
      for (int reading = 0; from != to && reading < 3; ++reading) {
        const double noise = static_cast<double>(generator() % 200) / 100.0 - 1.0;
        const double phase = delays[static_cast<std::size_t>(from)] -
                             delays[static_cast<std::size_t>(to)] + error + noise;
        model.AddPhase(static_cast<std::int16_t>(from), static_cast<std::int16_t>(to),
                       static_cast<std::int16_t>(std::lround(phase)));
      }
    }
  }
  return model;
}

/// The plain factorisation of a dense matrix, the unit in which a survey is measured.
void Cholesky(std::vector<double>& matrix, std::size_t size) {
  for (std::size_t column = 0; column < size; ++column) {
    for (std::size_t row = column; row < size; ++row) {
      double sum = matrix[row * size + column];
      for (std::size_t inner = 0; inner < column; ++inner) {
        sum -= matrix[row * size + inner] * matrix[column * size + inner];
      }
      matrix[row * size + column] =
          row == column ? std::sqrt(sum) : sum / matrix[column * size + column];
    }
  }
}

std::vector<double> PositiveMatrix(std::size_t size) {
  std::vector<double> matrix(size * size, -1.0);
  for (std::size_t row = 0; row < size; ++row) {
    matrix[row * size + row] = static_cast<double>(size) + 1.0;
  }
  return matrix;
}

double SecondsOfCholesky(std::size_t size) {
  constexpr int kRuns = 200;
  const std::vector<double> original = PositiveMatrix(size);
  std::vector<double> matrix;
  const auto start = std::chrono::steady_clock::now();
  for (int run = 0; run < kRuns; ++run) {
    matrix = original;
    Cholesky(matrix, size);
    benchmark::DoNotOptimize(matrix.data());
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  return taken.count() / kRuns;
}

/// The counter "per_cholesky" is the time of a survey divided by that of one plain factorisation
/// of the same size.
void RunSurvey(benchmark::State& state, bool guidance) {
  const auto antennas = static_cast<int>(state.range(0));
  const sync::SyncModel model = NoisySite(antennas);
  survey::SurveyOptions options;
  options.guidance = guidance;
  const auto start = std::chrono::steady_clock::now();
  for (auto _ : state) {
    benchmark::DoNotOptimize(survey::MakeSurvey(model, options));
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  state.counters["per_cholesky"] = taken.count() / static_cast<double>(state.iterations()) /
                                   SecondsOfCholesky(static_cast<std::size_t>(antennas) - 1);
}

void Survey(benchmark::State& state) { RunSurvey(state, false); }
BENCHMARK(Survey)->Arg(12)->Arg(25)->Arg(51)->Unit(benchmark::kMicrosecond);

void SurveyWithGuidance(benchmark::State& state) { RunSurvey(state, true); }
BENCHMARK(SurveyWithGuidance)->Arg(12)->Arg(25)->Arg(51)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvara::bench
