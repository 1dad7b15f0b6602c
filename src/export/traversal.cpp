// SPDX-License-Identifier: MIT
#include "export/traversal.h"

#include "export/light_export.h"
#include "export/polygon_export.h"
#include "export/scene_exporter.h"
#include "export/section_plane_export.h"
#include "export/sphere_export.h"
#include "export/traversal_progress.h"
#include "host/ids.h"
#include "host/tag.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/scene_space.h"

#include <vector>

namespace {

/// A sibling list on its way, and where its present object stands. The walk keeps its own stack: documents
/// nest deeper than a thread's.
struct Level {
    enum class Step { ENTER, CHILDREN, LEAVE };

    BaseObject* object;
    Matrix parentMatrix;
    bool singleObject;
    bool visible;
    bool invisibleToCamera;
    /// The object that an instance led to, when the level is that object.
    const BaseObject* entered = nullptr;

    Step step = Step::ENTER;
    Matrix matrix{};
    bool shown = false;
    bool hiddenFromCamera = false;
    size_t planeCount = 0;
};

bool isInstance(int32_t type) {
    return type == Oinstance || type == PLUGINID_INSTANCE;
}

/// Also through the heads of caches.
bool isInsideHierarchy(const BaseObject* object, const BaseObject* top) {
    while (object) {
        if (object == top) {
            return true;
        }
        const BaseObject* const parent = object->GetUp();
        object = parent ? parent : object->GetCacheParent();
    }
    return false;
}

/// The object that an instance leads to; null when there is nothing to enter.
BaseObject* findLink(const SceneExporter& exporter, const BaseObject* instance) {
    const int32_t key =
        instance->GetType() == PLUGINID_INSTANCE ? int32_t(INSTANCE_LINK) : int32_t(INSTANCEOBJECT_LINK);
    BaseObject* const link = instance->GetDataInstance()->GetObjectLink(key, exporter.context->document);
    return link && !isInsideHierarchy(instance, link) && instance->GetDeformMode() ? link : nullptr;
}

class Walk {
public:
    Walk(SceneExporter& exporter, TraversalProgress* progress) : exporter_(exporter), progress_(progress) {}

    void run(const Level& first) {
        levels_.push_back(first);
        finish();
    }

    /// Walks what an instance at `matrix` leads to.
    void runInstance(const BaseObject* instance, const Matrix& matrix, bool invisibleToCamera) {
        enterInstance(instance, matrix, invisibleToCamera);
        finish();
    }

    /// Objects so far, each as often as instances lead to it.
    int64_t visited() const { return visited_; }

private:
    void finish() {
        while (!levels_.empty()) {
            Level& level = levels_.back();
            switch (level.step) {
            case Level::Step::ENTER:
                ++visited_;
                if (progress_) {
                    progress_->next();
                }
                enter(level);
                break;
            case Level::Step::CHILDREN:
                level.step = Level::Step::LEAVE;
                if (BaseObject* const child = level.object->GetDown()) {
                    descend(level, child);
                }
                break;
            case Level::Step::LEAVE:
                leave(level);
                break;
            }
        }
    }

    void enter(Level& level) {
        BaseObject* const object = level.object;
        level.step = Level::Step::CHILDREN;
        level.matrix = level.parentMatrix;
        if (!level.singleObject) {
            level.matrix = level.parentMatrix * object->GetMl();
            exporter_.objectChain.push_back(object);
        }
        level.hiddenFromCamera = level.invisibleToCamera;
        if (const BaseTag* const tag = object->GetTag(PLUGINID_COMPOSITING_TAG)) {
            level.hiddenFromCamera = tag->GetDataInstance()->GetBool(COMPOSITING_INVISIBLE_TO_CAMERA);
        }
        level.planeCount = pushSectionPlanes(object);
        const int32_t mode = object->GetRenderMode();
        level.shown = mode == MODE_UNDEF ? level.visible : mode == MODE_ON;
        dispatch(level);
    }

    /// May push a level: `level` is not to be used behind a descend.
    void dispatch(const Level& level) {
        BaseObject* const object = level.object;
        const int32_t type = object->GetType();
        if (type == Oselection) {
            return;
        }
        const LayerData* const layer = object->GetLayerData(exporter_.context->document);
        const bool visible = level.shown && (!layer || layer->render);
        const bool isControl = object->GetBit(BIT_CONTROLOBJECT);
        BaseObject* const cache = object->GetCache();
        if (type == Osphere && cache && !cache->GetDeformCache()) {
            const bool analytic = isAnalyticSphere(exporter_, object, level.matrix);
            handleObject(exporter_, analytic ? object : cache, level.matrix, visible,
                         isControl && (analytic || cache->GetBit(BIT_CONTROLOBJECT)),
                         &level.hiddenFromCamera);
        } else if (type == Oinstance && object->GetDataInstance()->GetBool(INSTANCEOBJECT_RENDERINSTANCE)) {
            handle(level, visible, isControl);
        } else if (BaseObject* const deformed = object->GetDeformCache()) {
            descend(level, deformed);
        } else if (cache) {
            descend(level, cache);
        } else {
            handle(level, visible, isControl);
        }
    }

    /// Instances are entered on this walk's own stack, whatever the depth to which they lead to each other.
    void handle(const Level& level, bool visible, bool isControl) {
        if (!isInstance(level.object->GetType())) {
            handleObject(exporter_, level.object, level.matrix, visible, isControl, &level.hiddenFromCamera);
        } else if (visible && !isControl) {
            enterInstance(level.object, level.matrix, level.hiddenFromCamera);
        }
    }

    /// Two trees whose instances lead to each other would never end: an object isn't entered within itself.
    void enterInstance(const BaseObject* instance, Matrix matrix, bool invisibleToCamera) {
        BaseObject* const link = findLink(exporter_, instance);
        if (link && exporter_.enteredLinks.insert(link).second) {
            levels_.push_back({link, matrix, true, true, invisibleToCamera, link});
        }
    }

    void descend(const Level& level, BaseObject* first) {
        const Level next{first, level.matrix, false, level.shown, level.hiddenFromCamera};
        levels_.push_back(next);
    }

    void leave(Level& level) {
        auto& planes = exporter_.activeSectionPlanes;
        planes.resize(planes.size() - level.planeCount);
        if (!level.singleObject) {
            exporter_.objectChain.pop_back();
            if (BaseObject* const next = level.object->GetNext()) {
                level.object = next;
                level.step = Level::Step::ENTER;
                return;
            }
        }
        if (level.entered) {
            exporter_.enteredLinks.erase(level.entered);
        }
        levels_.pop_back();
    }

    size_t pushSectionPlanes(BaseObject* object) {
        if (exporter_.excludingPlanes.empty()) {
            return 0;
        }
        const BaseObject* const origin = object->GetTopOrigin();
        size_t count = 0;
        for (size_t i = 0; i < exporter_.excludingPlanes.size(); ++i) {
            const AtomArray& objects = *exporter_.excludingPlanes[i].objects;
            if (objects.Contains(object) || (origin && objects.Contains(origin))) {
                exporter_.activeSectionPlanes.push_back(static_cast<int32_t>(i));
                ++count;
            }
        }
        return count;
    }

    SceneExporter& exporter_;
    TraversalProgress* progress_;
    std::vector<Level> levels_;
    int64_t visited_ = 0;
};

void scanLight(SceneExporter& exporter, const BaseObject* object) {
    const BaseContainer* const data = object->GetDataInstance();
    if (data->GetLong(LIGHT_TYPE) != LIGHT_TYPE_AREA ||
        data->GetLong(LIGHT_AREADETAILS_SHAPE) != LIGHT_AREADETAILS_SHAPE_OBJECT) {
        return;
    }
    BaseList2D* const shape = data->GetLink(LIGHT_AREADETAILS_OBJECT, exporter.context->document, Opolygon);
    if (shape) {
        exporter.lightGeometry->Append(shape);
    }
}

/// A scene with numbers that are none can't be read.
bool hasPlace(const BaseObject* object, const Matrix& matrix) {
    if (isFinite(matrix)) {
        return true;
    }
    GePrint(String("Object \"") + object->GetName() + "\" is left out: its matrix holds no finite numbers.");
    return false;
}

} // namespace

void traverse(SceneExporter& exporter, int pass) {
    exporter.pass = pass;
    exporter.objectChain.clear();
    exporter.activeSectionPlanes.clear();
    exporter.enteredLinks.clear();
    BaseObject* const first = exporter.context->document->GetFirstObject();
    if (!first) {
        return;
    }
    const Level top{first, Matrix(), false, true, false};
    if (pass == 0) {
        Walk walk(exporter, nullptr);
        walk.run(top);
        exporter.scannedObjects = walk.visited();
    } else {
        TraversalProgress progress(exporter.scannedObjects, exporter.context->verbose);
        Walk(exporter, &progress).run(top);
    }
}

bool walkObjects(SceneExporter& exporter, BaseObject* object, const Matrix& parentMatrix, bool singleObject,
                 bool visible, const bool* invisibleToCamera) {
    Walk(exporter, nullptr).run({object, parentMatrix, singleObject, visible, *invisibleToCamera});
    return true;
}

bool handleObject(SceneExporter& exporter, BaseObject* object, const Matrix& matrix, bool visible,
                  bool isControlObject, const bool* invisibleToCamera) {
    if (!visible || isControlObject) {
        return true;
    }
    const int32_t type = object->GetType();
    if (isInstance(type)) {
        Walk(exporter, nullptr).runInstance(object, matrix, *invisibleToCamera);
    } else if (exporter.pass == 0) {
        if (type == Olight) {
            scanLight(exporter, object);
        } else if (type == PLUGINID_SECTION_PLANE && hasPlace(object, matrix)) {
            exportSectionPlane(exporter, object, matrix);
        }
    } else if (type == Opolygon) {
        if (!exporter.lightGeometry->Contains(object) && hasPlace(object, matrix)) {
            exportPolygonObject(exporter, static_cast<PolygonObject*>(object), matrix, *invisibleToCamera);
        }
    } else if (type == Olight) {
        if (object->GetDeformMode() && hasPlace(object, matrix)) {
            exportLight(exporter, object, matrix, *invisibleToCamera);
        }
    } else if (type == Osphere && object->GetCache() && hasPlace(object, matrix)) {
        exportSphere(exporter, object, matrix, false);
    }
    return true;
}
