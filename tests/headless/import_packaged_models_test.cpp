// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/import/import_model.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/track.h"

#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <cmath>

// Models that Debian's package assimp-testmodels brings, against what Assimp itself says of them.

namespace headless {

namespace {

struct Figures {
    size_t polygons = 0;
    double min[3] = {1e300, 1e300, 1e300};
    double max[3] = {-1e300, -1e300, -1e300};

    void add(double x, double y, double z) {
        const double values[3] = {x, y, z};
        for (size_t axis = 0; axis < 3; ++axis) {
            min[axis] = std::min(min[axis], values[axis]);
            max[axis] = std::max(max[axis], values[axis]);
        }
    }
    double size() const { return std::max({max[0] - min[0], max[1] - min[1], max[2] - min[2]}); }
};

/// Faces of three and four corners count once, larger ones as their triangles.
void addMesh(const aiMesh& mesh, const aiMatrix4x4& world, double unit, Figures& figures) {
    for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
        const aiFace& face = mesh.mFaces[i];
        if (face.mNumIndices < 3) {
            continue;
        }
        figures.polygons += face.mNumIndices <= 4 ? 1 : face.mNumIndices - 2;
        for (unsigned corner = 0; corner < face.mNumIndices; ++corner) {
            const aiVector3D p = world * mesh.mVertices[face.mIndices[corner]];
            figures.add(static_cast<double>(p.x) * unit, static_cast<double>(p.y) * unit,
                        -static_cast<double>(p.z) * unit);
        }
    }
}

void addNode(const aiScene& scene, const aiNode& node, const aiMatrix4x4& outer, double unit,
             Figures& figures) {
    const aiMatrix4x4 world = outer * node.mTransformation;
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        addMesh(*scene.mMeshes[node.mMeshes[i]], world, unit, figures);
    }
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
        addNode(scene, *node.mChildren[i], world, unit, figures);
    }
}

const PolygonNode* polygonsShownBy(const Object& object) {
    if (object.type() != Oinstance) {
        return asPolygons(&object);
    }
    EXPECT_TRUE(object.data.GetBool(INSTANCEOBJECT_RENDERINSTANCE));
    const auto* const target =
        static_cast<const Object*>(fromHost(object.data.GetLink(INSTANCEOBJECT_LINK, nullptr)));
    EXPECT_NE(target, nullptr);
    EXPECT_TRUE(!target || target->children().empty()) << "an instance would show them too";
    return asPolygons(target);
}

Figures figuresOf(const Document& document) {
    Figures figures;
    for (const Object* top = document.objects().first(); top; top = top->next) {
        for (const Object* object = top; object; object = object->nextInBranch(*top)) {
            const PolygonNode* const polygons = polygonsShownBy(*object);
            if (!polygons) {
                continue;
            }
            figures.polygons += polygons->polygons.size();
            const Matrix world = object->globalMatrix();
            for (const Vector& point : polygons->points) {
                const Vector p = world * point;
                figures.add(static_cast<double>(p.x), static_cast<double>(p.y), static_cast<double>(p.z));
            }
        }
    }
    return figures;
}

/// Positive when the polygons of a closed surface look outward by the host's rule.
double signedVolume(const PolygonNode& object) {
    double volume = 0.0;
    for (const CPolygon& p : object.polygons) {
        const auto at = [&object](int32_t index) { return object.points[static_cast<size_t>(index)]; };
        volume += static_cast<double>(Dot(at(p.a), Cross(at(p.b), at(p.c))));
        volume += static_cast<double>(Dot(at(p.a), Cross(at(p.c), at(p.d))));
    }
    return volume / 6.0;
}

struct Model {
    const char* file;
    /// Centimetres per unit of what Assimp gives, its root's transform included.
    double unit;
    /// Number of objects with polygons of their own, all of them closed surfaces when `closed`.
    size_t objects;
    bool closed;
};

void PrintTo(const Model& model, std::ostream* out) {
    *out << model.file;
}

class PackagedModelTest : public DocumentsTest, public ::testing::WithParamInterface<Model> {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(models())) {
            GTEST_SKIP() << "the package assimp-testmodels isn't installed";
        }
    }
    static std::filesystem::path models() { return "/usr/share/assimp/models"; }
};

TEST_P(PackagedModelTest, HasThePolygonsAndTheBoundsThatAssimpTells) {
    const std::string file = (models() / GetParam().file).string();
    Assimp::Importer importer;
    const aiScene* const scene = importer.ReadFile(file, 0);
    ASSERT_NE(scene, nullptr) << importer.GetErrorString();
    Figures expected;
    addNode(*scene, *scene->mRootNode, aiMatrix4x4(), GetParam().unit, expected);

    std::vector<std::string> warnings;
    const std::unique_ptr<Document> document = importModel(file, warnings);
    const Figures actual = figuresOf(*document);
    EXPECT_EQ(actual.polygons, expected.polygons);
    for (size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(actual.min[axis], expected.min[axis], 2e-6 * expected.size()) << axis;
        EXPECT_NEAR(actual.max[axis], expected.max[axis], 2e-6 * expected.size()) << axis;
    }
}

TEST_P(PackagedModelTest, IsMadeOfWeldedObjectsThatLookOutward) {
    std::vector<std::string> warnings;
    const auto document = importModel((models() / GetParam().file).string(), warnings);
    size_t objects = 0;
    for (const Object* top = document->objects().first(); top; top = top->next) {
        for (const Object* object = top; object; object = object->nextInBranch(*top)) {
            const PolygonNode* const polygons = asPolygons(object);
            if (!polygons) {
                continue;
            }
            ++objects;
            std::set<std::tuple<float, float, float>> places;
            for (const Vector& p : polygons->points) {
                EXPECT_TRUE(places.emplace(p.x, p.y, p.z).second)
                    << object->name << " has two points at one place";
            }
            const auto* const uvw = static_cast<const UVWTagNode*>(object->tag(Tuvw));
            EXPECT_TRUE(!uvw || uvw->records.size() == polygons->polygons.size()) << object->name;
            EXPECT_NE(object->tag(Ttexture), nullptr) << object->name;
            if (GetParam().closed) {
                EXPECT_GT(signedVolume(*polygons), 0.0) << object->name;
            }
        }
    }
    EXPECT_EQ(objects, GetParam().objects);
}

INSTANTIATE_TEST_SUITE_P(
    Import, PackagedModelTest,
    ::testing::Values(Model{"Collada/Cinema4D.dae", 100.0, 3, true},
                      Model{"Collada/duck.dae", 100.0, 1, true},
                      Model{"Collada/teapot_instancenodes.DAE", 100.0, 1, true},
                      Model{"Collada/ConcavePolygon.dae", 100.0, 1, false},
                      Model{"FBX/spider.fbx", 1.0, 19, false}, Model{"FBX/box.fbx", 100.0, 1, true},
                      Model{"FBX/global_settings.fbx", 500.0, 2, true},
                      Model{"OBJ/spider.obj", 1.0, 19, false}, Model{"OBJ/testmixed.obj", 1.0, 1, false},
                      Model{"PLY/Wuson.ply", 1.0, 1, false}, Model{"PLY/cube.ply", 1.0, 1, false},
                      Model{"STL/Wuson.stl", 1.0, 1, false}, Model{"3DS/fels.3ds", 1.0, 1, false},
                      Model{"glTF/TwoBoxes/TwoBoxes.gltf", 100.0, 1, true},
                      Model{"glTF2/BoxTextured-glTF/BoxTextured.gltf", 100.0, 1, true},
                      Model{"glTF2/BoxTextured-glTF-Binary/BoxTextured.glb", 100.0, 1, true}));

TEST_F(PackagedModelTest, KeepsNamesTexturesAxesAndAnimation) {
    std::vector<std::string> warnings;
    const auto shapes = importModel((models() / "Collada/Cinema4D.dae").string(), warnings);
    std::vector<std::string> names;
    for (const Object* object = shapes->objects().first(); object; object = object->next) {
        names.push_back(object->name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Kegel", "Kugel", "W\xC3\xBCrfel"}));

    const auto duck = importModel((models() / "Collada/duck.dae").string(), warnings);
    const Material* const material = duck->materials().first();
    ASSERT_NE(material->shaders().first(), nullptr);
    EXPECT_EQ(material->shaders().first()->data.GetFilename(1000).GetUtf8(),
              (models() / "Collada/duckCM.tga").string());
    EXPECT_EQ(fromHost(material->data.GetLink(8000, nullptr)), material->shaders().first());
    EXPECT_EQ(warnings, std::vector<std::string>());

    // Its file says that Z is up, and Assimp leaves it at that.
    const auto zUp = importModel((models() / "FBX/embedded_ascii/box.FBX").string(), warnings);
    const Vector up = zUp->objects().first()->globalMatrix().TransformDirection({0, 0, -1});
    EXPECT_LT((up - Vector(0, 1, 0)).GetLength(), 1e-6f);
    EXPECT_EQ(warnings.size(), 1u) << "the texture inside the file";

    const auto moving = importModel((models() / "3DS/RotatingCube.3DS").string(), warnings);
    size_t tracks = 0;
    for (const Object* object = moving->objects().first(); object;
         object = object->nextInBranch(*moving->objects().first())) {
        tracks += object->animation ? object->animation->tracks.size() : 0;
    }
    EXPECT_GT(tracks, 0u);
    EXPECT_EQ(moving->fps(), 25);
    EXPECT_EQ(moving->minTime, BaseTime(0.0));
    EXPECT_GT(moving->maxTime.Get(), 1.0);
}

TEST_F(PackagedModelTest, TellsWhatABrokenModelLacks) {
    const struct {
        const char* file;
        const char* reason;
    } cases[] = {
        {"glTF2/BoxWithInfinites-glTF-Binary/BoxWithInfinites.glb",
         "the model has no polygons: mesh \"Mesh\" is left out: the coordinates of point 0 are no finite "
         "numbers"},
        {"glTF2/IndexOutOfRange/AllIndicesOutOfRange.gltf",
         "the model can't be read: Mesh \"Mesh\" has no faces"},
        {"glTF2/MissingBin/BoxTextured.gltf",
         "the model can't be read: GLTF: could not open referenced file \"BoxTextured0.bin\""},
        {"PLY/points.ply", "the model has no polygons"},
        {"invalid/empty.obj", "the model can't be read: OBJ-file is too small."},
        {"invalid/readme.txt", nullptr},
    };
    for (const auto& test : cases) {
        const std::string file = (models() / test.file).string();
        std::vector<std::string> warnings;
        const std::string error = errorOf([&] { importModel(file, warnings); });
        if (test.reason) {
            EXPECT_EQ(error, file + ": " + test.reason);
        } else {
            EXPECT_TRUE(error.starts_with(file + ": the model can't be read: ")) << error;
        }
    }
}

} // namespace

} // namespace headless
