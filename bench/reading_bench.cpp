#include "seconds.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/checks/document_check.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <limits>
#include <simdjson.h>
#include <sstream>
#include <string>

/// \file
/// The reading of a large section document, against the bare parse of its text by simdjson, and its check, against
/// reading it.

using namespace qel;
using namespace qel::Sectrix;

namespace {

/// 10,000 sections of 20 positions each, one in four of these named.
std::string MakeDocument() {
    int const sections = 10000, corners = 20;
    std::ostringstream text;
    text.precision(17);
    text << "{\n  \"Outlines\": [\n    [\n";
    for (int i = 0; i < sections * corners; ++i) {
        double const x = i % corners * 1.1 + i * 1e-3, y = (i * 37 % 1000) * 0.017;
        text << (i > 0 ? ",\n      " : "      ");
        if (i % 4 == 0)
            text << "{ \"name\": \"Corner" << i << "\", \"coordinates\": [" << x << ", " << y << "] }";
        else
            text << '[' << x << ", " << y << ']';
    }
    text << "\n    ],\n    [\n";
    auto const loop = [&text](int from, int count, bool exterior) {
        text << "[[";
        for (int i = 0; i < count; ++i)
            text << (i > 0 ? ", " : "") << from + i;
        text << "], " << (exterior ? "true" : "false") << ']';
    };
    for (int i = 0; i < sections; ++i) {
        text << (i > 0 ? ",\n" : "") << "      { \"assemblyPartName\": \"Part" << i << "\", \"loops\": [";
        loop(i * corners, 12, true);
        text << ", ";
        loop(i * corners + 12, 8, false);
        text << "] }";
    }
    text << "\n    ]\n  ],\n  \"Params\": { \"Width\": 20.0 }\n}\n";
    return text.str();
}

/// The set is made and freed within the time, and so is the parser of the peer. `ratio` is that of the best times,
/// `tree_ratio` that of the document tree alone, `ratio_to_kept_parser` compares with a parser that has its memory
/// already.
void ReadDocument(benchmark::State& state) {
    auto const text = MakeDocument();
    std::istringstream stream(text);
    double best = std::numeric_limits<double>::max(), treeBest = best, peerBest = best, keptBest = best;
    simdjson::dom::parser kept;
    auto const parse = [&text, &state](simdjson::dom::parser& parser) {
        simdjson::dom::element root;
        if (parser.parse(text).get(root))
            state.SkipWithError("the peer refuses the text");
    };
    for (auto _ : state) {
        double const seconds = ProcessorSeconds([&] {
            stream.clear();
            CrossSections set;
            set.From(stream);
            benchmark::DoNotOptimize(set.Items().data());
        });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        treeBest = std::min(treeBest, ProcessorSeconds([&] {
                                Dom dom;
                                DomReaderJson::FromString(dom, text.c_str(), nullptr);
                                benchmark::DoNotOptimize(dom.size());
                            }));
        peerBest = std::min(peerBest, ProcessorSeconds([&] {
                                simdjson::dom::parser parser;
                                parse(parser);
                            }));
        keptBest = std::min(keptBest, ProcessorSeconds([&] { parse(kept); }));
    }
    state.counters["megabytes"] = static_cast<double>(text.size()) / 1e6;
    state.counters["best_ms"] = best * 1e3;
    state.counters["peer_ms"] = peerBest * 1e3;
    state.counters["tree_ratio"] = treeBest / peerBest;
    state.counters["ratio_to_kept_parser"] = best / keptBest;
    state.counters["ratio"] = best / peerBest;
}
BENCHMARK(ReadDocument)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

/// The document has no fault, or, with the argument 1, sections without an outline, two findings each. `ratio` is
/// that of the best times of checking and of reading.
void CheckText(benchmark::State& state) {
    auto text = MakeDocument();
    if (state.range(0) != 0)
        for (auto place = text.find("true"); place != std::string::npos; place = text.find("true", place))
            text.replace(place, 4, "null");
    std::istringstream stream(text);
    double best = std::numeric_limits<double>::max(), readBest = best;
    std::size_t count = 0;
    for (auto _ : state) {
        double const seconds = ProcessorSeconds([&] { count = SectrixTools::CheckDocument(text).size(); });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        readBest = std::min(readBest, ProcessorSeconds([&] {
                                stream.clear();
                                CrossSections set;
                                set.From(stream);
                                benchmark::DoNotOptimize(set.Items().data());
                            }));
    }
    state.counters["megabytes"] = static_cast<double>(text.size()) / 1e6;
    state.counters["findings"] = static_cast<double>(count);
    state.counters["best_ms"] = best * 1e3;
    state.counters["ratio"] = best / readBest;
}
BENCHMARK(CheckText)->Arg(0)->Arg(1)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace
