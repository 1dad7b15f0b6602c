// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/uid.h"
#include "host/vector.h"
#include "scene/scene_node_model.h"

#include <vector>

class BaseObject;
class SceneExporter;

/// A model of a mesh node under the object's name, with the materials of its slots. Not yet in the scene, and
/// nowhere in it.
Quenza::Ref<Quenza::SceneNodeModel> makeModel(SceneExporter& exporter, const BaseObject* object,
                                              Quenza::SceneNodeUID meshUID,
                                              const std::vector<Quenza::SceneNodeUID>& materials);

/// Lets the model stand at the object's world matrix, or follow its path when the object is blurred by its
/// motion. The object is the last of the exporter's chain.
void placeModel(SceneExporter& exporter, BaseObject* object, const Matrix& matrix,
                Quenza::SceneNodeModel& model);

/// Adds the model to the scene and registers it under the object.
void addModel(SceneExporter& exporter, BaseObject* object, const Quenza::Ref<Quenza::SceneNodeModel>& model);

/// Notes which model belongs to the object that the user knows, and tells the section planes that concern it.
void registerModel(SceneExporter& exporter, BaseObject* object, Quenza::SceneNodeUID uid);
