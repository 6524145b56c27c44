// SPDX-License-Identifier: MIT
#include "probe/report.h"

#include "probe/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <ostream>

namespace kvprobe {
namespace {

using Json = nlohmann::ordered_json;
using Row = std::vector<std::string>;

constexpr int kDecimals = 3;
constexpr int kJsonIndent = 2;
constexpr double kNanoseconds = 1e9;

// Writes a table whose columns are as wide as their widest cell, each aligned to the left ('l') or
// to the right ('r').
void PrintTable(std::ostream& out, const std::vector<Row>& rows, const std::string& alignment) {
    std::vector<size_t> widths(alignment.size());
    for (const Row& row : rows) {
        for (size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], CountCharacters(row[i]));
        }
    }
    for (const Row& row : rows) {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - CountCharacters(row[i]), ' ');
            line += i == 0 ? "" : "  ";
            line += alignment[i] == 'l' ? row[i] + padding : padding + row[i];
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
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

Json PlanBoxJson(const GBox2d& box) {
    return {{"low", {box.m_low.m_x, box.m_low.m_y}}, {"high", {box.m_high.m_x, box.m_high.m_y}}};
}

// The path of the model is the caller's: what isn't UTF-8 in it is replaced.
void Print(std::ostream& out, const Json& json) {
    out << json.dump(kJsonIndent, ' ', false, Json::error_handler_t::replace) << '\n';
}

Json LegJson(const GBoreLine& leg) {
    if (leg.IsInfinite()) {
        return {{"through", Triple(leg.m_point)},
                {"along", {leg.m_direction.m_x, leg.m_direction.m_y, leg.m_direction.m_z}},
                {"radius", leg.m_radius}};
    }
    return {{"from", Triple(leg.Evaluate(leg.m_back))},
            {"to", Triple(leg.Evaluate(leg.m_front))},
            {"length", leg.m_front},
            {"radius", leg.m_radius}};
}

Json FindingsJson(const Arguments& arguments, const Scene& scene, const Findings& findings,
                  const Times& times) {
    Json json = {{"model", arguments.model}};
    for (const GBoreLine& leg : findings.legs) {
        json["legs"].push_back(LegJson(leg));
    }
    if (findings.range) {
        json["range"] = BoxJson(*findings.range);
    }
    if (findings.plan) {
        json["window"] = PlanBoxJson(*findings.plan->window);
    }
    json["hits"] = Json::array();
    for (const Hit& hit : findings.hits) {
        Json hit_json = {{"object", scene.Name(hit.object)}, {"relation", InWords(hit.relation)}};
        if (!findings.legs.empty()) {
            hit_json["leg"] = hit.leg + 1;
            hit_json["enters"] = hit.enters;
            hit_json["leaves"] = hit.leaves;
            hit_json["length"] = hit.Length();
        }
        json["hits"].push_back(hit_json);
    }
    json["found"] = CountFound(findings.hits);
    json["objects"] = scene.Size();
    json["readingSeconds"] = times.reading;
    json["probingSeconds"] = times.probing;
    json["boxesTested"] = findings.sieving.boxes;
    json["testingSeconds"] = findings.sieving.seconds;
    return json;
}

std::string BoxText(const GBox& box) {
    const auto corner = [](const GPosition& p) {
        return "(" + Length(p.m_x) + ", " + Length(p.m_y) + ", " + Length(p.m_z) + ")";
    };
    return corner(box.m_low) + " - " + corner(box.m_high);
}

std::vector<Row> PipeRows(const Scene& scene, const Findings& findings) {
    std::vector<Row> rows = {{"leg", "object", "enters", "leaves", "length"}};
    for (const Hit& hit : findings.hits) {
        rows.push_back({std::to_string(hit.leg + 1), scene.Name(hit.object), Length(hit.enters),
                        Length(hit.leaves), Length(hit.Length())});
    }
    return rows;
}

std::vector<Row> RelationRows(const Scene& scene, const Findings& findings) {
    std::vector<Row> rows = {{"relation", "object"}};
    for (const Hit& hit : findings.hits) {
        rows.push_back({InWords(hit.relation), scene.Name(hit.object)});
    }
    return rows;
}

size_t Count(const std::vector<Hit>& hits, Relation relation) {
    return static_cast<size_t>(std::count_if(
        hits.begin(), hits.end(), [relation](const Hit& hit) { return hit.relation == relation; }));
}

}  // namespace

void PrintList(std::ostream& out, const Scene& scene, bool json) {
    if (json) {
        Json list = Json::array();
        for (size_t i = 0; i < scene.Size(); ++i) {
            const Object& object = scene.Model()[i];
            list.push_back({{"object", object.name},
                            {"box", BoxJson(scene.Boxes()[i])},
                            {"ownBox", BoxJson(object.box)},
                            {"placement", object.placement.m_matrix}});
        }
        Print(out, {{"objects", list}});
        return;
    }
    std::vector<Row> rows = {{"object", "low x", "y", "z", "high x", "y", "z"}};
    for (size_t i = 0; i < scene.Size(); ++i) {
        const GBox& box = scene.Boxes()[i];
        rows.push_back({scene.Name(i), Length(box.m_low.m_x), Length(box.m_low.m_y),
                        Length(box.m_low.m_z), Length(box.m_high.m_x), Length(box.m_high.m_y),
                        Length(box.m_high.m_z)});
    }
    PrintTable(out, rows, "lrrrrrr");
    out << Counted(scene.Size(), "object") << '\n';
}

void PrintPlan(std::ostream& out, const Scene& scene, const Plan& plan, bool json) {
    if (json) {
        Json list = Json::array();
        for (size_t i = 0; i < scene.Size(); ++i) {
            list.push_back({{"object", scene.Name(i)}, {"plan", PlanBoxJson(plan.boxes[i])}});
        }
        Print(out, {{"objects", list}});
        return;
    }
    const char* const second = plan.up == UpAxis::kY ? "z" : "y";
    std::vector<Row> rows = {{"object", "low x", second, "high x", second}};
    for (size_t i = 0; i < scene.Size(); ++i) {
        const GBox2d& box = plan.boxes[i];
        rows.push_back({scene.Name(i), Length(box.m_low.m_x), Length(box.m_low.m_y),
                        Length(box.m_high.m_x), Length(box.m_high.m_y)});
    }
    PrintTable(out, rows, "lrrrr");
    out << Counted(scene.Size(), "object") << '\n';
}

const char* InWords(Relation relation) {
    switch (relation) {
        case Relation::kInside:
            return "inside";
        case Relation::kCrosses:
            return "crosses";
        case Relation::kRangeMeets:
            return "meets the range";
        case Relation::kMayTouch:
            break;
    }
    return "may be touched";
}

std::string Summary(const Scene& scene, const Findings& findings) {
    const std::string of_objects = " of " + Counted(scene.Size(), "object");
    const size_t inside = Count(findings.hits, Relation::kInside);
    const size_t crossing = Count(findings.hits, Relation::kCrosses);
    if (findings.plan || inside + crossing > 0) {
        return std::to_string(inside) + of_objects + " inside, " + std::to_string(crossing) +
               " crossing";
    }
    return std::to_string(CountFound(findings.hits)) + of_objects +
           (findings.range ? " may lie in the range" : " may be touched");
}

void PrintFindings(std::ostream& out, const Arguments& arguments, const Scene& scene,
                   const Findings& findings, const Times& times) {
    if (arguments.json) {
        Print(out, FindingsJson(arguments, scene, findings, times));
        return;
    }
    if (findings.legs.empty()) {
        PrintTable(out, RelationRows(scene, findings), "ll");
    } else {
        PrintTable(out, PipeRows(scene, findings), "rlrrr");
    }
    if (findings.range) {
        out << "range: " << BoxText(*findings.range) << '\n';
    }
    out << Summary(scene, findings)
        << (findings.legs.empty() ? "" : " on " + Counted(findings.legs.size(), "leg"))
        << " (probed in " << Milliseconds(times.probing) << ", model read in "
        << Milliseconds(times.reading) << ")\n";
    if (scene.IsRepeated()) {
        const Sieving& sieving = findings.sieving;
        out << sieving.boxes << " boxes tested in " << Milliseconds(sieving.seconds) << ", "
            << Decimal(sieving.seconds * kNanoseconds / static_cast<double>(sieving.boxes), 1)
            << " ns each\n";
    }
}

std::string Title(const Arguments& arguments, const Scene& scene, const Findings& findings) {
    const std::string model = Printable(std::filesystem::path(arguments.model).filename().string());
    if (std::holds_alternative<ListRequest>(arguments.request)) {
        return model + ": " + Counted(scene.Size(), "object");
    }
    if (findings.plan && !findings.plan->window) {
        return model + ": the plan of " + Counted(scene.Size(), "object");
    }
    const std::string by_pipe =
        findings.legs.empty() ? ""
                              : " by a pipe of radius " + Decimal(findings.legs[0].m_radius, 3);
    return model + ": " + Summary(scene, findings) + by_pipe;
}

}  // namespace kvprobe
