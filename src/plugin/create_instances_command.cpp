// SPDX-License-Identifier: MIT
#include "plugin/create_instances_command.h"

#include "host/atomarray.h"
#include "host/dialog.h"
#include "host/document.h"
#include "host/general.h"
#include "host/ids.h"
#include "host/object.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <vector>

namespace {

std::vector<BaseObject*> selectedObjects(const BaseDocument& document) {
    AtomArray selection;
    document.GetSelection(selection);
    std::vector<BaseObject*> objects;
    for (int32_t i = 0; i < selection.GetCount(); ++i) {
        if (selection.GetIndex(i)->IsInstanceOf(Obase)) {
            objects.push_back(static_cast<BaseObject*>(selection.GetIndex(i)));
        }
    }
    return objects;
}

bool insertInstance(BaseDocument& document, BaseObject* object) {
    BaseObject* const instance = BaseObject::Alloc(PLUGINID_INSTANCE);
    if (!instance) {
        return false;
    }
    instance->SetName(object->GetName() + " Instance");
    instance->GetDataInstance()->SetLink(INSTANCE_LINK, object);
    instance->SetMl(object->GetMl());
    document.InsertObject(instance, object->GetUp(), object);
    document.AddUndo(UNDOTYPE_NEW, instance);
    instance->Message(MSG_UPDATE);
    return true;
}

} // namespace

bool CreateInstancesCommand::Execute(BaseDocument* document) {
    if (!document) {
        return false;
    }
    const std::vector<BaseObject*> objects = selectedObjects(*document);
    if (objects.empty()) {
        MessageDialog("Select the objects that are to get instances.");
        return true;
    }
    document->StartUndo();
    bool isComplete = true;
    for (BaseObject* const object : objects) {
        isComplete &= insertInstance(*document, object);
    }
    document->EndUndo();
    document->SetChanged();
    EventAdd();
    return isComplete;
}
