// Reading and writing collections of 1,000, 10,000 and 100,000 entries, beside a copy of the same
// text and a count of its line ends. Reported per benchmark: bytes a second and how many times as
// long as the copy and the count together it takes.
//
//   build/release/bench/korvinth_collection_bench

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>

#include "document/collection_file.h"
#include "document/plot_entry.h"

namespace {

using namespace korvinth::document;

// Like those of a school year: a description, two functions, a parameter, the looks.
Collection MakeCollection(std::int64_t entries)
{
    PlotDocument plot;
    const CollectionEntry looks = EntryOfPlot(plot, {});
    Collection collection;
    collection.buffer = looks;
    for (std::int64_t number = 0; number < entries; ++number) {
        CollectionEntry entry;
        entry.is_protected = number % 10 == 0;
        entry.Set(Column::ShortText, "Übung " + std::to_string(number));
        entry.Set(Column::LongText,
                  "Verschiebe die Parabel mit dem Parameter a.\r\nWas fällt dir auf?");
        entry.Set(Column::Functions, "f(x)=x^2+a\r\n$g(x)=2*x");
        entry.Set(Column::Parameters, "a=" + std::to_string(number % 100));
        entry.Set(Column::Details, "Pa[-10;10;0.1;0;0;0]\r\nSf[0;0;0]\r\nSg[0;0;0]");
        entry.Set(Column::Ranges, "x[-10;10]\r\ny[-10;10]\r\ny$[;]");
        entry.Set(Column::Widths, std::string(looks[Column::Widths]));
        entry.Set(Column::Lines, "y=2:c=+1");
        collection.entries.push_back(std::move(entry));
    }
    return collection;
}

template <class Work>
double Seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double YardstickSeconds(const std::string& bytes)
{
    return Seconds([&bytes] {
        std::string copy = bytes;
        benchmark::DoNotOptimize(copy.data());
        benchmark::DoNotOptimize(std::count(copy.begin(), copy.end(), '\n'));
    });
}

template <class Work>
void Measure(benchmark::State& state, const std::string& bytes, Work work)
{
    double worked = 0;
    double yardstick = 0;
    for (auto _ : state) {
        const double seconds = Seconds(work);
        state.SetIterationTime(seconds);
        worked += seconds;
        yardstick += YardstickSeconds(bytes);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
    state.counters["times_copy"] = worked / yardstick;
}

void ReadEntries(benchmark::State& state)
{
    const std::string bytes = WriteCollection(MakeCollection(state.range(0)));
    Measure(state, bytes, [&bytes] {
        Collection collection;
        const std::string message = ReadCollection(bytes, ReadMode::Open, collection);
        if (!message.empty()) std::abort();
        benchmark::DoNotOptimize(collection.entries.data());
    });
}

void WriteEntries(benchmark::State& state)
{
    const Collection collection = MakeCollection(state.range(0));
    const std::string bytes = WriteCollection(collection);
    Measure(state, bytes, [&collection] {
        const std::string written = WriteCollection(collection);
        benchmark::DoNotOptimize(written.data());
    });
}

// A text as UTF-8, with a sign that Windows-1252 lacks at its very end.
void EncodeUtf8(benchmark::State& state)
{
    const std::string text = DecodeText(WriteCollection(MakeCollection(state.range(0)))) + "≤";
    Measure(state, text, [&text] {
        const std::string bytes = EncodeText(text);
        benchmark::DoNotOptimize(bytes.data());
    });
}

// Files that are none: 64 MB of one sign or of empty blocks.
void ReadDamage(benchmark::State& state)
{
    std::string bytes = "[Funktionenplotter]\r\n";
    while (bytes.size() < (64U << 20U)) bytes += state.range(0) == 0 ? "{" : "{}\n";
    Measure(state, bytes, [&bytes] {
        Collection collection;
        if (ReadCollection(bytes, ReadMode::Open, collection).empty()) std::abort();
    });
}

BENCHMARK(ReadEntries)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(WriteEntries)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(EncodeUtf8)->Arg(100000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReadDamage)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
