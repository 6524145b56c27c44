// SPDX-License-Identifier: MIT
#include "probe/model.h"

#include "probe/failure.h"
#include "probe/progress_line.h"
#include "probe/text.h"

#include <kvgeom/maps/mapping.h>

#include <assimp/config.h>
#include <assimp/scene.h>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>

#include <filesystem>
#include <map>

namespace kvprobe {
namespace {

class ReadingProgress : public Assimp::ProgressHandler {
  public:
    bool Update(float fraction) override {
        if (fraction >= 0) {  // else it isn't known
            m_line.Show(static_cast<double>(fraction));
        }
        return true;
    }

  private:
    ProgressLine m_line{"reading the model"};
};

// Assimp's matrices act on columns, the kernel's on rows.
G4x4 PlacementOf(const aiNode& node) {
    G4x4 result;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            result.m_matrix[4 * i + j] =
                static_cast<double>(node.mTransformation[static_cast<unsigned>(j)][i]);
        }
    }
    return result;
}

bool IsFinite(const GPosition& p) {
    return std::isfinite(p.m_x) && std::isfinite(p.m_y) && std::isfinite(p.m_z);
}

constexpr G4x4 kNoPlacement = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
constexpr size_t kNoParent = static_cast<size_t>(-1);

class Reader {
  public:
    explicit Reader(const aiScene& scene) : m_scene(scene) {
        Walk();
        NameObjects();
    }

    std::vector<Object> Take() { return std::move(m_objects); }

  private:
    struct Node {
        const aiNode* node;
        size_t parent;
        G4x4 placement;
    };

    static std::string NameOf(const Node& node) {
        return Printable(std::string(node.node->mName.data, node.node->mName.length));
    }

    // In the order of the file, without recursion: a hostile file may nest its nodes as deep as it
    // likes.
    void Walk() {
        std::vector<std::pair<const aiNode*, size_t>> open = {{m_scene.mRootNode, kNoParent}};
        while (!open.empty()) {
            const auto [node, parent] = open.back();
            open.pop_back();
            const G4x4& outer = parent == kNoParent ? kNoPlacement : m_nodes[parent].placement;
            m_nodes.push_back({node, parent, outer * PlacementOf(*node)});
            const size_t index = m_nodes.size() - 1;
            AddObject(index);
            for (unsigned i = node->mNumChildren; i-- > 0;) {
                open.emplace_back(node->mChildren[i], index);
            }
        }
    }

    std::vector<GPosition> PointsOf(const aiNode& node) const {
        std::vector<GPosition> points;
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            const aiMesh& mesh = *m_scene.mMeshes[node.mMeshes[i]];
            for (unsigned k = 0; k < mesh.mNumVertices; ++k) {
                const aiVector3D& v = mesh.mVertices[k];
                const GPosition p = {static_cast<double>(v.x), static_cast<double>(v.y),
                                     static_cast<double>(v.z)};
                if (IsFinite(p)) {
                    points.push_back(p);
                }
            }
        }
        return points;
    }

    void AddObject(size_t index) {
        std::vector<GPosition> points = PointsOf(*m_nodes[index].node);
        if (points.empty()) {
            return;
        }
        G4x4 placement = m_nodes[index].placement;
        if (!placement.IsInvertible()) {
            // A flattened object has no way back into its own coordinates: it is taken as it stands
            // in the model.
            for (GPosition& p : points) {
                p *= placement;
            }
            placement = kNoPlacement;
        }
        m_objects.push_back({"", BuildBox(points.size(), points.data()), placement});
        m_object_nodes.push_back(index);
    }

    // Names that repeat grow by the names of the nodes above, until they differ or the root is
    // reached.
    void NameObjects() {
        std::vector<size_t> above;
        for (size_t k = 0; k < m_objects.size(); ++k) {
            const Node& node = m_nodes[m_object_nodes[k]];
            m_objects[k].name = NameOf(node);
            above.push_back(node.parent);
        }
        std::map<std::string, int> uses;
        for (bool changed = true; changed;) {
            changed = false;
            uses.clear();
            for (const Object& object : m_objects) {
                ++uses[object.name];
            }
            for (size_t k = 0; k < m_objects.size(); ++k) {
                std::string& name = m_objects[k].name;
                if (uses[name] > 1 && above[k] != kNoParent) {
                    const Node& parent = m_nodes[above[k]];
                    name = NameOf(parent).append("/").append(name);
                    above[k] = parent.parent;
                    changed = true;
                }
            }
        }
        // Nodes of the same name under the same parent.
        std::map<std::string, int> twins;
        for (Object& object : m_objects) {
            if (uses[object.name] > 1) {
                const int twin = ++twins[object.name];
                object.name.append("[").append(std::to_string(twin)).append("]");
            }
        }
    }

    const aiScene& m_scene;
    std::vector<Node> m_nodes;
    std::vector<Object> m_objects;
    std::vector<size_t> m_object_nodes;
};

std::string OneLine(const std::string& text) {
    return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace

std::vector<Object> ReadModel(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        throw Failure(path, "no such file");
    }
    if (!std::filesystem::is_regular_file(path, ignored)) {
        throw Failure(path, "not a file");
    }
    Assimp::Importer importer;
    // Some formats get meshes invented for models that have none.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    importer.SetProgressHandler(new ReadingProgress);  // the importer's from now on
    const aiScene* const scene = importer.ReadFile(path, 0);
    if (scene == nullptr) {
        throw Failure(path, "can't be read as a model: " + OneLine(importer.GetErrorString()));
    }
    if (scene->mRootNode == nullptr || scene->mNumMeshes == 0) {
        throw Failure(path, "the model has no meshes");
    }
    std::vector<Object> objects = Reader(*scene).Take();
    if (objects.empty()) {
        throw Failure(path, "the model has no meshes with points");
    }
    return objects;
}

GBox ModelBox(const Object& object) {
    GPosition corners[8];
    object.box.GiveCorners(corners);
    for (GPosition& corner : corners) {
        corner *= object.placement;
    }
    return BuildBox(8, corners);
}

}  // namespace kvprobe
