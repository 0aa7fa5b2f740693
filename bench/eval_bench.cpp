// Speed of the expression parser against native loops over the same terms, measured in one run:
// every term in turn by all contenders, medians over the repetitions, ratios at the end.
//
//   build/release/bench/korvinth_eval_bench
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "bench/native_terms.h"
#include "term/math_parser.h"

namespace {

using korvinth::bench::NativeLoop;
using namespace korvinth::term;

constexpr std::size_t kSamples = 2000;
constexpr double kA = 1.3;
constexpr double kB = 0.7;

struct BenchTerm
{
    int number;
    const char* text;
};
#define KORVINTH_ROW(number, text, expression) {number, text},
constexpr BenchTerm kTerms[] = {KORVINTH_BENCH_TERMS(KORVINTH_ROW)};
constexpr std::size_t kTermCount = std::size(kTerms);
constexpr int kTwelve = 12;  // the terms of the geometric means

struct Engine
{
    MathParser parser;
    VariableHandle x;

    Engine()
    {
        x = parser.DefineVariable("x");
        parser.SetVariableValue(parser.DefineVariable("a"), kA);
        parser.SetVariableValue(parser.DefineVariable("b"), kB);
    }
};

Engine& SharedEngine()
{
    static Engine engine;
    return engine;
}

const std::vector<double>& Arguments()
{
    static const std::vector<double> kArguments = [] {
        std::vector<double> x(kSamples);
        for (std::size_t i = 0; i < kSamples; ++i) {
            x[i] = -10 + 20.0 * static_cast<double>(i) / (kSamples - 1);
        }
        return x;
    }();
    return kArguments;
}

void Native(benchmark::State& state, NativeLoop loop)
{
    std::vector<double> out(kSamples);
    for (auto _ : state) {
        loop(Arguments().data(), out.data(), kSamples, kA, kB);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
}

void Block(benchmark::State& state, const char* text)
{
    Engine& engine = SharedEngine();
    const ExprHandle handle = engine.parser.Parse(text);
    std::vector<double> out(kSamples);
    std::vector<Error> errors(kSamples);
    for (auto _ : state) {
        engine.parser.EvaluateBlock(handle, engine.x, Arguments(), out, errors);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    engine.parser.ReleaseExpr(handle);
}

void Scalar(benchmark::State& state, const char* text)
{
    Engine& engine = SharedEngine();
    const ExprHandle handle = engine.parser.Parse(text);
    std::vector<double> out(kSamples);
    const std::vector<double>& in = Arguments();
    for (auto _ : state) {
        for (std::size_t i = 0; i < kSamples; ++i) {
            engine.parser.SetVariableValue(engine.x, in[i]);
            out[i] = engine.parser.Evaluate(handle);
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    engine.parser.ReleaseExpr(handle);
}

void OneSampleBlocks(benchmark::State& state, const char* text)
{
    Engine& engine = SharedEngine();
    const ExprHandle handle = engine.parser.Parse(text);
    std::vector<double> out(kSamples);
    std::vector<Error> errors(kSamples);
    const std::span<const double> in(Arguments());
    for (auto _ : state) {
        for (std::size_t i = 0; i < kSamples; ++i) {
            engine.parser.EvaluateBlock(handle, engine.x, in.subspan(i, 1),
                                        std::span(out).subspan(i, 1),
                                        std::span(errors).subspan(i, 1));
        }
        benchmark::DoNotOptimize(out.data());
    }
    engine.parser.ReleaseExpr(handle);
}

void Compile(benchmark::State& state, const char* text)
{
    Engine& engine = SharedEngine();
    for (auto _ : state) {
        const ExprHandle handle = engine.parser.Parse(text);
        benchmark::DoNotOptimize(handle);
        engine.parser.ReleaseExpr(handle);
    }
}

// Collects the times of all repetitions by name.
class Medians : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            times_[run.run_name.function_name].push_back(run.cpu_accumulated_time /
                                                         static_cast<double>(run.iterations));
        }
    }
    double Nanoseconds(const std::string& name, double per) const
    {
        const auto found = times_.find(name);
        if (found == times_.end()) return std::nan("");
        std::vector<double> times = found->second;
        std::sort(times.begin(), times.end());
        return times[times.size() / 2] * 1e9 / per;
    }

private:
    std::map<std::string, std::vector<double>> times_;
};

std::string Name(const char* contender, int number)
{
    return std::string(contender) + "/" + std::to_string(number);
}

struct Contender
{
    const char* name;
    double per;  // evaluations in one iteration
};
constexpr Contender kContenders[] = {{"native", kSamples}, {"vector", kSamples},
                                     {"block", kSamples},  {"evaluate", kSamples},
                                     {"single", kSamples}, {"compile", 1}};

void PrintRow(const char* title, const double (&times)[std::size(kContenders)])
{
    std::printf("%-46s", title);
    for (const double time : times) std::printf("%10.2f", time);
    std::printf("\n");
}

void PrintReport(const Medians& medians)
{
    std::printf("nanoseconds per evaluation (compile: per term), medians\n%-46s", "term");
    for (const Contender& contender : kContenders) std::printf("%10s", contender.name);
    std::printf("\n");
    double sums[std::size(kContenders)] = {};
    for (const BenchTerm& term : kTerms) {
        double times[std::size(kContenders)];
        for (std::size_t c = 0; c < std::size(kContenders); ++c) {
            times[c] =
                medians.Nanoseconds(Name(kContenders[c].name, term.number), kContenders[c].per);
            if (term.number <= kTwelve) sums[c] += std::log(times[c]);
        }
        PrintRow(term.text, times);
    }
    double means[std::size(kContenders)];
    for (std::size_t c = 0; c < std::size(kContenders); ++c) means[c] = std::exp(sums[c] / kTwelve);
    PrintRow("geometric mean of terms 1 to 12", means);
    std::printf("\nnative / block       %6.2f   (aim: at least 3.2)\n", means[0] / means[2]);
    std::printf("block / vector       %6.2f   (aim: at most 1.15)\n", means[2] / means[1]);
    std::printf("evaluate / native    %6.2f   (aim: at most 2.6)\n", means[3] / means[0]);
    std::printf("single / evaluate    %6.2f   (aim: at most 3)\n", means[4] / means[3]);
    std::printf("compile              %6.2f us (aim: under 5)\n", means[5] / 1000);
}

}  // namespace

int main(int argc, char** argv)
{
    using korvinth::bench::kNativeScalar;
    using korvinth::bench::kNativeVector;
    std::vector<char*> arguments(argv, argv + argc);
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    std::string repetitions = "--benchmark_repetitions=9";
    std::string time = "--benchmark_min_time=0.02";
    arguments.insert(arguments.begin() + 1, {interleave.data(), repetitions.data(), time.data()});
    int count = static_cast<int>(arguments.size());
    for (std::size_t i = 0; i < kTermCount; ++i) {
        const BenchTerm& term = kTerms[i];
        const auto add = [&](const char* contender, auto function, auto argument) {
            benchmark::RegisterBenchmark(Name(contender, term.number).c_str(), function, argument);
        };
        add("native", Native, kNativeScalar[i]);
        add("vector", Native, kNativeVector[i]);
        add("block", Block, term.text);
        add("evaluate", Scalar, term.text);
        add("single", OneSampleBlocks, term.text);
        add("compile", Compile, term.text);
    }
    benchmark::Initialize(&count, arguments.data());
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    PrintReport(medians);
    return 0;
}
