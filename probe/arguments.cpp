// SPDX-License-Identifier: MIT
#include "probe/arguments.h"

#include "probe/failure.h"
#include "probe/numbers.h"
#include "probe/text.h"

#include <kvgeom/kvgeom.h>

#include <CLI/CLI.hpp>

#include <array>
#include <charconv>
#include <cmath>

namespace kvprobe {
namespace {

constexpr size_t kMostPlanes = 6;
constexpr size_t kFewestCorners = 3;
constexpr size_t kWidestName = 7;

constexpr const char* kExitStatus = "0 something was found, 1 nothing, 2 an error.";

// What the values of options are called in help and manual; the completion goes by them, too.
constexpr const char* kFile = "FILE";
constexpr const char* kNumber = "NUMBER";
constexpr const char* kPoint = "X,Y,Z";

// The texts as they stand on the command line. Numbers are read by the parsers of numbers.h, whose
// complaints name the argument.
struct Texts {
    std::string from;
    std::vector<std::string> via;
    std::string to;
    std::string through;
    std::string along;
    std::string radius = "0";
    std::vector<std::string> points;
    std::string points_file;
    std::vector<std::string> planes;
    std::string planes_file;
    std::string box;
    std::string window;
    std::string point;
    std::string direction;
    std::string front;
    std::string back;
    std::string eye;
    std::string up = "y";
    std::string repeat = "1";
    bool list = false;
};

const std::string& Needed(const std::string& argument, const std::string& text) {
    if (text.empty()) {
        throw Failure(argument, "missing");
    }
    return text;
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
    throw Failure("--up", "'" + Printable(text) + "' is neither y nor z");
}

// Whether there is room for the copies depends on the model.
size_t ParseCopies(const Texts& texts, const Arguments& arguments) {
    size_t copies = 0;
    const char* const end = texts.repeat.data() + texts.repeat.size();
    const std::from_chars_result parsed = std::from_chars(texts.repeat.data(), end, copies);
    if (parsed.ec != std::errc() || parsed.ptr != end || copies == 0) {
        throw Failure("--repeat", "'" + Printable(texts.repeat) + "' is not a number of copies");
    }
    if (copies > 1 && (std::holds_alternative<ListRequest>(arguments.request) ||
                       std::holds_alternative<PlanRequest>(arguments.request))) {
        throw Failure("--repeat", "lists and plans are of the model itself");
    }
    if (copies > 1 && !arguments.svg.empty()) {
        throw Failure("--repeat", "drawings are of the model itself: leave out --svg");
    }
    return copies;
}

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

LineRequest ParseLine(const Texts& texts) {
    if (texts.through.empty()) {
        throw Failure("--through", "missing beside --along");
    }
    if (texts.along.empty()) {
        throw Failure("--along", "missing beside --through");
    }
    return {ParsePosition("--through", texts.through), ParseDirection("--along", texts.along),
            ParseRadius(texts.radius)};
}

Request ParseBore(const Texts& texts) {
    const bool has_route = !texts.from.empty() || !texts.via.empty() || !texts.to.empty();
    const bool has_line = !texts.through.empty() || !texts.along.empty();
    if (has_route && has_line) {
        throw Failure("--through", "a line without ends excludes --from, --via and --to");
    }
    if (texts.list && (has_route || has_line)) {
        throw Failure("--list", "lists the objects of the model and takes no probe");
    }
    if (texts.list) {
        return ListRequest{};
    }
    if (has_route) {
        return RouteRequest{ParseRoute(texts), ParseRadius(texts.radius)};
    }
    if (has_line) {
        return ParseLine(texts);
    }
    throw Failure("--from",
                  "no probe given: say --from and --to, --through and --along, or --list");
}

// The rows of numbers that come from a repeated argument or from a file.
std::vector<std::vector<double>> ParseRows(const std::string& argument,
                                           const std::vector<std::string>& texts,
                                           const std::string& file, size_t wanted) {
    if (texts.empty() == file.empty()) {
        throw Failure(argument,
                      "give either " + argument + ", again and again, or " + argument + "s FILE");
    }
    if (!file.empty()) {
        return ReadNumberFile(file, wanted);
    }
    std::vector<std::vector<double>> rows;
    rows.reserve(texts.size());
    for (const std::string& text : texts) {
        rows.push_back(ParseNumbers(argument, text, wanted));
    }
    return rows;
}

// The normal of a polygon by Newell's sum, which any three collinear points can't spoil; the null
// vector for points on a line.
GVector NewellNormal(const std::vector<GPosition>& polygon) {
    GVector sum = {0, 0, 0};
    for (size_t i = 1; i < polygon.size(); ++i) {
        const GVector a = polygon[i - 1] - polygon[0];
        const GVector b = polygon[i] - polygon[0];
        sum += a * b;
    }
    return sum;
}

// The sine of the turn at each corner of a closed polygon, to the left about the normal.
std::vector<double> Turns(const std::vector<GPosition>& polygon, const GUnitVector& normal) {
    const size_t corners = polygon.size() - 1;
    std::vector<double> turns;
    for (size_t i = 0; i < corners; ++i) {
        const GVector in = polygon[i] - polygon[(i + corners - 1) % corners];
        const GVector out = polygon[i + 1] - polygon[i];
        turns.push_back((in * out) % normal / (in.GetLength() * out.GetLength()));
    }
    return turns;
}

// Throws unless the polygon turns to the left only, about its normal. Points on straight edges are
// left out: a fence tells its inside from its first corner, which so is a real one.
std::vector<GPosition> ConvexCorners(const std::string& argument,
                                     const std::vector<GPosition>& polygon,
                                     const GUnitVector& normal) {
    const std::vector<double> turns = Turns(polygon, normal);
    const double tol = GetRelativeTolerance();
    std::vector<GPosition> corners;
    for (size_t i = 0; i < turns.size(); ++i) {
        if (turns[i] < -tol) {
            throw Failure(argument,
                          "the polygon is not convex at its point " + std::to_string(i + 1));
        }
        if (turns[i] > tol) {
            corners.push_back(polygon[i]);
        }
    }
    corners.push_back(corners.front());
    return corners;
}

PolygonRequest ParsePolygon(const Texts& texts, bool must_be_convex) {
    const std::string argument = texts.points_file.empty() ? "--point" : texts.points_file;
    PolygonRequest request;
    for (const std::vector<double>& row :
         ParseRows("--point", texts.points, texts.points_file, 3)) {
        const GPosition p = {row[0], row[1], row[2]};
        if (request.polygon.empty() || !p.IsEqual(request.polygon.back())) {
            request.polygon.push_back(p);
        }
    }
    if (!request.polygon.front().IsEqual(request.polygon.back()) || request.polygon.size() == 1) {
        request.polygon.push_back(request.polygon.front());
    }
    if (request.polygon.size() <= kFewestCorners) {
        throw Failure(argument, "a polygon needs three different points");
    }
    const GVector normal = NewellNormal(request.polygon);
    long err = 0;
    const GUnitVector unit_normal =
        BuildUnitVector(normal.m_x, normal.m_y, normal.m_z, GetDistanceTolerance(), &err);
    if (err != 0) {
        throw Failure(argument, "the polygon's points lie on a line");
    }
    request.direction =
        texts.direction.empty() ? unit_normal : ParseDirection("--direction", texts.direction);
    const double side = request.direction % unit_normal;
    if (std::fabs(side) < GetRelativeTolerance()) {
        throw Failure("--direction", "lies in the plane of the polygon");
    }
    if (must_be_convex) {
        request.polygon = ConvexCorners(argument, request.polygon, unit_normal);
    }
    request.front = ParseNumber("--front", Needed("--front", texts.front));
    request.back = ParseNumber("--back", Needed("--back", texts.back));
    if (request.front < request.back) {
        throw Failure("--front", "'" + texts.front + "' is less than --back '" + texts.back + "'");
    }
    return request;
}

// An eye must not lie between the planes: the rays would point both ways.
GPosition ParseEye(const Texts& texts, const GPosition& origin, const GUnitVector& direction,
                   double front, double back) {
    const GPosition eye = ParsePosition("--eye", Needed("--eye", texts.eye));
    const double depth = (eye - origin) % direction;
    if (back < depth && depth < front) {
        throw Failure("--eye", "'" + texts.eye + "' lies between the front and the back plane");
    }
    return eye;
}

Request ParseFence(const Texts& texts) {
    return FenceRequest{ParsePolygon(texts, true)};
}

Request ParsePrism(const Texts& texts) {
    return PrismRequest{ParsePolygon(texts, false)};
}

Request ParseFrustum(const Texts& texts) {
    const PolygonRequest polygon = ParsePolygon(texts, false);
    return FrustumRequest{polygon, ParseEye(texts, polygon.polygon[0], polygon.direction,
                                            polygon.front, polygon.back)};
}

Request ParseCone(const Texts& texts) {
    ConeRequest request;
    request.point = ParsePosition("--point", Needed("--point", texts.point));
    request.direction = ParseDirection("--direction", Needed("--direction", texts.direction));
    request.front = ParseNumber("--front", Needed("--front", texts.front));
    request.back = ParseNumber("--back", Needed("--back", texts.back));
    if (request.front < request.back) {
        throw Failure("--front", "'" + texts.front + "' is less than --back '" + texts.back + "'");
    }
    request.radius = ParseRadius(texts.radius);
    request.eye = ParseEye(texts, request.point, request.direction, request.front, request.back);
    return request;
}

// The low corner, then the high one, of a box of so many axes.
std::vector<double> ParseCorners(const std::string& argument, const std::string& text,
                                 size_t axes) {
    std::vector<double> numbers = ParseNumbers(argument, text, 2 * axes);
    for (size_t i = 0; i < axes; ++i) {
        if (numbers[i] > numbers[i + axes]) {
            throw Failure(argument, "'" + text + "': low corner first, then the high one");
        }
    }
    return numbers;
}

Request ParseWindow(const Texts& texts) {
    if (!texts.box.empty()) {
        if (!texts.planes.empty() || !texts.planes_file.empty()) {
            throw Failure("--box", "excludes --plane and --planes");
        }
        const std::vector<double> n = ParseCorners("--box", texts.box, 3);
        GBox box = BuildBox(n[0], n[1], n[2], n[3], n[4], n[5]);
        WindowRequest request;
        ConvertGBoxToGClipVolume(&box, &request.volume);
        return request;
    }
    const std::string argument = texts.planes_file.empty() ? "--plane" : texts.planes_file;
    std::vector<double> values;
    const auto rows = ParseRows("--plane", texts.planes, texts.planes_file, 4);
    if (rows.size() > kMostPlanes) {
        throw Failure(argument, std::to_string(rows.size()) + " planes: a window has at most six");
    }
    for (const std::vector<double>& row : rows) {
        long err = 0;
        BuildUnitVector(row[0], row[1], row[2], GetDistanceTolerance(), &err);
        if (err != 0) {
            throw Failure(argument, "a plane's normal (its first three numbers) has no length");
        }
        values.insert(values.end(), row.begin(), row.end());
    }
    return WindowRequest{BuildClipVolume(static_cast<unsigned>(rows.size()), values.data())};
}

Request ParsePlan(const Texts& texts) {
    PlanRequest request = {ParseUpAxis(texts.up), std::nullopt};
    if (!texts.window.empty()) {
        const std::vector<double> n = ParseCorners("--window", texts.window, 2);
        request.window = BuildBox2d(n[0], n[1], n[2], n[3]);
    }
    return request;
}

CLI::Option* AddOption(CLI::App& app, const char* name, std::string& text, const char* value,
                       const char* description) {
    return app.add_option(name, text, description)->type_name(value);
}

// May be given again and again.
void AddRepeated(CLI::App& app, const char* name, std::vector<std::string>& texts,
                 const char* value, const char* description) {
    app.add_option(name, texts, description)
        ->type_name(value)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void AddBoreOptions(CLI::App& app, Texts& texts) {
    AddOption(app, "--from", texts.from, kPoint, "Where the route begins, in the model's units");
    AddRepeated(app, "--via", texts.via, kPoint, "A bend of the route; may be given again");
    AddOption(app, "--to", texts.to, kPoint, "Where the route ends");
    AddOption(app, "--through", texts.through, kPoint, "A point of a line without ends");
    AddOption(app, "--along", texts.along, kPoint, "The direction of that line");
    AddOption(app, "-r,--radius", texts.radius, kNumber, "The radius of the pipe (0)");
    app.add_flag("--list", texts.list, "List the objects and their boxes");
}

void AddDepthOptions(CLI::App& app, Texts& texts) {
    AddOption(app, "--front", texts.front, kNumber, "How far it reaches along its direction");
    AddOption(app, "--back", texts.back, kNumber, "Where it begins along its direction");
}

void AddPolygonOptions(CLI::App& app, Texts& texts) {
    AddRepeated(app, "--point", texts.points, kPoint, "A corner of the polygon; given for each");
    AddOption(app, "--points", texts.points_file, kFile, "Or a file with a corner a line");
    AddOption(app, "--direction", texts.direction, kPoint,
              "The direction of the depths (the normal)");
    AddDepthOptions(app, texts);
}

void AddWindowOptions(CLI::App& app, Texts& texts) {
    AddOption(app, "--box", texts.box, "X1,Y1,Z1,X2,Y2,Z2",
              "The window as a box: its low and its high corner");
    AddRepeated(app, "--plane", texts.planes, "A,B,C,D",
                "Or a plane of it, with a x + b y + c z + d >= 0 inside; up to six");
    AddOption(app, "--planes", texts.planes_file, kFile, "Or a file with a plane a line");
}

void AddEyeOption(CLI::App& app, Texts& texts) {
    AddOption(app, "--eye", texts.eye, kPoint,
              "The eye point, before the back or behind the front plane");
}

void AddFrustumOptions(CLI::App& app, Texts& texts) {
    AddPolygonOptions(app, texts);
    AddEyeOption(app, texts);
}

void AddConeOptions(CLI::App& app, Texts& texts) {
    AddOption(app, "--point", texts.point, kPoint, "The centre of the circle");
    AddOption(app, "--direction", texts.direction, kPoint, "The direction of the axis");
    AddOption(app, "-r,--radius", texts.radius, kNumber, "The radius of the circle (0)");
    AddDepthOptions(app, texts);
    AddEyeOption(app, texts);
}

void AddPlanOptions(CLI::App& app, Texts& texts) {
    AddOption(app, "--window", texts.window, "X1,Y1,X2,Y2",
              "A window in the plan (x1,z1,x2,z2 if y points up)");
}

struct Command {
    const char* name;
    const char* summary;
    const char* description;
    void (*add_options)(CLI::App&, Texts&);
    Request (*parse)(const Texts&);
};

constexpr std::array<Command, 7> kCommandTable = {{
    {"bore", "a pipe along a route, or without ends: which objects it may touch, and where",
     "Which objects of a model may this pipe touch?", AddBoreOptions, ParseBore},
    {"fence", "a convex polygon between two depths: which objects it may touch",
     "Which objects may the space between two depths of a convex polygon touch?", AddPolygonOptions,
     ParseFence},
    {"window", "up to six planes, or a box: which objects lie inside, which cross",
     "Which objects lie inside of some planes, and which cross them?", AddWindowOptions,
     ParseWindow},
    {"cone", "a circle seen from an eye: its range, and the objects that this meets",
     "Which objects' boxes meet the range of a circle seen from an eye?", AddConeOptions,
     ParseCone},
    {"frustum", "a polygon seen from an eye: likewise",
     "Which objects' boxes meet the range of a polygon seen from an eye?", AddFrustumOptions,
     ParseFrustum},
    {"prism", "a polygon extruded: likewise",
     "Which objects' boxes meet the range of an extruded polygon?", AddPolygonOptions, ParsePrism},
    {"plan", "the model from above; with a window: which objects lie inside, which cross",
     "What does the model look like from above, and what lies in a window of its plan?",
     AddPlanOptions, ParsePlan},
}};

const Command* FindCommand(const std::string& name) {
    for (const Command& command : kCommandTable) {
        if (name == command.name) {
            return &command;
        }
    }
    return nullptr;
}

std::string Footer() {
    std::string footer = "Commands (bore when none is given; kvprobe COMMAND --help tells more):\n";
    for (const Command& command : kCommandTable) {
        std::string name = command.name;
        name.resize(kWidestName, ' ');
        footer += "  " + name + "  " + command.summary + "\n";
    }
    return footer + "\nExit status: " + kExitStatus;
}

// What the program takes for a command.
void AddAll(CLI::App& app, const Command& command, Arguments& arguments, Texts& texts) {
    app.set_version_flag("--version", "kvprobe " KVPROBE_VERSION);
    app.add_option("MODEL", arguments.model, "The model, in any format that Assimp reads")
        ->type_name(kFile)
        ->required();
    command.add_options(app, texts);
    app.add_flag("--json", arguments.json, "Print JSON instead of a table");
    AddOption(app, "--svg", arguments.svg, kFile, "Draw the model, the probe and what was found");
    AddOption(app, "--up", texts.up, "y|z", "Which axis points up in drawing and plan (y)");
    AddOption(app, "--repeat", texts.repeat, kNumber,
              "Lay the model out so many times on a level grid, to see how fast it goes (1)");
}

std::string FirstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

}  // namespace

std::optional<Arguments> ParseArguments(int argc, char** argv) {
    const Command* const named = argc > 1 ? FindCommand(argv[1]) : nullptr;
    const Command& command = named != nullptr ? *named : kCommandTable.front();
    const int skipped = named != nullptr ? 1 : 0;

    CLI::App app{command.description,
                 named != nullptr ? std::string("kvprobe ") + named->name : "kvprobe"};
    app.footer(Footer());
    Arguments arguments;
    Texts texts;
    AddAll(app, command, arguments, texts);
    try {
        app.parse(argc - skipped, argv + skipped);
    } catch (const CLI::Success& success) {
        app.exit(success);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw Failure("arguments", Printable(FirstLine(error.what())));
    }
    arguments.up = ParseUpAxis(texts.up);
    arguments.request = command.parse(texts);
    arguments.copies = ParseCopies(texts, arguments);
    return arguments;
}

Usage DescribeUsage() {
    Usage usage = {{}, kExitStatus};
    for (const Command& command : kCommandTable) {
        CLI::App app;
        Arguments arguments;
        Texts texts;
        AddAll(app, command, arguments, texts);
        CommandUsage& described = usage.commands.emplace_back();
        described.name = command.name;
        described.summary = command.summary;
        described.description = command.description;
        for (const CLI::Option* const option : app.get_options()) {
            if (option->get_positional()) {
                continue;
            }
            OptionUsage& added = described.options.emplace_back();
            for (const std::string& name : option->get_snames()) {
                added.names.push_back("-" + name);
            }
            for (const std::string& name : option->get_lnames()) {
                added.names.push_back("--" + name);
            }
            added.value = option->get_items_expected_max() == 0 ? "" : option->get_type_name();
            added.description = option->get_description();
        }
    }
    return usage;
}

}  // namespace kvprobe
