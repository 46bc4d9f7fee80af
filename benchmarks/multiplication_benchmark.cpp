// How long commands take that multiply what they say, by how they do it. Time is to grow with the
// bytes that go in and come out; beyond the budget of a command nothing comes out any more. The
// argument is how often each of the two parts that are multiplied occurs.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "quillet.h"

namespace {

std::string Repeated(std::string_view text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) result.append(text);
    return result;
}

std::string Numbered(std::string_view prefix, std::size_t count, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) result.append(separator);
        result.append(prefix).append(std::to_string(i));
    }
    return result;
}

using Source = std::string (*)(std::size_t count);

void Convert(benchmark::State& state, Source source) {
    const std::string input = source(static_cast<std::size_t>(state.range(0)));
    std::size_t written = 0;
    for (auto _ : state) written = quillet::ConvertText(input, quillet::Options{}).output.size();
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(input.size() + written));
    state.SetComplexityN(static_cast<std::int64_t>(input.size() + written));
}

std::string BreakInManyTables(std::size_t count) {
    return "TABLES /BREAK=+" + Numbered("a", count, "+") + Repeated(" /TABLE=a", count) + ".\n";
}

std::string FunctionsOnManyTerms(std::size_t count) {
    return "TABLES /TABLE=" + Numbered("a", count, "+") +
           " /STATISTICS=" + Repeated("COUNT ", count) + ".\n";
}

std::string LabelOnManyTerms(std::size_t count) {
    return "TABLES /TABLE=" + Numbered("a", count, "+") + " /STATISTICS=COUNT('" +
           std::string(count, 'x') + "').\n";
}

std::string TotalOfManyVariables(std::size_t count) {
    return "TABLES /OBSERVATION=s /FTOTAL=t '" + std::string(count, 'x') + "' /TABLE=s>(" +
           Numbered("a", count, "+") + ")+t.\n";
}

std::string LiteralsThatRepeatThemselves(std::size_t count) {
    const std::string literal = "'a'" + Repeated("+a'", count) + " ";
    return "TABLES /TABLE=a /TITLE=" + Repeated(literal, 32) + ".\n";
}

std::string NameInManyElements(std::size_t count) {
    return "IGRAPH /X1=VAR(" + std::string(count, 'n') + ") TYPE=CATEGORICAL /Y=$count" +
           Repeated(" /BAR", count) + ".\n";
}

std::string BaseInManyPlaces(std::size_t count) {
    return "TABLES /TABLE=x" + Repeated("+x", count - 1) +
           " BY y /STATISTICS=" + Repeated("CPCT((F5.1):x) ", count) + ".\n";
}

// No two functions have the same base variables.
std::string BasesInManyPlaces(std::size_t count) {
    std::string functions;
    for (std::size_t i = 0; i < count; ++i) {
        functions += "CPCT((F5.1):x y" + std::to_string(i) + ") ";
    }
    return "TABLES /TABLE=" + Numbered("x>a", count, "+") + " BY y /STATISTICS=" + functions +
           ".\n";
}

constexpr int kSmall = 1 << 10;
constexpr int kLarge = 1 << 16;

}  // namespace

#define MULTIPLICATION(source) \
    BENCHMARK_CAPTURE(Convert, source, source)->RangeMultiplier(4)->Range(kSmall, kLarge)

MULTIPLICATION(BreakInManyTables);
MULTIPLICATION(FunctionsOnManyTerms);
MULTIPLICATION(LabelOnManyTerms);
MULTIPLICATION(TotalOfManyVariables);
MULTIPLICATION(LiteralsThatRepeatThemselves);
MULTIPLICATION(NameInManyElements);
MULTIPLICATION(BaseInManyPlaces);
MULTIPLICATION(BasesInManyPlaces);
