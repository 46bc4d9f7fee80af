// How fast a TABLES command is parsed whose tokens are there already, by what makes it long. The
// argument is the number of repetitions, each of one or two tokens.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bison/tbtrtables.h"
#include "parser/tbtrtablescommand.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace {

std::string Repeated(std::string_view text, const benchmark::State& state) {
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(state.range(0)));
    for (std::int64_t index = 0; index < state.range(0); ++index) result.append(text);
    return result;
}

void Parse(benchmark::State& state, const std::string& text) {
    const quillet::CodePage& codePage = quillet::CodePage::Utf8();
    quillet::TAVQTokenSequence sequence(codePage, text, /*skipLeadingSign=*/false,
                                        /*maxTokens=*/0);
    for (auto _ : state) {
        quillet::TablesCommand command(codePage, &sequence);
        if (quillet::ParseTables(command) != quillet::ParseStatus::kSuccess) std::abort();
        benchmark::DoNotOptimize(command.ParseResult());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * sequence.Count());
    state.SetComplexityN(state.range(0));
}

void LongStacking(benchmark::State& state) {
    Parse(state, "TABLES /TABLE a" + Repeated(" + b", state));
}

// Every operand joins a chain that is already long, from its left.
void StackingInParentheses(benchmark::State& state) {
    const std::string parentheses(3000, ')');
    std::string opened;
    for (std::size_t level = 0; level < parentheses.size(); ++level) opened += "b + (";
    Parse(state, "TABLES /TABLE " + opened + "a" + Repeated(" + b", state) + parentheses);
}

void NestingsInAStacking(benchmark::State& state) {
    Parse(state, "TABLES /TABLE a" + Repeated(" + (b > c)", state));
}

void LongVariableList(benchmark::State& state) {
    Parse(state, "TABLES /OBSERVATION" + Repeated(" x", state) + " /TABLE x");
}

void LongListOfRanges(benchmark::State& state) {
    Parse(state, "TABLES /MRGROUP m" + Repeated(" x TO y", state) + " /TABLE m");
}

void LongLiteralList(benchmark::State& state) {
    Parse(state, "TABLES /TABLE a /TITLE" + Repeated(" 'x'", state));
}

void UnknownSubcommand(benchmark::State& state) {
    Parse(state, "TABLES /XYZ" + Repeated(" w", state) + " /TABLE a");
}

void ObsoleteFormat(benchmark::State& state) {
    Parse(state, "TABLES /FORMAT" + Repeated(" CWIDTH", state) + " /TABLE a");
}

void LongStatistics(benchmark::State& state) {
    Parse(state, "TABLES /TABLE a /STATISTICS MEAN(" + Repeated(" x (F8.2) 'm'", state) + ")");
}

void ManyTables(benchmark::State& state) {
    Parse(state, "TABLES" + Repeated(" /TABLE a BY b /TITLE 'x'", state));
}

void ManyBreaks(benchmark::State& state) {
    Parse(state, "TABLES" + Repeated(" /BREAK + r", state) + " /TABLE a");
}

constexpr int kSmall = 1 << 16;
constexpr int kLarge = 1 << 20;

}  // namespace

BENCHMARK(LongStacking)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(StackingInParentheses)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(NestingsInAStacking)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(LongVariableList)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(LongListOfRanges)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(LongLiteralList)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(UnknownSubcommand)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(ObsoleteFormat)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(LongStatistics)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(ManyTables)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
BENCHMARK(ManyBreaks)->RangeMultiplier(4)->Range(kSmall, kLarge)->Complexity();
