// SPDX-License-Identifier: MIT
#include "export/traversal.h"

#include "export/parameter_ids.h"
#include "export/plugin_ids.h"
#include "export/polygon_export.h"
#include "export/scene_exporter.h"
#include "export/section_plane_export.h"
#include "export/sphere_export.h"
#include "export/traversal_progress.h"
#include "host/ids.h"
#include "host/tag.h"

#include <algorithm>

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

    Step step = Step::ENTER;
    Matrix matrix{};
    bool shown = false;
    bool hiddenFromCamera = false;
    size_t planeCount = 0;
};

class Walk {
public:
    Walk(SceneExporter& exporter, TraversalProgress* progress) : exporter_(exporter), progress_(progress) {}

    void run(const Level& first) {
        levels_.push_back(first);
        while (!levels_.empty()) {
            const size_t depth = levels_.size() - 1;
            switch (levels_[depth].step) {
            case Level::Step::ENTER:
                if (progress_ && depth == 0) {
                    progress_->next();
                }
                enter(levels_[depth]);
                break;
            case Level::Step::CHILDREN:
                levels_[depth].step = Level::Step::LEAVE;
                if (BaseObject* const child = levels_[depth].object->GetDown()) {
                    descend(levels_[depth], child);
                }
                break;
            case Level::Step::LEAVE:
                leave(levels_[depth]);
                break;
            }
        }
    }

private:
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
            handleObject(exporter_, object, level.matrix, visible, isControl, &level.hiddenFromCamera);
        } else if (BaseObject* const deformed = object->GetDeformCache()) {
            descend(level, deformed);
        } else if (cache) {
            descend(level, cache);
        } else {
            handleObject(exporter_, object, level.matrix, visible, isControl, &level.hiddenFromCamera);
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
};

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

void enterInstance(SceneExporter& exporter, BaseObject* object, const Matrix& matrix,
                   bool invisibleToCamera) {
    const int32_t key =
        object->GetType() == PLUGINID_INSTANCE ? int32_t(INSTANCE_LINK) : int32_t(INSTANCEOBJECT_LINK);
    BaseDocument* const document = exporter.context->document;
    BaseObject* const link = object->GetDataInstance()->GetObjectLink(key, document);
    if (!link || isInsideHierarchy(object, link) || !object->GetDeformMode()) {
        return;
    }
    // Two trees whose instances link each other never end; within one entering no object stands twice.
    std::vector<BaseObject*>& entered = exporter.enteredInstances;
    if (std::find(entered.begin(), entered.end(), link) != entered.end()) {
        return;
    }
    entered.push_back(link);
    walkObjects(exporter, link, matrix, true, true, &invisibleToCamera);
    entered.pop_back();
}

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

} // namespace

void traverse(SceneExporter& exporter, int pass) {
    exporter.pass = pass;
    exporter.objectChain.clear();
    exporter.activeSectionPlanes.clear();
    BaseObject* const first = exporter.context->document->GetFirstObject();
    if (!first) {
        return;
    }
    TraversalProgress progress(first);
    Walk(exporter, pass == 1 ? &progress : nullptr).run({first, Matrix(), false, true, false});
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
    if (type == Oinstance || type == PLUGINID_INSTANCE) {
        enterInstance(exporter, object, matrix, *invisibleToCamera);
    } else if (exporter.pass == 0) {
        if (type == Olight) {
            scanLight(exporter, object);
        } else if (type == PLUGINID_SECTION_PLANE) {
            exportSectionPlane(exporter, object, matrix);
        }
    } else if (type == Opolygon) {
        if (!exporter.lightGeometry->Contains(object)) {
            exportPolygonObject(exporter, static_cast<PolygonObject*>(object), matrix, *invisibleToCamera);
        }
    } else if (type == Osphere && object->GetCache()) {
        exportSphere(exporter, object, matrix, false);
    }
    return true;
}
