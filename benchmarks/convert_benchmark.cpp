// How fast texts in memory are converted, by what they hold.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "quillet.h"

namespace {

std::string Repeated(std::string_view text, std::size_t size) {
    std::string result;
    while (result.size() < size) result.append(text);
    return result;
}

void Convert(benchmark::State& state, const std::string& input) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(quillet::ConvertText(input, quillet::Options{}).output.size());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(input.size()));
    state.SetComplexityN(state.range(0));
}

std::size_t SizeOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void OrdinaryCommands(benchmark::State& state) {
    Convert(state, Repeated("RECODE q1 q2 (1=2) (2 THRU 5=3.5) (ELSE=SYSMIS) INTO new_1 new_2.\n"
                            "VALUE LABELS q1 1 'Yes' 2 'No' 9 'Don''t know'.\n"
                            "IF (age > 3 AND income <= 17.25) flag = weight * 2.5 + 1.\n",
                            SizeOf(state)));
}

void NonAsciiLabels(benchmark::State& state) {
    Convert(state,
            Repeated("VALUE LABELS q1 1 'Für die Länder' 2 '대한민국의 도시'.\n", SizeOf(state)));
}

void InlineData(benchmark::State& state) {
    Convert(state, "BEGIN DATA\n" + Repeated("12 7 1 0 1 331 8 2 4 4 1 1 9\n", SizeOf(state)) +
                       "END DATA.\n");
}

void OneLongLiteral(benchmark::State& state) {
    Convert(state, "TITLE '" + Repeated("word ", SizeOf(state)) + "'.\n");
}

void OneLongCommand(benchmark::State& state) {
    Convert(state,
            "FREQUENCIES VARIABLES=\n" + Repeated("  q1 q2 q3 q4 q5\n", SizeOf(state)) + ".\n");
}

void BlankLines(benchmark::State& state) { Convert(state, Repeated("\n \t\n", SizeOf(state))); }

constexpr int kSmall = 1 << 20;
constexpr int kLarge = 1 << 24;

}  // namespace

BENCHMARK(OrdinaryCommands)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(NonAsciiLabels)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(InlineData)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(OneLongLiteral)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(OneLongCommand)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(BlankLines)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
