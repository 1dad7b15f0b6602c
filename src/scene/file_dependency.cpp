// SPDX-License-Identifier: MIT
#include "scene/file_dependency.h"

namespace Quenza {

void visitFileDependency(SceneVisitor& visitor, String& path) {
    if (path.empty())
        return;
    if (visitor.mode == SceneVisitor::COLLECT_DEPENDENCIES)
        visitor.dependencies.push_back(path);
    else if (visitor.mode == SceneVisitor::UPDATE_DEPENDENCIES)
        path = getMappedPath(visitor.path_map, path);
}

bool firstVisit(SceneVisitor& visitor, const RefCounted& object) {
    if (visitor.mode != SceneVisitor::UPDATE_DEPENDENCIES && visitor.mode != SceneVisitor::OFFSET_UIDS)
        return true;
    if (visitor.seen.contains(&object))
        return false;
    visitor.seen.insert(&object, true);
    return true;
}

} // namespace Quenza
