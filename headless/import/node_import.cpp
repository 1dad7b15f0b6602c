// SPDX-License-Identifier: MIT
#include "headless/import/node_import.h"

#include "headless/import/mesh_import.h"
#include "headless/import/model_text.h"
#include "headless/import/node_fixtures.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"

#include <cmath>
#include <map>

namespace headless {

namespace {

using MeshList = std::vector<unsigned>;

bool isFinite(const Matrix& matrix) {
    for (const Vector& v : {matrix.off, matrix.axisX, matrix.axisY, matrix.axisZ}) {
        if (!std::isfinite(v.x) || !std::isfinite(v.y) || !std::isfinite(v.z)) {
            return false;
        }
    }
    return true;
}

class NodeImport {
public:
    NodeImport(const aiScene& scene, const ModelSpace& space, std::span<Material* const> materials,
               std::vector<Fixture> fixtures, Document& document, std::vector<std::string>& warnings)
        : scene_(scene), space_(space), materials_(materials), fixtures_(scene, std::move(fixtures)),
          document_(document), warnings_(warnings) {}

    ImportedNodes run(bool keepRoot) {
        judgeMeshes();
        countUses();
        walk(keepRoot);
        result_.fixtures = fixtures_.finish(warnings_);
        return std::move(result_);
    }

private:
    struct Step {
        const aiNode* node;
        Object* parent;
    };

    void judgeMeshes() {
        usable_.resize(scene_.mNumMeshes);
        for (unsigned i = 0; i < scene_.mNumMeshes; ++i) {
            const aiMesh& mesh = *scene_.mMeshes[i];
            const std::string fault = faultOf(mesh, space_);
            if (!fault.empty()) {
                warnings_.push_back("mesh \"" + modelText(mesh.mName) + "\" is left out: " + fault);
            }
            usable_[i] = fault.empty() && hasPolygons(mesh);
            if (usable_[i] && mesh.HasBones()) {
                warnings_.push_back("mesh \"" + modelText(mesh.mName) +
                                    "\" is imported without its bones, at rest");
            }
        }
    }

    MeshList meshesOf(const aiNode& node) const {
        MeshList meshes;
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            const unsigned index = node.mMeshes[i];
            if (index < usable_.size() && usable_[index]) {
                meshes.push_back(index);
            }
        }
        return meshes;
    }

    void countUses() {
        std::vector<const aiNode*> waiting{scene_.mRootNode};
        while (!waiting.empty()) {
            const aiNode& node = *waiting.back();
            waiting.pop_back();
            if (MeshList meshes = meshesOf(node); !meshes.empty()) {
                ++uses_[std::move(meshes)];
            }
            waiting.insert(waiting.end(), node.mChildren, node.mChildren + node.mNumChildren);
        }
    }

    void walk(bool keepRoot) {
        const aiNode& root = *scene_.mRootNode;
        const bool leaveOut =
            !keepRoot && root.mNumMeshes == 0 && !fixtures_.has(root) && space_.rootMatrix() == Matrix();
        std::vector<Step> waiting;
        if (leaveOut) {
            pushChildren(root, nullptr, waiting);
        } else {
            waiting.push_back({&root, nullptr});
        }
        while (!waiting.empty()) {
            const Step step = waiting.back();
            waiting.pop_back();
            pushChildren(*step.node, &importNode(*step.node, step.parent), waiting);
        }
    }

    /// Backwards, as the last is taken first.
    static void pushChildren(const aiNode& node, Object* parent, std::vector<Step>& waiting) {
        for (unsigned i = node.mNumChildren; i > 0; --i) {
            waiting.push_back({node.mChildren[i - 1], parent});
        }
    }

    Object& importNode(const aiNode& node, Object* parent) {
        std::vector<std::unique_ptr<Object>> fixed = fixtures_.take(node);
        Matrix matrix = &node == scene_.mRootNode ? space_.rootMatrix() : space_.matrix(node.mTransformation);
        if (!isFinite(matrix)) {
            warnings_.push_back("node \"" + modelText(node.mName) +
                                "\" has a broken transform and stands at its parent");
            matrix = Matrix();
        }
        std::unique_ptr<Object> made;
        if (fixed.size() == 1 && meshesOf(node).empty() && fixtures_.canStandFor(node, *fixed.front())) {
            made = std::move(fixed.front());
            made->matrix = matrix * made->matrix;
            fixed.clear();
        } else {
            made = makeObject(node);
            made->matrix = matrix;
        }
        nameObject(*made, node);
        Object& object =
            parent ? parent->appendChild(std::move(made)) : document_.appendObject(std::move(made));
        if (!fixed.empty()) {
            for (std::unique_ptr<Object>& fixture : fixed) {
                fixture->name = object.name;
                object.appendChild(std::move(fixture));
            }
            object.name += " Pivot";
        }
        result_.objects.emplace(node.mName.C_Str(), &object);
        return object;
    }

    void nameObject(Object& object, const aiNode& node) const {
        const MeshList meshes = meshesOf(node);
        if (node.mName.length > 0) {
            object.name = modelText(node.mName);
        } else if (!meshes.empty()) {
            object.name = modelText(scene_.mMeshes[meshes.front()]->mName);
        }
    }

    std::unique_ptr<Object> makeObject(const aiNode& node) {
        const MeshList meshes = meshesOf(node);
        return meshes.empty() ? createObject(Onull) : makeMeshObject(node, meshes);
    }

    std::unique_ptr<Object> makeMeshObject(const aiNode& node, const MeshList& indices) {
        if (const auto original = originals_.find(indices); original != originals_.end()) {
            return makeInstance(*original->second);
        }
        std::vector<const aiMesh*> meshes;
        for (const unsigned index : indices) {
            meshes.push_back(scene_.mMeshes[index]);
        }
        std::unique_ptr<PolygonNode> polygons = importMeshes(meshes, space_, materials_);
        result_.polygonCount += polygons->polygons.size();
        if (uses_[indices] == 1) {
            return polygons;
        }
        originals_.emplace(indices, polygons.get());
        if (node.mNumChildren == 0) {
            return polygons;
        }
        // An instance shows an object with its children: here it's to show the polygons alone.
        polygons->name = modelText(meshes.front()->mName);
        std::unique_ptr<Object> holder = createObject(Onull);
        holder->appendChild(std::move(polygons));
        return holder;
    }

    static std::unique_ptr<Object> makeInstance(PolygonNode& original) {
        std::unique_ptr<Object> instance = createObject(Oinstance);
        instance->data.SetLink(INSTANCEOBJECT_LINK, toHost(static_cast<Node*>(&original)));
        instance->data.SetBool(INSTANCEOBJECT_RENDERINSTANCE, true);
        return instance;
    }

    const aiScene& scene_;
    const ModelSpace& space_;
    std::span<Material* const> materials_;
    NodeFixtures fixtures_;
    Document& document_;
    std::vector<std::string>& warnings_;

    std::vector<bool> usable_;
    std::map<MeshList, size_t> uses_;
    std::map<MeshList, PolygonNode*> originals_;
    ImportedNodes result_;
};

} // namespace

ImportedNodes importNodes(const aiScene& scene, const ModelSpace& space, bool keepRoot,
                          std::span<Material* const> materials, std::vector<Fixture> fixtures,
                          Document& document, std::vector<std::string>& warnings) {
    return NodeImport(scene, space, materials, std::move(fixtures), document, warnings).run(keepRoot);
}

} // namespace headless
