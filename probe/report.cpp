// SPDX-License-Identifier: MIT
#include "probe/report.h"

#include "probe/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>

namespace kvprobe {
namespace {

using Json = nlohmann::ordered_json;
using Row = std::vector<std::string>;

constexpr int kDecimals = 3;
constexpr int kJsonIndent = 2;

// Writes a table whose columns are as wide as their widest cell: the one at left_column to the
// left, all others to the right.
void PrintTable(std::ostream& out, const std::vector<Row>& rows, size_t left_column) {
    std::vector<size_t> widths(rows.front().size());
    for (const Row& row : rows) {
        for (size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], CountCharacters(row[i]));
        }
    }
    for (const Row& row : rows) {
        for (size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - CountCharacters(row[i]), ' ');
            out << (i == 0 ? "" : "  ") << (i == left_column ? row[i] + padding : padding + row[i]);
        }
        out << '\n';
    }
}

// To the millimetre of a model in metres.
std::string Length(double value) {
    return Decimal(value, kDecimals);
}

std::string Counted(size_t count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string Milliseconds(double seconds) {
    return Decimal(seconds * 1000, kDecimals) + " ms";
}

Json Triple(const GPosition& p) {
    return {p.m_x, p.m_y, p.m_z};
}

Json BoxJson(const GBox& box) {
    return {{"low", Triple(box.m_low)}, {"high", Triple(box.m_high)}};
}

// The path of the model is the caller's: what isn't UTF-8 in it is replaced.
void Print(std::ostream& out, const Json& json) {
    out << json.dump(kJsonIndent, ' ', false, Json::error_handler_t::replace) << '\n';
}

Json LegJson(const Arguments& arguments, const GBoreLine& leg) {
    if (arguments.line) {
        return {{"through", Triple(leg.m_point)},
                {"along", {leg.m_direction.m_x, leg.m_direction.m_y, leg.m_direction.m_z}}};
    }
    return {{"from", Triple(leg.Evaluate(leg.m_back))},
            {"to", Triple(leg.Evaluate(leg.m_front))},
            {"length", leg.m_front}};
}

}  // namespace

void PrintList(std::ostream& out, const std::vector<Object>& objects, bool json) {
    if (json) {
        Json list = Json::array();
        for (const Object& object : objects) {
            list.push_back({{"object", object.name},
                            {"box", BoxJson(ModelBox(object))},
                            {"ownBox", BoxJson(object.box)},
                            {"placement", object.placement.m_matrix}});
        }
        Print(out, {{"objects", list}});
        return;
    }
    std::vector<Row> rows = {{"object", "low x", "y", "z", "high x", "y", "z"}};
    for (const Object& object : objects) {
        const GBox box = ModelBox(object);
        rows.push_back({object.name, Length(box.m_low.m_x), Length(box.m_low.m_y),
                        Length(box.m_low.m_z), Length(box.m_high.m_x), Length(box.m_high.m_y),
                        Length(box.m_high.m_z)});
    }
    PrintTable(out, rows, 0);
    out << Counted(objects.size(), "object") << '\n';
}

void PrintHits(std::ostream& out, const Arguments& arguments, const std::vector<GBoreLine>& legs,
               const std::vector<Object>& objects, const std::vector<Hit>& hits,
               const Times& times) {
    if (arguments.json) {
        Json legs_json = Json::array();
        for (const GBoreLine& leg : legs) {
            legs_json.push_back(LegJson(arguments, leg));
        }
        Json hits_json = Json::array();
        for (const Hit& hit : hits) {
            hits_json.push_back({{"leg", hit.leg + 1},
                                 {"object", objects[hit.object].name},
                                 {"enters", hit.enters},
                                 {"leaves", hit.leaves},
                                 {"length", hit.Length()}});
        }
        Print(out, {{"model", arguments.model},
                    {"radius", arguments.radius},
                    {"legs", legs_json},
                    {"hits", hits_json},
                    {"touched", CountTouched(hits)},
                    {"objects", objects.size()},
                    {"readingSeconds", times.reading},
                    {"probingSeconds", times.probing}});
        return;
    }
    std::vector<Row> rows = {{"leg", "object", "enters", "leaves", "length"}};
    for (const Hit& hit : hits) {
        rows.push_back({std::to_string(hit.leg + 1), objects[hit.object].name, Length(hit.enters),
                        Length(hit.leaves), Length(hit.Length())});
    }
    PrintTable(out, rows, 1);
    out << CountTouched(hits) << " of " << Counted(objects.size(), "object")
        << " may be touched on " << Counted(legs.size(), "leg") << " (probed in "
        << Milliseconds(times.probing) << ", model read in " << Milliseconds(times.reading)
        << ")\n";
}

}  // namespace kvprobe
