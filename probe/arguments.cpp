// SPDX-License-Identifier: MIT
#include "probe/arguments.h"

#include "probe/failure.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <iostream>
#include <string_view>

namespace kvprobe {
namespace {

constexpr int kCoordinates = 3;
// Coordinates beyond this are the kernel's infinity.
constexpr double kLargestCoordinate = 1e30;

double ParseNumber(const std::string& argument, std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result parsed = std::from_chars(text.data(), end, value);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        throw Failure(argument, "'" + std::string(text) + "' is not a number");
    }
    if (!(std::fabs(value) < kLargestCoordinate)) {
        throw Failure(argument, "'" + std::string(text) + "' is not a number below 1e30");
    }
    return value;
}

GVector ParseTriple(const std::string& argument, std::string_view text) {
    double values[kCoordinates];
    int count = 0;
    for (size_t begin = 0; begin <= text.size(); ++count) {
        const size_t end = std::min(text.find(',', begin), text.size());
        if (count < kCoordinates) {
            values[count] = ParseNumber(argument, text.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    if (count != kCoordinates) {
        throw Failure(argument, "'" + std::string(text) + "' has " + std::to_string(count) +
                                    " coordinates, not three as in 1,2.5,-3");
    }
    return {values[0], values[1], values[2]};
}

GPosition ParsePosition(const std::string& argument, std::string_view text) {
    const GVector v = ParseTriple(argument, text);
    return {v.m_x, v.m_y, v.m_z};
}

GUnitVector ParseDirection(const std::string& argument, std::string_view text) {
    const GVector v = ParseTriple(argument, text);
    // Scaled by its largest component first, so that neither tiny nor huge directions are lost.
    const double largest = std::max({std::fabs(v.m_x), std::fabs(v.m_y), std::fabs(v.m_z)});
    if (!std::isnormal(largest)) {
        throw Failure(argument, "the direction has no length");
    }
    return BuildUnitVector(v.m_x / largest, v.m_y / largest, v.m_z / largest);
}

double ParseRadius(const std::string& text) {
    const double radius = ParseNumber("--radius", text);
    if (radius < 0) {
        throw Failure("--radius", "'" + text + "' is negative");
    }
    return radius;
}

UpAxis ParseUpAxis(const std::string& text) {
    if (text == "y") {
        return UpAxis::kY;
    }
    if (text == "z") {
        return UpAxis::kZ;
    }
    throw Failure("--up", "'" + text + "' is neither y nor z");
}

// The texts as they stand on the command line. Numbers are read by the parsers above, whose
// complaints name the argument.
struct Texts {
    std::string from;
    std::vector<std::string> via;
    std::string to;
    std::string through;
    std::string along;
    std::string radius = "0";
    std::string up = "y";
};

std::vector<GPosition> ParseRoute(const Texts& texts) {
    if (texts.from.empty()) {
        throw Failure("--from", "missing beside --via or --to");
    }
    if (texts.to.empty()) {
        throw Failure("--to", "missing beside --from");
    }
    std::vector<GPosition> route = {ParsePosition("--from", texts.from)};
    std::string before = "--from";
    const auto append = [&route, &before](const std::string& argument, const std::string& text) {
        const GPosition p = ParsePosition(argument, text);
        if (p.IsEqual(route.back())) {
            throw Failure(argument, "'" + text + "' is the same point as " + before +
                                        ": a leg needs two different ends");
        }
        route.push_back(p);
        before = argument;
    };
    for (const std::string& via : texts.via) {
        append("--via", via);
    }
    append("--to", texts.to);
    return route;
}

Line ParseLine(const Texts& texts) {
    if (texts.through.empty()) {
        throw Failure("--through", "missing beside --along");
    }
    if (texts.along.empty()) {
        throw Failure("--along", "missing beside --through");
    }
    return {ParsePosition("--through", texts.through), ParseDirection("--along", texts.along)};
}

void ParseProbe(const Texts& texts, Arguments& arguments) {
    const bool has_route = !texts.from.empty() || !texts.via.empty() || !texts.to.empty();
    const bool has_line = !texts.through.empty() || !texts.along.empty();
    if (has_route && has_line) {
        throw Failure("--through", "a line without ends excludes --from, --via and --to");
    }
    if (arguments.list) {
        if (has_route || has_line) {
            throw Failure("--list", "lists the objects of the model and takes no probe");
        }
        return;
    }
    if (!has_route && !has_line) {
        throw Failure("--from",
                      "no probe given: say --from and --to, --through and --along, or "
                      "--list");
    }
    if (has_route) {
        arguments.route = ParseRoute(texts);
    } else {
        arguments.line = ParseLine(texts);
    }
}

std::string FirstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

}  // namespace

std::optional<Arguments> ParseArguments(int argc, char** argv) {
    CLI::App app{
        "Which objects of a model may this pipe touch?\n\n"
        "Exit status: 0 something may be touched, 1 nothing, 2 an error.",
        "kvprobe"};
    Arguments arguments;
    Texts texts;
    app.set_version_flag("--version", "kvprobe " KVPROBE_VERSION);
    app.add_option("MODEL", arguments.model, "The model, in any format that Assimp reads")
        ->required();
    app.add_option("--from", texts.from, "Where the route begins: x,y,z in the model's units");
    app.add_option("--via", texts.via, "A bend of the route; may be given again")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--to", texts.to, "Where the route ends");
    app.add_option("--through", texts.through, "A point of a line without ends");
    app.add_option("--along", texts.along, "The direction of that line");
    app.add_option("-r,--radius", texts.radius, "The radius of the pipe (0)");
    app.add_flag("--list", arguments.list, "List the objects and their boxes");
    app.add_flag("--json", arguments.json, "Print JSON instead of a table");
    app.add_option("--svg", arguments.svg, "Draw the model, the probe and what it may touch");
    app.add_option("--up", texts.up, "Which axis points up in the drawing, y or z (y)");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) {
        app.exit(success);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw Failure("arguments", FirstLine(error.what()));
    }
    arguments.up = ParseUpAxis(texts.up);
    arguments.radius = ParseRadius(texts.radius);
    ParseProbe(texts, arguments);
    return arguments;
}

}  // namespace kvprobe
