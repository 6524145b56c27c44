// SPDX-License-Identifier: MIT

// What kvprobe finds in a real building, beside what sampled points find.

#include "tests/support/records.h"

#include <assimp/scene.h>
#include <gtest/gtest.h>
#include <assimp/Importer.hpp>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <set>
#include <sstream>
#include <string>

namespace kvgeom::test {
namespace {

using Json = nlohmann::json;

const std::string kPipe = " --from -2,1.2,-7.5 --to 14,1.2,-7.5 -r 0.05";

Json CallJson(const std::string& arguments) {
    const std::string command = std::string(KVPROBE) + " " + arguments + " --json";
    std::FILE* const output = popen(command.c_str(), "r");
    const Json result = Json::parse(output);
    pclose(output);
    return result;
}

std::set<std::string> Names(const Json& hits) {
    std::set<std::string> names;
    for (const Json& hit : hits) {
        names.insert(hit["object"]);
    }
    return names;
}

// The model read again, by plain arithmetic that owes nothing to the library.
struct Solid {
    std::string path;
    double low[3] = {1e300, 1e300, 1e300};
    double high[3] = {-1e300, -1e300, -1e300};
    double inverse[3][4];  // from the model into the object, for columns

    bool Holds(const GPosition& p) const {
        for (int i = 0; i < 3; ++i) {
            const double x = inverse[i][0] * p.m_x + inverse[i][1] * p.m_y + inverse[i][2] * p.m_z +
                             inverse[i][3];
            if (x < low[i] || x > high[i]) {
                return false;
            }
        }
        return true;
    }
};

using Affine = std::array<std::array<double, 4>, 3>;

Affine Compose(const Affine& outer, const aiMatrix4x4& inner) {
    Affine result;
    for (unsigned i = 0; i < 3; ++i) {
        for (unsigned j = 0; j < 4; ++j) {
            result[i][j] = j == 3 ? outer[i][3] : 0;
            for (unsigned k = 0; k < 3; ++k) {
                result[i][j] += outer[i][k] * static_cast<double>(inner[k][j]);
            }
        }
    }
    return result;
}

// Cramer's rule.
void Invert(const Affine& m, double (&inverse)[3][4]) {
    const auto cofactor = [&m](unsigned i, unsigned j) {
        const unsigned a = (i + 1) % 3;
        const unsigned b = (i + 2) % 3;
        const unsigned c = (j + 1) % 3;
        const unsigned d = (j + 2) % 3;
        return m[a][c] * m[b][d] - m[a][d] * m[b][c];
    };
    const double det =
        m[0][0] * cofactor(0, 0) + m[0][1] * cofactor(0, 1) + m[0][2] * cofactor(0, 2);
    for (unsigned i = 0; i < 3; ++i) {
        inverse[i][3] = 0;
        for (unsigned j = 0; j < 3; ++j) {
            inverse[i][j] = cofactor(j, i) / det;
            inverse[i][3] -= inverse[i][j] * m[j][3];
        }
    }
}

void Collect(const aiScene& scene, const aiNode& node, const Affine& outer,
             const std::string& above, std::vector<Solid>& solids) {
    const Affine here = Compose(outer, node.mTransformation);
    const std::string path = above + "/" + node.mName.C_Str();
    Solid solid;
    solid.path = path;
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
        Invert(here, solid.inverse);
        solids.push_back(solid);
    }
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
        Collect(scene, *node.mChildren[i], here, path, solids);
    }
}

std::vector<Solid> ReadSolids(const std::string& model) {
    Assimp::Importer importer;
    const aiScene* const scene = importer.ReadFile(model, 0);
    std::vector<Solid> solids;
    if (scene != nullptr) {
        Collect(*scene, *scene->mRootNode, {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}}, "",
                solids);
    }
    return solids;
}

// The objects that share one of many sampled points of a tube.
std::set<std::string> Touched(const std::vector<Solid>& solids, const GBoreLine& tube,
                              Random& random) {
    std::set<std::string> touched;
    for (int i = 0; i < 20000; ++i) {
        const GPosition p = Sample(random, tube, 1 - 1e-6);
        for (const Solid& solid : solids) {
            if (solid.Holds(p)) {
                touched.insert(solid.path);
            }
        }
    }
    return touched;
}

// The names that kvprobe gave, as the paths that they abbreviate.
std::set<std::string> Paths(const std::vector<Solid>& solids, const std::set<std::string>& names) {
    std::set<std::string> paths;
    for (const std::string& name : names) {
        const std::string end = "/" + name;
        int found = 0;
        for (const Solid& solid : solids) {
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
    const std::vector<Solid> solids = ReadSolids(HOUSE);
    ASSERT_GT(solids.size(), 100U);
    Random random(71);
    const GBoreLine pipe = BuildBoreLine({-2, 1.2, -7.5}, kX, 16, 0, 0.05);
    const Json found = CallJson(HOUSE + kPipe);
    EXPECT_EQ(found["objects"], solids.size());
    const std::set<std::string> paths = Paths(solids, Names(found["hits"]));
    EXPECT_EQ(paths, Touched(solids, pipe, random));
    EXPECT_EQ(found["found"], 6);

    // In any direction nothing may be missed; near edges of boxes more may be found.
    size_t found_in_all = 0;
    size_t touched_in_all = 0;
    for (int i = 0; i < 12; ++i) {
        const GPosition from = {random.Uniform(-2, 14), random.Uniform(0, 5),
                                random.Uniform(-11, 1)};
        const GPosition to = {random.Uniform(-2, 14), random.Uniform(0, 5), random.Uniform(-11, 1)};
        const Json hits = CallJson(std::string(HOUSE) + " -r 0.2 --from=" + Triple(from) +
                                   " --to=" + Triple(to))["hits"];
        const std::set<std::string> maybe = Paths(solids, Names(hits));
        const std::set<std::string> touched = Touched(
            solids, BuildBoreLine(from, BuildUnitVector(from, to), GDistance(from, to), 0, 0.2),
            random);
        EXPECT_TRUE(std::includes(maybe.begin(), maybe.end(), touched.begin(), touched.end()));
        found_in_all += maybe.size();
        touched_in_all += touched.size();
    }
    EXPECT_LT(found_in_all, touched_in_all * 3 / 2) << "a program that finds all would pass";
}

// The objects that hold one of the points.
std::set<std::string> Holders(const std::vector<Solid>& solids,
                              const std::vector<GPosition>& points) {
    std::set<std::string> paths;
    for (const Solid& solid : solids) {
        if (std::any_of(points.begin(), points.end(),
                        [&solid](const GPosition& p) { return solid.Holds(p); })) {
            paths.insert(solid.path);
        }
    }
    return paths;
}

bool Includes(const std::set<std::string>& all, const std::set<std::string>& some) {
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

std::set<std::string> NamesOf(const Json& hits, const std::string& relation) {
    std::set<std::string> names;
    for (const Json& hit : hits) {
        if (hit["relation"] == relation) {
            names.insert(hit["object"]);
        }
    }
    return names;
}

const std::string kPolygon =
    " --point 4.2,0,-9.5 --point 7.2,0,-9.5 --point 8.2,0,-6.5 --point 4.2,0,-4.8 --direction "
    "0,3,0 "
    "--front 2.2 --back 0.3";

// Points of that polygon between its depths.
std::vector<GPosition> PointsOfPolygon(Random& random) {
    const double corners[][2] = {{4.2, -9.5}, {7.2, -9.5}, {8.2, -6.5}, {4.2, -4.8}};
    std::vector<GPosition> points;
    for (int i = 0; i < 20000; ++i) {
        double weights[4];
        double sum = 0;
        for (double& weight : weights) {
            weight = random.Uniform(0, 1);
            weight *= weight * weight;  // to the edges and corners too
            sum += weight;
        }
        GPosition p = {0, random.Uniform(0.3, 2.2), 0};
        for (int k = 0; k < 4; ++k) {
            p.m_x += weights[k] / sum * corners[k][0];
            p.m_z += weights[k] / sum * corners[k][1];
        }
        points.push_back(p);
    }
    return points;
}

TEST(Kvprobe, FindsWhatAFenceShares) {
    const std::vector<Solid> solids = ReadSolids(HOUSE);
    Random random(72);
    const std::set<std::string> holders = Holders(solids, PointsOfPolygon(random));
    const Json found = CallJson(std::string("fence ") + HOUSE + kPolygon);
    EXPECT_EQ(Paths(solids, NamesOf(found["hits"], "may be touched")), holders);
    EXPECT_EQ(found["found"], 9);
}

TEST(Kvprobe, TellsInsideFromCrossingAWindow) {
    const std::vector<Solid> solids = ReadSolids(HOUSE);
    Random random(73);
    const GBox window = {{0, 0, -10}, {6, 2.6, -4}};
    std::vector<GPosition> inside;
    std::vector<GPosition> outside;
    for (int i = 0; i < 50000; ++i) {
        inside.push_back(Sample(random, window));
        const GPosition p = {random.Uniform(-4, 16), random.Uniform(-2, 7), random.Uniform(-14, 4)};
        const GBox grown = {{-1e-5, -1e-5, -10.00001}, {6.00001, 2.60001, -3.99999}};
        if (!(grown >> p)) {
            outside.push_back(p);
        }
    }
    const Json found = CallJson(std::string("window ") + HOUSE + " --box 0,0,-10,6,2.6,-4");
    const Json& hits = found["hits"];
    const std::set<std::string> within = Paths(solids, NamesOf(hits, "inside"));
    EXPECT_TRUE(Includes(Paths(solids, Names(hits)), Holders(solids, inside)));
    EXPECT_EQ(within.size(), 10U);
    for (const std::string& holder : Holders(solids, outside)) {
        EXPECT_EQ(within.count(holder), 0U) << holder;
    }
    EXPECT_EQ(NamesOf(hits, "crosses").size(), 9U);
}

TEST(Kvprobe, FindsWhatTheRangesOfOtherVolumesMeet) {
    const std::vector<Solid> solids = ReadSolids(HOUSE);
    Random random(74);
    const struct {
        std::string probe;
        GBox range;
    } rows[] = {
        {"cone --point 3,1.5,-5 --direction 2,0,0 --front 6 --back 0 -r 1 --eye -2,1.5,-5",
         {{3, -0.7, -7.2}, {9, 3.7, -2.8}}},
        {"frustum" + kPolygon + " --eye 5,-3,-7",
         {{3.613333, 0.3, -11.333333}, {10.546667, 2.2, -3.186667}}},
        {"prism" + kPolygon, {{4.2, 0.3, -9.5}, {8.2, 2.2, -4.8}}},
    };
    for (const auto& row : rows) {
        const size_t space = row.probe.find(' ');
        const Json found =
            CallJson(row.probe.substr(0, space) + " " + HOUSE + row.probe.substr(space));
        const auto corner = [&found](const char* name) {
            const Json& numbers = found["range"][name];
            return GPosition{numbers[0], numbers[1], numbers[2]};
        };
        EXPECT_LT(Distance(GBox{corner("low"), corner("high")}, row.range), 1e-5) << row.probe;
        std::vector<GPosition> points;
        for (int i = 0; i < 20000; ++i) {
            points.push_back(Sample(random, row.range));
        }
        const std::set<std::string> paths =
            Paths(solids, NamesOf(found["hits"], "meets the range"));
        const std::set<std::string> holders = Holders(solids, points);
        EXPECT_TRUE(Includes(paths, holders)) << row.probe;
        EXPECT_LE(paths.size(), holders.size() * 5 / 4) << row.probe;
    }
}

}  // namespace
}  // namespace kvgeom::test
