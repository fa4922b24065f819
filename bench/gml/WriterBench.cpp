// Coordinates written per second by the XML writer, against a floor measured in the same run:
// std::to_chars of the same numbers into one buffer and a single write of it.
#include "gml/NumberFormat.h"
#include "gml/XmlWriter.h"

#include "CountingBuffer.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <ostream>
#include <random>
#include <streambuf>
#include <vector>

namespace {

// Projected coordinates in metres, as city models have them.
std::vector<double> const& coordinates() {
    static const std::vector<double> values = [] {
        std::mt19937_64 random(42);
        std::uniform_real_distribution<double> east(350000.0, 360000.0);
        std::uniform_real_distribution<double> height(0.0, 120.0);
        std::vector<double> result;
        for (int i = 0; i < 30000; ++i) {
            result.push_back(east(random));
            result.push_back(east(random) + 5.4e6);
            result.push_back(height(random));
        }
        return result;
    }();
    return values;
}

constexpr int precision = 3;

void BM_FloorToChars(benchmark::State& state) {
    std::vector<double> const& values = coordinates();
    CountingBuffer sink;
    std::ostream stream(&sink);
    std::vector<char> buffer(values.size() * 32);
    for (auto _ : state) {
        char* out = buffer.data();
        for (double value : values) {
            out = std::to_chars(out, buffer.data() + buffer.size(), value, std::chars_format::fixed,
                                precision)
                      .ptr;
            *out++ = ' ';
        }
        stream.write(buffer.data(), out - buffer.data());
    }
    benchmark::DoNotOptimize(sink.count);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK(BM_FloorToChars);

void BM_WriterCoordinates(benchmark::State& state) {
    std::vector<double> const& values = coordinates();
    CountingBuffer sink;
    std::ostream stream(&sink);
    gml::XmlWriter writer(stream, 3, precision);
    for (auto _ : state)
        writer.writeCoordinates(values);
    benchmark::DoNotOptimize(sink.count);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK(BM_WriterCoordinates);

// As a polygon writes them: one coordinate element per quad, five vertices with the closing one.
void BM_WriterPolygonElements(benchmark::State& state) {
    std::vector<double> const& values = coordinates();
    CountingBuffer sink;
    std::ostream stream(&sink);
    gml::XmlWriter writer(stream, 3, precision);
    writer.depth = 8;
    std::vector<double> face(12);
    const gml::AttributeTable attributes = {{L"srsDimension", L"3"}};
    for (auto _ : state) {
        for (std::size_t at = 0; at + 12 <= values.size(); at += 12) {
            face.assign(values.begin() + static_cast<std::ptrdiff_t>(at),
                        values.begin() + static_cast<std::ptrdiff_t>(at + 12));
            writer.writeCoordinatesElement(L"gml:posList", face, 3, attributes);
        }
    }
    benchmark::DoNotOptimize(sink.count);
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(values.size() / 12 * 15));
}
BENCHMARK(BM_WriterPolygonElements);

// The element frame of one polygon, as the tree writes it around each coordinate list.
void BM_WriterElements(benchmark::State& state) {
    CountingBuffer sink;
    std::ostream stream(&sink);
    gml::XmlWriter writer(stream, 3, precision);
    writer.depth = 8;
    const std::wstring id = L"e3a1c6b2-5f1d-4c1e-9b7a-2d4f6a8c0e12_poly0";
    const std::wstring ring = id + L".f0b1c2d3-4e5f-4a6b-8c7d-9e0f1a2b3c4d";
    for (auto _ : state) {
        writer.startElement(L"gml:surfaceMember");
        writer.startElement(L"gml:Polygon", id);
        writer.startElement(L"gml:exterior");
        writer.startElement(L"gml:LinearRing", ring);
        writer.endElement();
        writer.endElement();
        writer.endElement();
        writer.endElement();
    }
    benchmark::DoNotOptimize(sink.count);
    state.SetItemsProcessed(state.iterations() * 4);
}
BENCHMARK(BM_WriterElements);

} // namespace
