// SPDX-License-Identifier: MIT
#include "tests/support/records.h"
#include "tests/support/scratch_folder.h"

#include <assimp/scene.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <assimp/Importer.hpp>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include <cstdlib>
#include <set>

namespace kvgeom::test {
namespace {

using Json = nlohmann::json;

const std::string kPipe = " --from -2,1.2,-7.5 --to 14,1.2,-7.5 -r 0.05";

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

// Runs kvprobe with the arguments, which the shell reads.
Outcome Call(const std::string& arguments) {
    const ScratchFolder scratch;
    const std::string command = std::string(KVPROBE) + " " + arguments + " >" +
                                scratch.Path("out") + " 2>" + scratch.Path("err") + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(scratch.Path("out")),
            ReadFile(scratch.Path("err"))};
}

// What is drawn for the arguments.
pugi::xml_document Drawn(const std::string& arguments) {
    const ScratchFolder scratch;
    const std::string svg = scratch.Path("drawing.svg");
    EXPECT_EQ(Call(arguments + " --svg " + svg).status, 0) << arguments;
    pugi::xml_document document;
    EXPECT_TRUE(document.load_file(svg.c_str())) << arguments;
    return document;
}

Json CallJson(const std::string& arguments) {
    const Outcome outcome = Call(arguments + " --json");
    EXPECT_LE(outcome.status, 1) << outcome.err;
    return Json::parse(outcome.out);
}

// Of all hits, or of those of one relation.
std::set<std::string> Names(const Json& hits, const std::string& relation = "") {
    std::set<std::string> names;
    for (const Json& hit : hits) {
        if (relation.empty() || hit["relation"] == relation) {
            names.insert(hit["object"]);
        }
    }
    return names;
}

// The model read again, with arithmetic that owes nothing to the library.
using Matrix = aiMatrix4x4t<double>;
using Point = aiVector3t<double>;

struct Solid {
    std::string path;
    Matrix to_object;
    Point low = Point(1e300);
    Point high = Point(-1e300);

    bool Holds(const GPosition& p) const {
        const Point x = to_object * Point(p.m_x, p.m_y, p.m_z);
        return low.x <= x.x && low.y <= x.y && low.z <= x.z && x.x <= high.x && x.y <= high.y &&
               x.z <= high.z;
    }
};

void Collect(const aiScene& scene, const aiNode& node, const Matrix& outer,
             const std::string& above, std::vector<Solid>& solids) {
    const Matrix here = outer * Matrix(node.mTransformation);
    Solid solid = {above + "/" + node.mName.C_Str(), Matrix(here).Inverse()};
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        const aiMesh& mesh = *scene.mMeshes[node.mMeshes[i]];
        for (unsigned k = 0; k < mesh.mNumVertices; ++k) {
            for (unsigned c = 0; c < 3; ++c) {
                const double x = static_cast<double>(mesh.mVertices[k][c]);
                solid.low[c] = std::min(solid.low[c], x);
                solid.high[c] = std::max(solid.high[c], x);
            }
        }
    }
    if (node.mNumMeshes > 0) {
        solids.push_back(solid);
    }
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
        Collect(scene, *node.mChildren[i], here, solid.path, solids);
    }
}

const std::vector<Solid>& House() {
    static const std::vector<Solid> house = [] {
        Assimp::Importer importer;
        const aiScene* const scene = importer.ReadFile(HOUSE, 0);
        std::vector<Solid> solids;
        if (scene != nullptr) {
            Collect(*scene, *scene->mRootNode, Matrix(), "", solids);
        }
        return solids;
    }();
    return house;
}

// The objects that hold one of many points that are drawn.
template <class Draw>
std::set<std::string> Holders(Draw draw) {
    std::set<std::string> paths;
    for (int i = 0; i < 20000; ++i) {
        const GPosition p = draw();
        for (const Solid& solid : House()) {
            if (solid.Holds(p)) {
                paths.insert(solid.path);
            }
        }
    }
    return paths;
}

bool Includes(const std::set<std::string>& all, const std::set<std::string>& some) {
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

// The names that kvprobe gave, as the paths that they abbreviate.
std::set<std::string> Paths(const std::set<std::string>& names) {
    std::set<std::string> paths;
    for (const std::string& name : names) {
        const std::string end = "/" + name;
        int found = 0;
        for (const Solid& solid : House()) {
            if (solid.path.ends_with(end)) {
                paths.insert(solid.path);
                ++found;
            }
        }
        EXPECT_EQ(found, 1) << name;
    }
    return paths;
}

std::string Triple(const GPosition& p) {
    std::ostringstream text;
    text.precision(17);
    text << p.m_x << "," << p.m_y << "," << p.m_z;
    return text.str();
}

TEST(Kvprobe, FindsTheObjectsThatSampledPointsOfThePipeMeet) {
    ASSERT_GT(House().size(), 100U);
    Random random(71);
    const auto touched = [&random](const GBoreLine& tube) {
        return Holders([&] { return Sample(random, tube, 1 - 1e-6); });
    };
    const Json found = CallJson(HOUSE + kPipe);
    EXPECT_EQ(found["objects"], House().size());
    EXPECT_EQ(Paths(Names(found["hits"])),
              touched(BuildBoreLine({-2, 1.2, -7.5}, kX, 16, 0, 0.05)));
    EXPECT_EQ(found["found"], 6);
    EXPECT_EQ(CallJson("bore " HOUSE + kPipe)["hits"], found["hits"]) << "by its full name";

    // In any direction nothing may be missed; near edges of boxes more may be found.
    const GBox space = {{-2, 0, -11}, {14, 5, 1}};
    size_t found_in_all = 0;
    size_t touched_in_all = 0;
    for (int i = 0; i < 12; ++i) {
        const GPosition from = Sample(random, space);
        const GPosition to = Sample(random, space);
        const std::set<std::string> maybe = Paths(Names(
            CallJson(HOUSE " -r 0.2 --from=" + Triple(from) + " --to=" + Triple(to))["hits"]));
        const std::set<std::string> holders =
            touched(BuildBoreLine(from, BuildUnitVector(from, to), GDistance(from, to), 0, 0.2));
        EXPECT_TRUE(Includes(maybe, holders));
        found_in_all += maybe.size();
        touched_in_all += holders.size();
    }
    EXPECT_LT(found_in_all, touched_in_all * 3 / 2) << "a program that finds all would pass";
}

TEST(Kvprobe, TellsWhereThePipeEntersAndLeaves) {
    const Json hits = CallJson(HOUSE + kPipe)["hits"];
    // Walls stand at x 0..0.3, 3.8..4.04, 7.41..7.65 and 11.7..12; the leg begins at -2.
    const double spans[][2] = {{2, 2.3},     {2.12, 2.195}, {5.8, 6.04},
                               {9.41, 9.65}, {13.7, 14},    {13.805, 13.88}};
    ASSERT_EQ(hits.size(), std::size(spans));
    for (size_t i = 0; i < hits.size(); ++i) {
        EXPECT_NEAR(hits[i]["enters"], spans[i][0] - 0.05, 1e-5) << i;
        EXPECT_NEAR(hits[i]["leaves"], spans[i][1] + 0.05, 1e-5) << i;
        EXPECT_NEAR(hits[i]["length"], spans[i][1] - spans[i][0] + 0.1, 1e-5) << i;
    }
}

TEST(Kvprobe, PrintsATableOfTheSame) {
    const Outcome outcome = Call(HOUSE + kPipe);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    const std::string head =
        "leg  object                                                       enters  leaves  length\n"
        "  1  IfcWallStandardCase_Wand-Ext-ERDG-1_3rPX_Juz59peXXY6wDJl18    1.950   2.350   "
        "0.400\n";
    EXPECT_EQ(outcome.out.substr(0, head.size()), head);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 8);
    EXPECT_NE(outcome.out.find("\n6 of 110 objects may be touched on 1 leg (probed in "),
              std::string::npos);
}

TEST(Kvprobe, FollowsARouteAndCutsItsSpansAtTheEndsOfTheLegs) {
    const Json found = CallJson(HOUSE
                                " --from 1,1.2,-7.5 --via 5,1.2,-7.5 --via 5,1.2,-5.87"
                                " --to 5,9,-5.87 -r 0.1");
    EXPECT_EQ(found["legs"].size(), 3U);
    std::vector<int> legs;
    for (const Json& hit : found["hits"]) {
        const int leg = legs.emplace_back(hit["leg"]);
        EXPECT_GE(hit["enters"], 0);
        EXPECT_LE(hit["leaves"], found["legs"][static_cast<size_t>(leg - 1)]["length"]);
    }
    EXPECT_TRUE(std::is_sorted(legs.begin(), legs.end()));
    EXPECT_EQ(std::set<int>(legs.begin(), legs.end()), (std::set<int>{1, 2, 3}));
    // The middle leg ends within the wall that the last one climbs along.
    EXPECT_EQ(found["hits"][1]["leaves"], found["legs"][1]["length"]);
}

TEST(Kvprobe, ProbesWithALineWithoutEnds) {
    const std::string line = HOUSE " --through 3,1.2,-7.5 --along -2,0,0 -r 0.05";
    const Json hits = CallJson(line)["hits"];
    EXPECT_EQ(Names(hits), Names(CallJson(HOUSE + kPipe)["hits"]));
    double leaves = 0;
    for (const Json& hit : hits) {
        leaves = std::max(leaves, hit["leaves"].get<double>());
    }
    EXPECT_NEAR(leaves, 3.05, 1e-5);
    EXPECT_NEAR(hits.front()["enters"], 3 - 12.05, 1e-5);
    EXPECT_EQ(CallJson(HOUSE " --through 3,50,-7 --along 1e-200,0,0")["found"], 0);
}

// A COLLADA model of unit cubes, each a node of its own with the given name and matrix (for
// columns).
std::string Cubes(const std::vector<std::pair<std::string, std::string>>& nodes) {
    std::string text =
        R"(<?xml version="1.0"?><COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><up_axis>Y_UP</up_axis></asset><library_geometries><geometry id="cube"><mesh>
<source id="p"><float_array id="a" count="24">0 0 0 1 0 0 1 1 0 0 1 0 0 0 1 1 0 1 1 1 1 0 1 1</float_array>
<technique_common><accessor source="#a" count="8" stride="3"><param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="4"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2 2 3 0 4 5 6 6 7 4</p></triangles>
</mesh></geometry></library_geometries><library_visual_scenes><visual_scene id="s">)";
    for (const auto& [name, matrix] : nodes) {
        text += "<node id=\"" + name + "\"><matrix>" + matrix +
                "</matrix><instance_geometry url=\"#cube\"/></node>";
    }
    return text +
           "</visual_scene></library_visual_scenes><scene><instance_visual_scene "
           "url=\"#s\"/></scene></COLLADA>";
}

TEST(Kvprobe, CarriesThePipeThroughAnyPlacement) {
    const ScratchFolder scratch;
    const std::string model =
        scratch.Write("cubes.dae", Cubes({{"similar", "0 -2 0 10  2 0 0 0  0 0 2 0  0 0 0 1"},
                                          {"mirrored", "-1 0 0 20  0 1 0 0  0 0 1 0  0 0 0 1"},
                                          {"stretched", "1 0 0 30  0 8 0 0  0 0 0.25 0  0 0 0 1"},
                                          {"sheared", "1 3 0 40  0 1 0 0  0 0 1 0  0 0 0 1"},
                                          {"flat", "1 0 0 50  0 1 0 0  0 0 0 0.5  0 0 0 1"}}));
    const struct {
        const char* probe;
        const char* expected;
        double enters;
        double leaves;
    } rows[] = {
        {" --from 9,-1,1 --to 9,5,1 -r 0.5", "similar", 0.5, 3.5},
        {" --from 9,-1,1 --to 9,-0.6,1 -r 0.5", nullptr, 0, 0},
        {" --from 19.5,-3,0.5 --to 19.5,4,0.5 -r 0.25", "mirrored", 2.75, 4.25},
        // Along the stretched axis the pipe is thin, across it is thick, as the object sees it.
        {" --from 30.5,-10,0.125 --to 30.5,10,0.125 -r 0.5", "stretched", -1, -1},
        {" --from 30.5,4,-3 --to 30.5,4,-0.3 -r 0.5", "stretched", -1, -1},
        {" --from 30.5,50,-9 --to 30.5,50,9 -r 1", nullptr, 0, 0},
        {" --from 42,0.5,-5 --to 42,0.5,5 -r 0.1", "sheared", -1, -1},
        {" --from 50.5,0.5,-1 --to 50.5,0.5,2", "flat", 1.5, 1.5},
    };
    for (const auto& row : rows) {
        const Json hits = CallJson(model + row.probe)["hits"];
        if (row.expected == nullptr) {
            EXPECT_TRUE(hits.empty()) << row.probe << hits.dump();
            continue;
        }
        ASSERT_EQ(hits.size(), 1U) << row.probe;
        EXPECT_EQ(hits[0]["object"], row.expected);
        if (row.enters >= 0) {
            EXPECT_NEAR(hits[0]["enters"], row.enters, 1e-6) << row.probe;
            EXPECT_NEAR(hits[0]["leaves"], row.leaves, 1e-6) << row.probe;
        }
    }
}

TEST(Kvprobe, TellsObjectsApartAndPrintsNoRawNames) {
    const ScratchFolder scratch;
    const std::string at_origin = "1 0 0 0  0 1 0 0  0 0 1 0  0 0 0 1";
    const std::string model =
        scratch.Write("names.dae", Cubes({{"twin", at_origin},
                                          {"twin", at_origin},
                                          {"&lt;b&gt; &amp; &quot;c&quot;", at_origin},
                                          {"Gel\u00e4nde", at_origin},
                                          {"esc\x1b[31m \xff", at_origin}}));
    const Outcome list = Call(model + " --list");
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_NE(list.out.find("twin[1] "), std::string::npos) << list.out;
    EXPECT_NE(list.out.find("twin[2] "), std::string::npos);
    EXPECT_EQ(list.out.find_first_of("\x1b\xff"), std::string::npos);
    EXPECT_NE(list.out.find("Gel\u00e4nde"), std::string::npos);
    // One character wide each: all lines but the last, which counts, are as long as the first.
    std::istringstream lines(list.out);
    std::set<size_t> widths;
    for (std::string line; std::getline(lines, line) && line.find("object") != 2;) {
        widths.insert(static_cast<size_t>(
            std::count_if(line.begin(), line.end(), [](char c) { return (c & 0xC0) != 0x80; })));
    }
    EXPECT_EQ(widths.size(), 1U) << list.out;
    Drawn(model + " --through 0.5,0.5,0.5 --along 0,1,0");
}

TEST(Kvprobe, DrawsWhatItFound) {
    const pugi::xml_document document = Drawn(HOUSE + kPipe);
    const pugi::xml_node root = document.child("svg");
    const double width = root.attribute("width").as_double();
    const double height = root.attribute("height").as_double();
    // A filled group for each object found, a wireframe for each other one.
    EXPECT_EQ(document.select_nodes("/svg/g[title]").size(), 6U);
    EXPECT_EQ(document.select_nodes("/svg/g/path[title]").size(), 110U - 6U);
    // Each number stands on the picture and in the legend.
    for (int number = 1; number <= 6; ++number) {
        const std::string text = "//text[text()='" + std::to_string(number) + "']";
        EXPECT_EQ(document.select_nodes(text.c_str()).size(), 2U);
    }
    // All of it lies on the page.
    for (const pugi::xpath_node& node : document.select_nodes("//path")) {
        std::string d = node.node().attribute("d").value();
        std::replace_if(
            d.begin(), d.end(), [](char c) { return std::strchr("MLZ,", c) != nullptr; }, ' ');
        std::istringstream numbers(d);
        int count = 0;
        for (double x, y; numbers >> x >> y; ++count) {
            EXPECT_TRUE(x >= 0 && x <= width && y >= 0 && y <= height) << d;
        }
        EXPECT_GE(count, 2);
    }
    EXPECT_EQ(Call(HOUSE + kPipe + " --svg /nowhere/x.svg").status, 2);
    Drawn(HOUSE " --list --up z");
}

TEST(Kvprobe, ListsTheObjectsAndTheirBoxes) {
    const Json objects = CallJson(HOUSE " --list")["objects"];
    ASSERT_EQ(objects.size(), 110U);
    const auto floor = std::find_if(objects.begin(), objects.end(), [](const Json& object) {
        return object["object"] == "IfcSlab_Bodenplatte_1pPHnf7cXCpPsNEnQf8_6B";
    });
    ASSERT_NE(floor, objects.end());
    EXPECT_NEAR((*floor)["box"]["low"][1], -0.2, 1e-5);
    EXPECT_NEAR((*floor)["box"]["high"][0], 12, 1e-5);
    EXPECT_NEAR((*floor)["box"]["low"][2], -10, 1e-5);
}

TEST(Kvprobe, ExitsAsGrepDoes) {
    EXPECT_EQ(Call(HOUSE + kPipe).status, 0);
    const Outcome nothing = Call(HOUSE " --from -2,50,0 --to 14,50,0");
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(nothing.out.find("leg  object  enters  leaves  length\n0 of 110 objects may be"), 0U);
    EXPECT_EQ(Call("--help").status, 0);
    EXPECT_EQ(Call("--version").out, "kvprobe 0.1.0\n");
    const std::string to_full_disk = KVPROBE " " HOUSE + kPipe + " >/dev/full 2>/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(to_full_disk.c_str())), 2);
}

// Arguments, and what the one line of complaint holds.
using Refusals = std::vector<std::pair<std::string, const char*>>;
void ExpectRefusals(const Refusals& rows) {
    for (const auto& [arguments, complaint] : rows) {
        const Outcome outcome = Call(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.out, "") << arguments;
        EXPECT_EQ(outcome.err.find("kvprobe: "), 0U) << outcome.err;
        EXPECT_NE(outcome.err.find(complaint), std::string::npos) << outcome.err;
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    }
}

TEST(Kvprobe, RefusesInOneLineThatNamesTheArgument) {
    const ScratchFolder scratch;
    const std::string garbage = scratch.Write("garbage.ifc", "ISO-10303-21;\nHEADER;\n\x01\xff");
    const std::string empty = scratch.Write("empty.obj", "");
    const std::string pointless = scratch.Write("pointless.dae", Cubes({}));
    const std::string house = HOUSE;
    const Refusals rows = {
        {"", "MODEL"},
        {"/nowhere/model.ifc" + kPipe, "/nowhere/model.ifc: no such file"},
        {"/tmp" + kPipe, "/tmp: not a file"},
        {garbage + kPipe, "garbage.ifc: can't be read as a model"},
        {empty + kPipe, "empty.obj: "},
        {pointless + kPipe, "pointless.dae: the model has no meshes"},
        {scratch.Write("model.unknown", "x") + kPipe, "model.unknown: can't be read as a model"},
        {house, "--from: no probe given"},
        {house + " --from 1,2,3", "--to: missing"},
        {house + " --to 1,2,3", "--from: missing"},
        {house + " --via 1,2,3 --to 3,4,5", "--from: missing"},
        {house + " --through 1,2,3", "--along: missing"},
        {house + " --along 1,2,3", "--through: missing"},
        {house + " --list --from 1,2,3 --to 4,5,6", "--list: "},
        {house + kPipe + " --through 1,2,3 --along 1,2,3", "--through: "},
        {house + " --from 1,2,3 --to 1,2,3", "--to: '1,2,3' is the same point as --from"},
        {house + " --from 1,2,3 --to 1,2,3.0000005", "--to: "},
        {house + " --from 1,2,3 --via 4,5,6 --via 4,5,6 --to 7,8,9", "--via: "},
        {house + kPipe + "x", "--radius: '0.05x' is not a number"},
        {house + " --from 1,2,3 --to 4,5,6 -r -0.1", "--radius: '-0.1' is negative"},
        {house + " --from 1,2,3 --to 4,5,6 --radius=nan", "--radius: 'nan' is not a number"},
        {house + " --from 1,2,3 --to 4,5,6 --radius inf", "--radius: 'inf' is not a number"},
        {house + " --from 1,2,3 --to 4,5,6 --radius 1e999", "--radius: '1e999' is not a number"},
        {house + " --from 1,2 --to 4,5,6", "--from: '1,2' has 2 numbers, not 3"},
        {house + " --from 1,2,3 --to 4,5,6,7", "--to: '4,5,6,7' has 4 numbers, not 3"},
        {house + " --from 1,,3 --to 4,5,6", "--from: '' is not a number"},
        {house + " --from 1,2,x --to 4,5,6", "--from: 'x' is not a number"},
        {house + " --from 1,2,1e30 --to 4,5,6", "--from: '1e30' is not a number below 1e30"},
        {house + " --through 1,2,3 --along 0,0,-0", "--along: the direction has no length"},
        {house + kPipe + " --up w", "--up: 'w'"},
        {house + kPipe + " --frobnicate", "--frobnicate"},
    };
    ExpectRefusals(rows);
}

const std::string kPolygon =
    " --point 4.2,0,-9.5 --point 7.2,0,-9.5 --point 8.2,0,-6.5 --point 4.2,0,-4.8"
    " --direction 0,3,0 --front 2.2 --back 0.3";
const std::string kCone =
    " --point 3,1.5,-5 --direction 2,0,0 --front 6 --back 0 -r 1 --eye -2,1.5,-5";

// A point of that polygon between its depths.
GPosition PointOfPolygon(Random& random) {
    const double corners[][2] = {{4.2, -9.5}, {7.2, -9.5}, {8.2, -6.5}, {4.2, -4.8}};
    double sum = 0;
    GVector p = {0, 0, 0};
    for (const auto& [x, z] : corners) {
        const double weight = std::pow(random.Uniform(0, 1), 3);  // to the edges and corners too
        p += GVector{x, 0, z} * weight;
        sum += weight;
    }
    return {p.m_x / sum, random.Uniform(0.3, 2.2), p.m_z / sum};
}

TEST(Kvprobe, FindsWhatAFenceShares) {
    Random random(72);
    const Json found = CallJson("fence " HOUSE + kPolygon);
    EXPECT_EQ(Paths(Names(found["hits"], "may be touched")),
              Holders([&random] { return PointOfPolygon(random); }));
    EXPECT_EQ(found["found"], 9);

    // From a file: the other way round, with a point on a straight edge first, and closed.
    const ScratchFolder scratch;
    const std::string file = scratch.Write("polygon.txt",
                                           "# a comment\n5.2 0 -9.5\n4.2,0,-9.5 # a "
                                           "corner\n\n4.2\t0,-4.8\r\n8.2 0 -6.5\n7.2 0 -9.5\n5.2 0 "
                                           "-9.5\n");
    const Json from_file =
        CallJson("fence " HOUSE " --points " + file + " --direction 0,1,0 --front 2.2 --back 0.3");
    EXPECT_EQ(Names(from_file["hits"]), Names(found["hits"]));
}

TEST(Kvprobe, TellsInsideFromCrossingAWindow) {
    Random random(73);
    const GBox window = {{0, 0, -10}, {6, 2.6, -4}};
    const GBox grown = {{-1e-5, -1e-5, -10.00001}, {6.00001, 2.60001, -3.99999}};
    const Json hits = CallJson("window " HOUSE " --box 0,0,-10,6,2.6,-4")["hits"];
    EXPECT_TRUE(Includes(Paths(Names(hits)), Holders([&] { return Sample(random, window); })));
    const std::set<std::string> within = Paths(Names(hits, "inside"));
    EXPECT_EQ(within.size(), 10U);
    const std::set<std::string> outside = Holders([&] {
        const GPosition p = Sample(random, {{-4, -2, -14}, {16, 7, 4}});
        return grown >> p ? GPosition{kBig, 0, 0} : p;
    });
    for (const std::string& holder : outside) {
        EXPECT_EQ(within.count(holder), 0U) << holder;
    }
    EXPECT_EQ(Names(hits, "crosses").size(), 9U);

    const Json by_planes = CallJson("window " HOUSE
                                    " --plane 2,0,0,0 --plane 0,1,0,0 --plane 0,0,1,10 "
                                    "--plane -1,0,0,6 --plane 0,-1,0,2.6 --plane 0,0,-1,-4");
    EXPECT_EQ(by_planes["hits"], hits);
    EXPECT_EQ(CallJson("window " HOUSE " --plane 1,0,0,100")["found"], 110);
}

TEST(Kvprobe, FindsWhatTheRangesOfOtherVolumesMeet) {
    Random random(74);
    const struct {
        std::string probe;
        GBox range;
    } rows[] = {
        {"cone " HOUSE + kCone, {{3, -0.7, -7.2}, {9, 3.7, -2.8}}},
        {"frustum " HOUSE + kPolygon + " --eye 5,-3,-7",
         {{3.613333, 0.3, -11.333333}, {10.546667, 2.2, -3.186667}}},
        {"prism " HOUSE + kPolygon, {{4.2, 0.3, -9.5}, {8.2, 2.2, -4.8}}},
    };
    for (const auto& row : rows) {
        const Json found = CallJson(row.probe);
        const auto corner = [&found](const char* name) {
            const Json& numbers = found["range"][name];
            return GPosition{numbers[0], numbers[1], numbers[2]};
        };
        EXPECT_LT(Distance(GBox{corner("low"), corner("high")}, row.range), 1e-5) << row.probe;
        const std::set<std::string> paths = Paths(Names(found["hits"], "meets the range"));
        const std::set<std::string> holders = Holders([&] { return Sample(random, row.range); });
        EXPECT_TRUE(Includes(paths, holders)) << row.probe;
        EXPECT_LE(paths.size(), holders.size() * 5 / 4) << row.probe;
    }
}

TEST(Kvprobe, DrawsEveryKindOfProbe) {
    const std::string probes[] = {"fence " HOUSE + kPolygon,
                                  "frustum " HOUSE + kPolygon + " --eye 5,-3,-7",
                                  "prism " HOUSE + kPolygon,
                                  "window " HOUSE " --box 0,0,-10,6,2.6,-4", "cone " HOUSE + kCone};
    for (const std::string& probe : probes) {
        // The edges of the probe.
        EXPECT_GE(Drawn(probe).select_nodes("/svg/g[@stroke='#b3263a']/path").size(), 6U) << probe;
    }
}

// The plan against the boxes in space, by plain comparisons.
TEST(Kvprobe, LaysTheModelFlatAndTellsWhatAWindowHolds) {
    const Json objects = CallJson(HOUSE " --list")["objects"];
    const struct {
        std::string up;
        size_t second;
        double window[4];
    } rows[] = {{"", 2, {3.9, -9.8, 7.6, -5.6}}, {" --up z", 1, {3.9, -0.5, 7.6, 2.9}}};
    for (const auto& row : rows) {
        const Json plan = CallJson("plan " HOUSE + row.up)["objects"];
        ASSERT_EQ(plan.size(), objects.size());
        const auto& [x1, y1, x2, y2] = row.window;
        std::ostringstream window;
        window << " --window " << x1 << "," << y1 << "," << x2 << "," << y2;
        const Json hits = CallJson("plan " HOUSE + row.up + window.str())["hits"];
        std::set<std::string> inside;
        std::set<std::string> crossing;
        for (size_t i = 0; i < objects.size(); ++i) {
            const Json& low = objects[i]["box"]["low"];
            const Json& high = objects[i]["box"]["high"];
            EXPECT_EQ(plan[i]["object"], objects[i]["object"]);
            EXPECT_EQ(plan[i]["plan"]["low"], (Json{low[0], low[row.second]}));
            EXPECT_EQ(plan[i]["plan"]["high"], (Json{high[0], high[row.second]}));
            if (low[0] > x1 && low[row.second] > y1 && high[0] < x2 && high[row.second] < y2) {
                inside.insert(objects[i]["object"]);
            } else if (low[0] < x2 && low[row.second] < y2 && high[0] > x1 &&
                       high[row.second] > y1) {
                crossing.insert(objects[i]["object"]);
            }
        }
        EXPECT_GT(inside.size(), 5U);
        EXPECT_GT(crossing.size(), 5U);
        EXPECT_EQ(Names(hits, "inside"), inside);
        EXPECT_EQ(Names(hits, "crosses"), crossing);
    }
    const Outcome far = Call("plan " HOUSE " --window 100,100,101,101");
    EXPECT_EQ(far.status, 1);
    EXPECT_NE(far.out.find("0 of 110 objects inside, 0 crossing"), std::string::npos) << far.out;
    EXPECT_EQ(Call("plan " HOUSE).status, 0);
}

TEST(Kvprobe, DrawsThePlanToScale) {
    const auto titled = [](const pugi::xml_document& document, const std::string& title) {
        return document.select_node(("//rect[starts-with(title, '" + title + "')]").c_str()).node();
    };
    const auto number = [](const pugi::xml_node& node, const char* name) {
        return node.attribute(name).as_double();
    };
    const std::string site = "IfcSite";          // 18 units by 16
    const std::string roof = "IfcSlab_Dach-1_";  // at the lower z, the higher y
    const std::string floor = "IfcSlab_Bodenplatte";
    const pugi::xml_document plan = Drawn("plan " HOUSE " --window 3.9,-9.8,7.6,-5.6");
    EXPECT_EQ(plan.select_nodes("/svg/g/rect").size(), 110U);
    const double scale = number(titled(plan, site), "width") / 18;
    EXPECT_NEAR(number(titled(plan, site), "height"), 16 * scale, 0.02);
    EXPECT_NEAR(number(titled(plan, "scale"), "width"), 2 * scale, 0.02);
    EXPECT_NEAR(number(titled(plan, "window"), "width"), 3.7 * scale, 0.02);
    EXPECT_NEAR(number(titled(plan, "window"), "x") - number(titled(plan, floor), "x"), 3.9 * scale,
                0.02);
    EXPECT_LT(number(titled(plan, roof), "y"), number(titled(plan, floor), "y"));
    for (const char* const label : {"0", "2", "4", "-2", "30"}) {
        const std::string text = "//text[text()='" + std::string(label) + "']";
        EXPECT_GE(plan.select_nodes(text.c_str()).size(), 1U) << label;
    }
    for (const pugi::xpath_node& node : plan.select_nodes("//rect")) {
        const pugi::xml_node r = node.node();
        EXPECT_GE(number(r, "x"), 0);
        EXPECT_GE(number(r, "y"), 0);
        EXPECT_LE(number(r, "x") + number(r, "width"), number(plan.child("svg"), "width"));
        EXPECT_LE(number(r, "y") + number(r, "height"), number(plan.child("svg"), "height"));
    }
    // With z upwards, y points up the page.
    const pugi::xml_document upright = Drawn("plan " HOUSE " --up z");
    EXPECT_LT(number(titled(upright, roof), "y"), number(titled(upright, floor), "y"));
}

TEST(Kvprobe, RefusesMalformedVolumesAndNumberFiles) {
    const ScratchFolder scratch;
    const std::string depths = " --front 2 --back 1";
    const auto points = [&](const char* name, const std::string& content) {
        return "fence " HOUSE " --points " + scratch.Write(name, content) + depths;
    };
    const std::string square = "0 0 0\n1 0 0\n1 0 1\n0 0 1\n";
    const Refusals rows = {
        {points("word.txt", square + "1 two 3\n"), "word.txt:5: 'two' is not a number"},
        {points("few.txt", "0 0 0\n\n1 0\n"), "few.txt:3: '1 0' has 2 numbers, not 3"},
        {points("huge.txt", "1e31 0 0\n"), "huge.txt:1: '1e31' is not a number below 1e30"},
        {points("empty.txt", "# nothing\n\n"), "empty.txt: holds no numbers"},
        {points("long.txt", std::string(20000, '1')), "long.txt:1: the line is too long"},
        {points("binary.txt", std::string("\x00\x01\xff\x1b", 4)), "binary.txt:1: '?"},
        {"fence " HOUSE " --points /nowhere/x" + depths, "/nowhere/x: can't be read"},
        {"fence " HOUSE " --points /tmp" + depths, "/tmp: "},
        {points("pair.txt", "0 0 0\n1 0 0\n0 0 0\n"), "pair.txt: a polygon needs three"},
        {points("line.txt", "0 0 0\n1 0 0\n2 0 0\n"), "line.txt: the polygon's points lie on a"},
        {points("dent.txt", "0 0 0\n4 0 0\n4 0 4\n3 0 1\n"), "dent.txt: the polygon is not convex"},
        {points("square.txt", square) + " --direction 1,0,1", "--direction: lies in the plane"},
        {"fence " HOUSE + depths, "--point: give either"},
        {"fence " HOUSE " --point 1,2,3 --points x" + depths, "--point: give either"},
        {"fence " HOUSE " --point 0,0,0 --point 1,0,0 --point 0,1,0 --back 1", "--front: missing"},
        {"prism " HOUSE + kPolygon + " --front 0.2", "--front"},
        {"frustum " HOUSE + kPolygon, "--eye: missing"},
        {"frustum " HOUSE + kPolygon + " --eye 5,1,-7", "--eye: '5,1,-7' lies between"},
        {"window " HOUSE, "--plane: give either"},
        {"window " HOUSE " --plane 0,0,0,1", "--plane: a plane's normal"},
        {"window " HOUSE " --box 0,0,0,1,1", "--box: '0,0,0,1,1' has 5 numbers, not 6"},
        {"window " HOUSE " --box 0,0,0,1,-1,1", "--box: "},
        {"window " HOUSE " --planes " + scratch.Write("seven.txt",
                                                      "1 0 0 1\n1 0 0 2\n1 0 0 3\n1 0 0 "
                                                      "4\n1 0 0 5\n1 0 0 6\n1 0 0 7\n"),
         "seven.txt: 7 planes"},
        {"plan " HOUSE " --window 0,0,1", "--window: '0,0,1' has 3 numbers, not 4"},
        {"plan " HOUSE " --window 0,2,1,1", "--window: '0,2,1,1': low corner first"},
        {"plan " HOUSE " --up x", "--up: 'x' is neither y nor z"},
        {"cone " HOUSE " --point 1,2,3 --direction 1,0,0 --front 1 --back 2 --eye 0,0,0",
         "--front: '1' is less than --back"},
        {"cone " HOUSE " --point 1,2,3 --direction 0,0,0 --front 2 --back 1 --eye 0,0,0",
         "--direction: the direction has no length"},
    };
    ExpectRefusals(rows);
}

TEST(Kvprobe, ShowsItsProgressOnATerminalOnly) {
    const ScratchFolder scratch;
    const std::string command = "script -qec '" + std::string(KVPROBE) + " " + HOUSE + kPipe +
                                "' " + scratch.Path("typescript") + " >/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_NE(ReadFile(scratch.Path("typescript")).find("reading the model: "), std::string::npos);
    EXPECT_EQ(Call(HOUSE + kPipe).err, "");
}

}  // namespace
}  // namespace kvgeom::test
